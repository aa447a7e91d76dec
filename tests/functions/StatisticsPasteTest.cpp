// Rows pasted into the statistics screen: how a text from a spreadsheet, a
// CSV file or a document is split into x and y (PastedRows), and what the
// screen does with it (pasteText, pasteRows): the table replaced, the
// rows' count following, a message saying what was pasted and skipped.
#include "TestSupport.h"
#include "framework/CalculatorRegistry.h"
#include "functions/statistics/StatisticsController.h"
#include "platform/Clipboard.h"

#include <QScopeGuard>
#include <cmath>

namespace {

// Each text as one locale reads it: the cells each line gives, and what the
// message says. The separator rule: tabs, else ";", else "," unless it is
// the decimal separator, else white space.
TEST(PastedRows, SplitsLinesIntoXAndY)
{
    const QLocale c = QLocale::c();
    const QLocale german(QLocale::German, QLocale::Germany);
    const struct {
        const char* name;
        QString text;
        QLocale locale;
        QStringList x, y;
        QString message;
    } cases[] = {
        {"spreadsheet columns with a header",
         "Month\tSales\n1\t2.5\n2\t3\n",
         c,
         {"1", "2"},
         {"2.5", "3"},
         "Pasted 2 rows. The first line was taken as a header."},
        {"semicolons, German decimals",
         "x;y\r\n1,5;2,25\r\n3;-4\r\n",
         german,
         {"1,5", "3"},
         {"2,25", "-4"},
         "Pasted 2 rows. The first line was taken as a header."},
        // A ";" file is written where "," is the decimal separator: its
        // commas are decimal commas even on a desktop that uses ".".
        {"semicolons and decimal commas on a desktop with points",
         "year;sales\n1;100,5\n2;121\n3;1,234\n",
         c,
         {"1", "2", "3"},
         {"100.5", "121", "1.234"},
         "Pasted 3 rows. The first line was taken as a header."},
        {"commas where they are no decimal separator",
         "1,2\n3.5,4\n",
         c,
         {"1", "3.5"},
         {"2", "4"},
         "Pasted 2 rows."},
        {"spaces where the comma is decimal",
         "1,5  2,5\n 3,5 4\n",
         german,
         {"1,5", "3,5"},
         {"2,5", "4"},
         "Pasted 2 rows."},
        {"one German column: commas are decimals",
         "1,5\n2,5\n",
         german,
         {"1,5", "2,5"},
         {"", ""},
         "Pasted 2 rows."},
        {"the same column under C: x and y",
         "1,5\n2,5\n",
         c,
         {"1", "2"},
         {"5", "5"},
         "Pasted 2 rows."},
        {"one column, blank lines passed over",
         "5\n\n6\n7\n\n",
         c,
         {"5", "6", "7"},
         {"", "", ""},
         "Pasted 3 rows."},
        {"a separator at the end makes no column",
         "1;2;\n3;4;\n",
         c,
         {"1", "3"},
         {"2", "4"},
         "Pasted 2 rows."},
        {"an empty y stays empty", "1\t\n2\t3\n", c, {"1", "2"}, {"", "3"}, "Pasted 2 rows."},
        {"junk lines skipped and named",
         "1\t2\nTotal\t3\n4\t5\n1\t2\t3\n6\t7\n",
         c,
         {"1", "4", "6"},
         {"2", "5", "7"},
         "Pasted 3 rows. Skipped lines 2 and 4: not one or two numbers."},
        {"many junk lines, counted",
         "1\na\nb\nc\nd\n2\n",
         c,
         {"1", "2"},
         {"", ""},
         "Pasted 2 rows. Skipped lines 2, 3, 4 and 1 more: not one or two numbers."},
        {"nothing but words",
         "x\ny\n",
         c,
         {},
         {},
         "Nothing was pasted: no line holds one or two numbers."},
        {"an ambiguous German thousand is no number",
         "1.234\n5\n",
         german,
         {"5"},
         {""},
         "Pasted 1 row. The first line was taken as a header."},
    };
    for (const auto& t : cases) {
        SCOPED_TRACE(t.name);
        const PastedRows pasted = PastedRows::read(t.text, t.locale);
        EXPECT_EQ(pasted.x, t.x);
        EXPECT_EQ(pasted.y, t.y);
        EXPECT_EQ(pasted.message(), t.message);
    }
}

class StatisticsScreen : public HomeTest {
protected:
    void SetUp() override
    {
        HomeTest::SetUp();
        screen.reset(static_cast<StatisticsController*>(
            CalculatorRegistry::find(QStringLiteral("statistics"))->create().release()));
    }
    double value(const char* property) const
    {
        return screen->model()->property(property).toDouble();
    }
    std::unique_ptr<StatisticsController> screen;
};

// A paste replaces every row, the hidden ones too, and the count follows;
// a text with nothing to paste leaves the table as it was.
TEST_F(StatisticsScreen, PasteReplacesTheTable)
{
    ASSERT_TRUE(screen->setTableInput("x", {"1", "2", "3", "4", "5", "6", "7", "8"}));
    ASSERT_TRUE(screen->setTableInput("y", {"1", "2", "3", "4", "5", "6", "7", "8"}));
    screen->editField("rowCountField", "3"); // rows 4 to 8 hidden, still held
    screen->pasteText(QStringLiteral("x\ty\n1\t2\n2\t4.1\n3\t5.9\n4\t8.2\n"));
    EXPECT_EQ(screen->rowCount(), 4);
    EXPECT_EQ(screen->qvFunctionView()->text("rowCountField"), "4");
    EXPECT_EQ(screen->tableTexts("x"), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(screen->tableTexts("y"), QStringList({"2", "4.1", "5.9", "8.2"}));
    EXPECT_EQ(value("n"), 4);
    EXPECT_NEAR(value("b"), 2.04, 1e-12); // the example: Sxy / Sxx = 10.2 / 5
    EXPECT_EQ(screen->pasteMessage(), "Pasted 4 rows. The first line was taken as a header.");
    // The growing count shows no old rows again.
    screen->editField("rowCountField", "8");
    EXPECT_EQ(value("n"), 4);

    screen->pasteText(QStringLiteral("no numbers here"));
    EXPECT_EQ(screen->tableTexts("x"), QStringList({"1", "2", "3", "4"}));
    EXPECT_EQ(screen->pasteMessage(), "Nothing was pasted: no line holds one or two numbers.");
    screen->xChanged(0, "0");
    EXPECT_EQ(screen->pasteMessage(), "") << "an edit makes the message old news";
}

// The clipboard's text, through the reader the GUI installs; none without
// one (the command line) and an empty clipboard are said, not ignored.
TEST_F(StatisticsScreen, PasteReadsTheClipboard)
{
    const auto restore = qScopeGuard([] { Clipboard::setReader({}); });
    Clipboard::setReader({});
    screen->pasteRows();
    EXPECT_EQ(screen->pasteMessage(), "Nothing was pasted: the clipboard holds no text.");
    Clipboard::setReader([] { return QStringLiteral("3;4\n5;6\n"); });
    screen->pasteRows();
    EXPECT_EQ(screen->tableTexts("y"), QStringList({"4", "6"}));
    EXPECT_EQ(screen->pasteMessage(), "Pasted 2 rows.");
}

// The table's limit: 10,000 rows, and the lines beyond it are told.
TEST_F(StatisticsScreen, PasteStopsAtTheTablesLimit)
{
    QString text;
    for (int k = 1; k <= StatisticsModel::maximumRows + 2; ++k)
        text += QString::number(k) + QLatin1Char('\t') + QString::number(2 * k) + QLatin1Char('\n');
    screen->pasteText(text);
    EXPECT_EQ(screen->rowCount(), StatisticsModel::maximumRows);
    EXPECT_EQ(screen->pasteMessage(),
              "Pasted 10000 rows. 2 more lines did not fit: the table takes 10000 rows.");
    // y = 2x exactly: b = 2, a = 0, r = 1; mean x = 5000.5.
    EXPECT_NEAR(value("b"), 2, 1e-12);
    EXPECT_NEAR(value("a"), 0, 1e-9);
    EXPECT_NEAR(value("meanX"), 5000.5, 1e-9);
}

// The chart: the pairs as points, the fitted curve over their x; nothing
// to draw without y values, and no curve where the model cannot fit.
TEST_F(StatisticsScreen, ChartShowsThePairsAndTheCurve)
{
    screen->pasteText(QStringLiteral("1\t3.1\n2\t6.2\n3\t11.9\n4\t25.3\n"));
    ASSERT_TRUE(screen->chooseWord("modelButton", "Exponential"));
    ScatterData data = screen->scatterData();
    EXPECT_TRUE(screen->chartShown());
    ASSERT_EQ(data.points.size(), 4);
    ASSERT_EQ(data.curve.size(), 101);
    EXPECT_EQ(data.curve.first().x(), 1);
    EXPECT_EQ(data.curve.last().x(), 4);
    EXPECT_NEAR(data.curve.last().y(), value("a") * std::exp(value("b") * 4), 1e-9);

    screen->yChanged(0, "-1"); // the exponential model cannot take it
    data = screen->scatterData();
    EXPECT_EQ(data.points.size(), 4);
    EXPECT_TRUE(data.curve.isEmpty());

    screen->pasteText(QStringLiteral("1\n2\n"));
    EXPECT_FALSE(screen->chartShown());
    EXPECT_TRUE(screen->scatterData().isEmpty());
}

} // namespace
