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
            },
        .solveButtons = {},
        .example = {"loanAmount=200000", "annualRate=6.5", "years=30",
                    "firstPaymentDate=2027-01-01"},
        .create = [] { return std::unique_ptr<QVFunctionController>(new AmortizationController); },
    };
    return description;
}
