#include "DatedCashFlowsModel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double lowestRate = -0.999999;
constexpr double highestRate = 1e4; // 1,000,000 % a year
} // namespace

void DatedCashFlowsModel::configureNames()
{
    setNames({QStringLiteral("DatedCashFlowsReportCreatedNotification"),
              QStringLiteral("DatedCashFlowsReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Dated Cash Flows"),
              QStringLiteral("datedcashflows_description"), QStringLiteral("dated-cash-flows"),
              QStringLiteral("Dated Cash Flows")});
}

QList<DatedCashFlowsModel::Flow> DatedCashFlowsModel::datedFlows() const
{
    QList<Flow> dated;
    for (const Flow& flow : flows) {
        if (flow.date.isValid() && std::isfinite(flow.amount))
            dated.append(flow);
    }
    return dated;
}

double DatedCashFlowsModel::netPresentValue(double yearlyRate) const
{
    const QList<Flow> dated = datedFlows();
    if (dated.isEmpty())
        return noNumber;
    const QDate start = dated.first().date;
    double sum = 0;
    for (const Flow& flow : dated) {
        const double years = start.daysTo(flow.date) / 365.0;
        sum += flow.amount / std::pow(1 + yearlyRate, years);
    }
    return sum;
}

double DatedCashFlowsModel::internalRate() const
{
    const QList<Flow> dated = datedFlows();
    const bool positive =
        std::any_of(dated.begin(), dated.end(), [](const Flow& f) { return f.amount > 0; });
    const bool negative =
        std::any_of(dated.begin(), dated.end(), [](const Flow& f) { return f.amount < 0; });
    if (!positive || !negative)
        return noNumber;

    // Scan for sign changes over a grid dense near 0 and geometric beyond.
    QList<double> grid;
    for (double r = lowestRate; r < 1.0; r += 0.01)
        grid << r;
    for (double r = 1.0; r <= highestRate; r *= 1.05)
        grid << r;
    std::pair<double, double> best{noNumber, noNumber};
    double bestDistance = std::numeric_limits<double>::infinity();
    double previous = netPresentValue(grid.first());
    for (qsizetype k = 1; k < grid.size(); ++k) {
        const double value = netPresentValue(grid.at(k));
        if (std::isfinite(previous) && std::isfinite(value) &&
            (previous == 0 || (previous < 0) != (value < 0))) {
            const double distance =
                std::min(std::fabs(grid.at(k - 1) - 0.1), std::fabs(grid.at(k) - 0.1));
            if (distance < bestDistance) {
                bestDistance = distance;
                best = {grid.at(k - 1), grid.at(k)};
            }
        }
        previous = value;
    }
    if (!std::isfinite(best.first))
        return noNumber;

    // Newton inside the bracket, bisecting whenever a step leaves it.
    const QDate start = dated.first().date;
    const auto slopeAt = [&](double r) {
        double slope = 0;
        for (const Flow& flow : dated) {
            const double t = start.daysTo(flow.date) / 365.0;
            slope -= t * flow.amount / std::pow(1 + r, t + 1);
        }
        return slope;
    };
    double lo = best.first;
    double hi = best.second;
    double fLo = netPresentValue(lo);
    double r = (lo + hi) / 2;
    for (int pass = 0; pass < 200; ++pass) {
        const double f = netPresentValue(r);
        if (f == 0)
            return r;
        if ((f < 0) == (fLo < 0)) {
            lo = r;
            fLo = f;
        } else {
            hi = r;
        }
        double next = r - f / slopeAt(r);
        if (!(next > lo && next < hi))
            next = (lo + hi) / 2;
        const double scale = 1e-15 * std::max(1.0, std::fabs(r));
        if (std::fabs(next - r) <= scale || hi - lo <= scale)
            return next;
        r = next;
    }
    return r;
}

void DatedCashFlowsModel::calculateResult()
{
    clearNotes();
    if (!flowsProblem.isEmpty()) {
        xnpv = xirr = noNumber;
        setNote(QStringLiteral("xnpv"), flowsProblem);
        setNote(QStringLiteral("xirr"), flowsProblem);
        return;
    }
    xnpv = rateProblem.isEmpty() ? netPresentValue(rate / 100) : noNumber;
    setNote(QStringLiteral("xnpv"), rateProblem);
    xirr = internalRate() * 100;
}

void DatedCashFlowsModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Rate: %1%\n").arg(stringFromDouble(rate));
    for (const Flow& flow : flows)
        body +=
            QStringLiteral("Cash Flow %1: %2 on %3\n")
                .arg(flow.row)
                .arg(stringFromDouble(flow.amount),
                     flow.date.isValid() ? flow.date.toString(Qt::ISODate) : QStringLiteral("-"));
    body += QStringLiteral("XNPV: %1\n").arg(stringFromDouble(xnpv));
    body += QStringLiteral("XIRR: %1%\n").arg(stringFromDouble(xirr));
    // What the screen says under blank results goes with them.
    for (const QString& problem : {flowsProblem, rateProblem}) {
        if (!problem.isEmpty())
            body += problem + QLatin1Char('\n');
    }
    writeReport(userInfo, QStringLiteral("Dated Cash Flows"), QStringLiteral("#E85B4F"), body);
}
