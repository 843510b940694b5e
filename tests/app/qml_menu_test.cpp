#include "app/qml_menu.hpp"

#include <QCoreApplication>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QQuickItem>
#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <memory>

Q_IMPORT_QML_PLUGIN(ZelvaineShellPlugin)
// The shell's module imports the board's, whose views its window puts together.
Q_IMPORT_QML_PLUGIN(ZelvainePlugin)

namespace zelvaine {
namespace {

// The game's commands as the window declares them, with the extras a toolkit or a careless edit
// might leave in: Close and Copy, a Window menu, and a View menu of separators only.
constexpr const char* menuBarQml = R"(
import QtQuick
import QtQuick.Controls
import ZelvaineShell

MenuBar {
    id: bar
    function trim() { MenuPruner.prune(bar) }
    function addTo(menu, title, key) {
        const item = itemComponent.createObject(null, { text: title })
        item.action = actionComponent.createObject(item, { shortcut: key })
        menu.addItem(item)
        return item
    }
    property Component itemComponent: Component { MenuItem {} }
    property Component actionComponent: Component { Action {} }

    Menu {
        objectName: "app"; title: "Zelvaine"
        MenuItem { text: "About Zelvaine" }
        MenuItem { text: "Check for Updates…" }
        Action { text: "Preferences…"; shortcut: "Ctrl+," }
        Action { text: "Quit"; shortcut: StandardKey.Quit }
    }
    Menu {
        objectName: "file"; title: "File"
        MenuItem { objectName: "close"; action: Action { text: "Close"; shortcut: "Ctrl+W" } }
        Action { text: "New Game"; shortcut: "Ctrl+N" }
        MenuSeparator {}
        Action { text: "Open Game…"; shortcut: StandardKey.Open }
        Action { text: "Restart Game"; shortcut: "Ctrl+R" }
    }
    Menu {
        objectName: "edit"; title: "Edit"
        Action { text: "Undo"; shortcut: "Ctrl+Z" }
        Action { text: "Redo"; shortcut: "Ctrl+Shift+Z" }
        Action { text: "Copy"; shortcut: "Ctrl+C" }
    }
    Menu {
        objectName: "view"; title: "View"
        MenuSeparator {}
        MenuSeparator {}
    }
    Menu {
        objectName: "window"; title: "Window"
        Action { text: "Minimize"; shortcut: "Ctrl+M" }
        MenuItem { text: "Zoom" }
    }
    Menu {
        objectName: "help"; title: "Help"
        MenuItem { text: "Hint"; property string shortcut: "Ctrl+Shift+/" }
        MenuItem { text: "Search" }
    }
}
)";

using Titles = QStringList;

class QmlMenuPruning : public ::testing::Test {
protected:
    void SetUp() override
    {
        engine.addImportPath(QStringLiteral("qrc:/"));
        QQmlComponent component(&engine);
        component.setData(menuBarQml, QUrl(QStringLiteral("file:///zelvaine-test/MenuBar.qml")));
        bar.reset(component.create());
        ASSERT_TRUE(bar) << component.errorString().toStdString();
    }

    QObject* menu(const char* name) const { return bar->findChild<QObject*>(QString::fromLatin1(name)); }

    static Titles titles(QObject* menu)
    {
        Titles result;
        const int count = menu->property("count").toInt();
        for (int index = 0; index < count; ++index) {
            QQuickItem* item = nullptr;
            QMetaObject::invokeMethod(menu, "itemAt", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, index));
            result.append(item->inherits("QQuickMenuSeparator") ? QStringLiteral("-")
                                                                : item->property("text").toString());
        }
        return result;
    }

    Titles menuTitles() const
    {
        Titles result;
        const QQmlListReference menus(bar.get(), "menus");
        for (qsizetype index = 0; index < menus.count(); ++index)
            result.append(menus.at(index)->property("title").toString());
        return result;
    }

    void trim() { QMetaObject::invokeMethod(bar.get(), "trim"); }

    void addTo(const char* menuName, const char* title, const char* key)
    {
        QVariant added;
        QMetaObject::invokeMethod(bar.get(), "addTo", Q_RETURN_ARG(QVariant, added),
                                  Q_ARG(QVariant, QVariant::fromValue(menu(menuName))),
                                  Q_ARG(QVariant, QString::fromUtf8(title)), Q_ARG(QVariant, QString::fromLatin1(key)));
        ASSERT_TRUE(added.isValid());
    }

    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QQmlEngine engine;
    std::unique_ptr<QObject> bar;
};

TEST_F(QmlMenuPruning, KeepsOnlyTheGamesCommandsAndDropsTheSeparatorOnlyMenu)
{
    QPointer<QObject> close = menu("close");
    trim();

    EXPECT_EQ(menuTitles(), (Titles{"Zelvaine", "File", "Edit", "Window", "Help"}));
    EXPECT_EQ(titles(menu("app")), (Titles{"About Zelvaine", "Check for Updates…", "Preferences…", "Quit"}));
    EXPECT_EQ(titles(menu("file")), (Titles{"Open Game…", "New Game", "Restart Game"}));
    EXPECT_EQ(titles(menu("edit")), (Titles{"Undo", "Redo"}));
    EXPECT_EQ(titles(menu("window")), (Titles{"Minimize", "Zoom"}));
    EXPECT_EQ(titles(menu("help")), (Titles{"Hint"}));

    // Dropped items go for good, so their shortcuts cannot fire from outside the menus.
    settle();
    EXPECT_TRUE(close.isNull());
}

TEST_F(QmlMenuPruning, ItemsAddedLaterAreTakenOutAgain)
{
    trim();
    addTo("file", "Close Window", "Ctrl+W");
    addTo("window", "Bring All to Front", "");
    settle();
    EXPECT_EQ(titles(menu("file")), (Titles{"Open Game…", "New Game", "Restart Game"}));
    EXPECT_EQ(titles(menu("window")), (Titles{"Minimize", "Zoom"}));

    // Pruning again (the window shown anew) changes nothing further.
    trim();
    EXPECT_EQ(menuTitles(), (Titles{"Zelvaine", "File", "Edit", "Window", "Help"}));
    EXPECT_EQ(titles(menu("edit")), (Titles{"Undo", "Redo"}));
    settle();
}

TEST_F(QmlMenuPruning, AnythingButAMenuBarIsLeftAlone)
{
    pruneMenuBar(nullptr);
    pruneMenuBar(menu("file"));
    EXPECT_EQ(titles(menu("file")).size(), 5);
    MenuPruner pruner;
    pruner.prune(&engine);
    EXPECT_EQ(menuTitles().size(), 6);
}

} // namespace
} // namespace zelvaine
