// numberByParsingExpression(): the keypad line evaluated in one pass over its
// UTF-16 text, with no token list, no expression tree and no heap memory
// for ordinary lines.
//
// It gives exactly what tokenizing with EPTokenString, building an
// EPExpression and evaluating that gives, for every text: the same words,
// the same minus rules, the same inserted products, the same floating-point
// operations on the same operands in the same order (so even the sign of a
// NaN agrees). The classes remain the readable form of these rules; rare
// words (other scripts' digits, "2sin", dictionary names) still go through
// EPTokenString::tokensForWord().
#include "EPExpression.h"
#include "numerics/DecimalText.h"

#include <QVarLengthArray>
#include <array>
#include <cmath>
#include <numbers>

namespace {

enum class Operator : unsigned char { None, Add, Subtract, Multiply, Divide, Power };
enum class Function : unsigned char { Sin, Cos, Tan, Atan, Log, Ln, Sqrt };

// What a UTF-16 unit is to the tokenizer. The delimiters ( ) + - * / ^
// split words; blanks are dropped everywhere; anything else is part of a
// word.
enum class CharClass : unsigned char {
    Word,   // any other character of a word
    Number, // a digit or ".": the word may be a plain ASCII number
    Blank,
    Open,
    Close,
    Plus,
    Minus,
    Times,
    Slash,
    Caret
};

constexpr std::array<CharClass, 128> asciiClasses = [] {
    std::array<CharClass, 128> classes{};
    for (char16_t c = u'0'; c <= u'9'; ++c)
        classes[c] = CharClass::Number;
    classes[u'.'] = CharClass::Number;
    // The C locale's space class.
    for (char16_t c : {u' ', u'\t', u'\n', u'\v', u'\f', u'\r'})
        classes[c] = CharClass::Blank;
    classes[u'('] = CharClass::Open;
    classes[u')'] = CharClass::Close;
    classes[u'+'] = CharClass::Plus;
    classes[u'-'] = CharClass::Minus;
    classes[u'*'] = CharClass::Times;
    classes[u'/'] = CharClass::Slash;
    classes[u'^'] = CharClass::Caret;
    return classes;
}();

// Above ASCII the Unicode space property decides what is blank.
CharClass classOf(char16_t c)
{
    if (c < 128)
        return asciiClasses[c];
    return QChar(c).isSpace() ? CharClass::Blank : CharClass::Word;
}

bool isDelimiter(char16_t c)
{
    return c < 128 && asciiClasses[c] >= CharClass::Open;
}

// Only sine and cosine honour a minus before them after "^" (see
// EPFunctionToken::applyToOperandAbsolute()).
double applyFunction(Function function, bool negative, double x)
{
    switch (function) {
    case Function::Sin:
        return negative ? -std::sin(x) : std::sin(x);
    case Function::Cos:
        return negative ? -std::cos(x) : std::cos(x);
    case Function::Tan:
        return std::tan(x);
    case Function::Atan:
        return std::atan(x);
    case Function::Log:
        return std::log10(x);
    case Function::Ln:
        return std::log(x);
    case Function::Sqrt:
        break;
    }
    return std::sqrt(x);
}

// When both operands are NaN the processor passes on the one it gets
// first, and for "+" and "*" the compiler may hand them over in either
// order. The left one wins here, as it does in EPExpression's passes ("-"
// and "/" keep their order anyway); `a + a` only quiets a signalling NaN.
double add(double a, double b)
{
    return std::isnan(a) ? a + a : a + b;
}

double multiply(double a, double b)
{
    return std::isnan(a) ? a * a : a * b;
}

// The value of one level (the line, or one group) fed item by item:
// operands and operators strictly alternating, starting and ending with an
// operand, a function right before its operand. Powers, then products, then
// sums, each left-associative: the operations EPExpression's passes do, in
// their order, with the left operand first.
class Accumulator {
public:
    bool operand(double value)
    {
        if (!m_expectOperand)
            return false; // two operands side by side
        if (m_hasFunction) {
            value = applyFunction(m_function, m_negativeFunction, value);
            m_hasFunction = false;
        }
        m_factor = m_power ? std::pow(m_factor, value) : value;
        m_power = false;
        m_expectOperand = false;
        return true;
    }

    bool function(Function function, bool negative)
    {
        if (!m_expectOperand || m_hasFunction)
            return false;
        m_hasFunction = true;
        m_function = function;
        m_negativeFunction = negative;
        return true;
    }

    bool binary(Operator op)
    {
        if (m_expectOperand)
            return false; // an operator first, after another or after a function
        m_expectOperand = true;
        if (op == Operator::Power) {
            m_power = true;
        } else if (op == Operator::Multiply || op == Operator::Divide) {
            closeFactor();
            m_termOperator = op;
        } else {
            closeTerm();
            m_sumOperator = op;
        }
        return true;
    }

