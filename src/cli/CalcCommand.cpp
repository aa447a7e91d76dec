#include "CliSupport.h"
#include "framework/CalculatorRegistry.h"
#include "framework/Presenter.h"
#include "framework/QVFunctionController.h"
#include "numerics/NumberFormat.h"
#include "reports/ReportTableModel.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaProperty>
#include <cmath>
#include <deque>

namespace CliSupport {

QString jsonString(const QString& text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QString jsonNumber(double value)
{
    const QString text = NumberFormat::preciseString(value);
    return std::isfinite(value) ? text : jsonString(text);
}

QString printable(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'\\')
            out += QStringLiteral("\\\\");
        else if (u == u'\n')
            out += QStringLiteral("\\n");
        else if (u == u'\t')
            out += QStringLiteral("\\t");
        else if (u == u'\r')
            out += QStringLiteral("\\r");
        else if (u < 0x20 || (u >= 0x7f && u < 0xa0))
            out += QStringLiteral("\\x%1").arg(int(u), 2, 16, QLatin1Char('0'));
        else if (c.category() == QChar::Other_Format)
            out += QStringLiteral("\\u%1").arg(int(u), 4, 16, QLatin1Char('0'));
        else
            out += c;
    }
    return out;
}

} // namespace CliSupport

using CliSupport::jsonNumber;
using CliSupport::jsonString;

namespace {

const char* const calcUsage =
    R"usage(Usage: tallyvane-cli calc NAME [--from-report N] [FIELD=VALUE ...] [--solve X]
                          [--report TITLE] [--save TITLE] [--json] [--csv]

Runs the calculator NAME (see "tallyvane-cli list") as its screen does: each
FIELD=VALUE is one edit of that input, in the order given, followed by the
screen's own change action. FIELD is the model's input property, as
"tallyvane-cli list" shows it (investmentAmount=1000), or the screen's
outlet (investmentField=1000); a choice takes one of its words, exactly
(paymentMode=END, paymentFrequency=Monthly). --solve presses a compute
button (tvm: PV, FV, PMT, I/Y, N).

--from-report N starts from the inputs saved with report N (see "tallyvane-cli
reports list"), which must be a report of NAME; the FIELD=VALUE edits then
apply on top, and the compute button the report last pressed is pressed
again unless --solve is given. An input that cannot be put back is named on
stderr, and the rest is used.

Prints one "name: text" line per model value, formatted as on screen;
--json gives {"calculator": NAME, "values": {name: number}}.
--csv prints the screen's schedule as CSV instead (depreciation).
--report TITLE adds the report text; --save TITLE also keeps it in the saved
reports, as the screen's Export > Save does. A table takes a comma list, at
most as many values as it has rows ("tallyvane-cli list" shows the limit:
cashArray[100]).

A value that cannot be read (a number field's "12,5x", a date that does not
exist, an ambiguous "1.234" where "." groups thousands) is an error naming
the field and the text, exit 1; the screen would mark it. An empty value
(field=) empties the field.
)usage";

// Answers the screen's action sheets and alerts from a script.
class ScriptPresenter : public Presenter {
public:
    std::deque<std::pair<QString, QString>> answers;
    QStringList offered; // the choices of the last sheet
    QString failure;     // why a save failed, when the screen said so
    void present(const AlertRequest& request, Answer reply) override
    {
        if (request.title == QVFunctionController::saveFailureTitle())
            failure = request.message;
        offered.clear();
        for (const AlertAction& action : request.actions)
            offered << action.title;
        if (answers.empty())
            return;
        const auto [action, text] = answers.front();
        answers.pop_front();
        reply(action, text);
    }
};

// The input named `key`: its model property or its outlet, exactly.
const FunctionInput* findInput(const QList<FunctionInput>& inputs, const QString& key)
{
    for (const FunctionInput& input : inputs) {
        if (key == input.property || key == input.outlet)
            return &input;
    }
    return nullptr;
}

// A table column without its trailing zeros (the rows nobody filled); a
// list the model computed (`whole`) stays as it is.
QList<double> filledRows(const QVariant& value, bool whole)
{
    QList<double> rows = value.value<QList<double>>();
    while (!whole && rows.size() > 1 && rows.last() == 0)
        rows.removeLast();
    return rows;
}

// The model's result properties that are lists ("irrAll"), named in its
// "resultLists" class info.
QStringList resultLists(const QMetaObject* meta)
{
    const int info = meta->indexOfClassInfo("resultLists");
    return info < 0 ? QStringList()
                    : QString::fromLatin1(meta->classInfo(info).value()).split(QLatin1Char(' '));
}

QString textOf(const QVariant& value, bool whole)
{
    if (value.typeId() == QMetaType::Double)
        return NumberFormat::stringFromDouble(value.toDouble());
    if (value.canConvert<QList<double>>() && value.typeId() != QMetaType::QString) {
        QStringList texts;
        for (double v : filledRows(value, whole))
            texts << NumberFormat::stringFromDouble(v);
        return texts.join(QLatin1Char(','));
    }
    return value.toString();
}

QString jsonOf(const QVariant& value, bool whole)
{
    if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Int)
        return jsonNumber(value.toDouble());
    if (value.canConvert<QList<double>>() && value.typeId() != QMetaType::QString) {
        QStringList numbers;
        for (double v : filledRows(value, whole))
            numbers << jsonNumber(v);
        return QLatin1Char('[') + numbers.join(QStringLiteral(", ")) + QLatin1Char(']');
    }
    return jsonString(value.toString());
}

