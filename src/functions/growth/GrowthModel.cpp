#include "GrowthModel.h"

#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// The four values one of which is worked out, in screen order.
constexpr std::array<const char*, 4> unknowns = {"start", "end", "years", "cagr"};

// Below −100 % a value turns sign each year; only whole years say what that
// means, and the formula takes none.
QString growthRateProblem(double rate, double years)
{
    if (rate < -100 && years != std::trunc(years))
        return QStringLiteral("A growth rate below -100 % takes whole years.");
    return {};
}

} // namespace

void GrowthModel::configureNames()
{
    setNames({QStringLiteral("GrowthReportCreatedNotification"),
              QStringLiteral("GrowthReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Growth Rate"),
              QStringLiteral("growth_description"), QStringLiteral("growth"),
              QStringLiteral("Growth Rate")});
}

void GrowthModel::calculateResult()
{
    clearNotes();
    explainEntries({"start", "end", "years", "cagr"});
    QStringList blank;
    for (const char* key : unknowns) {
        if (blankInputs.contains(QLatin1String(key)))
            blank << QLatin1String(key);
    }
    workedOut = blank.size() == 1 ? blank.first()
                : blank.isEmpty() ? QStringLiteral("cagr")
                                  : QString();
    if (workedOut == u"start")
        workOutStart();
    else if (workedOut == u"end")
        workOutEnd();
    else if (workedOut == u"years")
        workOutYears();
    else if (workedOut == u"cagr")
        workOutRate();
    if (blank.isEmpty() && std::isfinite(cagr))
        setNote(QStringLiteral("cagr"),
                QStringLiteral("Worked out from the other three; leave blank the value to work "
                               "out."));
    for (const QString& key : std::as_const(blank)) {
        if (key == workedOut)
            continue;
        setProperty(key.toLatin1().constData(), noNumber);
        setNote(key, QStringLiteral("Enter three of the start value, end value, years and "
                                    "growth rate; the blank one is worked out."));
    }

    factor = end / start;
    percentChange = (end - start) / start * 100;
    explain("factor", {startProblem(), tooLarge()});
    explain("percentChange", {startProblem(), tooLarge()});
}

QString GrowthModel::startProblem() const
{
    return start == 0 ? QStringLiteral("The start value is 0: it cannot grow.") : QString();
}

void GrowthModel::workOutRate()
{
    // (end / start)^(1 / years) − 1, through the logarithm so that a rate
    // near 0 keeps its digits.
    const double ratio = end / start;
    // From 0 nothing grows: no rate, not an infinite one.
    cagr = start == 0 ? noNumber : std::expm1(std::log(ratio) / years) * 100;
    explain("cagr",
            {startProblem(),
             ratio < 0 ? QStringLiteral("The start and end values have different signs: "
                                        "no growth rate leads from one to the other.")
                       : QString(),
             end == 0 ? QStringLiteral("An end value of 0 takes a rate of -100 %.") : QString(),
             years == 0 ? QStringLiteral("Enter the years.") : QString(), tooLarge()});
}

void GrowthModel::workOutEnd()
{
    end = start * std::pow(1 + cagr / 100, years);
    explain("end", {growthRateProblem(cagr, years), tooLarge()});
}

void GrowthModel::workOutStart()
{
    start = end / std::pow(1 + cagr / 100, years);
    explain("start",
            {cagr == -100 ? QStringLiteral("At -100 % every start value ends at 0.") : QString(),
             growthRateProblem(cagr, years), tooLarge()});
}

void GrowthModel::workOutYears()
{
    years = std::log(end / start) / std::log1p(cagr / 100);
    explain(
        "years",
        {startProblem(),
         end / start <= 0 ? QStringLiteral("The start and end values must have the same "
                                           "sign, and the end value cannot be 0.")
                          : QString(),
         cagr == 0 ? QStringLiteral("At a growth rate of 0 the value never changes.") : QString(),
         cagr <= -100 ? QStringLiteral("The growth rate must be above -100 %.") : QString(),
         tooLarge()});
}

void GrowthModel::createReport(const QVariantMap& userInfo)
{
    const auto line = [this](const char* label, const char* key, const char* unit = "") {
        const double value = property(key).toDouble();
        return QStringLiteral("%1: %2%3%4\n")
            .arg(QLatin1String(label), stringFromDouble(value), QLatin1String(unit),
                 workedOut == QLatin1String(key) ? QStringLiteral(" (worked out)") : QString());
    };
    QString body;
    body += line("Start Value", "start");
    body += line("End Value", "end");
    body += line("Years", "years");
    body += line("Compound Annual Growth Rate", "cagr", "%");
    body += line("Percent Change", "percentChange", "%");
    body += line("Growth Factor", "factor");
    writeReport(userInfo, QStringLiteral("Growth Rate"), QStringLiteral("#2A9D8F"), body);
}
