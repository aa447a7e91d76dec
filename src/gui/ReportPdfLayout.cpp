#include "gui/ReportPdfLayout.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextImageFormat>
#include <QTextTable>
#include <QUrl>
#include <algorithm>
#include <optional>

namespace {

// More runs than this on a dashed line is not a table's rule: a page has no
// room for so many columns, and a huge table would only slow the layout.
constexpr qsizetype maxColumns = 32;

// One column of a text table: the span [start, end) of its run of dashes.
struct Column {
    qsizetype start = 0;
    qsizetype end = 0;
};

// A piece of a line between runs of two or more spaces ("Year 1" is one
// piece), with its span [start, end) in the line.
struct Piece {
    qsizetype start = 0;
    qsizetype end = 0;
    QString text;
};

// The columns a rule line gives: the line holds only '-' and ' ', with at
// least two runs of dashes. Anything else is no rule.
std::optional<QList<Column>> ruleColumns(const QString& line)
{
    QList<Column> columns;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line.at(i);
        if (c == QLatin1Char(' '))
            continue;
        if (c != QLatin1Char('-'))
            return std::nullopt;
        if (i > 0 && line.at(i - 1) == QLatin1Char('-'))
            columns.back().end = i + 1;
        else
            columns.append({i, i + 1});
        if (columns.size() > maxColumns)
            return std::nullopt;
    }
    if (columns.size() < 2)
        return std::nullopt;
    return columns;
}

QList<Piece> piecesOf(const QString& line)
{
    QList<Piece> pieces;
    qsizetype i = 0;
    while (i < line.size()) {
        if (line.at(i) == QLatin1Char(' ')) {
            ++i;
            continue;
        }
        const qsizetype start = i;
        qsizetype end = i;
        // The piece goes on over single spaces and stops at two.
        while (i < line.size()) {
            if (line.at(i) != QLatin1Char(' ')) {
                end = ++i;
            } else if (i + 1 < line.size() && line.at(i + 1) != QLatin1Char(' ')) {
                ++i;
            } else {
                break;
            }
        }
        pieces.append({start, end, line.mid(start, end - start)});
    }
    return pieces;
}

// A cell of a text table's row. A piece that reaches over the runs of
// several columns ("Year 10" over the number's and the date's) makes one
// cell across them: `span` columns, the ones it covers 0. Its alignment is
// its own (`right`); a cell of one column takes its column's.
struct Cell {
    QString text;
    qsizetype span = 1;
    bool right = false;
};

// A row of a text table: its cells, or none when the line does not fit the
// columns.
struct Row {
    QList<Cell> cells;
    bool fits = false;
};

// Where each piece of `line` belongs: in the column(s) whose runs it
// overlaps; a piece that overlaps no run (it lies in a gap or past the last
// run) in the column to its left. Matching pieces to runs, rather than
// cutting the line at the columns' edges, keeps a number that spills out of
// its run (a total wider than the dashes) whole.
// The line does not fit when two pieces fall into one column.
// Each piece of one column votes for its column's alignment, right when it
// keeps to the right of its run (or spills out on the left).
Row rowOf(const QString& line, const QList<Column>& columns, QList<int>* votes = nullptr)
{
    Row row;
    row.cells.resize(columns.size());
    QList<bool> taken(columns.size(), false);
    QList<int> rowVotes(columns.size(), 0);
    for (const Piece& piece : piecesOf(line)) {
        qsizetype first = -1;
        qsizetype last = -1;
        for (qsizetype c = 0; c < columns.size(); ++c) {
            if (piece.start < columns[c].end && columns[c].start < piece.end) {
                if (first < 0)
                    first = c;
                last = c;
            }
        }
        if (first < 0) {
            first = 0;
            for (qsizetype c = 0; c < columns.size(); ++c) {
                if (columns[c].start <= piece.start)
                    first = c;
            }
            last = first;
        }
        for (qsizetype c = first; c <= last; ++c) {
            if (taken[c])
                return {};
            taken[c] = true;
            row.cells[c].span = 0;
        }
        const qsizetype leftGap = piece.start - columns[first].start;
        const qsizetype rightGap = columns[last].end - piece.end;
        row.cells[first] = {piece.text, last - first + 1, leftGap > rightGap};
        if (first == last)
            rowVotes[first] = leftGap > rightGap ? 1 : (leftGap < rightGap ? -1 : 0);
    }
    if (votes) {
        for (qsizetype c = 0; c < columns.size(); ++c)
            (*votes)[c] += rowVotes[c];
    }
    row.fits = true;
    return row;
}

bool isBlank(const QString& line)
{
    return line.trimmed().isEmpty();
}

// A table in the text: a header line, a rule line under it, then rows up to
// the first blank line or the end of the text. `end` is the index of the
// first line after the rows.
struct TextTable {
    qsizetype header = 0;
    qsizetype end = 0;
    QList<Column> columns;
};

