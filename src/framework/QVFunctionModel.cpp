#include "QVFunctionModel.h"

#include "NumberFormat.h"
#include "platform/NotificationCenter.h"
#include "platform/Services.h"
#include "reports/QVFileManager.h"

QVFunctionModel::QVFunctionModel(QObject* parent) : QObject(parent) {}

void QVFunctionModel::initialize()
{
    configureNames();
    configureObservers();
}

void QVFunctionModel::setNames(const Names& names)
{
    m_reportCreatedNotificationName = names.created;
    m_reportRequestedNotificationName = names.requested;
    m_emailSubject = names.emailSubject;
    m_navigationTitle = names.navigationTitle;
    m_descriptionName = names.descriptionName;
    m_report = QVReport();
    m_report.fileName = names.fileKey;
    if (!names.functionTitle.isNull())
        m_report.functionTitle = names.functionTitle;
}

void QVFunctionModel::configureNames()
{
    setNames({QStringLiteral("QVFunctionReportCreatedNotification"),
              QStringLiteral("QVFunctionReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"),
              QStringLiteral("QV Function Calculator"), QStringLiteral("qvfunction"),
              QStringLiteral("qvfunction"), QString()});
}

void QVFunctionModel::configureObservers()
{
    NotificationCenter::defaultCenter().addObserver(
        this, m_reportRequestedNotificationName,
        [this](const Notification& n) { createReport(n.userInfo); });
}

void QVFunctionModel::createReport(const QVariantMap&) {}

void QVFunctionModel::writeReport(const QVariantMap& userInfo, const QString& functionName,
                                  const QString& colorHex, const QString& body)
{
    m_report.title = userInfo.value(QStringLiteral("title")).toString();
    m_report.date = Services::now();
    const QString dateString = m_report.date.toString(QStringLiteral("dd-MM-yyyy HH:mm"));
    m_report.colorTag = QVReport::colorFromHexString(colorHex);
    m_report.contents = QStringLiteral("Financial Report - ") + functionName + QLatin1Char('\n');
    m_report.contents += QStringLiteral("Date: ") + dateString + QLatin1Char('\n');
    m_report.contents += QStringLiteral("\n-----------------------------\n\n");
    m_report.contents += body;
    m_report.fileName += QStringLiteral("_%1_%2_report.txt").arg(m_report.title, dateString);
    saveReportFile();
    sendReportCreatedNotification();
}

void QVFunctionModel::saveReportFile()
{
    QVFileManager::saveFileToDocumentsDirectoryWithContents(m_report.fileName, m_report.contents);
}

void QVFunctionModel::saveReport()
{
    QVReport::saveReport(m_report);
}

void QVFunctionModel::removeReportFile()
{
    QVFileManager::removeFileAtPath(m_report.filePathInDocumentsDirectory());
}

void QVFunctionModel::sendReportCreatedNotification()
{
    NotificationCenter::defaultCenter().post(m_reportCreatedNotificationName, this,
                                             {{QStringLiteral("filename"), m_report.fileName}});
}

QString QVFunctionModel::stringFromDouble(double value)
{
    return NumberFormat::stringFromDouble(value);
}
