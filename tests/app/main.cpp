#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // The QML menu bar needs a platform; no window is ever shown.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
