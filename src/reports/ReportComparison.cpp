#include "reports/ReportComparison.h"

#include "framework/CalculatorRegistry.h"
#include "framework/QVFunctionController.h"
#include "numerics/Cents.h"
#include "numerics/CsvWriter.h"
#include "numerics/TextTable.h"

#include <cmath>
#include <limits>
#include <memory>

namespace {

// A stored input as one text: a table's rows joined by ", ".
QString inputText(const QVariant& value)
{
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    return value.toString();
}

// b − a on the decimals the two numbers show (1085.26 − 1110.21 is −24.95,
// not the −24.950000000000045 of their binary values); the plain double
// difference when either has no short decimal or the digits would not fit.
double difference(double b, double a)
{
    const std::optional<Cents::Decimal> x = Cents::shortestDecimal(b);
    const std::optional<Cents::Decimal> y = Cents::shortestDecimal(a);
    if (!x || !y || std::abs(x->exponent - y->exponent) > 18)
        return b - a;
    const int exponent = std::min(x->exponent, y->exponent);
    __extension__ typedef __int128 Wide;
    Wide scaledX = x->digits;
    Wide scaledY = y->digits;
    for (int k = x->exponent; k > exponent; --k)
        scaledX *= 10;
    for (int k = y->exponent; k > exponent; --k)
        scaledY *= 10;
    const Wide digits = scaledX - scaledY;
    if (digits > Wide(std::numeric_limits<qint64>::max()) ||
        digits < Wide(std::numeric_limits<qint64>::min()))
        return b - a;
    return QStringLiteral("%1e%2").arg(qint64(digits)).arg(exponent).toDouble();
}

} // namespace

std::optional<ReportComparison> ReportComparison::of(const QList<QVReport>& reports, QString* error)
{
    const auto fail = [error](const QString& reason) {
        if (error)
            *error = reason;
        return std::nullopt;
    };
    if (reports.size() < 2 || reports.size() > maximumReports)
        return fail(QStringLiteral("Choose two or three reports to compare."));
    for (const QVReport& report : reports) {
        if (report.calculator.isEmpty())
            return fail(QStringLiteral("\"%1\" was saved before reports kept their inputs, so it "
                                       "cannot be compared.")
                            .arg(report.title));
        if (report.calculator != reports.first().calculator)
            return fail(QStringLiteral("Only reports of one calculator can be compared (\"%1\" and "
                                       "\"%2\" are not).")
                            .arg(reports.first().title, report.title));
    }
    const CalculatorDescription* d = CalculatorRegistry::find(reports.first().calculator);
    if (!d)
        return fail(QStringLiteral("This version has no calculator \"%1\".")
                        .arg(reports.first().calculator));

    ReportComparison comparison;
    comparison.calculator = d->name;
    comparison.title = d->entry.title;
    // Each report's results, from a screen of its own made and gone in turn:
    // screens with tables follow each other's period, so two at once would
    // disturb each other.
    QList<QStringList> shown;     // a report, then a result
    QList<QList<double>> numbers; // the same as numbers (NaN for a text)
    for (const QVReport& report : reports) {
        comparison.titles << report.title;
        std::unique_ptr<QVFunctionController> screen = d->create();
        for (const QString& line : screen->restoreInputs(report.inputs))
            comparison.notes << QStringLiteral("%1: %2").arg(report.title, line);
        for (const QString& key : report.damagedInputs)
            comparison.notes << QStringLiteral("%1: the stored input \"%2\" cannot be read.")
                                    .arg(report.title, key);
        QStringList texts;
        QList<double> values;
        for (const ResultDescription& result : d->results) {
            const QVariant value = screen->model()->property(result.key.toLatin1().constData());
            values << (value.typeId() == QMetaType::QString
                           ? std::numeric_limits<double>::quiet_NaN()
                           : value.toDouble());
            texts << screen->qvFunctionView()->text(result.outlet);
        }
        shown << texts;
        numbers << values;
    }

    // The inputs in the description's order, each as it was stored.
    for (const FieldDescription& field : d->fields) {
        Line line;
        line.key = field.key;
        line.label = field.label.isEmpty() ? field.key : field.label;
        bool any = false;
        for (const QVReport& report : reports) {
            any = any || report.inputs.contains(field.key);
            line.values << inputText(report.inputs.value(field.key));
        }
        // An input no report has, or that is empty in all of them, says
        // nothing.
        if (!any || line.values.count(QString()) == line.values.size())
            continue;
        line.differs = line.values.count(line.values.first()) != line.values.size();
        comparison.lines << line;
    }
    // The results as each screen showed them, and their differences.
    for (qsizetype r = 0; r < d->results.size(); ++r) {
        const ResultDescription& result = d->results.at(r);
        Line line;
        line.key = result.key;
        line.label = result.label;
        line.result = true;
        for (qsizetype k = 0; k < reports.size(); ++k) {
            line.values << shown.at(k).at(r);
            line.numbers << numbers.at(k).at(r);
        }
        for (qsizetype k = 0; k < line.numbers.size(); ++k) {
            const double change = difference(line.numbers.at(k), line.numbers.first());
            line.differences << (k == 0 || !std::isfinite(change)
                                     ? QString()
                                     : QVFunctionController::stringFromDouble(change) +
                                           result.unit);
        }
        line.differs = line.values.count(line.values.first()) != line.values.size();
        comparison.lines << line;
    }
    return comparison;
}

QByteArray ReportComparison::csv() const
{
    CsvWriter csv(QStringList{QStringLiteral("Report")} + titles, lines.size());
    for (const Line& line : lines) {
        csv.text(line.label);
        for (qsizetype k = 0; k < line.values.size(); ++k) {
            if (line.result && !std::isnan(line.numbers.at(k)))
                csv.shortest(line.numbers.at(k));
            else
                csv.text(line.values.at(k));
        }
        csv.endRow();
        if (!line.result)
            continue;
        for (qsizetype k = 1; k < line.numbers.size(); ++k) {
            const double change = difference(line.numbers.at(k), line.numbers.first());
            if (!std::isfinite(change))
                continue;
            csv.text(QStringLiteral("%1: difference (%2 - %3)")
                         .arg(line.label, titles.at(k), titles.first()));
            for (qsizetype j = 0; j < titles.size(); ++j) {
                if (j == k)
                    csv.shortest(change);
                else
                    csv.empty();
            }
            csv.endRow();
        }
    }
    return csv.take();
}

QString ReportComparison::text() const
{
    // The form a report's PDF lays out as a table.
    QList<QStringList> table;
    QStringList head{QString()};
    head << titles;
    for (qsizetype k = 1; k < titles.size(); ++k)
        head << QStringLiteral("%1 - %2").arg(titles.at(k), titles.first());
    table << head;
    for (const Line& line : lines) {
        QStringList row{(line.differs ? QStringLiteral("* ") : QStringLiteral("  ")) + line.label};
        row << line.values;
        for (qsizetype k = 1; k < titles.size(); ++k)
            row << line.differences.value(k);
        table << row;
    }
    QList<bool> rightAligned(head.size(), true);
    rightAligned[0] = false;
    QString out = QStringLiteral("Comparison - %1\n\n").arg(title);
    out += TextTable::format(table, rightAligned);
    if (!notes.isEmpty())
        out += QLatin1Char('\n');
    for (const QString& note : notes)
        out += note + QLatin1Char('\n');
    out += QStringLiteral("\n* the reports differ on this line\n");
    return out;
}
