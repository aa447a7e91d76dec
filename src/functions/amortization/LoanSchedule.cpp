#include "LoanSchedule.h"

#include "numerics/Cents.h"
#include "numerics/FinanceMath.h"
#include "numerics/RootSearch.h"

#include <QMap>
#include <QStringList>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>

namespace LoanSchedule {
namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// Totals of up to a million payments of up to Cents::maximum each.
__extension__ typedef __int128 Int128;

QString beyondCents()
{
    return QStringLiteral("The amounts pass 10,000,000,000,000, more than the schedule counts "
                          "in cents.");
}

// The shortest text that reads back to `value` ("7.5", not "7.50000").
QString shortest(double value)
{
    char buffer[32];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, written.ptr - buffer);
}

// A rate per payment period: as a double for the annuity, and as what the
// interest in cents is formed from: the annual percentage, an exact decimal,
// over 100 × payments a year when interest compounds with the payments;
// else the period rate's shortest decimal over 1 (it has no exact decimal).
struct PeriodRate {
    double i = 0;
    std::optional<Cents::Decimal> decimal;
    qint64 divisor = 1;
};

PeriodRate periodRate(double annualPercent, int p, int c)
{
    PeriodRate rate;
    rate.i = FinanceMath::growthFactorMinusOne(annualPercent / 100 / c, double(c) / p);
    const bool plain = c == p;
    rate.decimal = Cents::shortestDecimal(plain ? annualPercent : rate.i);
    rate.divisor = plain ? 100 * qint64(p) : 1;
    return rate;
}

// Amounts in whole cents (qint64) or unrounded (double): the few operations
// the schedule needs, each refusing (nullopt) what cents cannot count.
template <class Money> struct Arithmetic;

template <> struct Arithmetic<qint64> {
    static std::optional<qint64> amount(double value) { return Cents::fromDouble(value); }
    static double toDouble(qint64 cents) { return Cents::toDouble(cents); }
    static std::optional<qint64> interest(qint64 balance, const PeriodRate& rate)
    {
        return rate.decimal ? Cents::multiply(balance, *rate.decimal, rate.divisor) : std::nullopt;
    }
    static bool fits(qint64 value) { return value <= Cents::maximum && value >= -Cents::maximum; }
    // The level payment of `balance` over `count` payments; at a zero rate
    // and for one payment, where it is a plain decimal that may end in half
    // a cent, it is formed exactly; else the annuity in doubles, rounded on
    // its shortest decimal. `principal` is the amount as a double (the loan
    // as typed for the first level).
    static std::optional<qint64> level(qint64 balance, double principal, const PeriodRate& rate,
                                       int count, bool due)
    {
        if (count == 1) {
            if (due)
                return balance;
            const std::optional<qint64> i = interest(balance, rate);
            return i && *i <= Cents::maximum - balance ? std::optional<qint64>(balance + *i)
                                                       : std::nullopt;
        }
        if (rate.i == 0)
            return Cents::multiply(balance, {1, 0}, count);
        double value =
            principal * rate.i / -FinanceMath::growthFactorMinusOne(rate.i, -double(count));
        if (due)
            value /= 1 + rate.i;
        return Cents::fromDouble(value);
    }
};

template <> struct Arithmetic<double> {
    static std::optional<double> amount(double value)
    {
        return std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
    }
    static double toDouble(double value) { return value; }
    static std::optional<double> interest(double balance, const PeriodRate& rate)
    {
        return balance * rate.i;
    }
    static bool fits(double value) { return std::isfinite(value); }
    static std::optional<double> level(double balance, double, const PeriodRate& rate, int count,
                                       bool due)
    {
        double value = rate.i == 0 ? balance / count
                                   : balance * rate.i /
                                         -FinanceMath::growthFactorMinusOne(rate.i, -double(count));
        if (due)
            value /= 1 + rate.i;
        return amount(value);
    }
};

