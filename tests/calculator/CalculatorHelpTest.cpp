#include "TestSupport.h"
#include "calculator/CalculatorController.h"
#include "calculator/CalculatorHelpModel.h"
#include "calculator/CalculatorKeypad.h"

#include <QLocale>
#include <QRegularExpression>

namespace {

// The help pages' worked examples are tables of class "keys": each row is
// a press column, then the display and (when the table has the column) the
// label the keypad shows afterwards. In the press column, <b>KEY</b> is a
// keypad key by the title it shows, <code>text</code> is typed on a
// computer keyboard, and after STO or RCL a <code> answers the alert's
// field and <b>OK</b> confirms it. Each table starts on a fresh keypad.
// Every example is run here, so no page promises what the keypad does not
// do.

// An alert held open until the example presses OK.
class HeldPresenter : public Presenter {
public:
    void present(const AlertRequest&, Answer answer) override { pending = std::move(answer); }
    Answer pending;
    QString field;
};

QString plainText(QString html)
{
    html.remove(QRegularExpression(QStringLiteral("<[^>]*>")));
    html.replace(QLatin1String("&nbsp;"), QLatin1String(" "));
    html.replace(QLatin1String("&lt;"), QLatin1String("<"));
    html.replace(QLatin1String("&gt;"), QLatin1String(">"));
    html.replace(QLatin1String("&amp;"), QLatin1String("&"));
    return html.simplified();
}

struct Example {
    QString press;   // the press cell's HTML
    QString display; // promised display, "." as the decimal point
    QString label;   // promised label, or null when the table has none
};

// The "keys" tables of a page, each a list of rows.
QList<QList<Example>> examplesOf(const QString& page)
{
    static const QRegularExpression table(
        QStringLiteral(R"(<table[^>]*class="keys"[^>]*>(.*?)</table>)"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression row(QStringLiteral("<tr>(.*?)</tr>"),
                                        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression cell(QStringLiteral("<t([dh])[^>]*>(.*?)</t[dh]>"),
                                         QRegularExpression::DotMatchesEverythingOption);
    QList<QList<Example>> tables;
    for (const auto& t : table.globalMatch(page)) {
        QList<Example> rows;
        int displayColumn = -1, labelColumn = -1;
        for (const auto& r : row.globalMatch(t.captured(1))) {
            QStringList cells;
            bool header = false;
            for (const auto& c : cell.globalMatch(r.captured(1))) {
                header = c.captured(1) == u"h";
                cells << c.captured(2);
            }
            if (header) {
                for (int i = 0; i < cells.size(); ++i) {
                    if (plainText(cells[i]) == u"Display")
                        displayColumn = i;
                    else if (plainText(cells[i]) == u"Label")
                        labelColumn = i;
                }
                continue;
            }
            if (displayColumn < 0 || cells.size() <= std::max(displayColumn, labelColumn))
                continue; // malformed: caught by the count below
            rows.append({cells[0], plainText(cells[displayColumn]),
                         labelColumn < 0 ? QString() : plainText(cells[labelColumn])});
        }
        tables.append(rows);
    }
    return tables;
}

// Each page with the fewest examples it must yield, so that a table lost
// to a markup slip is noticed.
class HelpExamples : public HomeTest,
                     public ::testing::WithParamInterface<std::pair<const char*, int>> {
protected:
    // Presses one example's keys; false with a message when it names a key
    // that the keypad does not show.
    ::testing::AssertionResult press(const QString& cell)
    {
        static const QRegularExpression token(QStringLiteral("<(b|code)>(.*?)</\\1>"));
        for (const auto& m : token.globalMatch(cell)) {
            const QString text = plainText(m.captured(2));
            if (m.captured(1) == u"b") {
                if (text == u"OK" && presenter.pending) {
                    auto answer = std::exchange(presenter.pending, nullptr);
                    answer(QStringLiteral("OK"), presenter.field);
                    continue;
                }
                const int index = keypad->indexOfShownTitle(text);
                if (index < 0)
                    return ::testing::AssertionFailure() << "no key shows " << text.toStdString();
                keypad->buttonClicked(index);
            } else if (presenter.pending) {
                presenter.field = text;
            } else {
                for (const QChar c : text) {
                    if (c.isSpace())
                        continue;
                    const QString title = CalculatorKeypad::titleForKeyboard(0, QString(c));
                    if (!title.isEmpty())
                        keypad->pressTitle(title);
                    else if (c >= u'a' && c <= u'z')
                        engine->typeLetters(QString(c));
                    else
                        return ::testing::AssertionFailure()
                               << "cannot type " << QString(c).toStdString();
                }
            }
        }
        return ::testing::AssertionSuccess();
    }

    void runPage(const char* source, int minimumExamples)
    {
        const QString page = CalculatorHelpModel::loadHtmlFile(QString::fromLatin1(source));
        ASSERT_FALSE(page.isEmpty()) << source;
        const QList<QList<Example>> tables = examplesOf(page);
        int rows = 0;
        for (const QList<Example>& table : tables) {
            keypad = std::make_unique<CalculatorKeypad>();
            engine = std::make_unique<CalculatorController>();
            engine->setPresenter(&presenter);
            presenter.pending = nullptr;
            for (const Example& example : table) {
                ++rows;
                const std::string where =
                    std::string(source) + ": " + plainText(example.press).toStdString();
                ASSERT_TRUE(press(example.press)) << where;
                EXPECT_EQ(
                    engine->displayNumber().toStdString(),
                    QString(example.display).replace('.', QLocale().decimalPoint()).toStdString())
                    << where;
                if (!example.label.isNull()) {
                    EXPECT_EQ(engine->resultLabel().toStdString(), example.label.toStdString())
                        << where;
                }
            }
        }
        EXPECT_GE(rows, minimumExamples) << source << ": fewer examples than the page has";
    }

    HeldPresenter presenter;
    std::unique_ptr<CalculatorKeypad> keypad;
    std::unique_ptr<CalculatorController> engine;
};

TEST_P(HelpExamples, EveryExampleGivesItsDisplayAndLabel)
{
    runPage(GetParam().first, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Pages, HelpExamples,
                         ::testing::Values(std::pair{"general_buttons", 8},
                                           std::pair{"math_expressions", 25},
                                           std::pair{"tvm_equations", 20},
                                           std::pair{"cf_analysis", 20}, std::pair{"hist_sto", 4}));

} // namespace
