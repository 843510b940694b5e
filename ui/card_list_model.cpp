#include "ui/card_list_model.hpp"

#include "ui/card_face.hpp"

namespace zelvaine {
namespace {

bool sameCard(const CardListModel::Row& a, const CardListModel::Row& b)
{
    if (a.card.has_value() != b.card.has_value()) return false;
    return !a.card || a.card->id == b.card->id;
}

} // namespace

CardListModel::CardListModel(QObject* parent) : QAbstractListModel(parent) {}

int CardListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant CardListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= rowCount()) return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case HasCardRole: return row.card.has_value();
    case CardIdRole: return row.card ? QString::fromStdString(row.card->id.text()) : QString();
    case FaceRole: return row.card ? QString::fromStdString(facePictureName(*row.card)) : QString();
    case NameRole: return row.card ? QString::fromStdString(accessibleName(*row.card)) : QString();
    case MovableRole: return row.movable;
    case PileSizeRole: return row.pileSize;
    default: return {};
    }
}

QHash<int, QByteArray> CardListModel::roleNames() const
{
    return {{HasCardRole, "hasCard"}, {CardIdRole, "cardId"},   {FaceRole, "face"},
            {NameRole, "name"},       {MovableRole, "movable"}, {PileSizeRole, "pileSize"}};
}

void CardListModel::setRows(std::vector<Row> rows)
{
    const int oldCount = rowCount();
    // Rows that keep their card stay; everything after the first difference is replaced.
    std::size_t kept = 0;
    const std::size_t fixedSize = std::min(rows_.size(), rows.size());
    const bool slotsInPlace = rows_.size() == rows.size();
    while (kept < fixedSize && sameCard(rows_[kept], rows[kept])) ++kept;

    if (slotsInPlace) {
        // Fixed places (hand slots, foundations): change each row where it stands.
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows_[i] == rows[i]) continue;
            rows_[i] = rows[i];
            const QModelIndex changed = index(static_cast<int>(i));
            emit dataChanged(changed, changed);
        }
        refreshFaces();
        return;
    }

    if (kept < rows_.size()) {
        beginRemoveRows({}, static_cast<int>(kept), static_cast<int>(rows_.size()) - 1);
        rebuiltRows_ += static_cast<int>(rows_.size() - kept);
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(kept), rows_.end());
        endRemoveRows();
    }
    for (std::size_t i = 0; i < kept; ++i) {
        if (rows_[i] == rows[i]) continue;
        rows_[i] = rows[i];
        const QModelIndex changed = index(static_cast<int>(i));
        emit dataChanged(changed, changed);
    }
    if (kept < rows.size()) {
        beginInsertRows({}, static_cast<int>(kept), static_cast<int>(rows.size()) - 1);
        rebuiltRows_ += static_cast<int>(rows.size() - kept);
        rows_.insert(rows_.end(), rows.begin() + static_cast<std::ptrdiff_t>(kept), rows.end());
        endInsertRows();
    }
    if (rowCount() != oldCount) emit countChanged();
    refreshFaces();
}

void CardListModel::refreshFaces()
{
    QStringList faces;
    faces.reserve(static_cast<qsizetype>(rows_.size()));
    for (const Row& row : rows_)
        faces.append(row.card ? QString::fromStdString(facePictureName(*row.card)) : QString());
    if (faces == faces_) return;
    faces_ = faces;
    emit facesChanged();
}

} // namespace zelvaine
