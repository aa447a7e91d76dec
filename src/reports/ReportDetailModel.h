#pragma once

#include <QObject>
#include <QString>

// Carries the path of one report text file from the list to its screen.
class ReportDetailModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString reportFilePath READ reportFilePath WRITE setReportFilePath NOTIFY
                   reportFilePathChanged)

public:
    using QObject::QObject;
    QString reportFilePath() const { return m_reportFilePath; }
    void setReportFilePath(const QString& path);

signals:
    void reportFilePathChanged();

private:
    QString m_reportFilePath;
};
