#include "app/WindowPlacement.h"

#include <gtest/gtest.h>

// Where the window opens on screens people have (free areas below a panel),
// first and after a run that kept its place.
TEST(WindowPlacement, FirstSizedForTheScreenThenWhereItWasLeft)
{
    using WindowPlacement::keep;
    using WindowPlacement::placed;
    const QRect desktop(0, 0, 1280, 852); // 1280×900 less a panel and the frame
    // Two thirds of 852 high, half of 1280 wide, centred.
    EXPECT_EQ(placed(desktop, {}), QRect(320, 142, 640, 568));
    // A phone-sized screen: its whole height, at least a phone's width.
    EXPECT_EQ(placed(QRect(0, 0, 412, 432), {}).size(), QSize(412, 432));
    // A wide desktop: no wider than 960.
    EXPECT_EQ(placed(QRect(0, 0, 2560, 1392), {}).size(), QSize(960, 928));
    // A narrow one: never wider than the screen.
    EXPECT_EQ(placed(QRect(0, 0, 360, 700), {}).width(), 360);

    // Where it was left, at the size it had.
    const QRect left(100, 60, 900, 700);
    EXPECT_EQ(placed(desktop, keep(left)), left);
    // Larger than the screen now: as large as the screen allows.
    EXPECT_EQ(placed(QRect(0, 0, 800, 600), keep(left)).size(), QSize(800, 600));
    // Left on a monitor that is gone, or with its title bar off the top:
    // the first place again.
    EXPECT_EQ(placed(desktop, keep(QRect(3000, 100, 900, 700))), placed(desktop, {}));
    EXPECT_EQ(placed(desktop, keep(QRect(100, -500, 900, 700))), placed(desktop, {}));
    // Anything else kept (a damaged setting) is no place.
    EXPECT_EQ(placed(desktop, QVariant(QStringLiteral("1,2"))), placed(desktop, {}));
}
