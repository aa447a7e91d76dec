#include "AmortizationModel.h"

#include "numerics/Cents.h"
#include "numerics/CsvWriter.h"
#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"
#include "numerics/TextTable.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

const char* const resultProperties[] = {
    "payment",        "numberOfPayments", "totalInterest", "totalPaid",     "lastPayment",
    "rangePrincipal", "rangeInterest",    "rangeBalance",  "interestSaved", "apr"};

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

const QStringList& AmortizationModel::afterExtraWords()
{
    static const QStringList words = {QStringLiteral("Shorten term"),
                                      QStringLiteral("Lower payment")};
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
    // Its memory goes too (clear() would keep it): the next schedule is
    // made before it replaces this one, and two long ones at once are
    // twice the memory.
    schedule = {};
    m_yearTotals.reset();
    clearNotes();
    payoffDate = QDate();
    payment = numberOfPayments = totalInterest = totalPaid = lastPayment = noNumber;
    rangePrincipal = rangeInterest = rangeBalance = interestSaved = apr = noNumber;
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
    if (!eventsProblem.isEmpty())
        return refuse(eventsProblem);
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
    if (solveTerm) {
        if (givenPayment == 0)
            return refuse(QStringLiteral("Enter the payment."));
        if (!(givenPayment > 0))
            return refuse(QStringLiteral("The payment must be more than 0."));
    } else {
        if (years == 0)
            return refuse(QStringLiteral("Enter the term in years."));
        if (!(years > 0))
            return refuse(QStringLiteral("The term must be more than 0 years."));
        if (n < 1)
            return refuse(QStringLiteral("The term is shorter than one payment."));
        if (n > maximumPayments)
            return refuse(QStringLiteral("The term is longer than 1,000,000 payments."));
    }
    if (!std::isfinite(annualRate))
        return refuse(QStringLiteral("The interest rate is too large."));
    if (!std::isfinite(extraPayment) || (roundToCents && !Cents::fromDouble(extraPayment)))
        return refuse(QStringLiteral("The extra payment is over 10,000,000,000,000."));
    const int count = solveTerm ? 0 : int(n);
    const double i = FinanceMath::growthFactorMinusOne(annualRate / 100 / c, c / p);
    if (!(i > -1))
        return refuse(QStringLiteral("The interest rate must be above -100 % a period."));
    if (const QString problem = problemWithEvents(count); !problem.isEmpty())
        return refuse(problem);
    if (!solveTerm) {
        // The level payment of an annuity worth the loan amount.
        const double level =
            i == 0 ? loanAmount / n : loanAmount * i / -FinanceMath::growthFactorMinusOne(i, -n);
        if (!std::isfinite(level))
            return refuse(QStringLiteral("No level payment pays off this loan."));
    }

    const LoanSchedule::Terms withEvents = terms(count);
    LoanSchedule::Outcome outcome = LoanSchedule::run(withEvents);
    if (!outcome.problem.isEmpty())
        return refuse(outcome.problem);
    schedule = std::move(outcome.rows);
    for (Row& row : schedule)
        row.date = dateOfPayment(row.period);
    payment = outcome.level;
    totalInterest = outcome.totalInterest;
    totalPaid = outcome.totalPaid;
    numberOfPayments = double(schedule.size());
    lastPayment = schedule.isEmpty() ? noNumber : schedule.last().payment;
    payoffDate = schedule.isEmpty() ? QDate() : schedule.last().date;
    calculateRange();

    // The same loan with none of its events, for the interest they save.
    LoanSchedule::Terms plain = withEvents;
    plain.extraEveryPayment = 0;
    plain.interestOnly = plain.balloonAt = 0;
    plain.extras.clear();
    plain.rateChanges.clear();
    const bool anyEvent = withEvents.extraEveryPayment > 0 || withEvents.interestOnly > 0 ||
                          withEvents.balloonAt > 0 || !withEvents.extras.isEmpty() ||
                          !withEvents.rateChanges.isEmpty();
    const LoanSchedule::Outcome without =
        anyEvent ? LoanSchedule::run(plain) : LoanSchedule::Outcome{{}, 0, totalInterest, 0, {}};
    if (without.problem.isEmpty())
        interestSaved = roundToCents ? Cents::toDouble(*Cents::fromDouble(without.totalInterest) -
                                                       *Cents::fromDouble(totalInterest))
                                     : without.totalInterest - totalInterest;
    else
        setNote(
            QStringLiteral("interestSaved"),
            QStringLiteral("The loan without its events has no schedule. %1").arg(without.problem));

    if (!std::isfinite(fees) || fees < 0)
        setNote(QStringLiteral("apr"), QStringLiteral("The fees must be 0 or more."));
    else if (fees >= loanAmount)
        setNote(QStringLiteral("apr"), QStringLiteral("The fees are as much as the loan or more."));
    else if (apr = LoanSchedule::annualPercentageRate(schedule, loanAmount - fees, int(p),
                                                      paymentMode == QLatin1String("BEG"));
             !std::isfinite(apr))
        setNote(QStringLiteral("apr"),
                QStringLiteral("No rate makes the payments worth the loan less its fees."));
}

