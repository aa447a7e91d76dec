#include "NotificationCenter.h"

#include <algorithm>

NotificationCenter& NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(QObject* observer, const QString& name, Handler handler)
{
    if (!observer || !handler)
        return;
    m_entries.push_back({observer, name, std::move(handler)});
}

void NotificationCenter::removeObserver(QObject* observer)
{
    for (auto& entry : m_entries) {
        if (entry.observer == observer)
            entry.observer.clear();
    }
    purge();
}

void NotificationCenter::post(const QString& name, QObject* sender, const QVariantMap& userInfo)
{
    const Notification notification{name, sender, userInfo};
    // Handlers may add observers (which reallocates the vector) or post in
    // turn, so walk by index over the entries present when the post began.
    const size_t count = m_entries.size();
    ++m_postDepth;
    for (size_t i = 0; i < count && i < m_entries.size(); ++i) {
        if (m_entries[i].name != name || m_entries[i].observer.isNull())
            continue;
        const Handler handler = m_entries[i].handler;
        handler(notification);
    }
    --m_postDepth;
    purge();
}

int NotificationCenter::observerCount(const QString& name) const
{
    return int(std::count_if(m_entries.begin(), m_entries.end(), [&](const Entry& e) {
        return e.name == name && !e.observer.isNull();
    }));
}

void NotificationCenter::purge()
{
    if (m_postDepth > 0)
        return;
    std::erase_if(m_entries, [](const Entry& e) { return e.observer.isNull(); });
}