// The table whose header is lines[at], if there is one. A header that does
// not fit its own rule's columns makes no table.
std::optional<TextTable> tableAt(const QStringList& lines, qsizetype at)
{
    if (at + 1 >= lines.size() || isBlank(lines[at]))
        return std::nullopt;
    const std::optional<QList<Column>> columns = ruleColumns(lines[at + 1]);
    if (!columns || !rowOf(lines[at], *columns).fits)
        return std::nullopt;
    qsizetype end = at + 2;
    while (end < lines.size() && !isBlank(lines[end]))
        ++end;
    return TextTable{at, end, *columns};
}

// In points: about a character's width between columns, rows as close as
// lines of text, a thin rule under the header and no other lines.
constexpr qreal sidePadding = 3;
constexpr qreal endPadding = 1;
constexpr qreal headerRule = 0.75;
constexpr qreal smallestTableFont = 6;

// How a table fits the page: its font size, at most the text's, at which
// the widest cell of each column fits side by side with the others in the
// width the page leaves (below the smallest size cells wrap instead), and
// the share of the width each column takes. Left to itself the layout
// would give the columns equal widths, wrapping dates and long numbers.
struct TableFit {
    qreal pointSize = 0;
    QList<QTextLength> columnWidths;
    QTextLength tableWidth;
};

TableFit fitTable(const QFont& font, const QList<Row>& rows, qsizetype columnCount, qreal width)
{
    QFont bold = font;
    bold.setBold(true);
    const QFontMetricsF plainMetrics(font);
    const QFontMetricsF boldMetrics(bold);
    // The metrics are in the font's pixels; the text scales with its size.
    const qreal toPoints = 72.0 / plainMetrics.fontDpi();
    QList<qreal> widest(columnCount, 0);
    for (qsizetype r = 0; r < rows.size(); ++r) {
        if (!rows[r].fits)
            continue;
        const QFontMetricsF& metrics = r == 0 ? boldMetrics : plainMetrics;
        for (qsizetype c = 0; c < columnCount; ++c) {
            const Cell& cell = rows[r].cells[c];
            if (cell.span == 1)
                widest[c] = std::max(widest[c], toPoints * metrics.horizontalAdvance(cell.text));
        }
    }
    qreal text = 0;
    for (const qreal w : widest)
        text += w;
    // Cells get a little more than their text, for rounding in the layout.
    constexpr qreal slack = 1.04;
    const qreal cellOverhead = 2 * sidePadding;
    const qreal room = width - columnCount * cellOverhead;
    TableFit fit;
    fit.pointSize = font.pointSizeF();
    if (text * slack > room && text > 0)
        fit.pointSize = std::max(smallestTableFont, fit.pointSize * room / (text * slack));
    const qreal scale = fit.pointSize / font.pointSizeF();
    qreal needed = 0;
    for (qreal& w : widest) {
        w = w * scale * slack + cellOverhead;
        needed += w;
    }
    for (const qreal w : widest)
        fit.columnWidths.append(QTextLength(QTextLength::PercentageLength, 100 * w / needed));
    fit.tableWidth =
        QTextLength(QTextLength::PercentageLength, std::min<qreal>(100, 100 * needed / width));
    return fit;
}

