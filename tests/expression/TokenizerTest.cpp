#include "ExpressionTestSupport.h"

#include <QStringList>

namespace {

struct Tokenized {
    bool ok = false;
    QStringList kinds; // one word per token
    EPTokenString tokens;
};

QString kindOf(const EPAnyToken& t)
{
    switch (t.index()) {
    case 0:
        return std::get<EPParenthesesToken>(t).toString();
    case 1:
        return QStringLiteral("num:") +
               QString::number(std::get<EPNumericalToken>(t).doubleValue());
    case 2:
        return QStringLiteral("var:") + std::get<EPVariableToken>(t).variableName();
    default:
        return t.token().toString();
    }
}

Tokenized tokenize(const QString& text, const QHash<QString, double>* vars = nullptr)
{
    Tokenized result;
    const EPDictionaryVariableSource variables(vars);
    const EPStandardFunctionSource functions;
    result.ok = result.tokens.initWithExpression(text, variables, functions);
    for (const EPAnyToken& t : result.tokens.tokenArray())
        result.kinds << kindOf(t);
    return result;
}

TEST(Tokenizer, SplitsAtTheSevenDelimitersAndDropsWhiteSpace)
{
    EXPECT_EQ(tokenize("2+3").kinds, QStringList({"num:2", "+", "num:3"}));
    EXPECT_EQ(tokenize("sin(30)").kinds, QStringList({"sin", "(", "num:30", ")"}));
    EXPECT_EQ(tokenize("((").kinds, QStringList({"(", "("}));
    EXPECT_EQ(tokenize("1*2/3^4-5").kinds,
              QStringList({"num:1", "*", "num:2", "/", "num:3", "^", "num:4", "-", "num:5"}));
    EXPECT_EQ(tokenize("-5").kinds, QStringList({"-", "num:5"})) << "a minus never joins a number";
    // White space is dropped, not a separator.
    EXPECT_EQ(tokenize("1 000").kinds, QStringList({"num:1000"}));
    EXPECT_EQ(tokenize("s qrt(4)").kinds.first(), "sqrt");
    EXPECT_EQ(tokenize(" \t2\n+\u00a03\u2003").kinds, QStringList({"num:2", "+", "num:3"}));
    const Tokenized blank = tokenize("   ");
    EXPECT_TRUE(blank.ok);
    EXPECT_TRUE(blank.kinds.isEmpty());
    EXPECT_TRUE(tokenize("").ok);
    // Only function names split off a number.
    EXPECT_EQ(tokenize("2sqrt(9)").kinds, QStringList({"num:2", "sqrt", "(", "num:9", ")"}));
    EXPECT_EQ(tokenize("12.5ln").kinds, QStringList({"num:12.5", "ln"}));
    EXPECT_EQ(tokenize("pi").kinds, QStringList({"var:pi"}));
    EXPECT_EQ(tokenize("atan(1)").kinds.first(), "atan");
}

// Every word must be a number, a variable or a function: "2 pi" is the word
// 2pi; names are case-sensitive; a number has digits and one point, no
// exponent; superscripts and fractions are no digits; nor is a lone
// surrogate.
TEST(Tokenizer, RefusesOtherWords)
{
    for (const QString& text :
         QStringList{"2 pi", "sin30", "2pi", "SIN(1)", "1e5", "x+1", "2%", "3.5.1", "2\u00b2",
                     "\u00bd", QStringLiteral("1") + QChar(0xd835)})
        EXPECT_FALSE(tokenize(text).ok) << text.toStdString();
}

TEST(NumberSyntax, DigitsWithOnePointAndNoExponent)
{
    EXPECT_EQ(tokenize("5.").kinds, QStringList({"num:5"}));
    EXPECT_EQ(tokenize(".").kinds, QStringList({"num:0"}));
    EXPECT_EQ(tokenize(".25").kinds, QStringList({"num:0.25"}));
    // Any script's decimal digits read as their values, surrogate pairs too.
    EXPECT_EQ(tokenize("\u0661\u0662").kinds, QStringList({"num:12"}));
    EXPECT_EQ(tokenize("5\u0661.\u06f5").kinds, QStringList({"num:51.5"}));
    EXPECT_EQ(tokenize("\uff11+\uff12").kinds, QStringList({"num:1", "+", "num:2"}));
    EXPECT_EQ(tokenize("\U0001D7D9\U0001D7EC").kinds, QStringList({"num:10"}));

    EPNumericalToken token;
    EXPECT_TRUE(token.initWithString(u"-2.5"));
    EXPECT_EQ(token.doubleValue(), -2.5);
    EXPECT_FALSE(token.initWithString(u"2-5")) << "\"-\" only first";
    EXPECT_TRUE(token.initWithString(u""));
    EXPECT_EQ(token.doubleValue(), 0.0);
    EXPECT_TRUE(token.initWithString(QString(400, u'9')));
    EXPECT_TRUE(std::isinf(token.doubleValue()));
    EXPECT_TRUE(
        token.initWithString(QStringLiteral("0.") + QString(400, u'0') + QStringLiteral("1")));
    EXPECT_EQ(token.doubleValue(), 0.0);
}

TEST(NumberText, FixedFiveDecimalsRightAlignedAndTrimmedThroughThePoint)
{
    const auto text = [](double v) { return EPNumericalToken(v).toString(); };
    EXPECT_EQ(text(2.5), QString(993, ' ') + "2.5");
    EXPECT_EQ(text(10), QString(992, ' ') + "1") << "10.00000 loses its zero too";
    EXPECT_EQ(text(0), QString(993, ' '));
    EXPECT_EQ(text(-1.125), QString(992, ' ') + "-1.125");
    EXPECT_EQ(text(1e22), QString(971, ' ') + "1") << "every trailing zero goes";
    EXPECT_EQ(text(123456789012.5), QString(982, ' ') + "123456789012.5");
}

TEST(Tokens, TextsAndCopies)
{
    EPParenthesesToken paren;
    EXPECT_TRUE(paren.initWithString(u")"));
    EXPECT_EQ(paren.direction(), 1);
    EXPECT_EQ(paren.toString(), ")");
    EXPECT_FALSE(paren.initWithString(u"(("));

    EPAddSubOperator minus;
    EXPECT_TRUE(minus.initWithString(u"-"));
    EXPECT_TRUE(minus.isSubtraction());
    EXPECT_EQ(std::get<EPAddSubOperator>(minus.negativeToken()).isSubtraction(), true);
    EPMulDivOperator div;
    EXPECT_TRUE(div.initWithString(u"/"));
    EXPECT_EQ(div.toString(), "/");
    EXPECT_FALSE(EPPowerOperator().initWithString(u"**"));

    EPVariableToken var;
    var.initWithString(u"rate");
    var.setDoubleValue(4);
    EXPECT_EQ(std::get<EPVariableToken>(var.negativeToken()).doubleValue(), -4);
    EXPECT_EQ(std::get<EPVariableToken>(var.negativeToken()).variableName(), "rate");
    EXPECT_EQ(std::get<EPNumericalToken>(EPNumericalToken(3).negativeToken()).doubleValue(), -3);
}

TEST(Tokens, FunctionNegationFlipsButCopiesStartPositive)
{
    EPSinCosFunction sin;
    ASSERT_TRUE(sin.initWithString(u"sin"));
    EXPECT_FALSE(sin.initWithString(u"tan"));
    ASSERT_TRUE(sin.initWithString(u"sin"));
    const EPAnyToken negated = sin.negativeToken();
    const auto& negSin = std::get<EPSinCosFunction>(negated);
    EXPECT_TRUE(negSin.negative());
    EXPECT_FALSE(std::get<EPSinCosFunction>(negSin.negativeToken()).negative());
    EXPECT_FALSE(std::get<EPSinCosFunction>(*negSin.copy()).negative())
        << "a copy never carries the flag";
    EXPECT_EQ(negSin.applyToOperand(EPNumericalToken(1))->doubleValue(), -std::sin(1.0));

    EPSqrtFunction sqrt;
    ASSERT_TRUE(sqrt.initWithString(u"sqrt"));
    const EPAnyToken negatedSqrt = sqrt.negativeToken();
    const auto& negSqrt = std::get<EPSqrtFunction>(negatedSqrt);
    EXPECT_TRUE(negSqrt.negative());
    EXPECT_EQ(negSqrt.applyToOperand(EPNumericalToken(4))->doubleValue(), 2)
        << "only sin and cos honour the flag";
    EXPECT_FALSE(negSqrt.applyToOperand(EPAddSubOperator()).has_value());

    EPLogLnFunction ln;
    EXPECT_TRUE(ln.initWithString(u"ln"));
    EXPECT_TRUE(ln.isNatural());
    EXPECT_EQ(ln.functionName(), "ln");
}

TEST(Variables, ValueIsTakenWhenTokenizing)
{
    QHash<QString, double> vars{{"x", 2.5}};
    const Tokenized t = tokenize("x*2", &vars);
    ASSERT_TRUE(t.ok);
    vars["x"] = 100;
    EXPECT_EQ(std::get<EPVariableToken>(t.tokens.tokenArray()[0]).doubleValue(), 2.5);
}

TEST(SubstringWithRange, CopiesARangeAndRefusesBadBounds)
{
    const Tokenized t = tokenize("1+2*3");
    const EPTokenString middle = t.tokens.substringWithRange(1, 3);
    ASSERT_EQ(middle.count(), 3);
    EXPECT_EQ(middle.tokenArray()[0].token().toString(), "+");
    EXPECT_EQ(t.tokens.substringWithRange(5, 0).count(), 0);
    EXPECT_EQ(t.tokens.substringWithRange(2, 0).count(), 0);
    EXPECT_THROW(t.tokens.substringWithRange(3, 3), std::out_of_range);
    EXPECT_THROW(t.tokens.substringWithRange(6, 0), std::out_of_range);
    EXPECT_THROW(t.tokens.substringWithRange(1, SIZE_MAX), std::out_of_range);
    try {
        t.tokens.substringWithRange(4, 2);
    } catch (const std::out_of_range& e) {
        EXPECT_STREQ(e.what(), "Invalid bounds specified for substringWithRange:");
    }
}

// Misusing the abstract classes is a programming error that stops the program.
TEST(AbstractTokensDeathTest, AbstractOperationsStopTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    struct PlainToken : EPToken {};
    struct PlainOperator : EPOperator {};
    PlainToken token;
    EXPECT_DEATH(token.toString(), "This is an abstract class and must be subclassed.");
    EXPECT_DEATH(token.initWithString(u"x"), "This is an abstract class and must be subclassed.");
    EXPECT_DEATH(token.negativeToken(), "This is an abstract class and must be subclassed.");
    EXPECT_FALSE(token.copy().has_value()) << "the base copies to nothing";
    PlainOperator op;
    EXPECT_DEATH(op.applyLeftOperandToRight(EPNumericalToken(1), EPNumericalToken(2)),
                 "This is an abstract class and must be subclassed.");
    EPFunctionToken function;
    function.initWithString(u"f");
    EXPECT_DEATH(function.applyToOperand(EPNumericalToken(1)),
                 "This is an abstract method and must be overridden.");
    EXPECT_DEATH(function.applyToOperandAbsolute(EPNumericalToken(1)),
                 "This is an abstract method and must be overridden.");
}

} // namespace
