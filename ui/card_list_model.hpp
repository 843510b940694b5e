#pragma once

// moc cannot read the C++20 standard headers these pull in, and needs nothing from them.
#ifndef Q_MOC_RUN
#include "engine/card.hpp"
#endif

#include <QAbstractListModel>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

namespace zelvaine {

// One place's cards for QML: a column, the hand's slots or the foundations' tops. Rows are
// kept by card identity, so after a move only the rows that really changed are touched and
// every other card keeps its delegate.
class CardListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the board")
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged FINAL)
    // Every row's picture name, for drawing the place in one pass; empty for an empty row.
    Q_PROPERTY(QStringList faces READ faces NOTIFY facesChanged FINAL)

public:
    enum Role {
        HasCardRole = Qt::UserRole + 1,
        CardIdRole,
        FaceRole,
        NameRole,
        MovableRole,
        PileSizeRole,
    };

    struct Row {
        std::optional<PlayingCard> card;
        // Starts a string that can move (column cards); a card that can be picked up (others).
        bool movable = false;
        // How many cards lie in the place (foundations show only their top).
        int pileSize = 0;
        friend bool operator==(const Row&, const Row&) = default;
    };

    explicit CardListModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setRows(std::vector<Row> rows);
    QStringList faces() const { return faces_; }
    const std::vector<Row>& rows() const { return rows_; }

    // How many rows were inserted or removed since the model was made; tests use it to check
    // that a move leaves untouched places alone.
    int rebuiltRows() const { return rebuiltRows_; }

signals:
    void countChanged();
    void facesChanged();

private:
    void refreshFaces();

    std::vector<Row> rows_;
    QStringList faces_;
    int rebuiltRows_ = 0;
};

} // namespace zelvaine
