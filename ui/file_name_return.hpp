#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// Qt's own file panel, which the game shows where the desktop offers no file chooser of its own,
// saves a typed name only on a click of its Save button: Return in the name field does nothing.
// This makes Return there press that button, as in every other file chooser.
class FileNameReturn : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // For a file dialog that is on show; a desktop's own panel, which has no such field, is left as
    // it is, and so is a panel already taught.
    Q_INVOKABLE static void pressAcceptOnReturn(QObject* dialog);
};

} // namespace zelvaine
