#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

// Comma-separated values as RFC 4180 writes them: a header row, CRLF line
// ends, fields with a comma, a quote or a line break quoted (quotes
// doubled), no byte-order mark. Numbers are written with "." whatever the
// locale, so that every spreadsheet reads them back.
//
// The text grows in one buffer, a field at a time: a schedule of a million
// rows is tens of megabytes of text, and a list of strings per row (or a
// QString per number) would take several times that and most of the time.
//
//     CsvWriter csv({"year", "amount"}, rows.size());
//     for (const Row& row : rows) {
//         csv.integer(row.year);
//         csv.fixed(row.amount, 2);
//         csv.endRow();
//     }
//     return csv.take();
class CsvWriter {
public:
    // Starts with the header row; room is made for `expectedRows` rows of
    // about `bytesPerRow` bytes.
    explicit CsvWriter(const QStringList& header, qsizetype expectedRows = 0,
                       qsizetype bytesPerRow = 64);

    // One field each, in order; a row ends with endRow().
    void text(QStringView field);
    void empty();
    void integer(qint64 value);
    // The shortest text that reads back to the same double (see number()).
    void shortest(double value);
    // `value` with `decimals` digits after the point (see appendFixed()).
    void fixed(double value, int decimals);
    // YYYY-MM-DD (see appendIsoDate()); an empty field for an invalid date.
    void date(const QDate& value);
    void endRow();

    // The text so far; the writer is empty afterwards.
    QByteArray take();

    // The shortest text that reads back to the same double, with "."; "NaN",
    // "Infinity" and "-Infinity" for the values that are no number.
    static QString number(double value);

    // Formatters that write at `out` and return the end of what they wrote.
    //
    // `value` rounded to `decimals` (0 to 17) places with ".": the text
    // std::to_chars gives in its fixed format, i.e. rounded to nearest on
    // the double's exact binary value, ties to even (0.125 gives "0.12";
    // 2.675, which is 2.67499999999999982236431605997495353221893310546875,
    // gives "2.67"), except that a result that is all zeros has no sign
    // ("0.00", never "-0.00"), and NaN and the infinities are "NaN",
    // "Infinity" and "-Infinity". Needs room for 330 characters.
    static char* appendFixed(char* out, double value, int decimals);
    // YYYY-MM-DD, as QDate::toString(Qt::ISODate) writes the years 1 to
    // 9999; other years (a loan of a million payments ends far beyond
    // 9999) with all their digits and a "-" before a year before 1:
    // "12345-06-01", "-44-03-15". Nothing for an invalid date. Needs room
    // for 24 characters.
    static char* appendIsoDate(char* out, const QDate& value);
    // The same as a QString; empty for an invalid date.
    static QString isoDate(const QDate& value);

private:
    // Room for `size` more bytes after the field separator, where the
    // field is then written; done() takes its end.
    char* field(qsizetype size);
    void done(char* end) { m_length = end - m_out.data(); }

    // Written up to m_length; the rest is room not yet written (its pages
    // take no memory until they are).
    QByteArray m_out;
    qsizetype m_length = 0;
    bool m_rowStarted = false;
};
