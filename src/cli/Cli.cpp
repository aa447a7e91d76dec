#include "Cli.h"

#include "CliSupport.h"
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorKeypad.h"
#include "expression/EPExpression.h"
#include "framework/Presenter.h"
#include "functions/Calculators.h"
#include "numerics/NumberFormat.h"
#include "platform/SafeFiles.h"
#include "reports/ReportComparison.h"
#include "reports/ReportPdf.h"
#include "reports/ReportTableModel.h"
#include "store/QVFileManager.h"
#include "store/QVReport.h"
#include "store/ReportStore.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cmath>
#include <utility>

using CliSupport::jsonNumber;
using CliSupport::jsonString;
using CliSupport::printable;

namespace {

const char* const usage = R"(Usage: tallyvane-cli COMMAND [ARGS] [--json]

Commands:
  calc NAME [FIELD=VALUE ...] [--solve X] [--report TITLE] [--save TITLE]
                             run a form calculator as its screen does
  keys KEY ...               press keypad keys and show the display
  eval EXPR                  evaluate a keypad expression (17 significant digits)
  list                       the calculators and their input fields
  reports list               the saved reports, newest first (index 0)
  reports show N             the text of saved report N
  reports delete N           remove saved report N from the list (its file stays)
  reports pdf N FILE [--page A4|Letter] [--force]
                             write saved report N as a PDF (a new file;
                             --force writes over an existing regular file)

Options:
  --json                     machine-readable output
  --help                     this text
)";

const char* const reportsUsage = R"(Usage: tallyvane-cli reports list | show N | delete N [--json]
       tallyvane-cli reports pdf N FILE [--page A4|Letter] [--force]
       tallyvane-cli reports compare N M [K] [--json|--csv]

  list        one line per saved report, newest first: index, date, calculator,
              title and file name; --json gives an array of objects with
              "title", "functionTitle", "date" (ISO 8601), "fileName",
              "colorTag" and, for a report that kept them, "calculator" (its
              name for calc) and "inputs" (each field's text, each choice's
              word, each table's rows; "--solve" the button last pressed)
  show N      prints the text file of report N (0 is the newest); --json
              gives its object with "contents"
  compare N M [K]
              two or three reports of one calculator side by side: their
              inputs and results (worked out again from the inputs), a "*"
              before each line that differs, and each result's difference
              from the first report; --csv as a spreadsheet reads it, --json
              as an object
  delete N    removes report N from the list as the Reports screen does; the
              text file stays in the documents folder
  pdf N FILE  writes report N as a PDF to FILE (A4, or Letter where the
              locale measures in inches; --page chooses). FILE must be a new
              name; --force lets it write over an existing regular file. It
              never writes over the saved-reports database or its journals, a
              saved report's text or chart, or anything that is not a regular
              file (a folder, link, pipe or device). The PDF is written beside
              FILE first and takes its name only when whole, so a failed write
              leaves FILE as it was. A chart that cannot be read is left out,
              with a line on stderr saying why.
)";

QJsonObject reportJson(const QVReport& report)
{
    return {
        {QStringLiteral("title"), report.title},
        {QStringLiteral("functionTitle"), report.functionTitle},
        {QStringLiteral("date"),
         report.date.isValid()
             ? report.date.toOffsetFromUtc(report.date.offsetFromUtc()).toString(Qt::ISODateWithMs)
             : QString()},
        {QStringLiteral("fileName"), report.fileName},
        {QStringLiteral("colorTag"), report.colorTag.name()},
    };
}

// The object of a report as the command line gives it: the record, and the
// calculator and inputs of a report that kept them.
QJsonObject reportObject(const QVReport& report)
{
    QJsonObject object = reportJson(report);
    if (!report.calculator.isEmpty()) {
        object.insert(QStringLiteral("calculator"), report.calculator);
        object.insert(QStringLiteral("inputs"), QJsonObject::fromVariantMap(report.inputs));
    }
    if (!report.damagedInputs.isEmpty())
        object.insert(QStringLiteral("unreadableInputs"),
                      QJsonArray::fromStringList(report.damagedInputs));
    return object;
}

