#include "AmortizationModel.h"

#include "framework/CsvWriter.h"
#include "framework/FinanceMath.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// Half away from zero, to the cent, as a whole number of cents.
qint64 cents(double amount)
{
    return qint64(std::llround(amount * 100));
}

} // namespace

const QList<std::pair<QString, int>>& AmortizationModel::frequencies()
{
    static const QList<std::pair<QString, int>> list = {
        {QStringLiteral("Monthly"), 12},  {QStringLiteral("Semimonthly"), 24},
        {QStringLiteral("Biweekly"), 26}, {QStringLiteral("Weekly"), 52},
        {QStringLiteral("Quarterly"), 4}, {QStringLiteral("Semiannually"), 2},
        {QStringLiteral("Annually"), 1}};
    return list;
}

void AmortizationModel::configureNames()
{
    setNames({QStringLiteral("AmortizationReportCreatedNotification"),
              QStringLiteral("AmortizationReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Amortization"),
              QStringLiteral("amortization_description"), QStringLiteral("amortization"),
              QStringLiteral("Amortization")});
}

void AmortizationModel::clearResults()
{
    schedule.clear();
    payoffDate = QDate();
    payment = numberOfPayments = totalInterest = totalPaid = noNumber;
    rangePrincipal = rangeInterest = rangeBalance = noNumber;
}

QDate AmortizationModel::dateOfPayment(int period) const
{
    if (!firstPaymentDate.isValid() || period < 1)
        return {};
    const int k = period - 1;
    switch (int(paymentsPerYear)) {
    case 52:
        return firstPaymentDate.addDays(7LL * k);
    case 26:
        return firstPaymentDate.addDays(14LL * k);
    case 24: // twice a month, half a month apart
        return firstPaymentDate.addMonths(k / 2).addDays(k % 2 ? 15 : 0);
    default:
        return firstPaymentDate.addMonths(k * (12 / std::max(1, int(paymentsPerYear))));
    }
}

void AmortizationModel::calculateResult()
{
    clearResults();
    const double p = std::trunc(paymentsPerYear);
    const double c = std::trunc(compoundingPerYear);
    const double n = std::round(years * p);
    if (!(p >= 1 && c >= 1 && n >= 1 && n <= maximumPayments) || !std::isfinite(loanAmount) ||
        !std::isfinite(annualRate) || !std::isfinite(extraPayment))
        return;
    const int count = int(n);
    const double i = FinanceMath::growthFactorMinusOne(annualRate / 100 / c, c / p);
    const bool beginning = paymentMode == QLatin1String("BEG");
    // The level payment of an annuity worth the loan amount.
    double level =
        i == 0 ? loanAmount / n : loanAmount * i / -FinanceMath::growthFactorMinusOne(i, -n);
    if (beginning)
        level /= 1 + i;
    if (!std::isfinite(level))
        return;

    // Either whole cents (counting in integers) or plain doubles; the last
    // payment clears what is left in both.
    const double unit = roundToCents ? 0.01 : 1.0;
    const auto toUnits = [&](double amount) {
        return roundToCents ? double(cents(amount)) : amount;
    };
    const double paymentUnits = toUnits(level);
    const double extraUnits = toUnits(std::max(0.0, extraPayment));
    double balance = toUnits(loanAmount);
    double interestSum = 0;
    double paidSum = 0;
    for (int k = 1; k <= count && balance > 0; ++k) {
        const bool noInterest = beginning && k == 1;
        // The period's interest on what is owed, in the same units.
        const double interest = noInterest ? 0 : toUnits(balance * unit * i);
        double principal = paymentUnits - interest + extraUnits;
        if (principal >= balance || k == count)
            principal = balance;
        const double paid = principal + interest;
        balance -= principal;
        interestSum += interest;
        paidSum += paid;
        schedule.append(
            {k, dateOfPayment(k), paid * unit, interest * unit, principal * unit, balance * unit});
    }
    payment = paymentUnits * unit;
    numberOfPayments = double(schedule.size());
    totalInterest = interestSum * unit;
    totalPaid = paidSum * unit;
    payoffDate = schedule.isEmpty() ? QDate() : schedule.last().date;
    calculateRange();
}

void AmortizationModel::calculateRange()
{
    if (schedule.isEmpty() || rangeStart < 1 || rangeEnd < rangeStart)
        return;
    const int last = std::min<int>(rangeEnd, int(schedule.size()));
    double principal = 0;
    double interest = 0;
    for (int k = rangeStart; k <= last; ++k) {
        principal += schedule.at(k - 1).principal;
        interest += schedule.at(k - 1).interest;
    }
    rangePrincipal = principal;
    rangeInterest = interest;
    rangeBalance = rangeStart <= last ? schedule.at(last - 1).balance : schedule.last().balance;
}

