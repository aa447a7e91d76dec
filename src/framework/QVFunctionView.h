#pragma once

#include <QObject>
#include <QString>

// What every calculator screen shows besides its own form: the title, the
// calculator/description switch and the description page. Calculator views
// add their fields and labels.
class QVFunctionView : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(int segment READ segment NOTIFY segmentChanged)
    Q_PROPERTY(bool calculatorVisible READ calculatorVisible NOTIFY segmentChanged)
    Q_PROPERTY(bool descriptionVisible READ descriptionVisible NOTIFY segmentChanged)
    Q_PROPERTY(bool scrollVisible READ scrollVisible NOTIFY segmentChanged)
    Q_PROPERTY(QString descriptionHtml READ descriptionHtml NOTIFY descriptionHtmlChanged)

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

signals:
    void titleChanged();
    void segmentChanged();
    void descriptionHtmlChanged();

private:
    QString m_title;
    int m_segment = 0;
    bool m_calculatorVisible = true;
    QString m_descriptionHtml;
};
