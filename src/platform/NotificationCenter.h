#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <vector>

// One posted notification: its name, who posted it and its user information.
struct Notification {
    QString name;
    QPointer<QObject> sender;
    QVariantMap userInfo;
};

// Process-wide, synchronous notification centre. Observers are kept weakly:
// an observer that is destroyed is dropped before its handler could run.
class NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    static NotificationCenter& defaultCenter();

    // Registers `handler` for notifications called `name`, from any sender.
    // The handler runs only while `observer` is alive.
    void addObserver(QObject* observer, const QString& name, Handler handler);
    void removeObserver(QObject* observer);

    // Delivers the notification to every live observer of `name`, in the
    // order they registered, before returning. Observers added while a post
    // is being delivered first hear the next post.
    void post(const QString& name, QObject* sender = nullptr, const QVariantMap& userInfo = {});

    int observerCount(const QString& name) const;

private:
    struct Entry {
        QPointer<QObject> observer;
        QString name;
        Handler handler;
    };
    void purge();

    std::vector<Entry> m_entries;
    int m_postDepth = 0;
};
