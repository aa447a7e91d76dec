#include "ExpressionTestSupport.h"

#include <limits>
#include <numbers>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct Row {
    const char* text;
    double value;
};

void expectValues(std::initializer_list<Row> rows)
{
    for (const Row& row : rows)
        CHECK_EVAL(row.text, row.value);
}

void expectInvalid(std::initializer_list<const char*> texts)
{
    for (const char* text : texts)
        CHECK_INVALID(text);
}

// One or two lines for each rule of the keypad line; the golden replay pins
// the exact bits of thousands more.
TEST(Evaluation, PrecedenceImpliedProductsNegationAndFunctions)
{
    expectValues({
        // Powers, then products, then sums, all left-associative.
        {"1+2*3^2-8/4", 17},
        {"2^3^2", 64},
        {"10-4-3", 3},
        // Operands side by side multiply; the power binds to its group first.
        {"3(1+1)(2)", 12},
        {"2(3)^2", 18},
        {"(2)pi", 2 * std::numbers::pi},
        // A number straight before a function name multiplies it, as the keys
        // type it; the power takes the number first; blanks are dropped first.
        {"2^2sqrt(4)", 8},
        {"1 0sqrt(4)", 20},
        // After "^" only the first minus negates the operand; after a group the
        // minus subtracts.
        {"-2^2", -4},
        {"2^--3", 1.5},
        {"(2)-3", -1},
        {"--2", 2},
        // After a division the minus divides by -1; a product ends the chain.
        {"8/-2*3", -12},
        {"4/---2", -2},
        {"6/3*-2", -4},
        // After a power only sin and cos keep the minus.
        {"2^-sin(1)", std::pow(2, -std::sin(1.0))},
        {"2^-sqrt(4)", 4},
        // Radians; a function takes the next operand only.
        {"atan(1)", std::numbers::pi / 4},
        {"sin(pi)", std::sin(std::numbers::pi)},
        {"log(100)", 2},
        {"sqrt(9)(4)", 12},
        // Impossible maths is a number, not a failure.
        {"-1/0", -inf},
        {"sqrt(-1)", nan},
        {"log(0)", -inf},
        {"10^400", inf},
    });
    // Before "pi" (a variable) a number stays one unknown word.
    expectInvalid({"2pi", "2sinx(1)", "2.5.1sqrt(4)", "sin2(1)"});
    CHECK_INVALID("sqrt 9") << "blanks are dropped: the word is sqrt9";
}

TEST(Variables, PiAndTheDictionary)
{
    CHECK_EVAL("pi", 3.141592653589793);
    const QHash<QString, double> vars{{"pi", 3}, {"rate", 0.05}, {"n", 12}};
    EXPECT_EQ(numberByParsingExpression(u"pi", &vars), std::numbers::pi)
        << "a dictionary never overrides pi";
    EXPECT_EQ(numberByParsingExpression(u"rate*n", &vars), 0.05 * 12);
    EXPECT_FALSE(numberByParsingExpression(u"rate").has_value())
        << "unknown without the dictionary";

    EPDictionaryVariableSource source(&vars);
    EXPECT_TRUE(source.variableExists(u"pi"));
    EXPECT_FALSE(source.variableExists(u"Pi"));
    EXPECT_EQ(source.variableValue(u"missing"), 0);
    EPDictionaryVariableSource none;
    EXPECT_TRUE(none.variableExists(u"pi"));
    EXPECT_FALSE(none.variableExists(u"rate"));
}

// A plus never negates: after an operator it stays one, and fails.
TEST(Failures, MalformedInputGivesNoNumber)
{
    expectInvalid({"+3",    "2*+3",       "2+*3", "3-",   "()", "(2",  "2)",   ")(",    "(()",
                   "sin",   "sin-1",      "2^",   "*",    "-",  "--",  "(1+)", "2^+3",  "(+1)",
                   "sin()", "sinsqrt(4)", "2**3", "1..2", "",   "   ", "(((",  "2+(3*)"});
}

TEST(Nesting, UpTo256LevelsEvaluateDeeperGiveNoNumber)
{
    const auto nested = [](int depth) {
        return QString(depth, u'(') + QStringLiteral("7") + QString(depth, u')');
    };
    EXPECT_EQ(numberByParsingExpression(nested(1)), 7);
    EXPECT_EQ(numberByParsingExpression(nested(256)), 7);
    EXPECT_EQ(numberByParsingExpression(nested(257)), std::nullopt);
    EXPECT_EQ(numberByParsingExpression(nested(100000)), std::nullopt);
    EXPECT_EQ(numberByParsingExpression(QString(100000, u'(')), std::nullopt);
    EXPECT_EQ(numberByParsingExpression(QString(100000, u')')), std::nullopt);
}

TEST(LongLines, StayLinearAndCorrect)
{
    QString sum = QStringLiteral("0");
    for (int i = 1; i <= 5000; ++i)
        sum += QStringLiteral("+%1").arg(i);
    EXPECT_EQ(numberByParsingExpression(sum), 5000.0 * 5001 / 2);
    QString groups;
    for (int i = 0; i < 2000; ++i)
        groups += QStringLiteral("(1)");
    EXPECT_EQ(numberByParsingExpression(groups), 1);
}

// The steps themselves are pinned by the golden replay through the classes.
TEST(ExpressionStructure, BuildsGroupsAndInsertedOperators)
{
    const EPDictionaryVariableSource vars;
    const EPStandardFunctionSource funcs;
    EPTokenString tokens;
    ASSERT_TRUE(tokens.initWithExpression(u"2(3)-sin(1)/-4", vars, funcs));
    EPExpression expression;
    ASSERT_TRUE(expression.initWithTokenString(tokens));
    EXPECT_EQ(expression.toString(), "2 * (3) - sin (1) / -1 / 4");

    size_t index = 1;
    const std::optional<EPTokenString> inner = EPExpression::subExpression(tokens, index);
    ASSERT_TRUE(inner.has_value());
    EXPECT_EQ(inner->count(), 1);
    EXPECT_EQ(index, 3u);
    size_t unmatched = 0;
    EPTokenString open;
    ASSERT_TRUE(open.initWithExpression(u"(1", vars, funcs));
    EXPECT_FALSE(EPExpression::subExpression(open, unmatched).has_value());

    EPExpression empty;
    EXPECT_TRUE(empty.initWithTokenString(EPTokenString()));
    EXPECT_FALSE(empty.evaluateToToken().has_value());
}

TEST(Locale, NumbersAlwaysUseAPoint)
{
    // The keypad types "." whatever the locale says; digits of any script
    // count as their values, as in every number text.
    expectValues({{"2.5*2", 5}, {"\uff11+\uff12", 3}, {"\u0663.\u0665*\u06f2", 7}});
    expectInvalid({"2,5", "2\u066b5"});
}

} // namespace
