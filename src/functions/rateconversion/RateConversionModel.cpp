#include "RateConversionModel.h"

#include "numerics/FinanceMath.h"

#include <cmath>
#include <limits>

void RateConversionModel::configureNames()
{
    setNames({QStringLiteral("RateConversionReportCreatedNotification"),
              QStringLiteral("RateConversionReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Rate Conversion"),
              QStringLiteral("rateconversion_description"), QStringLiteral("rate-conversion"),
              QStringLiteral("Rate Conversion")});
}

double RateConversionModel::compoundings() const
{
    const double m = std::trunc(compoundingPerYear);
    return m >= 1 ? m : std::numeric_limits<double>::quiet_NaN();
}

void RateConversionModel::calculateContinuousRate()
{
    continuousRate = std::expm1(nominalRate / 100) * 100;
    // A nominal rate that is no number passes its reason on.
    setNote(QStringLiteral("continuousRate"), {});
    explain("continuousRate",
            {std::isnan(nominalRate) ? notes().value(QStringLiteral("nominalRate")) : QString(),
             tooLarge()});
}

QString RateConversionModel::compoundingsProblem() const
{
    if (compoundingPerYear == 0)
        return QStringLiteral("Enter the compoundings a year.");
    if (!(std::trunc(compoundingPerYear) >= 1))
        return QStringLiteral("The compoundings a year must be at least 1.");
    return {};
}

void RateConversionModel::explainSolve(const char* solved, const QString& reason)
{
    explainEntries({"nominalRate", "effectiveRate", "compoundingPerYear"});
    setNote(QString::fromLatin1(solved), {});
    explain(solved, {compoundingsProblem(), reason, tooLarge()});
}

double RateConversionModel::calculateEffectiveRate()
{
    const double m = compoundings();
    // (1 + r/m)^m - 1, exact for tiny rates and many compoundings.
    effectiveRate = FinanceMath::growthFactorMinusOne(nominalRate / 100 / m, m) * 100;
    explainSolve("effectiveRate", {});
    calculateContinuousRate();
    return effectiveRate;
}

double RateConversionModel::calculateNominalRate()
{
    const double m = compoundings();
    nominalRate = m * FinanceMath::growthFactorMinusOne(effectiveRate / 100, 1 / m) * 100;
    // Below -100 % the m-th root is of a negative number.
    explainSolve("nominalRate", effectiveRate < -100
                                    ? QStringLiteral("The effective rate cannot be below -100 %.")
                                    : QString());
    calculateContinuousRate();
    return nominalRate;
}

void RateConversionModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Nominal Rate: %1%\n").arg(stringFromDouble(nominalRate));
    body += QStringLiteral("Compounding Per Year: %1\n").arg(stringFromDouble(compoundingPerYear));
    body += QStringLiteral("Effective Rate: %1%\n").arg(stringFromDouble(effectiveRate));
    body += QStringLiteral("Continuous Compounding Effective Rate: %1%\n")
                .arg(stringFromDouble(continuousRate));
    writeReport(userInfo, QStringLiteral("Interest Rate Conversion"), QStringLiteral("#1F7A8C"),
                body);
}
