#include "gui/DesktopServices.h"
#include "functions/Calculators.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    DesktopServices::install();
    installCalculators();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
