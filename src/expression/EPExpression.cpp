#include "EPExpression.h"

#include <numbers>

namespace {

// Index of the ")" that closes the group opening at `open`, if any.
std::optional<size_t> matchingParenthesis(std::span<const EPAnyToken> tokens, size_t open)
{
    int count = 0;
    for (size_t i = open; i < tokens.size(); ++i) {
        if (const auto* p = std::get_if<EPParenthesesToken>(&tokens[i])) {
            count += p->direction() == 0 ? 1 : -1;
            if (count == 0)
                return i;
        }
    }
    return std::nullopt;
}

bool isOfClass(const EPAnyToken& token, EPExpression::OperatorClass operatorClass)
{
    switch (operatorClass) {
    case EPExpression::OperatorClass::Power:
        return std::holds_alternative<EPPowerOperator>(token);
    case EPExpression::OperatorClass::MultiplyDivide:
        return std::holds_alternative<EPMulDivOperator>(token);
    case EPExpression::OperatorClass::AddSubtract:
        return std::holds_alternative<EPAddSubOperator>(token);
    }
    return false;
}

} // namespace

EPExpression::EPExpression(std::pmr::memory_resource* memory) : m_memory(memory), m_tokens(memory)
{}

EPExpression::~EPExpression()
{
    for (Item& item : m_tokens)
        destroyGroup(item.group);
}

void EPExpression::destroyGroup(EPExpression* group)
{
    if (group)
        std::pmr::polymorphic_allocator<EPExpression>(m_memory).delete_object(group);
}

bool EPExpression::initWithTokenString(const EPTokenString& tokenString)
{
    const auto& tokens = tokenString.tokenArray();
    m_tokens.reserve(2 * tokens.size());
    return build(std::span(tokens.data(), tokens.size()), 0);
}

std::optional<EPTokenString> EPExpression::subExpression(const EPTokenString& tokenString,
                                                         size_t& index)
{
    const auto& tokens = tokenString.tokenArray();
    const std::optional<size_t> close =
        matchingParenthesis(std::span(tokens.data(), tokens.size()), index);
    if (!close)
        return std::nullopt;
    const size_t open = index;
    index = *close;
    return tokenString.substringWithRange(open + 1, *close - open - 1);
}

bool EPExpression::build(std::span<const EPAnyToken> tokens, int depth)
{
    const EPAnyToken* previous = nullptr;
    bool operandBefore = false;
    bool negateNext = false;
    // Set right after a negating minus that divides (see below).
    bool dividingNegation = false;

    for (size_t i = 0; i < tokens.size();) {
        const EPAnyToken& token = tokens[i];

        if (const auto* paren = std::get_if<EPParenthesesToken>(&token)) {
            if (paren->direction() == 1)
                return false; // a ")" without its "("
            const std::optional<size_t> close = matchingParenthesis(tokens, i);
            if (!close || depth >= maximumDepth)
                return false;
            auto* group =
                std::pmr::polymorphic_allocator<EPExpression>(m_memory).new_object<EPExpression>(
                    m_memory);
            if (!group->build(tokens.subspan(i + 1, *close - i - 1), depth + 1)) {
                destroyGroup(group);
                return false;
            }
            if (operandBefore)
                append(EPMulDivOperator(false));
            group->setNegateExpression(negateNext);
            m_tokens.push_back({EPAnyToken(), group});
            negateNext = false;
            dividingNegation = false;
            operandBefore = true;
            previous = &token;
            i = *close + 1;
            continue;
        }

        const bool isOperator = token.isOperator();
        if (!isOperator && operandBefore)
            append(EPMulDivOperator(false)); // 2(3), 2sin(0), (1)(2)

        if (token.isSubtraction() && (!previous || previous->isOperator())) {
            // A negating minus. After "^" it negates the next operand, so
            // 2^-3 stays 2^(-3). Elsewhere it becomes "-1 *", except after a
            // division, where it becomes "-1 /" so that 4/-2 is -2 and
            // 8/-2*3 is -12; a chain of minuses after "/" keeps dividing.
            if (previous && previous->isPower()) {
                negateNext = true;
                dividingNegation = false;
            } else {
                const bool divide = previous && (previous->isDivision() || dividingNegation);
                append(EPNumericalToken(-1.0));
                append(EPMulDivOperator(divide));
                dividingNegation = divide;
                negateNext = false;
            }
        } else {
            append(negateNext ? token.token().negativeToken() : token);
            negateNext = false;
            dividingNegation = false;
        }
        operandBefore = !isOperator && !token.isFunction();
        previous = &token;
        ++i;
    }
    return true;
}

bool EPExpression::substituteVariables()
{
    for (Item& item : m_tokens) {
        if (const auto* variable = std::get_if<EPVariableToken>(&item.token);
            variable && !item.group)
            item.token = EPNumericalToken(variable->doubleValue());
    }
    return true;
}

bool EPExpression::evaluateSubExpressions()
{
    for (Item& item : m_tokens) {
        if (!item.group)
            continue;
        const std::optional<EPNumericalToken> value = item.group->evaluateToToken();
        destroyGroup(item.group);
        item.group = nullptr;
        if (!value)
            return false;
        item.token = *value;
    }
    return true;
}

