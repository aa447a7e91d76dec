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

QString DatedCashFlowsController::dateProblem(int row) const
{
    const QString date = m_rows.text(0, row);
    // An amount needs a date to be placed in time.
    if (date.trimmed().isEmpty() && !m_rows.text(1, row).trimmed().isEmpty())
        return notADate;
    return DateText::problemWith(date);
}

QString DatedCashFlowsController::amountProblem(int row) const
{
    const QString amount = m_rows.text(1, row);
    if (QString problem = NumberFormat::problemWith(amount); !problem.isEmpty())
        return problem;
    // "1e400" or "Infinity" read, but no sum can take them: named like any
    // other amount that cannot be used, never left out.
    if (const std::optional<double> value = NumberFormat::readNumber(amount);
        value && !std::isfinite(*value))
        return QStringLiteral("Too large a number to compute with.");
    return {};
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
    m->flows.clear();
    m->flowsProblem.clear();
    int unreadable = 0;
    QString firstProblem;
    int firstRow = -1;
    for (int row = 0; row < m_rows.shown(); ++row) {
        const QString date = m_rows.text(0, row);
        const QString amount = m_rows.text(1, row);
        if (date.trimmed().isEmpty() && amount.trimmed().isEmpty())
            continue; // an empty row is no flow
        QString problem = dateProblem(row);
        if (problem.isEmpty())
            problem = amountProblem(row);
        if (!problem.isEmpty()) {
            if (unreadable++ == 0) {
                firstRow = row;
                firstProblem = problem;
            }
            continue;
        }
        m->flows.append({*DateText::readIsoDate(date), NumberFormat::numberFromText(amount), row});
    }
    if (unreadable == 1)
        m->flowsProblem =
            QStringLiteral("Cash flow %1 cannot be read. %2").arg(firstRow).arg(firstProblem);
    else if (unreadable > 1)
        m->flowsProblem = QStringLiteral("Cash flow %1 and %2 more cannot be read. %3")
                              .arg(firstRow)
                              .arg(unreadable - 1)
                              .arg(firstProblem);
    m->calculateResult();
    showResults();
    emit rowsChanged();
}
