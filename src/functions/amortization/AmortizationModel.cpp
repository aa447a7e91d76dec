#include "AmortizationModel.h"

#include "numerics/Cents.h"
#include "numerics/CsvWriter.h"
#include "numerics/FinanceMath.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

const char* const resultProperties[] = {"payment",       "numberOfPayments", "totalInterest",
                                        "totalPaid",     "lastPayment",      "rangePrincipal",
                                        "rangeInterest", "rangeBalance"};

QString beyondCents()
{
    return QStringLiteral("The amounts pass 10,000,000,000,000, more than the schedule counts "
                          "in cents.");
}

// `date` moved on by `months` whole months, the day kept or cut to the last
// day of a shorter month, as QDate::addMonths does, but in constant time
// (Qt 6.4 steps month by month, which over a million payments takes minutes).
QDate monthsLater(const QDate& date, int months)
{
    const qint64 total = qint64(date.month() - 1) + months;
    const int year = int(date.year() + total / 12);
    const int month = int(total % 12) + 1;
    return QDate(year, month, std::min(date.day(), QDate(year, month, 1).daysInMonth()));
}

} // namespace

const QList<std::pair<QString, int>>& AmortizationModel::frequencies()
{
    static const QList<std::pair<QString, int>> list = {
        {QStringLiteral("Monthly"), 12},  {QStringLiteral("Semimonthly"), 24},
        {QStringLiteral("Biweekly"), 26}, {QStringLiteral("Weekly"), 52},
        {QStringLiteral("Quarterly"), 4}, {QStringLiteral("Semiannually"), 2},
        {QStringLiteral("Annually"), 1}};
    return list;
}

QStringList AmortizationModel::frequencyWords()
{
    QStringList words;
    for (const auto& [word, count] : frequencies())
        words << word;
    return words;
}

std::optional<int> AmortizationModel::countOf(const QString& word)
{
    for (const auto& [known, count] : frequencies()) {
        if (known == word)
            return count;
    }
    return std::nullopt;
}

const QStringList& AmortizationModel::modes()
{
    static const QStringList words = {QStringLiteral("BEG"), QStringLiteral("END")};
    return words;
}

void AmortizationModel::configureNames()
{
    setNames({QStringLiteral("AmortizationReportCreatedNotification"),
              QStringLiteral("AmortizationReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Amortization"),
              QStringLiteral("amortization_description"), QStringLiteral("amortization"),
              QStringLiteral("Amortization")});
}

void AmortizationModel::clearResults()
{
    schedule.clear();
    clearNotes();
    payoffDate = QDate();
    payment = numberOfPayments = totalInterest = totalPaid = lastPayment = noNumber;
    rangePrincipal = rangeInterest = rangeBalance = noNumber;
}

void AmortizationModel::refuse(const QString& reason)
{
    clearResults();
    for (const char* property : resultProperties)
        setNote(QString::fromLatin1(property), reason);
}

// Semimonthly payments fall on two days of each month, the first payment's
// day and the day 14 days later, as pay days do:
// - the 1st to the 14th: that day and 14 days later (1st and 15th, 14th and
//   28th), which every month has;
// - the 15th, or the last day of a month: the 15th and the month's last day;
// - the 16th to the 30th (not a month's end): the first date is the later
//   of the pair, the earlier one 14 days before it (20th: the 20th, then the
//   6th and 20th of each following month), the later day moved to the last
//   day of a shorter month (30th: the 16th and 28th of February).
// A first date after the 15th thus keeps its own day rather than moving the
// schedule on to the next month.
QDate AmortizationModel::dateOfPayment(int period) const
{
    if (!firstPaymentDate.isValid() || period < 1)
        return {};
    const int k = period - 1;
    const int perYear = int(paymentsPerYear);
    if (perYear == 52)
        return firstPaymentDate.addDays(7LL * k);
    if (perYear == 26)
        return firstPaymentDate.addDays(14LL * k);
    if (perYear != 24)
        return monthsLater(firstPaymentDate, k * (12 / std::max(1, perYear)));

    const int day = firstPaymentDate.day();
    const bool monthEnd = day == firstPaymentDate.daysInMonth();
    int earlier = day; // the earlier day of the pair
    int later = day + 14;
    int start = 0; // 1 when the first date is the later day of its pair
    if (day == 15 || (monthEnd && day > 15)) {
        earlier = 15;
        later = 31; // the month's last day
        start = day == 15 ? 0 : 1;
    } else if (day > 15) {
        earlier = day - 14;
        later = day;
        start = 1;
    }
    const int j = k + start;
    const QDate month =
        monthsLater(QDate(firstPaymentDate.year(), firstPaymentDate.month(), 1), j / 2);
    const int dayOfMonth = j % 2 == 0 ? earlier : std::min(later, month.daysInMonth());
    return QDate(month.year(), month.month(), dayOfMonth);
}

