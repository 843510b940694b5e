#pragma once

#include "app/menu_model.hpp"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace zelvaine {

// Which standard menu a delegate guards, and so which items it keeps.
struct MenuKind {
    enum class Case { window, file, edit, help };

    Case which = Case::file;
    // Window menu only: its items at the moment it was first trimmed.
    std::vector<MenuItem*> rememberedItems;

    static MenuKind window(std::vector<MenuItem*> items) { return {Case::window, std::move(items)}; }
    static MenuKind file() { return {Case::file, {}}; }
    static MenuKind edit() { return {Case::edit, {}}; }
    static MenuKind help() { return {Case::help, {}}; }
};

// Keeps one menu trimmed: each time the menu changes or is about to open, whatever the toolkit
// added since is taken out again.
class MenuDelegate final : public MenuListener {
public:
    explicit MenuDelegate(MenuKind kind) : kind_(std::move(kind)) {}

    const MenuKind& kind() const { return kind_; }

    void menuNeedsUpdate(Menu& menu) override { trim(menu); }
    void menuWillOpen(Menu& menu) override { trim(menu); }

private:
    void trim(Menu& menu);

    MenuKind kind_;
    // Trimming changes the menu, and a menu may report that change at once.
    bool trimming_ = false;
};

// Reduces the menu bar to the game's own commands. The menus are found by the key equivalents of
// the items they hold, so titles and translations do not matter.
class ZelvaineMenuPruner {
public:
    static bool matches(const MenuItem& item, std::string_view key, ModifierMask modifiers);
    static MenuItem* itemWithKey(const Menu& menu, std::string_view key, ModifierMask modifiers);
    static Menu* menuContaining(const Menu& mainMenu, std::string_view key, ModifierMask modifiers);

    static void restrict(Menu& menu, const MenuKind& kind);
    static void attach(Menu& menu, MenuKind kind);
    // A null main menu does nothing.
    static void prune(Menu* mainMenu);

    // The delegate registered for a menu, if any. The table lives as long as the process.
    static MenuDelegate* delegateFor(const Menu& menu);
    static std::size_t delegateCount();
    // Drops a menu's entry when the menu itself goes away.
    static void forget(const Menu& menu);
};

} // namespace zelvaine
