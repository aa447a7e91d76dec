#include "QVFunctionController.h"

#include "CalculatorRegistry.h"
#include "FallbackNotices.h"
#include "HtmlPages.h"
#include "Presenter.h"
#include "numerics/DateText.h"
#include "numerics/EventText.h"
#include "numerics/FinanceMath.h"
#include "numerics/NumberFormat.h"
#include "platform/MailComposer.h"
#include "platform/NotificationCenter.h"
#include "platform/ReviewPrompt.h"
#include "platform/SafeFiles.h"
#include "platform/Services.h"
#include "store/QVFileManager.h"
#include "store/ReportStore.h"

#include <QCborMap>
#include <QCborValue>
#include <QFile>
#include <algorithm>
#include <limits>
#include <utility>

namespace {
const QString saveAction = QStringLiteral("save");
const QString emailAction = QStringLiteral("email");
const QString cancelAction = QStringLiteral("cancel");
} // namespace

QVFunctionController::QVFunctionController(QObject* parent) : QObject(parent) {}

QVFunctionController::~QVFunctionController() = default;

const CalculatorDescription* QVFunctionController::description() const
{
    return CalculatorRegistry::findScreen(QString::fromLatin1(metaObject()->className()));
}

const FieldDescription* QVFunctionController::describedField(const QString& keyOrOutlet) const
{
    const CalculatorDescription* d = description();
    return d ? d->field(keyOrOutlet) : nullptr;
}

QString QVFunctionController::spelledWord(const QString& outlet, const QString& word) const
{
    const FieldDescription* field = describedField(outlet);
    return field ? field->spelled(word) : word;
}

bool QVFunctionController::signableOf(const QString& outlet) const
{
    const FieldDescription* field = describedField(outlet);
    return !field || field->signable();
}

QString QVFunctionController::labelOf(const QString& outlet) const
{
    const CalculatorDescription* d = description();
    if (!d)
        return {};
    if (const FieldDescription* field = d->field(outlet))
        return field->label;
    if (const ResultDescription* result = d->result(outlet))
        return result->label;
    return {};
}

QList<FunctionInput> QVFunctionController::inputs() const
{
    QList<FunctionInput> list;
    if (const CalculatorDescription* d = description()) {
        for (const FieldDescription& field : d->fields) {
            if (field.kind == FieldDescription::Kind::Table)
                continue;
            const FunctionInput::Kind kind =
                field.kind == FieldDescription::Kind::Choice ? FunctionInput::Kind::Choice
                : field.kind == FieldDescription::Kind::Date ? FunctionInput::Kind::DateField
                                                             : FunctionInput::Kind::Field;
            list.append({field.key, field.outlet, kind, field.action});
        }
    }
    return list;
}

QList<TableInput> QVFunctionController::tableInputs() const
{
    QList<TableInput> list;
    if (const CalculatorDescription* d = description()) {
        for (const FieldDescription& field : d->fields) {
            if (field.kind == FieldDescription::Kind::Table)
                list.append({field.key, field.rows,
                             field.cells == FieldDescription::Kind::Date ? TableInput::Cells::Dates
                             : field.cells == FieldDescription::Kind::Event
                                 ? TableInput::Cells::Events
                                 : TableInput::Cells::Numbers});
        }
    }
    return list;
}

QStringList QVFunctionController::solveButtons() const
{
    const CalculatorDescription* d = description();
    return d ? d->solveButtons : QStringList();
}

void QVFunctionController::load()
{
    if (m_model)
        return;
    connectMvc();
    Q_ASSERT_X(m_model && m_view, "QVFunctionController::load",
               "connectMvc must set the model and the view");
    viewDidLoad();
}

void QVFunctionController::setModel(std::unique_ptr<QVFunctionModel> model)
{
    m_model = std::move(model);
}

void QVFunctionController::setView(QVFunctionView* view)
{
    m_view = view;
}

void QVFunctionController::viewDidLoad()
{
    configureNavigationBar();
    configureObservers();
    loadDescription();
}

void QVFunctionController::configureNavigationBar()
{
    m_view->setTitle(m_model->navigationTitle());
}

