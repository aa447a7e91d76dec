#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

// The About tab: the installed version, the maker's web pages, the store
// page, the invitation and feedback mails, and the local information pages.
class AboutController : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString appVersion READ appVersion CONSTANT)

public:
    explicit AboutController(QObject* parent = nullptr);

    static QString appVersion();
    static QUrl privacyUrl();
    static QUrl termsUrl();
    static QUrl storeUrl();
    static QString supportEmail();

    // A tap on a row of the grouped list. Rows that lead to screens of the
    // app itself are navigation in the page and do nothing here.
    Q_INVOKABLE void rowSelected(int section, int row);
    // The invitation to a friend: an HTML mail with the store address.
    Q_INVOKABLE void showEmail();
    // A blank mail to the maker's support address.
    Q_INVOKABLE void sendFeedback();
    // The information page "credits", "privacy" or "terms" as HTML; empty
    // when there is no such page.
    Q_INVOKABLE QString pageHtml(const QString& source) const;
};
