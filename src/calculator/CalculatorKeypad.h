#pragma once

#include <QAbstractListModel>
#include <QList>
#include <QRectF>
#include <QString>
#include <QVariantList>

// One key: its title and, for second-function keys, the title shown while
// 2ND is on.
struct CalculatorButtonModel {
    QString title;
    QString secondaryTitle;
};

// The calculator's grid of 44 keys with its three toggles (2ND, CF, BEG).
// Every press is announced as "CalculatorButtonClickedNotification" with
// the title the key shows and the CF and BEG states; the keypad computes
// nothing itself.
class CalculatorKeypad : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(bool secondaryButtonsOn READ secondaryButtonsOn NOTIFY togglesChanged)
    Q_PROPERTY(bool npvModeOn READ npvModeOn NOTIFY togglesChanged)
    // BEG/END: the app's keypad sets it back to the mode it was left in.
    Q_PROPERTY(bool begModeOn READ begModeOn WRITE setBegModeOn NOTIFY togglesChanged)

public:
    enum Role {
        TitleRole = Qt::UserRole + 1, // as shown now
        PrimaryTitleRole,
        SecondaryTitleRole,
        BorderedRole, // a toggle that is on
        WideRole,     // the "0" key, two cells wide
        KindRole,     // "digit", "operator", "function", "financial", "toggle", "edit"
        ShortcutRole, // the keyboard's key for it ("Alt+N"), as shortcutOf gives it
    };

    static constexpr int keyCount = 44;
    static constexpr int columns = 5;
    static constexpr int rows = 9;
    static const QString notificationName;

    explicit CalculatorKeypad(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<CalculatorButtonModel>& buttonModelArray() const { return m_buttons; }
    bool secondaryButtonsOn() const { return m_secondaryButtonsOn; }
    bool npvModeOn() const { return m_npvModeOn; }
    bool begModeOn() const { return m_begModeOn; }
    void setBegModeOn(bool on);

    // The title key `index` shows now.
    Q_INVOKABLE QString shownTitle(int index) const;
    Q_INVOKABLE int indexOfShownTitle(const QString& title) const;
    // Flips the key's toggle if it has one, then announces the press.
    Q_INVOKABLE void buttonClicked(int index);
    // Presses the key showing `title`; a title no key shows right now (a
    // "(" typed on a keyboard while 2ND is on) is announced as it is.
    Q_INVOKABLE void pressTitle(const QString& title);
    // Run each time the screen is about to appear: second functions off.
    Q_INVOKABLE void loadButtonDictionary();

    // Where key `index` sits in a grid of `width` × `height`: keys are a
    // fifth of the width and a ninth of the height ("0" twice as wide),
    // packed left to right onto whole points without gaps.
    Q_INVOKABLE QRectF keyRect(int index, qreal width, qreal height) const;

    // The key title a physical key stands for ("" when none): digits,
    // operators, "." and parentheses type themselves, ^ is "yˣ", Enter is
    // "=" (ENTER in cash-flow mode), "=" is "=", Backspace and Delete "⇦",
    // Escape "CE", arrows the caret and cash-flow keys.
    Q_INVOKABLE static QString titleForKeyboard(int key, const QString& text, bool npvMode = false);

    // The keyboard map: every key of the keypad has a key on the keyboard.
    // Digits, operators, ".", "(", ")", "^" (yˣ), "=", Enter, Backspace,
    // Escape (CE) and the arrows type themselves (titleForKeyboard); the
    // financial and function keys take Alt and a letter, their cash-flow
    // counterparts Alt+Shift and the same letter (Alt+N N, Alt+Shift+N NPV;
    // Alt+I I/Y, Alt+Shift+I IRR), and HELP is F1. Alt keeps them apart from
    // letters typed into the expression line and from the window's Ctrl
    // shortcuts.
    // The key index `key` with `modifiers` presses; -1 for none.
    Q_INVOKABLE int indexForShortcut(int key, int modifiers) const;
    // The keyboard's key for key `index`, as tooltips and the help page show
    // it ("Alt+V", "F1", "7"); empty for none.
    Q_INVOKABLE QString shortcutOf(int index) const;
    // Every key with its keyboard key, in keypad order: {title, shortcut}.
    Q_INVOKABLE QVariantList keyboardMap() const;

    static void sendButtonClickedNotification(const QString& title, bool npvMode, bool begMode);

signals:
    void togglesChanged();

private:
    void reloadGrid();

    QList<CalculatorButtonModel> m_buttons;
    bool m_secondaryButtonsOn = false;
    bool m_npvModeOn = false;
    bool m_begModeOn = false;
};
