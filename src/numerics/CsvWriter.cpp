#include "numerics/CsvWriter.h"

#include <charconv>
#include <cmath>

namespace CsvWriter {

namespace {

QString field(const QString& text)
{
    if (!text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"')) &&
        !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r')))
        return text;
    QString quoted = text;
    quoted.replace(QLatin1String("\""), QLatin1String("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QByteArray line(const QStringList& fields)
{
    QStringList escaped;
    escaped.reserve(fields.size());
    for (const QString& f : fields)
        escaped << field(f);
    return escaped.join(QLatin1Char(',')).toUtf8() + "\r\n";
}

} // namespace

QByteArray toCsv(const QStringList& header, const QList<QStringList>& rows)
{
    QByteArray out = line(header);
    for (const QStringList& row : rows)
        out += line(row);
    return out;
}

QString number(double value)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    if (value == 0)
        value = 0; // no "-0"
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, result.ptr - buffer);
}

} // namespace CsvWriter
