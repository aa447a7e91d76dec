// Runs every case of tests/vectors/*.jsonl through the command
// line's own code (in this process, so through the calculators' controllers and models) and, for
// every fifth case, through the installed-style `tallyvane-cli` program as well. One case a line;
// see tests/vectors/README.md.
#include "cli/Cli.h"
#include "framework/CalculatorDescription.h"
#include "framework/CalculatorRegistry.h"
#include "functions/Calculators.h"
#include "numerics/NumberFormat.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

struct Vector {
    QString file;
    int line = 0;
    QJsonObject data;
    QString id() const { return data.value(QStringLiteral("id")).toString(); }
};

// The cases of one file, named `name` in messages.
void loadFile(const QString& path, const QString& name, std::vector<Vector>& vectors)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    int line = 0;
    while (!file.atEnd()) {
        const QByteArray text = file.readLine().trimmed();
        ++line;
        if (text.isEmpty() || text.startsWith('#'))
            continue;
        QJsonParseError error{};
        const QJsonDocument doc = QJsonDocument::fromJson(text, &error);
        Vector v{name, line, doc.object()};
        if (error.error != QJsonParseError::NoError || !doc.isObject())
            v.data = {{QStringLiteral("id"), QStringLiteral("unparsable")},
                      {QStringLiteral("parseError"), error.errorString()}};
        vectors.push_back(v);
    }
}

// Every case of tests/vectors/*.jsonl, a calculator's in <name>.jsonl.
std::vector<Vector> loadVectors()
{
    std::vector<Vector> vectors;
    const QDir dir(QStringLiteral(VECTORS_DIR));
    for (const QString& name : dir.entryList({QStringLiteral("*.jsonl")}, QDir::Files, QDir::Name))
        loadFile(dir.filePath(name), name, vectors);
    return vectors;
}

const std::vector<Vector>& vectors()
{
    static const std::vector<Vector> all = loadVectors();
    return all;
}

// The command line of a case: "calc NAME ARGS..." or "keys KEYS...".
QStringList commandOf(const QJsonObject& data)
{
    QStringList command;
    if (data.contains(QStringLiteral("calc")))
        command << QStringLiteral("calc") << data.value(QStringLiteral("calc")).toString();
    else
        command << QStringLiteral("keys");
    const QJsonArray args =
        data.value(data.contains(QStringLiteral("keys")) ? QStringLiteral("keys")
                                                         : QStringLiteral("args"))
            .toArray();
    for (const QJsonValue& arg : args)
        command << arg.toString();
    // A case that checks the report's lines asks for the report.
    if ((data.contains(QStringLiteral("report")) || data.contains(QStringLiteral("reportLacks"))) &&
        !command.contains(QStringLiteral("--report")) &&
        !command.contains(QStringLiteral("--save")))
        command << QStringLiteral("--report") << QStringLiteral("Vector");
    command << (data.contains(QStringLiteral("csv")) ? QStringLiteral("--csv")
                                                     : QStringLiteral("--json"));
    return command;
}

struct Outcome {
    int exitCode = 0;
    QString out;
    QString err;
};

Outcome runInProcess(const QStringList& command)
{
    Outcome outcome;
    QTextStream out(&outcome.out);
    QTextStream err(&outcome.err);
    outcome.exitCode = runCli(command, out, err);
    out.flush();
    err.flush();
    return outcome;
}