bool parseIndex(const QString& text, int count, int& index, QTextStream& err);

// reports compare N M [K] [--json|--csv]
int compareCommand(const ReportTableModel& list, QStringList args, bool json, QTextStream& out,
                   QTextStream& err)
{
    const bool csv = args.removeAll(QStringLiteral("--csv")) > 0;
    if (args.size() < 2 || args.size() > ReportComparison::maximumReports) {
        err << reportsUsage;
        return 1;
    }
    QList<QVReport> reports;
    for (const QString& arg : std::as_const(args)) {
        int index = 0;
        if (!parseIndex(arg, list.count(), index, err))
            return 1;
        reports << list.reportAt(index);
    }
    QString error;
    const std::optional<ReportComparison> comparison = ReportComparison::of(reports, &error);
    if (!comparison) {
        err << error << '\n';
        return 1;
    }
    for (const QString& note : comparison->notes)
        err << note << '\n';
    if (csv) {
        out << QString::fromUtf8(comparison->csv());
        return 0;
    }
    if (!json) {
        out << comparison->text();
        return 0;
    }
    QJsonArray lines;
    for (const ReportComparison::Line& line : comparison->lines) {
        QJsonObject object{{QStringLiteral("key"), line.key},
                           {QStringLiteral("label"), line.label},
                           {QStringLiteral("result"), line.result},
                           {QStringLiteral("values"), QJsonArray::fromStringList(line.values)},
                           {QStringLiteral("differs"), line.differs}};
        if (line.result)
            object.insert(QStringLiteral("differences"),
                          QJsonArray::fromStringList(line.differences.mid(1)));
        lines.append(object);
    }
    out << QJsonDocument(QJsonObject{{QStringLiteral("calculator"), comparison->calculator},
                                     {QStringLiteral("reports"),
                                      QJsonArray::fromStringList(comparison->titles)},
                                     {QStringLiteral("lines"), lines}})
               .toJson(QJsonDocument::Indented);
    return 0;
}

bool parseIndex(const QString& text, int count, int& index, QTextStream& err)
{
    bool ok = false;
    index = text.toInt(&ok);
    if (!ok || index < 0 || index >= count) {
        err << "no report " << text << " (there are " << count << ")\n";
        return false;
    }
    return true;
}

// The text file of saved report `index`; false (with the reason on `err`)
// when it has none, it is gone, or its name leads outside the documents.
bool readReportText(const QVReport& report, int index, QString* text, QTextStream& err)
{
    if (report.fileName.isEmpty()) {
        err << "report " << index << " has no file\n";
        return false;
    }
    QByteArray bytes;
    const QString unreadable =
        QVFileManager::readFileInDocumentsDirectory(report.filePathInDocumentsDirectory(), &bytes);
    if (!unreadable.isEmpty()) {
        err << unreadable << '\n';
        return false;
    }
    *text = QString::fromLatin1(bytes);
    return true;
}

// Why the PDF may not go to `target` however it is asked (--force or not):
// the files the saved reports live in, the database with its journals and
// every report's text and chart, are never written over, nor is anything
// that is not a regular file. Empty when it may.
QString forbiddenTarget(const QString& target, const ReportTableModel& list)
{
    const QString database = ReportStore::databasePath();
    if (SafeFiles::sameFile(target, database))
        return QStringLiteral("%1 is the saved-reports database; it is never written over.")
            .arg(target);
    for (const char* journal : {"-wal", "-shm", "-journal"}) {
        if (SafeFiles::sameFile(target, database + QLatin1String(journal)))
            return QStringLiteral(
                       "%1 belongs to the saved-reports database; it is never written over.")
                .arg(target);
    }
    for (int i = 0; i < list.count(); ++i) {
        const QVReport report = list.reportAt(i);
        if (report.fileName.isEmpty())
            continue;
        const QString text = report.filePathInDocumentsDirectory();
        const QString chart = ReportPdf::chartPathFor(text);
        if (SafeFiles::sameFile(target, text) ||
            (!chart.isEmpty() && SafeFiles::sameFile(target, chart)))
            return QStringLiteral("%1 is a file of saved report %2; it is never written over.")
                .arg(target)
                .arg(i);
    }
    const SafeFiles::Kind kind = SafeFiles::kindOf(target);
    if (kind != SafeFiles::Kind::Missing && kind != SafeFiles::Kind::Regular)
        return QStringLiteral("%1 is %2, not a regular file; it is never written over.")
            .arg(target, SafeFiles::describe(kind));
    return {};
}

