#include "ui/tableau_card_canvas.hpp"

#include "ui/blocked_nudge.hpp"
#include "ui/card_sprite_geometry.hpp"
#include "ui/card_sprites.hpp"

#include <QHash>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>
#include <QSGTransformNode>

#include <cmath>
#include <limits>
#include <memory>
#include <vector>

namespace zelvaine {
namespace {

// The column's scene: one image node per slice, and the textures they show, which live and die
// with it on the thread that renders. A transform node (left as the identity) rather than a
// plain one: the software renderer places a child added later by its parent's recorded state,
// which it keeps for transform nodes only; under a plain node new cards landed at the window's
// corner.
class CanvasNode : public QSGTransformNode {
public:
    ~CanvasNode() override { qDeleteAll(textures); }

    QSGTexture* texture(QQuickWindow* window, const QString& face, int faceWidth, double pixelRatio, CardSpriteStyle style)
    {
        if (faceWidth != textureFaceWidth || pixelRatio != texturePixelRatio || style != textureStyle) {
            // A new size or look: the old sprites will not be shown again.
            qDeleteAll(textures);
            textures.clear();
            textureFaceWidth = faceWidth;
            texturePixelRatio = pixelRatio;
            textureStyle = style;
        }
        QSGTexture*& texture = textures[face];
        if (!texture) {
            texture = window->createTextureFromImage(cardSprite(face, faceWidth, pixelRatio, style),
                                                     QQuickWindow::TextureCanUseAtlas);
            texture->setFiltering(QSGTexture::Nearest);
        }
        return texture;
    }

    std::vector<QSGImageNode*> slices;

private:
    QHash<QString, QSGTexture*> textures;
    int textureFaceWidth = 0;
    double texturePixelRatio = 0;
    CardSpriteStyle textureStyle;
};

} // namespace

TableauCardCanvas::TableauCardCanvas(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents, true);
    nudgeMotion_.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&nudgeMotion_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { assign(nudgeOffset_, value.toDouble()); });
    connect(&nudgeMotion_, &QVariantAnimation::finished, this, [this] { playNudgeStep(nudgeStep_ + 1); });
}

void TableauCardCanvas::nudge(int cardIndex)
{
    if (nudgedIndex_ >= 0 || cardIndex < 0) return;
    assign(nudgedIndex_, cardIndex);
    playNudgeStep(0);
}

void TableauCardCanvas::playNudgeStep(std::size_t step)
{
    const auto steps = blockedNudgeSteps(cardWidth_);
    if (step >= steps.size()) {
        assign(nudgedIndex_, -1);
        assign(nudgeOffset_, 0.0);
        return;
    }
    nudgeStep_ = step;
    nudgeMotion_.setStartValue(nudgeOffset_);
    nudgeMotion_.setEndValue(steps[step].offset);
    nudgeMotion_.setDuration(static_cast<int>(std::lround(steps[step].seconds * 1000)));
    nudgeMotion_.start();
}

void TableauCardCanvas::itemChange(ItemChange change, const ItemChangeData& value)
{
    // Slices are laid on whole device pixels, which depends on where the column sits.
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) update();
    QQuickItem::itemChange(change, value);
}

QSGNode* TableauCardCanvas::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    auto* root = static_cast<CanvasNode*>(old);
    if (!root) root = new CanvasNode;
    QQuickWindow* scene = window();
    if (!scene || cardWidth_ <= 0) {
        for (QSGImageNode* slice : root->slices) {
            root->removeChildNode(slice);
            delete slice;
        }
        root->slices.clear();
        return root;
    }

    const double ratio = scene->effectiveDevicePixelRatio();
    const auto count = static_cast<std::size_t>(faces_.size());
    const std::size_t hidden =
        hiddenFrom_ < 0 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(hiddenFrom_);
    std::vector<SpriteSlice> slices = columnSlices(count, cardWidth_, offset_, ratio, hidden);
    // The shaking card goes last, so that it lies over the cards below it.
    if (nudgedIndex_ >= 0 && static_cast<std::size_t>(nudgedIndex_) < slices.size()) {
        SpriteSlice nudged = slices[static_cast<std::size_t>(nudgedIndex_)];
        nudged.x += nudgeOffset_ * ratio;
        slices.erase(slices.begin() + nudgedIndex_);
        slices.push_back(nudged);
    }

    const Rect face = cardFaceFrame({0, 0, cardWidth_, cardWidth_ / cardPlaceAspect});
    const int faceWidth = static_cast<int>(std::lround(face.width * ratio));
    const CardSpriteGeometry sprite = CardSpriteGeometry::forFaceWidth(faceWidth);
    // Whole device pixels: a sprite copied at a fractional position would be filtered.
    const QPointF origin = mapToScene(QPointF(0, 0)) * ratio;

    while (root->slices.size() > slices.size()) {
        QSGImageNode* node = root->slices.back();
        root->slices.pop_back();
        root->removeChildNode(node);
        delete node;
    }
    for (std::size_t i = 0; i < slices.size(); ++i) {
        const SpriteSlice& slice = slices[i];
        // A new node is set up before it joins the scene: the renderer looks at it at once.
        const bool added = i >= root->slices.size();
        QSGImageNode* node = added ? scene->createImageNode() : root->slices[i];
        if (added) node->setOwnsTexture(false);
        node->setTexture(root->texture(scene, faces_[static_cast<qsizetype>(slice.card)], faceWidth, ratio, style_));
        node->setFiltering(QSGTexture::Nearest);
        node->setSourceRect(QRectF(0, slice.firstRow, sprite.width(), slice.rowCount));
        const double x = std::round(origin.x() + slice.x) - origin.x();
        const double y = std::round(origin.y() + slice.y) - origin.y();
        node->setRect(QRectF(x / ratio, y / ratio, sprite.width() / ratio, slice.rowCount / ratio));
        if (added) {
            root->appendChildNode(node);
            root->slices.push_back(node);
        }
    }
    return root;
}

} // namespace zelvaine
