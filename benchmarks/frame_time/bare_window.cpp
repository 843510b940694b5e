// The floors the board's frames are measured against, in a window of the same size with the
// felt's gradient and nothing of the game:
// - by default, one card-sized rectangle that follows the pointer while a button is held;
// - with --pieces N, N confetti-sized pieces (8 to 17 points long, half as high, corner radius
//   2) falling and turning over the whole window, as plain Qt Quick rectangles: the least any
//   Qt Quick scene pays to move that many separate things each frame.

#include "app/frame_timer.hpp"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>

namespace {

constexpr const char* dragScene = R"(
import QtQuick
Rectangle {
    gradient: Gradient {
        GradientStop { position: 0; color: "#09331f" }
        GradientStop { position: 1; color: "#041c13" }
    }
    Rectangle {
        id: card
        width: 122; height: 174; radius: 14
        color: "#fffefa"
        border.color: Qt.rgba(0, 0, 0, 0.28)
    }
    MouseArea {
        anchors.fill: parent
        onPositionChanged: mouse => { card.x = mouse.x - card.width / 2; card.y = mouse.y - card.height / 2 }
    }
}
)";

// Each piece falls in 3.2 to 5.4 s from above the top edge to below the bottom one, drifting and
// turning as it goes; the whole scene moves 60 times a second.
constexpr const char* piecesScene = R"(
import QtQuick
Rectangle {
    id: root
    property int pieces: 180
    property real seconds: 0
    gradient: Gradient {
        GradientStop { position: 0; color: "#09331f" }
        GradientStop { position: 1; color: "#041c13" }
    }
    Timer { interval: 16; repeat: true; running: true; onTriggered: root.seconds += 0.016 }
    Repeater {
        model: root.pieces
        Rectangle {
            required property int index
            readonly property real noise: Math.abs(Math.sin(index * 12.9898) * 43758.5453) % 1
            readonly property real duration: 3.2 + 2.2 * noise
            readonly property real fall: ((root.seconds + noise * duration) % duration) / duration
            width: 8 + 9 * noise; height: width / 2; radius: 2
            color: ["#ffd60a", "#ff9f0a", "#ff453a", "#ff6fae", "#64d2ff", "#30d158", "#ffffff"][index % 7]
            x: root.width * ((index * 0.618034) % 1) + 20 * Math.sin(6.28 * fall * 3 + index)
            y: (root.height + 2 * width) * fall * fall - width
            rotation: 1080 * (noise - 0.5) * fall
        }
    }
}
)";

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    const qsizetype piecesAt = arguments.indexOf(QStringLiteral("--pieces"));
    const int pieces = piecesAt >= 0 && piecesAt + 1 < arguments.size() ? arguments[piecesAt + 1].toInt() : 0;

    QQuickView view;
    view.setTitle(QStringLiteral("Bare window"));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    QQmlComponent component(view.engine());
    component.setData(pieces > 0 ? piecesScene : dragScene, QUrl());
    QObject* root = component.create();
    if (pieces > 0) root->setProperty("pieces", pieces);
    view.setContent(QUrl(), &component, root);
    view.resize(1600, 1000);
    view.show();
    zelvaine::FrameTimer timer(&view);
    return QGuiApplication::exec();
}
