#include "functions/ScreenTest.h"
#include "functions/tvm/TvmController.h"
#include "platform/Services.h"
#include "reports/ReportDetailController.h"
#include "reports/ReportTableModel.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <cmath>

namespace {

class TvmTest : public ScreenTest<TvmController> {
protected:
    // Types each outlet's text in turn: {"pvField", "1000"}, ...
    void fill(std::initializer_list<std::pair<const char*, QString>> fields)
    {
        for (const auto& [outlet, text] : fields)
            type(outlet, text);
    }
    const TvmModel& model() const { return *screen->tvmModel(); }
};

TEST_F(TvmTest, FutureValueOfMonthlyCompounding)
{
    // Defaults: beginning mode and annual payments.
    EXPECT_EQ(texts({"modeButton", "frequencyButton"}), QStringList({"BEG", "Annually"}));
    EXPECT_EQ(view->title(), "TVM Calculator");

    fill({{"pvField", "1000"}, {"interestField", "12"}, {"periodField", "12"}, {"pmtField", "0"}});
    choose("frequencyButton", "Monthly");
    choose("modeButton", "END");
    EXPECT_EQ(view->text("frequencyButton"), "Monthly");
    EXPECT_EQ(presenter.requests[0].title, "Frequency");
    EXPECT_EQ(presenter.requests[0].message, "Please choose a frequency.");
    EXPECT_EQ(presenter.requests[1].message, "Please choose a mode for your payments.");
    screen->futureValueClicked();
    EXPECT_EQ(view->text("fvField"), local("1126.825"));
    EXPECT_NEAR(model().futureValue, 1000 * std::pow(1.01, 12), 1e-9);
    EXPECT_EQ(model().lastCalculated, "FV");
    EXPECT_TRUE(screen->chartShown());

    // Solving N clears the chart without drawing a new one.
    screen->periodClicked();
    EXPECT_FALSE(screen->chartShown());
    EXPECT_EQ(model().lastCalculated, "FV");
}

TEST_F(TvmTest, SolvedValuesRoundTripThroughEveryButton)
{
    choose("frequencyButton", "Monthly");
    choose("modeButton", "END");
    fill({{"pvField", "250000"}, {"fvField", "0"}, {"interestField", "6"}, {"periodField", "360"}});
    screen->paymentClicked();
    EXPECT_NEAR(model().payment, -1498.876313, 1e-6);

    // The payment field shows three decimals, and the next solve reads it.
    EXPECT_EQ(view->text("pmtField"), local("-1498.876"));
    screen->presentValueClicked();
    EXPECT_NEAR(model().presentValue, 1498.876 * (1 - std::pow(1.005, -360)) / 0.005, 1e-6);
    screen->periodClicked();
    EXPECT_NEAR(model().period, 360, 1e-3);
    fill({{"pvField", "250000"}, {"interestField", "0"}});
    screen->interestRateClicked();
    EXPECT_NEAR(model().interestRate, 6, 1e-3);
    // Only a button solves here, so a sign flip leaves no result stale.
    screen->signFlipped("pvField", "-250000");
    EXPECT_FALSE(view->stale());
}

TEST_F(TvmTest, BeginAndEndDifferOnlyOnPayments)
{
    fill({{"pvField", "1000"}, {"interestField", "5"}, {"periodField", "10"}});
    screen->futureValueClicked();
    const double beg = model().futureValue;
    choose("modeButton", "END");
    screen->futureValueClicked();
    EXPECT_EQ(model().futureValue, beg) << "no payments: BEG and END agree";
    type("pmtField", "100");
    screen->futureValueClicked();
    const double end = model().futureValue;
    choose("modeButton", "BEG");
    screen->futureValueClicked();
    EXPECT_NEAR(model().futureValue - 1000 * std::pow(1.05, 10),
                (end - 1000 * std::pow(1.05, 10)) * 1.05, 1e-9);
}

TEST_F(TvmTest, ChartSeriesAndLabels)
{
    fill({{"pvField", "1000"}, {"interestField", "10"}, {"periodField", "2.7"}});
    screen->futureValueClicked();
    const TvmModel& m = model();
    EXPECT_EQ(m.dataForXAxisWithLineNumber(0), QStringList({"0", "1", "2"}));
    const auto values = m.dataForYAxisWithLineNumber(0);
    ASSERT_EQ(values.size(), 2);
    EXPECT_NEAR(*values[0], 1100, 1e-9);
    EXPECT_NEAR(*values[1], 1210, 1e-9);
    EXPECT_EQ(m.nameForTheLineWithLineNumber(0), "FV");
    EXPECT_EQ(m.colorForTheLineWithLineNumber(0), Rgba(0x28, 0xAB, 0xE3));
    EXPECT_EQ(m.typeOfLineToBeDrawnWithLineNumber(0), 2);
    EXPECT_TRUE(m.shouldDrawPointsWithLineNumber(0));
    EXPECT_FALSE(m.shouldFillGraphWithLineNumber(0));
    EXPECT_EQ(m.customViewForLineChartTouchWithXValueAndYValue("1", 1100).text, "FV: 1100");

    // Each solve charts its own quantity, reaching the solved value at the
    // last period.
    struct Solve {
        void (TvmController::*click)();
        const char* name;
        double TvmModel::*value;
    };
    for (const Solve& solve :
         {Solve{&TvmController::presentValueClicked, "PV", &TvmModel::presentValue},
          Solve{&TvmController::interestRateClicked, "I/Y", &TvmModel::interestRate},
          Solve{&TvmController::paymentClicked, "PMT", &TvmModel::payment}}) {
        fill({{"pvField", "1000"},
              {"fvField", "1210"},
              {"interestField", "10"},
              {"periodField", "2"},
              {"pmtField", "0"}});
        ((*screen).*solve.click)();
        EXPECT_EQ(m.nameForTheLineWithLineNumber(0), solve.name);
        const auto line = m.dataForYAxisWithLineNumber(0);
        ASSERT_EQ(line.size(), 2) << solve.name;
        EXPECT_NEAR(*line.last(), m.*solve.value, 1e-9 * std::max(1.0, std::fabs(m.*solve.value)))
            << solve.name;
    }

    type("periodField", "0");
    screen->futureValueClicked();
    EXPECT_FALSE(screen->chartShown()) << "no periods, no chart";
    EXPECT_TRUE(m.dataForLastCalculated().isEmpty());

    // Long terms are sampled over their whole length.
    type("pvField", "100");
    type("interestField", "1");
    for (const double periods : {3000.0, 1e9}) {
        type("periodField", typed(periods));
        screen->futureValueClicked();
        QStringList labels = m.dataForXAxisWithLineNumber(0);
        const auto values = m.dataForYAxisWithLineNumber(0);
        EXPECT_EQ(values.size(), TvmModel::maximumChartPeriods);
        ASSERT_EQ(labels.size(), TvmModel::maximumChartPeriods + 1);
        EXPECT_EQ(labels.first(), "0");
        EXPECT_EQ(labels.last(), typed(periods)) << "the chart reaches the last period";
        const double last = m.calculateFutureValueWithPeriod(int(periods));
        EXPECT_TRUE(*values.last() == last || (std::isnan(*values.last()) && std::isnan(last)));
        EXPECT_EQ(labels.removeDuplicates(), 0);
    }
}

// The mailed report carries the chart drawn at twice the screen's size, as it
// was drawn for the solve even when mode and frequency change after it (the
// attachment's name and type, and the drawing, are the chart code's tests).
TEST_F(TvmTest, MailedReportCarriesTheChartAsDrawnForTheSolve)
{
    auto mail = std::make_shared<RecordingMailComposer>();
    Services::setMailComposer(mail);
    fill({{"pvField", "1000"}, {"pmtField", "500"}, {"interestField", "7"}, {"periodField", "10"}});
    screen->setChartSize(QSize(300, 200));
    screen->setChartSize(QSize(300, -16)); // hidden until the first solve
    screen->futureValueClicked();
    const auto drawn = model().dataForYAxisWithLineNumber(0);
    const QByteArray expected = ChartPictures::encode(screen->reportChart(), "JPEG");

    choose("modeButton", "END");
    choose("frequencyButton", "Monthly");
    EXPECT_EQ(model().dataForYAxisWithLineNumber(0), drawn);
    presenter.script({{"Send Email", ""}});
    screen->exportClicked();
    ASSERT_EQ(mail->messages.size(), 1u);
    const QList<MailAttachment>& attachments = mail->messages[0].attachments;
    ASSERT_EQ(attachments.size(), 2);
    EXPECT_EQ(attachments[1].data, expected);
    EXPECT_NE(model().dataForLastCalculated(), drawn) << "the settings did change";
    const QImage chart = QImage::fromData(attachments[1].data, "JPEG");
    EXPECT_EQ(chart.size(), QSize(600, 400));
}

TEST_F(TvmTest, ASavedReportKeepsItsChartAndItsPdfShowsIt)
{
    ReportTableModel list; // the saved list exists before any save
    fill({{"pvField", "1000"}, {"interestField", "5"}, {"periodField", "10"}});
    screen->setChartSize(QSize(300, 200));
    screen->futureValueClicked();
    presenter.script({{"Save", ""}, {"OK", "Plan"}, {"OK", ""}});
    screen->exportClicked();
    ASSERT_EQ(presenter.requests.back().title, "Calculation Saved");
    const QDir documentsDir(documents());
    EXPECT_EQ(
        QImage(documentsDir.filePath("tvm_description_Plan_05-03-2024 14:07_chart.png")).size(),
        QSize(600, 400));

    ReportDetailController detail;
    ScriptedPresenter detailPresenter;
    detail.setPresenter(&detailPresenter);
    detail.setReportFilePath(documentsDir.filePath(report().fileName));
    detailPresenter.script({{"Save as PDF", ""}, {"OK", ""}});
    detail.actionClicked();
    QFile pdf(documentsDir.filePath("tvm_description_Plan_05-03-2024 14:07_report.pdf"));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().contains("/Subtype /Image")) << "the chart is in the PDF";
}

