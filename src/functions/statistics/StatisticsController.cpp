#include "StatisticsController.h"

#include "numerics/NumberFormat.h"
#include "platform/Clipboard.h"

#include <QRegularExpression>
#include <cmath>
#include <limits>

namespace {
const QString rowCountField = QStringLiteral("rowCountField");
const QString modelButton = QStringLiteral("modelButton");
const QString predictXField = QStringLiteral("predictXField");
const QString predictYField = QStringLiteral("predictYField");
const QString predictedYLabel = QStringLiteral("predictedYLabel");
const QString predictedXLabel = QStringLiteral("predictedXLabel");

std::optional<double> cellValue(const QString& text)
{
    if (text.trimmed().isEmpty())
        return std::nullopt;
    return NumberFormat::readNumber(text);
}

// "line 2", "lines 2 and 5", "lines 2, 5 and 9", "lines 2, 5, 9 and 4
// more".
QString linesText(const QList<int>& lines)
{
    constexpr int named = 3;
    QStringList numbers;
    for (int k = 0; k < lines.size() && k < named; ++k)
        numbers << QString::number(lines.at(k));
    if (numbers.size() == 1)
        return QStringLiteral("line ") + numbers.first();
    if (lines.size() > named)
        return QStringLiteral("lines %1 and %2 more")
            .arg(numbers.join(QStringLiteral(", ")))
            .arg(lines.size() - named);
    const QString last = numbers.takeLast();
    return QStringLiteral("lines %1 and %2").arg(numbers.join(QStringLiteral(", ")), last);
}
} // namespace

PastedRows PastedRows::read(const QString& text, const QLocale& locale)
{
    PastedRows pasted;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    }
    // One separator for the whole text, so that every line is split alike.
    const auto anyLineHas = [&lines](QChar c) {
        return std::any_of(lines.begin(), lines.end(),
                           [c](const QString& line) { return line.contains(c); });
    };
    std::optional<QChar> separator;
    if (anyLineHas(QLatin1Char('\t')))
        separator = QLatin1Char('\t');
    else if (anyLineHas(QLatin1Char(';')))
        separator = QLatin1Char(';');
    else if (NumberFormat::decimalSeparator(locale) != QLatin1String(",") &&
             anyLineHas(QLatin1Char(',')))
        separator = QLatin1Char(',');
    static const QRegularExpression whiteSpace(QStringLiteral("\\s+"));
    const bool commaDecimals = separator == QLatin1Char(';') &&
                               NumberFormat::decimalSeparator(locale) != QLatin1String(",");

    bool first = true;
    for (qsizetype k = 0; k < lines.size(); ++k) {
        const QString line = lines.at(k).trimmed();
        if (line.isEmpty())
            continue;
        QStringList cells = separator ? line.split(*separator) : line.split(whiteSpace);
        for (QString& cell : cells) {
            cell = cell.trimmed();
            // A ";" file comes from where "," is the decimal separator
            // (a spreadsheet's CSV in such a language): there "100,5" is a
            // decimal, whatever this desktop writes. It is put in this
            // desktop's way, so the cell reads as what the file meant.
            if (commaDecimals && cell.count(QLatin1Char(',')) == 1 &&
                !cell.contains(QLatin1Char('.')))
                cell.replace(QLatin1Char(','), NumberFormat::decimalSeparator(locale));
        }
        // A separator at the end of a line ("1;2;") makes no third column.
        while (cells.size() > 1 && cells.last().isEmpty())
            cells.removeLast();
        const auto readable = [&locale](const QString& cell) {
            return cell.isEmpty() || NumberFormat::readNumber(cell, locale).has_value();
        };
        const bool numbers = cells.size() <= 2 &&
                             std::all_of(cells.begin(), cells.end(), readable) &&
                             std::any_of(cells.begin(), cells.end(),
                                         [](const QString& cell) { return !cell.isEmpty(); });
        const bool wasFirst = std::exchange(first, false);
        if (!numbers) {
            if (wasFirst)
                pasted.header = true;
            else
                pasted.skippedLines << int(k + 1);
            continue;
        }
        if (pasted.x.size() >= StatisticsModel::maximumRows) {
            ++pasted.linesLeftOver;
            continue;
        }
        pasted.x << cells.value(0);
        pasted.y << cells.value(1);
    }
    return pasted;
}

QString PastedRows::message() const
{
    if (x.isEmpty())
        return QStringLiteral("Nothing was pasted: no line holds one or two numbers.");
    QString message = x.size() == 1 ? QStringLiteral("Pasted 1 row.")
                                    : QStringLiteral("Pasted %1 rows.").arg(x.size());
    if (header)
        message += QStringLiteral(" The first line was taken as a header.");
    if (!skippedLines.isEmpty())
        message +=
            QStringLiteral(" Skipped %1: not one or two numbers.").arg(linesText(skippedLines));
    if (linesLeftOver > 0)
        message += QStringLiteral(" %1 more lines did not fit: the table takes %2 rows.")
                       .arg(linesLeftOver)
                       .arg(StatisticsModel::maximumRows);
    return message;
}

StatisticsController::StatisticsController(QObject* parent)
    : QVFunctionController(parent),
      m_rows(
          {"xCell", "yCell", "xProblem", "yProblem"}, StatisticsModel::maximumRows, 5,
          [this](int row, int column) { return column == 0 ? xProblem(row) : yProblem(row); }, this)
{
    load();
    // The results of the empty table (n = 0, and what to enter), rather than
    // blank lines until the first edit.
    compute();
}

void StatisticsController::connectMvc()
{
    setModel(QVFunctionModel::create<StatisticsModel>());
    auto* view = new QVFunctionView(this);
    setView(view);
    view->setText(rowCountField, QString::number(m_rows.shown()));
    view->setText(modelButton, statisticsModel()->regressionModel);
}

