#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <utility>

// Texts that place something on a schedule: a payment number (13) or a date
// (2028-06-01), alone or before a colon and a number ("13:5000",
// "2028-06-01:7.5"), as a loan's extra payments and rate changes are typed
// on the command line. Numbers are read by NumberFormat's rule, dates by
// DateText's.
namespace EventText {

struct At {
    int payment = 0; // from 1; 0 when the event is placed by its date
    QDate date;
};

// A whole payment number from 1 (up to 1,000,000,000) or a date; nothing
// for any other text.
std::optional<At> readAt(const QString& text);
// Why `text` is no payment number or date, in one line; empty when it is,
// or is empty.
QString problemWithAt(const QString& text);

// "AT:NUMBER"; nothing when either side cannot be read.
std::optional<std::pair<At, double>> readPair(const QString& text);
QString problemWithPair(const QString& text);

} // namespace EventText
