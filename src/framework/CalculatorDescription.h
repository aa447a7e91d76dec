#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <utility>

class QVFunctionController;

// What a calculator is, said once in its own folder (<Name>Description.cpp)
// and read by everything that needs to know: the base controller (which
// fields to read into which model properties, which results to show where),
// the screens (labels, kinds, the layout of plain forms), the catalogue,
// the command line (`list`, `calc`), the screenshot walk and the tests.

// One input of a calculator screen.
struct FieldDescription {
    enum class Kind {
        Number,  // an amount
        Percent, // typed and kept in percent (8 means 8 %)
        Count,   // a whole number of things (periods, people, rows); no "±"
        Date,    // a date, YYYY-MM-DD
        Choice,  // a button whose action sheet offers `words`
        Table,   // a column of cells (`rows` at most) taking `cells`
        Event,   // table cells only: a payment number or date, ":", a number
    };
    QString key;    // the model's property, and the command line's name for it
    QString outlet; // the view's outlet that holds its text
    QString label;  // its name on the screen
    Kind kind = Kind::Number;
    QStringList words; // Choice: the words its sheet offers, in order
    // Choice: how the sheet and the button spell each word ("Straight line
    // (SL)" for "SL"); the word itself where there is none. The word stays
    // what the model, the command line and the kept inputs use.
    QStringList wordLabels;
    QString action;            // Choice: the controller's invokable that opens the sheet
    int rows = 0;              // Table: the most rows it takes
    Kind cells = Kind::Number; // Table: what its cells take (Number, Percent, Date or Event)
    QString section;           // a heading shown above it on plain forms, when set
    bool sign = true;          // Number and Percent: "±" beside it (not on plain text fields)
    // What an empty field shows in grey: "0" (what it counts as) unless said.
    QString placeholder;

    bool signable() const { return sign && (kind == Kind::Number || kind == Kind::Percent); }
    // A number typed into a field of its own (an amount, a percent, a count).
    bool typedNumber() const
    {
        return kind == Kind::Number || kind == Kind::Percent || kind == Kind::Count;
    }
    QString spelled(const QString& word) const
    {
        const qsizetype at = words.indexOf(word);
        return at >= 0 && at < wordLabels.size() ? wordLabels.at(at) : word;
    }
    bool isTable() const { return kind == Kind::Table; }
};

// One result: the model's property, the outlet that shows it, its name on
// the screen and what follows the number ("%" or nothing).
struct ResultDescription {
    QString key;
    QString outlet;
    QString label;
    QString unit;
    QString section;
};

// Where the catalogue lists the calculator, under its title.
struct CatalogueEntry {
    enum class List {
        Functions, // the Functions tab itself
        Stock,     // "Stock Calculators"
        Loans,     // "Loans and More"
        Bonds,     // "Bonds and Dates"
        Business,  // "Business and Statistics"
    };
    CatalogueEntry() = default;
    CatalogueEntry(List list, QString title, QString icon, QString color, QList<List> alsoIn = {})
        : list(list), title(std::move(title)), icon(std::move(icon)), color(std::move(color)),
          alsoIn(std::move(alsoIn))
    {}

    List list = List::Functions;
    QString title;
    QString icon;  // the Functions tab's icon ("tvm": image://icons/tvm, resources/icons/tvm.png)
    QString color; // the swatch of the lists other than the Functions tab, "#RRGGBB"
    // Further lists that show it too (the bond calculator, on the Functions
    // tab, is also among the bonds). Its own list decides everything else.
    QList<List> alsoIn;

    bool listedIn(List wanted) const { return list == wanted || alsoIn.contains(wanted); }
    // The form calculators (the Functions tab's and the stock ones) count a
    // field they cannot read as 0, and mark it so; Tallyvane's own leave
    // the results that need it blank (NaN) instead, with a note naming it.
    bool countsUnreadableAsZero() const { return list == List::Functions || list == List::Stock; }
};

// One step of a worked example, as a screen takes it: a field typed (its
// text), a word chosen, a table filled (comma-separated values) or a compute
// button pressed (`value` its name). A step whose input the calculator does
// not have is Unknown (`value` the whole argument).
struct ExampleStep {
    enum class Kind { Field, Choice, Table, Solve, Unknown };
    Kind kind = Kind::Unknown;
    const FieldDescription* field = nullptr; // Field, Choice and Table
    QString value;
};

struct CalculatorDescription {
    QString name;   // "roi": the command line's and the registry's name
    QString screen; // "RoiController": the screen identifier the catalogue opens
    // The screen's own QML file (under src/), or empty for a plain form laid
    // out from the fields and results.
    QString view;
    CatalogueEntry entry;
    QList<FieldDescription> fields;
    QList<ResultDescription> results;
    QStringList solveButtons; // compute buttons, for screens that solve on one
    // A worked example as the command line takes it: inputs by property or
    // outlet, tables as comma-separated values, then "--solve" and a button
    // where the screen solves on one. The screenshot walk shows it, and a
    // test runs every calculator's example.
    QStringList example;
    std::function<std::unique_ptr<QVFunctionController>()> create;

    // The field or result named `key` (or shown in outlet `key`); null when
    // there is none.
    const FieldDescription* field(const QString& key) const;
    // `example` step by step.
    QList<ExampleStep> exampleSteps() const;
    const ResultDescription* result(const QString& key) const;
};

// Short forms for the tables in the description files.
namespace Describe {
FieldDescription number(const QString& key, const QString& outlet, const QString& label);
FieldDescription percent(const QString& key, const QString& outlet, const QString& label);
FieldDescription count(const QString& key, const QString& outlet, const QString& label);
FieldDescription date(const QString& key, const QString& outlet, const QString& label);
FieldDescription choice(const QString& key, const QString& outlet, const QString& label,
                        const QStringList& words, const QString& action);
// `label` names the table where it is listed (a comparison of reports); by
// default its key does.
FieldDescription table(const QString& key, int rows,
                       FieldDescription::Kind cells = FieldDescription::Kind::Number,
                       const QString& label = {});
// `field` (or `result`) with a heading above it.
FieldDescription under(const QString& section, FieldDescription field);
ResultDescription under(const QString& section, ResultDescription result);
// `field` as a plain text field, without "±".
FieldDescription withoutSign(FieldDescription field);
// The choice `field` with its words spelled out as `labels` (in order).
FieldDescription spelledOut(const QStringList& labels, FieldDescription field);
// `field` showing `text` in grey while it is empty (where empty means
// something other than 0).
FieldDescription whenBlank(const QString& text, FieldDescription field);
ResultDescription result(const QString& key, const QString& outlet, const QString& label,
                         const QString& unit = {});
} // namespace Describe
