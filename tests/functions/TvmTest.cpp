#include "TestSupport.h"
#include "functions/tvm/TvmController.h"
#include "platform/Services.h"
#include "reports/ReportDetailController.h"
#include "reports/ReportTableModel.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLocale>
#include <cmath>

namespace {

class TvmTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        tvm = std::make_unique<TvmController>();
        tvm->setPresenter(&presenter);
        view = tvm->qvFunctionView();
    }
    void type(const QString& outlet, const QString& text) { tvm->editField(outlet, text); }
    void choose(const QString& outlet, const QString& word)
    {
        presenter.script({{word, ""}});
        tvm->openChoice(outlet);
    }

    ScriptedPresenter presenter;
    std::unique_ptr<TvmController> tvm;
    QVFunctionView* view = nullptr;
};

TEST_F(TvmTest, DefaultsAreBeginningModeAndAnnualPayments)
{
    EXPECT_EQ(tvm->tvmModel()->paymentMode, "BEG");
    EXPECT_EQ(tvm->tvmModel()->paymentFrequency, 1);
    EXPECT_EQ(view->text("modeButton"), "BEG");
    EXPECT_EQ(view->text("frequencyButton"), "Annually");
    EXPECT_EQ(view->title(), "TVM Calculator");
}

TEST_F(TvmTest, FutureValueOfMonthlyCompounding)
{
    type("pvField", "1000");
    type("interestField", "12");
    type("periodField", "12");
    type("pmtField", "0");
    choose("frequencyButton", "Monthly");
    choose("modeButton", "END");
    EXPECT_EQ(view->text("frequencyButton"), "Monthly");
    EXPECT_EQ(presenter.requests[0].title, "Frequency");
    EXPECT_EQ(presenter.requests[0].message, "Please choose a frequency.");
    EXPECT_EQ(presenter.requests[1].message, "Please choose a mode for your payments.");
    tvm->futureValueClicked();
    EXPECT_EQ(view->text("fvField"), local("1126.825"));
    EXPECT_NEAR(tvm->tvmModel()->futureValue, 1000 * std::pow(1.01, 12), 1e-9);
    EXPECT_EQ(tvm->tvmModel()->lastCalculated, "FV");
    EXPECT_TRUE(tvm->chartShown());
}

TEST_F(TvmTest, SolvedValuesRoundTripThroughEveryButton)
{
    choose("frequencyButton", "Monthly");
    choose("modeButton", "END");
    type("pvField", "250000");
    type("fvField", "0");
    type("interestField", "6");
    type("periodField", "360");
    tvm->paymentClicked();
    const double payment = tvm->tvmModel()->payment;
    EXPECT_NEAR(payment, -1498.876313, 1e-6);

    // The payment field shows three decimals, and the next solve reads it.
    EXPECT_EQ(view->text("pmtField"), local("-1498.876"));
    tvm->presentValueClicked();
    EXPECT_NEAR(tvm->tvmModel()->presentValue, 1498.876 * (1 - std::pow(1.005, -360)) / 0.005,
                1e-6);
    tvm->periodClicked();
    EXPECT_NEAR(tvm->tvmModel()->period, 360, 1e-3);
    type("pvField", "250000");
    type("interestField", "0");
    tvm->interestRateClicked();
    EXPECT_NEAR(tvm->tvmModel()->interestRate, 6, 1e-3);
}

TEST_F(TvmTest, BeginAndEndDifferOnlyOnPayments)
{
    type("pvField", "1000");
    type("interestField", "5");
    type("periodField", "10");
    tvm->futureValueClicked();
    const double beg = tvm->tvmModel()->futureValue;
    choose("modeButton", "END");
    tvm->futureValueClicked();
    EXPECT_EQ(tvm->tvmModel()->futureValue, beg) << "no payments: BEG and END agree";
    type("pmtField", "100");
    tvm->futureValueClicked();
    const double end = tvm->tvmModel()->futureValue;
    choose("modeButton", "BEG");
    tvm->futureValueClicked();
    EXPECT_NEAR(tvm->tvmModel()->futureValue - 1000 * std::pow(1.05, 10),
                (end - 1000 * std::pow(1.05, 10)) * 1.05, 1e-9);
}

