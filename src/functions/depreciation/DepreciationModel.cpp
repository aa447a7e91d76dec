#include "DepreciationModel.h"

#include "numerics/CsvWriter.h"

#include <algorithm>
#include <cmath>
#include <limits>

const QStringList& DepreciationModel::methods()
{
    static const QStringList words = {QStringLiteral("SL"), QStringLiteral("SYD"),
                                      QStringLiteral("DDB"), QStringLiteral("DB")};
    return words;
}

void DepreciationModel::configureNames()
{
    setNames({QStringLiteral("DepreciationReportCreatedNotification"),
              QStringLiteral("DepreciationReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Depreciation"),
              QStringLiteral("depreciation_description"), QStringLiteral("depreciation"),
              QStringLiteral("Depreciation")});
}

// The first year's months ÷ 12, then whole years, and what is left of the
// life in the last: 0.25, 1, 1, 1, 0.75 for four years bought in October;
// 1, 1, 1, 1, 1, 0.5 for 5.5 years bought in January.
QList<double> DepreciationModel::yearShares(double months) const
{
    QList<double> shares;
    double elapsed = 0; // years of life used so far
    // A leftover below a second of a year is rounding, not a year.
    while (life - elapsed > 1e-9 && shares.size() <= maximumYears) {
        shares << (shares.isEmpty() ? std::min(months / 12, life) : std::min(1.0, life - elapsed));
        elapsed += shares.last();
    }
    return shares;
}

// The depreciation of each whole asset year, for SYD.
QList<double> DepreciationModel::assetYears(int years) const
{
    QList<double> amounts;
    const double base = cost - salvage;
    for (int n = 1; n <= years; ++n)
        amounts << base * (years - n + 1) * 2 / (double(years) * (years + 1));
    return amounts;
}

// Declining balance at factor % of the straight-line rate, switching to
// straight line over what is left of the life when that is larger, each
// calendar year holding its share of a year of life.
QList<double> DepreciationModel::decliningBalance(const QList<double>& shares) const
{
    QList<double> amounts;
    const double rate = factor / 100 / life;
    double book = cost;
    double elapsed = 0; // years of life used so far
    for (const double share : shares) {
        const double remaining = life - elapsed;
        const double declining = book * rate * share;
        const double straight = remaining > 0 ? (book - salvage) * share / remaining : 0;
        double amount = std::max(declining, straight);
        amount = std::clamp(amount, 0.0, std::max(0.0, book - salvage));
        amounts << amount;
        book -= amount;
        elapsed += share;
    }
    return amounts;
}

// The spreadsheet's fixed-declining balance (DB).
QList<double> DepreciationModel::fixedDecliningBalance(int calendarYears, double months) const
{
    QList<double> amounts;
    const double rate = std::round((1 - std::pow(salvage / cost, 1 / life)) * 1000) / 1000;
    double total = 0;
    for (int year = 0; year < calendarYears; ++year) {
        double amount = 0;
        if (year == 0)
            amount = cost * rate * months / 12;
        else if (year == int(life) && months < 12)
            amount = (cost - total) * rate * (12 - months) / 12;
        else
            amount = (cost - total) * rate;
        amounts << amount;
        total += amount;
    }
    return amounts;
}

