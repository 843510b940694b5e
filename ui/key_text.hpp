#pragma once

#include <QObject>
#include <QString>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// A command's key as the menus show it ("Ctrl+Shift+Z", in German "Strg+Umschalt+Z").
class KeyText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // `shortcut` as an Action holds it: a key sequence, its text, or a standard key's number.
    Q_INVOKABLE static QString nativeText(const QVariant& shortcut);
};

} // namespace zelvaine
