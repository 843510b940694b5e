#include "ui/qt_file_panel.hpp"
#include "ui/shared_game_files.hpp"

#include <QFileInfo>
#include <QMetaObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariant>

namespace zelvaine {

namespace {

// QPlatformDialogHelper::AcceptRole, the role of a panel's Save or Open button.
constexpr int acceptRole = 0;

// Lives on the name field and presses the panel's accept button ("Save") when Return is pressed
// there. The button is looked up then: the panel makes its buttons when it first shows.
class AcceptOnReturn : public QObject {
    Q_OBJECT

public:
    AcceptOnReturn(QQuickItem* field, QObject* panel) : QObject(field), panel_(panel) {}

public slots:
    void press()
    {
        if (!panel_) return;
        for (QQuickItem* button : panel_->findChildren<QQuickItem*>()) {
            if (!button->inherits("QQuickAbstractButton") || !button->isVisible() || !button->isEnabled()) continue;
            // The button box tells each of its buttons its role in an attached object.
            for (QObject* attached : button->children()) {
                if (attached->inherits("QQuickDialogButtonBoxAttached") &&
                    attached->property("buttonRole").toInt() == acceptRole) {
                    QMetaObject::invokeMethod(button, "clicked");
                    return;
                }
            }
        }
    }

private:
    QPointer<QObject> panel_;
};

} // namespace

bool QtFilePanel::teach(QObject* dialog)
{
    // Qt's panel is not the dialog's child but the window's, as popups are.
    auto* window = dialog ? qobject_cast<QQuickWindow*>(dialog->property("parentWindow").value<QObject*>()) : nullptr;
    if (window == nullptr) return false;
    bool found = false;
    for (auto* field : window->findChildren<QQuickItem*>(QStringLiteral("fileNameTextField"))) {
        if (!field->isVisible()) continue;
        QObject* panel = field->parent();
        while (panel != nullptr && !panel->inherits("QQuickDialog")) panel = panel->parent();
        if (panel == nullptr) continue;
        found = true;
        if (field->findChild<AcceptOnReturn*>() != nullptr) continue;
        // Queued: the field hands its text to the panel when editing finishes, just after Return.
        QObject::connect(field, SIGNAL(accepted()), new AcceptOnReturn(field, panel), SLOT(press()),
                         Qt::QueuedConnection);
    }
    return found;
}

bool QtFilePanel::wouldReplace(const QUrl& file)
{
    const QString path = localPath(file);
    return !path.isEmpty() && QFileInfo::exists(path);
}

QUrl QtFilePanel::fileUrl(const QUrl& file) { return QUrl::fromLocalFile(localPath(file)); }

} // namespace zelvaine

#include "qt_file_panel.moc"