void DepreciationModel::calculateResult()
{
    schedule.clear();
    clearNotes();
    firstYearDepreciation = totalDepreciation = std::numeric_limits<double>::quiet_NaN();
    const auto explain = [this](const QString& reason) {
        setNote(QStringLiteral("firstYearDepreciation"), reason);
        setNote(QStringLiteral("totalDepreciation"), reason);
    };
    const double wholeLife = std::trunc(life);
    const double months = std::trunc(firstYearMonths);
    // A method it does not know is refused, never taken for straight line.
    if (!methods().contains(method))
        return explain(
            QStringLiteral("Choose a method: %1.").arg(methods().join(QStringLiteral(", "))));
    if (cost == 0)
        return explain(QStringLiteral("Enter the cost."));
    if (!std::isfinite(cost) || !std::isfinite(salvage))
        return explain(QStringLiteral("The cost or the salvage value is too large."));
    if (life == 0)
        return explain(QStringLiteral("Enter the life in years."));
    if (!(life >= 1))
        return explain(QStringLiteral("The life must be at least 1 year."));
    if (!(life < maximumYears))
        return explain(QStringLiteral("The life must be under 1,000 years."));
    if (firstYearMonths == 0)
        return explain(QStringLiteral("Enter the months of the first year, 1 to 12."));
    if (!(months >= 1 && months <= 12))
        return explain(QStringLiteral("The first year has 1 to 12 months."));
    const int years = int(wholeLife);
    const int calendarYears = months < 12 ? years + 1 : years;
    QList<double> amounts;
    if (method == QLatin1String("DDB")) {
        amounts = decliningBalance(yearShares(months));
    } else if (method == QLatin1String("DB")) {
        amounts = fixedDecliningBalance(calendarYears, months);
    } else if (method == QLatin1String("SYD")) {
        // Each asset year spread over the calendar years it falls in.
        const QList<double> whole = assetYears(years);
        const double first = months / 12;
        for (int year = 0; year < calendarYears; ++year) {
            const double current = year < years ? whole.at(year) : 0;
            const double previous = year > 0 ? whole.at(year - 1) : 0;
            amounts << first * current + (1 - first) * previous;
        }
    } else { // SL
        // Straight line: each calendar year its share of a year of life.
        for (const double share : yearShares(months))
            amounts << (cost - salvage) * share / life;
    }
    double accumulated = 0;
    for (int year = 0; year < amounts.size(); ++year) {
        accumulated += amounts.at(year);
        schedule.append({year + 1, amounts.at(year), accumulated, cost - accumulated});
    }
    firstYearDepreciation = amounts.value(0);
    totalDepreciation = accumulated;
    if (method == QLatin1String("DB") && !std::isfinite(totalDepreciation)) {
        schedule.clear();
        firstYearDepreciation = totalDepreciation = std::numeric_limits<double>::quiet_NaN();
        explain(QStringLiteral("DB needs a cost above 0 and a salvage value from 0 to the cost."));
    } else if (method == QLatin1String("SYD") && life != wholeLife) {
        explain(QStringLiteral("SYD counts whole years: a life of %1 years is used.").arg(years));
    }
}

QByteArray DepreciationModel::scheduleCsv() const
{
    CsvWriter csv({QStringLiteral("year"), QStringLiteral("depreciation"),
                   QStringLiteral("accumulated"), QStringLiteral("bookValue")},
                  schedule.size());
    for (const Year& y : schedule) {
        csv.integer(y.year);
        csv.shortest(y.depreciation);
        csv.shortest(y.accumulated);
        csv.shortest(y.bookValue);
        csv.endRow();
    }
    return csv.take();
}

void DepreciationModel::createReport(const QVariantMap& userInfo)
{
    QString body;
    body += QStringLiteral("Cost: %1\n").arg(stringFromDouble(cost));
    body += QStringLiteral("Salvage Value: %1\n").arg(stringFromDouble(salvage));
    body += QStringLiteral("Life: %1\n").arg(stringFromDouble(life));
    body += QStringLiteral("First Year Months: %1\n").arg(stringFromDouble(firstYearMonths));
    body += QStringLiteral("Method: %1\n").arg(method);
    if (method == QLatin1String("DDB"))
        body += QStringLiteral("Factor: %1%\n").arg(stringFromDouble(factor));
    body += QStringLiteral("First Year Depreciation: %1\n")
                .arg(stringFromDouble(firstYearDepreciation));
    body += QStringLiteral("Total Depreciation: %1\n").arg(stringFromDouble(totalDepreciation));
    for (const Year& y : schedule)
        body += QStringLiteral("Year %1: %2, Accumulated: %3, Book Value: %4\n")
                    .arg(y.year)
                    .arg(stringFromDouble(y.depreciation), stringFromDouble(y.accumulated),
                         stringFromDouble(y.bookValue));
    writeReport(userInfo, QStringLiteral("Depreciation"), QStringLiteral("#8E7CC3"), body);
}