void QVFunctionController::configureObservers()
{
    NotificationCenter::defaultCenter().addObserver(
        this, m_model->reportCreatedNotificationName(),
        [this](const Notification&) { receiveReportCreatedNotification(); });
}

void QVFunctionController::loadDescription()
{
    m_view->setDescriptionHtml(HtmlPages::page(m_model->descriptionName()));
}

void QVFunctionController::segmentChanged(int segment)
{
    if (segment == 0) {
        m_view->showCalculator(segment);
        return;
    }
    m_view->showDescription(segment);
    Services::reviewPrompt().requestReview();
}

void QVFunctionController::setSelectedAction(const QString& action)
{
    if (action == m_selectedAction)
        return;
    m_selectedAction = action;
    emit selectedActionChanged();
}

void QVFunctionController::exportClicked()
{
    Services::reviewPrompt().requestReview();
    if (!presenter())
        return;
    AlertRequest sheet;
    sheet.kind = AlertRequest::Kind::ActionSheet;
    sheet.title = QStringLiteral("Export");
    sheet.message = QStringLiteral("Your data report will be written to a txt file.");
    sheet.actions = {
        {QStringLiteral("Cancel"), true}, {QStringLiteral("Send Email")}, {QStringLiteral("Save")}};
    sheet.anchor = QStringLiteral("export");
    QPointer<QVFunctionController> self(this);
    presenter()->present(sheet, [self](const QString& action, const QString&) {
        if (!self)
            return;
        if (action == QLatin1String("Send Email")) {
            self->setSelectedAction(emailAction);
            self->sendReportRequestedNotification(QString(""));
        } else if (action == QLatin1String("Save")) {
            self->setSelectedAction(saveAction);
            self->showSaveTitleAlert();
        } else {
            self->setSelectedAction(cancelAction);
        }
    });
}

void QVFunctionController::showSaveTitleAlert()
{
    AlertRequest alert;
    alert.title = QStringLiteral("Report Title");
    alert.message = QStringLiteral("Enter a title for your report.");
    alert.actions = {{QStringLiteral("OK")}, {QStringLiteral("Cancel"), true}};
    alert.hasTextField = true;
    QPointer<QVFunctionController> self(this);
    presenter()->present(alert, [self](const QString& action, const QString& text) {
        if (!self)
            return;
        if (action == QLatin1String("OK"))
            self->sendReportRequestedNotification(text.isNull() ? QString("") : text);
        else
            self->setSelectedAction(cancelAction);
    });
}

void QVFunctionController::sendReportRequestedNotification(const QString& title)
{
    NotificationCenter::defaultCenter().post(m_model->reportRequestedNotificationName(), this,
                                             {{QStringLiteral("title"), title}});
}

void QVFunctionController::receiveReportCreatedNotification()
{
    // A report whose text file could not be written is neither mailed nor
    // archived (a record without its text would show nothing): the user is
    // told why instead.
    const WriteResult written = m_model->reportFileResult();
    if (m_selectedAction == emailAction) {
        if (!written.ok())
            showSaveFailure(written.error);
        else if (Services::mailComposer().canSendMail())
            showEmail();
    } else if (m_selectedAction == saveAction) {
        if (!written.ok()) {
            showSaveFailure(written.error);
            return;
        }
        const WriteResult pictured = saveChartPicture();
        // The record keeps the calculator and its inputs, so that it can be
        // opened again and compared; its text is as it always was.
        if (const CalculatorDescription* d = description()) {
            m_model->report().calculator = d->name;
            m_model->report().inputs = inputTexts();
        }
        const WriteResult saved = pictured.ok() ? m_model->saveReport() : pictured;
        if (!saved.ok()) {
            // The text file (and its picture) belong to no record now: they
            // go again, so the save leaves nothing half done behind.
            QVFileManager::removeFileAtPath(QVFileManager::documentsDirectory() + QLatin1Char('/') +
                                            chartPictureName(m_model->report().fileName));
            m_model->removeReportFile();
            showSaveFailure(saved.error);
            return;
        }
        if (!presenter())
            return;
        AlertRequest alert;
        alert.title = QStringLiteral("Calculation Saved");
        alert.message = QStringLiteral("You can now access your report from the reports section.");
        alert.actions = {{QStringLiteral("OK")}};
        alert.anchor = QStringLiteral("export");
        QPointer<QVFunctionController> self(this);
        presenter()->present(alert, [self](const QString&, const QString&) {
            if (self)
                self->m_model->setReportSaved(true);
        });
    }
}

