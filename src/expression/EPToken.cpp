#include "EPToken.h"

#include "numerics/DecimalDigit.h"
#include "numerics/DecimalText.h"

#include <QVarLengthArray>
#include <QtGlobal>
#include <charconv>
#include <cmath>

namespace {

[[noreturn]] void abstractClass()
{
    qFatal("This is an abstract class and must be subclassed.");
}

[[noreturn]] void abstractMethod()
{
    qFatal("This is an abstract method and must be overridden.");
}

std::optional<EPNumericalToken> binary(const EPToken& left, const EPToken& right, auto op)
{
    if (!left.hasDoubleValue() || !right.hasDoubleValue())
        return std::nullopt;
    return EPNumericalToken(op(left.doubleValue(), right.doubleValue()));
}

std::optional<EPNumericalToken> unary(const EPToken& operand, auto fn)
{
    if (!operand.hasDoubleValue())
        return std::nullopt;
    return EPNumericalToken(fn(operand.doubleValue()));
}

} // namespace

// EPToken: the abstract base.

bool EPToken::initWithString(QStringView)
{
    abstractClass();
}

QString EPToken::toString() const
{
    abstractClass();
}

EPAnyToken EPToken::negativeToken() const
{
    abstractClass();
}

std::optional<EPAnyToken> EPToken::copy() const
{
    return std::nullopt;
}

// Parentheses.

bool EPParenthesesToken::initWithString(QStringView text)
{
    if (sameText(text, u"("))
        m_direction = 0;
    else if (sameText(text, u")"))
        m_direction = 1;
    else
        return false;
    return true;
}

QString EPParenthesesToken::toString() const
{
    return m_direction == 1 ? QStringLiteral(")") : QStringLiteral("(");
}

EPAnyToken EPParenthesesToken::negativeToken() const
{
    return *this;
}

std::optional<EPAnyToken> EPParenthesesToken::copy() const
{
    return *this;
}

// Numbers.

// A number is digits with at most one "." and a "-" only in front. Any
// Unicode decimal digit counts and reads as its value (see DecimalDigit.h),
// so "１+２" is 3. The check has always let such digits through; reading
// them as 0 made a valid-looking line evaluate to nonsense. Rejecting them
// instead would part the expression line from the app's one reading rule,
// which takes every script's digits, so the line takes them the same way.
// The expression line has no locale: its decimal point is always ".".
bool EPNumericalToken::initWithString(QStringView text)
{
    QVarLengthArray<char, 128> ascii;
    bool seenPoint = false;
    bool integerNonZero = false;
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text[i];
        if (c == u'-') {
            if (i != 0)
                return false;
            ascii.append('-');
        } else if (c == u'.') {
            if (seenPoint)
                return false;
            seenPoint = true;
            ascii.append('.');
        } else if (const DecimalDigit digit = decimalDigitAt(text, i)) {
            ascii.append(char('0' + digit.value));
            integerNonZero = integerNonZero || (!seenPoint && digit.value != 0);
            i += digit.length;
            continue;
        } else {
            return false;
        }
        ++i;
    }
    m_doubleValue = asciiDecimal(ascii.data(), ascii.size(), integerNonZero);
    return true;
}

QString EPNumericalToken::toString() const
{
    // "%1000.5lf": fixed with five decimals, right-aligned in 1000 columns.
    char digits[400];
    const auto result =
        std::to_chars(digits, digits + sizeof digits, m_doubleValue, std::chars_format::fixed, 5);
    const qsizetype length = result.ec == std::errc() ? result.ptr - digits : 0;
    QString text(qMax<qsizetype>(1000 - length, 0), QLatin1Char(' '));
    text += QLatin1String(digits, length);
    // Trailing zeros and points go, right through the decimal point.
    while (!text.isEmpty() && (text.back() == u'0' || text.back() == u'.'))
        text.chop(1);
    return text;
}

EPAnyToken EPNumericalToken::negativeToken() const
{
    return EPNumericalToken(-m_doubleValue);
}

std::optional<EPAnyToken> EPNumericalToken::copy() const
{
    return *this;
}

// Variables.

bool EPVariableToken::initWithString(QStringView text)
{
    m_variableName.assign(reinterpret_cast<const char16_t*>(text.utf16()), size_t(text.size()));
    m_doubleValue = 0.0;
    return true;
}

QString EPVariableToken::variableName() const
{
    return QString(reinterpret_cast<const QChar*>(m_variableName.data()),
                   qsizetype(m_variableName.size()));
}

EPAnyToken EPVariableToken::negativeToken() const
{
    EPVariableToken negated = *this;
    negated.m_doubleValue = -m_doubleValue;
    return negated;
}

std::optional<EPAnyToken> EPVariableToken::copy() const
{
    return *this;
}

// Operators.

std::optional<EPNumericalToken> EPOperator::applyLeftOperandToRight(const EPToken&,
                                                                    const EPToken&) const
{
    abstractClass();
}

bool EPAddSubOperator::initWithString(QStringView text)
{
    if (sameText(text, u"+"))
        m_isSubtraction = false;
    else if (sameText(text, u"-"))
        m_isSubtraction = true;
    else
        return false;
    return true;
}

QString EPAddSubOperator::toString() const
{
    return m_isSubtraction ? QStringLiteral("-") : QStringLiteral("+");
}

std::optional<EPNumericalToken>
EPAddSubOperator::applyLeftOperandToRight(const EPToken& left, const EPToken& right) const
{
    const bool sub = m_isSubtraction;
    return binary(left, right, [sub](double a, double b) { return sub ? a - b : a + b; });
}

