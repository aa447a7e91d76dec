#include "platform/NotificationCenter.h"

#include <QObject>
#include <gtest/gtest.h>
#include <memory>

namespace {

TEST(NotificationCenter, DeliversSynchronouslyByNameToEveryObserverInRegistrationOrder)
{
    NotificationCenter center;
    QObject a, b, sender;
    QStringList order;
    QVariantMap received;
    QObject* from = nullptr;
    center.addObserver(&a, "A", [&](const Notification& n) {
        order << "a";
        received = n.userInfo;
        from = n.sender;
    });
    center.addObserver(&b, "A", [&](const Notification&) { order << "b"; });
    center.post("B", &sender, {{"title", "ignored"}});
    EXPECT_TRUE(order.isEmpty());
    center.post("A", &sender, {{"title", "Plan A"}});
    EXPECT_EQ(order, QStringList({"a", "b"})) << "delivered before post returns";
    EXPECT_EQ(received.value("title").toString(), "Plan A");
    EXPECT_EQ(from, &sender);
    center.post("A");
    EXPECT_EQ(order, QStringList({"a", "b", "a", "b"}));
}

TEST(NotificationCenter, RemovedAndDestroyedObserversHearNothingAndLeaveNoEntry)
{
    NotificationCenter center;
    QObject removed;
    int calls = 0;
    center.addObserver(&removed, "N", [&](const Notification&) { ++calls; });
    {
        QObject destroyed;
        center.addObserver(&destroyed, "N", [&](const Notification&) { ++calls; });
        EXPECT_EQ(center.observerCount("N"), 2);
    }
    center.removeObserver(&removed);
    center.post("N");
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(center.observerCount("N"), 0);
}

TEST(NotificationCenter, HandlersMayDestroyObserversAddObserversAndPostAgain)
{
    NotificationCenter center;
    auto doomed = std::make_unique<QObject>();
    QObject keeper;
    int doomedCalls = 0;
    int lateCalls = 0;
    int nestedCalls = 0;
    center.addObserver(&keeper, "N", [&](const Notification&) {
        doomed.reset();
        // Registering grows the list while it is being walked.
        for (int i = 0; i < 50; ++i)
            center.addObserver(&keeper, "N", [&](const Notification&) { ++lateCalls; });
        center.post("Nested");
    });
    center.addObserver(doomed.get(), "N", [&](const Notification&) { ++doomedCalls; });
    center.addObserver(&keeper, "Nested", [&](const Notification&) { ++nestedCalls; });
    center.post("N");
    EXPECT_EQ(doomedCalls, 0);
    EXPECT_EQ(lateCalls, 0) << "observers added during a post hear the next one";
    EXPECT_EQ(nestedCalls, 1);
}

} // namespace
