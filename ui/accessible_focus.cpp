#include "ui/accessible_focus.hpp"

#include <QAccessible>
#include <QQuickItem>

namespace zelvaine {

void AccessibleFocus::moveTo(QQuickItem* item)
{
    if (item == nullptr) return;
    QAccessibleEvent event(item, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

} // namespace zelvaine
