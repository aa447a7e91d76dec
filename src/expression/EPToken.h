#pragma once

#include <QString>
#include <QStringView>
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

// The tokens of a keypad expression. Every concrete token is a small value
// type; EPAnyToken holds any one of them without a heap allocation, and is
// also what the evaluator passes around (every intermediate result is a
// numerical token).

struct EPAnyToken;
class EPNumericalToken;

// Exact, case-sensitive comparison of a piece of text with a name.
inline bool sameText(QStringView text, std::u16string_view name)
{
    return text.size() == qsizetype(name.size()) &&
           std::equal(name.begin(), name.end(), text.utf16());
}

// Base of all tokens. Its own operations are abstract: calling them on a
// plain EPToken is a programming error that stops the program.
class EPToken {
public:
    virtual ~EPToken() = default;

    // Takes the token's text; false when the text is not this kind of token.
    virtual bool initWithString(QStringView text);
    virtual QString toString() const;
    virtual EPAnyToken negativeToken() const;
    // A copy of the token; the abstract base copies to nothing.
    virtual std::optional<EPAnyToken> copy() const;

    // Numerical and variable tokens have a value; nothing else does.
    virtual bool hasDoubleValue() const { return false; }
    virtual double doubleValue() const { return 0.0; }

protected:
    EPToken() = default;
    EPToken(const EPToken&) = default;
    EPToken& operator=(const EPToken&) = default;

    friend class EPTokenTestAccess;
};

class EPParenthesesToken : public EPToken {
public:
    EPParenthesesToken() = default;
    bool initWithString(QStringView text) override; // "(" or ")"
    QString toString() const override;
    EPAnyToken negativeToken() const override;
    std::optional<EPAnyToken> copy() const override;
    int direction() const { return m_direction; } // 0 "(", 1 ")"

private:
    int m_direction = 0;
};

class EPNumericalToken : public EPToken {
public:
    EPNumericalToken() = default;
    explicit EPNumericalToken(double value) : m_doubleValue(value) {}
    static EPNumericalToken numericalTokenWithDouble(double value)
    {
        return EPNumericalToken(value);
    }

    // Digits (of any script, read as their values), "." and a leading "-"
    // only; one "." at most; no exponent. No digit at all reads 0.
    bool initWithString(QStringView text) override;
    // "%1000.5lf" with trailing "0" and "." characters trimmed.
    QString toString() const override;
    EPAnyToken negativeToken() const override;
    std::optional<EPAnyToken> copy() const override;
    bool hasDoubleValue() const override { return true; }
    double doubleValue() const override { return m_doubleValue; }

private:
    double m_doubleValue = 0.0;
};

class EPVariableToken : public EPToken {
public:
    EPVariableToken() = default;
    bool initWithString(QStringView text) override; // the name; value 0
    QString toString() const override { return variableName(); }
    QString variableName() const;
    EPAnyToken negativeToken() const override;
    std::optional<EPAnyToken> copy() const override;
    bool hasDoubleValue() const override { return true; }
    double doubleValue() const override { return m_doubleValue; }
    void setDoubleValue(double value) { m_doubleValue = value; }

private:
    std::u16string m_variableName;
    double m_doubleValue = 0.0;
};

// Base of the binary operators.
class EPOperator : public EPToken {
public:
    // left op right; nothing when an operand has no value.
    virtual std::optional<EPNumericalToken> applyLeftOperandToRight(const EPToken& left,
                                                                    const EPToken& right) const;

protected:
    EPOperator() = default;
};

class EPAddSubOperator : public EPOperator {
public:
    // An operator negates to itself; copies are equal.
    EPAnyToken negativeToken() const override;
    std::optional<EPAnyToken> copy() const override;
    EPAddSubOperator() = default;
    explicit EPAddSubOperator(bool subtraction) : m_isSubtraction(subtraction) {}
    bool initWithString(QStringView text) override; // "+" or "-"
    QString toString() const override;
    std::optional<EPNumericalToken> applyLeftOperandToRight(const EPToken& left,
                                                            const EPToken& right) const override;
    bool isSubtraction() const { return m_isSubtraction; }

private:
    bool m_isSubtraction = false;
};

class EPMulDivOperator : public EPOperator {
public:
    // An operator negates to itself; copies are equal.
    EPAnyToken negativeToken() const override;
    std::optional<EPAnyToken> copy() const override;
    EPMulDivOperator() = default;
    explicit EPMulDivOperator(bool division) : m_isDivision(division) {}
    bool initWithString(QStringView text) override; // "*" or "/"
    QString toString() const override;
    std::optional<EPNumericalToken> applyLeftOperandToRight(const EPToken& left,
                                                            const EPToken& right) const override;
    bool isDivision() const { return m_isDivision; }

private:
    bool m_isDivision = false;
};

