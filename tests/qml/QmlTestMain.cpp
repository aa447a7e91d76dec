#include "TestSupport.h"
#include "app/IconImageProvider.h"
#include "app/QmlPresenter.h"
#include "framework/CalculatorRegistry.h"
#include "framework/QVFunctionController.h"
#include "functions/Calculators.h"
#include "gui/DesktopServices.h"
#include "platform/AppPaths.h"
#include "platform/Services.h"
#include "store/QVReport.h"
#include "store/ReportStore.h"

#include <QAccessible>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QVariantMap>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest/quicktest.h>
#include <algorithm>
#include <memory>
#include <utility>

Q_IMPORT_QML_PLUGIN(TallyvanePlugin)

namespace {

// Every warning and critical message of the process, for tests that must
// run without any.
QStringList recordedWarnings;
QtMessageHandler previousHandler = nullptr;

void recordWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)
        recordedWarnings.append(message);
    if (previousHandler)
        previousHandler(type, context, message);
}

// Roles of the controls a user operates; each needs a name a screen reader
// can say and a place in the Tab chain.
bool isOperable(QAccessible::Role role)
{
    static const QList<QAccessible::Role> operable = {
        QAccessible::Button,       QAccessible::CheckBox, QAccessible::ComboBox,
        QAccessible::EditableText, QAccessible::ListItem, QAccessible::PageTab,
        QAccessible::RadioButton,  QAccessible::SpinBox};
    return operable.contains(role);
}

QString describe(QAccessibleInterface* control)
{
    const QObject* object = control->object();
    QString name = object ? object->objectName() : QString();
    if (name.isEmpty() && object)
        name = QString::fromLatin1(object->metaObject()->className());
    return QStringLiteral("%1 '%2' (role %3)")
        .arg(name, control->text(QAccessible::Name))
        .arg(int(control->role()));
}

// The operable, shown controls under `node`, at most `limit` of them.
void collectControls(QAccessibleInterface* node, QList<QAccessibleInterface*>& controls,
                     int depth = 0)
{
    if (!node || depth > 64 || controls.size() > 2000 || node->state().invisible)
        return;
    if (isOperable(node->role()) && !node->state().disabled)
        controls.append(node);
    for (int i = 0; i < node->childCount(); ++i)
        collectControls(node->child(i), controls, depth + 1);
}

bool isInside(const QQuickItem* item, const QQuickItem* ancestor)
{
    for (int depth = 0; item && depth < 256; ++depth, item = item->parentItem()) {
        if (item == ancestor)
            return true;
    }
    return false;
}

} // namespace

