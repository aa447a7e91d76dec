#include "charts/GraphLayout.h"

#include "FakeGraphSource.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

// Every character 6 wide, every line 14 high.
QSizeF fixedMeasure(const QString& text)
{
    return QSizeF(6.0 * text.size(), 14);
}

GraphLayout layoutOf(const QList<FakeGraphSource::Line>& lines, double lastScale = 1.0,
                     bool legend = false)
{
    FakeGraphSource source(lines);
    GraphLayoutInput input;
    input.viewSize = {400, 300};
    input.lastScale = lastScale;
    input.showLegend = legend;
    input.measureText = fixedMeasure;
    return GraphLayout::compute(GraphData::fromDataSource(source), input);
}

FakeGraphSource::Line counting(int labels)
{
    FakeGraphSource::Line line;
    for (int i = 0; i < labels; ++i) {
        line.labels.append(QString::number(i));
        line.values.append(i);
    }
    return line;
}

// One field of every x tick, in order.
template <typename T> QList<T> ticks(const GraphLayout& layout, T GraphXTick::*field)
{
    QList<T> values;
    for (const GraphXTick& tick : layout.xTicks)
        values.append(tick.*field);
    return values;
}

TEST(GraphLayoutTest, PlotLabelsComeFromTheLineWithMostLabelsFirstOnTies)
{
    FakeGraphSource source({{"a", Rgba(255, 0, 0), {"x", "y"}, {1, 2}},
                            {"b", Rgba(0, 255, 0), {"p", "q", "r"}, {1, std::nullopt, 3}},
                            {"c", Rgba(0, 0, 255), {"u", "v", "w"}, {4, 5, 6}}});
    const GraphData data = GraphData::fromDataSource(source);
    EXPECT_EQ(data.xAxisArray, QStringList({"p", "q", "r"}));
    ASSERT_EQ(data.legendArray.size(), 3);
    EXPECT_EQ(data.legendArray[2].legendText, "c");
    EXPECT_EQ(data.legendArray[2].legendColor, Rgba(0, 0, 255));
}

TEST(GraphLayoutTest, GrowthSeriesOnThirteenLabels)
{
    // Values 1010, 1020.1, ..., 1126.825 for periods 1..12; labels "0".."12".
    const GraphLayout l = layoutOf({FakeGraphSource::growth(12)});
    EXPECT_EQ(l.height, 280);
    EXPECT_EQ(l.minY, 0.0f);
    EXPECT_FLOAT_EQ(l.maxY, 1126.825f);
    EXPECT_FLOAT_EQ(l.stepY, 220 / 1126.825f);

    QStringList texts;
    QList<double> ys;
    for (const GraphYTick& tick : l.yTicks) {
        texts.append(tick.text);
        ys.append(tick.y);
    }
    EXPECT_EQ(texts, QStringList({"0.0", "225.4", "450.7", "676.1", "901.5", "1126.8"}));
    EXPECT_EQ(ys, QList<double>({250, 206, 162, 118, 74, 30}));
    EXPECT_EQ(l.yTicks[2].line, QLineF(30, 162, 370, 162));
    // "225.4" is 30 x 14, 5 from the left, centred on its line.
    EXPECT_EQ(l.yTicks[1].labelFrame, QRectF(5, 199, 30, 14));

    // 12 steps divide by 4: every third label.
    EXPECT_EQ(l.labelInterval, 3);
    EXPECT_FLOAT_EQ(l.stepX, 340.0f / 12);
    EXPECT_EQ(ticks(l, &GraphXTick::labelIndex), QList<int>({0, 3, 6, 9, 12}));
    EXPECT_EQ(ticks(l, &GraphXTick::x), QList<double>({0, 85, 170, 255, 340}));
    EXPECT_EQ(l.xTicks[1].line, QLineF(115, 30, 115, 250));
    // "3" is 6 x 14: left edge at x + 3, top at height - 24.
    EXPECT_EQ(l.xTicks[1].labelFrame, QRectF(88, 256, 6, 14));

    // Value i sits at label i, so the first value is drawn at label "0"; the
    // largest value reaches the top grid line.
    const QList<GraphPoint>& points = l.points[0];
    ASSERT_EQ(points.size(), 12);
    EXPECT_EQ(points[0].position, QPointF(30, 53));
    EXPECT_EQ(points[3].position, QPointF(115, 47));
    EXPECT_EQ(points[11].position, QPointF(341, 30));
}

