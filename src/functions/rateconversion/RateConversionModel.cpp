#include "RateConversionModel.h"

#include "framework/FinanceMath.h"

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
}

double RateConversionModel::calculateEffectiveRate()
{
    const double m = compoundings();
    // (1 + r/m)^m - 1, exact for tiny rates and many compoundings.
    effectiveRate = FinanceMath::growthFactorMinusOne(nominalRate / 100 / m, m) * 100;
    calculateContinuousRate();
    return effectiveRate;
}

double RateConversionModel::calculateNominalRate()
{
    const double m = compoundings();
    nominalRate = m * FinanceMath::growthFactorMinusOne(effectiveRate / 100, 1 / m) * 100;
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
