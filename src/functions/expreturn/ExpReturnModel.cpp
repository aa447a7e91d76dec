#include "ExpReturnModel.h"

#include "platform/NotificationCenter.h"

#include <algorithm>
#include <cmath>

ExpReturnModel::ExpReturnModel(QObject* parent)
    : QVFunctionModel(parent), rates(stateCapacity, ExpReturnState{})
{
    // State values come from the table, whoever posts them.
    NotificationCenter::defaultCenter().addObserver(
        this, QStringLiteral("RateChangedNotification"),
        [this](const Notification& n) { rateChangedNotificationReceived(n.userInfo); });
}

void ExpReturnModel::configureNames()
{
    setNames({QStringLiteral("ExpectedReturnReportCreatedNotification"),
              QStringLiteral("ExpectedReturnReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Expected Return"),
              QStringLiteral("expreturn_description"), QStringLiteral("expected-return"),
              QStringLiteral("Exp")});
}

QList<double> ExpReturnModel::probabilities() const
{
    QList<double> column;
    for (const ExpReturnState& state : rates)
        column << state.probability;
    return column;
}

QList<double> ExpReturnModel::stockAReturns() const
{
    QList<double> column;
    for (const ExpReturnState& state : rates)
        column << state.stockA;
    return column;
}

QList<double> ExpReturnModel::stockBReturns() const
{
    QList<double> column;
    for (const ExpReturnState& state : rates)
        column << state.stockB;
    return column;
}

void ExpReturnModel::calculateResult()
{
    // The probabilities are taken as entered: they need not add up to 100,
    // and the deviation is the probability-weighted population one.
    const int n = std::clamp<int>(period, 0, int(rates.size()));
    double ea = 0;
    double eb = 0;
    for (int i = 0; i < n; ++i) {
        const ExpReturnState& s = rates.at(i);
        ea += s.probability / 100 * (s.stockA / 100) * 100;
        eb += s.probability / 100 * (s.stockB / 100) * 100;
    }
    double va = 0;
    double vb = 0;
    for (int i = 0; i < n; ++i) {
        const ExpReturnState& s = rates.at(i);
        const double p = s.probability / 100;
        va += p * std::pow(s.stockA / 100 - ea / 100, 2);
        vb += p * std::pow(s.stockB / 100 - eb / 100, 2);
    }
    expectedReturnA = ea;
    expectedReturnB = eb;
    standardDeviationA = std::sqrt(va) * 100;
    standardDeviationB = std::sqrt(vb) * 100;

    clearNotes();
    // A negative probability can make the variance negative: no square root.
    bool negative = false;
    for (int i = 0; i < n; ++i)
        negative = negative || rates.at(i).probability < 0;
    const QString negativeReason =
        negative ? QStringLiteral("Probabilities cannot be negative.") : QString();
    explain("expectedReturnA", {tooLarge()});
    explain("expectedReturnB", {tooLarge()});
    explain("standardDeviationA", {negativeReason, tooLarge()});
    explain("standardDeviationB", {negativeReason, tooLarge()});
    NotificationCenter::defaultCenter().post(QStringLiteral("ResultCalculatedNotification"), this);
}

void ExpReturnModel::rateChangedNotificationReceived(const QVariantMap& userInfo)
{
    // Other tables post the same name with types of their own: those change
    // nothing here, but the results are worked out again all the same.
    const QString type = userInfo.value(QStringLiteral("type")).toString();
    const int tag = userInfo.value(QStringLiteral("tag")).toInt();
    const double value = userInfo.value(QStringLiteral("value")).toDouble();
    if (tag >= 0 && tag < rates.size()) {
        ExpReturnState& state = rates[tag];
        if (type == QLatin1String("probability"))
            state.probability = value;
        else if (type == QLatin1String("stock-a"))
            state.stockA = value;
        else if (type == QLatin1String("stock-b"))
            state.stockB = value;
    }
    calculateResult();
}

void ExpReturnModel::createReport(const QVariantMap& userInfo)
{
    QString body = QStringLiteral("Period: %1\n").arg(period);
    const int n = std::clamp<int>(period, 0, int(rates.size()));
    for (int k = 1; k <= n; ++k) {
        const ExpReturnState& s = rates.at(k - 1);
        body += QStringLiteral("State %1 -  Probability: %2%, Stock A: %3%, Stock B: %4%\n")
                    .arg(k)
                    .arg(stringFromDouble(s.probability), stringFromDouble(s.stockA),
                         stringFromDouble(s.stockB));
    }
    body += QStringLiteral("\nExpected Return A: %1%, Expected Return B: %2%\n")
                .arg(stringFromDouble(expectedReturnA), stringFromDouble(expectedReturnB));
    body += QStringLiteral("Standard Deviation A: %1%, Standard Deviation B: %2%\n")
                .arg(stringFromDouble(standardDeviationA), stringFromDouble(standardDeviationB));
    writeReport(userInfo, QStringLiteral("Expected Return"), QStringLiteral("#354458"), body);
}
