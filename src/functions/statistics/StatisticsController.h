#pragma once

#include "StatisticsModel.h"
#include "charts/ScatterChartSource.h"
#include "framework/PairedRows.h"
#include "framework/QVFunctionController.h"

#include <QAbstractListModel>
#include <QLocale>
#include <QStringList>
#include <optional>
#include <vector>

// Text pasted into the table (from a spreadsheet, a CSV file, a column of
// a document), read line by line: one or two cells a line, x then y.
// Cells are split on tabs when the text has any, else on ";", else on ","
// (unless "," is the locale's decimal separator), else on white space; each
// cell is read by the app's one number rule. A first line that is not
// numbers is a header; any later line that is not one or two numbers is
// skipped, and both are told. Blank lines carry nothing and are passed
// over. At most `maximumRows` rows are taken.
struct PastedRows {
    QStringList x;
    QStringList y;
    bool header = false;
    QList<int> skippedLines; // numbered from 1, as a text editor counts
    int linesLeftOver = 0;   // lines past the table's last row

    static PastedRows read(const QString& text, const QLocale& locale = QLocale());
    // "Pasted 36 rows.", with what was skipped after it.
    QString message() const;
};

// The statistics screen: the number of rows (1 to 10,000), each an x and
// an optional y, the model of the regression (a choice) and an x and a y to
// predict from; the results follow every edit. Rows can be pasted from the
// clipboard (pasteRows), replacing the table. A row with both cells empty
// is no row; a cell that cannot be read is marked and blanks the results,
// with a note naming its row. Hidden rows keep what was typed in them. The
// pairs and the fitted curve are drawn as a scatter chart
// (ScatterChartSource). Its fields, tables and results are those of its
// description (StatisticsDescription.cpp).
class StatisticsController : public QVFunctionController, public ScatterChartSource {
    Q_OBJECT
    Q_INTERFACES(ScatterChartSource)
    Q_PROPERTY(int rowCount READ rowCount NOTIFY rowsChanged)
    Q_PROPERTY(QAbstractListModel* rows READ rows CONSTANT)
    // What the last paste did; empty before one and after an edit.
    Q_PROPERTY(QString pasteMessage READ pasteMessage NOTIFY pasteMessageChanged)
    // Whether there are pairs to draw, and a number that changes whenever
    // the chart is to be drawn again.
    Q_PROPERTY(bool chartShown READ chartShown NOTIFY chartChanged)
    Q_PROPERTY(int chartRevision READ chartRevision NOTIFY chartChanged)

public:
    // Ready to use: the model and view are made here.
    explicit StatisticsController(QObject* parent = nullptr);

    // Fills the first rows of "x" or "y" with `values`, showing at least as
    // many rows; false for another table or too many values.
    bool setTableInput(const QString& property, const QStringList& values) override;
    QStringList tableTexts(const QString& property) const override;
    void fieldChanged() override;
    QByteArray scheduleCsv() const override;
    ScatterData scatterData() const override;
    // The model's sheet; the results follow the word chosen.
    Q_INVOKABLE void modelClicked();

    // Replaces the table with the rows of `text` (see PastedRows) and says
    // what was pasted in pasteMessage; a text without one row of numbers
    // leaves the table as it is and says so.
    Q_INVOKABLE void pasteText(const QString& text);
    // The same with the text on the clipboard.
    Q_INVOKABLE void pasteRows();

    int rowCount() const { return m_rows.shown(); }
    QAbstractListModel* rows() { return &m_rows; }
    QString pasteMessage() const { return m_pasteMessage; }
    bool chartShown() const { return m_chartShown; }
    int chartRevision() const { return m_chartRevision; }
    Q_INVOKABLE QString xText(int row) const { return m_rows.text(0, row); }
    Q_INVOKABLE QString yText(int row) const { return m_rows.text(1, row); }
    // Why a row's x or y cannot be read; empty when it can, or is empty.
    Q_INVOKABLE QString xProblem(int row) const;
    Q_INVOKABLE QString yProblem(int row) const;
    // One edit of a row's x or y, as its field sends it.
    Q_INVOKABLE void xChanged(int row, const QString& text);
    Q_INVOKABLE void yChanged(int row, const QString& text);

    StatisticsModel* statisticsModel() const { return static_cast<StatisticsModel*>(model()); }

signals:
    void rowsChanged();
    void pasteMessageChanged();
    void chartChanged();

protected:
    void connectMvc() override;

private:
    // What a cell's text reads as, kept with that text: an edit changes
    // one cell, and reading all 20,000 again after each would take longer
    // than all the statistics.
    struct ReadCell {
        QString text; // as read; null before the first reading
        QString problem;
        std::optional<double> value;
    };
    const ReadCell& readCell(int column, int row) const;
    void cellChanged(int column, int row, const QString& text);
    void setPasteMessage(const QString& message);
    // The x or y to predict from: NaN when the field is empty, and why it
    // cannot be read in `problem`.
    double prediction(const QString& outlet, const QString& name, QString& problem) const;
    void compute();

    // The x and y as typed, 5 rows shown at first.
    PairedRows m_rows;
    mutable std::vector<ReadCell> m_read[2];
    // The locale the cells were read in: another one reads them again.
    QLocale m_readLocale;
    QString m_pasteMessage;
    bool m_chartShown = false;
    int m_chartRevision = 0;
};
