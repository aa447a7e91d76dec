#include "CmpModel.h"

#include "numerics/FinanceMath.h"
#include "store/QVReport.h"

#include <QLoggingCategory>
#include <algorithm>
#include <cmath>

Q_LOGGING_CATEGORY(lcCmp, "tallyvane.cmp", QtWarningMsg)

namespace {

const QString chartColor = QStringLiteral("#D9901A");

// The balance after `months` more monthly steps of "deposit at the start,
// grow by q, deposit at the end", in closed form:
//   b·(1 + q)^k + (start·(1 + q) + end)·((1 + q)^k − 1)/q
// Zero amounts stay zero even when the growth factor overflows.
double balanceAfterMonths(double b, double q, double months, double start, double end)
{
    const double growth = FinanceMath::growthFactor(q, months);
    // (1 + q)^0 + … + (1 + q)^(months − 1)
    const double deposits = q == 0 ? months : FinanceMath::growthFactorMinusOne(q, months) / q;
    double result = b == 0 ? 0.0 : b * growth;
    if (start != 0)
        result += start * (1 + q) * deposits;
    if (end != 0)
        result += end * deposits;
    return result;
}

} // namespace

void CmpModel::configureNames()
{
    setNames({QStringLiteral("CmpReportCreatedNotification"),
              QStringLiteral("CmpReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Interest Calculator"),
              QStringLiteral("cmp_description"), QStringLiteral("cmp"), QStringLiteral("Cmp")});
}

double CmpModel::equivalentRateOfRateAndCompoundingAndNewCompounding(double rate, int compounding,
                                                                     int newCompounding)
{
    return FinanceMath::equivalentRate(rate, compounding, newCompounding);
}

double CmpModel::equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(double rate,
                                                                                int compounding,
                                                                                int newCompounding)
{
    return FinanceMath::equivalentRate(rate, compounding, newCompounding) / double(newCompounding);
}

void CmpModel::setCmpValue()
{
    if (compounding == QLatin1String("Semiannually"))
        compoundingValue = 2;
    else if (compounding == QLatin1String("Monthly"))
        compoundingValue = 12;
    else if (compounding == QLatin1String("Quarterly"))
        compoundingValue = 4;
    else if (compounding == QLatin1String("Annually"))
        compoundingValue = 1;
}

void CmpModel::calculateResult()
{
    setCmpValue();
    balance = principalAmount;

    // With no compounding count yet the exponent m/12 is 0 and q is 0.
    const double q = equivalentRatePerPeriodWithRateAndCompoundingAndNewCompounding(
        annualRate / 100.0, compoundingValue, 12);
    const bool atStart = mode == QLatin1String("BEG");
    const bool atEnd = mode == QLatin1String("END");
    // Months 1, 2, … up to the first whole month at or past the term. NaN
    // and terms of 0 or less give none.
    const double months = 12.0 * period > 0 ? std::ceil(12.0 * period) : 0.0;
    const int stepped = int(std::min(months, double(maximumScheduledMonths)));

    double b = principalAmount;
    m_yearlyBalances = {b};
    for (int month = 1; month <= stepped; ++month) {
        if (atStart)
            b = b + payment;
        b = b + b * q;
        if (atEnd)
            b = b + payment;
        // The stored balance, not b: it still holds the principal here.
        qCDebug(lcCmp, "Balance %f", balance);
        if (month % 12 == 0 || (month == stepped && months == stepped))
            m_yearlyBalances.append(b);
    }
    if (months > stepped)
        b = balanceAfterMonths(b, q, months - stepped, atStart ? payment : 0.0,
                               atEnd ? payment : 0.0);
    balance = b;

    // The full fractional term, whatever the schedule did.
    totalPrincipal = principalAmount + payment * 12 * period;
    interestAmount = balance - totalPrincipal;
    apy = equivalentRateOfRateAndCompoundingAndNewCompounding(annualRate / 100.0, compoundingValue,
                                                              1) *
          100.0;

    clearNotes();
    explainEntries({"principalAmount", "annualRate", "period", "payment"});
    // Below -100 % a compounding period the monthly growth is a fractional
    // power of a negative number.
    const QString belowLimit =
        compoundingValue > 0 && annualRate / 100.0 / compoundingValue < -1
            ? QStringLiteral("The annual rate cannot be below %1 % (-100 % a compounding period).")
                  .arg(-100 * compoundingValue)
            : QString();
    explain("balance", {belowLimit, tooLarge()});
    explain("interestAmount", {belowLimit, tooLarge()});
    explain("totalPrincipal", {tooLarge()});
    explain("apy", {tooLarge()});
}

void CmpModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Principal Amount: %1\n").arg(stringFromDouble(principalAmount));
    body += QStringLiteral("Annual Rate: %1\n").arg(stringFromDouble(annualRate));
    body += QStringLiteral("Years: %1\n").arg(stringFromDouble(period));
    body += QStringLiteral("Payment: %1\n").arg(stringFromDouble(payment));
    body += QStringLiteral("Mode: %1\n").arg(mode);
    body += QStringLiteral("Compounding: %1\n").arg(compounding);
    body += QStringLiteral("Total Principal: %1\n").arg(stringFromDouble(totalPrincipal));
    // The interest goes out under the same label as the line above.
    body += QStringLiteral("Total Principal: %1\n").arg(stringFromDouble(interestAmount));
    body += QStringLiteral("Balance: %1\n").arg(stringFromDouble(balance));
    body += QStringLiteral("APY: %1%\n").arg(stringFromDouble(apy));
    writeReport(userInfo, QStringLiteral("Compound Interest"), QStringLiteral("#F7EAC8"), body);
}

Rgba CmpModel::colorForTheLineWithLineNumber(int) const
{
    return QVReport::colorFromHexString(chartColor);
}

QString CmpModel::nameForTheLineWithLineNumber(int) const
{
    return QStringLiteral("Balance");
}

QStringList CmpModel::dataForXAxisWithLineNumber(int) const
{
    QStringList labels;
    labels.reserve(m_yearlyBalances.size());
    for (qsizetype year = 0; year < m_yearlyBalances.size(); ++year)
        labels << QString::number(year);
    return labels;
}

QList<std::optional<double>> CmpModel::dataForYAxisWithLineNumber(int) const
{
    QList<std::optional<double>> values;
    values.reserve(m_yearlyBalances.size());
    for (double value : m_yearlyBalances)
        values << value;
    return values;
}

MultiLineGraphMarker CmpModel::customViewForLineChartTouchWithXValueAndYValue(const QString& x,
                                                                              double y) const
{
    return {QStringLiteral("Year %1: %2").arg(x, stringFromDouble(y)), QSizeF(120, 30)};
}
