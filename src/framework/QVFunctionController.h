#pragma once

#include "CalculatorDescription.h"
#include "QVFunctionModel.h"
#include "QVFunctionView.h"
#include "charts/ChartPicture.h"

#include <QDate>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>

class Presenter;

// One input of a calculator screen: the model property it sets and the view
// outlet that holds it. A field is typed into and takes a number, a date
// field takes a date (YYYY-MM-DD); a choice is a button whose action sheet
// (`action`) offers words ("Monthly", "BEG").
struct FunctionInput {
    enum class Kind { Field, DateField, Choice };
    FunctionInput(QString property, QString outlet, Kind kind = Kind::Field, QString action = {})
        : property(std::move(property)), outlet(std::move(outlet)), kind(kind),
          action(std::move(action))
    {}
    QString property;
    QString outlet;
    Kind kind;
    QString action;
};

// A table of the screen (cash flows, states, per-period rates): the name
// the command line takes it by, the most rows it holds and what its cells
// take.
struct TableInput {
    enum class Cells { Numbers, Dates, Events };
    QString property;
    int maximumRows = 0;
    Cells cells = Cells::Numbers;
};

// Base of every calculator screen: the title, the export flow (save the
// report to the list, or e-mail it), the mail with its attachments and the
// calculator/description switch.
//
// After construction call load(): the subclass's connectMvc() makes the
// model and the view, then the base wires itself to them.
class QVFunctionController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVFunctionView* view READ qvFunctionView CONSTANT)
    Q_PROPERTY(QString selectedAction READ selectedAction NOTIFY selectedActionChanged)

