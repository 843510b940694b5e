#pragma once

#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// The falling confetti of a won deal. Each piece is its own small scene-graph node, moved and
// faded per frame, so a frame repaints only where pieces were and are, never the whole window.
class ConfettiItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    // Milliseconds since the epoch when the celebration began; 0 draws nothing.
    Q_PROPERTY(double startedAt READ startedAt WRITE setStartedAt NOTIFY startedAtChanged FINAL)

public:
    explicit ConfettiItem(QQuickItem* parent = nullptr);

    double startedAt() const { return startedAt_; }
    void setStartedAt(double startedAt);

signals:
    void startedAtChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    QSGNode* updateSoftwareNodes(QSGNode* root, double seconds);
    QSGNode* updateTextureNodes(QSGNode* old, double seconds);

    double startedAt_ = 0;
    QTimer frames_;
};

} // namespace zelvaine
