#include "TestSupport.h"

#include "calculator/CalculatorKeypad.h"
#include "numerics/NumberFormat.h"
#include "platform/Services.h"
#include "store/QVFileManager.h"
#include "store/ReportStore.h"

#include <QDir>
#include <QFile>
#include <QLocale>

QString local(const char* number)
{
    return QString::fromLatin1(number).replace(QLatin1Char('.'), NumberFormat::decimalSeparator());
}

QString typed(double value)
{
    return NumberFormat::exactString(value);
}

QString overflowing()
{
    return QString(400, QLatin1Char('9'));
}

void HomeTest::SetUp()
{
    ASSERT_TRUE(home.isValid());
    qputenv("TALLYVANE_HOME", home.path().toUtf8());
    Services::reset();
    Services::setReviewPrompt(std::make_shared<CountingReviewPrompt>());
    setNow(fixedNow());
}

void HomeTest::TearDown()
{
    ReportStore::close();
    Services::reset();
    qunsetenv("TALLYVANE_HOME");
}

QDateTime HomeTest::fixedNow()
{
    return QDateTime(QDate(2024, 3, 5), QTime(14, 7, 30, 250));
}

void HomeTest::setNow(const QDateTime& value)
{
    now = value;
    Services::setClock([this] { return now; });
}

QString HomeTest::documents() const
{
    return QVFileManager::documentsDirectory();
}

QString HomeTest::readDocument(const QString& name) const
{
    QFile file(QDir(documents()).filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("<missing>");
    return QString::fromLatin1(file.readAll());
}

void HomeTest::saveReports(const QStringList& titles, int apart)
{
    auto model = QVFunctionModel::create<TestFunctionModel>();
    for (const QString& title : titles) {
        NotificationCenter::defaultCenter().post(QStringLiteral("TestReportRequestedNotification"),
                                                 nullptr, {{QStringLiteral("title"), title}});
        model->saveReport();
        setNow(now.addSecs(apart));
    }
}

void TestFunctionModel::configureNames()
{
    setNames({QStringLiteral("TestReportCreatedNotification"),
              QStringLiteral("TestReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Test Calculator"),
              QStringLiteral("test_description"), QStringLiteral("roi"), QStringLiteral("Roi")});
}

void TestFunctionModel::createReport(const QVariantMap& userInfo)
{
    writeReport(userInfo, QStringLiteral("Return on Investment"), QStringLiteral("#1FDA9A"),
                QStringLiteral("Investment: %1\nRoi: %2%\n")
                    .arg(stringFromDouble(investment), stringFromDouble(roi)));
}

void OtherFunctionModel::configureNames()
{
    setNames({QStringLiteral("OtherReportCreatedNotification"),
              QStringLiteral("OtherReportRequestedNotification"),
              QStringLiteral("Quorvex - Financial Report"), QStringLiteral("Other Calculator"),
              QStringLiteral("other_description"), QStringLiteral("tip"), QStringLiteral("Tip")});
}

void OtherFunctionModel::createReport(const QVariantMap& userInfo)
{
    writeReport(userInfo, QStringLiteral("Tip Calculator"), QStringLiteral("#F2A93B"),
                QStringLiteral("Bill: %1\n").arg(stringFromDouble(investment)));
}

QStringList shown(const AlertRequest& alert)
{
    QStringList out{alert.title, alert.message};
    for (const AlertAction& action : alert.actions)
        out << action.title + (action.cancel ? QStringLiteral(" (cancel)") : QString());
    return out;
}

void ScriptedPresenter::present(const AlertRequest& request, Answer answer)
{
    requests.push_back(request);
    if (replies.empty())
        return;
    const Reply reply = replies.front();
    replies.pop_front();
    answer(reply.action, reply.text);
}

void ScriptedPresenter::script(std::initializer_list<Reply> list)
{
    replies.assign(list.begin(), list.end());
}

void RecordingMailComposer::compose(const MailMessage& message, Finished finished)
{
    messages.push_back(message);
    filesWhileComposing = QVFileManager::filesInDocumentsDirectory();
    if (finished)
        finished(result);
}

void pressKeys(CalculatorKeypad& keypad, std::initializer_list<QString> presses)
{
    for (const QString& press : presses) {
        if (keypad.indexOfShownTitle(press) >= 0) {
            keypad.buttonClicked(keypad.indexOfShownTitle(press));
            continue;
        }
        for (const QChar c : press) {
            const int index = keypad.indexOfShownTitle(QString(c));
            ASSERT_GE(index, 0) << "no key " << QString(c).toStdString();
            keypad.buttonClicked(index);
        }
    }
}
