#include <QLocale>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

struct Probe {
    bool rightToLeft = false;
    QStringList rest; // the number, the date and the environment
};

Probe probe(const QStringList& environment, bool ltr)
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE", "LC_NUMERIC", "LC_TIME",
                             "LC_MONETARY", "LC_MEASUREMENT", "LC_COLLATE"})
        env.remove(QString::fromLatin1(name));
    for (const QString& assignment : environment)
        env.insert(assignment.section('=', 0, 0), assignment.section('=', 1));
    process.setProcessEnvironment(env);
    process.start(QStringLiteral(LOCALE_PROBE_PATH),
                  ltr ? QStringList{QStringLiteral("--ltr")} : QStringList{});
    if (!process.waitForFinished(10000) || process.exitCode() != 0)
        return {};
    QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split('\n');
    const bool rightToLeft = lines.takeFirst() == QStringLiteral("direction 1");
    return {rightToLeft, lines};
}

// Under every installed locale whose language writes right to left, set
// as LANG, as LC_ALL or as the first choice of LANGUAGE, the app's start
// leaves the system locale's direction left to right and its numbers,
// dates and environment exactly as they were; under other locales it
// changes nothing.
TEST(InputDirection, RightToLeftLanguagesGiveLeftToRightInputAndNothingElse)
{
    QProcess list;
    list.start(QStringLiteral("locale"), {QStringLiteral("-a")});
    ASSERT_TRUE(list.waitForFinished(10000));
    QStringList names;
    for (const QString& name : QString::fromLatin1(list.readAllStandardOutput()).split('\n'))
        if (name.endsWith(QLatin1String(".utf8")) &&
            QLocale(name.section('.', 0, 0)).textDirection() == Qt::RightToLeft)
            names << name;
    ASSERT_FALSE(names.isEmpty()) << "no right-to-left locale installed";

    std::vector<std::pair<QStringList, bool>> cases = {
        {{"LANG=de_DE.utf8"}, false},
        {{"LANG=en_US.utf8", "LANGUAGE=he:en"}, true},
    };
    for (const QString& name : names) {
        cases.push_back({{"LANG=" + name}, true});
        cases.push_back({{"LC_ALL=" + name, "LANG=sv_SE.utf8", "LC_NUMERIC=de_DE.utf8"}, true});
        cases.push_back({{"LANG=" + name, "LC_TIME=en_GB.utf8"}, true});
    }
    for (const auto& [environment, rightToLeft] : cases) {
        SCOPED_TRACE(environment.join(' ').toStdString());
        const Probe user = probe(environment, false);
        const Probe app = probe(environment, true);
        ASSERT_EQ(user.rest.size(), 9);
        EXPECT_EQ(user.rightToLeft, rightToLeft);
        EXPECT_FALSE(app.rightToLeft);
        EXPECT_EQ(app.rest, user.rest);
    }
}

} // namespace