// What the QML tests need to set up and inspect the app's files.
class TestFiles : public QObject {
    Q_OBJECT

public:
    // Empties the stored list, the screens' kept inputs and the documents
    // and outbox folders.
    Q_INVOKABLE void reset()
    {
        ReportStore::createList();
        ReportStore::forgetScreenStates();
        ReportStore::removeRows([](const QList<ReportStore::Row>& rows) {
            QList<qint64> ids;
            for (const ReportStore::Row& row : rows)
                ids << row.id;
            return ids;
        });
        QDir(AppPaths::documentsDirectory()).removeRecursively();
        QDir(AppPaths::outboxDirectory()).removeRecursively();
    }
    // Builds and saves a report as a calculator's "Save" does; returns the
    // path of its text file.
    Q_INVOKABLE QString saveReport(const QString& title)
    {
        static int minute = 0;
        const QDateTime when = QDateTime(QDate(2024, 3, 5), QTime(9, 0)).addSecs(60 * ++minute);
        Services::setClock([when] { return when; });
        auto model = QVFunctionModel::create<TestFunctionModel>();
        model->roi = 12;
        NotificationCenter::defaultCenter().post(model->reportRequestedNotificationName(), nullptr,
                                                 {{QStringLiteral("title"), title}});
        model->saveReport();
        Services::setClock(nullptr);
        return model->report().filePathInDocumentsDirectory();
    }
    // Saves a report of calculator `name` as its Export > Save does, after
    // typing `texts` (outlet -> text) into its fields; returns its title.
    Q_INVOKABLE QString saveCalculatorReport(const QString& name, const QString& title,
                                             const QVariantMap& texts)
    {
        const CalculatorDescription* d = CalculatorRegistry::find(name);
        if (!d)
            return {};
        std::unique_ptr<QVFunctionController> screen = d->create();
        ScriptedPresenter presenter;
        screen->setPresenter(&presenter);
        for (auto it = texts.cbegin(); it != texts.cend(); ++it)
            screen->editField(it.key(), it.value().toString());
        presenter.script({{QStringLiteral("Save"), {}},
                          {QStringLiteral("OK"), title},
                          {QStringLiteral("OK"), {}}});
        screen->exportClicked();
        return title;
    }
    // Replaces the stored list with 20 kB of noise, as a damaged disk might.
    Q_INVOKABLE void damageStore()
    {
        ReportStore::close();
        const QString database = ReportStore::databasePath();
        for (const char* suffix : {"-wal", "-shm"})
            QFile::remove(database + QLatin1String(suffix));
        QFile file(database);
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.write(QByteArray(20000, '\x5a'));
    }
    Q_INVOKABLE int storedCount() const
    {
        return int(QVReport::storedReportList().value_or(QList<QByteArray>()).size());
    }
    Q_INVOKABLE bool exists(const QString& path) const { return QFile::exists(path); }
    // A JSON data file beside the test's QML files.
    Q_INVOKABLE QVariant json(const QString& name) const
    {
        QFile file(QDir(QStringLiteral(QUICK_TEST_SOURCE_DIR)).filePath(name));
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).toVariant()
                                              : QVariant();
    }
    Q_INVOKABLE QString clipboardText() const { return QGuiApplication::clipboard()->text(); }
    Q_INVOKABLE int draftCount() const
    {
        return int(QDir(AppPaths::outboxDirectory()).entryList({QStringLiteral("*.eml")}).size());
    }
    Q_INVOKABLE QString lastDraft() const
    {
        QDir outbox(AppPaths::outboxDirectory());
        const QStringList drafts =
            outbox.entryList({QStringLiteral("*.eml")}, QDir::Files, QDir::Time);
        if (drafts.isEmpty())
            return {};
        QFile file(outbox.filePath(drafts.first()));
        return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
    }

    // Routes mails and web addresses to recorders instead of the desktop.
    Q_INVOKABLE void recordDesktop()
    {
        Services::setMailComposer(m_mails);
        Services::setUrlOpener(m_urls);
        m_urls->opens = true;
    }
    // The recorded mails: subject and the attachments' file names.
    Q_INVOKABLE QVariantList mails() const
    {
        QVariantList list;
        for (const MailMessage& message : m_mails->messages) {
            QStringList attachments;
            for (const MailAttachment& attachment : message.attachments)
                attachments.append(attachment.fileName);
            list.append(QVariantMap{{QStringLiteral("subject"), message.subject},
                                    {QStringLiteral("attachments"), attachments}});
        }
        return list;
    }
    Q_INVOKABLE QStringList openedUrls() const
    {
        QStringList urls;
        for (const QUrl& url : m_urls->opened)
            urls << url.toString();
        return urls;
    }

    // What keeps the shown screen from being used without a mouse or eyes:
    // operable controls a screen reader cannot name, and controls that
    // Tab never reaches. `exempt` lists the starts of objectNames that are
    // operated from the keyboard otherwise (the keypad's expression line,
    // typed into) or, after a "*", their ends ("*Sign": the "±" beside a
    // field, which F9 in the field presses).
    Q_INVOKABLE QStringList accessibilityProblems(QQuickWindow* window,
                                                  const QStringList& exemptPrefixes = {})
    {
        QStringList problems;
        QList<QAccessibleInterface*> controls;
        collectControls(QAccessible::queryAccessibleInterface(window), controls);
        const auto exempt = [&](const QObject* object) {
            for (const QString& prefix : exemptPrefixes) {
                const QString name = object ? object->objectName() : QString();
                if (prefix.startsWith(u'*') ? name.endsWith(QStringView(prefix).mid(1))
                                            : name.startsWith(prefix))
                    return true;
            }
            return false;
        };
        QSet<QQuickItem*> focused;
        for (int press = 0; press < 400; ++press) {
            QTest::keyClick(window, Qt::Key_Tab);
            QQuickItem* item = window->activeFocusItem();
            if (!item || focused.contains(item))
                break;
            focused.insert(item);
        }
        for (QAccessibleInterface* control : controls) {
            auto* item = qobject_cast<QQuickItem*>(control->object());
            if (!item || exempt(item) || item->inherits("QQuickPage"))
                continue;
            if (control->text(QAccessible::Name).trimmed().isEmpty())
                problems.append(QStringLiteral("no name: ") + describe(control));
            // A list's rows are reached with the arrow keys once Tab has
            // reached the list.
            const QQuickItem* scope = item;
            for (QQuickItem* up = item->parentItem(); up; up = up->parentItem()) {
                if (up->inherits("QQuickItemView")) {
                    scope = up;
                    break;
                }
            }
            const bool reached = std::any_of(focused.cbegin(), focused.cend(),
                                             [&](QQuickItem* f) { return isInside(f, scope); });
            if (!reached)
                problems.append(QStringLiteral("not reached by Tab: ") + describe(control));
        }
        return problems;
    }

    // Warnings printed since the last call, which clears them.
    Q_INVOKABLE QStringList takeWarnings() { return std::exchange(recordedWarnings, {}); }

private:
    std::shared_ptr<RecordingMailComposer> m_mails = std::make_shared<RecordingMailComposer>();
    std::shared_ptr<RecordingUrlOpener> m_urls = std::make_shared<RecordingUrlOpener>();
};

class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable()
    {
        previousHandler = qInstallMessageHandler(recordWarnings);
        QAccessible::setActive(true); // controls name themselves only when it is on
        QQuickStyle::setStyle(QStringLiteral("Basic"));
        qputenv("TALLYVANE_HOME", m_home.path().toUtf8());
        Services::reset();
        DesktopServices::install();
        installCalculators();
        QmlPresenter::instance();
    }
    void qmlEngineAvailable(QQmlEngine* engine)
    {
        engine->addImportPath(QStringLiteral("qrc:/"));
        IconImageProvider::installInto(*engine);
        qmlRegisterSingletonInstance("TallyvaneTest", 1, 0, "TestFiles", &m_files);
    }

private:
    QTemporaryDir m_home;
    TestFiles m_files;
};

QUICK_TEST_MAIN_WITH_SETUP(tallyvane_qml, Setup)

#include "QmlTestMain.moc"