void AmortizationModel::calculateResult()
{
    clearResults();
    const double p = std::trunc(paymentsPerYear);
    const double c = std::trunc(compoundingPerYear);
    const double n = std::round(years * p);
    if (!(p >= 1 && c >= 1))
        return refuse(QStringLiteral("Choose how often payments are made and interest is "
                                     "compounded."));
    // A timing the schedule does not know is refused, not taken for END.
    if (!modes().contains(paymentMode))
        return refuse(QStringLiteral("Choose when payments are made: %1.")
                          .arg(modes().join(QStringLiteral(" or "))));
    if (loanAmount == 0)
        return refuse(QStringLiteral("Enter the loan amount."));
    if (loanAmount < 0)
        return refuse(QStringLiteral("The loan amount must be more than 0."));
    if (!std::isfinite(loanAmount) || (roundToCents && !Cents::fromDouble(loanAmount)))
        return refuse(QStringLiteral("The loan amount is over 10,000,000,000,000."));
    if (years == 0)
        return refuse(QStringLiteral("Enter the term in years."));
    if (!(years > 0))
        return refuse(QStringLiteral("The term must be more than 0 years."));
    if (n < 1)
        return refuse(QStringLiteral("The term is shorter than one payment."));
    if (n > maximumPayments)
        return refuse(QStringLiteral("The term is longer than 1,000,000 payments."));
    if (!std::isfinite(annualRate))
        return refuse(QStringLiteral("The interest rate is too large."));
    if (!std::isfinite(extraPayment) || (roundToCents && !Cents::fromDouble(extraPayment)))
        return refuse(QStringLiteral("The extra payment is over 10,000,000,000,000."));
    const int count = int(n);
    const double i = FinanceMath::growthFactorMinusOne(annualRate / 100 / c, c / p);
    if (!(i > -1))
        return refuse(QStringLiteral("The interest rate must be above -100 % a period."));
    const bool beginning = paymentMode == QLatin1String("BEG");
    // The level payment of an annuity worth the loan amount.
    double level =
        i == 0 ? loanAmount / n : loanAmount * i / -FinanceMath::growthFactorMinusOne(i, -n);
    if (beginning)
        level /= 1 + i;
    if (!std::isfinite(level))
        return refuse(QStringLiteral("No level payment pays off this loan."));

    if (roundToCents) {
        if (!scheduleInCents(count, i, beginning, level))
            return refuse(beyondCents());
    } else {
        scheduleUnrounded(count, i, beginning, level);
    }
    numberOfPayments = double(schedule.size());
    lastPayment = schedule.isEmpty() ? noNumber : schedule.last().payment;
    payoffDate = schedule.isEmpty() ? QDate() : schedule.last().date;
    calculateRange();
}

bool AmortizationModel::scheduleInCents(int count, double i, bool beginning, double level)
{
    const qint64 loan = *Cents::fromDouble(loanAmount);
    const qint64 extra = std::max<qint64>(0, *Cents::fromDouble(extraPayment));
    // The rate per period as an exact decimal and a divisor: the annual
    // percentage over 100 p when interest compounds with the payments, else
    // the shortest decimal of the computed rate.
    const bool plain = std::trunc(compoundingPerYear) == std::trunc(paymentsPerYear);
    const std::optional<Cents::Decimal> rate = Cents::shortestDecimal(plain ? annualRate : i);
    const qint64 divisor = plain ? 100 * qint64(std::trunc(paymentsPerYear)) : 1;
    const auto interestOn = [&](qint64 balance) {
        return rate ? Cents::multiply(balance, *rate, divisor) : std::nullopt;
    };

    std::optional<qint64> levelCents;
    if (count == 1 && beginning) {
        levelCents = loan;
    } else if (count == 1) {
        if (const std::optional<qint64> interest = interestOn(loan);
            interest && *interest <= Cents::maximum - loan)
            levelCents = loan + *interest;
    } else if (i == 0) {
        levelCents = Cents::multiply(loan, {1, 0}, count);
    } else {
        levelCents = Cents::fromDouble(level);
    }
    if (!levelCents)
        return false;

    schedule.reserve(count);
    qint64 balance = loan;
    // Totals of up to a million payments of up to Cents::maximum each.
    __extension__ __int128 interestSum = 0;
    __extension__ __int128 paidSum = 0;
    for (int k = 1; k <= count && balance > 0; ++k) {
        const std::optional<qint64> interest =
            beginning && k == 1 ? std::optional<qint64>(0) : interestOn(balance);
        if (!interest || *interest > Cents::maximum - balance)
            return false;
        qint64 principal = *levelCents - *interest + extra;
        if (principal >= balance || k == count)
            principal = balance;
        balance -= principal;
        if (balance > Cents::maximum)
            return false;
        interestSum += *interest;
        paidSum += principal + *interest;
        schedule.append({k, dateOfPayment(k), Cents::toDouble(principal + *interest),
                         Cents::toDouble(*interest), Cents::toDouble(principal),
                         Cents::toDouble(balance)});
    }
    payment = Cents::toDouble(*levelCents);
    totalInterest = double(interestSum) / 100;
    totalPaid = double(paidSum) / 100;
    return true;
}

