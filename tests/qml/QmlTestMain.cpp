#include <QQmlEngine>
#include <QQuickStyle>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest/quicktest.h>

Q_IMPORT_QML_PLUGIN(TallyvanePlugin)

class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable() { QQuickStyle::setStyle(QStringLiteral("Basic")); }
    void qmlEngineAvailable(QQmlEngine* engine) { engine->addImportPath(QStringLiteral("qrc:/")); }
};

QUICK_TEST_MAIN_WITH_SETUP(tallyvane_qml, Setup)

#include "QmlTestMain.moc"
