#pragma once

#include "platform/MailComposer.h"

#include <QString>
#include <QUrl>

class Presenter;

// What the user is shown when the desktop has no program for a mail draft
// or a web address: nothing is silently dropped.
namespace FallbackNotices {

// After a message went to the mail composer: when no mail program opened
// the draft, an alert says where it was written, with a button that opens
// its folder.
void mailFinished(MailResult result, Presenter* presenter);

// Opens a web address; when no program takes it, an alert shows the
// address with a button that copies it.
void openUrl(const QUrl& url, Presenter* presenter);

QString mailDraftTitle();
QString unopenedAddressTitle();

} // namespace FallbackNotices
