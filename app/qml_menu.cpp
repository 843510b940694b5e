// The menu interface over Qt Quick Controls' MenuBar, Menu, MenuItem and MenuSeparator, reached
// only through their QML-facing properties and methods.

#include "app/qml_menu.hpp"

#include "app/menu_pruner.hpp"

#include <QJSEngine>
#include <QKeySequence>
#include <QPointer>
#include <QQmlListReference>
#include <QQuickItem>
#include <QTimer>

#include <memory>
#include <unordered_map>

namespace zelvaine {

namespace {

class QmlMenu;

QKeySequence shortcutOf(const QObject& item)
{
    QVariant shortcut;
    if (auto* action = qvariant_cast<QObject*>(item.property("action"))) shortcut = action->property("shortcut");
    if (!shortcut.isValid() || shortcut.isNull()) shortcut = item.property("shortcut");
    switch (shortcut.typeId()) {
    case QMetaType::QKeySequence: return shortcut.value<QKeySequence>();
    case QMetaType::QString: return QKeySequence::fromString(shortcut.toString(), QKeySequence::PortableText);
    case QMetaType::Int: return QKeySequence(static_cast<QKeySequence::StandardKey>(shortcut.toInt()));
    default: return {};
    }
}

// Ctrl plays the part of Command on Linux; Meta is the remaining Control.
ModifierMask maskOf(Qt::KeyboardModifiers qtModifiers)
{
    ModifierMask mask = 0;
    if (qtModifiers & Qt::ShiftModifier) mask |= modifiers::shift;
    if (qtModifiers & Qt::ControlModifier) mask |= modifiers::command;
    if (qtModifiers & Qt::AltModifier) mask |= modifiers::option;
    if (qtModifiers & Qt::MetaModifier) mask |= modifiers::control;
    if (qtModifiers & Qt::KeypadModifier) mask |= modifiers::numericPad;
    if (qtModifiers & Qt::GroupSwitchModifier) mask |= modifiers::function;
    return mask;
}

class QmlMenuItem final : public MenuItem {
public:
    explicit QmlMenuItem(QObject* item) : item_(item) {}

    QObject* object() const { return item_; }
    QmlMenu* container() const { return container_; }
    void setContainer(QmlMenu* menu) { container_ = menu; }

    Menu* submenu() const override;
    std::string keyEquivalent() const override
    {
        if (!item_) return {};
        const auto sequence = shortcutOf(*item_);
        if (sequence.isEmpty()) return {};
        const QKeySequence key(sequence[0].key());
        return key.toString(QKeySequence::PortableText).toLower().toStdString();
    }
    ModifierMask keyEquivalentModifiers() const override
    {
        if (!item_) return 0;
        const auto sequence = shortcutOf(*item_);
        return sequence.isEmpty() ? 0 : maskOf(sequence[0].keyboardModifiers());
    }
    bool isSeparator() const override { return item_ && item_->inherits("QQuickMenuSeparator"); }

private:
    QPointer<QObject> item_;
    QmlMenu* container_ = nullptr;
};

// Forwards a menu's signals to its wrapper. A child of the QML object, so it goes with it.
class MenuSignalRelay : public QObject {
    Q_OBJECT
public:
    MenuSignalRelay(QObject* source, MenuListener*& listener, Menu& menu)
        : QObject(source), listener_(listener), menu_(menu)
    {
        if (source->metaObject()->indexOfSignal("countChanged()") >= 0)
            connect(source, SIGNAL(countChanged()), this, SLOT(needsUpdate()));
        if (source->metaObject()->indexOfSignal("aboutToShow()") >= 0)
            connect(source, SIGNAL(aboutToShow()), this, SLOT(willOpen()));
    }

private slots:
    // A menu reports its count also while it is being destroyed, and trimming then would put
    // items back into a dying menu. Deferred, the call goes away with this relay in that case;
    // it also folds a burst of changes (our own trimming among them) into one look.
    void needsUpdate()
    {
        if (updatePending_) return;
        updatePending_ = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                updatePending_ = false;
                if (listener_) listener_->menuNeedsUpdate(menu_);
            },
            Qt::QueuedConnection);
    }
    void willOpen()
    {
        if (listener_) listener_->menuWillOpen(menu_);
    }

private:
    MenuListener*& listener_;
    Menu& menu_;
    bool updatePending_ = false;
};

