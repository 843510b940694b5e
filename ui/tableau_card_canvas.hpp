#pragma once

#include "ui/card_sprites.hpp"

#include <QQuickItem>
#include <QStringList>
#include <QVariantAnimation>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// Draws a fanned column of cards in one pass: each card is one copy of its finished sprite
// (shadow, paper, picture and outline painted once), and a covered card contributes only the
// strip that shows. So a column costs a handful of textured quads rather than six translucent
// items a card, and on the software renderer each is a plain copy of pixels. A single card
// (a hand slot, a foundation's top, a dragged stack) is a column too.
class TableauCardCanvas : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    // The pictures' names, deepest card first.
    Q_PROPERTY(QStringList faces READ faces WRITE setFaces NOTIFY appearanceChanged FINAL)
    // The width of a card place; each place is 0.7 as wide as it is high.
    Q_PROPERTY(double cardWidth READ cardWidth WRITE setCardWidth NOTIFY appearanceChanged FINAL)
    // The distance between the tops of successive cards.
    Q_PROPERTY(double offset READ offset WRITE setOffset NOTIFY appearanceChanged FINAL)
    // Cards from this index on are not drawn (they are under the pointer); -1: all are drawn.
    Q_PROPERTY(int hiddenFrom READ hiddenFrom WRITE setHiddenFrom NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(bool shadows READ shadows WRITE setShadows NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(bool topBand READ topBand WRITE setTopBand NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(bool selectionBorder READ selectionBorder WRITE setSelectionBorder NOTIFY appearanceChanged FINAL)
    // A blocked card's shake: that card is drawn on top of the column, moved sideways; -1 and 0
    // while nothing shakes.
    Q_PROPERTY(int nudgedIndex READ nudgedIndex NOTIFY appearanceChanged FINAL)
    Q_PROPERTY(double nudgeOffset READ nudgeOffset NOTIFY appearanceChanged FINAL)

public:
    explicit TableauCardCanvas(QQuickItem* parent = nullptr);

    QStringList faces() const { return faces_; }
    void setFaces(const QStringList& faces) { assign(faces_, faces); }
    double cardWidth() const { return cardWidth_; }
    void setCardWidth(double width) { assign(cardWidth_, width); }
    double offset() const { return offset_; }
    void setOffset(double offset) { assign(offset_, offset); }
    int hiddenFrom() const { return hiddenFrom_; }
    void setHiddenFrom(int index) { assign(hiddenFrom_, index); }
    bool shadows() const { return style_.shadow; }
    void setShadows(bool on) { assign(style_.shadow, on); }
    bool topBand() const { return style_.topBand; }
    void setTopBand(bool on) { assign(style_.topBand, on); }
    bool selectionBorder() const { return style_.selectionBorder; }
    void setSelectionBorder(bool on) { assign(style_.selectionBorder, on); }
    int nudgedIndex() const { return nudgedIndex_; }
    double nudgeOffset() const { return nudgeOffset_; }
    // Shakes a blocked card that the player tried to drag; a shake already playing is not
    // restarted.
    Q_INVOKABLE void nudge(int cardIndex);

signals:
    void appearanceChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;

private:
    template <typename T>
    void assign(T& field, const T& value)
    {
        if (field == value) return;
        field = value;
        emit appearanceChanged();
        update();
    }

    QStringList faces_;
    double cardWidth_ = 0;
    double offset_ = 0;
    int hiddenFrom_ = -1;
    CardSpriteStyle style_;
    void playNudgeStep(std::size_t step);

    int nudgedIndex_ = -1;
    double nudgeOffset_ = 0;
    std::size_t nudgeStep_ = 0;
    QVariantAnimation nudgeMotion_;
};

} // namespace zelvaine