Outcome runProgram(const QStringList& command)
{
    QProcess process;
    process.start(QStringLiteral(CLI_PATH), command);
    process.waitForFinished(30000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// The value a case names in the output: "values"/"registers" first, then
// the top level ("display", "label").
QJsonValue lookUp(const QJsonObject& output, const QString& key)
{
    for (const char* group : {"values", "registers"}) {
        const QJsonObject inner = output.value(QLatin1String(group)).toObject();
        if (inner.contains(key))
            return inner.value(key);
    }
    return output.value(key);
}

double numberOf(const QJsonValue& value)
{
    if (value.isDouble())
        return value.toDouble();
    const QString text = value.toString();
    if (text == u"NaN")
        return std::nan("");
    if (text == u"Infinity")
        return INFINITY;
    if (text == u"-Infinity")
        return -INFINITY;
    return std::nan("");
}

bool near(double got, double want, double absolute, double relative)
{
    return std::isnan(want) ? std::isnan(got)
           : std::isinf(want)
               ? got == want
               : std::fabs(got - want) <= std::max(absolute, relative * std::fabs(want));
}

// A text of the case with each "." between digits written as the locale's
// decimal separator, as the report writes numbers.
QString localDecimals(QString text)
{
    static const QRegularExpression point(QStringLiteral("(\\d)\\.(\\d)"));
    return text.replace(point, QStringLiteral("\\1") + NumberFormat::decimalSeparator() +
                                   QStringLiteral("\\2"));
}

// `--csv` output against "csv": {column: [every row's value]} or
// {column: {"row number": value}}; numbers within the tolerance, texts whole.
QStringList checkCsv(const QJsonObject& data, const QString& out)
{
    QStringList failures;
    QStringList lines = out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.trimmed(); // the rows end in CR LF
    const QStringList header = lines.value(0).split(QLatin1Char(','));
    const double absolute = data.value(QStringLiteral("tol")).toDouble(0);
    const double relative = data.value(QStringLiteral("rel")).toDouble(0);
    const QJsonObject csv = data.value(QStringLiteral("csv")).toObject();
    for (auto it = csv.constBegin(); it != csv.constEnd(); ++it) {
        const qsizetype column = header.indexOf(it.key());
        if (column < 0) {
            failures << QStringLiteral("csv: no column %1 in \"%2\"").arg(it.key(), lines.value(0));
            continue;
        }
        QList<std::pair<qsizetype, QJsonValue>> wanted; // row (from 1), value
        if (it->isArray()) {
            const QJsonArray all = it->toArray();
            if (all.size() != lines.size() - 1)
                failures << QStringLiteral("csv: %1 rows, expected %2")
                                .arg(lines.size() - 1)
                                .arg(all.size());
            for (qsizetype row = 0; row < all.size(); ++row)
                wanted.append({row + 1, all.at(row)});
        } else {
            const QJsonObject some = it->toObject();
            for (auto cell = some.constBegin(); cell != some.constEnd(); ++cell)
                wanted.append({cell.key().toLongLong(), *cell});
        }
        for (const auto& [row, want] : wanted) {
            const QString got = lines.value(row).split(QLatin1Char(',')).value(column);
            const bool same = want.isString()
                                  ? got == want.toString()
                                  : near(got.toDouble(), want.toDouble(), absolute, relative);
            if (!same)
                failures << QStringLiteral("csv: %1 of row %2 is \"%3\", expected %4")
                                .arg(it.key())
                                .arg(row)
                                .arg(got, want.isString()
                                              ? want.toString()
                                              : QString::number(want.toDouble(), 'g', 17));
        }
    }
    return failures;
}

// Checks one outcome against the case; returns the failures, one a line.
QStringList check(const QJsonObject& data, const Outcome& outcome)
{
    QStringList failures;
    const int expectedExit = data.value(QStringLiteral("exit")).toInt(0);
    if (outcome.exitCode != expectedExit)
        failures << QStringLiteral("exit code %1, expected %2 (stderr: %3)")
                        .arg(outcome.exitCode)
                        .arg(expectedExit)
                        .arg(outcome.err.trimmed());
    if (const QString stderrText = data.value(QStringLiteral("stderr")).toString();
        !stderrText.isEmpty() && !outcome.err.contains(stderrText))
        failures
            << QStringLiteral("stderr \"%1\" lacks \"%2\"").arg(outcome.err.trimmed(), stderrText);
    if (expectedExit != 0)
        return failures;
    if (data.contains(QStringLiteral("csv")))
        return failures + checkCsv(data, outcome.out);

    const QJsonObject output = QJsonDocument::fromJson(outcome.out.toUtf8()).object();
    const double absolute = data.value(QStringLiteral("tol")).toDouble(0);
    const double relative = data.value(QStringLiteral("rel")).toDouble(0);
    const QJsonObject expect = data.value(QStringLiteral("expect")).toObject();
    for (auto it = expect.constBegin(); it != expect.constEnd(); ++it) {
        const QJsonValue actual = lookUp(output, it.key());
        if (actual.isUndefined()) {
            failures << QStringLiteral("%1: missing from the output").arg(it.key());
            continue;
        }
        if (it->isString() && !(it->toString() == u"NaN" || it->toString().endsWith(u"Infinity"))) {
            // Texts ("display", "label") compare whole, written with "."
            // for the locale's decimal separator.
            QString got = actual.toString();
            got.replace(NumberFormat::decimalSeparator(), QStringLiteral("."));
            if (got != it->toString())
                failures << QStringLiteral("%1: \"%2\", expected \"%3\"")
                                .arg(it.key(), got, it->toString());
            continue;
        }
        if (it->isArray()) {
            const QJsonArray want = it->toArray();
            const QJsonArray got = actual.toArray();
            bool same = want.size() == got.size();
            for (qsizetype k = 0; same && k < want.size(); ++k) {
                same = near(numberOf(got.at(k)), numberOf(want.at(k)), absolute, relative);
            }
            if (!same)
                failures << QStringLiteral("%1: %2, expected %3")
                                .arg(it.key(),
                                     QString::fromUtf8(
                                         QJsonDocument(got).toJson(QJsonDocument::Compact)),
                                     QString::fromUtf8(
                                         QJsonDocument(want).toJson(QJsonDocument::Compact)));
            continue;
        }
        const double want = numberOf(*it);
        const double got = numberOf(actual);
        if (!near(got, want, absolute, relative))
            failures << QStringLiteral("%1: %2, expected %3 (tolerance %4, relative %5)")
                            .arg(it.key())
                            .arg(got, 0, 'g', 17)
                            .arg(want, 0, 'g', 17)
                            .arg(absolute)
                            .arg(relative);
    }
    // Notes (why a value is no number) must start with the expected text;
    // "" expects none.
    const QJsonObject notes = output.value(QStringLiteral("notes")).toObject();
    const QJsonObject expectedNotes = data.value(QStringLiteral("note")).toObject();
    for (auto it = expectedNotes.constBegin(); it != expectedNotes.constEnd(); ++it) {
        const QString got = notes.value(it.key()).toString();
        if (it->toString().isEmpty() ? !got.isEmpty() : !got.startsWith(it->toString()))
            failures << QStringLiteral("note on %1: \"%2\", expected \"%3\"")
                            .arg(it.key(), got, it->toString());
    }
    // The report: "report" lists lines it must hold, "reportLacks" texts it
    // must not.
    const QString report = output.value(QStringLiteral("report")).toString();
    const QStringList reportLines = report.split(QLatin1Char('\n'));
    for (const QJsonValue& line : data.value(QStringLiteral("report")).toArray()) {
        if (!reportLines.contains(localDecimals(line.toString())))
            failures
                << QStringLiteral("report lacks the line \"%1\":\n%2").arg(line.toString(), report);
    }
    for (const QJsonValue& text : data.value(QStringLiteral("reportLacks")).toArray()) {
        if (report.contains(localDecimals(text.toString())))
            failures << QStringLiteral("report holds \"%1\":\n%2").arg(text.toString(), report);
    }
    return failures;
}

class Vectors : public ::testing::TestWithParam<size_t> {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_home.isValid());
        qputenv("TALLYVANE_HOME", m_home.path().toUtf8());
    }
    QTemporaryDir m_home;
};

