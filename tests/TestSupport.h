#pragma once

#include "framework/Presenter.h"
#include "framework/QVFunctionController.h"
#include "framework/QVFunctionModel.h"
#include "platform/MailComposer.h"
#include "platform/NotificationCenter.h"
#include "platform/ReviewPrompt.h"
#include "platform/UrlOpener.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <deque>
#include <gtest/gtest.h>
#include <memory>

class CalculatorKeypad;

// Failures print texts as text rather than as UTF-16 code units.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

// Presses keypad keys: each item is a key title the keypad shows now, or a
// run of characters typed one key each.
void pressKeys(CalculatorKeypad& keypad, std::initializer_list<QString> presses);

// A decimal text in the current locale: "12.5" reads "12,5" under de_DE.
QString local(const char* number);
// A value as a user types it in the current locale: every digit, never an
// exponent (the reading rule has none), so 1e12 is "1000000000000".
QString typed(double value);
// A number too large for a double: 400 nines, which reads as Infinity.
QString overflowing();

// Every test gets its own TALLYVANE_HOME, fresh services and a clock that
// reads 05-03-2024 14:07:30.250 local time.
class HomeTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    static QDateTime fixedNow();
    void setNow(const QDateTime& now);
    QString documents() const;
    QString readDocument(const QString& name) const;
    // Saves a report per title the way a calculator's "Save" does, one model
    // for all, the clock moved on `apart` seconds after each.
    void saveReports(const QStringList& titles, int apart = 60);

    QTemporaryDir home;
    QDateTime now;
};

// A calculator model with a two-line report body, named like the others.
class TestFunctionModel : public QVFunctionModel {
    Q_OBJECT

public:
    using QVFunctionModel::QVFunctionModel;
    double investment = 1000;
    double roi = 12.5;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};

// A second calculator, to check that screens ignore each other's reports.
class OtherFunctionModel : public TestFunctionModel {
    Q_OBJECT

public:
    using TestFunctionModel::TestFunctionModel;
    void createReport(const QVariantMap& userInfo) override;

protected:
    void configureNames() override;
};

template <typename Model> class TestFunctionController : public QVFunctionController {
public:
    using QVFunctionController::QVFunctionController;

    ChartPicture reportChart() const override { return chart; }
    ChartPicture chart; // none unless a test sets one

protected:
    void connectMvc() override
    {
        setModel(QVFunctionModel::create<Model>());
        setView(new QVFunctionView(this));
    }
};

// An alert as its title, its message and its actions' titles, the
// cancelling one marked.
QStringList shown(const AlertRequest& alert);

// Answers each request with the next scripted choice and records them all.
class ScriptedPresenter : public Presenter {
public:
    struct Reply {
        QString action;
        QString text;
    };
    void present(const AlertRequest& request, Answer answer) override;
    void script(std::initializer_list<Reply> replies);

    std::vector<AlertRequest> requests;
    std::deque<Reply> replies;
};

class RecordingMailComposer : public MailComposer {
public:
    bool canSend = true;
    MailResult result = MailResult::Sent; // what every mail comes to
    QString draftPath;                    // reported as the last draft
    bool canSendMail() const override { return canSend; }
    void compose(const MailMessage& message, Finished finished) override;
    QString lastDraftPath() const override { return draftPath; }

    std::vector<MailMessage> messages;
    // Files present in the documents folder while the mail was open.
    QStringList filesWhileComposing;
};

// Records every address handed over and answers at once; `opens` says
// whether a program took it.
class RecordingUrlOpener : public UrlOpener {
public:
    bool opens = false;
    void openUrl(const QUrl& url, Done done) override
    {
        opened.append(url);
        if (done)
            done(opens ? Outcome::Opened : Outcome::Failed);
    }
    QList<QUrl> opened;
};