void StatisticsController::modelClicked()
{
    presentChoice(QStringLiteral("model"), QStringLiteral("Model"),
                  QStringLiteral("Which curve should be fitted to the points?"),
                  [this](const QString& word) { statisticsModel()->regressionModel = word; });
}

const StatisticsController::ReadCell& StatisticsController::readCell(int column, int row) const
{
    static const ReadCell none;
    if (row < 0 || row >= m_rows.capacity())
        return none;
    std::vector<ReadCell>& cells = m_read[column & 1];
    // Kept for the rows read so far, not the whole capacity (10,000 rows).
    if (cells.size() <= size_t(row))
        cells.resize(size_t(row) + 1);
    ReadCell& read = cells[size_t(row)];
    const QString& text = m_rows.column(column).at(row);
    if (!read.text.isNull() && read.text == text)
        return read;
    read.text = text.isNull() ? QLatin1String("") : text;
    read.problem = NumberFormat::problemComputingWith(text);
    read.value = cellValue(text);
    return read;
}

QString StatisticsController::xProblem(int row) const
{
    return readCell(0, row).problem;
}

QString StatisticsController::yProblem(int row) const
{
    return readCell(1, row).problem;
}

QStringList StatisticsController::tableTexts(const QString& property) const
{
    if (property == QLatin1String("x"))
        return withoutTrailingEmptyRows(m_rows.column(0));
    if (property == QLatin1String("y"))
        return withoutTrailingEmptyRows(m_rows.column(1));
    return {};
}

bool StatisticsController::setTableInput(const QString& property, const QStringList& values)
{
    const bool xs = property == QLatin1String("x");
    // The table shows at least as many rows as were given.
    if ((!xs && property != QLatin1String("y")) || !m_rows.fill(xs ? 0 : 1, values))
        return false;
    qvFunctionView()->setText(rowCountField, QString::number(m_rows.shown()));
    compute();
    return true;
}

void StatisticsController::cellChanged(int column, int row, const QString& text)
{
    if (!m_rows.setText(column, row, text))
        return;
    setPasteMessage({});
    compute();
}

void StatisticsController::xChanged(int row, const QString& text)
{
    cellChanged(0, row, text);
}

void StatisticsController::yChanged(int row, const QString& text)
{
    cellChanged(1, row, text);
}

void StatisticsController::pasteText(const QString& text)
{
    const PastedRows pasted = PastedRows::read(text);
    if (!pasted.x.isEmpty()) {
        // The pasted rows replace the table, the hidden rows too.
        m_rows.replace(pasted.x, pasted.y);
        qvFunctionView()->setText(rowCountField, QString::number(m_rows.shown()));
        compute();
    }
    setPasteMessage(pasted.message());
}

void StatisticsController::pasteRows()
{
    const QString text = Clipboard::text();
    if (text.trimmed().isEmpty()) {
        setPasteMessage(QStringLiteral("Nothing was pasted: the clipboard holds no text."));
        return;
    }
    pasteText(text);
}

void StatisticsController::setPasteMessage(const QString& message)
{
    if (message == m_pasteMessage)
        return;
    m_pasteMessage = message;
    emit pasteMessageChanged();
}

void StatisticsController::fieldChanged()
{
    // Only 1 to 10,000 rows are taken; anything else leaves the count as it
    // is.
    const double count = fieldNumber(rowCountField);
    if (count >= 1 && count <= StatisticsModel::maximumRows)
        m_rows.setShown(int(count));
    compute();
}

double StatisticsController::prediction(const QString& outlet, const QString& name,
                                        QString& problem) const
{
    const QString text = qvFunctionView()->text(outlet);
    problem.clear();
    if (text.trimmed().isEmpty())
        return std::numeric_limits<double>::quiet_NaN();
    if (const QString unreadable = fieldProblem(outlet); !unreadable.isEmpty()) {
        problem = QStringLiteral("The %1 to predict from cannot be read. %2").arg(name, unreadable);
        return std::numeric_limits<double>::quiet_NaN();
    }
    return NumberFormat::numberFromText(text);
}

void StatisticsController::compute()
{
    StatisticsModel* m = statisticsModel();
    m->regressionModel = qvFunctionView()->text(modelButton);
    m->predictX = prediction(predictXField, QStringLiteral("x"), m->predictXProblem);
    m->predictY = prediction(predictYField, QStringLiteral("y"), m->predictYProblem);
    if (QLocale() != m_readLocale) {
        m_read[0].clear();
        m_read[1].clear();
        m_readLocale = QLocale();
    }
    m->rows.clear();
    // Rows are numbered from 1, as the screen shows them.
    m->dataProblem = m_rows.readRows(
        QStringLiteral("Row"), [](int row) { return row + 1; },
        [this, m](int row) {
            m->rows.append({row + 1, readCell(0, row).value, readCell(1, row).value});
        });
    m->calculateResult();
    showResults();
    // A prediction nobody asked for stays blank on the screen (its note
    // says how to ask).
    if (m->predictXProblem.isEmpty() && std::isnan(m->predictX))
        qvFunctionView()->setText(predictedYLabel, QString());
    if (m->predictYProblem.isEmpty() && std::isnan(m->predictY))
        qvFunctionView()->setText(predictedXLabel, QString());
    m_chartShown = !m->chartData().isEmpty();
    ++m_chartRevision;
    emit chartChanged();
    emit rowsChanged();
}

QByteArray StatisticsController::scheduleCsv() const
{
    return statisticsModel()->scheduleCsv();
}

ScatterData StatisticsController::scatterData() const
{
    return statisticsModel()->chartData();
}
