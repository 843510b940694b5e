#include "ui/board_geometry.hpp"

namespace zelvaine {

void BoardGeometry::setWidth(double width)
{
    if (width == width_) return;
    width_ = width;
    update();
}

void BoardGeometry::setHeight(double height)
{
    if (height == height_) return;
    height_ = height;
    update();
}

void BoardGeometry::update()
{
    metrics_ = boardMetrics(width_, height_);
    emit changed();
}

double BoardGeometry::columnOffset(int count, double cardWidth, double availableHeight) const
{
    return ColumnLayout::fit(count > 0 ? static_cast<std::size_t>(count) : 0, cardWidth, availableHeight).offset;
}

double BoardGeometry::selectionRadius(double cardWidth) const
{
    return ColumnLayout{0, cardWidth, 0}.selectionCornerRadius();
}

} // namespace zelvaine
