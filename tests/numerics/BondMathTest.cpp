#include "numerics/BondMath.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

// Over every basis and frequency, maturities on ordinary days and on the
// ends of months (the 31st, the end of February), and settlements spread
// over the whole life of the bond: the settlement falls in its coupon
// period (previous ≤ settlement < next, the next one step after the
// previous, N coupons from the previous to maturity), and price → yield →
// price comes back within 1e-10 (one coupon left included, where both run
// by the simple-interest formula, and negative yields). The cited cases of the dated-bond
// calculator hold the spreadsheet's figures; this holds the inversions.
TEST(BondMath, CouponPeriodsHoldTheSettlementAndPriceAndYieldInvertEachOther)
{
    const QDate maturities[] = {QDate(2031, 11, 15), QDate(2031, 8, 31), QDate(2032, 2, 29),
                                QDate(2031, 8, 30)};
    const double yields[] = {-0.01, 0.0, 0.045, 0.25};
    int checked = 0;
    for (int b = 0; b <= 4; ++b) {
        for (int frequency : {1, 2, 4}) {
            for (const QDate& maturity : maturities) {
                for (int days = 3; days < 8 * 365; days += 97) {
                    BondMath::Bond bond;
                    bond.settlement = maturity.addDays(-days);
                    bond.maturity = maturity;
                    bond.rate = 0.0575;
                    bond.redemption = 102;
                    bond.frequency = frequency;
                    bond.basis = DayCount::Basis(b);
                    const BondMath::Period p = BondMath::period(bond);
                    SCOPED_TRACE(QStringLiteral("basis %1, %2 a year, %3 to %4")
                                     .arg(b)
                                     .arg(frequency)
                                     .arg(bond.settlement.toString(Qt::ISODate),
                                          maturity.toString(Qt::ISODate))
                                     .toStdString());
                    ASSERT_GT(p.remaining, 0);
                    EXPECT_LE(p.previous, bond.settlement);
                    EXPECT_GT(p.next, bond.settlement);
                    EXPECT_EQ(p.previous.addMonths(12 / frequency).month(), p.next.month());
                    EXPECT_EQ(BondMath::couponDate(maturity, p.remaining, frequency), p.previous);
                    // On 30E/360 the 28th to the 28th can be a whole period
                    // with days still to go (DSC = 0): a last payment so
                    // due is worth its amount at every yield.
                    if (p.daysToNext == 0 && p.remaining == 1) {
                        EXPECT_EQ(BondMath::price(bond, 0.1), BondMath::price(bond, 0.2));
                        EXPECT_TRUE(std::isnan(BondMath::yield(bond, 102)));
                        continue;
                    }
                    for (double yield : yields) {
                        const double price = BondMath::price(bond, yield);
                        const double solved = BondMath::yield(bond, price);
                        EXPECT_NEAR(solved, yield, 1e-10) << "price " << price;
                        EXPECT_NEAR(BondMath::price(bond, solved), price, 1e-10);
                        ++checked;
                    }
                }
            }
        }
    }
    EXPECT_GT(checked, 5 * 3 * 4 * 30 * 4);
}

} // namespace
