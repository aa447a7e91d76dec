// Replays golden_results.txt: thousands of keypad lines, each with the exact
// bits of the double it gave (or "none"), must give exactly that again, both
// from the keypad's one-pass evaluator and from the token classes that spell
// out its rules (EPTokenString, EPExpression). The file is written by tools/RecordGoldenResults.cpp
// (target record-golden-results) with the same dictionary, from GoldenFormat.h.
#include "ExpressionTestSupport.h"
#include "GoldenFormat.h"

#include <QDir>
#include <QFile>
#include <QTextStream>
#include <bit>

namespace {

using golden::dictionary;
using golden::resultText;

// The same line through the token classes.
std::optional<double> byTheClasses(QStringView text, const QHash<QString, double>* variables)
{
    EPTokenString tokens;
    EPExpression expression;
    if (!tokens.initWithExpression(text, EPDictionaryVariableSource(variables),
                                   EPStandardFunctionSource()) ||
        !expression.initWithTokenString(tokens))
        return std::nullopt;
    const std::optional<EPNumericalToken> value = expression.evaluateToToken();
    return value ? std::optional(value->doubleValue()) : std::nullopt;
}

// Each "\uXXXX" in a recorded line is one UTF-16 unit, lone surrogates
// included.
QString unescaped(QStringView text)
{
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 5 < text.size()) {
            out += QChar(char16_t(text.mid(i + 2, 4).toUShort(nullptr, 16)));
            i += 5;
        } else {
            out += text[i];
        }
    }
    return out;
}

TEST(GoldenResults, EveryRecordedLineGivesItsRecordedBits)
{
    QFile file(QStringLiteral(GOLDEN_RESULTS_FILE));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    int lines = 0;
    int failures = 0;
    QTextStream in(&file);
    for (QString line; in.readLineInto(&line); ++lines) {
        const QString expected = line.section(QLatin1Char(' '), 0, 0);
        const bool withDictionary = line.section(QLatin1Char(' '), 1, 1) == u"v";
        const QString input = unescaped(QStringView(line).mid(expected.size() + 3));
        const QHash<QString, double>* variables = withDictionary ? &dictionary : nullptr;
        const QString got = resultText(numberByParsingExpression(input, variables));
        const QString reference = resultText(byTheClasses(input, variables));
        if ((got != expected || reference != expected) && ++failures <= 20)
            ADD_FAILURE() << "line " << lines + 1 << " \""
                          << line.mid(expected.size() + 3).toStdString()
                          << "\": " << got.toStdString() << ", by the classes "
                          << reference.toStdString() << ", recorded " << expected.toStdString();
    }
    EXPECT_EQ(failures, 0);
    EXPECT_GT(lines, 4000);
}

// Every input the fuzzer ever crashed on is kept in fuzz/regressions and
// must now evaluate (to a number or to nothing) without harm, read as UTF-8
// and as UTF-16, including those kept after the file was recorded; so must
// the fuzzer's seed corpus. A missing folder fails: it would check nothing.
TEST(FuzzRegressions, EveryKeptInputEvaluatesQuietly)
{
    int inputs = 0;
    for (const char* folder : {FUZZ_REGRESSIONS_DIR, FUZZ_CORPUS_DIR}) {
        const QDir dir(QString::fromUtf8(folder));
        ASSERT_TRUE(dir.exists()) << folder << " is missing";
        for (const QString& name : dir.entryList(QDir::Files | QDir::NoDotAndDotDot)) {
            if (name.startsWith(QLatin1Char('.')))
                continue;
            QFile file(dir.filePath(name));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
            const QByteArray bytes = file.readAll();
            (void)numberByParsingExpression(QString::fromUtf8(bytes));
            (void)numberByParsingExpression(QStringView(
                reinterpret_cast<const char16_t*>(bytes.constData()), bytes.size() / 2));
            ++inputs;
        }
    }
    EXPECT_GT(inputs, 0) << "no kept inputs at all";
}

} // namespace