TEST_P(Vectors, AgreeWithTheirSource)
{
    const Vector& v = vectors().at(GetParam());
    SCOPED_TRACE(QStringLiteral("%1:%2 %3").arg(v.file).arg(v.line).arg(v.id()).toStdString());
    ASSERT_FALSE(v.data.contains(QStringLiteral("parseError")))
        << v.data.value(QStringLiteral("parseError")).toString().toStdString();
    ASSERT_FALSE(v.data.value(QStringLiteral("source")).toString().isEmpty())
        << "every case names where its numbers come from";
    const QStringList command = commandOf(v.data);
    const Outcome inProcess = runInProcess(command);
    for (const QString& failure : check(v.data, inProcess))
        ADD_FAILURE() << failure.toStdString() << "\n  " << command.join(u' ').toStdString();
    if (GetParam() % 5 == 0) {
        const Outcome program = runProgram(command);
        for (const QString& failure : check(v.data, program))
            ADD_FAILURE() << "tallyvane-cli: " << failure.toStdString() << "\n  "
                          << command.join(u' ').toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(All, Vectors, ::testing::Range<size_t>(0, vectors().size()),
                         [](const ::testing::TestParamInfo<size_t>& info) {
                             QString name = vectors().at(info.param).id();
                             for (QChar& c : name) {
                                 if (!c.isLetterOrNumber())
                                     c = u'_';
                             }
                             return QStringLiteral("%1_%2").arg(info.param).arg(name).toStdString();
                         });

// Every calculator's worked example (what the screenshot walk shows) names
// only its own inputs and compute buttons, and gives every numeric result
// a number.
TEST(Examples, EveryCalculatorsExampleComputesItsResults)
{
    installCalculators();
    const QList<const CalculatorDescription*>& calculators = CalculatorRegistry::calculators();
    ASSERT_FALSE(calculators.isEmpty());
    for (const CalculatorDescription* d : calculators) {
        SCOPED_TRACE(d->name.toStdString());
        ASSERT_FALSE(d->example.isEmpty());
        for (const ExampleStep& step : d->exampleSteps()) {
            EXPECT_NE(step.kind, ExampleStep::Kind::Unknown) << step.value.toStdString();
            if (step.kind == ExampleStep::Kind::Solve) {
                EXPECT_TRUE(d->solveButtons.contains(step.value)) << step.value.toStdString();
            }
        }
        const Outcome outcome = runInProcess(QStringList{QStringLiteral("calc"), d->name} +
                                             d->example + QStringList{QStringLiteral("--json")});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
        const QJsonObject values = QJsonDocument::fromJson(outcome.out.toUtf8())
                                       .object()
                                       .value(QStringLiteral("values"))
                                       .toObject();
        for (const ResultDescription& result : d->results) {
            const QJsonValue value = values.value(result.key);
            if (value.isDouble() || value.toString() == u"NaN") {
                EXPECT_TRUE(std::isfinite(numberOf(value))) << result.key.toStdString();
            }
        }
    }
}

// Every calculator of the registry has cases of its own.
TEST(VectorFiles, AreThere)
{
    installCalculators();
    const QList<const CalculatorDescription*>& calculators = CalculatorRegistry::calculators();
    ASSERT_FALSE(calculators.isEmpty());
    for (const CalculatorDescription* d : calculators) {
        const bool some = std::any_of(vectors().begin(), vectors().end(), [d](const Vector& v) {
            return v.data.value(QStringLiteral("calc")).toString() == d->name;
        });
        EXPECT_TRUE(some) << "no cases for " << d->name.toStdString();
    }
}

} // namespace
