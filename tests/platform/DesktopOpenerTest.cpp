#include "TestSupport.h"
#include "framework/FallbackNotices.h"
#include "gui/DesktopServices.h"
#include "platform/AppPaths.h"
#include "platform/Services.h"

#include <QFile>
#include <QScopeGuard>
#include <QTest>
#include <optional>

using namespace std::chrono_literals;

namespace {

// The desktop opener running a stand-in for xdg-open (TALLYVANE_URL_OPENER):
// a shell script that logs its argument and exits with a given status, as
// xdg-open exits 3 when it finds no program for an address.
class DesktopOpenerTest : public HomeTest {
protected:
    void TearDown() override
    {
        qunsetenv("TALLYVANE_URL_OPENER");
        HomeTest::TearDown();
    }

    // Installs a script that runs `body` as the opener.
    void useOpenerScript(const QByteArray& body)
    {
        const QString path = home.filePath(QStringLiteral("opener-%1.sh").arg(++scripts));
        QFile script(path);
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s\\n' \"$1\" >> '" + log().toUtf8() + "'\n" + body +
                     "\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("TALLYVANE_URL_OPENER", path.toUtf8());
    }
    QString log() const { return home.filePath(QStringLiteral("opened.log")); }
    QStringList opened() const
    {
        QFile file(log());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    static std::optional<UrlOpener::Outcome> outcomeOf(UrlOpener& opener, const QUrl& url)
    {
        std::optional<UrlOpener::Outcome> outcome;
        opener.openUrl(url, [&](UrlOpener::Outcome o) { outcome = o; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, 5000));
        return outcome;
    }

    int scripts = 0;
};

TEST_F(DesktopOpenerTest, OnlyAnExitWithStatusZeroInTimeCountsAsOpened)
{
    using Outcome = UrlOpener::Outcome;
    DesktopUrlOpener opener(500ms);
    const QUrl page(QStringLiteral("https://example.org/a%20b?q=1"));

    useOpenerScript("exit 0");
    EXPECT_EQ(outcomeOf(opener, page), Outcome::Opened);
    useOpenerScript("exit 3");
    EXPECT_EQ(outcomeOf(opener, page), Outcome::Failed);
    useOpenerScript("kill -9 $$");
    EXPECT_EQ(outcomeOf(opener, page), Outcome::Failed) << "a crash";
    // Still running at the time limit: whether it opened is not known. The
    // caller is not kept waiting meanwhile.
    useOpenerScript("exec sleep 3");
    std::optional<Outcome> slow;
    opener.openUrl(page, [&](Outcome o) { slow = o; });
    EXPECT_FALSE(slow.has_value());
    EXPECT_TRUE(QTest::qWaitFor([&] { return slow.has_value(); }, 2500));
    EXPECT_EQ(slow, Outcome::NoAnswer);
    qputenv("TALLYVANE_URL_OPENER", home.filePath("missing-opener").toUtf8());
    EXPECT_EQ(outcomeOf(opener, page), Outcome::Failed) << "a program that does not start";

    // A web address goes over encoded, a file as its path.
    const QString folder = home.filePath(QStringLiteral("50% off"));
    useOpenerScript("exit 0");
    EXPECT_EQ(outcomeOf(opener, QUrl::fromLocalFile(folder)), Outcome::Opened);
    const QString sent = QStringLiteral("https://example.org/a%20b?q=1");
    EXPECT_EQ(opened(), QStringList({sent, sent, sent, sent, folder}));
}

// The desktop opener, counting its answers.
class CountingOpener : public UrlOpener {
public:
    void openUrl(const QUrl& url, Done done) override
    {
        desktop.openUrl(url, [this, done](Outcome outcome) {
            if (done)
                done(outcome);
            ++answers;
        });
    }
    DesktopUrlOpener desktop;
    int answers = 0;
};

TEST_F(DesktopOpenerTest, WhatTheOpenerFailsToOpenIsToldAndWhatItOpensIsNot)
{
    auto opener = std::make_shared<CountingOpener>();
    Services::setUrlOpener(opener);
    ScriptedPresenter presenter;
    const auto waitForAlerts = [&](size_t count) {
        return QTest::qWaitFor([&] { return presenter.requests.size() >= count; }, 5000);
    };
    MailMessage message;
    message.subject = QStringLiteral("Report");
    std::optional<MailResult> mailed;
    const auto sendMail = [&] {
        mailed.reset();
        Services::mailComposer().compose(message, [&](MailResult result) {
            mailed = result;
            FallbackNotices::mailFinished(result, &presenter);
        });
    };

    useOpenerScript("exit 3");
    // The draft no mail program opened, and then its folder that no file
    // manager opens either.
    presenter.script({{"Open Folder", ""}});
    sendMail();
    ASSERT_TRUE(waitForAlerts(2));
    EXPECT_EQ(mailed, MailResult::Unopened);
    const QString draft = Services::mailComposer().lastDraftPath();
    EXPECT_TRUE(draft.startsWith(AppPaths::outboxDirectory()));
    EXPECT_EQ(presenter.requests[0].title, "Mail draft saved");
    EXPECT_TRUE(presenter.requests[0].message.contains(draft));
    EXPECT_EQ(presenter.requests[1].title, "Could not open the folder");
    EXPECT_TRUE(presenter.requests[1].message.endsWith("\n" + AppPaths::outboxDirectory()));
    EXPECT_EQ(presenter.requests[1].actions.size(), 1);
    // A web page no browser opens.
    FallbackNotices::openUrl(QUrl(QStringLiteral("https://example.org/terms")), &presenter);
    ASSERT_TRUE(waitForAlerts(3));
    EXPECT_EQ(presenter.requests[2].title, "Could not open the page");
    EXPECT_TRUE(presenter.requests[2].message.endsWith("\nhttps://example.org/terms"));
    EXPECT_EQ(opened(),
              QStringList({draft, AppPaths::outboxDirectory(), "https://example.org/terms"}));

    // Nothing is said of what opens.
    useOpenerScript("exit 0");
    sendMail();
    FallbackNotices::openFolder(AppPaths::outboxDirectory(), &presenter);
    FallbackNotices::openUrl(QUrl(QStringLiteral("https://example.org/terms")), &presenter);
    ASSERT_TRUE(QTest::qWaitFor([&] { return opener->answers == 6; }, 5000));
    EXPECT_EQ(mailed, MailResult::Saved);
    EXPECT_EQ(opened().size(), 6);
    EXPECT_EQ(presenter.requests.size(), 3u);

    // A draft that cannot be written (the outbox is a file) is told too,
    // and nothing is handed to the opener.
    QDir(AppPaths::outboxDirectory()).removeRecursively();
    QFile blocker(AppPaths::outboxDirectory());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    sendMail();
    ASSERT_TRUE(waitForAlerts(4));
    EXPECT_EQ(mailed, MailResult::Failed);
    EXPECT_EQ(presenter.requests[3].title, "Could not write the mail");
    EXPECT_TRUE(presenter.requests[3].message.startsWith("The mail draft could not be written"));
    EXPECT_EQ(opened().size(), 6);
}

} // namespace
