#include "app/menu_pruner.hpp"

#include <algorithm>
#include <map>

namespace zelvaine {

namespace {

std::map<const Menu*, std::unique_ptr<MenuDelegate>>& delegates()
{
    static std::map<const Menu*, std::unique_ptr<MenuDelegate>> table;
    return table;
}

std::string lowerCased(std::string text)
{
    // Key equivalents are ASCII letters and punctuation; other bytes are left as they are.
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

struct KeyEquivalent {
    std::string_view key;
    ModifierMask modifiers;
};

std::vector<KeyEquivalent> keptKeys(MenuKind::Case which)
{
    using namespace modifiers;
    switch (which) {
    case MenuKind::Case::file: return {{"o", command}, {"n", command}, {"r", command}};
    case MenuKind::Case::edit: return {{"z", command}, {"z", command | shift}};
    case MenuKind::Case::help: return {{"/", command | shift}};
    case MenuKind::Case::window: break;
    }
    return {};
}

std::vector<MenuItem*> keepList(const Menu& menu, const MenuKind& kind)
{
    if (kind.which == MenuKind::Case::window) return kind.rememberedItems;
    std::vector<MenuItem*> kept;
    for (const auto& [key, modifiers] : keptKeys(kind.which)) {
        if (auto* item = ZelvaineMenuPruner::itemWithKey(menu, key, modifiers)) kept.push_back(item);
    }
    return kept;
}

bool holdsOnlySeparators(const Menu& menu)
{
    const auto items = menu.items();
    return std::all_of(items.begin(), items.end(), [](const MenuItem* item) { return item->isSeparator(); });
}

} // namespace

void MenuDelegate::trim(Menu& menu)
{
    if (trimming_) return;
    trimming_ = true;
    ZelvaineMenuPruner::restrict(menu, kind_);
    trimming_ = false;
}

bool ZelvaineMenuPruner::matches(const MenuItem& item, std::string_view key, ModifierMask modifiers)
{
    return lowerCased(item.keyEquivalent()) == key && (item.keyEquivalentModifiers() & modifiers::matched) == modifiers;
}

MenuItem* ZelvaineMenuPruner::itemWithKey(const Menu& menu, std::string_view key, ModifierMask modifiers)
{
    for (auto* item : menu.items()) {
        if (matches(*item, key, modifiers)) return item;
    }
    return nullptr;
}

Menu* ZelvaineMenuPruner::menuContaining(const Menu& mainMenu, std::string_view key, ModifierMask modifiers)
{
    for (auto* topLevel : mainMenu.items()) {
        auto* submenu = topLevel->submenu();
        if (submenu && itemWithKey(*submenu, key, modifiers)) return submenu;
    }
    return nullptr;
}

void ZelvaineMenuPruner::restrict(Menu& menu, const MenuKind& kind)
{
    const auto kept = keepList(menu, kind);
    // Nothing of ours found: this is not the menu we took it for, so leave it alone.
    if (kept.empty()) return;
    // Already trimmed: rebuilding it would only make the menu flicker while it opens.
    if (menu.items() == kept) return;
    menu.removeAllItems();
    for (auto* item : kept) menu.addItem(*item);
}

void ZelvaineMenuPruner::attach(Menu& menu, MenuKind kind)
{
    restrict(menu, kind);
    auto delegate = std::make_unique<MenuDelegate>(std::move(kind));
    menu.setListener(delegate.get());
    // Replacing the entry frees the old delegate only after the menu has let go of it.
    delegates()[&menu] = std::move(delegate);
}

void ZelvaineMenuPruner::prune(Menu* mainMenu)
{
    using namespace modifiers;
    if (!mainMenu) return;
    if (auto* menu = menuContaining(*mainMenu, "n", command)) attach(*menu, MenuKind::file());
    if (auto* menu = menuContaining(*mainMenu, "z", command)) attach(*menu, MenuKind::edit());
    // The Window menu is frozen to what it holds now.
    if (auto* menu = menuContaining(*mainMenu, "m", command)) attach(*menu, MenuKind::window(menu->items()));
    if (auto* menu = menuContaining(*mainMenu, "/", command | shift)) attach(*menu, MenuKind::help());

    for (auto* topLevel : mainMenu->items()) {
        auto* submenu = topLevel->submenu();
        if (submenu && holdsOnlySeparators(*submenu)) mainMenu->removeItem(*topLevel);
    }
}

MenuDelegate* ZelvaineMenuPruner::delegateFor(const Menu& menu)
{
    auto found = delegates().find(&menu);
    return found == delegates().end() ? nullptr : found->second.get();
}

std::size_t ZelvaineMenuPruner::delegateCount() { return delegates().size(); }

void ZelvaineMenuPruner::forget(const Menu& menu) { delegates().erase(&menu); }

} // namespace zelvaine
