#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// The win's confetti: 180 pieces falling for thirty seconds, drawn in one pass per frame.
class ConfettiItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    // Milliseconds since the epoch when the celebration began; 0 draws nothing.
    Q_PROPERTY(double startedAt READ startedAt WRITE setStartedAt NOTIFY startedAtChanged FINAL)

public:
    explicit ConfettiItem(QQuickItem* parent = nullptr);

    double startedAt() const { return startedAt_; }
    void setStartedAt(double startedAt);

    void paint(QPainter* painter) override;

signals:
    void startedAtChanged();

private:
    double startedAt_ = 0;
    QTimer frames_;
};

} // namespace zelvaine