QString AmortizationModel::problemWithEvents(int count) const
{
    const int last = count > 0 ? count : maximumPayments;
    const auto place = [&](const Event& event, const QString& what) -> QString {
        if (event.payment == 0 && !firstPaymentDate.isValid())
            return QStringLiteral("%1 on %2 needs the first payment date.")
                .arg(what, isoDate(event.date));
        if (event.payment < 0)
            return QStringLiteral("%1 at payment %2: payments count from 1.")
                .arg(what)
                .arg(event.payment);
        if (paymentOf(event, last) == 0)
            return event.payment > 0
                       ? QStringLiteral("%1 at payment %2 comes after the last payment (%3).")
                             .arg(what)
                             .arg(event.payment)
                             .arg(last)
                       : QStringLiteral("%1 on %2 comes after the last payment.")
                             .arg(what, isoDate(event.date));
        return {};
    };
    for (const Event& event : extras) {
        if (QString problem = place(event, QStringLiteral("An extra payment")); !problem.isEmpty())
            return problem;
        if (!std::isfinite(event.value) || event.value < 0 ||
            (roundToCents && !Cents::fromDouble(event.value)))
            return QStringLiteral("An extra payment must be an amount of 0 or more, up to "
                                  "10,000,000,000,000.");
    }
    const double c = std::trunc(compoundingPerYear);
    for (const Event& event : rateChanges) {
        if (QString problem = place(event, QStringLiteral("A rate change")); !problem.isEmpty())
            return problem;
        if (!std::isfinite(event.value) || !(1 + event.value / 100 / c > 0))
            return QStringLiteral("A new rate must be above -100 %.");
    }
    if (interestOnly < 0)
        return QStringLiteral("The interest-only payments cannot be fewer than 0.");
    if (count > 0 && interestOnly >= count)
        return QStringLiteral("The interest-only payments must be fewer than the %1 payments of "
                              "the term.")
            .arg(count);
    if (balloonAt < 0)
        return QStringLiteral("The balloon is a payment number, 1 or more (0 for none).");
    if (!afterExtraWords().contains(afterExtra))
        return QStringLiteral("Choose what an extra payment does: %1.")
            .arg(afterExtraWords().join(QStringLiteral(" or ")));
    return {};
}

