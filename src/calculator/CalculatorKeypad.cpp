#include "CalculatorKeypad.h"

#include "platform/NotificationCenter.h"

#include <QHash>
#include <cmath>

const QString CalculatorKeypad::notificationName =
    QStringLiteral("CalculatorButtonClickedNotification");

namespace {

const QString zeroKey = QStringLiteral("0");

QString kindOf(const QString& title)
{
    static const QHash<QString, QString> kinds = {
        {"CPT", "financial"},    {"ENTER", "financial"},  {"\u2191", "edit"},
        {"\u2193", "edit"},      {"HELP", "function"},    {"2ND", "toggle"},
        {"CF", "toggle"},        {"NPV", "financial"},    {"IRR", "financial"},
        {"\u21e6", "edit"},      {"N", "financial"},      {"I/Y", "financial"},
        {"PV", "financial"},     {"PMT", "financial"},    {"FV", "financial"},
        {"C/Y", "financial"},    {"P/Y", "financial"},    {"BEG", "toggle"},
        {"\u221ax", "function"}, {"y\u02e3", "function"}, {"(", "function"},
        {")", "function"},       {"\u2190", "edit"},      {"\u2192", "edit"},
        {"/", "operator"},       {"LN", "function"},      {"*", "operator"},
        {"STO", "function"},     {"-", "operator"},       {"RCL", "function"},
        {"+", "operator"},       {"CE", "edit"},          {"=", "operator"},
    };
    return kinds.value(title, QStringLiteral("digit"));
}

// The keys that take Alt (and Shift for the cash-flow counterpart) or a
// function key, by the key's primary title.
struct KeyShortcut {
    const char16_t* title;
    int key;
    bool shift;
    const char* text; // as tooltips show it
};

constexpr KeyShortcut shortcuts[] = {
    {u"CPT", Qt::Key_C, false, "Alt+C"},      {u"ENTER", Qt::Key_E, false, "Alt+E"},
    {u"\u2191", Qt::Key_Up, false, "Alt+Up"}, {u"\u2193", Qt::Key_Down, false, "Alt+Down"},
    {u"HELP", Qt::Key_F1, false, "F1"},       {u"2ND", Qt::Key_2, false, "Alt+2"},
    {u"CF", Qt::Key_W, false, "Alt+W"},       {u"NPV", Qt::Key_N, true, "Alt+Shift+N"},
    {u"IRR", Qt::Key_I, true, "Alt+Shift+I"}, {u"N", Qt::Key_N, false, "Alt+N"},
    {u"I/Y", Qt::Key_I, false, "Alt+I"},      {u"PV", Qt::Key_V, false, "Alt+V"},
    {u"PMT", Qt::Key_M, false, "Alt+M"},      {u"FV", Qt::Key_F, false, "Alt+F"},
    {u"C/Y", Qt::Key_Y, true, "Alt+Shift+Y"}, {u"P/Y", Qt::Key_Y, false, "Alt+Y"},
    {u"BEG", Qt::Key_B, false, "Alt+B"},      {u"\u221ax", Qt::Key_Q, false, "Alt+Q"},
    {u"LN", Qt::Key_L, false, "Alt+L"},       {u"STO", Qt::Key_S, false, "Alt+S"},
    {u"RCL", Qt::Key_R, false, "Alt+R"},
};

// The keys that type themselves, as tooltips show them.
QString typedKeyText(const QString& title)
{
    static const QHash<QString, QString> typed = {
        {QStringLiteral("\u21e6"), QStringLiteral("Backspace")},
        {QStringLiteral("CE"), QStringLiteral("Esc")},
        {QStringLiteral("="), QStringLiteral("= or Enter")},
        {QStringLiteral("y\u02e3"), QStringLiteral("^")},
        {QStringLiteral("\u2190"), QStringLiteral("Left")},
        {QStringLiteral("\u2192"), QStringLiteral("Right")},
    };
    return typed.value(title, title);
}

} // namespace

