#include "DatedCashFlowsModel.h"

#include "numerics/DayCount.h"
#include "numerics/RootSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
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

double DatedCashFlowsModel::yearsBetween(const QDate& start, const QDate& date) const
{
    const DayCount::Basis counted = DayCount::basisOf(basis).value_or(DayCount::Basis::Actual365);
    const double years = DayCount::yearFraction(start, date, counted);
    return date < start ? -years : years;
}

double DatedCashFlowsModel::netPresentValue(double yearlyRate) const
{
    const QList<Flow> dated = datedFlows();
    if (dated.isEmpty())
        return noNumber;
    const QDate start = dated.first().date;
    double sum = 0;
    for (const Flow& flow : dated) {
        const double years = yearsBetween(start, flow.date);
        sum += flow.amount / std::pow(1 + yearlyRate, years);
    }
    return sum;
}

double DatedCashFlowsModel::internalRate(QString& reason) const
{
    const QList<Flow> dated = datedFlows();
    const bool positive =
        std::any_of(dated.begin(), dated.end(), [](const Flow& f) { return f.amount > 0; });
    const bool negative =
        std::any_of(dated.begin(), dated.end(), [](const Flow& f) { return f.amount < 0; });
    if (!positive || !negative) {
        reason = RootSearch::noRateReason(QStringLiteral("XIRR"), positive, negative);
        return noNumber;
    }
    // Each flow's years from the first date, worked out once for the whole
    // search; in date order with the amounts of one day added up, so that
    // their signs tell (Descartes' rule of signs) when at most one rate
    // can fit.
    const QDate start = dated.first().date;
    std::vector<std::pair<double, double>> terms; // years, amount
    for (const Flow& flow : dated)
        terms.emplace_back(yearsBetween(start, flow.date), flow.amount);
    std::sort(terms.begin(), terms.end());
    std::vector<double> amounts;
    for (size_t k = 0; k < terms.size(); ++k) {
        if (k > 0 && terms[k].first == terms[k - 1].first)
            amounts.back() += terms[k].second;
        else
            amounts.push_back(terms[k].second);
    }
    const auto xnpvAt = [&terms](double rate) {
        double sum = 0;
        for (const auto& [years, amount] : terms)
            sum += amount / std::pow(1 + rate, years);
        return sum;
    };
    // The shared rate search over yearly rates; of several, the one nearest
    // 10 % (the spreadsheet's default guess).
    const RootSearch::Roots roots = RootSearch::signChanges(amounts) <= 1
                                        ? RootSearch::findOnlyRoot(xnpvAt, 0.1)
                                        : RootSearch::findRoots(xnpvAt);
    if (roots.empty())
        reason = RootSearch::noRateReason(QStringLiteral("XIRR"), true, true);
    return roots.nearest(0.1);
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
    QString noRate;
    xirr = internalRate(noRate) * 100;
    setNote(QStringLiteral("xirr"), noRate);
}

void DatedCashFlowsModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Rate: %1%\n").arg(stringFromDouble(rate));
    body += QStringLiteral("Basis: %1\n").arg(basis);
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