QByteArray AmortizationModel::scheduleCsv() const
{
    QList<QStringList> rows;
    rows.reserve(schedule.size());
    const auto money = [this](double v) {
        return roundToCents ? QString::number(v, 'f', 2) : CsvWriter::number(v);
    };
    for (const Row& r : schedule)
        rows.append({QString::number(r.period), r.date.toString(Qt::ISODate), money(r.payment),
                     money(r.interest), money(r.principal), money(r.balance)});
    return CsvWriter::toCsv({QStringLiteral("period"), QStringLiteral("date"),
                             QStringLiteral("payment"), QStringLiteral("interest"),
                             QStringLiteral("principal"), QStringLiteral("balance")},
                            rows);
}

QList<qsizetype> AmortizationModel::yearEnds() const
{
    QList<qsizetype> ends;
    const int perYear = std::max(1, int(paymentsPerYear));
    for (qsizetype k = perYear - 1; k < schedule.size(); k += perYear)
        ends << k;
    if (!schedule.isEmpty() && (ends.isEmpty() || ends.last() != schedule.size() - 1))
        ends << schedule.size() - 1;
    return ends;
}

Rgba AmortizationModel::colorForTheLineWithLineNumber(int line) const
{
    return line == 0 ? Rgba(0x1F, 0x7A, 0x8C) : Rgba(0xE8, 0x5B, 0x4F);
}

QString AmortizationModel::nameForTheLineWithLineNumber(int line) const
{
    return line == 0 ? QStringLiteral("Balance") : QStringLiteral("Interest paid");
}

QStringList AmortizationModel::dataForXAxisWithLineNumber(int) const
{
    QStringList labels{QStringLiteral("0")};
    const int perYear = std::max(1, int(paymentsPerYear));
    for (qsizetype end : yearEnds())
        labels << QString::number(double(end + 1) / perYear, 'g', 4);
    return labels;
}

QList<std::optional<double>> AmortizationModel::dataForYAxisWithLineNumber(int line) const
{
    QList<std::optional<double>> values{line == 0 ? loanAmount : 0.0};
    double interest = 0;
    qsizetype next = 0;
    for (qsizetype end : yearEnds()) {
        for (; next <= end; ++next)
            interest += schedule.at(next).interest;
        values << (line == 0 ? schedule.at(end).balance : interest);
    }
    return values;
}

MultiLineGraphMarker
AmortizationModel::customViewForLineChartTouchWithXValueAndYValue(const QString& x, double y) const
{
    return {QStringLiteral("Year %1: %2").arg(x, stringFromDouble(y)), QSizeF(140, 30)};
}

void AmortizationModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Loan Amount: %1\n").arg(stringFromDouble(loanAmount));
    body += QStringLiteral("Annual Rate: %1%\n").arg(stringFromDouble(annualRate));
    body += QStringLiteral("Years: %1\n").arg(stringFromDouble(years));
    body += QStringLiteral("Payments Per Year: %1\n").arg(stringFromDouble(paymentsPerYear));
    body += QStringLiteral("Compounding Per Year: %1\n").arg(stringFromDouble(compoundingPerYear));
    body += QStringLiteral("Mode: %1\n").arg(paymentMode);
    body += QStringLiteral("Extra Payment: %1\n").arg(stringFromDouble(extraPayment));
    body += QStringLiteral("Payment: %1\n").arg(stringFromDouble(payment));
    body += QStringLiteral("Number of Payments: %1\n").arg(stringFromDouble(numberOfPayments));
    body += QStringLiteral("Total Interest: %1\n").arg(stringFromDouble(totalInterest));
    body += QStringLiteral("Total Paid: %1\n").arg(stringFromDouble(totalPaid));
    if (payoffDate.isValid())
        body += QStringLiteral("Payoff Date: %1\n").arg(payoffDate.toString(Qt::ISODate));
    body += QStringLiteral("Payments %1-%2: Principal %3, Interest %4, Balance %5\n")
                .arg(rangeStart)
                .arg(rangeEnd)
                .arg(stringFromDouble(rangePrincipal), stringFromDouble(rangeInterest),
                     stringFromDouble(rangeBalance));
    writeReport(userInfo, QStringLiteral("Amortization Schedule"), QStringLiteral("#1F7A8C"), body);
}
