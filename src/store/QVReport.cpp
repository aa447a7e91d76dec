#include "store/QVReport.h"

#include "store/QVFileManager.h"
#include "store/ReportStore.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborValue>
#include <QLocale>
#include <QLoggingCategory>
#include <QTimeZone>

Q_LOGGING_CATEGORY(lcReports, "tallyvane.reports", QtWarningMsg)

namespace {

// Archived dates count seconds from this moment.
const QDateTime& referenceDate()
{
    static const QDateTime reference(QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc());
    return reference;
}

QString hexOfColor(const Rgba& color)
{
    if (!color.isValid())
        return QString();
    return QStringLiteral("#%1%2%3%4")
        .arg(color.red(), 2, 16, QLatin1Char('0'))
        .arg(color.green(), 2, 16, QLatin1Char('0'))
        .arg(color.blue(), 2, 16, QLatin1Char('0'))
        .arg(color.alpha(), 2, 16, QLatin1Char('0'))
        .toUpper();
}

Rgba colorOfHex(const QString& text)
{
    if (text.size() != 9 || !text.startsWith(QLatin1Char('#')))
        return Rgba();
    bool ok = false;
    const uint rgba = text.mid(1).toUInt(&ok, 16);
    if (!ok)
        return Rgba();
    return Rgba(int(rgba >> 24), int((rgba >> 16) & 0xff), int((rgba >> 8) & 0xff),
                int(rgba & 0xff));
}

QString relativeDayName(const QDate& date)
{
    const QDate today = QDate::currentDate();
    if (date == today)
        return QStringLiteral("Today");
    if (date == today.addDays(-1))
        return QStringLiteral("Yesterday");
    return QString();
}

} // namespace

QVReport::QVReport() : colorTag(colorFromHexString(QStringLiteral("#354458"))) {}

QByteArray QVReport::archive() const
{
    QCborMap map;
    map.insert(QStringLiteral("title"), title);
    map.insert(QStringLiteral("functionTitle"), functionTitle);
    if (date.isValid())
        map.insert(QStringLiteral("date"), referenceDate().msecsTo(date) / 1000.0);
    map.insert(QStringLiteral("contents"), contents);
    map.insert(QStringLiteral("fileName"), fileName);
    map.insert(QStringLiteral("colorTag"), hexOfColor(colorTag));
    if (!calculator.isEmpty()) {
        map.insert(QStringLiteral("calculator"), calculator);
        map.insert(QStringLiteral("inputs"), QCborMap::fromVariantMap(inputs));
    }
    return QCborValue(map).toCbor();
}

QVReport QVReport::fromArchive(const QByteArray& bytes)
{
    QVReport report;
    report.colorTag = Rgba();
    QCborParserError error;
    const QCborValue value = QCborValue::fromCbor(bytes, &error);
    if (error.error != QCborError::NoError || !value.isMap()) {
        qCDebug(lcReports) << "unreadable report archive of" << bytes.size() << "bytes";
        return report;
    }
    const QCborMap map = value.toMap();
    report.title = map.value(QStringLiteral("title")).toString();
    report.functionTitle = map.value(QStringLiteral("functionTitle")).toString();
    const QCborValue seconds = map.value(QStringLiteral("date"));
    if (seconds.isDouble() || seconds.isInteger()) {
        const double ms = std::round(seconds.toDouble() * 1000.0);
        // Beyond about +-292 million years QDateTime cannot hold the date.
        if (std::isfinite(ms) && std::fabs(ms) < 9.0e18)
            report.date = referenceDate().addMSecs(qint64(ms)).toLocalTime();
    }
    report.contents = map.value(QStringLiteral("contents")).toString();
    report.fileName = map.value(QStringLiteral("fileName")).toString();
    report.colorTag = colorOfHex(map.value(QStringLiteral("colorTag")).toString());
    report.calculator = map.value(QStringLiteral("calculator")).toString();
    const QCborMap inputs = map.value(QStringLiteral("inputs")).toMap();
    for (auto it = inputs.constBegin(); it != inputs.constEnd(); ++it) {
        const QString key = it.key().toString();
        const QCborValue value = it.value();
        if (value.isString()) {
            report.inputs.insert(key, value.toString());
            continue;
        }
        const QCborArray list = value.toArray();
        QStringList texts;
        bool readable = value.isArray();
        for (const QCborValue& item : list) {
            readable = readable && item.isString();
            texts << item.toString();
        }
        if (readable)
            report.inputs.insert(key, texts);
        else
            report.damagedInputs << key;
    }
    return report;
}

QString QVReport::dateString() const
{
    if (!date.isValid())
        return QString();
    const QLocale locale;
    const QDateTime local = date.toLocalTime();
    QString day = relativeDayName(local.date());
    if (day.isEmpty())
        day = locale.toString(local.date(), QLocale::ShortFormat);
    QString timeFormat = locale.timeFormat(QLocale::ShortFormat);
    if (!timeFormat.contains(QLatin1String("ss")))
        timeFormat.replace(QLatin1String("mm"), QLatin1String("mm:ss"));
    return day + QLatin1Char(' ') + locale.toString(local.time(), timeFormat);
}

QString QVReport::filePathInDocumentsDirectory() const
{
    return QVFileManager::documentsDirectory() + QLatin1Char('/') + fileName;
}

Rgba QVReport::colorFromHexString(const QString& hex)
{
    quint64 value = 0;
    for (qsizetype i = 1; i < hex.size(); ++i) {
        const char16_t c = hex.at(i).unicode();
        int digit = -1;
        if (c >= u'0' && c <= u'9')
            digit = c - u'0';
        else if (c >= u'a' && c <= u'f')
            digit = c - u'a' + 10;
        else if (c >= u'A' && c <= u'F')
            digit = c - u'A' + 10;
        if (digit < 0)
            break;
        value = value * 16 + quint64(digit);
        if (value > 0xffffffffULL) {
            value = 0xffffffffULL; // saturated: further digits change nothing
            break;
        }
    }
    return Rgba(int((value >> 16) & 0xff), int((value >> 8) & 0xff), int(value & 0xff));
}

std::optional<QList<QByteArray>> QVReport::storedReportList(QString* error)
{
    const std::optional<QList<ReportStore::Row>> rows = ReportStore::rows(error);
    if (!rows)
        return std::nullopt;
    QList<QByteArray> archives;
    archives.reserve(rows->size());
    for (const ReportStore::Row& row : *rows)
        archives.append(row.archive);
    return archives;
}

WriteResult QVReport::saveReport(const QVReport& report)
{
    const WriteResult result = ReportStore::insertAtHead(report.archive(), report.fileName);
    if (!result.ok())
        qCInfo(lcReports) << "report" << report.fileName << "not saved:" << result.error;
    return result;
}

WriteResult QVReport::removeReportWithDate(const QDateTime& date, int* removed,
                                           QList<ReportStore::Row>* removedRows)
{
    return ReportStore::removeRows(
        [&date, removedRows](const QList<ReportStore::Row>& rows) {
            // The list's own walk: the index moves on after a removal too, so
            // the record that slid into the removed slot is not looked at.
            QList<ReportStore::Row> list = rows;
            QList<qint64> ids;
            for (qsizetype index = 0; index < list.size(); ++index) {
                const QVReport item = fromArchive(list.at(index).archive);
                if (item.date.isValid() && date.isValid() && item.date == date) {
                    ids.append(list.at(index).id);
                    if (removedRows)
                        removedRows->append(list.at(index));
                    list.removeAt(index);
                }
            }
            return ids;
        },
        removed);
}