// The line a field's mark shows ("Not a number") as the end of an error
// about its text: "is not a number".
QString unreadable(const QString& problem)
{
    return QStringLiteral("is ") + problem.left(1).toLower() + problem.mid(1);
}

const TableInput* findTable(const QList<TableInput>& tables, const QString& key)
{
    for (const TableInput& table : tables) {
        if (table.property == key)
            return &table;
    }
    return nullptr;
}

} // namespace

int calcCommand(const QStringList& arguments, bool json, QTextStream& out, QTextStream& err)
{
    if (arguments.isEmpty() || arguments.first() == QLatin1String("--help")) {
        (arguments.isEmpty() ? err : out) << calcUsage;
        return arguments.isEmpty() ? 1 : 0;
    }
    const CalculatorDescription* descriptor = CalculatorRegistry::find(arguments.first());
    if (!descriptor) {
        err << "unknown calculator: " << arguments.first() << " (see tallyvane-cli list)\n";
        return 1;
    }
    std::unique_ptr<QVFunctionController> controller = descriptor->create();
    ScriptPresenter presenter;
    controller->setPresenter(&presenter);
    const QList<FunctionInput> inputs = controller->inputs();
    const QList<TableInput> tables = controller->tableInputs();

    QString reportTitle;
    bool wantReport = false;
    bool save = false;
    bool csv = false;
    QStringList args = arguments.mid(1);
    // The inputs of a saved report first; the edits given apply on top.
    QString storedSolve;
    const bool solveGiven = args.contains(QStringLiteral("--solve"));
    if (const qsizetype from = args.indexOf(QStringLiteral("--from-report")); from >= 0) {
        ReportTableModel list;
        if (!list.loadError().isEmpty()) {
            err << list.loadError() << '\n';
            return 1;
        }
        bool ok = false;
        const int index = args.value(from + 1).toInt(&ok);
        if (!ok || index < 0 || index >= list.count()) {
            err << "--from-report: no report " << args.value(from + 1) << " (there are "
                << list.count() << ")\n";
            return 1;
        }
        const QVReport report = list.reportAt(index);
        if (report.calculator.isEmpty()) {
            err << "report " << index << " was saved before reports kept their inputs\n";
            return 1;
        }
        if (report.calculator != descriptor->name) {
            err << "report " << index << " is a report of " << report.calculator << ", not "
                << descriptor->name << '\n';
            return 1;
        }
        for (const QString& line : controller->restoreInputs(report.inputs))
            err << "report " << index << ": " << line << '\n';
        for (const QString& key : report.damagedInputs)
            err << "report " << index << ": the stored input \"" << key << "\" cannot be read\n";
        storedSolve = report.inputs.value(QStringLiteral("--solve")).toString();
        args.remove(from, 2);
    }
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args.at(i);
        if (arg == QLatin1String("--csv")) {
            csv = true;
            continue;
        }
        if (arg == QLatin1String("--solve") || arg == QLatin1String("--report") ||
            arg == QLatin1String("--save")) {
            if (i + 1 >= args.size()) {
                err << arg << " needs a value\n";
                return 1;
            }
            const QString value = args.at(++i);
            if (arg == QLatin1String("--solve")) {
                const QStringList buttons = controller->solveButtons();
                if (buttons.isEmpty()) {
                    err << descriptor->name
                        << " has no compute buttons: it computes as its fields are set\n";
                    return 1;
                }
                if (!buttons.contains(value)) {
                    err << descriptor->name << " has no compute button " << value
                        << " (it has: " << buttons.join(QLatin1Char(' ')) << ")\n";
                    return 1;
                }
                controller->solve(value);
            } else {
                reportTitle = value;
                wantReport = true;
                save = save || arg == QLatin1String("--save");
            }
            continue;
        }
        const qsizetype equals = arg.indexOf(QLatin1Char('='));
        const FunctionInput* input = equals > 0 ? findInput(inputs, arg.left(equals)) : nullptr;
        // Table inputs ("cashArray=-100,110") fill the screen's table.
        if (const TableInput* table = equals > 0 ? findTable(tables, arg.left(equals)) : nullptr) {
            const QStringList values = arg.mid(equals + 1).split(QLatin1Char(','));
            if (values.size() > table->maximumRows) {
                err << table->property << " takes at most " << table->maximumRows << " values ("
                    << values.size() << " given)\n";
                return 1;
            }
            for (qsizetype k = 0; k < values.size(); ++k) {
                const QString problem =
                    QVFunctionController::problemWithCell(values.at(k), table->cells);
                if (!problem.isEmpty()) {
                    err << table->property << ": \"" << CliSupport::printable(values.at(k))
                        << "\" (value " << k + 1 << ") " << unreadable(problem) << '\n';
                    return 1;
                }
            }
            controller->setTableInput(table->property, values);
            continue;
        }
        if (!input) {
            err << "not an input of " << descriptor->name << ": " << arg << '\n';
            return 1;
        }
        const QString value = arg.mid(equals + 1);
        if (input->kind != FunctionInput::Kind::Choice) {
            // The screen marks a text it cannot read (and, in some
            // calculators, counts it as 0); a script is told and stops.
            const QString problem = QVFunctionController::problemWith(
                value, input->kind == FunctionInput::Kind::DateField);
            if (!problem.isEmpty()) {
                err << input->property << ": \"" << CliSupport::printable(value) << "\" "
                    << unreadable(problem) << '\n';
                return 1;
            }
            controller->editField(input->outlet, value);
            continue;
        }
        // A choice takes one of the words its description offers, as typed:
        // any other word is refused, never taken for one of them.
        const FieldDescription* choice = descriptor->field(input->outlet);
        if (choice && !choice->words.contains(value)) {
            err << input->property << " takes one of: " << choice->words.join(QStringLiteral(", "))
                << '\n';
            return 1;
        }
        presenter.answers.push_back({value, QString()});
        controller->openChoice(input->outlet);
        // A choice its description does not name (a controller's own input)
        // takes a word its sheet offers.
        if (!presenter.offered.contains(value) || value == QLatin1String("Cancel")) {
            presenter.offered.removeAll(QStringLiteral("Cancel"));
            err << input->property
                << " takes one of: " << presenter.offered.join(QStringLiteral(", ")) << '\n';
            return 1;
        }
    }

    // Edits on top of a report's inputs are worked out as the report was.
    if (!storedSolve.isEmpty() && !solveGiven && controller->solveButtons().contains(storedSolve))
        controller->solve(storedSolve);

    QVFunctionModel* model = controller->model();
    QString report;
    if (wantReport) {
        if (save) {
            ReportTableModel list; // the saved list must exist before a save
            if (!list.loadError().isEmpty()) {
                err << list.loadError() << '\n';
                return 1;
            }
            presenter.answers = {{QStringLiteral("Save"), QString()},
                                 {QStringLiteral("OK"), reportTitle},
                                 {QStringLiteral("OK"), QString()}};
            controller->exportClicked();
            if (!presenter.failure.isEmpty()) {
                err << "the report was not saved: " << presenter.failure << '\n';
                return 1;
            }
        } else {
            // Only the text is wanted: the file goes, as after an e-mail.
            controller->sendReportRequestedNotification(reportTitle);
            model->removeReportFile();
        }
        report = model->report().contents;
    }

    if (csv) {
        // The schedule alone, as a spreadsheet reads it.
        const QByteArray schedule = controller->scheduleCsv();
        if (schedule.isEmpty()) {
            err << descriptor->name << " has no schedule to print\n";
            return 1;
        }
        // Its bytes go out as they are: as one QString on the way, a
        // schedule of 100,000 payments would take twice its size again in
        // UTF-16 and once more in the stream's buffer.
        if (QIODevice* device = out.device()) {
            out.flush();
            device->write(schedule);
        } else {
            out << QString::fromUtf8(schedule);
        }
        return 0;
    }

    const QMetaObject* meta = model->metaObject();
    const int first = QVFunctionModel::staticMetaObject.propertyCount();
    const QStringList lists = resultLists(meta);
    if (json) {
        QStringList values;
        for (int i = first; i < meta->propertyCount(); ++i) {
            const QMetaProperty p = meta->property(i);
            values << QStringLiteral("\"%1\": %2")
                          .arg(QLatin1String(p.name()),
                               jsonOf(p.read(model), lists.contains(QLatin1String(p.name()))));
        }
        // Why a value is no number (or what else to know of it), by name.
        QStringList notes;
        const QMap<QString, QString> lines = model->notes();
        for (auto it = lines.cbegin(); it != lines.cend(); ++it)
            notes << QStringLiteral("%1: %2").arg(jsonString(it.key()), jsonString(it.value()));
        out << "{\"calculator\": " << jsonString(descriptor->name) << ", \"values\": {"
            << values.join(QStringLiteral(", ")) << "}, \"notes\": {"
            << notes.join(QStringLiteral(", ")) << '}';
        if (wantReport)
            out << ", \"report\": " << jsonString(report);
        out << "}\n";
        return 0;
    }
    // Results the screen shows in percent keep their "%" here too.
    const int info = meta->indexOfClassInfo("percentResults");
    const QStringList percent =
        info < 0 ? QStringList()
                 : QString::fromLatin1(meta->classInfo(info).value()).split(QLatin1Char(' '));
    for (int i = first; i < meta->propertyCount(); ++i) {
        const QMetaProperty p = meta->property(i);
        const bool inPercent = percent.contains(QLatin1String(p.name()));
        out << p.name() << ": " << textOf(p.read(model), lists.contains(QLatin1String(p.name())))
            << (inPercent ? "%" : "") << '\n';
    }
    // The reasons beside the values, as the screen shows them under theirs.
    const QMap<QString, QString> notes = model->notes();
    if (!notes.isEmpty()) {
        out << "notes:\n";
        for (auto it = notes.cbegin(); it != notes.cend(); ++it)
            out << "  " << it.key() << ": " << it.value() << '\n';
    }
    if (wantReport)
        out << '\n' << report;
    return 0;
}

