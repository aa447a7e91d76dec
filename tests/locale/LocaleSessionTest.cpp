// One session of keypad sequences, form fields, table cells and a report,
// run by ctest under C, de_DE, sv_SE, he_IL, ar_EG and fa_IR (the process
// locale, as a user has it). Every run must give the C results, texts
// differing only in the decimal separator.

#include "TestSupport.h"
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorKeypad.h"
#include "framework/CalculatorRegistry.h"
#include "numerics/NumberFormat.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <cmath>
#include <limits>

namespace {

// The separator the run's locale should show: its own, without invisible
// marks (he_IL, ar_EG and fa_IR wrap their signs in direction marks).
QString separator()
{
    QString s;
    for (const QChar c : QLocale().decimalPoint()) {
        if (c.category() != QChar::Other_Format)
            s += c;
    }
    return s;
}

// A C text as this locale writes it.
QString here(const char* cText)
{
    return QString::fromLatin1(cText).replace(QLatin1Char('.'), separator());
}

// 17 significant digits: equal texts mean equal doubles.
std::string exact(double value)
{
    return NumberFormat::preciseString(value).toStdString();
}

TEST(LocaleSession, RunsInTheLocaleItWasStartedWith)
{
    const QString expected = qEnvironmentVariable("TALLYVANE_EXPECTED_LOCALE");
    ASSERT_FALSE(expected.isEmpty()) << "ctest sets TALLYVANE_EXPECTED_LOCALE";
    EXPECT_EQ(QLocale().name(), expected == u"C" ? QStringLiteral("C") : expected);
    // Each locale is here for what it would break.
    if (expected == u"de_DE") {
        EXPECT_EQ(QLocale().groupSeparator(), ".");
    } else if (expected == u"sv_SE") {
        EXPECT_EQ(QLocale().negativeSign(), QStringLiteral("\u2212"));
    } else if (expected == u"he_IL") {
        EXPECT_EQ(QLocale().negativeSign(), QStringLiteral("\u200e-"));
    }
    if (expected == u"ar_EG" || expected == u"fa_IR") {
        EXPECT_NE(QLocale().negativeSign(), "-");
        EXPECT_EQ(separator(), QStringLiteral("\u066b"));
    }
}

class KeypadSession : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        engine = std::make_unique<CalculatorController>();
        engine->setPresenter(&presenter);
    }
    // Key titles, or runs of characters typed one key each.
    void keys(std::initializer_list<QString> presses) { pressKeys(keypad, presses); }
    void answer(const char* index) { presenter.script({{"OK", index}}); }
    QString display() const { return engine->displayNumber(); }
    const CalculatorModel& registers() const { return engine->model(); }

    CalculatorKeypad keypad;
    ScriptedPresenter presenter;
    std::unique_ptr<CalculatorController> engine;
};

TEST_F(KeypadSession, LoanPaymentAndARecalledNegativeValue)
{
    keys({"12", "P/Y", "12", "C/Y", "360", "N", "6", "I/Y", "250000", "PV", "0", "FV", "CPT",
          "PMT"});
    EXPECT_EQ(display(), here("-1498.8764"));
    EXPECT_EQ(exact(registers().pmt), "-1498.8763128818809");

    // 0-1498.88 = STO 1 CE RCL 1 PMT: the stored text comes back as a number.
    keys({"CE", "0-1498.88", "="});
    EXPECT_EQ(display(), here("-1498.88"));
    answer("1");
    keys({"STO", "CE"});
    EXPECT_EQ(engine->resultStorage().value(1), here("-1498.88"));
    answer("1");
    keys({"RCL"});
    EXPECT_EQ(display(), here("-1498.88"));
    EXPECT_EQ(engine->expression(), "-1498.88");
    keys({"PMT"});
    EXPECT_EQ(registers().pmt, -1498.88);
    EXPECT_EQ(display(), here("-1498.88"));

    keys({"CPT", "PV"});
    EXPECT_EQ(exact(registers().pv), "250000.61498038354");
    EXPECT_EQ(display(), here("250000.615"));
    EXPECT_EQ(registers().period, 360);
    EXPECT_EQ(registers().rate, 6);
}

