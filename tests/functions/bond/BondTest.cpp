#include "functions/ScreenTest.h"
#include "functions/bond/BondController.h"
#include "platform/ReviewPrompt.h"
#include "platform/Services.h"

#include <QElapsedTimer>
#include <cmath>
#include <vector>

namespace {

// Price, durations and convexity computed independently of the model: the
// cash flows are listed one by one and discounted with a running factor.
struct Reference {
    double price = 0;
    double macaulay = 0; // years
    double modified = 0;
    double convexity = 0; // years²
};

Reference referenceBond(double face, double couponPercent, double yieldPercent, long periods,
                        int perYear)
{
    const double i = yieldPercent / 100.0 / perYear;
    std::vector<double> flows(size_t(periods), face * couponPercent / 100.0 / perYear);
    flows.back() += face;
    double price = 0;
    double timeWeighted = 0;
    double curvature = 0;
    double discount = 1;
    for (size_t k = 0; k < flows.size(); ++k) {
        discount /= 1 + i;
        const double t = double(k + 1);
        price += flows[k] * discount;
        timeWeighted += t * flows[k] * discount;
        curvature += t * (t + 1) * flows[k] * discount;
    }
    Reference r;
    r.price = price;
    r.macaulay = timeWeighted / price / perYear;
    r.modified = r.macaulay / (1 + i);
    r.convexity = curvature / ((1 + i) * (1 + i)) / price / (double(perYear) * perYear);
    return r;
}

void expectRelative(double actual, double expected, double tolerance, const char* what)
{
    EXPECT_LE(std::abs(actual - expected), tolerance * std::abs(expected))
        << what << ": " << actual << " vs " << expected;
}

class BondTest : public ScreenTest<BondController> {
protected:
    void choose(const QString& word) { ScreenTest::choose("frequencyButton", word); }
    // Fills the form, then picks the frequency: by then the screen has
    // computed before, so the word counts.
    void enter(double face, double coupon, double yield, double years, const char* frequency)
    {
        type("faceValueField", typed(face));
        type("couponRateField", typed(coupon));
        type("yieldToMaturityField", typed(yield));
        type("yearsField", typed(years));
        choose(frequency);
    }
    const BondModel& model() const { return *screen->bondModel(); }
    QStringList labels() const
    {
        return texts(
            {"bondValueLabel", "maculayDurationLabel", "modifiedDurationLabel", "convexityLabel"});
    }
    // The model against the listed cash flows of whole coupon periods.
    void expectReference(double face, double coupon, double yield, long periods, int perYear,
                         double tolerance)
    {
        const Reference r = referenceBond(face, coupon, yield, periods, perYear);
        expectRelative(model().bondValue, r.price, tolerance, "price");
        expectRelative(model().maculayDuration, r.macaulay, tolerance, "Macaulay duration");
        expectRelative(model().modifiedDuration, r.modified, tolerance, "modified duration");
        expectRelative(model().convexity, r.convexity, tolerance, "convexity");
    }
};

// Whole coupon periods: the model agrees with the references to 1e-9; a
// partial year truncates to whole periods.
TEST_F(BondTest, AgreesWithIndependentReferences)
{
    struct Row {
        double face, coupon, yield, years;
        const char* frequency;
        int perYear;
        double tolerance;
        const char* source;
    };
    const Row rows[] = {
        {1000, 10, 8, 10, "Semiannually", 2, 1e-9, "textbook premium bond, price 1135.90"},
        {1000, 5, 5, 10, "Annually", 1, 1e-9, "par bond, annual"},
        {100, 6, 7, 5, "Quarterly", 4, 1e-9, "discount bond, quarterly"},
        {1000, 4, 3, 30, "Monthly", 12, 1e-9, "long premium bond, monthly"},
        {1000, 0, 6, 5, "Semiannually", 2, 1e-9, "zero-coupon bond"},
        {1000, 8, 6, 2.9, "Annually", 1, 1e-12, "2.9 years: two periods"},
        {1000, 8, 6, 2.9, "Quarterly", 4, 1e-12, "11.6 quarters: 11 periods"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.source);
        enter(row.face, row.coupon, row.yield, row.years, row.frequency);
        ASSERT_EQ(model().frequencyValue, row.perYear);
        const long periods = long(row.years * row.perYear);
        expectReference(row.face, row.coupon, row.yield, periods, row.perYear, row.tolerance);
    }

    // The textbook figures themselves, and a zero-coupon bond lasting as
    // long as its life.
    enter(1000, 10, 8, 10, "Semiannually");
    EXPECT_NEAR(model().bondValue, 1135.903263, 1e-6);
    EXPECT_NEAR(model().modifiedDuration, 6.511884, 1e-6);
    enter(1000, 0, 6, 5, "Semiannually");
    EXPECT_NEAR(model().maculayDuration, 5, 1e-12);
    EXPECT_NEAR(model().convexity, 10.0 * 11.0 / (1.03 * 1.03) / 4.0, 1e-9);
}

TEST_F(BondTest, ScreenAndReportShowThreeDecimalsForEachFrequency)
{
    EXPECT_EQ(view->title(), "Bond Calculator");
    EXPECT_EQ(view->text("frequencyButton"), "Annually");
    type("faceValueField", "1000");
    type("couponRateField", "5");
    type("yieldToMaturityField", "5");
    type("yearsField", "10");
    EXPECT_EQ(labels(), locals({"1000", "8.108", "7.722", "74.998"}));

    choose("Semiannually");
    EXPECT_EQ(view->text("frequencyButton"), "Semiannually");
    EXPECT_EQ(model().frequencyValue, 2);
    EXPECT_EQ(labels(), locals({"1000", "7.989", "7.795", "73.629"}));
    screen->sendReportRequestedNotification("Muni");
    EXPECT_EQ(reportBody(),
              local("Face Value: 1000\nCoupon Rate: 5%\nYield to Maturity: 5%\nYears: 10\n"
                    "Frequency: Semiannually\n\nBond Value: 1000\nMaculay Duration: 7.989\n"
                    "Modified Duration: 7.795\nConvexity: 73.629\n"));
    expectReport("Bond", "bond_Muni_05-03-2024 14:07_report.txt", "Bond", Rgba(0xE8, 0xB7, 0x1A));
    EXPECT_GT(view->descriptionHtml().size(), 500);

    choose("Cancel");
    EXPECT_EQ(view->text("frequencyButton"), "Semiannually") << "cancel changes nothing";
    const AlertRequest& sheet = presenter.requests.back();
    EXPECT_EQ(sheet.title, "Frequency");
    EXPECT_EQ(sheet.message, "Please choose a frequency.");
    QStringList offered;
    for (const AlertAction& action : sheet.actions)
        offered << action.title;
    EXPECT_EQ(offered, QStringList({"Cancel", "Monthly", "Quarterly", "Semiannually", "Annually"}));
    EXPECT_EQ(static_cast<CountingReviewPrompt&>(Services::reviewPrompt()).requestCount(), 2)
        << "every opening of the sheet asks for a review";
}

TEST_F(BondTest, FirstComputationIsAnnualWhateverTheButtonSays)
{
    view->setText("faceValueField", "1000");
    view->setText("couponRateField", "5");
    view->setText("yieldToMaturityField", "5");
    view->setText("yearsField", "10");
    choose("Semiannually"); // the screen's first computation
    EXPECT_EQ(view->text("frequencyButton"), "Semiannually");
    EXPECT_EQ(model().frequency, "Semiannually");
    EXPECT_EQ(model().frequencyValue, 1);

    type("yearsField", "10");
    EXPECT_EQ(model().frequencyValue, 2) << "from the second computation on the word counts";

    // A title that is none of the four words keeps the previous count.
    view->setText("frequencyButton", "Weekly");
    screen->fieldChanged();
    EXPECT_EQ(model().frequency, "Weekly");
    EXPECT_EQ(model().frequencyValue, 2);
    choose("Monthly");
    EXPECT_EQ(model().frequencyValue, 12);
}

TEST_F(BondTest, ImpossibleInputsGiveNaNOrInfinity)
{
    enter(1000, 5, 0, 10, "Annually");
    EXPECT_EQ(labels(), QStringList(4, "NaN")) << "yield 0 divides by zero";

    enter(0, 5, 5, 10, "Annually");
    EXPECT_EQ(view->text("bondValueLabel"), "0");
    EXPECT_EQ(view->text("maculayDurationLabel"), "NaN") << "0 / 0 on a price of 0";

    for (const double years : {0.0, 0.5}) {
        enter(1000, 5, 5, years, "Annually");
        EXPECT_EQ(labels(), QStringList({"1000", "0", "0", "0"})) << "no coupon periods" << years;
    }

    type("yearsField", "-5");
    EXPECT_EQ(view->text("maculayDurationLabel"), "0") << "negative years skip the sums";
}

TEST_F(BondTest, VeryLongBondsFinishAndApproachThePerpetuity)
{
    QElapsedTimer timer;
    timer.start();
    // 5 % a year, monthly: a perpetuity is worth C/y = face, lasts
    // (1 + y)/(y·f) years and has a convexity of 2/(y·f)².
    const double y = 0.05 / 12;
    for (const double years : {1e9, 1e300}) {
        SCOPED_TRACE(years);
        enter(1000, 5, 5, 1, "Monthly");
        type("yearsField", typed(years));
        EXPECT_NEAR(model().bondValue, 1000, 1e-9);
        EXPECT_NEAR(model().maculayDuration, (1 + y) / (y * 12), 1e-9);
        EXPECT_NEAR(model().convexity, 2 / (y * 12 * y * 12), 1e-6);
    }
    EXPECT_LT(timer.elapsed(), 5000);

    // Just past the period-by-period limit the closed-form sums still agree
    // with the listed cash flows, also for a yield so small that the far
    // periods weigh in.
    const double periods = BondModel::maximumSummedPeriods + 1;
    for (double yield : {5.0, 0.001}) {
        SCOPED_TRACE(yield);
        enter(1000, 4, yield, periods, "Annually");
        expectReference(1000, 4, yield, long(periods), 1, 1e-9);
    }
}

} // namespace
