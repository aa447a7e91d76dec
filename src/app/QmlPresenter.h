#pragma once

#include "framework/Presenter.h"

#include <QHash>
#include <QObject>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

// The Presenter the screens use: each request becomes a signal that the
// QML PresenterHost turns into a sheet or dialog, and the host reports the
// choice back through answer().
class QmlPresenter : public QObject, public Presenter {
    Q_OBJECT
    QML_NAMED_ELEMENT(Presenter)
    QML_SINGLETON
    Q_PROPERTY(int pendingCount READ pendingCount NOTIFY pendingChanged)

public:
    static QmlPresenter* instance();
    static QmlPresenter* create(QQmlEngine*, QJSEngine*);

    void present(const AlertRequest& request, Answer answer) override;

    // The user chose `action` (and typed `text`) on request `id`.
    Q_INVOKABLE void answer(int id, const QString& action, const QString& text = QString());
    // The oldest request still waiting for an answer, or an empty map.
    Q_INVOKABLE QVariantMap pendingRequest() const;
    // Every request still waiting for an answer, oldest first: what a host
    // made after they were asked has to show.
    Q_INVOKABLE QVariantList pendingRequests() const;
    int pendingCount() const { return int(m_pending.size()); }

signals:
    // request: id, kind ("sheet" or "alert"), title, message, actions
    // ([{title, cancel}]), textField, numeric, anchor.
    void presentRequested(const QVariantMap& request);
    // Request `id` got its answer; whatever shows it can go.
    void answered(int id);
    void pendingChanged();

private:
    explicit QmlPresenter(QObject* parent = nullptr);
    int m_nextId = 1;
    QHash<int, Answer> m_pending;
    QHash<int, QVariantMap> m_requests;
};
