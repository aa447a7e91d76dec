#include "FunctionTableModel.h"

#include "CalculatorRegistry.h"

FunctionTableModel::FunctionTableModel(QObject* parent) : QAbstractListModel(parent)
{
    configureFunctionArray();
}

// The Functions tab's calculators in the registry's order (time value of
// money, return on investment, compound interest, net present value, tip,
// bond), then the three lists.
static QList<std::pair<QString, QString>> groupRows()
{
    return {{QStringLiteral("Stock Calculators"), QStringLiteral("stock")},
            // Tallyvane's own calculators beyond the catalogue's seven rows.
            {QStringLiteral("Loans and More"), QStringLiteral("loans")},
            // Bonds between real dates and the date worksheet.
            {QStringLiteral("Bonds and Dates"), QStringLiteral("dates")},
            // Growth, margins, statistics: the worksheets of a business
            // calculator.
            {QStringLiteral("Business and Statistics"), QStringLiteral("business")}};
}

void FunctionTableModel::configureFunctionArray()
{
    m_functionArray.clear();
    for (const CalculatorDescription* d : CalculatorRegistry::calculators()) {
        if (d->entry.list == CatalogueEntry::List::Functions)
            m_functionArray.append({d->entry.title, d->entry.icon});
    }
    for (const auto& [title, image] : groupRows())
        m_functionArray.append({title, image});
}

int FunctionTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_functionArray.size());
}

QVariant FunctionTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_functionArray.size())
        return {};
    const FunctionCell& cell = m_functionArray.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return cell.title;
    case ImageNameRole:
        return cell.imageName;
    case IconRole:
        return QStringLiteral("image://icons/%1").arg(cell.imageName);
    default:
        return {};
    }
}

QHash<int, QByteArray> FunctionTableModel::roleNames() const
{
    return {{TitleRole, "title"}, {ImageNameRole, "imageName"}, {IconRole, "iconUrl"}};
}

QStringList FunctionTableModel::screenIdentifiersForTitle(const QString& title)
{
    // By title, as the list shows it: every match opens (a title that
    // matched twice would open twice); none opens nothing.
    QStringList screens;
    for (const CalculatorDescription* d : CalculatorRegistry::calculators()) {
        if (d->entry.list == CatalogueEntry::List::Functions && d->entry.title == title)
            screens << d->screen;
    }
    if (title == u"Stock Calculators")
        screens << QStringLiteral("StockTableController");
    if (title == u"Loans and More")
        screens << QStringLiteral("LoansTableController");
    if (title == u"Bonds and Dates")
        screens << QStringLiteral("BondsTableController");
    if (title == u"Business and Statistics")
        screens << QStringLiteral("BusinessTableController");
    return screens;
}
