#include "AmortizationController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& amortizationDescription()
{
    static const CalculatorDescription description{
        .name = "amortization",
        .screen = "AmortizationController",
        .view = "functions/amortization/AmortizationView.qml",
        .entry = {CatalogueEntry::List::Loans, "Amortization Schedule", {}, "#1F7A8C"},
        // The choices set the model in their actions; the switch (1 or 0),
        // P1 and P2 and the date are read by the controller.
        .fields =
            {
                withoutSign(number("loanAmount", "loanAmountField", "Loan amount")),
                percent("annualRate", "annualRateField", "Annual interest rate (%)"),
                withoutSign(number("years", "yearsField", "Term (years)")),
                choice("paymentsPerYear", "paymentsPerYearButton", "Payments",
                       AmortizationModel::frequencyWords(), "paymentsPerYearClicked"),
                choice("compoundingPerYear", "compoundingPerYearButton", "Interest compounded",
                       AmortizationModel::frequencyWords(), "compoundingPerYearClicked"),
                choice("paymentMode", "paymentModeButton", "Payments at",
                       AmortizationModel::modes(), "paymentModeClicked"),
                withoutSign(number("extraPayment", "extraPaymentField",
                                   "Extra principal with every payment")),
                date("firstPaymentDate", "firstPaymentDateField",
                     "First payment date (YYYY-MM-DD, optional)"),
                count("roundToCents", "roundToCentsField", "Round payments to cents"),
                count("rangeStart", "rangeStartField", "P1"),
                count("rangeEnd", "rangeEndField", "P2"),
                // Solving for the term: the level payment given.
                withoutSign(number("payment", "paymentField", "Payment (to work out the term)")),
                // One-time extra payments and rate changes: "13:5000" or
                // "2028-06-01:5000" (and "61:7.5"), one row each on the
                // screen's event list.
                table("extraPayments", LoanEventList::maximumRows, FieldDescription::Kind::Event,
                      "Extra payments (payment:amount)"),
                table("rateChanges", LoanEventList::maximumRows, FieldDescription::Kind::Event,
                      "Rate changes (payment:rate)"),
                choice("afterExtra", "afterExtraButton", "After an extra payment",
                       AmortizationModel::afterExtraWords(), "afterExtraClicked"),
                count("interestOnly", "interestOnlyField", "Interest-only payments"),
                count("balloonAt", "balloonAtField", "Balloon due at payment (0 for none)"),
                withoutSign(number("fees", "feesField", "Fees (for the APR)")),
            },
        .results =
            {
                result("payment", "paymentLabel", "Payment"),
                result("numberOfPayments", "numberOfPaymentsLabel", "Number of payments"),
                result("totalInterest", "totalInterestLabel", "Total interest"),
                result("totalPaid", "totalPaidLabel", "Total paid"),
                result("lastPayment", "lastPaymentLabel", "Last payment"),
                result("payoffDate", "payoffDateLabel", "Payoff date"),
                result("rangePrincipal", "rangePrincipalLabel", "Principal paid"),
                result("rangeInterest", "rangeInterestLabel", "Interest paid"),
                result("rangeBalance", "rangeBalanceLabel", "Balance after P2"),
                result("interestSaved", "interestSavedLabel", "Interest saved"),
                result("apr", "aprLabel", "APR", "%"),
            },
        // It works out the payment from the term unless told to work out
        // the term from the payment; either way it follows every edit.
        .solveButtons = {"payment", "term"},
        .example = {"loanAmount=200000", "annualRate=6.5", "years=30",
                    "firstPaymentDate=2027-01-01", "extraPayments=13:5000", "rateChanges=61:5.75",
                    "fees=3000"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new AmortizationController); },
    };
    return description;
}
