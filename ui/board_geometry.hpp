#pragma once

// moc cannot read the C++20 standard headers these pull in, and needs nothing from them.
#ifndef Q_MOC_RUN
#include "ui/board_layout.hpp"
#endif

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// The board layout's numbers for QML: give it the window's content size, bind to the rest.
class BoardGeometry : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double width READ width WRITE setWidth NOTIFY changed FINAL)
    Q_PROPERTY(double height READ height WRITE setHeight NOTIFY changed FINAL)
    Q_PROPERTY(bool portrait READ portrait NOTIFY changed FINAL)
    Q_PROPERTY(double cardWidth READ cardWidth NOTIFY changed FINAL)
    Q_PROPERTY(double cardHeight READ cardHeight NOTIFY changed FINAL)
    Q_PROPERTY(double sideMargin READ sideMargin NOTIFY changed FINAL)
    Q_PROPERTY(double stackSpacing READ stackSpacing NOTIFY changed FINAL)
    Q_PROPERTY(double topMargin READ topMargin NOTIFY changed FINAL)
    Q_PROPERTY(double bottomMargin READ bottomMargin NOTIFY changed FINAL)
    Q_PROPERTY(double tableauWidth READ tableauWidth NOTIFY changed FINAL)
    Q_PROPERTY(double foundationRowWidth READ foundationRowWidth NOTIFY changed FINAL)
    Q_PROPERTY(double handRowWidth READ handRowWidth NOTIFY changed FINAL)
    Q_PROPERTY(double handPanelWidth READ handPanelWidth NOTIFY changed FINAL)
    Q_PROPERTY(double gap READ gap CONSTANT FINAL)
    Q_PROPERTY(double sectionSpacing READ sectionSpacing CONSTANT FINAL)
    Q_PROPERTY(double minimumWindowWidth READ minimumWindowWidth CONSTANT FINAL)
    Q_PROPERTY(double minimumWindowHeight READ minimumWindowHeight CONSTANT FINAL)

public:
    explicit BoardGeometry(QObject* parent = nullptr) : QObject(parent) {}

    double width() const { return width_; }
    double height() const { return height_; }
    void setWidth(double width);
    void setHeight(double height);

    bool portrait() const { return metrics_.arrangement == Arrangement::portrait; }
    double cardWidth() const { return metrics_.cardWidth; }
    double cardHeight() const { return metrics_.cardHeight; }
    double sideMargin() const { return metrics_.sideMargin; }
    double stackSpacing() const { return metrics_.stackSpacing; }
    double topMargin() const { return metrics_.topMargin; }
    double bottomMargin() const { return metrics_.bottomMargin; }
    double tableauWidth() const { return metrics_.tableauWidth; }
    double foundationRowWidth() const { return metrics_.foundationRowWidth; }
    double handRowWidth() const { return metrics_.handRowWidth; }
    double handPanelWidth() const { return metrics_.handPanelWidth; }
    double gap() const { return cardGap; }
    double sectionSpacing() const { return zelvaine::sectionSpacing; }
    double minimumWindowWidth() const { return zelvaine::minimumWindowWidth; }
    double minimumWindowHeight() const { return zelvaine::minimumWindowHeight; }

    // The distance between the tops of successive cards of a column.
    Q_INVOKABLE double columnOffset(int count, double cardWidth, double availableHeight) const;
    Q_INVOKABLE double selectionRadius(double cardWidth) const;

signals:
    void changed();

private:
    void update();

    double width_ = 0;
    double height_ = 0;
    BoardMetrics metrics_ = boardMetrics(0, 0);
};

} // namespace zelvaine
