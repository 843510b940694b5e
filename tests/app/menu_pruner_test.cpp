#include "app/menu_pruner.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <string>

namespace zelvaine {
namespace {

using namespace modifiers;

class FakeItem final : public MenuItem {
public:
    FakeItem(std::string name, std::string key, ModifierMask mask, Menu* submenu = nullptr, bool separator = false)
        : title(std::move(name)), key_(std::move(key)), mask_(mask), submenu_(submenu), separator_(separator)
    {}
    Menu* submenu() const override { return submenu_; }
    std::string keyEquivalent() const override { return key_; }
    ModifierMask keyEquivalentModifiers() const override { return mask_; }
    bool isSeparator() const override { return separator_; }

    std::string title;

private:
    std::string key_;
    ModifierMask mask_;
    Menu* submenu_;
    bool separator_;
};

// A menu that, like a real toolkit, may report every change of its own content at once.
class FakeMenu final : public Menu {
public:
    explicit FakeMenu(bool reportsChanges = false) : reportsChanges_(reportsChanges) {}
    ~FakeMenu() override { ZelvaineMenuPruner::forget(*this); }

    std::vector<MenuItem*> items() const override { return items_; }
    void removeItem(MenuItem& item) override
    {
        items_.erase(std::remove(items_.begin(), items_.end(), &item), items_.end());
        changed();
    }
    void removeAllItems() override
    {
        items_.clear();
        changed();
    }
    void addItem(MenuItem& item) override
    {
        items_.push_back(&item);
        changed();
    }
    void setListener(MenuListener* listener) override { listener_ = listener; }

    // What the toolkit does behind the game's back, and the player opening the menu.
    void platformAdds(MenuItem& item) { items_.push_back(&item); }
    void open()
    {
        if (listener_) listener_->menuWillOpen(*this);
    }

    std::vector<std::string> titles() const
    {
        std::vector<std::string> result;
        for (auto* item : items_) result.push_back(static_cast<FakeItem*>(item)->title);
        return result;
    }
    MenuListener* listener() const { return listener_; }
    int changes = 0;

private:
    void changed()
    {
        ++changes;
        if (reportsChanges_ && listener_) listener_->menuNeedsUpdate(*this);
    }

    bool reportsChanges_;
    std::vector<MenuItem*> items_;
    MenuListener* listener_ = nullptr;
};

// The menu bar a document application gets by default, with the game's commands mixed in.
struct FakeMenuBar {
    explicit FakeMenuBar(bool reportsChanges = false)
        : app(reportsChanges),
          file(reportsChanges),
          edit(reportsChanges),
          view(reportsChanges),
          window(reportsChanges),
          help(reportsChanges)
    {
        fill(app, {item("About Zelvaine", "", 0), item("Preferences…", ",", command), item("Quit", "q", command)});
        fill(file, {item("New Game", "n", command), item("Open Game…", "o", command), separator(),
                    item("Restart Game", "r", command), item("Close", "w", command), item("Save", "s", command)});
        fill(edit, {item("Undo", "z", command), item("Redo", "Z", command | shift), separator(),
                    item("Copy", "c", command), item("Select All", "a", command)});
        fill(view, {separator(), separator()});
        fill(window, {item("Minimize", "m", command), item("Zoom", "", 0)});
        fill(help, {item("Hint", "/", command | shift), item("Search", "", 0)});
        for (auto* menu : {&app, &file, &edit, &view, &window, &help}) bar.addItem(item("", "", 0, menu));
        bar.changes = 0;
    }

    FakeItem& item(std::string title, std::string key, ModifierMask mask, Menu* submenu = nullptr)
    {
        return storage.emplace_back(std::move(title), std::move(key), mask, submenu);
    }
    FakeItem& separator() { return storage.emplace_back("-", "", 0, nullptr, true); }
    static void fill(FakeMenu& menu, std::initializer_list<std::reference_wrapper<FakeItem>> items)
    {
        for (auto& entry : items) menu.addItem(entry.get());
        menu.changes = 0;
    }
    std::vector<Menu*> topLevel() const
    {
        std::vector<Menu*> menus;
        for (auto* entry : bar.items()) menus.push_back(entry->submenu());
        return menus;
    }