QString QVFunctionController::chartPictureName(const QString& reportFileName)
{
    QString stem = reportFileName;
    if (stem.endsWith(QLatin1String("_report.txt")))
        stem.chop(int(qstrlen("_report.txt")));
    return stem + QStringLiteral("_chart.png");
}

WriteResult QVFunctionController::saveChartPicture()
{
    // Only a screen draws (the command line has no fonts to draw with), and
    // only when there is a chart.
    const ChartPicture chart = reportChart();
    if (chart.isEmpty() || !ChartPictures::canDraw())
        return WriteResult::success();
    const QByteArray png = ChartPictures::encode(chart, "PNG");
    const QString name = chartPictureName(m_model->report().fileName);
    QFile file(QVFileManager::documentsDirectory() + QLatin1Char('/') + name);
    // A new file only, like the report's own text; a picture that could not
    // be written whole does not stay behind half written.
    bool created = false;
    if (png.isEmpty() || !QVFileManager::isPlainFileName(name) ||
        !(created = file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) ||
        file.write(png) != png.size() || !file.flush()) {
        const QString reason = file.errorString();
        file.close();
        if (created)
            file.remove();
        return WriteResult::failure(
            QStringLiteral("The chart %1 could not be written: %2.").arg(name, reason));
    }
    return WriteResult::success();
}

void QVFunctionController::showSaveFailure(const QString& reason)
{
    if (!presenter())
        return;
    AlertRequest alert;
    alert.title = saveFailureTitle();
    alert.message = reason;
    alert.actions = {{QStringLiteral("OK")}};
    alert.anchor = QStringLiteral("export");
    presenter()->present(alert, [](const QString&, const QString&) {});
}

void QVFunctionController::saveScheduleCsv()
{
    const QByteArray csv = scheduleCsv();
    if (csv.isEmpty())
        return;
    const QString stem = QStringLiteral("%1_schedule_%2")
                             .arg(m_model->report().fileName.section(QLatin1Char('_'), 0, 0),
                                  Services::now().toString(QStringLiteral("dd-MM-yyyy HH-mm")));
    // A new file every time: a name already there gets " (2)", " (3)", ...
    QString name;
    const QString error = QVFileManager::writeNewCsvFile(stem, csv, &name);
    if (!error.isEmpty()) {
        AlertRequest failed;
        failed.title = QStringLiteral("Could not save the schedule");
        failed.message = error;
        failed.actions = {{QStringLiteral("OK")}};
        if (presenter())
            presenter()->present(failed, [](const QString&, const QString&) {});
        return;
    }
    const QString path = QVFileManager::documentsDirectory() + QLatin1Char('/') + name;
    AlertRequest saved;
    saved.title = QStringLiteral("Schedule Saved");
    saved.message = QStringLiteral("The schedule was written to:\n%1").arg(path);
    saved.actions = {{QStringLiteral("Open Folder")}, {QStringLiteral("OK"), true, true}};
    QPointer<QVFunctionController> self(this);
    if (presenter())
        presenter()->present(saved, [self](const QString& action, const QString&) {
            if (self && action == QLatin1String("Open Folder"))
                FallbackNotices::openFolder(QVFileManager::documentsDirectory(), self->presenter(),
                                            self);
        });
}

QString QVFunctionController::saveFailureTitle()
{
    return QStringLiteral("Could not save the report");
}

