#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>

// What a calculator screen shows: the title, the calculator/description
// switch, the description page, and the texts of its outlets (input fields,
// result labels, choice buttons) by outlet name ("investmentField",
// "gainResultLabel", "modeButton"). QML binds to `texts`; controllers,
// tests and the command line read and write the same texts.
class QVFunctionView : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantMap texts READ texts NOTIFY textsChanged)
    Q_PROPERTY(QVariantMap notes READ notes NOTIFY notesChanged)
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(int segment READ segment NOTIFY segmentChanged)
    Q_PROPERTY(bool calculatorVisible READ calculatorVisible NOTIFY segmentChanged)
    Q_PROPERTY(bool descriptionVisible READ descriptionVisible NOTIFY segmentChanged)
    Q_PROPERTY(bool scrollVisible READ scrollVisible NOTIFY segmentChanged)
    Q_PROPERTY(QString descriptionHtml READ descriptionHtml NOTIFY descriptionHtmlChanged)
    Q_PROPERTY(bool stale READ stale NOTIFY staleChanged)

public:
    using QObject::QObject;

    QString title() const { return m_title; }
    void setTitle(const QString& title);
    int segment() const { return m_segment; }
    bool calculatorVisible() const { return m_calculatorVisible; }
    bool descriptionVisible() const { return !m_calculatorVisible; }
    bool scrollVisible() const { return m_calculatorVisible; }
    QString descriptionHtml() const { return m_descriptionHtml; }
    void setDescriptionHtml(const QString& html);

    void showCalculator(int segment = 0);
    void showDescription(int segment = 1);

    QVariantMap texts() const { return m_texts; }
    Q_INVOKABLE QString text(const QString& outlet) const;
    // Sets an outlet's text; nothing else happens (the screen's change
    // action is the controller's).
    Q_INVOKABLE void setText(const QString& outlet, const QString& text);

    // The line under an outlet that says why its result is no number (or
    // what else to know of it); empty for none.
    QVariantMap notes() const { return m_notes; }
    Q_INVOKABLE QString note(const QString& outlet) const;
    void setNote(const QString& outlet, const QString& note);

    // The results no longer match the inputs shown: a sign was flipped,
    // which recomputes nothing until that input's value is taken in. The
    // screen greys them and says how to update them. Each flipped input
    // (a field's outlet, a table cell's name) stays stale until it is taken
    // in; the results are stale while any is.
    bool stale() const { return !m_staleInputs.isEmpty(); }
    void markStale(const QString& input);
    // `input`'s value has been taken in (its edit was applied).
    void markTakenIn(const QString& input);
    // Every input has been read again.
    void markAllTakenIn();

signals:
    void textsChanged();
    void notesChanged();
    void titleChanged();
    void segmentChanged();
    void descriptionHtmlChanged();
    void staleChanged();

private:
    QVariantMap m_texts;
    QVariantMap m_notes;
    QString m_title;
    int m_segment = 0;
    bool m_calculatorVisible = true;
    QString m_descriptionHtml;
    QStringList m_staleInputs;
};