CalculatorKeypad::CalculatorKeypad(QObject* parent) : QAbstractListModel(parent)
{
    const auto key = [](const char16_t* title, const char16_t* second = nullptr) {
        return CalculatorButtonModel{QString::fromUtf16(title),
                                     second ? QString::fromUtf16(second) : QString()};
    };
    m_buttons = {
        key(u"CPT"),
        key(u"ENTER"),
        key(u"\u2191"),
        key(u"\u2193"),
        key(u"HELP"),
        key(u"2ND"),
        key(u"CF"),
        key(u"NPV"),
        key(u"IRR"),
        key(u"\u21e6"),
        key(u"N"),
        key(u"I/Y"),
        key(u"PV"),
        key(u"PMT"),
        key(u"FV"),
        key(u"C/Y"),
        key(u"P/Y"),
        key(u"BEG"),
        key(u"\u221ax"),
        key(u"y\u02e3"),
        key(u"(", u"SIN"),
        key(u")", u"COS"),
        key(u"\u2190"),
        key(u"\u2192"),
        key(u"/"),
        key(u"LN", u"TAN"),
        key(u"7"),
        key(u"8"),
        key(u"9"),
        key(u"*"),
        key(u"STO", u"\u03c0"),
        key(u"4"),
        key(u"5"),
        key(u"6"),
        key(u"-"),
        key(u"RCL", u"HIST"),
        key(u"1"),
        key(u"2"),
        key(u"3"),
        key(u"+"),
        key(u"CE", u"RESET"),
        key(u"0"),
        key(u"."),
        key(u"="),
    };
    Q_ASSERT(m_buttons.size() == keyCount);
}

int CalculatorKeypad::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_buttons.size());
}

QString CalculatorKeypad::shownTitle(int index) const
{
    if (index < 0 || index >= m_buttons.size())
        return {};
    const CalculatorButtonModel& button = m_buttons.at(index);
    return m_secondaryButtonsOn && !button.secondaryTitle.isEmpty() ? button.secondaryTitle
                                                                    : button.title;
}

int CalculatorKeypad::indexOfShownTitle(const QString& title) const
{
    for (int i = 0; i < m_buttons.size(); ++i) {
        if (shownTitle(i) == title)
            return i;
    }
    return -1;
}

QVariant CalculatorKeypad::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_buttons.size())
        return {};
    const CalculatorButtonModel& button = m_buttons.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return shownTitle(index.row());
    case PrimaryTitleRole:
        return button.title;
    case SecondaryTitleRole:
        return button.secondaryTitle;
    case BorderedRole:
        return (button.title == QLatin1String("2ND") && m_secondaryButtonsOn) ||
               (button.title == QLatin1String("CF") && m_npvModeOn) ||
               (button.title == QLatin1String("BEG") && m_begModeOn);
    case WideRole:
        return button.title == zeroKey;
    case ShortcutRole:
        return shortcutOf(index.row());
    case KindRole:
        return kindOf(button.title);
    default:
        return {};
    }
}

QHash<int, QByteArray> CalculatorKeypad::roleNames() const
{
    return {{TitleRole, "title"},
            {PrimaryTitleRole, "primaryTitle"},
            {SecondaryTitleRole, "secondaryTitle"},
            {BorderedRole, "bordered"},
            {WideRole, "wide"},
            {KindRole, "kind"},
            {ShortcutRole, "shortcut"}};
}

int CalculatorKeypad::indexForShortcut(int key, int modifiers) const
{
    const auto mods = Qt::KeyboardModifiers(modifiers) & (Qt::AltModifier | Qt::ShiftModifier |
                                                          Qt::ControlModifier | Qt::MetaModifier);
    for (const KeyShortcut& shortcut : shortcuts) {
        const bool functionKey = shortcut.key == Qt::Key_F1;
        const Qt::KeyboardModifiers wanted =
            functionKey ? Qt::NoModifier
                        : (Qt::AltModifier | (shortcut.shift ? Qt::ShiftModifier : Qt::NoModifier));
        // Alt+Shift+2 arrives as Alt+@ on many layouts: 2ND takes Alt alone.
        if (shortcut.key == key && mods == wanted) {
            const QString title = QString::fromUtf16(shortcut.title);
            for (int i = 0; i < m_buttons.size(); ++i) {
                if (m_buttons.at(i).title == title)
                    return i;
            }
        }
    }
    return -1;
}

QString CalculatorKeypad::shortcutOf(int index) const
{
    if (index < 0 || index >= m_buttons.size())
        return {};
    const QString& title = m_buttons.at(index).title;
    for (const KeyShortcut& shortcut : shortcuts) {
        if (title == QString::fromUtf16(shortcut.title)) {
            const QString text = QString::fromLatin1(shortcut.text);
            // ENTER is Return too in the cash-flow worksheet, and the
            // arrows walk it without Alt as well.
            if (title == u"ENTER")
                return text + QStringLiteral(" (Return in CF mode)");
            return text;
        }
    }
    return typedKeyText(title);
}