// reports pdf N FILE [--page A4|Letter] [--force]
int pdfCommand(const ReportTableModel& list, QStringList args, QTextStream& out, QTextStream& err)
{
    const bool force = args.removeAll(QStringLiteral("--force")) > 0;
    ReportPdf::Page page = ReportPdf::pageForLocale();
    const qsizetype pageAt = args.indexOf(QStringLiteral("--page"));
    if (pageAt >= 0) {
        bool known = false;
        page = ReportPdf::pageNamed(args.value(pageAt + 1), &known);
        if (!known) {
            err << "--page takes A4 or Letter\n";
            return 1;
        }
        args.remove(pageAt, 2);
    }
    if (args.size() != 2) {
        err << reportsUsage;
        return 1;
    }
    int index = 0;
    if (!parseIndex(args.at(0), list.count(), index, err))
        return 1;
    const QString target = args.at(1);
    // Looked at before the PDF is laid out; the write itself looks again.
    const QString forbidden = forbiddenTarget(target, list);
    if (!forbidden.isEmpty()) {
        err << forbidden << '\n';
        return 1;
    }
    if (!force && SafeFiles::kindOf(target) != SafeFiles::Kind::Missing) {
        err << target << " already exists; add --force to write over it.\n";
        return 1;
    }
    const QVReport report = list.reportAt(index);
    QString text;
    if (!readReportText(report, index, &text, err))
        return 1;
    QString chartProblem;
    const QByteArray chart =
        ReportPdf::readChart(report.filePathInDocumentsDirectory(), &chartProblem);
    // Written beside the target and renamed into place when whole: a failed
    // write leaves whatever was there.
    const QString failed =
        SafeFiles::writeFile(target, force, [&](QIODevice* device, QString* error) {
            return ReportPdf::write(device, text, page, chart, error);
        });
    if (!failed.isEmpty()) {
        err << failed << '\n';
        return 1;
    }
    if (!chartProblem.isEmpty())
        err << chartProblem << " The PDF was written without it.\n";
    out << target << '\n';
    return 0;
}

int reportsCommand(const QStringList& args, bool json, QTextStream& out, QTextStream& err)
{
    if (args.isEmpty() || args.contains(QStringLiteral("--help"))) {
        (args.isEmpty() ? err : out) << reportsUsage;
        return args.isEmpty() ? 1 : 0;
    }
    ReportTableModel list;
    // What the check of the store found (a damaged list set aside, a
    // missing one) comes first, on stderr; the list read is still shown.
    if (const QString notice = ReportStore::takeNotice(); !notice.isEmpty())
        err << notice << '\n';
    if (!list.loadError().isEmpty()) {
        err << list.loadError() << '\n';
        return 1;
    }
    const QString verb = args.first();
    if (verb == QLatin1String("list") && args.size() == 1) {
        QJsonArray array;
        for (int i = 0; i < list.count(); ++i) {
            const QVReport report = list.reportAt(i);
            if (json) {
                array.append(reportObject(report));
                continue;
            }
            out << i << '\t'
                << (report.date.isValid()
                        ? report.date.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                        : QString())
                << '\t' << printable(report.functionTitle) << '\t' << printable(report.title)
                << '\t' << printable(report.fileName) << '\n';
        }
        if (json)
            out << QJsonDocument(array).toJson(QJsonDocument::Indented);
        return 0;
    }
    if (verb == QLatin1String("pdf"))
        return pdfCommand(list, args.mid(1), out, err);
    if (verb == QLatin1String("compare"))
        return compareCommand(list, args.mid(1), json, out, err);
    if ((verb == QLatin1String("show") || verb == QLatin1String("delete")) && args.size() == 2) {
        int index = 0;
        if (!parseIndex(args.at(1), list.count(), index, err))
            return 1;
        const QVReport report = list.reportAt(index);
        if (verb == QLatin1String("delete")) {
            const WriteResult removed = list.deleteReport(index);
            if (!removed.ok()) {
                err << "report " << index << " was not deleted: " << removed.error << '\n';
                return 1;
            }
            if (json)
                out << QJsonDocument(reportJson(report)).toJson(QJsonDocument::Indented);
            else
                out << "deleted " << index << ": " << printable(report.title) << '\n';
            return 0;
        }
        QString text;
        if (!readReportText(report, index, &text, err))
            return 1;
        if (json) {
            QJsonObject object = reportObject(report);
            object.insert(QStringLiteral("contents"), text);
            out << QJsonDocument(object).toJson(QJsonDocument::Indented);
        } else {
            out << text;
        }
        return 0;
    }
    err << reportsUsage;
    return 1;
}

