#include "ExpressionTestSupport.h"

#include <QDir>
#include <QFile>

namespace {

// Every input the fuzzer ever crashed on is kept in fuzz/regressions and
// must now evaluate (to a number or to nothing) without harm.
TEST(FuzzRegressions, EveryKeptInputEvaluatesQuietly)
{
    const QDir dir(QStringLiteral(FUZZ_REGRESSIONS_DIR));
    const QStringList files = dir.entryList(QDir::Files | QDir::NoDotAndDotDot);
    for (const QString& name : files) {
        if (name.startsWith(QLatin1Char('.')))
            continue;
        QFile file(dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        const QByteArray bytes = file.readAll();
        (void)numberByParsingExpression(QString::fromUtf8(bytes));
        (void)numberByParsingExpression(
            QStringView(reinterpret_cast<const char16_t*>(bytes.constData()), bytes.size() / 2));
        SUCCEED() << name.toStdString();
    }
}

} // namespace
