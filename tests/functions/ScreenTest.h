#pragma once

// A calculator screen driven the way its QML drives it: edits one field at a
// time, action sheets answered by a scripted presenter, and the report the
// model writes.
#include "TestSupport.h"
#include "platform/Rgba.h"
#include "reports/QVReport.h"

#include <QLocale>

template <typename Controller> class ScreenTest : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        screen = std::make_unique<Controller>();
        screen->setPresenter(&presenter);
        view = screen->qvFunctionView();
    }
    void type(const QString& outlet, const QString& text) { screen->editField(outlet, text); }
    // Opens the sheet of `outlet` and answers it with `word`.
    void choose(const QString& outlet, const QString& word)
    {
        presenter.script({{word, ""}});
        screen->openChoice(outlet);
    }
    // The texts the outlets show, in order.
    QStringList texts(std::initializer_list<const char*> outlets) const
    {
        QStringList shown;
        for (const char* outlet : outlets)
            shown << view->text(outlet);
        return shown;
    }
    const QVReport& report() const { return screen->model()->report(); }
    // The report below its heading, date and rule.
    QString reportBody() const
    {
        const QString contents = report().contents;
        return contents.mid(contents.indexOf("-----------------------------\n\n") + 31);
    }
    // The last report: its heading and date, names and colour, and the saved
    // document holds exactly its contents.
    void expectReport(const QString& heading, const QString& fileName, const QString& functionTitle,
                      Rgba colorTag, const QString& date = "05-03-2024 14:07") const
    {
        EXPECT_TRUE(report().contents.startsWith("Financial Report - " + heading + "\nDate: " +
                                                 date + "\n\n-----------------------------\n\n"))
            << report().contents.toStdString();
        EXPECT_EQ(report().fileName, fileName);
        EXPECT_EQ(report().functionTitle, functionTitle);
        EXPECT_EQ(report().colorTag, colorTag);
        EXPECT_EQ(readDocument(report().fileName), report().contents);
    }

    ScriptedPresenter presenter;
    std::unique_ptr<Controller> screen;
    QVFunctionView* view = nullptr;
};

// A notification's sender and its whole userInfo.
inline void expectNotification(const Notification& seen, const QObject* sender,
                               const QVariantMap& userInfo)
{
    EXPECT_EQ(seen.sender.data(), sender);
    EXPECT_EQ(seen.userInfo, userInfo);
}

// Decimal texts in the current locale, as local() writes one.
inline QStringList locals(std::initializer_list<const char*> numbers)
{
    QStringList texts;
    for (const char* number : numbers)
        texts << local(number);
    return texts;
}

// A number with all its 17 digits, written with the locale's decimal separator.
inline QString exact(double value)
{
    return QString::number(value, 'g', 17).replace('.', QLocale().decimalPoint());
}