public:
    explicit QVFunctionController(QObject* parent = nullptr);
    ~QVFunctionController() override;

    void load();

    QVFunctionModel* model() const { return m_model.get(); }
    QVFunctionView* qvFunctionView() const { return m_view; }
    QString selectedAction() const { return m_selectedAction; }
    void setPresenter(Presenter* presenter) { m_presenter = presenter; }
    // The presenter given, or else the app's default one.
    Presenter* presenter() const;

    Q_INVOKABLE void exportClicked();
    Q_INVOKABLE void segmentChanged(int segment);

    void sendReportRequestedNotification(const QString& title);
    void receiveReportCreatedNotification();
    void showEmail();
    // The mail program is done with the message, whatever became of it.
    void mailComposerFinished();

    Q_INVOKABLE static QString stringFromDouble(double value);
    // Why `text` cannot be read as what a field or cell takes (a number by
    // NumberFormat's rule, a date by DateText's), in one plain line ("Not a
    // number", "Not a date: use YYYY-MM-DD"); empty when it can be read, or
    // is empty.
    static QString problemWith(const QString& text, bool date);
    // The same for a table's cell.
    static QString problemWithCell(const QString& text, TableInput::Cells cells);
    // The same for the text now in the input field `outlet`.
    QString fieldProblem(const QString& outlet) const;

    // The title of the alert that tells why a report was not saved.
    static QString saveFailureTitle();
    // The picture of a saved report's chart, beside its text file:
    // "<name>_chart.png" for "<name>_report.txt". The PDF of the report
    // shows it.
    static QString chartPictureName(const QString& reportFileName);

    // What this calculator is (its fields, results, compute buttons, entry
    // in the catalogue), found in the registry by the controller's class
    // name; null for a controller the registry does not know.
    const CalculatorDescription* description() const;
    // The label the description gives the field or result shown in
    // `outlet` (screens take their labels from there); empty for none.
    Q_INVOKABLE QString labelOf(const QString& outlet) const;
    // Whether the field shown in `outlet` has "±" beside it (counts and
    // plain text fields do not); true for an outlet the description lacks.
    Q_INVOKABLE bool signableOf(const QString& outlet) const;
    // How the choice button `outlet` spells `word` (as its description says).
    Q_INVOKABLE QString spelledWord(const QString& outlet, const QString& word) const;

    // The screen's inputs in screen order, and the names of its compute
    // buttons (for screens that solve on a button instead of on each edit).
    // By default those of the description.
    virtual QList<FunctionInput> inputs() const;
    // The screen's schedule as CSV (a header row, one row a period), for
    // screens that have one; empty otherwise.
    virtual QByteArray scheduleCsv() const { return {}; }
    // "Save as CSV": writes the schedule as a new file in the documents
    // folder and says where it went, or why it could not be written.
    Q_INVOKABLE void saveScheduleCsv();

    // The screen's tables, and how they are filled from a list of texts (one
    // edit per row, in order). False for an unknown table or too many rows.
    virtual QList<TableInput> tableInputs() const;
    Q_INVOKABLE virtual bool setTableInput(const QString& property, const QStringList& values)
    {
        Q_UNUSED(property);
        Q_UNUSED(values);
        return false;
    }
    // The texts of the table `property`'s rows in order, as setTableInput
    // takes them to fill the same rows again; trailing empty rows may be
    // left out. Empty for an unknown table.
    virtual QStringList tableTexts(const QString& property) const
    {
        Q_UNUSED(property);
        return {};
    }

    // Every input as the screen holds it now, to be stored and given back to
    // restoreInputs(): each field, date field and choice by its property, as
    // the text or word it shows (a QString); each table by its property, as
    // the texts of its rows (a QStringList, as tableTexts gives them); and,
    // on a screen with compute buttons, under solveKey the name of the last
    // one pressed (no such key before any).
    Q_INVOKABLE QVariantMap inputTexts() const;
    // Puts `inputs` back as a user would enter them, and so works the
    // results out again: the tables filled, the fields typed and the choices
    // chosen in screen order (one that shows its text already is left
    // alone), then the compute button pressed. What cannot be put back (a
    // key this calculator does not have, a word its choice does not offer,
    // a value of the wrong type, rows beyond what its table takes) is
    // skipped, each with one plain line in the list returned; everything
    // else is still put back. Texts that cannot be read are typed in all the
    // same, and the screen marks them as it would a typed text.
    Q_INVOKABLE QStringList restoreInputs(const QVariantMap& inputs);
    // A saved report's inputs put back (restoreInputs), and one alert
    // ("Some inputs were not put back") listing what could not be, if
    // anything.
    Q_INVOKABLE void openWithInputs(const QVariantMap& inputs);

    // A screen opens as it was left (after Back, after a restart): its
    // inputs are kept under its calculator's name in the reports' database
    // (ReportStore::screenState). This is a change from screens that always
    // started from their defaults: users lost what they had typed on
    // leaving a screen, so the app's screens now remember; the command line
    // and tests, which make screens directly, still start from defaults.
    // recallInputs() puts the kept inputs back (what cannot be put back is
    // skipped and told, as openWithInputs does); rememberInputs() keeps the inputs now shown
    // (nothing is written when they are as recalled); forgetInputs() drops them, so the next screen
    // starts from its defaults ("Clear").
    Q_INVOKABLE void recallInputs();
    Q_INVOKABLE void rememberInputs();
    Q_INVOKABLE void forgetInputs();
    // The key of the last compute button pressed in inputTexts(): "--solve",
    // as the command line presses one.
    static const QString solveKey;
    // The compute button pressed last (one of solveButtons()); empty before
    // any.
    QString lastSolve() const { return m_lastSolve; }
    // The chart that goes with the report as a picture (attached to a mail,
    // kept beside a saved report), asked for just before it is written.
    // None by default.
    virtual ChartPicture reportChart() const { return {}; }
    Q_INVOKABLE virtual QStringList solveButtons() const;
    // Presses the compute button called `name` (one of solveButtons()): the
    // screen keeps it as the last one pressed, then solves (solveFor).
    Q_INVOKABLE void solve(const QString& name);
    // The change action of the input fields. By default, as on every form
    // that computes as one types: every field of the description is read
    // into its model property (readFields), the model computes, and every
    // result of the description is shown (showResults). During an edit,
    // changedField() names the field it came from.
    Q_INVOKABLE virtual void fieldChanged();
    // One edit of a field as the user makes it: the text, then the action,
    // which knows the field it came from (no controller has to guess it
    // from the texts: a sign flip changes a text without an action).
    Q_INVOKABLE void editField(const QString& outlet, const QString& text);
    // "±" beside a field: the field's text becomes `text`, its sign
    // flipped. A sign flip is no edit: nothing recomputes until the next
    // one, and on a screen that computes as one types (no solve buttons) the
    // view is marked stale until the flipped value is taken in: by an edit
    // of that field, or by any edit or recompute on screens whose change
    // action reads every field (readsEveryField()).
    Q_INVOKABLE void signFlipped(const QString& outlet, const QString& text);
    // The same for a table's cell (`cell`, e.g. "cashField3"), whose text
    // its own field keeps; cellEdited() says its edit was applied.
    Q_INVOKABLE void cellSignFlipped(const QString& cell);
    Q_INVOKABLE void cellEdited(const QString& cell);
    // The outlet of the field whose edit is being handled; empty when the
    // action came from elsewhere (a choice, a button).
    QString changedField() const { return m_changedField; }
    // Opens the choice `input` (its action sheet).
    Q_INVOKABLE void openChoice(const QString& outlet);
    // Chooses `word` on the choice button `outlet` as a user would on its
    // sheet, without showing the sheet (no presenter is asked): the choice's
    // action runs and takes the word at once, then the change action
    // follows as after any choice. False, and nothing changes, when
    // `outlet` is no choice or its sheet does not offer `word`.
    Q_INVOKABLE bool chooseWord(const QString& outlet, const QString& word);