template <class Money> Outcome runIn(const Terms& terms)
{
    using A = Arithmetic<Money>;
    Outcome out;
    const auto refuse = [&out](const QString& reason) {
        out.rows.clear();
        out.problem = reason;
        out.level = out.totalInterest = out.totalPaid = noNumber;
        return out;
    };
    const std::optional<Money> loan = A::amount(terms.loanAmount);
    const std::optional<Money> everyExtra = A::amount(std::max(0.0, terms.extraEveryPayment));
    if (!loan || !everyExtra)
        return refuse(beyondCents());
    // The one-time extras by payment, those on one payment added up.
    QMap<int, Money> extras;
    for (const auto& [payment, value] : terms.extras) {
        const std::optional<Money> amount = A::amount(value);
        if (!amount)
            return refuse(beyondCents());
        Money& sum = extras[payment];
        sum += *amount;
        if (!A::fits(sum))
            return refuse(beyondCents());
    }
    QMap<int, double> rateChanges;
    for (const auto& [payment, percent] : terms.rateChanges)
        rateChanges.insert(payment, percent);

    const int n = terms.count;
    const int last = n > 0 ? n : maximumPayments;
    const int io = std::max(0, terms.interestOnly);
    std::optional<Money> level;
    if (terms.givenPayment) {
        level = A::amount(*terms.givenPayment);
        if (!level)
            return refuse(beyondCents());
    }
    PeriodRate rate = periodRate(terms.annualRate, terms.paymentsPerYear, terms.compoundingPerYear);
    Money balance = *loan;
    bool lowerNext = false;
    using Sum = std::conditional_t<std::is_same_v<Money, qint64>, Int128, double>;
    Sum interestSum = 0;
    Sum paidSum = 0;
    // A term's rows all at once: grown step by step, the list would hold
    // its old and its new array together at the last step, half as much
    // again as the rows themselves (100,000 rows are 8 MB). Pages of rows
    // an early payoff never writes take no memory. Without a term the list
    // grows from the rows of a long loan.
    out.rows.reserve(n > 0 ? n : std::min(last, 1 << 16));
    for (int k = 1; k <= last && balance > 0; ++k) {
        QStringList events;
        const bool interestOnly = k <= io;
        const auto change = rateChanges.constFind(k);
        if (change != rateChanges.constEnd()) {
            rate = periodRate(*change, terms.paymentsPerYear, terms.compoundingPerYear);
            events << QStringLiteral("Rate %1 %").arg(shortest(*change));
        }
        if (!terms.givenPayment && !interestOnly &&
            (k == 1 || k == io + 1 || change != rateChanges.constEnd() || lowerNext)) {
            const bool first = k == 1;
            level = A::level(balance, first ? terms.loanAmount : A::toDouble(balance), rate,
                             n - k + 1, first && terms.beginning);
            if (!level)
                return refuse(beyondCents());
            if (!first)
                events << QStringLiteral("Payment %1").arg(A::toDouble(*level), 0, 'f', 2);
        }
        lowerNext = false;
        if (interestOnly)
            events << QStringLiteral("Interest only");
        if (k == io + 1)
            out.level = A::toDouble(level.value_or(Money(0)));

        const std::optional<Money> interest =
            terms.beginning && k == 1 ? std::optional<Money>(0) : A::interest(balance, rate);
        if (!interest || !A::fits(balance + *interest))
            return refuse(beyondCents());
        const Money once = extras.value(k, Money(0));
        Money extra = *everyExtra + once;
        const Money scheduled = interestOnly ? Money(0) : *level - *interest;
        if (terms.givenPayment && k == io + 1 && scheduled <= 0 && extra <= 0)
            return refuse(QStringLiteral("The payment does not cover the interest of a period."));
        Money principal = scheduled + extra;
        if (principal >= balance || k == n || k == terms.balloonAt) {
            principal = balance;
            extra = std::clamp(extra, Money(0), principal);
        }
        if (once > 0)
            events << QStringLiteral("Extra %1").arg(A::toDouble(once), 0, 'f', 2);
        if (k == terms.balloonAt && (n == 0 || k < n))
            events << QStringLiteral("Balloon");
        balance -= principal;
        if (!A::fits(balance))
            return refuse(beyondCents());
        interestSum += *interest;
        paidSum += principal + *interest;
        lowerNext = terms.lowerPaymentAfterExtra && once > 0 && k >= io;
        out.rows.append({k, QDate(), A::toDouble(principal + *interest), A::toDouble(*interest),
                         A::toDouble(principal), A::toDouble(extra), A::toDouble(balance),
                         events.join(QStringLiteral("; "))});
    }
    if (balance > 0)
        return refuse(QStringLiteral("The payment does not pay off the loan within 1,000,000 "
                                     "payments."));
    if (std::is_same_v<Money, qint64>) {
        out.totalInterest = double(interestSum) / 100;
        out.totalPaid = double(paidSum) / 100;
    } else {
        out.totalInterest = double(interestSum);
        out.totalPaid = double(paidSum);
    }
    return out;
}

} // namespace

Outcome run(const Terms& terms)
{
    return terms.roundToCents ? runIn<qint64>(terms) : runIn<double>(terms);
}

double annualPercentageRate(const QList<Row>& rows, double received, int paymentsPerYear,
                            bool beginning)
{
    if (rows.isEmpty() || !(received > 0) || paymentsPerYear < 1)
        return noNumber;
    // What the payments are worth at `rate` a period, less what was received:
    // one sign change (money in, then payments out), so one root.
    const auto value = [&](double rate) {
        const double v = 1 / (1 + rate);
        double factor = beginning ? 1 : v;
        double sum = 0;
        for (const Row& row : rows) {
            sum += row.payment * factor;
            factor *= v;
        }
        return sum - received;
    };
    const RootSearch::Roots roots = RootSearch::findOnlyRoot(value, 0.01);
    return roots.empty() ? noNumber : roots.nearest(0.01) * paymentsPerYear * 100;
}

} // namespace LoanSchedule
