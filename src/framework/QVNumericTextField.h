#pragma once

#include <QObject>
#include <QString>

// The text of a numeric input field, with its "Change Sign" button.
class QVNumericTextField : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString info READ info WRITE setInfo NOTIFY infoChanged)

public:
    using QObject::QObject;

    QString text() const { return m_text; }
    void setText(const QString& text);
    QString info() const { return m_info; }
    void setInfo(const QString& info);

    // "Change Sign": drops the first character when the text holds a "-"
    // anywhere, otherwise puts "-" in front. Only the text changes: the
    // screen is not told of an edit, so nothing recomputes until the next one.
    Q_INVOKABLE void signClicked();
    Q_INVOKABLE static QString changedSign(const QString& text);

signals:
    void textChanged();
    void infoChanged();

private:
    QString m_text;
    QString m_info;
};