void QVFunctionController::showEmail()
{
    const QVReport& report = m_model->report();
    MailMessage message;
    message.subject = m_model->emailSubject();
    QByteArray text;
    if (QVFileManager::readFileInDocumentsDirectory(report.filePathInDocumentsDirectory(), &text)
            .isEmpty())
        message.attachments.append({text, QStringLiteral("text/plain"), report.fileName});
    const QByteArray jpeg = ChartPictures::encode(reportChart(), "JPEG");
    if (!jpeg.isEmpty())
        message.attachments.append(
            {jpeg, QStringLiteral("image/jpeg"), QStringLiteral("graph.png")});
    QPointer<QVFunctionController> self(this);
    Services::mailComposer().compose(message, [self](MailResult result) {
        if (!self)
            return;
        self->mailComposerFinished();
        FallbackNotices::mailFinished(result, self->presenter());
    });
}

void QVFunctionController::mailComposerFinished()
{
    if (!m_model->reportSaved())
        m_model->removeReportFile();
    else
        m_model->keepReportFile();
}

void QVFunctionController::fieldChanged()
{
    // Screens that solve on a button read their fields then, not on edits.
    if (!solveButtons().isEmpty())
        return;
    readFields();
    m_model->calculateResult();
    blankResultsOfUnreadableFields();
    showResults();
}

bool QVFunctionController::countsUnreadableAsZero() const
{
    const CalculatorDescription* d = description();
    return !d || d->entry.countsUnreadableAsZero();
}

void QVFunctionController::readFields()
{
    m_unreadableFields.clear();
    m_model->blankInputs.clear();
    const CalculatorDescription* d = description();
    if (!d)
        return;
    for (const FieldDescription& field : d->fields) {
        const QByteArray key = field.key.toLatin1();
        if (field.kind == FieldDescription::Kind::Choice) {
            // A choice the model keeps as its word takes the word its button
            // shows now; one kept as a number (payments a year) is set by
            // the choice's own action.
            if (m_model->property(key.constData()).typeId() == QMetaType::QString)
                m_model->setProperty(key.constData(), m_view->text(field.outlet));
            continue;
        }
        if (!field.typedNumber())
            continue;
        if (m_view->text(field.outlet).trimmed().isEmpty())
            m_model->blankInputs << field.key;
        // A field the model keeps no property for (a range, a switch) is
        // read by the calculator's own controller, by its own rule.
        if (m_model->metaObject()->indexOfProperty(key.constData()) < 0)
            continue;
        double value = fieldNumber(field.outlet);
        // Tallyvane's own calculators take no guess for a field that cannot
        // be read (the form calculators count it as 0, and mark it): it is
        // no number, and the results that need it say which it is.
        if (!countsUnreadableAsZero()) {
            if (const QString problem = fieldProblem(field.outlet); !problem.isEmpty()) {
                value = std::numeric_limits<double>::quiet_NaN();
                if (m_unreadableFields.isEmpty())
                    m_unreadableFields =
                        QStringLiteral("%1 cannot be read. %2").arg(field.label, problem);
            }
        }
        // A whole-number property takes the integer part (2.9 people are 2).
        if (m_model->property(key.constData()).typeId() == QMetaType::Int)
            m_model->setProperty(key.constData(), FinanceMath::saturatedInteger(value));
        else
            m_model->setProperty(key.constData(), value);
    }
}

void QVFunctionController::blankResultsOfUnreadableFields()
{
    const CalculatorDescription* d = description();
    if (!d || m_unreadableFields.isEmpty())
        return;
    for (const ResultDescription& result : d->results) {
        const QByteArray key = result.key.toLatin1();
        if (m_model->property(key.constData()).typeId() == QMetaType::Double)
            m_model->setProperty(key.constData(), std::numeric_limits<double>::quiet_NaN());
        m_model->setNote(result.key, m_unreadableFields);
    }
}

void QVFunctionController::showResults()
{
    const CalculatorDescription* d = description();
    if (!d)
        return;
    for (const ResultDescription& result : d->results)
        showResultOf(result.outlet, result.key.toLatin1().constData(), result.unit);
}

void QVFunctionController::editField(const QString& outlet, const QString& text)
{
    m_view->markTakenIn(outlet);
    m_view->setText(outlet, text);
    const QString outer = std::exchange(m_changedField, outlet);
    fieldChanged();
    m_changedField = outer;
}

void QVFunctionController::signFlipped(const QString& outlet, const QString& text)
{
    m_view->setText(outlet, text);
    cellSignFlipped(outlet);
}

