#pragma once

// What golden_results.txt is written with (tools/RecordGoldenResults.cpp)
// and read back with (GoldenResultsTest.cpp).

#include <QHash>
#include <QString>
#include <bit>
#include <optional>

namespace golden {

// Both the variables the fuzzer uses and names that shadow a function or
// look like a number followed by a word; used on the lines marked "v".
inline const QHash<QString, double> dictionary{{QStringLiteral("x"), 2.0},
                                               {QStringLiteral("pi"), 3.0},
                                               {QStringLiteral("rate"), -0.5},
                                               {QStringLiteral("sin"), 5.0},
                                               {QStringLiteral("2x"), 7.0}};

// The exact bits of a result as 16 hex digits, or "none".
inline QString resultText(std::optional<double> value)
{
    if (!value)
        return QStringLiteral("none");
    return QStringLiteral("%1").arg(std::bit_cast<quint64>(*value), 16, 16, QLatin1Char('0'));
}

} // namespace golden