QVariantList CalculatorKeypad::keyboardMap() const
{
    QVariantList map;
    for (int i = 0; i < m_buttons.size(); ++i) {
        const CalculatorButtonModel& button = m_buttons.at(i);
        QString title = button.title;
        if (!button.secondaryTitle.isEmpty())
            title += QStringLiteral(" (2ND: %1)").arg(button.secondaryTitle);
        map.append(QVariantMap{{QStringLiteral("title"), title},
                               {QStringLiteral("shortcut"), shortcutOf(i)}});
    }
    return map;
}

void CalculatorKeypad::setBegModeOn(bool on)
{
    if (on == m_begModeOn)
        return;
    m_begModeOn = on;
    reloadGrid();
}

void CalculatorKeypad::reloadGrid()
{
    emit togglesChanged();
    emit dataChanged(index(0), index(int(m_buttons.size()) - 1),
                     {TitleRole, Qt::DisplayRole, BorderedRole});
}

void CalculatorKeypad::buttonClicked(int index)
{
    if (index < 0 || index >= m_buttons.size())
        return;
    const QString& title = m_buttons.at(index).title;
    if (title == QLatin1String("2ND")) {
        m_secondaryButtonsOn = !m_secondaryButtonsOn;
        reloadGrid();
    }
    if (title == QLatin1String("CF")) {
        m_npvModeOn = !m_npvModeOn;
        reloadGrid();
    }
    if (title == QLatin1String("BEG")) {
        m_begModeOn = !m_begModeOn;
        reloadGrid();
    }
    sendButtonClickedNotification(shownTitle(index), m_npvModeOn, m_begModeOn);
}

void CalculatorKeypad::pressTitle(const QString& title)
{
    const int index = indexOfShownTitle(title);
    if (index >= 0)
        buttonClicked(index);
    else if (!title.isEmpty())
        sendButtonClickedNotification(title, m_npvModeOn, m_begModeOn);
}

void CalculatorKeypad::loadButtonDictionary()
{
    if (!m_secondaryButtonsOn)
        return;
    m_secondaryButtonsOn = false;
    reloadGrid();
}

QRectF CalculatorKeypad::keyRect(int index, qreal width, qreal height) const
{
    if (index < 0 || index >= m_buttons.size() || width <= 0 || height <= 0)
        return {};
    const qreal unitWidth = width / columns;
    const qreal keyHeight = height / rows;
    // The plain flow: left to right, a new row when a key does not fit.
    // Then each key after the first moves onto the previous key's right
    // edge, truncated to a whole point, when it fits there.
    QRectF previous;
    qreal flowX = 0;
    qreal flowY = 0;
    for (int i = 0; i <= index; ++i) {
        const qreal w = m_buttons.at(i).title == zeroKey ? 2 * unitWidth : unitWidth;
        if (flowX > 0 && flowX + w > width + 1e-6) {
            flowX = 0;
            flowY += keyHeight;
        }
        QRectF rect(flowX, flowY, w, keyHeight);
        flowX += w;
        if (i > 0) {
            const qreal edge = std::floor(previous.right());
            if (edge + w < width)
                rect.moveLeft(edge);
        }
        previous = rect;
    }
    return previous;
}

QString CalculatorKeypad::titleForKeyboard(int key, const QString& text, bool npvMode)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return npvMode ? QStringLiteral("ENTER") : QStringLiteral("=");
    case Qt::Key_Equal:
        return QStringLiteral("=");
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return QStringLiteral("\u21e6");
    case Qt::Key_Escape:
        return QStringLiteral("CE");
    case Qt::Key_Left:
        return QStringLiteral("\u2190");
    case Qt::Key_Right:
        return QStringLiteral("\u2192");
    case Qt::Key_Up:
        return QStringLiteral("\u2191");
    case Qt::Key_Down:
        return QStringLiteral("\u2193");
    default:
        break;
    }
    if (text.size() != 1)
        return {};
    const QChar c = text.at(0);
    if (c == u'^')
        return QStringLiteral("y\u02e3");
    if (c == u'=')
        return QStringLiteral("=");
    if (c == u',')
        return QStringLiteral(".");
    if ((c >= u'0' && c <= u'9') || QStringLiteral(".+-*/()").contains(c))
        return QString(c);
    return {};
}

void CalculatorKeypad::sendButtonClickedNotification(const QString& title, bool npvMode,
                                                     bool begMode)
{
    NotificationCenter::defaultCenter().post(notificationName, nullptr,
                                             {{QStringLiteral("title"), title},
                                              {QStringLiteral("npv-mode"), npvMode},
                                              {QStringLiteral("beg-mode"), begMode}});
}
