#pragma once

#include "store/QVReport.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// Two or three saved reports of one calculator side by side: each report's
// inputs put back into a calculator of its kind, which works its results
// out again, and one line per input and per result with every report's
// value. A line whose values are not all the same is marked; a result line
// also has, for each report after the first, its difference from the first
// (when both are numbers).
class ReportComparison {
public:
    struct Line {
        QString key;
        QString label;
        bool result = false;
        QStringList values;      // one a report, as its screen shows it
        QList<double> numbers;   // results: the values as numbers (NaN for a text)
        QStringList differences; // results: "" for the first, then each less the first
        bool differs = false;
    };

    // The most reports compared at once.
    static constexpr int maximumReports = 3;

    // The comparison of `reports`, or nothing with `error` saying why
    // (fewer than two, more than three, one without its inputs, reports of
    // different calculators, a calculator this version does not have).
    static std::optional<ReportComparison> of(const QList<QVReport>& reports, QString* error);

    QString calculator; // the registry's name
    QString title;      // the calculator's title in the catalogue
    QStringList titles; // the reports' titles
    QList<Line> lines;  // the inputs in screen order, then the results
    QStringList notes;  // what could not be put back, report by report

    // "Report,<title 1>,<title 2>[,...]" then a line a row, each result
    // followed by its differences ("Difference (B - A)"), as a spreadsheet
    // reads it; numbers with "." whatever the locale.
    QByteArray csv() const;
    // The same as plain text: a "Comparison - <calculator>" heading, then a
    // table (a header, a rule of dashes, a row a line, a line that differs
    // marked with "*"), as a report's PDF lays out a table.
    QString text() const;
};
