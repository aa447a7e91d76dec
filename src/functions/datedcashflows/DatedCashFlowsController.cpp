#include "DatedCashFlowsController.h"

#include "numerics/DateText.h"
#include "numerics/NumberFormat.h"

#include <cmath>

namespace {
const QString rowCountField = QStringLiteral("rowCountField");
const QString rateField = QStringLiteral("rateField");
const QString basisButton = QStringLiteral("basisButton");
const QString notADate = QStringLiteral("Not a date: use YYYY-MM-DD");
} // namespace

DatedCashFlowsController::DatedCashFlowsController(QObject* parent)
    : QVFunctionController(parent),
      m_rows(
          {"date", "amount", "dateProblem", "amountProblem"}, DatedCashFlowsModel::maximumRows, 4,
          [this](int row, int column) {
              return column == 0 ? dateProblem(row) : amountProblem(row);
          },
          this)
{
    load();
}

void DatedCashFlowsController::connectMvc()
{
    setModel(QVFunctionModel::create<DatedCashFlowsModel>());
    auto* view = new QVFunctionView(this);
    setView(view);
    view->setText(rowCountField, QString::number(m_rows.shown()));
    view->setText(basisButton, datedCashFlowsModel()->basis);
}

void DatedCashFlowsController::basisClicked()
{
    presentChoice(QStringLiteral("basis"), QStringLiteral("Day Count Basis"),
                  QStringLiteral("How should the years between the dates be counted?"),
                  [this](const QString& word) { datedCashFlowsModel()->basis = word; });
}

const DatedCashFlowsController::ReadRow& DatedCashFlowsController::readRow(int row) const
{
    static const ReadRow none;
    if (row < 0 || row >= m_rows.capacity())
        return none;
    // Kept for the rows read so far, not the whole capacity (10,000 rows):
    // a few rows cost a few entries.
    if (m_read.size() <= size_t(row))
        m_read.resize(size_t(row) + 1);
    ReadRow& read = m_read[size_t(row)];
    const QString& dateText = m_rows.column(0).at(row);
    const QString& amountText = m_rows.column(1).at(row);
    if (!read.dateText.isNull() && read.dateText == dateText && read.amountText == amountText)
        return read;
    read.dateText = dateText.isNull() ? QLatin1String("") : dateText;
    read.amountText = amountText;
    // An amount needs a date to be placed in time.
    read.dateProblem = dateText.trimmed().isEmpty() && !amountText.trimmed().isEmpty()
                           ? notADate
                           : DateText::problemWith(dateText);
    // "1e400" or "Infinity" read, but no sum can take them: named like any
    // other amount that cannot be used, never left out.
    read.amountProblem = NumberFormat::problemComputingWith(amountText);
    read.date = DateText::readIsoDate(dateText).value_or(QDate());
    read.amount = NumberFormat::numberFromText(amountText);
    return read;
}

QString DatedCashFlowsController::dateProblem(int row) const
{
    return readRow(row).dateProblem;
}

QString DatedCashFlowsController::amountProblem(int row) const
{
    return readRow(row).amountProblem;
}

QStringList DatedCashFlowsController::tableTexts(const QString& property) const
{
    if (property == QLatin1String("dates"))
        return withoutTrailingEmptyRows(m_rows.column(0));
    if (property == QLatin1String("amounts"))
        return withoutTrailingEmptyRows(m_rows.column(1));
    return {};
}

bool DatedCashFlowsController::setTableInput(const QString& property, const QStringList& values)
{
    const bool dates = property == QLatin1String("dates");
    // The table shows at least as many rows as were given.
    if ((!dates && property != QLatin1String("amounts")) || !m_rows.fill(dates ? 0 : 1, values))
        return false;
    qvFunctionView()->setText(rowCountField, QString::number(m_rows.shown()));
    compute();
    return true;
}

void DatedCashFlowsController::dateChanged(int row, const QString& text)
{
    if (m_rows.setText(0, row, text))
        compute();
}

void DatedCashFlowsController::amountChanged(int row, const QString& text)
{
    if (m_rows.setText(1, row, text))
        compute();
}

void DatedCashFlowsController::fieldChanged()
{
    // Only 2 to 10,000 rows are taken; anything else leaves the count as it
    // is.
    const double count = fieldNumber(rowCountField);
    if (count >= 2 && count <= DatedCashFlowsModel::maximumRows)
        m_rows.setShown(int(count));
    compute();
}

void DatedCashFlowsController::compute()
{
    DatedCashFlowsModel* m = datedCashFlowsModel();
    m->rate = fieldNumber(rateField);
    const QString rateProblem = fieldProblem(rateField);
    m->rateProblem = rateProblem.isEmpty()
                         ? QString()
                         : QStringLiteral("The rate cannot be read. %1").arg(rateProblem);
    if (QLocale() != m_readLocale) {
        m_read.clear();
        m_readLocale = QLocale();
    }
    m->flows.clear();
    // Cash flows are numbered from 0, as CF0 is.
    m->flowsProblem = m_rows.readRows(
        QStringLiteral("Cash flow"), [](int row) { return row; },
        [this, m](int row) {
            const ReadRow& read = readRow(row);
            m->flows.append({read.date, read.amount, row});
        });
    m->calculateResult();
    showResults();
    emit rowsChanged();
}