void AmortizationModel::scheduleUnrounded(int count, double i, bool beginning, double level)
{
    const double extra = std::max(0.0, extraPayment);
    double balance = loanAmount;
    double interestSum = 0;
    double paidSum = 0;
    schedule.reserve(count);
    for (int k = 1; k <= count && balance > 0; ++k) {
        const double interest = beginning && k == 1 ? 0 : balance * i;
        double principal = level - interest + extra;
        if (principal >= balance || k == count)
            principal = balance;
        balance -= principal;
        interestSum += interest;
        paidSum += principal + interest;
        schedule.append({k, dateOfPayment(k), principal + interest, interest, principal, balance});
    }
    payment = level;
    totalInterest = interestSum;
    totalPaid = paidSum;
}

// The whole cents a row amount of a schedule in cents holds: each is a
// whole number of cents ÷ 100 as the nearest double, which this recovers
// exactly (nothing is rounded here).
namespace {
qint64 centsOfRow(double amount)
{
    return qint64(std::llround(amount * 100));
}
} // namespace

void AmortizationModel::calculateRange()
{
    if (schedule.isEmpty())
        return;
    if (rangeStart < 1 || rangeEnd < rangeStart) {
        const QString reason = rangeStart < 1 ? QStringLiteral("P1 is a payment number, 1 or more.")
                                              : QStringLiteral("P2 comes before P1.");
        for (const char* property : {"rangePrincipal", "rangeInterest", "rangeBalance"})
            setNote(QString::fromLatin1(property), reason);
        return;
    }
    const int last = std::min<int>(rangeEnd, int(schedule.size()));
    double principal = 0;
    double interest = 0;
    qint64 principalCents = 0;
    qint64 interestCents = 0;
    for (int k = rangeStart; k <= last; ++k) {
        const Row& row = schedule.at(k - 1);
        if (roundToCents) {
            principalCents += centsOfRow(row.principal);
            interestCents += centsOfRow(row.interest);
        } else {
            principal += row.principal;
            interest += row.interest;
        }
    }
    rangePrincipal = roundToCents ? Cents::toDouble(principalCents) : principal;
    rangeInterest = roundToCents ? Cents::toDouble(interestCents) : interest;
    rangeBalance = rangeStart <= last ? schedule.at(last - 1).balance : schedule.last().balance;
}

QString AmortizationModel::isoDate(const QDate& date)
{
    if (!date.isValid())
        return {};
    if (date.year() >= 0 && date.year() <= 9999)
        return date.toString(Qt::ISODate);
    // Qt writes no ISO date past the year 9999; a loan of a million
    // payments ends far beyond it.
    return QStringLiteral("%1-%2-%3")
        .arg(date.year())
        .arg(date.month(), 2, 10, QLatin1Char('0'))
        .arg(date.day(), 2, 10, QLatin1Char('0'));
}

// Written straight into one buffer, a row at a time: a schedule of a million
// payments is some 50 MB of text, and a list of strings per row would take
// several times that.
QByteArray AmortizationModel::scheduleCsv() const
{
    QByteArray out = CsvWriter::toCsv({QStringLiteral("period"), QStringLiteral("date"),
                                       QStringLiteral("payment"), QStringLiteral("interest"),
                                       QStringLiteral("principal"), QStringLiteral("balance")},
                                      {});
    out.reserve(out.size() + schedule.size() * 64);
    char buffer[64];
    const auto append = [&](auto value, auto... format) {
        const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, format...);
        out.append(buffer, written.ptr - buffer);
    };
    const auto money = [&](double value) {
        out.append(',');
        if (roundToCents) // exactly the cents: each amount is cents ÷ 100
            append(value == 0 ? 0.0 : value, std::chars_format::fixed, 2);
        else
            out.append(CsvWriter::number(value).toLatin1());
    };
    for (const Row& r : schedule) {
        append(r.period);
        out.append(',');
        if (r.date.isValid())
            out.append(isoDate(r.date).toLatin1());
        money(r.payment);
        money(r.interest);
        money(r.principal);
        money(r.balance);
        out.append("\r\n");
    }
    return out;
}

