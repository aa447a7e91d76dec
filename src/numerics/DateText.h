#pragma once

#include <QDate>
#include <QString>
#include <optional>

// The one way Tallyvane reads a typed date (dated cash flows, a loan's first
// payment, the command line): YYYY-MM-DD, month and day with or without
// their leading zeros ("2025-07-15" and "2025-7-15" alike, as spreadsheets
// read them), a four-digit year, and a day that exists ("2025-02-30" does
// not). White space around it and invisible marks (direction marks a
// right-to-left keyboard adds) are ignored; digits may be any script's, as
// in numbers. Anything else ("31/03/2027", "2025-07-15T10:00") is no date.
namespace DateText {

std::optional<QDate> readIsoDate(const QString& text);

// Why a text is no date, in one plain line for its mark ("Not a date: use
// YYYY-MM-DD"); empty for a date and for an empty text.
QString problemWith(const QString& text);

} // namespace DateText
