#include "charts/MultiLineGraphRenderer.h"

#include "FakeGraphSource.h"

#include <gtest/gtest.h>

namespace {

using PixelTest = std::function<bool(QColor)>;

PixelTest near(QColor colour, int tolerance = 40)
{
    return [=](QColor c) {
        return std::abs(c.red() - colour.red()) + std::abs(c.green() - colour.green()) +
                   std::abs(c.blue() - colour.blue()) <=
               tolerance;
    };
}

const PixelTest notWhite = [](QColor c) { return c != QColor(Qt::white); };

// Pixels passing the test in an area given in device-independent points.
int count(const QImage& image, const QRectF& area, const PixelTest& test)
{
    const qreal dpr = image.devicePixelRatio();
    const QRect pixels =
        QRectF(area.topLeft() * dpr, area.size() * dpr).toAlignedRect().intersected(image.rect());
    int n = 0;
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x)
            n += test(image.pixelColor(x, y)) ? 1 : 0;
    }
    return n;
}

// The 3 x 3 points around p.
QRectF around(QPointF p, double radius = 1)
{
    return QRectF(p - QPointF(radius, radius), QSizeF(2 * radius + 1, 2 * radius + 1));
}

class RendererTest : public ::testing::Test {
protected:
    RendererTest() : source({FakeGraphSource::growth(12)})
    {
        data = GraphData::fromDataSource(source);
        layout = MultiLineGraphRenderer::layout(data, style, {400, 300});
    }

    QImage render(const GraphPaintState& state = {}, qreal dpr = 1)
    {
        return MultiLineGraphRenderer::renderImage(data, layout, style, &source, dpr, state);
    }

    QPointF pointInView(int index, double contentX = 0) const
    {
        return layout.plotToView(layout.points[0][index].position, contentX);
    }

    const QColor line{0x28, 0xab, 0xe3};
    FakeGraphSource source;
    GraphStyle style;
    GraphData data;
    GraphLayout layout;
};

TEST_F(RendererTest, ImageFromADataSourceHasTheRequestedSizeEvenEmptyOrFlat)
{
    const QImage image = MultiLineGraphRenderer::renderImage(source, &source, {320, 240});
    EXPECT_EQ(image.size(), QSize(320, 240));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::white));

    const QImage sharp = MultiLineGraphRenderer::renderImage(source, &source, {320, 240}, 2.0);
    EXPECT_EQ(sharp.size(), QSize(640, 480));
    EXPECT_EQ(sharp.deviceIndependentSize(), QSizeF(320, 240));

    EXPECT_TRUE(MultiLineGraphRenderer::renderImage(source, &source, {0, 240}).isNull());

    FakeGraphSource empty;
    EXPECT_FALSE(MultiLineGraphRenderer::renderImage(empty, nullptr, {200, 100}).isNull());
    // All values 0: no y axis can be placed, but the x labels still show.
    FakeGraphSource flat({{"flat", Rgba(0x28, 0xab, 0xe3), {"0", "1", "2"}, {0, 0, 0}}});
    const QImage flatImage = MultiLineGraphRenderer::renderImage(flat, &flat, {200, 150});
    data = GraphData::fromDataSource(flat);
    layout = MultiLineGraphRenderer::layout(data, style, {200, 150});
    EXPECT_GT(count(flatImage, layout.xTicks[1].labelFrame.translated(0, 10), notWhite), 3);
}

TEST_F(RendererTest, SeriesLegendAndLabelsArePainted)
{
    for (qreal dpr : {1.0, 2.0}) {
        const QImage image = render({}, dpr);
        for (int i = 0; i < 12; ++i)
            EXPECT_GT(count(image, around(pointInView(i)), near(line)), 0) << i << " @" << dpr;

        const GraphLegendItem& legend = layout.legendItems.value(0);
        EXPECT_GT(count(image, around(legend.swatch.center()), near(line)), 0);
        EXPECT_GT(count(image, legend.textFrame, notWhite), 5);
        EXPECT_GT(count(image, layout.yTicks.last().labelFrame.translated(0, 10), notWhite), 5);
    }

    // Reveal draws the leading part of the line.
    EXPECT_EQ(count(render({0, 0.0, {}}), layout.graphScrollFrame, near(line, 10)), 0);
    const QImage half = render({0, 0.5, {}});
    EXPECT_GT(count(half, around(pointInView(0)), near(line)), 0);
    EXPECT_EQ(count(half, around(pointInView(11), 3), near(line)), 0);

    // Scrolled to the right end of a zoomed plot.
    layout = MultiLineGraphRenderer::layout(data, style, {400, 300}, 2.0);
    const double contentX = layout.maximumContentX();
    const QImage scrolled = render({contentX, 1, {}});
    EXPECT_GT(count(scrolled, around(pointInView(11, contentX)), near(line)), 0);
}

TEST_F(RendererTest, GridLinesFollowTheirSwitchesButKeepTheOuterOnes)
{
    // Non-white pixels in a 2-pixel column along a vertical grid line.
    auto column = [&](const QImage& image, const GraphXTick& tick) {
        return count(image, QRectF(layout.plotToView({tick.line.x1() - 1, 60}, 0), QSizeF(2, 150)),
                     notWhite);
    };
    const QImage withGrid = render();
    style.drawGridX = false;
    layout = MultiLineGraphRenderer::layout(data, style, {400, 300});
    const QImage withoutGrid = render();

    EXPECT_GT(column(withGrid, layout.xTicks[2]), 250);
    // Only the crossing grid lines and the series remain.
    EXPECT_LT(column(withoutGrid, layout.xTicks[2]), 60);
    EXPECT_GT(column(withoutGrid, layout.xTicks.first()), 250);
    EXPECT_GT(column(withoutGrid, layout.xTicks.last()), 250);
}

TEST_F(RendererTest, MarkerUsesTheDelegateWhenAsked)
{
    const GraphPointRef ref{0, 5};
    const double value = layout.point(ref)->value;
    MultiLineGraphMarker marker = MultiLineGraphRenderer::marker(data, layout, ref, style, &source);
    EXPECT_EQ(marker.text, QString::number(value, 'f', 2));
    EXPECT_TRUE(source.touches().isEmpty());

    const QRectF plain =
        GraphLayout::markerFrame(pointInView(5), marker.size, layout.graphScrollFrame);
    QImage image = render({0, 1, ref});
    EXPECT_GT(count(image, around({plain.left() + 2, plain.center().y()}), near(style.markerColor)),
              0);

    style.showCustomMarkerView = true;
    marker = MultiLineGraphRenderer::marker(data, layout, ref, style, &source);
    EXPECT_EQ(source.touches().value(0), qMakePair(QString("5"), value));
    EXPECT_EQ(marker.size, QSizeF(100, 30));

    // A white box with dark text.
    image = render({0, 1, ref});
    const QRectF box =
        GraphLayout::markerFrame(pointInView(5), marker.size, layout.graphScrollFrame);
    EXPECT_GT(
        count(image, box.adjusted(8, 6, -8, -6), [](QColor c) { return c.lightness() < 100; }), 10);
    EXPECT_EQ(count(image, around({box.left() + 3, box.center().y()}), near(style.markerColor)), 0);
}

} // namespace
