#include "FunctionTableModel.h"

FunctionTableModel::FunctionTableModel(QObject* parent) : QAbstractListModel(parent)
{
    configureFunctionArray();
}

void FunctionTableModel::configureFunctionArray()
{
    m_functionArray = {
        {QStringLiteral("Time Value of Money Calculator"), QStringLiteral("tvm")},
        {QStringLiteral("Return on Investment Calculator"), QStringLiteral("roi")},
        {QStringLiteral("Compound Interest Calculator"), QStringLiteral("cmp")},
        {QStringLiteral("Net Present Value Calculator"), QStringLiteral("npv")},
        {QStringLiteral("Tip Calculator"), QStringLiteral("tip")},
        {QStringLiteral("Bond Calculator"), QStringLiteral("bond")},
        {QStringLiteral("Stock Calculators"), QStringLiteral("stock")},
        // Tallyvane's own calculators beyond the catalogue's seven rows.
        {QStringLiteral("Loans and More"), QStringLiteral("loans")},
    };
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
        return QStringLiteral("qrc:/icons/%1.png").arg(cell.imageName);
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
    static const QList<std::pair<QString, QString>> dispatch = {
        {QStringLiteral("Time Value of Money Calculator"), QStringLiteral("TvmController")},
        {QStringLiteral("Tip Calculator"), QStringLiteral("TipController")},
        {QStringLiteral("Return on Investment Calculator"), QStringLiteral("RoiController")},
        {QStringLiteral("Net Present Value Calculator"), QStringLiteral("NpvController")},
        {QStringLiteral("Compound Interest Calculator"), QStringLiteral("CmpController")},
        {QStringLiteral("Bond Calculator"), QStringLiteral("BondController")},
        {QStringLiteral("Stock Calculators"), QStringLiteral("StockTableController")},
        {QStringLiteral("Loans and More"), QStringLiteral("LoansTableController")},
    };
    QStringList screens;
    for (const auto& [known, identifier] : dispatch) {
        if (known == title)
            screens << identifier;
    }
    return screens;
}
