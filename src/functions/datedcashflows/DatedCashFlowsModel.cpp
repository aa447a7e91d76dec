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

void DatedCashFlowsModel::updateTerms()
{
    const DayCount::Basis counted = DayCount::basisOf(basis).value_or(DayCount::Basis::Actual365);
    QDate start;
    size_t count = 0;
    for (const Flow& flow : flows) {
        if (!flow.date.isValid() || !std::isfinite(flow.amount))
            continue;
        if (count == 0) {
            start = flow.date;
            // Another first date or basis changes every flow's years.
            if (m_termDates.empty() || m_termDates.front() != start || m_termsBasis != basis) {
                m_termDates.clear();
                m_terms.clear();
                m_termsBasis = basis;
            }
        }
        if (count == m_terms.size()) {
            m_terms.emplace_back();
            m_termDates.emplace_back();
        }
        Term& term = m_terms[count];
        if (m_termDates[count] != flow.date) {
            const double years = DayCount::yearFraction(start, flow.date, counted);
            term.years = flow.date < start ? -years : years;
            m_termDates[count] = flow.date;
        }
        term.amount = flow.amount;
        ++count;
    }
    m_terms.resize(count);
    m_termDates.resize(count);
}

double DatedCashFlowsModel::netPresentValue(double yearlyRate) const
{
    if (m_terms.empty())
        return noNumber;
    // (1 + rate)^−years as exp(−years · log(1 + rate)): log1p keeps the
    // digits of a small rate that 1 + rate would lose.
    const double logGrowth = std::log1p(yearlyRate);
    double sum = 0;
    for (const Term& term : m_terms)
        sum += term.amount * std::exp(-term.years * logGrowth);
    return sum;
}

double DatedCashFlowsModel::internalRate(QString& reason) const
{
    const bool positive =
        std::any_of(m_terms.begin(), m_terms.end(), [](const Term& t) { return t.amount > 0; });
    const bool negative =
        std::any_of(m_terms.begin(), m_terms.end(), [](const Term& t) { return t.amount < 0; });
    if (!positive || !negative) {
        reason = RootSearch::noRateReason(QStringLiteral("XIRR"), positive, negative);
        return noNumber;
    }
    // In date order with the amounts of one day added up, so that their
    // signs tell (Descartes' rule of signs) when at most one rate can fit.
    std::vector<Term> terms = m_terms;
    const auto byYears = [](const Term& a, const Term& b) {
        return a.years < b.years || (a.years == b.years && a.amount < b.amount);
    };
    if (!std::is_sorted(terms.begin(), terms.end(), byYears))
        std::sort(terms.begin(), terms.end(), byYears);
    std::vector<double> amounts;
    for (size_t k = 0; k < terms.size(); ++k) {
        if (k > 0 && terms[k].years == terms[k - 1].years)
            amounts.back() += terms[k].amount;
        else
            amounts.push_back(terms[k].amount);
    }
    const auto xnpvAt = [&terms](double rate) {
        const double logGrowth = std::log1p(rate);
        double sum = 0;
        for (const Term& term : terms)
            sum += term.amount * std::exp(-term.years * logGrowth);
        return sum;
    };
    // The shared rate search over yearly rates; of several, the one nearest
    // 10 % (the spreadsheet's default guess). With one root at most, the
    // walk along the search's grid starts at the last root found, where an
    // edit of one flow leaves the new root nearly always: the grid step that
    // holds the root, and so the root, is the same from wherever the walk
    // starts, only found after a value or two instead of a few dozen.
    const double start = std::isfinite(m_solvedRate) ? m_solvedRate : 0.1;
    const RootSearch::Roots roots = RootSearch::signChanges(amounts) <= 1
                                        ? RootSearch::findOnlyRoot(xnpvAt, start)
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
    updateTerms();
    xnpv = rateProblem.isEmpty() ? netPresentValue(rate / 100) : noNumber;
    setNote(QStringLiteral("xnpv"), rateProblem);
    // The rate for XNPV plays no part in XIRR: the same terms (amounts and
    // years, which the basis counted) have the same XIRR.
    if (!m_solved || m_terms != m_solvedTerms) {
        m_solvedReason.clear();
        m_solvedRate = internalRate(m_solvedReason);
        m_solvedTerms = m_terms;
        m_solved = true;
    }
    xirr = m_solvedRate * 100;
    setNote(QStringLiteral("xirr"), m_solvedReason);
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