void insertTable(QTextCursor& cursor, const QStringList& lines, const TextTable& table, qreal width)
{
    const QList<Column>& columns = table.columns;
    const qsizetype columnCount = columns.size();
    QList<int> votes(columnCount, 0);
    QList<Row> rows;
    rows.append(rowOf(lines[table.header], columns));
    for (qsizetype i = table.header + 2; i < table.end; ++i)
        rows.append(rowOf(lines[i], columns, &votes));

    const QFont font = cursor.document()->defaultFont();
    const TableFit fit = fitTable(font, rows, columnCount, width);
    QTextTableFormat format;
    format.setWidth(fit.tableWidth);
    format.setColumnWidthConstraints(fit.columnWidths);
    format.setHeaderRowCount(1); // printed again at the top of every page
    format.setBorder(0);
    format.setBorderCollapse(true);
    format.setCellSpacing(0);
    format.setCellPadding(0);
    QTextTable* textTable = cursor.insertTable(int(rows.size()), int(columnCount), format);

    QTextCharFormat plain;
    plain.setFontPointSize(fit.pointSize);
    QTextCharFormat bold = plain;
    bold.setFontWeight(QFont::Bold);
    // A cell's format is the character format of its first block, whose
    // size an empty cell's line takes. (Setting that block's character
    // format would replace the cell's format, spans included.)
    QTextTableCellFormat cellFormat;
    cellFormat.setFontPointSize(fit.pointSize);
    cellFormat.setLeftPadding(sidePadding);
    cellFormat.setRightPadding(sidePadding);
    cellFormat.setTopPadding(endPadding);
    cellFormat.setBottomPadding(endPadding);
    QTextTableCellFormat headerFormat = cellFormat;
    headerFormat.setBottomBorder(headerRule);
    headerFormat.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    headerFormat.setBottomBorderBrush(Qt::black);
    for (qsizetype r = 0; r < rows.size(); ++r) {
        const QTextCharFormat& chars = r == 0 ? bold : plain;
        for (qsizetype c = 0; c < columnCount; ++c)
            textTable->cellAt(int(r), int(c)).setFormat(r == 0 ? headerFormat : cellFormat);
        if (!rows[r].fits) {
            // A row that does not fit the columns is kept whole, as one cell
            // across the table, so none of its text is lost or split.
            textTable->mergeCells(int(r), 0, 1, int(columnCount));
            textTable->cellAt(int(r), 0).firstCursorPosition().insertText(
                lines[table.header + 1 + r].trimmed(), chars);
            continue;
        }
        for (qsizetype c = 0; c < columnCount; ++c) {
            const Cell& cell = rows[r].cells[c];
            if (cell.span == 0)
                continue;
            if (cell.span > 1)
                textTable->mergeCells(int(r), int(c), 1, int(cell.span));
            QTextCursor at = textTable->cellAt(int(r), int(c)).firstCursorPosition();
            if (cell.span == 1 ? votes[c] > 0 : cell.right) {
                QTextBlockFormat right;
                right.setAlignment(Qt::AlignRight);
                at.setBlockFormat(right);
            }
            at.insertText(cell.text, chars);
        }
    }
    cursor.movePosition(QTextCursor::End);
}

} // namespace

bool layOutReportPdf(QIODevice* device, const QString& text, bool letter, const QByteArray& chart)
{
    // Laying out text needs fonts, and fonts need a GUI application.
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return false;
    QPdfWriter writer(device);
    writer.setCreator(QStringLiteral("Tallyvane"));
    writer.setTitle(text.section(QLatin1Char('\n'), 0, 0));
    writer.setPageLayout(QPageLayout(QPageSize(letter ? QPageSize::Letter : QPageSize::A4),
                                     QPageLayout::Portrait, QMarginsF(20, 20, 20, 20),
                                     QPageLayout::Millimeter));
    writer.setResolution(300);

    QTextDocument document;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(10);
    document.setDefaultFont(fixed);
    // print() lays a document without a page size of its own out with 2 cm
    // margins inside the writer's: what is left is the widest a table gets.
    const qreal tableWidth =
        writer.pageLayout().paintRect(QPageLayout::Point).width() - 2 * 72 * 2 / 2.54;
    QTextCursor cursor(&document);
    const QStringList lines = text.split(QLatin1Char('\n'));
    QTextCharFormat heading;
    heading.setFontWeight(QFont::Bold);
    heading.setFontPointSize(14);
    cursor.insertText(lines.value(0), heading);
    cursor.insertText(QStringLiteral("\n"), QTextCharFormat());
    // The lines after the heading: runs of plain lines as they are, tables
    // as tables. Each step takes at least one line.
    // The layout gives no height to an empty block right before or after a
    // table (the one the table was inserted at, the one after its end):
    // each table gets such blocks of its own, so that a blank line of the
    // text around it stays in view.
    qsizetype plainFrom = 1;
    qsizetype i = 1;
    bool afterTable = false;
    while (i < lines.size()) {
        const std::optional<TextTable> table = tableAt(lines, i);
        if (!table) {
            ++i;
            continue;
        }
        if (i > plainFrom) {
            if (afterTable)
                cursor.insertBlock();
            cursor.insertText(lines.mid(plainFrom, i - plainFrom).join(QLatin1Char('\n')),
                              QTextCharFormat());
            cursor.insertBlock();
        }
        insertTable(cursor, lines, *table, tableWidth);
        afterTable = true;
        i = plainFrom = table->end;
    }
    if (plainFrom < lines.size()) {
        if (afterTable)
            cursor.insertBlock();
        cursor.insertText(lines.mid(plainFrom).join(QLatin1Char('\n')), QTextCharFormat());
    }
    const QImage picture = chart.isEmpty() ? QImage() : QImage::fromData(chart);
    if (!picture.isNull()) {
        document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("chart")), picture);
        QTextImageFormat format;
        format.setName(QStringLiteral("chart"));
        format.setWidth(400); // points wide: fits A4 and Letter within the margins
        format.setHeight(400.0 * picture.height() / picture.width());
        cursor.insertBlock();
        cursor.insertImage(format);
    }
    // Without a page size of its own the document is laid out on the
    // writer's pages, at the fonts' real sizes.
    document.print(&writer);
    return true;
}