TEST(GraphLayoutTest, XStepsForVariousLabelCounts)
{
    // 10 steps divide by 5 but not by 4.
    GraphLayout l = layoutOf({counting(11)});
    EXPECT_EQ(ticks(l, &GraphXTick::labelIndex), QList<int>({0, 2, 4, 6, 8, 10}));
    EXPECT_EQ(ticks(l, &GraphXTick::x), QList<double>({0, 68, 136, 204, 272, 340}));

    // 11 steps divide by none of 4..7: 5 steps of 12 / 5 = 2 labels.
    l = layoutOf({counting(12)});
    EXPECT_EQ(ticks(l, &GraphXTick::labelIndex), QList<int>({0, 2, 4, 6, 8, 10}));
    EXPECT_EQ(ticks(l, &GraphXTick::x), QList<double>({0, 61, 123, 185, 247, 309}));

    EXPECT_EQ(GraphLayout::stepCountForXAxis(7, 400, 400, 1), 6);
    EXPECT_EQ(GraphLayout::stepCountForXAxis(8, 400, 400, 1), 7);
    EXPECT_EQ(GraphLayout::stepCountForXAxis(9, 400, 400, 1), 4);

    // Below 6 labels every label has a line, and the last one comes twice.
    l = layoutOf({counting(4)});
    EXPECT_EQ(ticks(l, &GraphXTick::labelIndex), QList<int>({0, 1, 2, 3, 3}));
    EXPECT_EQ(ticks(l, &GraphXTick::x), QList<double>({0, 113, 226, 340, 340}));

    // Zoom raises the step count only without a divisor.
    l = layoutOf({counting(12)}, 2.0);
    EXPECT_EQ(l.widht, 800);
    EXPECT_EQ(ticks(l, &GraphXTick::labelIndex), QList<int>({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(l.xTicks[10].x, 672);
    EXPECT_EQ(l.maximumContentX(), 400);

    EXPECT_EQ(layoutOf({counting(13)}, 2.0).xStepCount, 4);

    // A zoomed height raises the number of horizontal lines.
    EXPECT_EQ(GraphLayout::stepCountForYAxis(280, 280, 1.5), 5);
    EXPECT_EQ(GraphLayout::stepCountForYAxis(420, 280, 1.5), 8);

    // The zoom limit leaves at least one label per step.
    EXPECT_EQ(GraphLayout::maximumScale(3), 1.0);
    EXPECT_EQ(GraphLayout::maximumScale(200), GraphLayout::kMaximumScale);
    for (int c = 6; c <= 60; ++c) {
        const double scale = GraphLayout::maximumScale(c);
        const int k = GraphLayout::stepCountForXAxis(c, 400 * scale, 400, scale);
        EXPECT_GE(GraphLayout::labelIntervalForXAxis(c, k), 1) << c << " labels";
    }
}

TEST(GraphLayoutTest, EveryPointLiesAtTheHeightOfItsValueOnTheAxisLabels)
{
    // Each series holds values that are exactly tick values; each point must
    // sit at its value's height on the evenly spaced grid (within the
    // whole-point truncation), so those on a tick sit on its line.
    struct Case {
        const char* name;
        QList<std::optional<double>> values;
    };
    const Case cases[] = {
        {"mixed signs", {-50, 100, 40, -20}},
        {"all negative (a loan's payments)", {-2604.787, -1302.3935, -3906.0}},
        {"all positive", {10, 20, 50}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QStringList labels;
        for (int i = 0; i < c.values.size(); ++i)
            labels << QString::number(i);
        const GraphLayout l = layoutOf({{"n", Rgba(255, 0, 0), labels, c.values}});
        ASSERT_EQ(l.points[0].size(), c.values.size());
        for (const GraphPoint& point : l.points[0]) {
            // The height the axis gives this value, between its ticks.
            const double bottom = l.yTicks.first().y;
            const double top = l.yTicks.last().y;
            const double share = (point.value - l.yTicks.first().value) /
                                 (l.yTicks.last().value - l.yTicks.first().value);
            EXPECT_NEAR(point.position.y(), bottom + share * (top - bottom), 1.0) << point.value;
            EXPECT_GE(point.position.y(), top - 1);
            EXPECT_LE(point.position.y(), bottom + 1);
        }
    }
}

TEST(GraphLayoutTest, ZeroRangeGivesInfiniteStepYWithoutCrashing)
{
    const GraphLayout l = layoutOf({{"z", Rgba(255, 0, 0), {"0", "1", "2"}, {0, 0, 0}}});
    EXPECT_TRUE(std::isinf(l.stepY));
    for (const GraphYTick& tick : l.yTicks) {
        EXPECT_EQ(tick.text, "0.0");
        EXPECT_FALSE(std::isfinite(tick.y));
    }
    EXPECT_FALSE(std::isfinite(l.points[0][1].position.y()));
    EXPECT_EQ(l.nearestPoint(100), std::nullopt);
    EXPECT_EQ(ticks(l, &GraphXTick::labelIndex), QList<int>({0, 1, 2, 2}));

    // Null values and unknown labels are skipped.
    const GraphLayout gaps =
        layoutOf({{"full", Rgba(255, 0, 0), {"a", "b", "c", "d"}, {1, 2, 3, 4}},
                  {"gaps", Rgba(0, 0, 255), {"a", "z", "c"}, {9, 5, std::nullopt}}});
    EXPECT_EQ(gaps.maxY, 9.0f);
    ASSERT_EQ(gaps.points[1].size(), 1);
    EXPECT_NE(gaps.point({1, 0}), nullptr);
    EXPECT_EQ(gaps.point({1, 1}), nullptr);
}

TEST(GraphLayoutTest, NearestPointByXWithTheEarlierLineOnTies)
{
    const GraphLayout one = layoutOf({FakeGraphSource::growth(12)});
    // Points at x 86 and 115: 100 is nearer the first.
    EXPECT_EQ(one.nearestPoint(100), (GraphPointRef{0, 2}));
    EXPECT_EQ(one.nearestPoint(-50), (GraphPointRef{0, 0}));
    EXPECT_EQ(one.nearestPoint(1000), (GraphPointRef{0, 11}));

    const GraphLayout two =
        layoutOf({FakeGraphSource::growth(12, "a"), FakeGraphSource::growth(12, "b")});
    EXPECT_EQ(two.nearestPoint(115), (GraphPointRef{0, 3}));
}

TEST(GraphLayoutTest, LegendTakesItsHeightFromThePlot)
{
    const GraphLayout l = layoutOf({{"Alpha", Rgba(255, 0, 0), {"0", "1"}, {1, 2}},
                                    {"Beta", Rgba(0, 0, 255), {"0", "1"}, {1, 2}}},
                                   1, true);
    // One row, 5 + 14 + 5 high, centred in the 370 wide frame.
    EXPECT_EQ(l.height, 256);
    EXPECT_EQ(l.legendFrame, QRectF(15, 266, 370, 24));
    EXPECT_EQ(l.graphScrollFrame, QRectF(0, 10, 400, 256));
    const double rowWidth = (15 + 30) + 15 + (15 + 24);
    EXPECT_EQ(l.legendItems[0].swatch, QRectF(15 + (370 - rowWidth) / 2, 273, 10, 10));
    EXPECT_EQ(l.legendItems[1].textFrame.left(), l.legendItems[0].swatch.left() + 75);

    // A list puts each entry on its own row; full rows wrap.
    double height = 0;
    GraphLayout::layoutLegend({{"Alpha", Rgba(255, 0, 0)}, {"Beta", Rgba(0, 0, 255)}}, 1, 370,
                              fixedMeasure, &height);
    EXPECT_EQ(height, 5 + 14 + 4 + 14 + 5);
    GraphLayout::layoutLegend(QList<LegendDataRenderer>(3, {QString(20, 'x'), Rgba(255, 0, 0)}), 0,
                              300, fixedMeasure, &height);
    EXPECT_EQ(height, 5 + 14 + 4 + 14 + 5);

    // The marker frame stays inside its bounds.
    const QRectF bounds(0, 10, 400, 256);
    EXPECT_EQ(GraphLayout::markerFrame({200, 100}, {100, 30}, bounds), QRectF(150, 62, 100, 30));
    // No room above: below the point. Near the right edge: pushed left.
    EXPECT_EQ(GraphLayout::markerFrame({200, 30}, {100, 30}, bounds), QRectF(150, 38, 100, 30));
    EXPECT_EQ(GraphLayout::markerFrame({390, 100}, {100, 30}, bounds), QRectF(300, 62, 100, 30));
}

} // namespace