// Calls a QML method whose parameters are private Qt types, through the object's own engine.
QJSValue callQml(QObject* target, const char* method, const QList<QObject*>& arguments = {})
{
    auto* engine = target ? qjsEngine(target) : nullptr;
    if (!engine) return {};
    const auto self = engine->newQObject(target);
    auto function = self.property(QString::fromLatin1(method));
    if (!function.isCallable()) return {};
    QJSValueList values;
    for (auto* argument : arguments) values.append(engine->newQObject(argument));
    return function.callWithInstance(self, values);
}

class QmlMenuBar;
class QmlMenuBarEntry;

// Wrappers are kept for the life of the process: the Window menu's remembered items point at
// them. One whose QML object is gone answers as an empty item and ignores changes.
class Wrappers {
public:
    static Wrappers& shared();

    QmlMenuItem* item(QObject* object);
    QmlMenu* menu(QObject* object);
    QmlMenuBar* bar(QObject* object);
    QmlMenuBarEntry* entry(QObject* object);

private:
    // The pruner's table must outlive the wrappers, which leave it as they go: made first, it is
    // destroyed last.
    Wrappers() { static_cast<void>(ZelvaineMenuPruner::delegateCount()); }
    ~Wrappers();

    template <class Wrapper>
    Wrapper* find(std::unordered_map<QObject*, std::unique_ptr<Wrapper>>& table, QObject* object);

    std::unordered_map<QObject*, std::unique_ptr<QmlMenuItem>> items_;
    std::unordered_map<QObject*, std::unique_ptr<QmlMenu>> menus_;
    std::unordered_map<QObject*, std::unique_ptr<QmlMenuBar>> bars_;
    std::unordered_map<QObject*, std::unique_ptr<QmlMenuBarEntry>> entries_;
    std::vector<std::shared_ptr<void>> retired_;
};

class QmlMenu final : public Menu {
public:
    explicit QmlMenu(QObject* menu) : menu_(menu) {}
    ~QmlMenu() override { ZelvaineMenuPruner::forget(*this); }

    QObject* object() const { return menu_; }

    std::vector<MenuItem*> items() const override
    {
        std::vector<MenuItem*> result;
        if (!menu_) return result;
        const int count = menu_->property("count").toInt();
        for (int index = 0; index < count; ++index) {
            QQuickItem* item = nullptr;
            QMetaObject::invokeMethod(menu_, "itemAt", Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, index));
            if (item) result.push_back(Wrappers::shared().item(item));
        }
        return result;
    }
    void removeItem(MenuItem& item) override
    {
        const auto all = items();
        for (int index = 0; index < static_cast<int>(all.size()); ++index) {
            if (all[static_cast<std::size_t>(index)] == &item) {
                take(index);
                return;
            }
        }
    }
    void removeAllItems() override
    {
        if (!menu_) return;
        for (int index = menu_->property("count").toInt() - 1; index >= 0; --index) take(index);
    }
    void addItem(MenuItem& item) override
    {
        auto* wrapper = dynamic_cast<QmlMenuItem*>(&item);
        auto* quickItem = wrapper ? qobject_cast<QQuickItem*>(wrapper->object()) : nullptr;
        if (!menu_ || !quickItem) return;
        QMetaObject::invokeMethod(menu_, "addItem", Q_ARG(QQuickItem*, quickItem));
        wrapper->setContainer(this);
    }
    void setListener(MenuListener* listener) override
    {
        listener_ = listener;
        if (menu_ && !relay_) relay_ = new MenuSignalRelay(menu_, listener_, *this);
    }

private:
    void take(int index)
    {
        QQuickItem* taken = nullptr;
        QMetaObject::invokeMethod(menu_, "takeItem", Q_RETURN_ARG(QQuickItem*, taken), Q_ARG(int, index));
        if (!taken) return;
        auto* wrapper = Wrappers::shared().item(taken);
        wrapper->setContainer(nullptr);
        // An item that is not put back by the end of this turn of the event loop is dropped for
        // good, so that its shortcut cannot fire from outside any menu.
        QTimer::singleShot(0, taken, [wrapper] {
            if (!wrapper->container() && wrapper->object()) wrapper->object()->deleteLater();
        });
    }

    QPointer<QObject> menu_;
    MenuListener* listener_ = nullptr;
    QPointer<MenuSignalRelay> relay_;
};

