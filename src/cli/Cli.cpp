#include "Cli.h"

#include "CliSupport.h"
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorKeypad.h"
#include "expression/EPExpression.h"
#include "framework/FunctionRegistry.h"
#include "framework/NumberFormat.h"
#include "framework/Presenter.h"
#include "reports/QVFileManager.h"
#include "reports/QVReport.h"
#include "reports/ReportPdf.h"
#include "reports/ReportStore.h"
#include "reports/ReportTableModel.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSaveFile>
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
  reports pdf N FILE [--page A4|Letter]
                             write saved report N as a PDF

Options:
  --json                     machine-readable output
  --help                     this text
)";

const char* const reportsUsage = R"(Usage: tallyvane-cli reports list | show N | delete N [--json]
       tallyvane-cli reports pdf N FILE [--page A4|Letter]

  list        one line per saved report, newest first: index, date, calculator,
              title and file name; --json gives an array of objects with
              "title", "functionTitle", "date" (ISO 8601), "fileName", "colorTag"
  show N      prints the text file of report N (0 is the newest)
  delete N    removes report N from the list as the Reports screen does; the
              text file stays in the documents folder
  pdf N FILE  writes report N as a PDF to FILE (A4, or Letter where the
              locale measures in inches; --page chooses)
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
                array.append(reportJson(report));
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
    if (verb == QLatin1String("pdf") && (args.size() == 3 || args.size() == 5)) {
        int index = 0;
        if (!parseIndex(args.at(1), list.count(), index, err))
            return 1;
        ReportPdf::Page page = ReportPdf::pageForLocale();
        if (args.size() == 5) {
            bool known = false;
            page = ReportPdf::pageNamed(args.at(4), &known);
            if (args.at(3) != QLatin1String("--page") || !known) {
                err << "--page takes A4 or Letter\n";
                return 1;
            }
        }
        QString text;
        if (!readReportText(list.reportAt(index), index, &text, err))
            return 1;
        // Written whole or not at all.
        QSaveFile file(args.at(2));
        const QString chart =
            ReportPdf::chartPathFor(list.reportAt(index).filePathInDocumentsDirectory());
        // A file that could not be laid out is dropped unwritten (no commit).
        QString reason;
        if (!file.open(QIODevice::WriteOnly) ||
            !ReportPdf::write(&file, text, page, chart, &reason) || !file.commit()) {
            err << args.at(2)
                << " could not be written: " << (reason.isEmpty() ? file.errorString() : reason)
                << '\n';
            return 1;
        }
        out << args.at(2) << '\n';
        return 0;
    }
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
            QJsonObject object = reportJson(report);
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
    QStringList history;
    for (const HistoryEntry& e : *engine.logArray())
        history << QStringLiteral("{\"result\": %1, \"expression\": %2, \"command\": %3, "
                                  "\"result-label\": %4}")
                       .arg(jsonString(e.result), jsonString(e.expression), jsonString(e.command),
                            jsonString(e.resultLabel));
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
        << ",\n  \"expression\": " << jsonString(engine.expression()) << ",\n  \"history\": ["
        << (history.isEmpty() ? QString()
                              : QStringLiteral("\n    ") + history.join(QStringLiteral(",\n    ")) +
                                    QStringLiteral("\n  "))
        << "],\n  \"registers\": {" << values.join(QStringLiteral(", ")) << "}\n}\n";
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
