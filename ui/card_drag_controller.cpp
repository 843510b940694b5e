#include "ui/card_drag_controller.hpp"

#include "ui/card_face.hpp"
#include "ui/drag_motion.hpp"
#include "ui/place_kind.hpp"

#include <cmath>

namespace zelvaine {
namespace {

Point toPoint(QPointF point) { return {point.x(), point.y()}; }
QPointF toQPoint(Point point) { return {point.x, point.y}; }

// The released spring, over the time the preview has before it is removed; it ends exactly home.
qreal springBack(qreal progress)
{
    static const qreal atEnd = dropReturnProgress(dropReturnSeconds);
    return progress >= 1 ? 1 : dropReturnProgress(progress * dropReturnSeconds) / atEnd;
}

} // namespace

CardDragController::CardDragController(QObject* parent) : QObject(parent)
{
    connect(&motion_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { position_.setLocation(value.toPointF()); });
}

CardDragController::~CardDragController()
{
    if (board_) board_->setFlights(nullptr);
}

void CardDragController::setBoard(GameBoard* board)
{
    if (board == board_) return;
    if (board_) board_->setFlights(nullptr);
    board_ = board;
    if (board_) board_->setFlights(this);
    emit boardChanged();
}

void CardDragController::setBoardItem(QQuickItem* item)
{
    if (item == boardItem_) return;
    boardItem_ = item;
    emit boardItemChanged();
}

Place::Kind CardDragController::sourceKind() const
{
    return session_.activeDrag() ? placeKind(session_.activeDrag()->source.kind) : Place::Kind::None;
}

int CardDragController::sourceIndex() const
{
    return session_.activeDrag() ? static_cast<int>(session_.activeDrag()->source.index) : -1;
}

int CardDragController::sourceCardIndex() const
{
    return session_.activeDrag() ? static_cast<int>(session_.activeDrag()->source.cardIndex) : -1;
}

void CardDragController::registerTarget(Place::Kind kind, int index, QQuickItem* item)
{
    const MoveDestination destination = placeDestination(kind, index);
    // The arrangement's places are remade when the window turns; the newest item reports.
    targets_.removeIf([&](const Target& target) { return target.destination == destination || !target.item; });
    if (item) targets_.append({destination, item});
}

// Frames are read from the places when a drag needs them, so that laying the board out
// reports nothing and redraws nothing.
void CardDragController::refreshFrames()
{
    frames_ = {};
    if (!boardItem_) return;
    for (const Target& target : std::as_const(targets_)) {
        if (!target.item || !target.item->isVisible()) continue;
        const QRectF frame =
            target.item->mapRectToItem(boardItem_, QRectF(0, 0, target.item->width(), target.item->height()));
        frames_.report(target.destination, {frame.x(), frame.y(), frame.width(), frame.height()});
    }
}

void CardDragController::setFaces(const std::vector<PlayingCard>& cards, double cardWidth)
{
    QStringList faces;
    for (const PlayingCard& card : cards) faces.append(QString::fromStdString(facePictureName(card)));
    faces_ = faces;
    cardWidth_ = cardWidth;
    emit facesChanged();
}

bool CardDragController::isDragDistance(QPointF start, QPointF location) const
{
    return zelvaine::isDragDistance(toPoint(start), toPoint(location));
}

void CardDragController::handleDragChanged(Place::Kind kind, int index, int cardIndex, QPointF location,
                                           QPointF startLocation, double cardWidth)
{
    if (!board_) return;
    if (!active()) refreshFrames();
    const auto change = session_.change(board_->store(), frames_, placeSource(kind, index, cardIndex),
                                        toPoint(location), toPoint(startLocation), cardWidth);
    if (change == CardDragSession::Change::ignored) return;
    // A returning preview that the player grabs again follows the pointer at once.
    motion_.stop();
    position_.setLocation(toQPoint(session_.location()));
    if (change == CardDragSession::Change::started) {
        setFaces(session_.activeDrag()->cards, cardWidth);
        setFadesOut(true);
        emit dragChanged();
    }
}

void CardDragController::handleDragEnded(Place::Kind kind, int index, int cardIndex, QPointF location)
{
    if (!board_) return;
    refreshFrames();
    const auto end = session_.end(board_->store(), frames_, placeSource(kind, index, cardIndex), toPoint(location));
    switch (end.kind) {
    case CardDragSession::End::Kind::none: return;
    case CardDragSession::End::Kind::committed:
        emit dropCommitted();
        emit dragChanged();
        return;
    case CardDragSession::End::Kind::refused: {
        QEasingCurve spring;
        spring.setCustomType(springBack);
        // A frame short of the clean-up, so the last drawn preview sits exactly home.
        animateTo(toQPoint(end.returnTo), static_cast<int>(dropReturnSeconds * 1000) - 20, spring);
        cleanUpLater(end.id);
        return;
    }
    }
}

void CardDragController::setFadesOut(bool fadesOut)
{
    if (fadesOut == fadesOut_) return;
    fadesOut_ = fadesOut;
    emit fadesOutChanged();
}

void CardDragController::cleanUpLater(const Uuid& id)
{
    QTimer::singleShot(static_cast<int>(dropReturnSeconds * 1000), this, [this, id] {
        if (!session_.cleanUp(id)) return;
        setFadesOut(false);
        emit dragChanged();
    });
}

void CardDragController::animateTo(QPointF target, int milliseconds, const QEasingCurve& curve)
{
    motion_.stop();
    motion_.setStartValue(position_.location());
    motion_.setEndValue(target);
    motion_.setDuration(milliseconds);
    motion_.setEasingCurve(curve);
    motion_.start();
}

int CardDragController::fly(const MoveSource& source, std::int64_t foundationIndex, const PlayingCard& card)
{
    if (source.isHand() || !board_) return 0;
    refreshFrames();
    const auto foundation = frames_.frame(MoveDestination::foundation(foundationIndex));
    if (!foundation) return 0;
    const double width = foundation->width > 0 ? foundation->width : cardWidth_ > 0 ? cardWidth_ : 80;
    const auto from = sourceCardFrame(source, width, frames_, board_->store().state());
    if (!from) return 0;
    const double height = width / cardPlaceAspect;
    session_.show({Uuid::random(),
                   source,
                   {card},
                   {from->x + from->width / 2, from->y + from->height / 2},
                   {width / 2, height / 2},
                   width});
    motion_.stop();
    position_.setLocation(toQPoint(session_.location()));
    setFaces({card}, width);
    setFadesOut(true);
    emit dragChanged();
    const QPointF target(foundation->x + foundation->width / 2, foundation->y + foundation->height / 2);
    // One turn of the event loop first, so the card is drawn where it starts.
    QTimer::singleShot(0, this, [this, target] {
        if (active()) animateTo(target, 90, QEasingCurve(QEasingCurve::InOutQuad));
    });
    return 95;
}

void CardDragController::land()
{
    motion_.stop();
    if (!active()) return;
    session_.clear();
    emit dragChanged();
}

} // namespace zelvaine
