#pragma once

// moc cannot read the C++20 standard headers these pull in, and needs nothing from them.
#ifndef Q_MOC_RUN
#include "ui/card_drag.hpp"
#endif
#include "ui/board_vocabulary.hpp"
#include "ui/drag_position_model.hpp"
#include "ui/game_board.hpp"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QStringList>
#include <QTimer>
#include <QVariantAnimation>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// Dragging cards on the board: the card views report gestures here, the places register
// themselves as drop destinations, and the overlay draws what this holds. The automatic finish
// flies its cards through the same preview.
class CardDragController : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(zelvaine::GameBoard* board READ board WRITE setBoard NOTIFY boardChanged FINAL)
    // The item whose coordinates every point here is in.
    Q_PROPERTY(QQuickItem* boardItem READ boardItem WRITE setBoardItem NOTIFY boardItemChanged FINAL)
    Q_PROPERTY(zelvaine::DragPositionModel* dragPosition READ dragPosition CONSTANT FINAL)
    Q_PROPERTY(bool active READ active NOTIFY dragChanged FINAL)
    // The drag's source, for the places to leave its cards out; None when nothing is dragged.
    Q_PROPERTY(zelvaine::Place::Kind sourceKind READ sourceKind NOTIFY dragChanged FINAL)
    Q_PROPERTY(int sourceIndex READ sourceIndex NOTIFY dragChanged FINAL)
    Q_PROPERTY(int sourceCardIndex READ sourceCardIndex NOTIFY dragChanged FINAL)
    // The dragged cards' pictures, top first; kept after a drag ends so that its preview can fade.
    Q_PROPERTY(QStringList faces READ faces NOTIFY facesChanged FINAL)
    Q_PROPERTY(double cardWidth READ cardWidth NOTIFY facesChanged FINAL)
    // Whether the preview just taken away fades out. Not after it sprang home from a refused
    // drop: the place beneath already draws the same cards there, fanned its own way, and a
    // fading preview over them shows both fans at once.
    Q_PROPERTY(bool fadesOut READ fadesOut NOTIFY fadesOutChanged FINAL)

public:
    explicit CardDragController(QObject* parent = nullptr);
    ~CardDragController() override;

    GameBoard* board() const { return board_; }
    void setBoard(GameBoard* board);
    QQuickItem* boardItem() const { return boardItem_; }
    void setBoardItem(QQuickItem* item);
    DragPositionModel* dragPosition() { return &position_; }
    bool active() const { return session_.activeDrag().has_value(); }
    Place::Kind sourceKind() const;
    int sourceIndex() const;
    int sourceCardIndex() const;
    QStringList faces() const { return faces_; }
    double cardWidth() const { return cardWidth_; }
    bool fadesOut() const { return fadesOut_; }

    // A place that takes drops: a column (the whole column's item), a hand slot or a foundation.
    Q_INVOKABLE void registerTarget(zelvaine::Place::Kind kind, int index, QQuickItem* item);
    // Whether a press that has travelled from `start` to `location` is a drag yet.
    Q_INVOKABLE bool isDragDistance(QPointF start, QPointF location) const;
    Q_INVOKABLE void handleDragChanged(zelvaine::Place::Kind kind, int index, int cardIndex, QPointF location,
                                       QPointF startLocation, double cardWidth);
    Q_INVOKABLE void handleDragEnded(zelvaine::Place::Kind kind, int index, int cardIndex, QPointF location);

    // The automatic finish: show `card` leaving `source` for the foundation and return how long
    // the flight takes in milliseconds (0 when nothing flies); land() removes the preview.
    int fly(const MoveSource& source, std::int64_t foundationIndex, const PlayingCard& card);
    void land();

signals:
    void boardChanged();
    void boardItemChanged();
    void dragChanged();
    void facesChanged();
    // Told before dragChanged, so that the preview knows whether to fade when the drag ends.
    void fadesOutChanged();
    // A drop the store took; the overlay lets its preview settle.
    void dropCommitted();

private:
    void refreshFrames();
    void setFaces(const std::vector<PlayingCard>& cards, double cardWidth);
    void setFadesOut(bool fadesOut);
    void cleanUpLater(const Uuid& id);
    void animateTo(QPointF target, int milliseconds, const QEasingCurve& curve);

    struct Target {
        MoveDestination destination;
        QPointer<QQuickItem> item;
    };

    QPointer<GameBoard> board_;
    QPointer<QQuickItem> boardItem_;
    DragPositionModel position_;
    QList<Target> targets_;
    DropFrameCache frames_;
    CardDragSession session_;
    QStringList faces_;
    double cardWidth_ = 0;
    bool fadesOut_ = true;
    QVariantAnimation motion_;
};

} // namespace zelvaine
