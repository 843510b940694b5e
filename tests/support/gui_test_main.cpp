// The entry point of the interface tests: one application object, offscreen unless a display
// is asked for, so that the tests run where there is no screen. A warning from QML or its
// JavaScript (a TypeError, a failed binding, a missing property) fails the test it happens in:
// such an error is a dead command for the player, even when every assertion still holds. So
// does a complaint of QAbstractItemModelTester about a model a test watches.

#include <QGuiApplication>
#include <QQuickStyle>
#include <QString>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

QtMessageHandler previousHandler = nullptr;
std::vector<std::string> strayWarnings;

bool failsTheTest(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type != QtWarningMsg && type != QtCriticalMsg && type != QtFatalMsg) return false;
    const QString category = QString::fromLatin1(context.category ? context.category : "");
    if (category == u"qml" || category == u"js" || category.startsWith(u"qt.qml")) return true;
    if (category == u"qt.modeltest") return true;
    const QString file = QString::fromLatin1(context.file ? context.file : "");
    return file.endsWith(u".qml") || message.contains(u".qml:") || message.startsWith(u"qrc:/");
}

void failOnQmlWarnings(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (failsTheTest(type, context, message)) {
        const std::string text = message.toStdString();
        if (::testing::UnitTest::GetInstance()->current_test_info()) {
            ADD_FAILURE() << "QML or model warning: " << text;
        } else {
            strayWarnings.push_back(text);
        }
    }
    if (previousHandler) previousHandler(type, context, message);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    previousHandler = qInstallMessageHandler(failOnQmlWarnings);
    // The game's own style, so that the tests see the controls the player sees.
    QQuickStyle::setStyle("Fusion");
    // Controls answer hover as on a desktop; the offscreen platform turns that off.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_HOVER_ENABLED")) qputenv("QT_QUICK_CONTROLS_HOVER_ENABLED", "1");
    QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    int result = RUN_ALL_TESTS();
    for (const std::string& warning : strayWarnings) {
        std::fprintf(stderr, "QML or model warning outside any test: %s\n", warning.c_str());
        result = 1;
    }
    return result;
}
