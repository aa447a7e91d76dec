#include "NpvTableModel.h"

#include "NpvModel.h"

#include <algorithm>

NpvTableModel::NpvTableModel(QObject* parent) : QObject(parent) {}

void NpvTableModel::loadCashArray()
{
    const int wanted = std::clamp(period, 0, int(maximumCashFlows));
    while (cashArray.size() < wanted)
        cashArray.append(0.0);
}

void NpvTableModel::loadNpvArray()
{
    loadCashArray();
    const auto row = [this](const QString& label, bool hidden) -> NpvCell& {
        tableArray.append(NpvCell());
        tableArray.last().leftLabelStr = label;
        tableArray.last().fieldHidden = hidden;
        return tableArray.last();
    };
    tableArray.clear();
    row(QStringLiteral("Period"), false).intFieldValue = period;
    row(QStringLiteral("Discount Rate"), false).fieldValue = discountRate;
    const int flows = std::min(period, int(cashArray.size()));
    for (int t = 0; t < flows; ++t)
        row(QStringLiteral("Cash Flow %1").arg(t), false).fieldValue = cashArray.at(t);
    row(QStringLiteral("Net Present Value"), true).result = npv;
    row(QStringLiteral("Internal Rate of Return"), true).result = irr;
}

void NpvTableModel::calculateResults()
{
    loadCashArray();
    npv = NpvModel::netPresentValue(cashArray, period, discountRate);
    irr = NpvModel::internalRateOfReturn(cashArray, period);
}
