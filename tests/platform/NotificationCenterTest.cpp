#include "platform/NotificationCenter.h"

#include <QObject>
#include <gtest/gtest.h>
#include <memory>

namespace {

TEST(NotificationCenter, DeliversSynchronouslyByNameWithUserInfo)
{
    NotificationCenter center;
    QObject observer;
    QObject sender;
    QVariantMap received;
    QObject* from = nullptr;
    int calls = 0;
    center.addObserver(&observer, "A", [&](const Notification& n) {
        ++calls;
        received = n.userInfo;
        from = n.sender;
    });
    center.post("B", &sender, {{"title", "ignored"}});
    EXPECT_EQ(calls, 0);
    center.post("A", &sender, {{"title", "Plan A"}});
    EXPECT_EQ(calls, 1) << "delivered before post returns";
    EXPECT_EQ(received.value("title").toString(), "Plan A");
    EXPECT_EQ(from, &sender);
}

TEST(NotificationCenter, EveryObserverOfANameHearsEveryPostInRegistrationOrder)
{
    NotificationCenter center;
    QObject a, b;
    QStringList order;
    center.addObserver(&a, "N", [&](const Notification&) { order << "a"; });
    center.addObserver(&b, "N", [&](const Notification&) { order << "b"; });
    center.post("N");
    center.post("N", &a);
    EXPECT_EQ(order, QStringList({"a", "b", "a", "b"}));
}

TEST(NotificationCenter, DestroyedObserversAreDroppedWithoutDangling)
{
    NotificationCenter center;
    int calls = 0;
    {
        QObject observer;
        center.addObserver(&observer, "N", [&](const Notification&) { ++calls; });
        EXPECT_EQ(center.observerCount("N"), 1);
    }
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

TEST(NotificationCenter, RemoveObserverStopsDelivery)
{
    NotificationCenter center;
    QObject observer;
    int calls = 0;
    center.addObserver(&observer, "N", [&](const Notification&) { ++calls; });
    center.removeObserver(&observer);
    center.post("N");
    EXPECT_EQ(calls, 0);
}

} // namespace