    std::deque<FakeItem> storage; // stable addresses
    FakeMenu bar, app, file, edit, view, window, help;
};

using Titles = std::vector<std::string>;

TEST(MenuKeyMatching, LowerCasesTheKeyAndComparesOnlyTheFourModifiers)
{
    struct Case {
        std::string itemKey;
        ModifierMask itemMask;
        std::string key;
        ModifierMask mask;
        bool matches;
    };
    const Case cases[] = {
        {"w", command, "w", command, true},
        {"W", command, "w", command, true},
        {"n", command | capsLock, "n", command, true},
        {"n", command | numericPad | function, "n", command, true},
        {"z", command, "z", command | shift, false},
        {"z", command | shift, "z", command, false},
        {"n", control, "n", command, false},
        {"n", command | option, "n", command, false},
        {"/", command | shift, "/", command | shift, true},
        {"", 0, "", command, false},
        {"nn", command, "n", command, false},
    };
    for (const auto& c : cases) {
        const FakeItem item("", c.itemKey, c.itemMask);
        EXPECT_EQ(ZelvaineMenuPruner::matches(item, c.key, c.mask), c.matches)
            << "item " << c.itemKey << "/" << c.itemMask << " against " << c.key << "/" << c.mask;
    }
}

TEST(MenuLookup, FindsTheFirstItemAndTheFirstMenuInBarOrder)
{
    FakeMenuBar menus;
    auto& duplicate = menus.item("Second New", "n", command);
    menus.file.addItem(duplicate);
    auto* found = ZelvaineMenuPruner::itemWithKey(menus.file, "n", command);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(static_cast<FakeItem*>(found)->title, "New Game");
    EXPECT_EQ(ZelvaineMenuPruner::itemWithKey(menus.file, "n", command | shift), nullptr);

    // An item of the bar without a submenu is passed over; the earlier menu wins.
    FakeMenuBar other;
    auto& plain = other.item("Plain", "z", command);
    FakeMenu bar;
    bar.addItem(plain);
    bar.addItem(other.item("", "", 0, &other.help));
    bar.addItem(other.item("", "", 0, &other.edit));
    bar.addItem(other.item("", "", 0, &other.file));
    EXPECT_EQ(ZelvaineMenuPruner::menuContaining(bar, "z", command), &other.edit);
    EXPECT_EQ(ZelvaineMenuPruner::menuContaining(bar, "n", command), &other.file);
    EXPECT_EQ(ZelvaineMenuPruner::menuContaining(bar, "x", command), nullptr);
}

TEST(MenuRestrict, LeavesAMenuWithNothingToKeepAndAnAlreadyTrimmedMenuAlone)
{
    FakeMenuBar menus;
    ZelvaineMenuPruner::restrict(menus.edit, MenuKind::file());
    EXPECT_EQ(menus.edit.titles(), (Titles{"Undo", "Redo", "-", "Copy", "Select All"}));
    ZelvaineMenuPruner::restrict(menus.window, MenuKind::window({}));
    EXPECT_EQ(menus.window.titles(), (Titles{"Minimize", "Zoom"}));
    EXPECT_EQ(menus.edit.changes + menus.window.changes, 0);

    ZelvaineMenuPruner::restrict(menus.help, MenuKind::help());
    const int changes = menus.help.changes;
    ZelvaineMenuPruner::restrict(menus.help, MenuKind::help());
    EXPECT_EQ(menus.help.changes, changes);
}

TEST(MenuPrune, TrimsTheStandardMenusAndDropsMenusLeftWithSeparatorsOnly)
{
    FakeMenuBar menus;
    FakeMenu empty;
    menus.bar.addItem(menus.item("", "", 0, &empty));
    auto& plainItem = menus.item("Not a menu", "", 0);
    menus.bar.addItem(plainItem);

    ZelvaineMenuPruner::prune(&menus.bar);

    EXPECT_EQ(menus.file.titles(), (Titles{"Open Game…", "New Game", "Restart Game"}));
    EXPECT_EQ(menus.edit.titles(), (Titles{"Undo", "Redo"}));
    EXPECT_EQ(menus.window.titles(), (Titles{"Minimize", "Zoom"}));
    EXPECT_EQ(menus.help.titles(), (Titles{"Hint"}));
    EXPECT_EQ(menus.app.titles(), (Titles{"About Zelvaine", "Preferences…", "Quit"}));
    // View (separators only) and the empty menu are gone; the plain item stays.
    const auto left = menus.topLevel();
    EXPECT_EQ(left, (std::vector<Menu*>{&menus.app, &menus.file, &menus.edit, &menus.window, &menus.help, nullptr}));
    for (auto* menu : {&menus.file, &menus.edit, &menus.window, &menus.help}) {
        EXPECT_NE(ZelvaineMenuPruner::delegateFor(*menu), nullptr);
        EXPECT_EQ(menu->listener(), ZelvaineMenuPruner::delegateFor(*menu));
    }
    EXPECT_EQ(ZelvaineMenuPruner::delegateFor(menus.app), nullptr);
}

TEST(MenuPrune, ItemsTheToolkitAddsLaterDisappearWhenTheMenuOpens)
{
    FakeMenuBar menus;
    ZelvaineMenuPruner::prune(&menus.bar);

    menus.file.platformAdds(menus.item("Close Window", "w", command));
    menus.edit.platformAdds(menus.item("Emoji & Symbols", "e", command | control));
    menus.help.platformAdds(menus.item("Search", "", 0));
    menus.window.platformAdds(menus.item("Bring All to Front", "", 0));
    for (auto* menu : {&menus.file, &menus.edit, &menus.help, &menus.window}) menu->open();

    EXPECT_EQ(menus.file.titles(), (Titles{"Open Game…", "New Game", "Restart Game"}));
    EXPECT_EQ(menus.edit.titles(), (Titles{"Undo", "Redo"}));
    EXPECT_EQ(menus.help.titles(), (Titles{"Hint"}));
    EXPECT_EQ(menus.window.titles(), (Titles{"Minimize", "Zoom"}));
}

TEST(MenuPrune, AMenuThatReportsItsOwnChangesIsTrimmedOnceAndStaysTrimmed)
{
    FakeMenuBar menus(true);
    ZelvaineMenuPruner::prune(&menus.bar);
    menus.file.addItem(menus.item("Close", "w", command));
    EXPECT_EQ(menus.file.titles(), (Titles{"Open Game…", "New Game", "Restart Game"}));
}

TEST(MenuPrune, MissingMenusAreSkipped)
{
    FakeMenuBar menus;
    FakeMenu bar;
    bar.addItem(menus.item("", "", 0, &menus.help));
    bar.addItem(menus.item("", "", 0, &menus.app));
    ZelvaineMenuPruner::prune(&bar);
    EXPECT_EQ(menus.help.titles(), (Titles{"Hint"}));
    EXPECT_EQ(bar.items().size(), 2U);

    ZelvaineMenuPruner::prune(nullptr);
    FakeMenu emptyBar;
    ZelvaineMenuPruner::prune(&emptyBar);
    EXPECT_TRUE(emptyBar.items().empty());
}

TEST(MenuPrune, PruningAgainReplacesEachMenusDelegate)
{
    FakeMenuBar menus;
    ZelvaineMenuPruner::prune(&menus.bar);
    const auto count = ZelvaineMenuPruner::delegateCount();

    ZelvaineMenuPruner::prune(&menus.bar);
    EXPECT_EQ(ZelvaineMenuPruner::delegateCount(), count);
    auto* second = ZelvaineMenuPruner::delegateFor(menus.file);
    EXPECT_EQ(menus.file.listener(), second);
    EXPECT_EQ(second->kind().which, MenuKind::Case::file);
    EXPECT_EQ(ZelvaineMenuPruner::delegateFor(menus.window)->kind().rememberedItems.size(), 2U);
}

} // namespace
} // namespace zelvaine
