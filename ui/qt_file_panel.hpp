#pragma once

#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// Qt's own file panel, which the game shows where the desktop offers no file chooser of its own,
// lacks two habits of every other one: Return in its name field does nothing (only a click of
// Save saves), and it replaces a file of the chosen name without asking. This teaches it the
// first and tells the game when it must ask the second itself.
class QtFilePanel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // For a file dialog on show: true when it is Qt's own panel, which then saves on Return. A
    // desktop's own chooser is left as it is.
    Q_INVOKABLE static bool teach(QObject* dialog);
    // Whether saving to `file` would replace a file that is there.
    Q_INVOKABLE static bool wouldReplace(const QUrl& file);
    // The panel's answer as a file URL: a typed absolute path comes back from it without one.
    Q_INVOKABLE static QUrl fileUrl(const QUrl& file);
};

} // namespace zelvaine