const char* const evalUsage = R"(Usage: tallyvane-cli eval EXPR

Evaluates EXPR as the keypad does: + - * / ^, parentheses, implied
multiplication (2(3), (2)pi), pi, and sin cos tan atan log ln sqrt (radians).
Prints the value with 17 significant digits; NaN, Infinity and -Infinity for
impossible maths. An invalid expression prints "invalid expression" on stderr
and exits with 1. Quote EXPR in the shell: tallyvane-cli eval '2^-(1+1)'.
)";

int evalCommand(const QStringList& args, QTextStream& out, QTextStream& err)
{
    if (args.isEmpty()) {
        err << evalUsage;
        return 1;
    }
    if (args == QStringList{QStringLiteral("--help")}) {
        out << evalUsage;
        return 0;
    }
    const std::optional<double> value = numberByParsingExpression(args.join(QLatin1Char(' ')));
    if (!value) {
        err << "invalid expression\n";
        return 1;
    }
    out << NumberFormat::preciseString(*value) << '\n';
    return 0;
}

const char* const keysUsage = R"usage(Usage: tallyvane-cli keys KEY ... [--json]

Presses keypad keys in order, each argument one key by the title the keypad
shows now: press 2ND first for a second function (SIN COS TAN π HIST RESET).
An argument of digits, ".", "+", "-", "*", "/", "(", ")" only types its
characters one key each. STO=N and RCL=N press STO or RCL and answer the
alert with N. ASCII aliases: UP DOWN DEL LEFT RIGHT SQRT POW PI.

Prints "display: TEXT" and "label: TEXT" (and "note: TEXT" when the display
shows no number: why, or the other rates when several fit); --json gives the
display, label, note, expression, history and the registers N, I/Y, PV, PMT,
FV, P/Y, C/Y, NPV, IRR.

Example, a 30-year loan payment:
  tallyvane-cli keys 12 P/Y 12 C/Y 360 N 6 I/Y 250000 PV 0 FV CPT PMT
)usage";

// Answers the STO and RCL alerts with the index given on the command line.
class CliPresenter : public Presenter {
public:
    QString answer;
    void present(const AlertRequest&, Answer reply) override
    {
        const QString text = std::exchange(answer, QString());
        reply(QStringLiteral("OK"), text);
    }
};

QString keyTitleForArgument(const QString& argument)
{
    static const QHash<QString, QString> aliases = {
        {"UP", "\u2191"},    {"DOWN", "\u2193"},  {"DEL", "\u21e6"},  {"LEFT", "\u2190"},
        {"RIGHT", "\u2192"}, {"SQRT", "\u221ax"}, {"POW", "y\u02e3"}, {"PI", "\u03c0"},
    };
    return aliases.value(argument, argument);
}

