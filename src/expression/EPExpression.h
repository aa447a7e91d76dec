#pragma once

#include "EPTokenString.h"

#include <QHash>
#include <QString>
#include <memory_resource>
#include <optional>
#include <span>

// A token list arranged for evaluation: minus signs resolved into negation
// or subtraction, left-out multiplications inserted, and each parenthesised
// group made into a nested expression. An expression is evaluated once.
class EPExpression {
public:
    // Groups nested deeper than this give no expression.
    static constexpr int maximumDepth = 256;

    enum class OperatorClass { Power, MultiplyDivide, AddSubtract };

    explicit EPExpression(std::pmr::memory_resource* memory = std::pmr::get_default_resource());
    ~EPExpression();
    EPExpression(const EPExpression&) = delete;
    EPExpression& operator=(const EPExpression&) = delete;

    // Builds the item list; false when the tokens are malformed (unmatched
    // parentheses, groups nested too deep).
    bool initWithTokenString(const EPTokenString& tokenString);

    // The value, or nothing when the expression cannot be evaluated.
    std::optional<EPNumericalToken> evaluateToToken();

    // The tokens strictly inside the group opening at `index`; moves `index`
    // to the matching ")". Nothing when the group is not closed.
    static std::optional<EPTokenString> subExpression(const EPTokenString& tokenString,
                                                      size_t& index);

    // The evaluation steps, in the order evaluateToToken() runs them.
    bool substituteVariables();
    bool evaluateSubExpressions();
    bool performFunctions();
    bool performOperatorsOfClass(OperatorClass operatorClass);

    bool negateExpression() const { return m_negateExpression; }
    void setNegateExpression(bool negate) { m_negateExpression = negate; }

    qsizetype itemCount() const { return qsizetype(m_tokens.size()); }
    // The printable form of the items, groups in parentheses; for tests and
    // diagnostics.
    QString toString() const;

private:
    struct Item {
        EPAnyToken token;
        EPExpression* group = nullptr; // a parenthesised group instead of a token
    };

    bool build(std::span<const EPAnyToken> tokens, int depth);
    void append(EPAnyToken token) { m_tokens.push_back({std::move(token), nullptr}); }
    void destroyGroup(EPExpression* group);

    std::pmr::memory_resource* m_memory;
    std::pmr::vector<Item> m_tokens;
    bool m_negateExpression = false;
};

// Variables from a name-to-number dictionary, plus "pi".
class EPDictionaryVariableSource : public EPTokenStringVariableSource {
public:
    EPDictionaryVariableSource() = default;
    explicit EPDictionaryVariableSource(const QHash<QString, double>* dictionary);
    void initWithDictionary(const QHash<QString, double>* dictionary);

    // True for names in the dictionary, and for "pi".
    bool variableExists(QStringView name) const override;
    // "pi" is always 3.141592653589793, whatever the dictionary says;
    // other names give their entry, or 0.
    double variableValue(QStringView name) const override;

private:
    std::optional<QHash<QString, double>> m_varDictionary;
};

// sin, cos, tan, atan, log, ln and sqrt.
class EPStandardFunctionSource : public EPTokenStringFunctionSource {
public:
    bool functionExists(QStringView name) const override;
    std::optional<EPAnyToken> functionTokenForName(QStringView name) const override;
};

// Evaluates a keypad expression; nothing when the text is not a valid
// expression. Impossible maths (1/0, sqrt(-1)) gives infinities and NaN.
// Gives exactly what EPTokenString and EPExpression give, in one pass over
// the text (EPEvaluator.cpp).
std::optional<double> numberByParsingExpression(QStringView text,
                                                const QHash<QString, double>* variables = nullptr);
