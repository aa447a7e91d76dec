#include "BlackScholesModel.h"

#include <cmath>

void BlackScholesModel::configureNames()
{
    setNames({QStringLiteral("BlackScholesReportCreatedNotification"),
              QStringLiteral("BlackScholesReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Black Scholes"),
              QStringLiteral("blackscholes_description"), QStringLiteral("black-scholes"),
              QStringLiteral("Bsm")});
}

double BlackScholesModel::cumulativeNormal(double x)
{
    // erfc(−x/√2) / 2: accurate far into the lower tail.
    return 0.5 * std::erfc(x * -0.7071067811865476);
}

double BlackScholesModel::standardPdf(double x)
{
    return std::exp(x * x * -0.5) / 2.5066282746310002; // √(2π)
}

void BlackScholesModel::calculateResult()
{
    const double r = riskFreeRate / 100;
    const double s = standardDeviation / 100;
    const double S = assetPrice;
    const double K = exercisePrice;
    const double T = timeToExpiration;
    const double D = std::exp(-r * T);
    const double rootT = std::sqrt(T);

    d1 = (std::log(S / K) + (r + s * s * 0.5) * T) / (s * rootT);
    d2 = d1 + (standardDeviation / -100) * rootT;
    n_d1 = cumulativeNormal(d1);
    n_d2 = cumulativeNormal(d2);

    callPrice = S * n_d1 - K * D * n_d2;
    putPrice = K * D * (1 - n_d2) - S * (1 - n_d1);

    callDelta = n_d1;
    putDelta = n_d1 - 1;

    const double density = standardPdf(d1);
    callGamma = density / (S * s * rootT);
    putGamma = callGamma;

    callVega = S * density * rootT;
    putVega = callVega;

    const double decay = -(S * density * s) / (2 * rootT);
    const double n_minus_d2 = cumulativeNormal(-d2);
    callTheta = decay - r * K * D * n_d2;
    putTheta = decay + r * K * D * n_minus_d2;

    callRho = K * T * D * n_d2;
    putRho = -K * T * D * n_minus_d2;
    explainResults();
}

void BlackScholesModel::explainResults()
{
    clearNotes();
    explainEntries(
        {"assetPrice", "exercisePrice", "timeToExpiration", "standardDeviation", "riskFreeRate"});
    // ln(S/K) needs two prices of one sign, and d1 divides by σ√T.
    QString reason;
    if (assetPrice == 0)
        reason = QStringLiteral("Enter the asset price.");
    else if (exercisePrice == 0)
        reason = QStringLiteral("Enter the exercise price.");
    else if (assetPrice < 0)
        reason = QStringLiteral("The asset price must be above 0.");
    else if (exercisePrice < 0)
        reason = QStringLiteral("The exercise price must be above 0.");
    else if (timeToExpiration == 0)
        reason = QStringLiteral("Enter the time to expiration.");
    else if (timeToExpiration < 0)
        reason = QStringLiteral("The time to expiration must be above 0.");
    else if (standardDeviation == 0)
        reason = QStringLiteral("Enter the standard deviation.");
    for (const char* property :
         {"d1", "d2", "n_d1", "n_d2", "callPrice", "putPrice", "callDelta", "putDelta", "callGamma",
          "putGamma", "callTheta", "putTheta", "callVega", "putVega", "callRho", "putRho"})
        explain(property, {reason, tooLarge()});
}

void BlackScholesModel::createReport(const QVariantMap& userInfo)
{
    const auto pair = [](const char* name, double call, double put) {
        return QStringLiteral("%1 Call: %2, %1 Put: %3\n")
            .arg(QLatin1String(name), stringFromDouble(call), stringFromDouble(put));
    };
    QString body;
    body += QStringLiteral("Asset Price: %1\n").arg(stringFromDouble(assetPrice));
    body += QStringLiteral("Exercise Price: %1\n").arg(stringFromDouble(exercisePrice));
    body += QStringLiteral("Time to Expiration: %1\n").arg(stringFromDouble(timeToExpiration));
    body += QStringLiteral("Standard Deviation: %1%\n").arg(stringFromDouble(standardDeviation));
    body += QStringLiteral("Risk Free Rate: %1%\n\n").arg(stringFromDouble(riskFreeRate));
    body += pair("Price", callPrice, putPrice);
    body += pair("Delta", callDelta, putDelta);
    body += pair("Gamma", callGamma, putGamma);
    body += pair("Theta", callTheta, putTheta);
    body += pair("Vega", callVega, putVega);
    body += pair("Rho", callRho, putRho);
    writeReport(userInfo, QStringLiteral("Black Scholes Model"), QStringLiteral("#354458"), body);
}
