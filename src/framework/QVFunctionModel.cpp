#include "QVFunctionModel.h"

#include "numerics/NumberFormat.h"
#include "platform/NotificationCenter.h"
#include "platform/Services.h"
#include "store/QVFileManager.h"
#include "store/ReportStore.h"

#include <QMetaProperty>
#include <cmath>

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
    m_fileKey = names.fileKey;
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
    m_report.fileName = grownFileName(m_report.fileName, m_fileKey, m_report.title, dateString);
    saveReportFile();
    sendReportCreatedNotification();
}

QString QVFunctionModel::grownFileName(const QString& current, const QString& fileKey,
                                       const QString& title, const QString& dateString)
{
    QString safeTitle = title;
    safeTitle.replace(QLatin1Char('/'), QLatin1Char('-')).replace(QChar(0), QLatin1Char('-'));
    const auto suffix = [&dateString](const QString& titlePart) {
        return QStringLiteral("_%1_%2_report.txt").arg(titlePart, dateString);
    };
    const auto fits = [](const QString& name) { return name.toUtf8().size() <= maxFileNameBytes; };
    QString grown = current + suffix(safeTitle);
    if (fits(grown))
        return grown;
    grown = fileKey + suffix(safeTitle);
    // Shortened a character at a time from the end (never inside a
    // surrogate pair); bounded by the title's length.
    while (!fits(grown) && !safeTitle.isEmpty()) {
        safeTitle.chop(safeTitle.size() >= 2 && safeTitle.back().isLowSurrogate() ? 2 : 1);
        grown = fileKey + suffix(safeTitle);
    }
    return grown;
}

WriteResult QVFunctionModel::saveReportFile()
{
    ReportStore::reserveReportFile(m_report.fileName);
    m_reportFileResult =
        QVFileManager::writeNewFileToDocumentsDirectory(m_report.fileName, m_report.contents);
    m_reportFileWritten = m_reportFileResult.ok();
    return m_reportFileResult;
}

WriteResult QVFunctionModel::saveReport()
{
    return QVReport::saveReport(m_report);
}

void QVFunctionModel::removeReportFile()
{
    // A write that failed may have left the name of someone else's file in
    // the record: only a file this model wrote is ever removed.
    if (!m_reportFileWritten)
        return;
    QVFileManager::removeFileAtPath(m_report.filePathInDocumentsDirectory());
    m_reportFileWritten = false;
}

void QVFunctionModel::keepReportFile()
{
    if (m_reportFileWritten)
        ReportStore::forgetReportFile(m_report.fileName);
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

void QVFunctionModel::setNote(const QString& property, const QString& reason)
{
    if (reason.isEmpty())
        m_notes.remove(property);
    else
        m_notes.insert(property, reason);
}

QString QVFunctionModel::note(const QString& property) const
{
    if (const auto own = m_notes.constFind(property); own != m_notes.constEnd())
        return *own;
    const QVariant value = this->property(property.toLatin1().constData());
    if (value.typeId() != QMetaType::Double)
        return {};
    const double number = value.toDouble();
    if (std::isnan(number))
        return QStringLiteral("No number: these inputs leave this result undefined.");
    if (std::isinf(number))
        return QStringLiteral("No finite number: these inputs divide by zero.");
    return {};
}

QString QVFunctionModel::tooLarge()
{
    return QStringLiteral("The numbers grow too large to compute.");
}

void QVFunctionModel::explain(const char* property, std::initializer_list<QString> reasons)
{
    if (std::isfinite(this->property(property).toDouble()))
        return;
    for (const QString& reason : reasons) {
        if (!reason.isEmpty())
            return setNote(QString::fromLatin1(property), reason);
    }
}

void QVFunctionModel::explainEntries(std::initializer_list<const char*> inputs)
{
    for (const char* input : inputs) {
        if (std::isinf(property(input).toDouble()))
            setNote(QString::fromLatin1(input),
                    QStringLiteral("Too large a number to compute with."));
    }
}

QMap<QString, QString> QVFunctionModel::notes() const
{
    QMap<QString, QString> all;
    const QMetaObject* meta = metaObject();
    for (int i = QVFunctionModel::staticMetaObject.propertyCount(); i < meta->propertyCount();
         ++i) {
        const QString name = QString::fromLatin1(meta->property(i).name());
        if (const QString line = note(name); !line.isEmpty())
            all.insert(name, line);
    }
    return all;
}
