#include "functions/ScreenTest.h"
#include "functions/expreturn/ExpReturnController.h"
#include "functions/noncgrowth/NoncGrowthController.h"

// An expected-return screen and a nonconstant-growth screen open at once.
// Both speak "PeriodChangedNotification", "RateChangedNotification" and
// "ResultCalculatedNotification", and nobody checks the sender: each table
// follows the other form's period, each model recomputes on the other
// table's edits (ignoring their types), and each form shows its own model's
// results whenever either model has computed.
namespace {

class SharedNotificationsTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        expReturn = std::make_unique<ExpReturnController>();
        growth = std::make_unique<NoncGrowthController>();
        NotificationCenter::defaultCenter().addObserver(
            &counter, "ResultCalculatedNotification",
            [this](const Notification& n) { resultSenders << n.sender.data(); });
    }
    QString erText(const char* outlet) const { return expReturn->qvFunctionView()->text(outlet); }
    QString price() const { return growth->qvFunctionView()->text("priceResultLabel"); }

    std::unique_ptr<ExpReturnController> expReturn;
    std::unique_ptr<NoncGrowthController> growth;
    QObject counter;
    QList<QObject*> resultSenders;
};

TEST_F(SharedNotificationsTest, EachScreenFollowsTheOthersPeriod)
{
    expReturn->editField("periodField", "3");
    EXPECT_EQ(expReturn->table()->numberOfRows(), 3);
    EXPECT_EQ(growth->table()->numberOfRows(), 3) << "the growth table follows too";
    EXPECT_EQ(growth->noncGrowthModel()->period, 4.0) << "but not the growth model";
    EXPECT_EQ(price(), "0") << "the growth model's never computed price";

    growth->editField("periodField", "7");
    EXPECT_EQ(expReturn->table()->numberOfRows(), 7);
    EXPECT_EQ(expReturn->expReturnModel()->period, 3);
    EXPECT_EQ(erText("expReturnAResultLabel"), "0%");

    // Each model still reports its own period.
    expReturn->sendReportRequestedNotification("");
    EXPECT_TRUE(expReturn->model()->report().contents.contains("Period: 3\n"));
    EXPECT_FALSE(expReturn->model()->report().contents.contains("State 4 "));
}

TEST_F(SharedNotificationsTest, EveryRateEditRecomputesBothModels)
{
    // States: expected return A 8.5 % over three states.
    expReturn->editField("periodField", "3");
    ExpReturnTableController* states = expReturn->table();
    for (const auto& [row, probability, a] :
         {std::tuple(0, "30", "20"), std::tuple(1, "40", "10"), std::tuple(2, "30", "-5")}) {
        states->probabilityChanged(row, probability);
        states->stockAChanged(row, a);
    }
    EXPECT_EQ(erText("expReturnAResultLabel"), local("8.5%"));

    // A growth edit: the expected-return model takes nothing from it but
    // computes (first, as the older listener); then the growth model.
    growth->editField("dividendField", "2");
    resultSenders.clear();
    growth->table()->growthRateChanged(0, "20");
    EXPECT_EQ(resultSenders, QList<QObject*>({expReturn->model(), growth->model()}));
    EXPECT_EQ(erText("expReturnAResultLabel"), local("8.5%")) << "row 0 untouched";

    // A state edit: the growth model ignores "stock-b" but recomputes.
    resultSenders.clear();
    states->stockBChanged(1, "5");
    EXPECT_EQ(resultSenders, QList<QObject*>({expReturn->model(), growth->model()}));
    EXPECT_EQ(growth->noncGrowthModel()->rates[1].returnRate, 0);
    EXPECT_EQ(growth->noncGrowthModel()->rates[1].growthRate, 0);
    EXPECT_EQ(erText("expReturnBResultLabel"), "2%");

    // A period edit on either form recomputes both screens' labels, from
    // each one's own model.
    resultSenders.clear();
    growth->editField("periodField", "1");
    EXPECT_EQ(resultSenders, QList<QObject*>({growth->model()}));
    EXPECT_EQ(price(), "-12") << "2.4 / (0 - 0.2)";
    EXPECT_EQ(erText("standardDeviationBResultLabel"), local("2.449%"));
}

} // namespace