// The I/Y button: rates inside 0 %..100 % exactly as before (pinned to 17
// digits), rates outside found beyond the range, none as NaN.
TEST_F(TvmTest, RateSolveInsideItsRangeIsPinnedAndGoesOnOutside)
{
    struct Case {
        const char *pv, *pmt, *fv, *n, *frequency;
        double expected;
        double tolerance; // 0: exact
        const char* shown;
    };
    const Case cases[] = {
        {"1000", "0", "2000", "10", "Annually", 7.1773462579585612, 0, "7.177"},
        {"250000", "-1498.8764", "0", "360", "Monthly", 6.0000005420192792, 0, "6"},
        {"1000", "0", "900", "5", "Annually", -2.0851637639, 5e-11, "-2.085"},
        {"1000", "0", "5000", "1", "Annually", 400, 1e-9, "400"},
        {"1000", "0", "-5", "5", "Annually", NAN, 0, "NaN"},
    };
    choose("modeButton", "END");
    for (const Case& c : cases) {
        type("pvField", c.pv);
        type("pmtField", c.pmt);
        type("fvField", c.fv);
        type("periodField", c.n);
        choose("frequencyButton", c.frequency);
        tvm->interestRateClicked();
        const double rate = tvm->tvmModel()->interestRate;
        if (std::isnan(c.expected))
            EXPECT_TRUE(std::isnan(rate)) << c.fv;
        else if (c.tolerance == 0)
            EXPECT_EQ(rate, c.expected) << c.fv;
        else
            EXPECT_NEAR(rate, c.expected, c.tolerance) << c.fv;
        EXPECT_EQ(view->text("interestField"),
                  QString::fromLatin1(c.shown).replace('.', QLocale().decimalPoint()))
            << c.fv;
    }
}

TEST_F(TvmTest, LargeAmountsStillFindTheRate)
{
    type("pvField", typed(1e12));
    type("periodField", "30");
    type("fvField", QString::number(1e12 * std::pow(1.07, 30), 'f', 2));
    tvm->interestRateClicked();
    EXPECT_NEAR(tvm->tvmModel()->interestRate, 7, 1e-6);
}

TEST_F(TvmTest, ChartSeriesAndLabels)
{
    type("pvField", "1000");
    type("interestField", "10");
    type("periodField", "2.7");
    tvm->futureValueClicked();
    const TvmModel* m = tvm->tvmModel();
    EXPECT_EQ(m->dataForXAxisWithLineNumber(0), QStringList({"0", "1", "2"}));
    const auto values = m->dataForYAxisWithLineNumber(0);
    ASSERT_EQ(values.size(), 2);
    EXPECT_NEAR(*values[0], 1100, 1e-9);
    EXPECT_NEAR(*values[1], 1210, 1e-9);
    EXPECT_EQ(m->nameForTheLineWithLineNumber(0), "FV");
    EXPECT_EQ(m->colorForTheLineWithLineNumber(0), Rgba(0x28, 0xAB, 0xE3));
    EXPECT_EQ(m->typeOfLineToBeDrawnWithLineNumber(0), 2);
    EXPECT_TRUE(m->shouldDrawPointsWithLineNumber(0));
    EXPECT_FALSE(m->shouldFillGraphWithLineNumber(0));
    EXPECT_EQ(m->customViewForLineChartTouchWithXValueAndYValue("1", 1100).text, "FV: 1100");

    type("periodField", "0");
    tvm->futureValueClicked();
    EXPECT_FALSE(tvm->chartShown()) << "no periods, no chart";
    EXPECT_TRUE(m->dataForLastCalculated().isEmpty());
}

TEST_F(TvmTest, SolvingNClearsTheChartWithoutANewOne)
{
    type("pvField", "100");
    type("fvField", "200");
    type("interestField", "7");
    type("periodField", "10");
    tvm->futureValueClicked();
    ASSERT_TRUE(tvm->chartShown());
    tvm->periodClicked();
    EXPECT_FALSE(tvm->chartShown());
    EXPECT_EQ(tvm->tvmModel()->lastCalculated, "FV");
}

TEST_F(TvmTest, LongTermsAreSampledOverTheirWholeLength)
{
    type("pvField", "100");
    type("interestField", "1");
    for (const double periods : {3000.0, 1e9}) {
        type("periodField", typed(periods));
        tvm->futureValueClicked();
        const TvmModel* m = tvm->tvmModel();
        QStringList labels = m->dataForXAxisWithLineNumber(0);
        const auto values = m->dataForYAxisWithLineNumber(0);
        EXPECT_EQ(values.size(), TvmModel::maximumChartPeriods);
        ASSERT_EQ(labels.size(), TvmModel::maximumChartPeriods + 1);
        EXPECT_EQ(labels.first(), "0");
        EXPECT_EQ(labels.last(), typed(periods)) << "the chart reaches the last period";
        const double last = m->calculateFutureValueWithPeriod(int(periods));
        EXPECT_TRUE(*values.last() == last || (std::isnan(*values.last()) && std::isnan(last)));
        EXPECT_EQ(labels.removeDuplicates(), 0);
    }
}

TEST_F(TvmTest, MailedPictureIsTheChartAsDrawnAfterTheSettingsChange)
{
    auto mail = std::make_shared<RecordingMailComposer>();
    Services::setMailComposer(mail);
    type("pvField", "1000");
    type("pmtField", "500");
    type("interestField", "7");
    type("periodField", "10");
    tvm->setChartSize(QSize(300, 200));
    tvm->futureValueClicked();
    const auto drawn = tvm->tvmModel()->dataForYAxisWithLineNumber(0);
    const QByteArray expected = ChartPictures::encode(tvm->reportChart(), "JPEG");

    // Mode and frequency change after the solve; the result and the chart
    // on the screen still belong to that solve, and so does the picture.
    choose("modeButton", "END");
    choose("frequencyButton", "Monthly");
    EXPECT_EQ(tvm->tvmModel()->dataForYAxisWithLineNumber(0), drawn);
    presenter.script({{"Send Email", ""}});
    tvm->exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    ASSERT_EQ(mail->messages[0].attachments.size(), 2);
    EXPECT_EQ(mail->messages[0].attachments[1].data, expected);
    EXPECT_NE(tvm->tvmModel()->dataForLastCalculated(), drawn) << "the settings did change";
}