void QVFunctionController::cellSignFlipped(const QString& cell)
{
    // Screens that solve on a button show no results an edit would update.
    if (solveButtons().isEmpty())
        m_view->markStale(cell);
}

void QVFunctionController::cellEdited(const QString& cell)
{
    m_view->markTakenIn(cell);
}

void QVFunctionController::openChoice(const QString& outlet)
{
    for (const FunctionInput& input : inputs()) {
        if (input.outlet == outlet && input.kind == FunctionInput::Kind::Choice)
            QMetaObject::invokeMethod(this, input.action.toLatin1().constData());
    }
}

bool QVFunctionController::chooseWord(const QString& outlet, const QString& word)
{
    // The choice's own action runs, as when its button is pressed: it sets
    // what the word stands for, which no other place knows. Its sheet
    // (presentChoices) hands the word straight to it instead of asking.
    const std::optional<QString> outer = std::exchange(m_wordToChoose, word);
    const bool outerChosen = std::exchange(m_wordChosen, false);
    openChoice(outlet);
    const bool chosen = m_wordChosen;
    m_wordToChoose = outer;
    m_wordChosen = outerChosen;
    return chosen;
}

void QVFunctionController::solve(const QString& name)
{
    if (solveButtons().contains(name))
        m_lastSolve = name;
    solveFor(name);
}

const QString QVFunctionController::solveKey = QStringLiteral("--solve");

QStringList QVFunctionController::withoutTrailingEmptyRows(QStringList rows)
{
    while (!rows.isEmpty() && rows.constLast().isEmpty())
        rows.removeLast();
    return rows;
}

QVariantMap QVFunctionController::inputTexts() const
{
    QVariantMap texts;
    for (const FunctionInput& input : inputs())
        texts.insert(input.property, m_view->text(input.outlet));
    for (const TableInput& table : tableInputs())
        texts.insert(table.property, tableTexts(table.property));
    if (!m_lastSolve.isEmpty())
        texts.insert(solveKey, m_lastSolve);
    return texts;
}

