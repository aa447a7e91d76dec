#pragma once

#include "store/QVReport.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <initializer_list>
#include <memory>

// Base of every calculator model: the names under which its reports are
// requested and announced, its titles, the report it fills, and how that
// report is written, kept in the saved list or thrown away again.
//
// Create models with create<T>() so that the subclass's names are in place
// before the model starts listening for report requests.
class QVFunctionModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString navigationTitle READ navigationTitle CONSTANT)
    Q_PROPERTY(QString descriptionName READ descriptionName CONSTANT)

public:
    explicit QVFunctionModel(QObject* parent = nullptr);

    template <typename T, typename... Args> static std::unique_ptr<T> create(Args&&... args)
    {
        auto model = std::make_unique<T>(std::forward<Args>(args)...);
        model->initialize();
        return model;
    }

    QString reportCreatedNotificationName() const { return m_reportCreatedNotificationName; }
    QString reportRequestedNotificationName() const { return m_reportRequestedNotificationName; }
    QString emailSubject() const { return m_emailSubject; }
    QString navigationTitle() const { return m_navigationTitle; }
    QString descriptionName() const { return m_descriptionName; }
    QVReport& report() { return m_report; }
    const QVReport& report() const { return m_report; }
    bool reportSaved() const { return m_reportSaved; }
    void setReportSaved(bool saved) { m_reportSaved = saved; }

    // Computes the results from the inputs; calculators that compute as one
    // types override it (those that solve on a button have one solver a
    // result instead).
    virtual void calculateResult() {}
    // The keys of the number fields the controller's last reading of the
    // form found empty (QVFunctionController::readFields). Most calculators
    // read an empty field as 0; the ones that work out whichever value is
    // left blank read this instead.
    QStringList blankInputs;

    // Builds the report for a request whose user info carries "title".
    // The base ignores requests; every calculator writes its own report.
    virtual void createReport(const QVariantMap& userInfo);

    // Writes the report's text file (see QVFileManager: never over another
    // file). The outcome is kept as reportFileResult(). The file counts as
    // in the making until its record is saved or keepReportFile() is called:
    // left so by a killed process, it is removed at the next start.
    WriteResult saveReportFile();
    // Archives the report at the head of the saved list.
    WriteResult saveReport();
    // Removes the text file this model wrote last, and only that one.
    void removeReportFile();
    // The text file stays without a record (an e-mailed report on a screen
    // where a save was confirmed).
    void keepReportFile();
    // How the last report's text file fared.
    const WriteResult& reportFileResult() const { return m_reportFileResult; }

    // The file name a report titled `title` built at `dateString` gets after
    // `current`: the current name grown by "_<title>_<date>_report.txt".
    // In the name, "/" and NUL become "-" so the title cannot lead into
    // another folder. When the grown name would pass what a file system
    // takes (255 bytes, less room for a " (n)" copy mark) it starts again
    // from `fileKey`, and a title too long even for that is shortened in
    // the name. The report's title itself keeps every character.
    static QString grownFileName(const QString& current, const QString& fileKey,
                                 const QString& title, const QString& dateString);
    static constexpr int maxFileNameBytes = 255 - 8;
    void sendReportCreatedNotification();

    static QString stringFromDouble(double value);

    // Why a result is what it is, in one plain line, keyed by the result's
    // property name. A model names the reason for each result it leaves NaN
    // or infinite (and may add a line to a number, such as a second root).
    void setNote(const QString& property, const QString& reason);
    void clearNotes() { m_notes.clear(); }
    // The line for `property`: the model's own, else, for a result that is
    // no number, a general one; empty for a plain number.
    QString note(const QString& property) const;
    // Every non-empty line, for the result properties of the subclass.
    QMap<QString, QString> notes() const;

    // The line for a result that passes the largest number a double holds,
    // from a huge entry or from growth over a long term.
    static QString tooLarge();

protected:
    // Gives `property`, when it holds NaN or an infinity, the first
    // non-empty line of `reasons` as its note. List the causes in the order
    // a user sees to them: an empty field, then a value out of range, then
    // tooLarge() once nothing else can be the cause. A finite value, or one
    // no listed cause fits, keeps the note it has (the general line stands
    // for a cause no model names).
    void explain(const char* property, std::initializer_list<QString> reasons);
    // Notes each of the input properties `inputs` that holds an infinity (a
    // typed "1e400") as too large, so that the entry is not taken for a
    // result of a division by zero.
    void explainEntries(std::initializer_list<const char*> inputs);

    // Sets the five names, a new report and its file key (and, in
    // calculators, its function title).
    virtual void configureNames();
    void configureObservers();

    struct Names {
        QString created;
        QString requested;
        QString emailSubject;
        QString navigationTitle;
        QString descriptionName;
        QString fileKey;
        QString functionTitle;
    };
    void setNames(const Names& names);

    // The shared report recipe: title and date, colour, heading, "Date: ",
    // the rule, `body`, the grown file name; then the file is written and the
    // created notification posted.
    void writeReport(const QVariantMap& userInfo, const QString& functionName,
                     const QString& colorHex, const QString& body);

private:
    void initialize();

    QString m_reportCreatedNotificationName;
    QString m_reportRequestedNotificationName;
    QString m_emailSubject;
    QString m_navigationTitle;
    QString m_descriptionName;
    QVReport m_report;
    QString m_fileKey;
    WriteResult m_reportFileResult;
    bool m_reportFileWritten = false;
    bool m_reportSaved = false;
    QMap<QString, QString> m_notes;
};