TEST_F(TvmTest, ASavedReportKeepsItsChartAndItsPdfShowsIt)
{
    ReportTableModel list; // the saved list exists before any save
    type("pvField", "1000");
    type("interestField", "5");
    type("periodField", "10");
    tvm->setChartSize(QSize(300, 200));
    tvm->futureValueClicked();
    presenter.script({{"Save", ""}, {"OK", "Plan"}, {"OK", ""}});
    tvm->exportClicked();
    ASSERT_EQ(presenter.requests.back().title, "Calculation Saved");
    const QString text = QDir(documents()).filePath(tvm->model()->report().fileName);
    const QString chart =
        QDir(documents()).filePath("tvm_description_Plan_05-03-2024 14:07_chart.png");
    EXPECT_EQ(QImage(chart).size(), QSize(600, 400));

    ReportDetailController detail;
    ScriptedPresenter detailPresenter;
    detail.setPresenter(&detailPresenter);
    detail.setReportFilePath(text);
    detailPresenter.script({{"Save as PDF", ""}, {"OK", ""}});
    detail.actionClicked();
    QFile pdf(QDir(documents()).filePath("tvm_description_Plan_05-03-2024 14:07_report.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().contains("/Subtype /Image")) << "the chart is in the PDF";
}

TEST_F(TvmTest, PaymentOverNoPeriodsAtANegativeRateFollowsTheFormula)
{
    // PMT = i (FV - PV g) / ((1 + iB)(g - 1)) with g - 1 = +0: -50 / +0.
    type("fvField", "1000");
    type("interestField", "-5");
    type("periodField", "0");
    tvm->paymentClicked();
    EXPECT_EQ(view->text("pmtField"), "-Infinity");
    type("interestField", "5");
    tvm->paymentClicked();
    EXPECT_EQ(view->text("pmtField"), "Infinity");
}

TEST_F(TvmTest, ReportRepeatsThePeriodOnThePaymentLine)
{
    type("pvField", "1000");
    type("interestField", "12");
    type("periodField", "12");
    type("pmtField", "55");
    tvm->futureValueClicked();
    tvm->sendReportRequestedNotification("plan");
    const QString contents = tvm->model()->report().contents;
    EXPECT_TRUE(contents.startsWith("Financial Report - Time Value of Money\n"));
    EXPECT_TRUE(contents.contains("\nPeriod: 12\nPayment: 12\nPayment Frequency: 1\nMode: BEG\n"));
    EXPECT_TRUE(contents.contains("Interest Rate: 12%\n"));
    EXPECT_EQ(tvm->model()->report().fileName, "tvm_description_plan_05-03-2024 14:07_report.txt");
}

TEST_F(TvmTest, MailedReportCarriesTheChartAsGraphPng)
{
    auto mail = std::make_shared<RecordingMailComposer>();
    Services::setMailComposer(mail);
    type("pvField", "1000");
    type("interestField", "5");
    type("periodField", "10");
    tvm->setChartSize(QSize(300, 200));
    tvm->setChartSize(QSize(300, -16)); // hidden until the first solve
    tvm->futureValueClicked();
    presenter.script({{"Send Email", ""}});
    tvm->exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    const QList<MailAttachment>& attachments = mail->messages[0].attachments;
    ASSERT_EQ(attachments.size(), 2);
    EXPECT_EQ(attachments[0].fileName, "tvm_description__05-03-2024 14:07_report.txt");
    EXPECT_EQ(attachments[1].fileName, "graph.png");
    EXPECT_EQ(attachments[1].mimeType, "image/jpeg");
    const QImage chart = QImage::fromData(attachments[1].data, "JPEG");
    EXPECT_EQ(chart.size(), QSize(600, 400)) << "drawn at twice the screen's size";
    // The line colour shows up somewhere in the picture.
    bool blue = false;
    for (int y = 0; y < chart.height() && !blue; ++y)
        for (int x = 0; x < chart.width() && !blue; ++x) {
            const QColor c = chart.pixelColor(x, y);
            blue = std::abs(c.red() - 0x28) < 40 && std::abs(c.green() - 0xAB) < 40 &&
                   std::abs(c.blue() - 0xE3) < 40;
        }
    EXPECT_TRUE(blue);
}

TEST_F(TvmTest, ZeroRateGivesNonFiniteResults)
{
    type("pvField", "100");
    type("pmtField", "10");
    type("periodField", "5");
    tvm->futureValueClicked();
    EXPECT_EQ(view->text("fvField"), "NaN");
}

} // namespace
