// Reports laid out as PDFs and read back with pdftotext (poppler-utils):
// plain lines come through as they are, and a text table becomes a table
// whose header heads every page it runs onto, its columns aligned.
#include "gui/ReportPdfLayout.h"

#include "TestSupport.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

// A word on a PDF page as pdftotext -bbox places it, in points.
struct Word {
    double left = 0;
    double top = 0;
    double right = 0;
    QString text;
};

// One page of the PDF: its text as pdftotext -layout gives it (lines with
// runs of spaces made single, the page number under them left out) and its
// words line by line, top to bottom.
struct Page {
    QStringList lines;
    QList<QList<Word>> wordLines;
};

QStringList layoutLines(const QString& page)
{
    QStringList lines;
    for (const QString& line : page.split('\n'))
        lines << line.simplified();
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    static const QRegularExpression pageNumber(QStringLiteral("^\\d+$"));
    if (!lines.isEmpty() && pageNumber.match(lines.last()).hasMatch())
        lines.removeLast();
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

QList<QList<Word>> wordLines(const QString& page)
{
    static const QRegularExpression wordTag(
        QStringLiteral("<word xMin=\"([-\\d.]+)\" yMin=\"([-\\d.]+)\" xMax=\"([-\\d.]+)\" "
                       "yMax=\"[-\\d.]+\">([^<]*)</word>"));
    QList<Word> words;
    for (const QRegularExpressionMatch& m : wordTag.globalMatch(page)) {
        words.append({m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                      m.captured(4)});
    }
    std::stable_sort(words.begin(), words.end(),
                     [](const Word& a, const Word& b) { return a.top < b.top; });
    QList<QList<Word>> lines;
    for (const Word& word : words) {
        if (lines.isEmpty() || word.top > lines.last().first().top + 1)
            lines.append(QList<Word>());
        lines.last().append(word);
    }
    for (QList<Word>& line : lines) {
        std::stable_sort(line.begin(), line.end(),
                         [](const Word& a, const Word& b) { return a.left < b.left; });
    }
    return lines;
}

class ReportPdfLayoutTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
        ASSERT_TRUE(dir.isValid());
    }

    QString pdftotext(const QString& option)
    {
        QProcess process;
        process.start(QStringLiteral("pdftotext"),
                      {option, dir.filePath(QStringLiteral("report.pdf")), QStringLiteral("-")});
        EXPECT_TRUE(process.waitForFinished(30000));
        EXPECT_EQ(process.exitCode(), 0);
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    // The pages of `text` laid out on A4.
    QList<Page> pagesOf(const QString& text)
    {
        QFile file(dir.filePath(QStringLiteral("report.pdf")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        EXPECT_TRUE(layOutReportPdf(&file, text, false, {}));
        file.close();
        QStringList layout = pdftotext(QStringLiteral("-layout")).split('\f');
        layout.removeLast(); // after the last page's form feed
        QStringList boxes = pdftotext(QStringLiteral("-bbox")).split(QStringLiteral("<page "));
        boxes.removeFirst(); // before the first page
        EXPECT_EQ(layout.size(), boxes.size());
        QList<Page> pages;
        for (qsizetype p = 0; p < std::min(layout.size(), boxes.size()); ++p)
            pages.append({layoutLines(layout[p]), wordLines(boxes[p])});
        return pages;
    }

    QTemporaryDir dir;
};

// Equal to a hundredth of a point: placed by the same rule.
constexpr double samePlace = 0.01;

QString money(qint64 cents)
{
    QString digits = QString::number(cents / 100);
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, ',');
    return digits + '.' + QString::number(cents % 100).rightJustified(2, '0');
}

const QString header =
    QStringLiteral("No.   Date           Payment    Interest   Principal     Extra       Balance");
const QString rule =
    QStringLiteral("----  ----------  ----------  ----------  ----------  --------  ------------");
const QString note =
    QStringLiteral("Note: payment 120 is made two days late, the first being a holiday");
const QString change = QStringLiteral("*  Rate changed to 7%  from payment 121");

// A made-up monthly schedule in the plain form of a report's table; only
// its layout matters. 360 payment rows and a "Year n" row after every
// twelfth, its numbers one place right of their columns' dashes (a total
// wider than its column), "Year 10" and later reaching into the date's
// column. After payment 120 a note across the table and a line with two
// pieces in the first column, which fits no column.
struct Schedule {
    QString text;
    QStringList body; // the table's lines after the rule, spaces made single
};

Schedule schedule()
{
    QStringList lines = {QStringLiteral("Financial Report - Amortization Schedule"),
                         QStringLiteral("Date: 26-11-2026 09:50"),
                         QString(),
                         QStringLiteral("Loan Amount: 200000"),
                         QString(),
                         header,
                         rule};
    const qsizetype bodyFrom = lines.size();
    qint64 balance = 20000000;
    qint64 yearPaid = 0;
    qint64 yearInterest = 0;
    for (int n = 1; n <= 360; ++n) {
        const qint64 interest = balance * 65 / 12000;
        const qint64 principal = std::min<qint64>(126414 - interest, balance);
        balance -= principal;
        yearPaid += interest + principal;
        yearInterest += interest;
        const QString date = QStringLiteral("%1-%2-01")
                                 .arg(2027 + (n - 1) / 12)
                                 .arg((n - 1) % 12 + 1, 2, 10, QLatin1Char('0'));
        lines << QString::number(n).leftJustified(4) + "  " + date + "  " +
                     money(interest + principal).rightJustified(10) + "  " +
                     money(interest).rightJustified(10) + "  " +
                     money(principal).rightJustified(10) + "  " +
                     QStringLiteral("0.00").rightJustified(8) + "  " +
                     money(balance).rightJustified(12);
        if (n == 120)
            lines << note << change;
        if (n % 12 == 0) {
            lines << QStringLiteral("Year %1").arg(n / 12).leftJustified(19) +
                         money(yearPaid).rightJustified(10) + "  " +
                         money(yearInterest).rightJustified(10) + "  " +
                         money(yearPaid - yearInterest).rightJustified(10) + "  " +
                         QStringLiteral("0.00").rightJustified(8) + "  " +
                         money(balance).rightJustified(12);
            yearPaid = yearInterest = 0;
        }
    }
    Schedule s;
    for (qsizetype i = bodyFrom; i < lines.size(); ++i)
        s.body << lines[i].simplified();
    lines << QString() << QStringLiteral("Payoff Date: 2056-12-01");
    s.text = lines.join('\n');
    return s;
}

TEST_F(ReportPdfLayoutTest, ALongTableRunsOverPagesWithItsHeaderOnTopOfEachAndItsColumnsAligned)
{
    const Schedule s = schedule();
    const QList<Page> pages = pagesOf(s.text);
    // 392 rows of about 12 points: eight pages or so.
    ASSERT_GE(pages.size(), 6);

    QStringList body;
    int rows = 0;
    for (qsizetype p = 0; p < pages.size(); ++p) {
        SCOPED_TRACE("page " + std::to_string(p + 1));
        const QStringList& lines = pages[p].lines;
        // The text: the header heads the page (under the lines before the
        // table on the first), every line of the table comes once, in order,
        // and a blank line parts the table from the line after it.
        qsizetype top = 0;
        if (p == 0) {
            top = 5;
            ASSERT_GT(lines.size(), top);
            EXPECT_EQ(lines.mid(0, top).join('|'), "Financial Report - Amortization Schedule|"
                                                   "Date: 26-11-2026 09:50||Loan Amount: 200000|");
        }
        ASSERT_GT(lines.size(), top);
        EXPECT_EQ(lines[top], header.simplified());
        qsizetype end = lines.size();
        if (p == pages.size() - 1) {
            end -= 2;
            EXPECT_EQ(lines.mid(end).join('|'), "|Payoff Date: 2056-12-01");
        }
        body << lines.mid(top + 1, end - top - 1);

        // The places: a right-aligned column's numbers end where its header
        // ends, a left-aligned one's start where its header starts.
        const QList<QList<Word>>& words = pages[p].wordLines;
        const auto headerLine = std::find_if(words.begin(), words.end(), [](const auto& line) {
            return line.first().text == QLatin1String("No.");
        });
        ASSERT_NE(headerLine, words.end());
        ASSERT_EQ(headerLine->size(), 7);
        const double dateLeft = (*headerLine)[1].left;
        const double paymentRight = (*headerLine)[2].right;
        const double balanceRight = (*headerLine)[6].right;
        for (auto line = headerLine + 1; line != words.end(); ++line) {
            if (line->size() != 7)
                continue; // the note, the line beside the columns, the page number
            ++rows;
            const QString text = line->first().text + ' ' + line->at(1).text;
            EXPECT_NEAR(line->at(2).right, paymentRight, samePlace) << text.toStdString();
            EXPECT_NEAR(line->last().right, balanceRight, samePlace) << text.toStdString();
            if (line->first().text != QLatin1String("Year")) {
                EXPECT_NEAR(line->at(1).left, dateLeft, samePlace) << text.toStdString();
            }
        }
    }
    EXPECT_EQ(body.join('\n'), s.body.join('\n'));
    EXPECT_EQ(rows, 360 + 30);
}

TEST_F(ReportPdfLayoutTest, TextWithoutATableComesOutLineForLineAtTheMargin)
{
    // Dashed lines that make no table: two runs under the heading, one run
    // after a blank line and one under a line, two runs under a blank line,
    // dashes among other text.
    const QStringList lines = {
        "Financial Report - Time Value of Money",
        "-----  -----",
        "Date: 26-11-2026 09:50",
        "",
        "-----------------------------",
        "",
        "Present Value: 1000",
        "Payments 1-12:  Principal 2235.5,  Interest 12934.18",
        "Totals",
        "------",
        "",
        "-----  -----",
        "Mode: BEG  ---- x ----",
        "Mode: BEG",
    };
    const QList<Page> pages = pagesOf(lines.join('\n'));
    ASSERT_EQ(pages.size(), 1);
    QStringList expected;
    for (const QString& line : lines)
        expected << line.simplified();
    EXPECT_EQ(pages[0].lines.join('\n'), expected.join('\n'));
    // No line is set in from the margin, as a table's cells are.
    const QList<QList<Word>>& words = pages[0].wordLines;
    ASSERT_EQ(words.size(), 12); // and the page number
    for (qsizetype i = 0; i + 1 < words.size(); ++i)
        EXPECT_NEAR(words[i].first().left, words[0].first().left, samePlace) << i;
}

TEST_F(ReportPdfLayoutTest, ATableRightUnderTheHeadingKeepsTheBlankLineAfterIt)
{
    const QList<Page> pages = pagesOf("Sample\n"
                                      "Item      Amount\n"
                                      "-----  --------\n"
                                      "Tea        3.50\n"
                                      "Coffee    12.00\n"
                                      "\n"
                                      "Thanks");
    ASSERT_EQ(pages.size(), 1);
    EXPECT_EQ(pages[0].lines.join('|'), "Sample|Item Amount|Tea 3.50|Coffee 12.00||Thanks");
    const QList<QList<Word>>& words = pages[0].wordLines;
    ASSERT_GE(words.size(), 4);
    for (qsizetype i = 2; i < 4; ++i) {
        ASSERT_EQ(words[i].size(), 2);
        EXPECT_NEAR(words[i][0].left, words[1][0].left, samePlace) << "names start together";
        EXPECT_NEAR(words[i][1].right, words[1][1].right, samePlace) << "amounts end together";
    }
}

} // namespace