EPAnyToken EPAddSubOperator::negativeToken() const
{
    return *this;
}

std::optional<EPAnyToken> EPAddSubOperator::copy() const
{
    return *this;
}

bool EPMulDivOperator::initWithString(QStringView text)
{
    if (sameText(text, u"*"))
        m_isDivision = false;
    else if (sameText(text, u"/"))
        m_isDivision = true;
    else
        return false;
    return true;
}

QString EPMulDivOperator::toString() const
{
    return m_isDivision ? QStringLiteral("/") : QStringLiteral("*");
}

std::optional<EPNumericalToken>
EPMulDivOperator::applyLeftOperandToRight(const EPToken& left, const EPToken& right) const
{
    const bool div = m_isDivision;
    return binary(left, right, [div](double a, double b) { return div ? a / b : a * b; });
}

EPAnyToken EPMulDivOperator::negativeToken() const
{
    return *this;
}

std::optional<EPAnyToken> EPMulDivOperator::copy() const
{
    return *this;
}

bool EPPowerOperator::initWithString(QStringView text)
{
    return sameText(text, u"^");
}

std::optional<EPNumericalToken> EPPowerOperator::applyLeftOperandToRight(const EPToken& left,
                                                                         const EPToken& right) const
{
    return binary(left, right, [](double a, double b) { return std::pow(a, b); });
}

EPAnyToken EPPowerOperator::negativeToken() const
{
    return *this;
}

std::optional<EPAnyToken> EPPowerOperator::copy() const
{
    return *this;
}

// Functions.

bool EPFunctionToken::initWithString(QStringView text)
{
    m_functionName.assign(reinterpret_cast<const char16_t*>(text.utf16()), size_t(text.size()));
    return true;
}

QString EPFunctionToken::functionName() const
{
    return QString(reinterpret_cast<const QChar*>(m_functionName.data()),
                   qsizetype(m_functionName.size()));
}

bool EPFunctionToken::setNameIfOneOf(QStringView text, std::u16string_view first,
                                     std::u16string_view second)
{
    if (!sameText(text, first) && (second.empty() || !sameText(text, second)))
        return false;
    EPFunctionToken::initWithString(text);
    return true;
}

std::optional<EPNumericalToken> EPFunctionToken::applyToOperand(const EPToken& operand) const
{
    return applyNegationToPositive(applyToOperandAbsolute(operand));
}

std::optional<EPNumericalToken> EPFunctionToken::applyToOperandAbsolute(const EPToken&) const
{
    abstractMethod();
}

std::optional<EPNumericalToken>
EPFunctionToken::applyNegationToPositive(const std::optional<EPNumericalToken>& token) const
{
    if (token && m_negative)
        return EPNumericalToken(-token->doubleValue());
    return token;
}

std::optional<EPAnyToken> EPFunctionToken::copy() const
{
    const auto fresh = [](auto function) -> std::optional<EPAnyToken> {
        function.setNegative(false);
        return EPAnyToken(function);
    };
    if (const auto* f = dynamic_cast<const EPSinCosFunction*>(this))
        return fresh(*f);
    if (const auto* f = dynamic_cast<const EPTanAtanFunction*>(this))
        return fresh(*f);
    if (const auto* f = dynamic_cast<const EPLogLnFunction*>(this))
        return fresh(*f);
    if (const auto* f = dynamic_cast<const EPSqrtFunction*>(this))
        return fresh(*f);
    return std::nullopt;
}

EPAnyToken EPFunctionToken::negativeToken() const
{
    std::optional<EPAnyToken> negated = copy();
    if (!negated)
        abstractClass();
    static_cast<EPFunctionToken&>(negated->token()).setNegative(!m_negative);
    return *negated;
}

bool EPSinCosFunction::initWithString(QStringView text)
{
    if (!setNameIfOneOf(text, u"sin", u"cos"))
        return false;
    m_isCosine = sameText(text, u"cos");
    return true;
}

std::optional<EPNumericalToken>
EPSinCosFunction::applyToOperandAbsolute(const EPToken& operand) const
{
    const bool cosine = m_isCosine;
    return unary(operand, [cosine](double x) { return cosine ? std::cos(x) : std::sin(x); });
}

bool EPTanAtanFunction::initWithString(QStringView text)
{
    if (!setNameIfOneOf(text, u"tan", u"atan"))
        return false;
    m_isAtan = sameText(text, u"atan");
    return true;
}

std::optional<EPNumericalToken> EPTanAtanFunction::applyToOperand(const EPToken& operand) const
{
    const bool atan = m_isAtan;
    return unary(operand, [atan](double x) { return atan ? std::atan(x) : std::tan(x); });
}

bool EPLogLnFunction::initWithString(QStringView text)
{
    if (!setNameIfOneOf(text, u"log", u"ln"))
        return false;
    m_natural = sameText(text, u"ln");
    return true;
}

std::optional<EPNumericalToken> EPLogLnFunction::applyToOperand(const EPToken& operand) const
{
    const bool natural = m_natural;
    return unary(operand, [natural](double x) { return natural ? std::log(x) : std::log10(x); });
}

bool EPSqrtFunction::initWithString(QStringView text)
{
    return setNameIfOneOf(text, u"sqrt", {});
}

std::optional<EPNumericalToken> EPSqrtFunction::applyToOperand(const EPToken& operand) const
{
    return unary(operand, [](double x) { return std::sqrt(x); });
}
