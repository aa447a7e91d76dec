// Feeds arbitrary bytes to the keypad's expression engine, read as UTF-8
// and as raw UTF-16, with and without a variables dictionary. Any crash,
// hang, sanitizer report or abort is a bug: bad input must only ever give
// no number. numberByParsingExpression() must also agree bit for bit with
// the token classes (EPTokenString, EPExpression) that spell out its rules.
#include "expression/EPExpression.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

std::optional<double> byTheClasses(QStringView text, const QHash<QString, double>* variables)
{
    const EPDictionaryVariableSource variableSource(variables);
    const EPStandardFunctionSource functionSource;
    EPTokenString tokens;
    if (!tokens.initWithExpression(text, variableSource, functionSource))
        return std::nullopt;
    EPExpression expression;
    if (!expression.initWithTokenString(tokens))
        return std::nullopt;
    const std::optional<EPNumericalToken> value = expression.evaluateToToken();
    return value ? std::optional(value->doubleValue()) : std::nullopt;
}

void check(QStringView text, const QHash<QString, double>* variables = nullptr)
{
    const std::optional<double> fast = numberByParsingExpression(text, variables);
    const std::optional<double> reference = byTheClasses(text, variables);
    if (fast.has_value() != reference.has_value() ||
        (fast && std::bit_cast<std::uint64_t>(*fast) != std::bit_cast<std::uint64_t>(*reference)))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QHash<QString, double> variables{
        {QStringLiteral("x"), 2.0}, {QStringLiteral("pi"), 3.0}, {QStringLiteral("rate"), -0.5}};

    const QString utf8 = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    check(utf8);
    check(utf8, &variables);

    QString utf16(qsizetype(size / 2), Qt::Uninitialized);
    std::memcpy(utf16.data(), data, (size / 2) * 2);
    check(utf16);
    return 0;
}
