#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zelvaine {

// A key equivalent's modifier flags. Only the first four take part in matching; a toolkit may
// report others (Caps Lock, keypad, function keys), which are kept apart so they can be ignored.
using ModifierMask = std::uint32_t;

namespace modifiers {
inline constexpr ModifierMask shift = 1U << 0;
inline constexpr ModifierMask control = 1U << 1;
inline constexpr ModifierMask option = 1U << 2;  // Alt
inline constexpr ModifierMask command = 1U << 3; // Ctrl on Linux
inline constexpr ModifierMask capsLock = 1U << 8;
inline constexpr ModifierMask numericPad = 1U << 9;
inline constexpr ModifierMask function = 1U << 10;
inline constexpr ModifierMask matched = shift | control | option | command;
} // namespace modifiers

class Menu;

// One entry of a menu as the pruner sees it: enough to find an item by its key and to tell
// separators and submenus apart.
class MenuItem {
public:
    virtual ~MenuItem() = default;
    virtual Menu* submenu() const = 0;
    virtual std::string keyEquivalent() const = 0;
    virtual ModifierMask keyEquivalentModifiers() const = 0;
    virtual bool isSeparator() const = 0;
};

// Told by a menu when its content may have changed and just before the player sees it.
class MenuListener {
public:
    virtual ~MenuListener() = default;
    virtual void menuNeedsUpdate(Menu& menu) = 0;
    virtual void menuWillOpen(Menu& menu) = 0;
};

// A menu, or the menu bar itself (whose items carry the top-level menus as submenus). Removing
// items only detaches them: an item removed and added back within one trimming stays the same
// item; what happens to an item that is never added back is the toolkit's business.
class Menu {
public:
    virtual ~Menu() = default;
    virtual std::vector<MenuItem*> items() const = 0;
    virtual void removeItem(MenuItem& item) = 0;
    virtual void removeAllItems() = 0;
    virtual void addItem(MenuItem& item) = 0;
    // Null stops the notifications.
    virtual void setListener(MenuListener* listener) = 0;
};

} // namespace zelvaine
