#include "AmortizationController.h"
#include "framework/CalculatorDescription.h"

using namespace Describe;

const CalculatorDescription& amortizationDescription()
{
    static const CalculatorDescription description{
        .name = "amortization",
        .screen = "AmortizationController",
        .view = "functions/amortization/AmortizationView.qml",
        .entry = {CatalogueEntry::List::Loans, "Amortization Schedule", "", "#1F7A8C"},
        .fields =
            {
                number("loanAmount", "loanAmountField", "Loan amount"),
                percent("annualRate", "annualRateField", "Annual interest rate (%)"),
                count("years", "yearsField", "Term (years)"),
                number("extraPayment", "extraPaymentField", "Extra principal with every payment"),
                number("roundToCents", "roundToCentsField", ""),
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
                result("rangePrincipal", "rangePrincipalLabel", "Principal paid"),
                result("rangeInterest", "rangeInterestLabel", "Interest paid"),
                result("rangeBalance", "rangeBalanceLabel", "Balance after P2"),
            },
        .solveButtons = {},
        .create = [] { return std::unique_ptr<QVFunctionController>(new AmortizationController); },
    };
    return description;
}
