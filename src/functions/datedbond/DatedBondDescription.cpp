#include "DatedBondController.h"
#include "framework/CalculatorDescription.h"
#include "numerics/DayCount.h"

using namespace Describe;

const CalculatorDescription& datedBondDescription()
{
    static const CalculatorDescription description{
        .name = "dated-bond",
        .screen = "DatedBondController",
        .view = {}, // a plain form of fields, solve fields and the chart
        .entry = {CatalogueEntry::List::Bonds, "Dated Bond", {}, "#2E86AB"},
        // The yield and the price have their solve buttons ("<key>Button").
        .fields =
            {
                under("Bond", date("settlement", "settlementField", "Settlement date")),
                date("maturity", "maturityField", "Maturity date"),
                withoutSign(percent("couponRate", "couponRateField", "Coupon rate (% a year)")),
                withoutSign(number("redemption", "redemptionField", "Redemption per 100")),
                choice("frequency", "frequencyButton", "Coupons a year",
                       {"Annually", "Semiannually", "Quarterly"}, "frequencyClicked"),
                choice("basis", "basisButton", "Day count basis", DayCount::basisWords(),
                       "basisClicked"),
                under("Enter one, solve the other",
                      percent("yield", "yieldField", "Yield to maturity (% a year)")),
                withoutSign(number("price", "priceField", "Clean price per 100")),
                under("Call (optional)", date("callDate", "callDateField", "Call date")),
                withoutSign(number("callPrice", "callPriceField", "Call price per 100")),
            },
        .results =
            {
                under("Price",
                      result("accruedInterest", "accruedInterestLabel", "Accrued interest")),
                result("dirtyPrice", "dirtyPriceLabel", "Dirty price"),
                result("yieldToCall", "yieldToCallLabel", "Yield to call", "%"),
                under("Risk", result("macaulayDuration", "macaulayDurationLabel",
                                     "Macaulay duration (years)")),
                result("modifiedDuration", "modifiedDurationLabel", "Modified duration"),
                result("convexity", "convexityLabel", "Convexity (years²)"),
                under("Coupons", result("previousCouponDate", "previousCouponDateLabel",
                                        "Previous coupon date")),
                result("nextCouponDate", "nextCouponDateLabel", "Next coupon date"),
                result("daysFromPrevious", "daysFromPreviousLabel",
                       "Days from the previous coupon"),
                result("daysInPeriod", "daysInPeriodLabel", "Days in the coupon period"),
                result("daysToNext", "daysToNextLabel", "Days to the next coupon"),
                result("couponsRemaining", "couponsRemainingLabel", "Coupons remaining"),
            },
        .solveButtons = {"yield", "price"},
        .example = {"settlement=2008-02-15", "maturity=2017-11-15", "couponRate=5.75", "yield=6.5",
                    "callDate=2012-11-15", "callPrice=102", "--solve", "price"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new DatedBondController); },
    };
    return description;
}
