#include "AboutController.h"
#include "TestSupport.h"
#include "platform/Services.h"
#include "platform/UrlOpener.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QList>
#include <QScopeGuard>
#include <memory>

namespace {

class AboutTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        Services::setUrlOpener(opener);
        Services::setMailComposer(mail);
    }

    std::shared_ptr<RecordingUrlOpener> opener = std::make_shared<RecordingUrlOpener>();
    std::shared_ptr<RecordingMailComposer> mail = std::make_shared<RecordingMailComposer>();
    AboutController about;
};

TEST_F(AboutTest, WebRowsOpenTheMakersPagesAndTheStoreAndOtherRowsNothing)
{
    const QList<QPair<int, int>> others = {{0, 0}, {0, 3}, {1, 3},  {2, 0},  {2, 1},
                                           {2, 2}, {2, 3}, {-1, 1}, {1, -1}, {3, 1}};
    for (const auto& [section, row] : others)
        about.rowSelected(section, row);
    EXPECT_TRUE(opener->opened.isEmpty());

    about.rowSelected(0, 1);
    about.rowSelected(0, 2);
    about.rowSelected(1, 1);
    ASSERT_EQ(opener->opened.size(), 3);
    EXPECT_EQ(opener->opened[0], QUrl(QStringLiteral(TALLYVANE_WEB_URL "/privacy")));
    EXPECT_EQ(opener->opened[1], QUrl(QStringLiteral(TALLYVANE_WEB_URL "/terms")));
    EXPECT_EQ(opener->opened[2], QUrl(QStringLiteral(TALLYVANE_STORE_URL)));
    for (const QUrl& url : opener->opened)
        EXPECT_TRUE(url.isValid() && !url.scheme().isEmpty()) << url.toString().toStdString();
    EXPECT_TRUE(mail->messages.empty());
}

// The invitation is an HTML mail with the store link; feedback is a blank
// mail to support. Both go out even when the device cannot send mail.
TEST_F(AboutTest, MailRowsComposeTheInvitationAndFeedback)
{
    about.rowSelected(1, 0);
    about.rowSelected(1, 2);
    ASSERT_EQ(mail->messages.size(), 2u);
    const MailMessage& invitation = mail->messages[0];
    EXPECT_EQ(invitation.subject, "Tallyvane Invitation");
    EXPECT_TRUE(invitation.recipients.isEmpty());
    EXPECT_TRUE(invitation.bodyIsHtml);
    EXPECT_EQ(
        invitation.body,
        QStringLiteral("<p>Hey, I've been using Tallyvane and thought you might like it.</p>\n"
                       "<a href=\"" TALLYVANE_STORE_URL "\">Download on the App Store</a>\n"));
    EXPECT_TRUE(invitation.attachments.isEmpty());
    const MailMessage& feedback = mail->messages[1];
    EXPECT_EQ(feedback.subject, "Tallyvane");
    EXPECT_EQ(feedback.recipients, QStringList{QStringLiteral(TALLYVANE_SUPPORT_EMAIL)});
    EXPECT_TRUE(feedback.body.isEmpty());
    EXPECT_TRUE(feedback.attachments.isEmpty());
    EXPECT_TRUE(opener->opened.isEmpty());

    mail->canSend = false;
    about.showEmail();
    about.sendFeedback();
    EXPECT_EQ(mail->messages.size(), 4u);
    EXPECT_EQ(mail->messages[2].subject, "Tallyvane Invitation");
    EXPECT_EQ(mail->messages[3].subject, "Tallyvane");
}

TEST_F(AboutTest, WhatNoProgramOpensIsShownWithACopyOrFolderButton)
{
    ScriptedPresenter presenter;
    Presenter::setDefaultPresenter(&presenter);
    const auto restore = qScopeGuard([] { Presenter::setDefaultPresenter(nullptr); });

    // A web page no browser takes: its address, and Copy puts it on the clipboard.
    presenter.script({{"Copy", ""}});
    about.rowSelected(0, 1);
    ASSERT_EQ(presenter.requests.size(), 1u);
    EXPECT_EQ(presenter.requests[0].title, "Could not open the page");
    EXPECT_TRUE(presenter.requests[0].message.contains(TALLYVANE_WEB_URL "/privacy"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), TALLYVANE_WEB_URL "/privacy");

    // A mail draft no mail program opens: where it is, and a button that
    // opens its folder.
    mail->result = MailResult::Unopened;
    mail->draftPath = home.filePath("Outbox/draft-1.eml");
    presenter.script({{"Open Folder", ""}});
    about.sendFeedback();
    ASSERT_EQ(presenter.requests.size(), 3u);
    EXPECT_EQ(presenter.requests[1].title, "Mail draft saved");
    EXPECT_TRUE(presenter.requests[1].message.contains(mail->draftPath));
    EXPECT_EQ(opener->opened.last(), QUrl::fromLocalFile(home.filePath("Outbox")));
    EXPECT_EQ(presenter.requests[2].title, "Could not open the folder");

    // A mail program that has not answered in time may or may not show the
    // draft: the user hears where it is all the same.
    mail->result = MailResult::Unanswered;
    about.showEmail();
    ASSERT_EQ(presenter.requests.size(), 4u);
    EXPECT_EQ(presenter.requests[3].title, "Mail draft saved");
    EXPECT_TRUE(presenter.requests[3].message.startsWith("The mail program has not answered"));

    // Opened pages and mails say nothing more.
    opener->opens = true;
    mail->result = MailResult::Saved;
    about.rowSelected(0, 2);
    about.showEmail();
    EXPECT_EQ(presenter.requests.size(), 4u);
}

TEST_F(AboutTest, VersionAndInformationPagesAreBundled)
{
    EXPECT_EQ(about.property("appVersion").toString(), QStringLiteral(TALLYVANE_VERSION));
    const QString credits = about.pageHtml("credits");
    EXPECT_TRUE(credits.contains("Qt")) << "credits name the toolkit";
    EXPECT_TRUE(credits.contains("LGPL") || credits.contains("Lesser General Public License"));
    for (const char* name : {"credits", "privacy", "terms"}) {
        const QString page = about.pageHtml(QString::fromLatin1(name));
        EXPECT_TRUE(page.startsWith("<html>")) << name;
        EXPECT_TRUE(page.contains("<h2>")) << name;
    }
    EXPECT_TRUE(about.pageHtml("missing").isEmpty());
    EXPECT_TRUE(about.pageHtml("../html/credits").isEmpty());
}

} // namespace
