#include "CalculatorHelpModel.h"

#include "framework/HtmlPages.h"

#include <iterator>

namespace {

struct Topic {
    const char* title;
    const char* source;
};

constexpr Topic topics[] = {
    {"General buttons", "general_buttons"},      {"Math Expressions", "math_expressions"},
    {"Tvm Equations", "tvm_equations"},          {"CF Analysis", "cf_analysis"},
    {"History, Storage and Recall", "hist_sto"},
};

} // namespace

int CalculatorHelpModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(std::size(topics));
}

QVariant CalculatorHelpModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Topic& topic = topics[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return QString::fromLatin1(topic.title);
    case SourceRole:
        return QString::fromLatin1(topic.source);
    default:
        return {};
    }
}

QHash<int, QByteArray> CalculatorHelpModel::roleNames() const
{
    return {{TitleRole, "title"}, {SourceRole, "source"}};
}

QString CalculatorHelpModel::loadHtmlFile(const QString& source)
{
    return HtmlPages::page(source);
}