Menu* QmlMenuItem::submenu() const
{
    auto* sub = item_ ? qvariant_cast<QObject*>(item_->property("subMenu")) : nullptr;
    return sub ? Wrappers::shared().menu(sub) : nullptr;
}

// A top-level entry of the menu bar: the bar's menus are its items' submenus.
class QmlMenuBarEntry final : public MenuItem {
public:
    explicit QmlMenuBarEntry(QObject* menu) : menu_(menu) {}

    QObject* object() const { return menu_; }

    Menu* submenu() const override { return menu_ ? Wrappers::shared().menu(menu_) : nullptr; }
    std::string keyEquivalent() const override { return {}; }
    ModifierMask keyEquivalentModifiers() const override { return 0; }
    bool isSeparator() const override { return false; }

private:
    QPointer<QObject> menu_;
};

class QmlMenuBar final : public Menu {
public:
    explicit QmlMenuBar(QObject* bar) : bar_(bar) {}
    ~QmlMenuBar() override { ZelvaineMenuPruner::forget(*this); }

    QObject* object() const { return bar_; }

    std::vector<MenuItem*> items() const override
    {
        std::vector<MenuItem*> result;
        if (!bar_) return result;
        const QQmlListReference menus(bar_, "menus");
        for (qsizetype index = 0; index < menus.count(); ++index) {
            if (auto* menu = menus.at(index)) result.push_back(Wrappers::shared().entry(menu));
        }
        return result;
    }
    void removeItem(MenuItem& item) override
    {
        if (auto* entry = dynamic_cast<QmlMenuBarEntry*>(&item); entry && entry->object())
            callQml(bar_, "removeMenu", {entry->object()});
    }
    // The pruner never empties the bar; were it asked to, the menus would go for good.
    void removeAllItems() override
    {
        for (auto* item : items()) removeItem(*item);
    }
    void addItem(MenuItem& item) override
    {
        if (auto* entry = dynamic_cast<QmlMenuBarEntry*>(&item); entry && entry->object())
            callQml(bar_, "addMenu", {entry->object()});
    }
    void setListener(MenuListener* listener) override
    {
        listener_ = listener;
        if (bar_ && !relay_) relay_ = new MenuSignalRelay(bar_, listener_, *this);
    }

private:
    QPointer<QObject> bar_;
    MenuListener* listener_ = nullptr;
    QPointer<MenuSignalRelay> relay_;
};

Wrappers& Wrappers::shared()
{
    static Wrappers wrappers;
    return wrappers;
}

Wrappers::~Wrappers() = default;

template <class Wrapper>
Wrapper* Wrappers::find(std::unordered_map<QObject*, std::unique_ptr<Wrapper>>& table, QObject* object)
{
    auto& slot = table[object];
    // A new object at a dead one's address gets a fresh wrapper; the old one is kept.
    if (slot && slot->object() != object) retired_.push_back(std::shared_ptr<void>(std::move(slot)));
    if (!slot) slot = std::make_unique<Wrapper>(object);
    return slot.get();
}

QmlMenuItem* Wrappers::item(QObject* object) { return find(items_, object); }
QmlMenu* Wrappers::menu(QObject* object) { return find(menus_, object); }
QmlMenuBar* Wrappers::bar(QObject* object) { return find(bars_, object); }
QmlMenuBarEntry* Wrappers::entry(QObject* object) { return find(entries_, object); }

} // namespace

void pruneMenuBar(QObject* menuBar)
{
    if (!menuBar || menuBar->metaObject()->indexOfProperty("menus") < 0) return;
    ZelvaineMenuPruner::prune(Wrappers::shared().bar(menuBar));
}

void MenuPruner::pruneLater(QObject* menuBar, int milliseconds)
{
    if (!menuBar) return;
    QTimer::singleShot(milliseconds, menuBar, [menuBar] { pruneMenuBar(menuBar); });
}

} // namespace zelvaine

#include "qml_menu.moc"
