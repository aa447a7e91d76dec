#include "QmlPresenter.h"

#include <QJSEngine>
#include <algorithm>

QmlPresenter::QmlPresenter(QObject* parent) : QObject(parent)
{
    Presenter::setDefaultPresenter(this);
}

QmlPresenter* QmlPresenter::instance()
{
    static QmlPresenter* presenter = new QmlPresenter;
    return presenter;
}

QmlPresenter* QmlPresenter::create(QQmlEngine*, QJSEngine*)
{
    QmlPresenter* presenter = instance();
    QJSEngine::setObjectOwnership(presenter, QJSEngine::CppOwnership);
    return presenter;
}

void QmlPresenter::present(const AlertRequest& request, Answer answer)
{
    const int id = m_nextId++;
    QVariantList actions;
    for (const AlertAction& action : request.actions)
        actions << QVariantMap{
            {QStringLiteral("title"), action.title},
            {QStringLiteral("cancel"), action.cancel},
            {QStringLiteral("preferred"), action.preferred},
            {QStringLiteral("label"), action.label.isEmpty() ? action.title : action.label},
            {QStringLiteral("current"), action.current}};
    const QVariantMap map{
        {QStringLiteral("id"), id},
        {QStringLiteral("kind"), request.kind == AlertRequest::Kind::ActionSheet
                                     ? QStringLiteral("sheet")
                                     : QStringLiteral("alert")},
        {QStringLiteral("title"), request.title},
        {QStringLiteral("message"), request.message},
        {QStringLiteral("actions"), actions},
        {QStringLiteral("textField"), request.hasTextField},
        {QStringLiteral("numeric"), request.numericTextField},
        {QStringLiteral("anchor"), request.anchor},
    };
    m_pending.insert(id, std::move(answer));
    m_requests.insert(id, map);
    emit pendingChanged();
    emit presentRequested(map);
}

void QmlPresenter::answer(int id, const QString& action, const QString& text)
{
    const auto it = m_pending.find(id);
    if (it == m_pending.end())
        return;
    const Answer callback = std::move(it.value());
    m_pending.erase(it);
    m_requests.remove(id);
    emit pendingChanged();
    emit answered(id);
    if (callback)
        callback(action, text);
}

QVariantMap QmlPresenter::pendingRequest() const
{
    return pendingRequests().value(0).toMap();
}

QVariantList QmlPresenter::pendingRequests() const
{
    QList<int> ids = m_requests.keys();
    std::sort(ids.begin(), ids.end());
    QVariantList requests;
    for (int id : ids)
        requests << m_requests.value(id);
    return requests;
}