QList<qsizetype> AmortizationModel::yearEnds() const
{
    QList<qsizetype> ends;
    const int perYear = std::max(1, int(paymentsPerYear));
    for (qsizetype k = perYear - 1; k < schedule.size(); k += perYear)
        ends << k;
    if (!schedule.isEmpty() && (ends.isEmpty() || ends.last() != schedule.size() - 1))
        ends << schedule.size() - 1;
    if (ends.size() <= maximumChartPoints)
        return ends;
    // Evenly spread over the whole loan, ending at its last payment.
    QList<qsizetype> sampled;
    sampled.reserve(maximumChartPoints);
    for (qsizetype j = 1; j <= maximumChartPoints; ++j)
        sampled << ends.at(j * ends.size() / maximumChartPoints - 1);
    return sampled;
}

Rgba AmortizationModel::colorForTheLineWithLineNumber(int line) const
{
    return line == 0 ? Rgba(0x1F, 0x7A, 0x8C) : Rgba(0xE8, 0x5B, 0x4F);
}

QString AmortizationModel::nameForTheLineWithLineNumber(int line) const
{
    return line == 0 ? QStringLiteral("Balance") : QStringLiteral("Interest paid");
}

QStringList AmortizationModel::dataForXAxisWithLineNumber(int) const
{
    QStringList labels{QStringLiteral("0")};
    const int perYear = std::max(1, int(paymentsPerYear));
    for (qsizetype end : yearEnds()) {
        // Every label differs (the chart places a point by its label): a
        // last payment within a year after the one before it keeps its
        // decimals.
        const double years = double(end + 1) / perYear;
        const QString whole = yearsText(years, years < 100 ? 2 : 0);
        labels << (whole == labels.last() ? yearsText(years, 2) : whole);
    }
    return labels;
}

// Years with at most `decimals` decimals, none when whole ("3", "1.08");
// from 100 years on the axis shows whole years, so that long labels fit
// ("83333").
QString AmortizationModel::yearsText(double years, int decimals)
{
    QString text = QString::number(years, 'f', decimals);
    if (decimals == 0)
        return text;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

QList<std::optional<double>> AmortizationModel::dataForYAxisWithLineNumber(int line) const
{
    QList<std::optional<double>> values{line == 0 ? loanAmount : 0.0};
    double interest = 0;
    qsizetype next = 0;
    for (qsizetype end : yearEnds()) {
        for (; next <= end; ++next)
            interest += schedule.at(next).interest;
        values << (line == 0 ? schedule.at(end).balance : interest);
    }
    return values;
}

MultiLineGraphMarker
AmortizationModel::customViewForLineChartTouchWithXValueAndYValue(const QString& x, double y) const
{
    return {QStringLiteral("Year %1: %2").arg(x, stringFromDouble(y)), QSizeF(140, 30)};
}

void AmortizationModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Loan Amount: %1\n").arg(stringFromDouble(loanAmount));
    body += QStringLiteral("Annual Rate: %1%\n").arg(stringFromDouble(annualRate));
    body += QStringLiteral("Years: %1\n").arg(stringFromDouble(years));
    body += QStringLiteral("Payments Per Year: %1\n").arg(stringFromDouble(paymentsPerYear));
    body += QStringLiteral("Compounding Per Year: %1\n").arg(stringFromDouble(compoundingPerYear));
    body += QStringLiteral("Mode: %1\n").arg(paymentMode);
    body += QStringLiteral("Extra Payment: %1\n").arg(stringFromDouble(extraPayment));
    body += QStringLiteral("Payment: %1\n").arg(stringFromDouble(payment));
    body += QStringLiteral("Number of Payments: %1\n").arg(stringFromDouble(numberOfPayments));
    body += QStringLiteral("Total Interest: %1\n").arg(stringFromDouble(totalInterest));
    body += QStringLiteral("Total Paid: %1\n").arg(stringFromDouble(totalPaid));
    body += QStringLiteral("Last Payment: %1\n").arg(stringFromDouble(lastPayment));
    if (payoffDate.isValid())
        body += QStringLiteral("Payoff Date: %1\n").arg(payoffDateText());
    body += QStringLiteral("Payments %1-%2: Principal %3, Interest %4, Balance %5\n")
                .arg(rangeStart)
                .arg(rangeEnd)
                .arg(stringFromDouble(rangePrincipal), stringFromDouble(rangeInterest),
                     stringFromDouble(rangeBalance));
    writeReport(userInfo, QStringLiteral("Amortization Schedule"), QStringLiteral("#1F7A8C"), body);
}