    std::optional<double> result()
    {
        if (m_expectOperand)
            return std::nullopt; // empty, or ends in an operator or a function
        closeTerm();
        return m_sum;
    }

private:
    void closeFactor()
    {
        if (m_termOperator == Operator::Multiply)
            m_term = multiply(m_term, m_factor);
        else if (m_termOperator == Operator::Divide)
            m_term = m_term / m_factor;
        else
            m_term = m_factor;
    }

    void closeTerm()
    {
        closeFactor();
        m_termOperator = Operator::None;
        if (m_sumOperator == Operator::Add)
            m_sum = add(m_sum, m_term);
        else if (m_sumOperator == Operator::Subtract)
            m_sum = m_sum - m_term;
        else
            m_sum = m_term;
    }

    double m_sum = 0.0;
    double m_term = 0.0;
    double m_factor = 0.0;
    Operator m_sumOperator = Operator::None;
    Operator m_termOperator = Operator::None;
    Function m_function = Function::Sin;
    bool m_hasFunction = false;
    bool m_negativeFunction = false;
    bool m_power = false;
    bool m_expectOperand = true;
};

// One level's tokens turned into items, by EPExpression::build()'s rules:
// a product between side-by-side operands, and a minus that cannot
// subtract made into "-1 *" ("-1 /" after a division), or into a negated
// next operand right after "^".
class Level {
public:
    // A number, a variable's value or a group's value.
    bool operand(double value)
    {
        if (m_operandBefore && !m_items.binary(Operator::Multiply))
            return false;
        if (!m_items.operand(m_negateNext ? -value : value))
            return false;
        m_negateNext = false;
        m_dividingNegation = false;
        m_operandBefore = true;
        m_previous = Previous::Operand;
        return true;
    }

    bool function(Function function)
    {
        if (m_operandBefore && !m_items.binary(Operator::Multiply))
            return false;
        if (!m_items.function(function, m_negateNext))
            return false;
        m_negateNext = false;
        m_dividingNegation = false;
        m_operandBefore = false;
        m_previous = Previous::Operand;
        return true;
    }

    bool binary(Operator op)
    {
        if (op == Operator::Subtract && m_previous != Previous::Operand) {
            if (m_previous == Previous::Power) {
                m_negateNext = true;
                m_dividingNegation = false;
            } else {
                const bool divide = m_previous == Previous::Division || m_dividingNegation;
                // Through a volatile so that the compiler cannot turn
                // "x * -1" into "-x": that flips the sign of a NaN.
                volatile double minusOne = -1.0;
                if (!m_items.operand(minusOne) ||
                    !m_items.binary(divide ? Operator::Divide : Operator::Multiply))
                    return false;
                m_dividingNegation = divide;
                m_negateNext = false;
            }
        } else {
            if (!m_items.binary(op))
                return false;
            m_negateNext = false;
            m_dividingNegation = false;
        }
        m_operandBefore = false;
        m_previous = op == Operator::Power    ? Previous::Power
                     : op == Operator::Divide ? Previous::Division
                                              : Previous::Operator;
        return true;
    }

    std::optional<double> result() { return m_items.result(); }

private:
    // The kind of the token before, as far as the minus rules care; a
    // function and a group count as operands.
    enum class Previous : unsigned char { Nothing, Operand, Operator, Division, Power };

    Accumulator m_items;
    Previous m_previous = Previous::Nothing;
    bool m_operandBefore = false;
    bool m_negateNext = false;
    bool m_dividingNegation = false;
};

class Parser {
public:
    Parser(QStringView text, const QHash<QString, double>* variables)
        : m_pos(text.utf16()), m_end(text.utf16() + text.size()), m_variables(variables),
          m_onlyPi(!variables || variables->isEmpty())
    {}