TEST_F(TvmTest, NonFiniteResults)
{
    // PMT = i (FV - PV g) / ((1 + iB)(g - 1)) with g - 1 = +0: -50 / +0.
    fill({{"fvField", "1000"}, {"interestField", "-5"}, {"periodField", "0"}});
    screen->paymentClicked();
    EXPECT_EQ(view->text("pmtField"), "-Infinity");
    type("interestField", "5");
    screen->paymentClicked();
    EXPECT_EQ(view->text("pmtField"), "Infinity");

    // A zero rate.
    fill({{"pvField", "100"},
          {"pmtField", "10"},
          {"periodField", "5"},
          {"interestField", ""},
          {"fvField", ""}});
    screen->futureValueClicked();
    EXPECT_EQ(view->text("fvField"), "NaN");
}

TEST_F(TvmTest, ReportRepeatsThePeriodOnThePaymentLine)
{
    fill({{"pvField", "1000"}, {"interestField", "12"}, {"periodField", "12"}, {"pmtField", "55"}});
    screen->futureValueClicked();
    screen->sendReportRequestedNotification("plan");
    const QString contents = report().contents;
    EXPECT_TRUE(contents.startsWith("Financial Report - Time Value of Money\n"));
    EXPECT_TRUE(contents.contains("\nPeriod: 12\nPayment: 12\nPayment Frequency: 1\nMode: BEG\n"));
    EXPECT_TRUE(contents.contains("Interest Rate: 12%\n"));
    EXPECT_EQ(report().fileName, "tvm_description_plan_05-03-2024 14:07_report.txt");
}

} // namespace
