#include "ui/key_text.hpp"

#include <QKeySequence>

namespace zelvaine {

QString KeyText::nativeText(const QVariant& shortcut)
{
    QKeySequence sequence;
    if (shortcut.metaType() == QMetaType::fromType<QKeySequence>()) {
        sequence = shortcut.value<QKeySequence>();
    } else if (shortcut.metaType() == QMetaType::fromType<QString>()) {
        sequence = QKeySequence(shortcut.toString());
    } else if (shortcut.canConvert<int>()) {
        // A standard key stands for the platform's own binding; its first one is the one shown.
        const auto bindings = QKeySequence::keyBindings(static_cast<QKeySequence::StandardKey>(shortcut.toInt()));
        if (!bindings.isEmpty()) sequence = bindings.first();
    }
    return sequence.toString(QKeySequence::NativeText);
}

} // namespace zelvaine
