#include "CalculatorHelpModel.h"

#include "CalculatorKeypad.h"
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
    {"History, Storage and Recall", "hist_sto"}, {"Keyboard", "keyboard"},
};

// The keypad's keyboard map as a page: every key and the key that presses it.
QString keyboardPage()
{
    QString html = QStringLiteral(
        "<p>Every key of the keypad has a key on the keyboard. Digits, operators, the point, "
        "parentheses and = type themselves; the financial and function keys take Alt and a "
        "letter, and their cash-flow counterparts Alt+Shift and the same letter. Tab walks "
        "the keys (the focused one is ringed) and Space presses it.</p>"
        "<table border=\"0\" cellpadding=\"4\" cellspacing=\"0\">"
        "<tr><th align=\"left\">Key</th><th align=\"left\">Keyboard</th></tr>");
    const CalculatorKeypad keypad;
    for (const QVariant& row : keypad.keyboardMap()) {
        const QVariantMap key = row.toMap();
        html += QStringLiteral("<tr><td><b>%1</b></td><td>%2</td></tr>")
                    .arg(key.value(QStringLiteral("title")).toString().toHtmlEscaped(),
                         key.value(QStringLiteral("shortcut")).toString().toHtmlEscaped());
    }
    return html + QStringLiteral("</table>");
}

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
    if (source == u"keyboard")
        return keyboardPage();
    return HtmlPages::page(source);
}
