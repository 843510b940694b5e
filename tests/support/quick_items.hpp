#pragma once

#include <QQuickItem>

namespace zelvaine::testing {

// Delegates made by repeaters and stacks are found through the item tree, not the object tree.
inline QQuickItem* findItem(QQuickItem* root, const QString& name)
{
    if (root->objectName() == name) return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = findItem(child, name)) return found;
    }
    return nullptr;
}

} // namespace zelvaine::testing
