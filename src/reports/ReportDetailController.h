#pragma once

#include "ReportDetailModel.h"
#include "store/QVReport.h"

#include <QObject>
#include <QString>
#include <QVariantMap>

class Presenter;

// The report screen: shows one report's text file and e-mails it again. A
// report that kept its calculator's inputs opens again in that calculator,
// and can be duplicated under a new title (a what-if to change).
class ReportDetailController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString reportFilePath READ reportFilePath WRITE setReportFilePath NOTIFY
                   reportFilePathChanged)
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    Q_PROPERTY(bool fileFound READ fileFound NOTIFY textChanged)
    // Why a text file that is there was not read ("The report's text is not
    // a regular file."); empty when it was read or is simply missing.
    Q_PROPERTY(QString problem READ problem NOTIFY textChanged)
    // The calculator the report can be opened in (its screen identifier);
    // empty for a report saved before reports kept their inputs.
    Q_PROPERTY(QString calculatorScreen READ calculatorScreen NOTIFY textChanged)

public:
    explicit ReportDetailController(QObject* parent = nullptr);

    QString reportFilePath() const { return m_model.reportFilePath(); }
    void setReportFilePath(const QString& path);
    QString text() const { return m_text; }
    bool fileFound() const { return m_fileFound; }
    QString problem() const { return m_problem; }
    QString calculatorScreen() const;
    void setPresenter(Presenter* presenter) { m_presenter = presenter; }
    // The presenter given, or else the app's default one.
    Presenter* presenter() const;

    // Reads the text file; a missing file shows an empty page, one that is
    // refused (not a regular file, too large, a link out of the documents
    // folder) an empty page that says why.
    Q_INVOKABLE void loadReport();
    // The "Export" sheet: "Cancel", "Send Email" or "Save as PDF", and for a
    // report that kept its inputs "Open in Calculator" and "Duplicate".
    Q_INVOKABLE void actionClicked();
    // Asks for the calculator's screen with the report's inputs
    // (openInCalculatorRequested); nothing for a report without them.
    Q_INVOKABLE void openInCalculator();
    // Asks for a title (the report's own, with " (copy)", offered) and
    // saves a copy of the record and its text file under it, dated now; says
    // why when it cannot.
    Q_INVOKABLE void duplicate();
    // The same with the title given; false (and `error`) when not saved.
    bool duplicateAs(const QString& title, QString* error = nullptr);
    // Writes the report as a PDF into the documents folder (A4, or Letter
    // where the locale measures in inches) under a new name, and says where
    // it went, or why it could not be written; a chart picture that cannot
    // be read is left out, and the alert says why.
    Q_INVOKABLE void saveAsPdf();
    // Mails the file under its name plus ".txt"; nothing is deleted after.
    Q_INVOKABLE void showEmail();

    static QString attachmentNameForPath(const QString& path);

signals:
    void reportFilePathChanged();
    void textChanged();
    void openInCalculatorRequested(const QString& screen, const QVariantMap& inputs);
    // A copy was saved: the list shows it first.
    void duplicated(const QString& title);

private:
    // The record whose text file this is; an empty record when none is.
    void findRecord();
    QVReport m_record;
    ReportDetailModel m_model;
    Presenter* m_presenter = nullptr;
    QString m_text;
    QString m_problem;
    bool m_fileFound = false;
};
