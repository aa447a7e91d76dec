#include "ExpressionTestSupport.h"

namespace {

// Tokenizing text is pinned by the golden replay, which runs every recorded
// line through these classes too; here are what no text reaches: a "-"
// inside a number, the token texts and copies, bad ranges, abstract misuse.
TEST(NumberSyntax, OnlyALeadingMinusAndEmptyOrHugeTexts)
{
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

    // A variable read while tokenizing keeps its name and the value it had then.
    QHash<QString, double> vars{{"rate", 2.5}};
    EPTokenString t;
    ASSERT_TRUE(t.initWithExpression(u"rate*2", EPDictionaryVariableSource(&vars),
                                     EPStandardFunctionSource()));
    vars["rate"] = 100;
    const auto& read = std::get<EPVariableToken>(t.tokenArray()[0]);
    EXPECT_EQ(read.variableName(), "rate");
    EXPECT_EQ(read.doubleValue(), 2.5);
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

TEST(SubstringWithRange, CopiesARangeAndRefusesBadBounds)
{
    EPTokenString t;
    ASSERT_TRUE(
        t.initWithExpression(u"1+2*3", EPDictionaryVariableSource(), EPStandardFunctionSource()));
    const EPTokenString middle = t.substringWithRange(1, 3);
    ASSERT_EQ(middle.count(), 3);
    EXPECT_EQ(middle.tokenArray()[0].token().toString(), "+");
    EXPECT_EQ(t.substringWithRange(5, 0).count(), 0);
    EXPECT_EQ(t.substringWithRange(2, 0).count(), 0);
    EXPECT_THROW(t.substringWithRange(3, 3), std::out_of_range);
    EXPECT_THROW(t.substringWithRange(6, 0), std::out_of_range);
    EXPECT_THROW(t.substringWithRange(1, SIZE_MAX), std::out_of_range);
    try {
        t.substringWithRange(4, 2);
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