TEST_F(KeypadSession, NpvAndIrrOfStoredCashFlows)
{
    keys({"CF", "-100", "ENTER", "\u2193", "110", "ENTER", "CE", "10", "I/Y"});
    EXPECT_EQ(engine->cashFlowArray()[0].cash, "-100");
    EXPECT_EQ(engine->cashFlowArray()[1].cash, "110");
    keys({"CPT", "NPV"});
    EXPECT_EQ(exact(registers().npv), "0");
    EXPECT_EQ(display(), here("0"));
    keys({"CPT", "IRR"});
    EXPECT_NEAR(registers().irr, 0.1, 1e-15) << "100 · 1.1 = 110";
    EXPECT_EQ(display(), here("0.1"));

    // A flow with a fraction, stored as the display shows it, reads back.
    keys({"\u2191", "-100.25", "ENTER"});
    EXPECT_EQ(engine->cashFlowArray()[0].cash, here("-100.25"));
    keys({"CPT", "NPV"});
    EXPECT_EQ(exact(registers().npv), "-0.25");
    EXPECT_EQ(display(), here("-0.25"));
}

class FormSession : public HomeTest {};

TEST_F(FormSession, FieldsAndCellsReadByOneRule)
{
    const auto roi = CalculatorRegistry::find("roi")->create();
    const auto npv = CalculatorRegistry::find("npv")->create();
    const auto field = [&](const QString& text) {
        roi->editField("investmentField", text);
        return roi->model()->property("investmentAmount").toDouble();
    };
    const auto cell = [&](const QString& text) {
        npv->setTableInput("cashArray", {text});
        return npv->model()->property("cashArray").value<QList<double>>().value(0);
    };
    for (const auto& read : {std::function<double(const QString&)>(field),
                             std::function<double(const QString&)>(cell)}) {
        EXPECT_EQ(read("0.125"), 0.125) << "\".\" reads in every locale";
        EXPECT_EQ(read(here("2.125")), 2.125);
        EXPECT_EQ(read(NumberFormat::stringFromDouble(-2.5)), -2.5);
        EXPECT_EQ(read(QLocale().negativeSign() + here("2.5")), -2.5) << "the locale's own minus";
        EXPECT_EQ(read("1e400"), std::numeric_limits<double>::infinity())
            << "exponents, in fields and cells alike";
        EXPECT_EQ(read("2.5E-3"), 0.0025);
        EXPECT_EQ(read("1,125"), separator() == u"," ? 1.125 : 0.0);
        EXPECT_EQ(read("1.000,5"), 0) << "never a grouping separator";
        const QString grouped = QLocale().toString(1234567.5, 'f', 1);
        EXPECT_EQ(read(grouped), grouped.contains(QLocale().groupSeparator()) ? 0 : 1234567.5)
            << "grouped, as the locale groups";
        EXPECT_EQ(read("1.234"), QLocale().groupSeparator() == u"." ? 0 : 1.234)
            << "ambiguous where \".\" groups thousands";
        EXPECT_EQ(read(QStringLiteral("\uff11\uff12")), 12);
    }
}

TEST_F(FormSession, ReportWithNegativeNumbersIsTheCReport)
{
    if (separator().at(0).unicode() >= 0x80)
        GTEST_SKIP() << "report files are ASCII; this locale's decimal separator is not";
    const auto roi = CalculatorRegistry::find("roi")->create();
    roi->editField("investmentField", "1000");
    roi->editField("futureValueField", here("750.5"));
    roi->editField("yearsField", "3");
    roi->sendReportRequestedNotification("Loss");
    const QString name = "roi_Loss_05-03-2024 14:07_report.txt";
    QFile file(QDir(documents()).filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "the report was written";
    EXPECT_EQ(file.readAll(), here("Financial Report - Return on Investment\n"
                                   "Date: 05-03-2024 14:07\n"
                                   "\n-----------------------------\n\n"
                                   "Investment: 1000\n"
                                   "Income: 750.5\n"
                                   "Years: 3\n"
                                   "Gain or Loss: -249.5\n"
                                   "Roi: -24.95%\n"
                                   "Annualized Roi: -8.317%\n")
                                  .toUtf8());
}

} // namespace
