#pragma once

#include "platform/MailComposer.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

class Presenter;
class QObject;

// What the user is shown when the desktop has no program for a mail draft,
// a web address or a folder, or its opener does not answer in time: nothing
// is silently dropped. The openers answer later, from the event loop;
// `context`, when given, is the screen that asked, and nothing is shown
// once it is gone.
namespace FallbackNotices {

// After a message went to the mail composer: when no mail program opened
// the draft (or may not have), an alert says where it was written, with a
// button that opens its folder.
void mailFinished(MailResult result, Presenter* presenter);

// Opens a web address; when no program takes it, an alert shows the
// address with a button that copies it.
void openUrl(const QUrl& url, Presenter* presenter, QObject* context = nullptr);

// Opens a folder ("Open Folder"); when no program takes it, an alert shows
// its path.
void openFolder(const QString& path, Presenter* presenter, QObject* context = nullptr);

// After what a screen holds (its inputs, the keypad's registers) could not
// be kept for the next start: an alert says why, once a run, so that a full
// disk is not told again at every key.
void keepingFailed(const QString& error, Presenter* presenter);
// Keeps `now` as what screen `name` holds (ReportStore::keepScreenState)
// unless it is `kept`, the bytes kept last, which it then becomes; a
// failure is told by keepingFailed and `kept` stays, so the next try writes
// again.
void keepScreen(const QString& name, const QByteArray& now, QByteArray& kept, Presenter* presenter);

QString mailDraftTitle();
QString unopenedAddressTitle();
QString unopenedFolderTitle();

} // namespace FallbackNotices
