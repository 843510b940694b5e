#include "ui/confetti_item.hpp"

#include "ui/celebration.hpp"

#include <QDateTime>
#include <QPainter>
#include <QPainterPath>

#include <array>
#include <numbers>

namespace zelvaine {
namespace {

const std::array<QColor, 7> colours{QColor("#ffd60a"), QColor("#ff9f0a"), QColor("#ff453a"), QColor("#ff6fae"),
                                    QColor("#64d2ff"), QColor("#30d158"), QColor("#ffffff")};

} // namespace

ConfettiItem::ConfettiItem(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    frames_.setInterval(16); // up to 60 frames a second
    connect(&frames_, &QTimer::timeout, this, [this] { update(); });
}

void ConfettiItem::setStartedAt(double startedAt)
{
    if (startedAt == startedAt_) return;
    startedAt_ = startedAt;
    if (startedAt_ > 0) {
        frames_.start();
    } else {
        frames_.stop();
    }
    update();
    emit startedAtChanged();
}

void ConfettiItem::paint(QPainter* painter)
{
    if (startedAt_ <= 0) return;
    const double seconds = (static_cast<double>(QDateTime::currentMSecsSinceEpoch()) - startedAt_) / 1000.0;
    if (seconds >= celebrationSeconds) {
        frames_.stop();
        return;
    }
    painter->setPen(Qt::NoPen);
    for (const ConfettiParticle& particle : confettiParticles()) {
        const ConfettiPiece piece = confettiPiece(particle, seconds, width(), height());
        if (piece.opacity <= 0) continue;
        painter->save();
        painter->translate(piece.x, piece.y);
        painter->rotate(piece.angle * 180 / std::numbers::pi);
        painter->setOpacity(piece.opacity);
        painter->setBrush(colours[static_cast<std::size_t>(particle.colorIndex) % colours.size()]);
        painter->drawRoundedRect(QRectF(-particle.size / 2, -particle.size / 4, particle.size, particle.size / 2), 2, 2);
        painter->restore();
    }
}

} // namespace zelvaine
