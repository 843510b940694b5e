// One application object for all tests, with the core's texts looked up as the game does.

#include "app/qt_localizer.hpp"

#include <QGuiApplication>
#include <QQuickStyle>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    // The settings page is a Qt Quick item; no screen is needed to read its texts.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // The game's own style: its metrics decide whether a German text fits.
    QQuickStyle::setStyle("Fusion");
    QGuiApplication application(argc, argv);
    const zelvaine::QtLocalizer localizer;
    zelvaine::installLocalizer(&localizer);
    const int status = RUN_ALL_TESTS();
    zelvaine::installLocalizer(nullptr);
    return status;
}