namespace {

// A stored table: a list of texts (a QStringList, or a QVariantList of
// texts as a stored archive reads back); nothing for any other value.
std::optional<QStringList> textRows(const QVariant& value)
{
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    if (value.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    QStringList rows;
    for (const QVariant& row : value.toList()) {
        if (row.typeId() != QMetaType::QString)
            return std::nullopt;
        rows << row.toString();
    }
    return rows;
}

} // namespace

QStringList QVFunctionController::restoreInputs(const QVariantMap& inputs)
{
    QStringList lines;
    const QList<FunctionInput> fields = this->inputs();
    const QList<TableInput> tables = tableInputs();
    const auto nameOf = [this](const FunctionInput& input) {
        const QString label = labelOf(input.outlet);
        return label.isEmpty() ? input.property : label;
    };

    for (auto it = inputs.cbegin(); it != inputs.cend(); ++it) {
        const QString& key = it.key();
        const bool known =
            key == solveKey ||
            std::any_of(fields.cbegin(), fields.cend(),
                        [&key](const FunctionInput& input) { return input.property == key; }) ||
            std::any_of(tables.cbegin(), tables.cend(),
                        [&key](const TableInput& table) { return table.property == key; });
        if (!known)
            lines << QStringLiteral("No input \"%1\" in this calculator.").arg(key);
    }

    // The tables first: filling one may show more rows than its row count
    // (a period, a number of rows) holds, and that count, typed after,
    // shows as many as it did (rows kept beyond it stay hidden).
    for (const TableInput& table : tables) {
        const auto it = inputs.constFind(table.property);
        if (it == inputs.cend())
            continue;
        std::optional<QStringList> rows = textRows(*it);
        if (!rows) {
            lines << QStringLiteral("%1 was not kept as a list of texts; it was left as it is.")
                         .arg(table.property);
            continue;
        }
        if (rows->size() > table.maximumRows) {
            lines << QStringLiteral("%1 takes at most %2 rows: the other %3 were left out.")
                         .arg(table.property)
                         .arg(table.maximumRows)
                         .arg(rows->size() - table.maximumRows);
            rows->resize(table.maximumRows);
        }
        if (!setTableInput(table.property, *rows))
            lines << QStringLiteral("The rows of %1 could not be put back.").arg(table.property);
    }

    // Then the fields and choices in screen order, so that a choice which
    // sets another (payments that set the compounding) comes before it. A
    // field or choice that shows its text already is left alone, as a user
    // would leave it: a choice that follows another keeps following it, a
    // button that shows no word yet ("Choose") is no word to refuse, and a
    // field left empty is not typed into.
    for (const FunctionInput& input : fields) {
        const auto it = inputs.constFind(input.property);
        if (it == inputs.cend())
            continue;
        if (it->typeId() != QMetaType::QString) {
            lines << QStringLiteral("%1 was not kept as a text; it was left as it is.")
                         .arg(nameOf(input));
            continue;
        }
        const QString text = it->toString();
        if (text == m_view->text(input.outlet))
            continue;
        if (input.kind != FunctionInput::Kind::Choice)
            editField(input.outlet, text);
        else if (!chooseWord(input.outlet, text))
            lines
                << QStringLiteral("\"%1\" is not one of the words of %2.").arg(text, nameOf(input));
    }

    // Last, the compute button, which works the results out from all of it.
    if (const auto it = inputs.constFind(solveKey); it != inputs.cend()) {
        const QString name = it->typeId() == QMetaType::QString ? it->toString() : QString();
        if (it->typeId() != QMetaType::QString)
            lines << QStringLiteral("The compute button was not kept as a text; none was pressed.");
        else if (!name.isEmpty() && !solveButtons().contains(name))
            lines << QStringLiteral("\"%1\" is not one of the compute buttons of this calculator.")
                         .arg(name);
        else if (!name.isEmpty())
            solve(name);
    }
    return lines;
}

QString QVFunctionController::problemWith(const QString& text, bool date)
{
    return date ? DateText::problemWith(text) : NumberFormat::problemWith(text);
}

QString QVFunctionController::problemWithCell(const QString& text, TableInput::Cells cells)
{
    if (cells != TableInput::Cells::Events)
        return problemWith(text, cells == TableInput::Cells::Dates);
    // An empty cell is no event.
    return text.trimmed().isEmpty() ? QString() : EventText::problemWithPair(text);
}

QString QVFunctionController::fieldProblem(const QString& outlet) const
{
    bool date = false;
    for (const FunctionInput& input : inputs()) {
        if (input.outlet == outlet)
            date = input.kind == FunctionInput::Kind::DateField;
    }
    return problemWith(m_view->text(outlet), date);
}

double QVFunctionController::fieldNumber(const QString& outlet) const
{
    return NumberFormat::numberFromText(m_view->text(outlet));
}

double QVFunctionController::givenNumber(const QString& outlet) const
{
    const QString text = m_view->text(outlet);
    if (text.trimmed().isEmpty())
        return 0;
    return NumberFormat::readNumber(text).value_or(std::numeric_limits<double>::quiet_NaN());
}

QDate QVFunctionController::givenDate(const QString& outlet, QString* problem) const
{
    const QString text = m_view->text(outlet);
    const std::optional<QDate> date = DateText::readIsoDate(text);
    if (problem)
        problem->clear();
    if (date)
        return *date;
    if (problem) {
        const QString label = labelOf(outlet);
        *problem =
            text.trimmed().isEmpty()
                ? QStringLiteral("Enter the %1.").arg(label.left(1).toLower() + label.mid(1))
                : QStringLiteral("%1 cannot be read. %2").arg(label, problemWith(text, true));
    }
    return {};
}

void QVFunctionController::showNumber(const QString& outlet, double value, const QString& suffix)
{
    m_view->setText(outlet, stringFromDouble(value) + suffix);
}

void QVFunctionController::showResultOf(const QString& outlet, const char* property,
                                        const QString& suffix)
{
    // A result that is a text (a date) is shown as it is.
    const QVariant value = m_model->property(property);
    if (value.typeId() == QMetaType::QString)
        m_view->setText(outlet, value.toString() + suffix);
    else
        showNumber(outlet, value.toDouble(), suffix);
    m_view->setNote(outlet, m_model->note(QString::fromLatin1(property)));
    // Results written anew from every field (after an edit or a choice):
    // whatever was flipped is in them.
    if (readsEveryField())
        m_view->markAllTakenIn();
}

void QVFunctionController::presentChoices(const QString& title, const QString& message,
                                          const QStringList& choices, const QString& anchor,
                                          std::function<void(const QString&)> chosen,
                                          bool cancellable)
{
    if (m_wordToChoose) {
        // chooseWord(): the word is taken at once, when the sheet offers it.
        const QString word = *std::exchange(m_wordToChoose, std::nullopt);
        if (choices.contains(word)) {
            m_wordChosen = true;
            chosen(word);
        }
        return;
    }
    if (!presenter())
        return;
    AlertRequest sheet;
    sheet.kind = AlertRequest::Kind::ActionSheet;
    sheet.title = title;
    sheet.message = message;
    if (cancellable)
        sheet.actions = {{QStringLiteral("Cancel"), true}};
    // The choice its button shows now is marked, each spelled as its
    // description spells it.
    const FieldDescription* field = describedField(anchor);
    const QString current = m_view ? m_view->text(anchor) : QString();
    for (const QString& choice : choices) {
        AlertAction action{choice};
        action.label = field ? field->spelled(choice) : choice;
        action.current = choice == current;
        sheet.actions.append(action);
    }
    sheet.anchor = anchor;
    QPointer<QVFunctionController> self(this);
    presenter()->present(sheet, [self, choices, chosen](const QString& action, const QString&) {
        if (self && choices.contains(action))
            chosen(action);
    });
}

void QVFunctionController::presentChoice(const QString& key, const QString& title,
                                         const QString& message,
                                         std::function<void(const QString&)> chosen)
{
    const FieldDescription* field = describedField(key);
    if (!field || field->kind != FieldDescription::Kind::Choice)
        return;
    const QString outlet = field->outlet;
    presentChoices(title, message, field->words, outlet,
                   [this, outlet, chosen](const QString& word) {
                       chosen(word);
                       m_view->setText(outlet, word);
                       fieldChanged();
                   });
}

QString QVFunctionController::stringFromDouble(double value)
{
    return NumberFormat::stringFromDouble(value);
}

Presenter* QVFunctionController::presenter() const
{
    return m_presenter ? m_presenter : Presenter::defaultPresenter();
}

void QVFunctionController::openWithInputs(const QVariantMap& inputs)
{
    const QStringList lines = restoreInputs(inputs);
    if (lines.isEmpty() || !presenter())
        return;
    AlertRequest alert;
    alert.title = QStringLiteral("Some inputs were not put back");
    alert.message = lines.join(QLatin1Char('\n'));
    alert.actions = {{QStringLiteral("OK")}};
    presenter()->present(alert, [](const QString&, const QString&) {});
}

void QVFunctionController::recallInputs()
{
    const CalculatorDescription* d = description();
    if (!d)
        return;
    const QByteArray kept = ReportStore::screenState(d->name);
    const QCborValue value = QCborValue::fromCbor(kept);
    if (kept.isEmpty() || !value.isMap())
        return;
    // As a report's inputs are put back: what cannot be (a field this
    // version no longer has) is told in one alert, not dropped in silence.
    openWithInputs(value.toMap().toVariantMap());
    m_keptInputs = inputsAsCbor();
}

QByteArray QVFunctionController::inputsAsCbor() const
{
    return QCborValue(QCborMap::fromVariantMap(inputTexts())).toCbor();
}

void QVFunctionController::rememberInputs()
{
    const CalculatorDescription* d = description();
    if (!d || m_forgotten)
        return;
    FallbackNotices::keepScreen(d->name, inputsAsCbor(), m_keptInputs, presenter());
}

void QVFunctionController::forgetInputs()
{
    if (const CalculatorDescription* d = description()) {
        if (const WriteResult dropped = ReportStore::keepScreenState(d->name, {}); !dropped.ok())
            FallbackNotices::keepingFailed(dropped.error, presenter());
    }
    m_keptInputs.clear();
    m_forgotten = true;
}
