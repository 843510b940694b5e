// The floor a drag's frames are measured against: a window of the same size with a gradient
// and one card-sized rectangle that follows the pointer while a button is held, and nothing else.

#include "app/frame_timer.hpp"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QUrl>

namespace {

constexpr const char* scene = R"(
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

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    QQuickView view;
    view.setTitle(QStringLiteral("Bare window"));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    QQmlComponent component(view.engine());
    component.setData(scene, QUrl());
    view.setContent(QUrl(), &component, component.create());
    view.resize(1600, 1000);
    view.show();
    zelvaine::FrameTimer timer(&view);
    return QGuiApplication::exec();
}