    // The line, or the group whose "(" was just read; `depth` counts the
    // groups around this level. Ends at the group's ")" or at the end of
    // the line.
    std::optional<double> level(int depth)
    {
        Level current;
        while (m_pos != m_end) {
            bool ok = true;
            switch (classOf(*m_pos)) {
            case CharClass::Open: {
                ++m_pos;
                if (depth >= EPExpression::maximumDepth)
                    return std::nullopt;
                const std::optional<double> group = level(depth + 1);
                ok = group && current.operand(*group);
                break;
            }
            case CharClass::Close:
                ++m_pos;
                if (depth == 0)
                    return std::nullopt; // a ")" without its "("
                return current.result();
            case CharClass::Plus:
                ++m_pos;
                ok = current.binary(Operator::Add);
                break;
            case CharClass::Minus:
                ++m_pos;
                ok = current.binary(Operator::Subtract);
                break;
            case CharClass::Times:
                ++m_pos;
                ok = current.binary(Operator::Multiply);
                break;
            case CharClass::Slash:
                ++m_pos;
                ok = current.binary(Operator::Divide);
                break;
            case CharClass::Caret:
                ++m_pos;
                ok = current.binary(Operator::Power);
                break;
            case CharClass::Blank:
                ++m_pos;
                break;
            case CharClass::Number:
                ok = number(current);
                break;
            case CharClass::Word:
                ok = word(current);
                break;
            }
            if (!ok)
                return std::nullopt;
        }
        if (depth > 0)
            return std::nullopt; // a "(" never closed
        return current.result();
    }

private:
    // The word at m_pos when it is ASCII digits with at most one point (and
    // blanks), by far the most common word; any other word.
    bool number(Level& current)
    {
        const char16_t* p = m_pos;
        ShortDecimal number;
        qsizetype digits = 0;
        qsizetype significantBeforePoint = -1;
        for (; p != m_end; ++p) {
            const unsigned digit = unsigned(*p) - u'0';
            if (digit <= 9) {
                number.digit(digit);
                ++digits;
            } else if (*p == u'.' && significantBeforePoint < 0) {
                number.point();
                significantBeforePoint = number.significant;
            } else if (classOf(*p) != CharClass::Blank) {
                break;
            }
        }
        if (p != m_end && !isDelimiter(*p))
            return word(current);
        double value = 0.0;
        if (digits > 0 && number.exact()) {
            value = number.value();
        } else if (digits > 0) {
            const qsizetype integerPart =
                significantBeforePoint < 0 ? number.significant : significantBeforePoint;
            value = longNumber(p, integerPart > 0);
        }
        m_pos = p;
        return current.operand(value);
    }

    // The ASCII number word from m_pos to `end` past the exact short form.
    // Kept out of line: its buffer would make every number() call dearer.
    Q_NEVER_INLINE double longNumber(const char16_t* end, bool integerNonZero) const
    {
        QVarLengthArray<char, 128> ascii;
        for (const char16_t* p = m_pos; p != end; ++p) {
            if (classOf(*p) == CharClass::Number)
                ascii.append(char(*p));
        }
        return asciiDecimal(ascii.data(), ascii.size(), integerNonZero);
    }

    // The word at m_pos up to the next delimiter, blanks dropped.
    Q_NEVER_INLINE bool word(Level& current)
    {
        QVarLengthArray<char16_t, 32> word;
        for (; m_pos != m_end && !isDelimiter(*m_pos); ++m_pos) {
            if (classOf(*m_pos) != CharClass::Blank)
                word.append(*m_pos);
        }
        const QStringView text(word.constData(), word.size());
        if (m_onlyPi) {
            if (sameText(text, u"pi"))
                return current.operand(std::numbers::pi);
            static constexpr std::u16string_view names[] = {u"sin", u"cos", u"tan", u"atan",
                                                            u"log", u"ln",  u"sqrt"};
            for (size_t i = 0; i < std::size(names); ++i) {
                if (sameText(text, names[i]))
                    return current.function(Function(i));
            }
        }
        return rareWord(text, current);
    }

    // Any other word, through the tokenizer's own rules.
    bool rareWord(QStringView text, Level& current) const
    {
        const EPDictionaryVariableSource variables(m_variables);
        const EPStandardFunctionSource functions;
        const std::optional<EPTokenString::WordTokens> tokens =
            EPTokenString::tokensForWord(text, variables, functions);
        return tokens && item(tokens->first, current) &&
               (!tokens->second || item(*tokens->second, current));
    }

    static bool item(const EPAnyToken& token, Level& current)
    {
        if (const auto* number = std::get_if<EPNumericalToken>(&token))
            return current.operand(number->doubleValue());
        if (const auto* variable = std::get_if<EPVariableToken>(&token))
            return current.operand(variable->doubleValue());
        if (const auto* f = std::get_if<EPSinCosFunction>(&token))
            return current.function(f->isCosine() ? Function::Cos : Function::Sin);
        if (const auto* f = std::get_if<EPTanAtanFunction>(&token))
            return current.function(f->isAtan() ? Function::Atan : Function::Tan);
        if (const auto* f = std::get_if<EPLogLnFunction>(&token))
            return current.function(f->isNatural() ? Function::Ln : Function::Log);
        if (std::holds_alternative<EPSqrtFunction>(token))
            return current.function(Function::Sqrt);
        return false; // a word never gives parentheses or operators
    }

    const char16_t* m_pos;
    const char16_t* const m_end;
    const QHash<QString, double>* const m_variables;
    // No dictionary, so the only variable is "pi".
    const bool m_onlyPi;
};

} // namespace

std::optional<double> numberByParsingExpression(QStringView text,
                                                const QHash<QString, double>* variables)
{
    return Parser(text, variables).level(0);
}
