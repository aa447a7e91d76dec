#pragma once

#include "platform/Rgba.h"
#include "store/ReportStore.h"
#include "store/WriteResult.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>
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
    Rgba colorTag;
    // The calculator that made it (its registry name, "amortization") and
    // every input it had, as its screen held them (texts, choices' words,
    // tables' rows; see QVFunctionController::inputTexts), so it can be
    // opened again. Empty for a report saved before reports kept them.
    QString calculator;
    QVariantMap inputs;

    // The record's archive: a CBOR map with "title", "functionTitle", "date"
    // (seconds since 2001-01-01T00:00:00Z), "contents", "fileName" and
    // "colorTag" ("#RRGGBBAA"), in that order; then, for a report that
    // knows its calculator, "calculator" and "inputs" (a map: a text, or a
    // list of texts for a table).
    QByteArray archive() const;
    // Restores a record from an archive. Missing keys stay empty; bytes that
    // are no archive at all give an empty record without a colour. An input
    // that is neither a text nor a list of texts is left out, and named in
    // `damagedInputs`.
    static QVReport fromArchive(const QByteArray& bytes);
    QStringList damagedInputs;

    // The date in the locale's short date and medium time, with "Today" or
    // "Yesterday" in place of the date where they apply.
    QString dateString() const;
    QString filePathInDocumentsDirectory() const;

    // Reads "#RRGGBB": skips the first character, reads hex digits up to the
    // first other character, keeps the low 24 bits (saturating at 32 bits).
    static Rgba colorFromHexString(const QString& hex);

    // Puts the record at the head of the stored "reports" list, in one
    // transaction. The list must exist already (the report list creates it):
    // otherwise nothing is stored and the result says so.
    static WriteResult saveReport(const QVReport& report);
    // Removes records with exactly this date, advancing past each removal
    // so that of two adjacent equal dates only the first goes per call.
    // `removed` gets the number of records removed; `removedRows`, when
    // given, the removed rows themselves (for putting them back).
    static WriteResult removeReportWithDate(const QDateTime& date, int* removed = nullptr,
                                            QList<ReportStore::Row>* removedRows = nullptr);

    // The stored archives, newest first, as they are now on disk (a damaged
    // one as empty bytes); nothing when the list does not exist or cannot be
    // read (then `error` says why).
    static std::optional<QList<QByteArray>> storedReportList(QString* error = nullptr);
};
