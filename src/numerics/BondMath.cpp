#include "BondMath.h"

#include "FinanceMath.h"
#include "RootSearch.h"

#include <cmath>
#include <limits>

namespace BondMath {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

bool thirty360(DayCount::Basis basis)
{
    return basis == DayCount::Basis::Us30360 || basis == DayCount::Basis::European30360;
}

// Σ over the payments of weight(t) · Pₖ · (1 + r)^−t, tₖ = k − 1 + DSC/E.
template <typename Weight>
double sumOfPayments(const Bond& bond, const Period& p, double r, Weight weight)
{
    const double coupon = 100 * bond.rate / bond.frequency;
    const double offset = p.daysToNext / p.daysInPeriod;
    double sum = 0;
    for (int k = 1; k <= p.remaining; ++k) {
        const double t = k - 1 + offset;
        const double payment = coupon + (k == p.remaining ? bond.redemption : 0);
        sum += weight(t) * payment / FinanceMath::growthFactor(r, t);
    }
    return sum;
}

} // namespace

QString problemWith(const Bond& bond)
{
    if (!bond.settlement.isValid())
        return QStringLiteral("The settlement date is missing.");
    if (!bond.maturity.isValid())
        return QStringLiteral("The maturity date is missing.");
    if (bond.settlement >= bond.maturity)
        return QStringLiteral("The settlement date must come before maturity.");
    if (bond.frequency != 1 && bond.frequency != 2 && bond.frequency != 4)
        return QStringLiteral("Coupons come once, twice or four times a year.");
    return {};
}

QDate couponDate(const QDate& maturity, int periods, int frequency)
{
    // QDate::addMonths keeps the day, or takes the month's last day when
    // the month is shorter.
    QDate date = maturity.addMonths(-periods * (12 / frequency));
    if (maturity.day() == maturity.daysInMonth() && date.isValid())
        date = QDate(date.year(), date.month(), date.daysInMonth());
    return date;
}

Period period(const Bond& bond)
{
    if (!problemWith(bond).isEmpty())
        return {};
    const int step = 12 / bond.frequency;
    const QDate& s = bond.settlement;
    const QDate& m = bond.maturity;
    // The whole steps of months between the two dates guess the count of
    // coupons to come; the guess is off by one at most either way.
    const int months = (m.year() - s.year()) * 12 + (m.month() - s.month());
    int k = std::max(1, months / step);
    for (int tries = 0; tries < 3 && couponDate(m, k, bond.frequency) > s; ++tries)
        ++k;
    for (int tries = 0; tries < 3 && k > 1 && couponDate(m, k - 1, bond.frequency) <= s; ++tries)
        --k;
    Period p;
    p.remaining = k;
    p.previous = couponDate(m, k, bond.frequency);
    p.next = couponDate(m, k - 1, bond.frequency);
    if (!p.previous.isValid() || p.previous > s || p.next <= s)
        return {}; // before the calendar's first year
    p.daysFromPrevious = DayCount::days(p.previous, s, bond.basis);
    switch (bond.basis) {
    case DayCount::Basis::ActualActual:
        p.daysInPeriod = double(p.previous.daysTo(p.next));
        break;
    case DayCount::Basis::Actual365:
        p.daysInPeriod = 365.0 / bond.frequency;
        break;
    default:
        p.daysInPeriod = 360.0 / bond.frequency;
        break;
    }
    p.daysToNext =
        thirty360(bond.basis) ? p.daysInPeriod - p.daysFromPrevious : double(s.daysTo(p.next));
    return p;
}

double accruedInterest(const Bond& bond)
{
    const Period p = period(bond);
    if (p.remaining == 0)
        return noNumber;
    return 100 * bond.rate / bond.frequency * p.daysFromPrevious / p.daysInPeriod;
}

double price(const Bond& bond, double yield)
{
    const Period p = period(bond);
    if (p.remaining == 0)
        return noNumber;
    const double r = yield / bond.frequency;
    const double coupon = 100 * bond.rate / bond.frequency;
    const double accrued = coupon * p.daysFromPrevious / p.daysInPeriod;
    if (p.remaining == 1)
        return (bond.redemption + coupon) / (1 + p.daysToNext / p.daysInPeriod * r) - accrued;
    return sumOfPayments(bond, p, r, [](double) { return 1.0; }) - accrued;
}

double yield(const Bond& bond, double cleanPrice)
{
    const Period p = period(bond);
    if (p.remaining == 0 || !std::isfinite(cleanPrice))
        return noNumber;
    const double f = bond.frequency;
    const double coupon = 100 * bond.rate / f;
    const double dirty = cleanPrice + coupon * p.daysFromPrevious / p.daysInPeriod;
    if (p.remaining == 1) {
        if (p.daysToNext <= 0 || dirty == 0)
            return noNumber;
        return (bond.redemption + coupon - dirty) / dirty * p.daysInPeriod / p.daysToNext * f;
    }
    FinanceMath::clearUpperVectorState();
    const auto difference = [&](double r) {
        return sumOfPayments(bond, p, r, [](double) { return 1.0; }) - dirty;
    };
    // Payments of one sign against a price of the other change sign once,
    // so at most one yield fits (Descartes' rule of signs).
    const bool oneRoot = coupon >= 0 && bond.redemption >= 0 && dirty > 0;
    const RootSearch::Roots roots =
        oneRoot ? RootSearch::findOnlyRoot(difference, 0.1 / f) : RootSearch::findRoots(difference);
    return roots.nearest(0.1 / f) * f;
}

double macaulayDuration(const Bond& bond, double yield)
{
    const Period p = period(bond);
    if (p.remaining == 0)
        return noNumber;
    const double r = yield / bond.frequency;
    const double weighted = sumOfPayments(bond, p, r, [](double t) { return t; });
    const double value = sumOfPayments(bond, p, r, [](double) { return 1.0; });
    return weighted / value / bond.frequency;
}

double modifiedDuration(const Bond& bond, double yield)
{
    return macaulayDuration(bond, yield) / (1 + yield / bond.frequency);
}

double convexity(const Bond& bond, double yield)
{
    const Period p = period(bond);
    if (p.remaining == 0)
        return noNumber;
    const double f = bond.frequency;
    const double r = yield / f;
    const double curved = sumOfPayments(bond, p, r, [](double t) { return t * (t + 1); });
    const double value = sumOfPayments(bond, p, r, [](double) { return 1.0; });
    return curved / ((1 + r) * (1 + r)) / value / (f * f);
}

} // namespace BondMath