void writeKeysJson(const CalculatorController& engine, QTextStream& out)
{
    const CalculatorModel& m = engine.model();
    const QList<std::pair<const char*, double>> registers = {
        {"N", m.period},        {"I/Y", m.rate}, {"PV", m.pv},
        {"PMT", m.pmt},         {"FV", m.fv},    {"P/Y", double(m.paymentFrequency)},
        {"C/Y", m.compounding}, {"NPV", m.npv},  {"IRR", m.irr},
    };
    QStringList values;
    for (const auto& [name, value] : registers)
        values << QStringLiteral("\"%1\": %2").arg(QLatin1String(name), jsonNumber(value));
    out << "{\n  \"display\": " << jsonString(engine.displayNumber())
        << ",\n  \"label\": " << jsonString(engine.resultLabel())
        << ",\n  \"note\": " << jsonString(engine.note())
        << ",\n  \"expression\": " << jsonString(engine.expression()) << ",\n  \"history\": [";
    // One entry at a time straight to the stream: the output is never held
    // whole a second time.
    const char* separator = "\n    ";
    for (const HistoryEntry& e : *engine.logArray()) {
        out << separator << "{\"result\": " << jsonString(e.result)
            << ", \"expression\": " << jsonString(e.expression)
            << ", \"command\": " << jsonString(e.command)
            << ", \"result-label\": " << jsonString(e.resultLabel) << '}';
        separator = ",\n    ";
    }
    if (!engine.logArray()->isEmpty())
        out << "\n  ";
    out << "],\n  \"registers\": {" << values.join(QStringLiteral(", ")) << "}\n}\n";
}

int keysCommand(const QStringList& args, bool json, QTextStream& out, QTextStream& err)
{
    if (args.isEmpty() || args == QStringList{QStringLiteral("--help")}) {
        (args.isEmpty() ? err : out) << keysUsage;
        return args.isEmpty() ? 1 : 0;
    }
    CalculatorKeypad keypad;
    CalculatorController engine;
    CliPresenter presenter;
    engine.setPresenter(&presenter);

    const auto press = [&](const QString& title) {
        const int index = keypad.indexOfShownTitle(title);
        if (index < 0) {
            err << "no key shows \"" << title << "\" now"
                << (keypad.secondaryButtonsOn() ? " (2ND is on)" : "") << '\n';
            return false;
        }
        keypad.buttonClicked(index);
        return true;
    };
    static const QRegularExpression typed(QStringLiteral("^[0-9.+\\-*/()]+$"));
    for (const QString& argument : args) {
        bool ok = true;
        if (argument.startsWith(QLatin1String("STO=")) ||
            argument.startsWith(QLatin1String("RCL="))) {
            presenter.answer = argument.mid(4);
            ok = press(argument.left(3));
        } else if (typed.match(argument).hasMatch()) {
            for (const QChar c : argument) {
                if (!(ok = press(QString(c))))
                    break;
            }
        } else {
            ok = press(keyTitleForArgument(argument));
        }
        if (!ok)
            return 1;
    }
    if (json)
        writeKeysJson(engine, out);
    else {
        out << "display: " << engine.displayNumber() << "\nlabel: " << engine.resultLabel() << '\n';
        if (!engine.note().isEmpty())
            out << "note: " << engine.note() << '\n';
    }
    return 0;
}

} // namespace

int runCli(const QStringList& arguments, QTextStream& out, QTextStream& err)
{
    installCalculators();
    QStringList args = arguments;
    const bool json = args.removeAll(QStringLiteral("--json")) > 0;
    if (args.isEmpty()) {
        err << usage;
        return 1;
    }
    const QString command = args.takeFirst();
    if (command == QLatin1String("--help") || command == QLatin1String("help")) {
        out << usage;
        return 0;
    }
    if (command == QLatin1String("keys"))
        return keysCommand(args, json, out, err);
    if (command == QLatin1String("eval"))
        return evalCommand(args, out, err);
    if (command == QLatin1String("reports"))
        return reportsCommand(args, json, out, err);
    if (command == QLatin1String("list"))
        return listCommand(args, json, out);
    if (command == QLatin1String("calc"))
        return calcCommand(args, json, out, err);
    err << "unknown command: " << command << "\n\n" << usage;
    return 1;
}
