#pragma once

#include <QByteArray>
#include <QColor>
#include <QDateTime>
#include <QImage>
#include <QString>
#include <QVariantList>
#include <optional>

// One saved calculation: the record kept in the "reports" list plus the
// name of its text file in the documents directory.
class QVReport {
public:
    // A new record: every text empty, no date, colour tag "#354458".
    QVReport();

    QString title;
    QDateTime date;
    QString functionTitle;
    QString contents;
    QString fileName;
    QColor colorTag;
    QImage reportImage; // chart to attach to an e-mail; never archived

    // The record's archive: a CBOR map with "title", "functionTitle", "date"
    // (seconds since 2001-01-01T00:00:00Z), "contents", "fileName" and
    // "colorTag" ("#RRGGBBAA"), in that order.
    QByteArray archive() const;
    // Restores a record from an archive. Missing keys stay empty; bytes that
    // are no archive at all give an empty record without a colour.
    static QVReport fromArchive(const QByteArray& bytes);

    // The date in the locale's short date and medium time, with "Today" or
    // "Yesterday" in place of the date where they apply.
    QString dateString() const;
    QString filePathInDocumentsDirectory() const;

    // Reads "#RRGGBB": skips the first character, reads hex digits up to the
    // first other character, keeps the low 24 bits (saturating at 32 bits).
    static QColor colorFromHexString(const QString& hex);

    // Puts the record at the head of the stored "reports" list. The list
    // must exist already (the report list creates it): otherwise the record
    // is dropped.
    static void saveReport(const QVReport& report);
    // Removes records with exactly this date, advancing past each removal
    // so that of two adjacent equal dates only the first goes per call.
    static void removeReportWithDate(const QDateTime& date);

    // The stored list as it is now on disk; nothing when it does not exist.
    static std::optional<QVariantList> storedReportList();

    static const QString reportsKey;
};