signals:
    void selectedActionChanged();

protected:
    // Whether the change action (and every recompute) reads all the
    // fields again; screens whose fields each update only their own value
    // (a period, a rate) say no, so a flipped field stays stale until it is
    // edited itself.
    virtual bool readsEveryField() const { return true; }

    // Creates the model and the view and hands them over with setModel()
    // and setView().
    virtual void connectMvc() = 0;
    void setModel(std::unique_ptr<QVFunctionModel> model);
    void setView(QVFunctionView* view);

    // `rows` without the empty texts at its end, for tableTexts().
    static QStringList withoutTrailingEmptyRows(QStringList rows);

    // The number typed in a field; empty or unreadable text is 0.
    double fieldNumber(const QString& outlet) const;
    // The same for calculators whose results stay blank rather than count a
    // text they cannot read as 0: NaN for such a text (an empty field is
    // still 0), so every result that depends on it is NaN too.
    double givenNumber(const QString& outlet) const;
    // The date typed in the date field `outlet` (YYYY-MM-DD); an invalid
    // date for an empty text or one that cannot be read. `problem`, when
    // given, says why (empty for a date), naming the field by its label ("Enter the
    // settlement date.", "Settlement date cannot be read. Not a date: use
    // YYYY-MM-DD").
    QDate givenDate(const QString& outlet, QString* problem = nullptr) const;
    // Shows `value` in a label or field with the results' number format.
    void showNumber(const QString& outlet, double value, const QString& suffix = QString());
    // The description's number, percent and count fields, each read (empty
    // or unreadable text is 0) into the model property of its key (fields
    // whose key is no property of the model are left to the controller);
    // and its choices whose property is a word, each set to the word on its
    // button. In Tallyvane's own calculators (not the form calculators,
    // which count it as 0) a field that cannot be read is read as no number
    // (NaN).
    // The same pass notes the keys of the number fields left empty (or only
    // spaces) in the model's blankInputs.
    void readFields();
    // After the model computed: when readFields met a field that cannot be
    // read (in Tallyvane's own calculators), every result is blank (NaN)
    // with a note naming the field, rather than computed from a guess.
    void blankResultsOfUnreadableFields();
    // Whether a field that cannot be read counts as 0 (the form
    // calculators, which mark it so) or leaves the results blank.
    bool countsUnreadableAsZero() const;
    // The description's results, each shown with its unit and its note.
    void showResults();
    // Shows the model's result `property` in `outlet` (a number with the
    // results' format, a text as it is), with the model's note on it (why
    // it is no number) under it.
    void showResultOf(const QString& outlet, const char* property,
                      const QString& suffix = QString());
    // The action of the compute button `name`; nothing by default.
    virtual void solveFor(const QString& name) { Q_UNUSED(name); }

    // An action sheet of `choices` after "Cancel" (or without it, when not
    // `cancellable`); `chosen` gets the word. During chooseWord() no sheet
    // is shown: the word given there goes to `chosen` at once when
    // `choices` offers it.
    void presentChoices(const QString& title, const QString& message, const QStringList& choices,
                        const QString& anchor, std::function<void(const QString&)> chosen,
                        bool cancellable = true);
    // The action sheet of the description's choice `key`: its words after
    // "Cancel", anchored at its button. A word chosen goes to `chosen`
    // (which sets what it stands for in the model), becomes the button's
    // title, and the change action follows.
    void presentChoice(const QString& key, const QString& title, const QString& message,
                       std::function<void(const QString&)> chosen);

private:
    // The description's field with this key or outlet; null for none.
    const FieldDescription* describedField(const QString& keyOrOutlet) const;
    void viewDidLoad();
    void configureNavigationBar();
    void configureObservers();
    void loadDescription();
    void setSelectedAction(const QString& action);
    void showSaveTitleAlert();
    void showSaveFailure(const QString& reason);
    // Draws the chart (screens that have one) and keeps it beside the text.
    WriteResult saveChartPicture();

    std::unique_ptr<QVFunctionModel> m_model;
    QPointer<QVFunctionView> m_view;
    Presenter* m_presenter = nullptr;
    QString m_selectedAction;
    QString m_changedField;
    QString m_unreadableFields; // the first field readFields could not read
    QString m_lastSolve;
    // The word chooseWord() is choosing, until a sheet takes it.
    std::optional<QString> m_wordToChoose;
    bool m_wordChosen = false;
    // inputTexts() as the bytes kept for the screen.
    QByteArray inputsAsCbor() const;
    // The inputs as recalled (or last kept), so an unchanged screen writes
    // nothing when it is left.
    QByteArray m_keptInputs;
    // forgetInputs() was called: this screen is going, and keeps nothing.
    bool m_forgotten = false;
};