int listCommand(const QStringList& args, bool json, QTextStream& out)
{
    if (args.contains(QStringLiteral("--help"))) {
        out << "Usage: tallyvane-cli list [--json]\n\nThe calculators, their inputs and their "
               "compute buttons; --json adds each one's worked example (arguments for calc).\n";
        return 0;
    }
    QStringList entries;
    for (const CalculatorDescription* description : CalculatorRegistry::calculators()) {
        const CalculatorDescription& f = *description;
        const std::unique_ptr<QVFunctionController> controller = f.create();
        QStringList fields;
        for (const FunctionInput& input : controller->inputs())
            fields << input.property;
        // Tables with their row limit: "cashArray[100]".
        for (const TableInput& table : controller->tableInputs())
            fields << QStringLiteral("%1[%2]").arg(table.property).arg(table.maximumRows);
        const QStringList solve = controller->solveButtons();
        if (json) {
            const auto array = [](const QStringList& items) {
                QStringList quoted;
                for (const QString& item : items)
                    quoted << jsonString(item);
                return QStringLiteral("[") + quoted.join(QStringLiteral(", ")) + QLatin1Char(']');
            };
            entries << QStringLiteral(
                           "{\"name\": %1, \"title\": %2, \"fields\": %3, \"solve\": %4, "
                           "\"example\": %5}")
                           .arg(jsonString(f.name), jsonString(f.entry.title), array(fields),
                                array(solve), array(f.example));
        } else {
            out << f.name << '\t' << f.entry.title << '\t' << fields.join(QLatin1Char(' '));
            if (!solve.isEmpty())
                out << "\t--solve " << solve.join(QLatin1Char('|'));
            out << '\n';
        }
    }
    if (json)
        out << "[" << entries.join(QStringLiteral(",\n ")) << "]\n";
    return 0;
}
