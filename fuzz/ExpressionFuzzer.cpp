// Feeds arbitrary bytes to the keypad's expression engine, read as UTF-8
// and as raw UTF-16, with and without a variables dictionary. Any crash,
// hang, sanitizer report or abort is a bug: bad input must only ever give
// no number.
#include "expression/EPExpression.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QHash<QString, double> variables{
        {QStringLiteral("x"), 2.0}, {QStringLiteral("pi"), 3.0}, {QStringLiteral("rate"), -0.5}};

    const QString utf8 = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)numberByParsingExpression(utf8);
    (void)numberByParsingExpression(utf8, &variables);

    QString utf16(qsizetype(size / 2), Qt::Uninitialized);
    std::memcpy(utf16.data(), data, (size / 2) * 2);
    (void)numberByParsingExpression(utf16);
    return 0;
}
