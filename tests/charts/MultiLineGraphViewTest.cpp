#include "charts/MultiLineGraphView.h"

#include "FakeGraphSource.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace {

class ViewTest : public ::testing::Test {
protected:
    ViewTest() : source({FakeGraphSource::growth(11)})
    {
        view.setSize({400, 300});
        view.setAnimated(false);
        view.setDataSource(&source);
        view.setDelegate(&source);
    }

    QPointF pointInView(int index) const
    {
        const GraphLayout& layout = view.graphLayout();
        return layout.plotToView(layout.points[0][index].position, view.contentX());
    }

    void mouse(QEvent::Type type, QPointF pos)
    {
        QMouseEvent event(type, pos, pos, pos, Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
    }

    bool wheel(QPoint angle, Qt::KeyboardModifiers modifiers, QPointF pos = {200, 100})
    {
        QWheelEvent event(pos, pos, QPoint(), angle, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted();
    }

    FakeGraphSource source;
    MultiLineGraphView view;
};

TEST_F(ViewTest, DrawsNothingUntilAskedThenReadsTheSource)
{
    EXPECT_EQ(view.lineCount(), 0);
    view.drawGraph();
    ASSERT_EQ(view.lineCount(), 1);
    EXPECT_EQ(view.graphData().xAxisArray.size(), 12);
    EXPECT_EQ(view.graphLayout().points[0].size(), 11);
    EXPECT_EQ(view.drawnFraction(), 1.0);
    EXPECT_EQ(view.grabImage().size(), QSize(400, 300));

    // With animation the line is revealed from nothing to the whole;
    // switching it off mid-way shows everything at once.
    EXPECT_TRUE(MultiLineGraphView().animated()) << "on by default";
    view.setAnimated(true);
    view.drawGraph();
    EXPECT_EQ(view.drawnFraction(), 0.0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.drawnFraction() == 1.0; }, 5000));
    view.drawGraph();
    view.setAnimated(false);
    EXPECT_EQ(view.drawnFraction(), 1.0);

    // New data shows after a reload; a vanished source empties the chart.
    source.lines().append(FakeGraphSource::growth(5, "PV"));
    view.reloadGraph();
    EXPECT_EQ(view.lineCount(), 2);
    view.setDataSource(nullptr);
    view.drawGraph();
    EXPECT_EQ(view.lineCount(), 0);
}

TEST_F(ViewTest, PressAndDragMoveTheMarkerToTheNearestPoint)
{
    view.drawGraph();
    QSignalSpy changed(&view, &MultiLineGraphView::selectionChanged);

    mouse(QEvent::MouseButtonPress, pointInView(4) + QPointF(4, 60));
    EXPECT_EQ(view.selectedIndex(), 4);
    EXPECT_EQ(view.markerText(), QString::number(1000 * std::pow(1.01, 5), 'f', 2));
    mouse(QEvent::MouseMove, pointInView(7) - QPointF(5, 0));
    mouse(QEvent::MouseButtonRelease, pointInView(7));
    EXPECT_EQ(view.selectedIndex(), 7);
    EXPECT_EQ(changed.count(), 2);

    // The custom marker comes from the delegate with the point's label and value.
    view.setShowCustomMarkerView(true);
    EXPECT_EQ(view.markerText(), QStringLiteral("FV: %1").arg(1000 * std::pow(1.01, 8)));
    EXPECT_EQ(source.touches().last().first, "7");

    // The legend is not part of the plot; a new drawing drops the marker.
    EXPECT_FALSE(view.selectPointAt(view.graphLayout().legendFrame.center()));
    EXPECT_EQ(view.selectedIndex(), 7);
    view.drawGraph();
    EXPECT_FALSE(view.hasSelection());
    view.setShowMarker(false);
    mouse(QEvent::MouseButtonPress, pointInView(4));
    EXPECT_FALSE(view.hasSelection());
}

TEST_F(ViewTest, ZoomWidensThePlotAndRaisesTheStepCount)
{
    view.drawGraph();
    view.setLastScale(2);
    EXPECT_EQ(view.contentWidth(), 800);
    EXPECT_EQ(view.graphLayout().xStepCount, 10) << "the layout's steps for 12 labels at 2x";

    // Limited so that every step keeps a label of its own.
    view.setLastScale(100);
    EXPECT_DOUBLE_EQ(view.lastScale(), 2.4);
    EXPECT_EQ(view.graphLayout().xStepCount, 12);
    view.setLastScale(0.2);
    EXPECT_EQ(view.lastScale(), 1.0);

    // Ctrl+wheel zooms around the cursor; a plain wheel is left to the page.
    EXPECT_TRUE(wheel({0, 120}, Qt::ControlModifier, {300, 100}));
    EXPECT_GT(view.lastScale(), 1.1);
    EXPECT_GT(view.contentX(), 0);
    const double scale = view.lastScale();
    EXPECT_FALSE(wheel({0, 120}, Qt::NoModifier));
    EXPECT_EQ(view.lastScale(), scale);
}

TEST_F(ViewTest, ZoomedPlotScrollsByDragAndWheel)
{
    view.drawGraph();
    view.setLastScale(2);
    mouse(QEvent::MouseButtonPress, {300, 100});
    const int selected = view.selectedIndex();
    mouse(QEvent::MouseMove, {200, 100});
    mouse(QEvent::MouseButtonRelease, {200, 100});
    EXPECT_EQ(view.contentX(), 100);
    EXPECT_EQ(view.selectedIndex(), selected);

    EXPECT_TRUE(wheel({0, -120}, Qt::ShiftModifier));
    EXPECT_EQ(view.contentX(), 150);
    view.setContentX(1e6);
    EXPECT_EQ(view.contentX(), 400);
    // Nothing left to scroll: the page gets the wheel.
    EXPECT_FALSE(wheel({-120, 0}, Qt::NoModifier));

    // A reload keeps zoom and scroll; a new drawing starts over.
    view.reloadGraph();
    EXPECT_EQ(view.contentX(), 400);
    view.drawGraph();
    EXPECT_EQ(view.lastScale(), 1.0);
    EXPECT_EQ(view.contentX(), 0);
}

TEST_F(ViewTest, TwoFingersPinchToZoom)
{
    QQuickWindow window;
    window.resize(400, 300);
    view.setParentItem(window.contentItem());
    const auto detach = qScopeGuard([&] { view.setParentItem(nullptr); });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    view.drawGraph();

    QPointingDevice* screen = QTest::createTouchDevice();
    QTest::touchEvent(&window, screen).press(0, {150, 100}).press(1, {250, 100});
    QTest::touchEvent(&window, screen).move(0, {125, 100}).move(1, {275, 100});
    // Qt Quick delivers touch moves with the next frame.
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.lastScale() != 1.0; }, 2000));
    EXPECT_DOUBLE_EQ(view.lastScale(), 1.5);
    EXPECT_DOUBLE_EQ(view.contentX(), 100);
    QTest::touchEvent(&window, screen).release(0, {125, 100}).release(1, {275, 100});
    EXPECT_DOUBLE_EQ(view.lastScale(), 1.5);
}

} // namespace
