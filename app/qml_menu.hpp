#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// Trims a Qt Quick Controls MenuBar to the game's commands and keeps its menus trimmed from then
// on. Anything that is not a MenuBar (or null) is left alone.
void pruneMenuBar(QObject* menuBar);

// The same for QML: `MenuPruner.prune(menuBar)`, or `MenuPruner.pruneLater(menuBar, 1000)` once
// the window shows, so that everything the menu bar gathers at start-up is in it by then.
class MenuPruner : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE void prune(QObject* menuBar) { pruneMenuBar(menuBar); }
    Q_INVOKABLE void pruneLater(QObject* menuBar, int milliseconds = 1000);
};

} // namespace zelvaine