class EPPowerOperator : public EPOperator {
public:
    // An operator negates to itself; copies are equal.
    EPAnyToken negativeToken() const override;
    std::optional<EPAnyToken> copy() const override;
    EPPowerOperator() = default;
    bool initWithString(QStringView text) override; // "^"
    QString toString() const override { return QStringLiteral("^"); }
    std::optional<EPNumericalToken> applyLeftOperandToRight(const EPToken& left,
                                                            const EPToken& right) const override;
};

// Base of the functions. A function token carries a `negative` flag, set
// on the copy made by negativeToken(); only functions that go through
// applyToOperandAbsolute() honour it.
class EPFunctionToken : public EPToken {
public:
    EPFunctionToken() = default;
    bool initWithString(QStringView text) override; // stores the name
    QString toString() const override { return functionName(); }
    QString functionName() const;

    virtual std::optional<EPNumericalToken> applyToOperand(const EPToken& operand) const;
    virtual std::optional<EPNumericalToken> applyToOperandAbsolute(const EPToken& operand) const;
    std::optional<EPNumericalToken>
    applyNegationToPositive(const std::optional<EPNumericalToken>& token) const;

    // Copies never carry the negative flag; negativeToken() is a copy
    // whose flag is the opposite of this token's. Only the concrete
    // functions can be copied.
    EPAnyToken negativeToken() const override;
    std::optional<EPAnyToken> copy() const override;
    bool negative() const { return m_negative; }
    void setNegative(bool negative) { m_negative = negative; }

protected:
    // Takes the name when `text` is `first` or `second`.
    bool setNameIfOneOf(QStringView text, std::u16string_view first,
                        std::u16string_view second = {});

private:
    std::u16string m_functionName;
    bool m_negative = false;
};

class EPSinCosFunction : public EPFunctionToken {
public:
    bool initWithString(QStringView text) override; // "sin" or "cos"
    std::optional<EPNumericalToken> applyToOperandAbsolute(const EPToken& operand) const override;
    bool isCosine() const { return m_isCosine; }

private:
    bool m_isCosine = false;
};

class EPTanAtanFunction : public EPFunctionToken {
public:
    bool initWithString(QStringView text) override; // "tan" or "atan"
    std::optional<EPNumericalToken> applyToOperand(const EPToken& operand) const override;
    bool isAtan() const { return m_isAtan; }

private:
    bool m_isAtan = false;
};

class EPLogLnFunction : public EPFunctionToken {
public:
    bool initWithString(QStringView text) override; // "log" or "ln"
    std::optional<EPNumericalToken> applyToOperand(const EPToken& operand) const override;
    bool isNatural() const { return m_natural; }

private:
    bool m_natural = false;
};

class EPSqrtFunction : public EPFunctionToken {
public:
    bool initWithString(QStringView text) override; // "sqrt"
    std::optional<EPNumericalToken> applyToOperand(const EPToken& operand) const override;
};

// Any one concrete token, by value.
struct EPAnyToken
    : std::variant<EPParenthesesToken, EPNumericalToken, EPVariableToken, EPAddSubOperator,
                   EPMulDivOperator, EPPowerOperator, EPSinCosFunction, EPTanAtanFunction,
                   EPLogLnFunction, EPSqrtFunction> {
    using variant::variant;

    const EPToken& token() const
    {
        return std::visit([](const auto& t) -> const EPToken& { return t; }, *this);
    }
    EPToken& token()
    {
        return std::visit([](auto& t) -> EPToken& { return t; }, *this);
    }
    // The alternatives are ordered: operators at 3 to 5, functions from 6.
    bool isOperator() const { return index() >= 3 && index() <= 5; }
    bool isFunction() const { return index() >= 6; }
    const EPOperator* asOperator() const
    {
        return isOperator() ? dynamicAs<EPOperator>() : nullptr;
    }
    const EPFunctionToken* asFunction() const
    {
        return isFunction() ? dynamicAs<EPFunctionToken>() : nullptr;
    }
    bool isParenthesis() const { return std::holds_alternative<EPParenthesesToken>(*this); }
    bool isSubtraction() const
    {
        const auto* op = std::get_if<EPAddSubOperator>(this);
        return op && op->isSubtraction();
    }
    bool isDivision() const
    {
        const auto* op = std::get_if<EPMulDivOperator>(this);
        return op && op->isDivision();
    }
    bool isPower() const { return std::holds_alternative<EPPowerOperator>(*this); }

private:
    template <typename Base> const Base* dynamicAs() const
    {
        return std::visit(
            [](const auto& t) -> const Base* {
                using T = std::decay_t<decltype(t)>;
                if constexpr (std::is_base_of_v<Base, T>)
                    return &t;
                else
                    return nullptr;
            },
            *this);
    }
};

static_assert(
    std::is_same_v<std::variant_alternative_t<3, EPAnyToken::variant>, EPAddSubOperator> &&
        std::is_same_v<std::variant_alternative_t<5, EPAnyToken::variant>, EPPowerOperator> &&
        std::is_same_v<std::variant_alternative_t<6, EPAnyToken::variant>, EPSinCosFunction>,
    "isOperator() and isFunction() rely on the order of the alternatives");