bool EPExpression::performFunctions()
{
    const size_t n = m_tokens.size();
    size_t write = 0;
    for (size_t read = 0; read < n; ++read) {
        Item& item = m_tokens[read];
        if (!item.group && item.token.isFunction()) {
            const EPFunctionToken* function = item.token.asFunction();
            if (read + 1 >= n)
                return false; // a function with nothing after it
            const Item& operand = m_tokens[read + 1];
            if (operand.group)
                return false;
            const std::optional<EPNumericalToken> value =
                function->applyToOperand(operand.token.token());
            if (!value)
                return false;
            m_tokens[write++].token = *value;
            ++read;
            continue;
        }
        if (write != read)
            m_tokens[write] = std::move(item);
        ++write;
    }
    m_tokens.resize(write);
    return true;
}

bool EPExpression::performOperatorsOfClass(OperatorClass operatorClass)
{
    const size_t n = m_tokens.size();
    size_t write = 0;
    for (size_t read = 0; read < n; ++read) {
        Item& item = m_tokens[read];
        if (!item.group && isOfClass(item.token, operatorClass)) {
            if (read == 0 || read + 1 == n)
                return false; // an operator at either end
            Item& left = m_tokens[write - 1];
            const Item& right = m_tokens[read + 1];
            if (left.group || right.group)
                return false;
            const std::optional<EPNumericalToken> value =
                item.token.asOperator()->applyLeftOperandToRight(left.token.token(),
                                                                 right.token.token());
            if (!value)
                return false;
            left.token = *value;
            ++read;
            continue;
        }
        if (write != read)
            m_tokens[write] = std::move(item);
        ++write;
    }
    m_tokens.resize(write);
    return true;
}

std::optional<EPNumericalToken> EPExpression::evaluateToToken()
{
    if (!substituteVariables() || !evaluateSubExpressions() || !performFunctions() ||
        !performOperatorsOfClass(OperatorClass::Power) ||
        !performOperatorsOfClass(OperatorClass::MultiplyDivide) ||
        !performOperatorsOfClass(OperatorClass::AddSubtract))
        return std::nullopt;
    if (m_tokens.size() != 1 || m_tokens.front().group)
        return std::nullopt;
    const EPAnyToken& result = m_tokens.front().token;
    std::optional<EPNumericalToken> value;
    if (const auto* number = std::get_if<EPNumericalToken>(&result))
        value = *number;
    else if (const auto* variable = std::get_if<EPVariableToken>(&result))
        value = EPNumericalToken(variable->doubleValue());
    else
        return std::nullopt;
    if (m_negateExpression)
        value = EPNumericalToken(-value->doubleValue());
    return value;
}

QString EPExpression::toString() const
{
    QStringList parts;
    for (const Item& item : m_tokens) {
        if (item.group)
            parts << QStringLiteral("%1(%2)").arg(item.group->negateExpression() ? "-" : "",
                                                  item.group->toString());
        else if (const auto* number = std::get_if<EPNumericalToken>(&item.token))
            parts << QString::number(number->doubleValue(), 'g', 17);
        else
            parts << item.token.token().toString();
    }
    return parts.join(QLatin1Char(' '));
}

// Variable source.

EPDictionaryVariableSource::EPDictionaryVariableSource(const QHash<QString, double>* dictionary)
{
    initWithDictionary(dictionary);
}

void EPDictionaryVariableSource::initWithDictionary(const QHash<QString, double>* dictionary)
{
    if (dictionary)
        m_varDictionary = *dictionary;
    else
        m_varDictionary.reset();
}

bool EPDictionaryVariableSource::variableExists(QStringView name) const
{
    if (m_varDictionary && !m_varDictionary->isEmpty() &&
        m_varDictionary->contains(name.toString()))
        return true;
    return sameText(name, u"pi");
}

double EPDictionaryVariableSource::variableValue(QStringView name) const
{
    if (sameText(name, u"pi"))
        return std::numbers::pi;
    if (!m_varDictionary)
        return 0.0;
    return m_varDictionary->value(name.toString(), 0.0);
}

// Function source.

bool EPStandardFunctionSource::functionExists(QStringView name) const
{
    return sameText(name, u"sin") || sameText(name, u"cos") || sameText(name, u"tan") ||
           sameText(name, u"atan") || sameText(name, u"log") || sameText(name, u"ln") ||
           sameText(name, u"sqrt");
}

std::optional<EPAnyToken> EPStandardFunctionSource::functionTokenForName(QStringView name) const
{
    const auto make = [name](auto function) -> std::optional<EPAnyToken> {
        if (function.initWithString(name))
            return EPAnyToken(std::move(function));
        return std::nullopt;
    };
    if (sameText(name, u"cos") || sameText(name, u"sin"))
        return make(EPSinCosFunction());
    if (sameText(name, u"atan") || sameText(name, u"tan"))
        return make(EPTanAtanFunction());
    if (sameText(name, u"ln") || sameText(name, u"log"))
        return make(EPLogLnFunction());
    if (sameText(name, u"sqrt"))
        return make(EPSqrtFunction());
    return std::nullopt;
}