int AmortizationModel::paymentOf(const Event& event, int last) const
{
    if (event.payment > 0)
        return event.payment <= last ? event.payment : 0;
    if (!event.date.isValid() || !firstPaymentDate.isValid() || dateOfPayment(last) < event.date)
        return 0;
    // The payment dates only grow: the first on or after the date, by halves.
    int low = 1;
    int high = last;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (dateOfPayment(middle) < event.date)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

LoanSchedule::Terms AmortizationModel::terms(int count) const
{
    LoanSchedule::Terms t;
    t.loanAmount = loanAmount;
    t.annualRate = annualRate;
    t.paymentsPerYear = int(std::trunc(paymentsPerYear));
    t.compoundingPerYear = int(std::trunc(compoundingPerYear));
    t.count = count;
    if (solveTerm)
        t.givenPayment = givenPayment;
    t.beginning = paymentMode == QLatin1String("BEG");
    t.roundToCents = roundToCents;
    t.extraEveryPayment = extraPayment;
    t.interestOnly = interestOnly;
    t.balloonAt = balloonAt;
    t.lowerPaymentAfterExtra = afterExtra == QLatin1String("Lower payment");
    const int last = count > 0 ? count : maximumPayments;
    for (const Event& event : extras)
        t.extras.append({paymentOf(event, last), event.value});
    for (const Event& event : rateChanges)
        t.rateChanges.append({paymentOf(event, last), event.value});
    return t;
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
    return CsvWriter::isoDate(date);
}

// Written straight into one buffer, a row at a time: a schedule of a million
// payments is some 50 MB of text, and a list of strings per row would take
// several times that.
QByteArray AmortizationModel::scheduleCsv() const
{
    CsvWriter csv({QStringLiteral("period"), QStringLiteral("date"), QStringLiteral("payment"),
                   QStringLiteral("interest"), QStringLiteral("principal"),
                   QStringLiteral("balance"), QStringLiteral("extra"), QStringLiteral("event")},
                  schedule.size(), 72);
    const auto money = [&](double value) {
        if (roundToCents) // exactly the cents: each amount is cents ÷ 100
            csv.fixed(value, 2);
        else
            csv.shortest(value);
    };
    for (const Row& r : schedule) {
        csv.integer(r.period);
        csv.date(r.date);
        money(r.payment);
        money(r.interest);
        money(r.principal);
        money(r.balance);
        money(r.extra);
        csv.text(r.event); // "Rate 7.5 %; Payment 1234.56", or empty
        csv.endRow();
    }
    return csv.take();
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

const QList<AmortizationModel::Row>& AmortizationModel::yearTotals() const
{
    if (m_yearTotals)
        return *m_yearTotals;
    QList<Row>& years = m_yearTotals.emplace();
    const int perYear = std::max(1, int(paymentsPerYear));
    years.reserve(schedule.size() / perYear + 1);
    for (qsizetype start = 0; start < schedule.size(); start += perYear) {
        Row year;
        year.period = int(start / perYear) + 1;
        qint64 cents[4] = {};
        const qsizetype end = std::min<qsizetype>(start + perYear, schedule.size());
        for (qsizetype k = start; k < end; ++k) {
            const Row& row = schedule.at(k);
            if (roundToCents) {
                cents[0] += centsOfRow(row.payment);
                cents[1] += centsOfRow(row.interest);
                cents[2] += centsOfRow(row.principal);
                cents[3] += centsOfRow(row.extra);
            } else {
                year.payment += row.payment;
                year.interest += row.interest;
                year.principal += row.principal;
                year.extra += row.extra;
            }
        }
        if (roundToCents) {
            year.payment = Cents::toDouble(cents[0]);
            year.interest = Cents::toDouble(cents[1]);
            year.principal = Cents::toDouble(cents[2]);
            year.extra = Cents::toDouble(cents[3]);
        }
        year.balance = schedule.at(end - 1).balance;
        years << year;
    }
    return *m_yearTotals;
}

QString AmortizationModel::scheduleTable() const
{
    const bool dated = !schedule.isEmpty() && schedule.first().date.isValid();
    const int shown = int(std::min<qsizetype>(schedule.size(), maximumReportRows));
    const QList<Row>& years = yearTotals();
    const int perYear = std::max(1, int(paymentsPerYear));
    const auto amount = [this](double value) {
        return roundToCents ? NumberFormat::money(value) : stringFromDouble(value);
    };
    const bool anyEvent = std::any_of(schedule.cbegin(), schedule.cbegin() + shown,
                                      [](const Row& row) { return !row.event.isEmpty(); });
    // The date column only when the payments have dates, the event column
    // only when something happened; the amounts right-aligned.
    const auto cells = [&](const QString& first, const QString& date, const QStringList& amounts,
                           const QString& event) {
        QStringList line{first};
        if (dated)
            line << date;
        line << amounts;
        if (anyEvent)
            line << event;
        return line;
    };
    const auto amounts = [&](const Row& row) {
        return QStringList{amount(row.payment), amount(row.interest), amount(row.principal),
                           amount(row.extra), amount(row.balance)};
    };
    QList<QStringList> lines{
        cells(QStringLiteral("No."), QStringLiteral("Date"),
              {QStringLiteral("Payment"), QStringLiteral("Interest"), QStringLiteral("Principal"),
               QStringLiteral("Extra"), QStringLiteral("Balance")},
              QStringLiteral("Event"))};
    for (int k = 0; k < shown; ++k) {
        const Row& row = schedule.at(k);
        lines << cells(QString::number(row.period), isoDate(row.date), amounts(row), row.event);
        if ((k + 1) % perYear == 0 || k + 1 == schedule.size())
            lines << cells(QStringLiteral("Year %1").arg(k / perYear + 1), QString(),
                           amounts(years.at(k / perYear)), QString());
    }
    QList<bool> rightAligned(dated ? 2 : 1, false);
    rightAligned << QList<bool>(5, true);
    QString table = TextTable::format(lines, rightAligned);
    if (shown < schedule.size())
        table += QStringLiteral("The report shows the first %1 of the %2 payments; save the "
                                "schedule as CSV for all of them.\n")
                     .arg(shown)
                     .arg(schedule.size());
    return table;
}

QString AmortizationModel::eventsText(const QList<Event>& events)
{
    QStringList texts;
    for (const Event& event : events) {
        texts << QStringLiteral("%1:%2").arg(event.payment > 0 ? QString::number(event.payment)
                                                               : isoDate(event.date),
                                             CsvWriter::number(event.value));
    }
    return texts.join(QLatin1Char(','));
}

void AmortizationModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Loan Amount: %1\n").arg(stringFromDouble(loanAmount));
    body += QStringLiteral("Annual Rate: %1%\n").arg(stringFromDouble(annualRate));
    if (solveTerm)
        body += QStringLiteral("Given Payment: %1\n").arg(stringFromDouble(givenPayment));
    else
        body += QStringLiteral("Years: %1\n").arg(stringFromDouble(years));
    body += QStringLiteral("Payments Per Year: %1\n").arg(stringFromDouble(paymentsPerYear));
    body += QStringLiteral("Compounding Per Year: %1\n").arg(stringFromDouble(compoundingPerYear));
    body += QStringLiteral("Mode: %1\n").arg(paymentMode);
    body += QStringLiteral("Extra Payment: %1\n").arg(stringFromDouble(extraPayment));
    if (!extras.isEmpty()) {
        body += QStringLiteral("Extra Payments: %1\n").arg(eventsText(extras));
        body += QStringLiteral("After an Extra Payment: %1\n").arg(afterExtra);
    }
    if (!rateChanges.isEmpty())
        body += QStringLiteral("Rate Changes: %1\n").arg(eventsText(rateChanges));
    if (interestOnly > 0)
        body += QStringLiteral("Interest-Only Payments: %1\n").arg(interestOnly);
    if (balloonAt > 0)
        body += QStringLiteral("Balloon at Payment: %1\n").arg(balloonAt);
    if (fees != 0)
        body += QStringLiteral("Fees: %1\n").arg(stringFromDouble(fees));
    body += QStringLiteral("Payment: %1\n").arg(stringFromDouble(payment));
    body += QStringLiteral("Number of Payments: %1\n").arg(stringFromDouble(numberOfPayments));
    body += QStringLiteral("Total Interest: %1\n").arg(stringFromDouble(totalInterest));
    body += QStringLiteral("Total Paid: %1\n").arg(stringFromDouble(totalPaid));
    body += QStringLiteral("Last Payment: %1\n").arg(stringFromDouble(lastPayment));
    if (payoffDate.isValid())
        body += QStringLiteral("Payoff Date: %1\n").arg(payoffDateText());
    body += QStringLiteral("Interest Saved: %1\n").arg(stringFromDouble(interestSaved));
    body += QStringLiteral("APR: %1%\n").arg(stringFromDouble(apr));
    body += QStringLiteral("Payments %1-%2: Principal %3, Interest %4, Balance %5\n")
                .arg(rangeStart)
                .arg(rangeEnd)
                .arg(stringFromDouble(rangePrincipal), stringFromDouble(rangeInterest),
                     stringFromDouble(rangeBalance));
    if (!schedule.isEmpty())
        body += QStringLiteral("\nSchedule\n") + scheduleTable();
    writeReport(userInfo, QStringLiteral("Amortization Schedule"), QStringLiteral("#1F7A8C"), body);
}
