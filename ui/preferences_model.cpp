#include "ui/preferences_model.hpp"

namespace zelvaine {

PreferencesModel::PreferencesModel(GamePreferences& preferences, QObject* parent)
    : QObject(parent), preferences_(preferences)
{
    token_ = preferences_.observe([this](GamePreferencesProperty) { emit changed(); });
}

PreferencesModel::~PreferencesModel() { preferences_.unobserve(token_); }

QVariant PreferencesModel::highScore() const
{
    const auto score = preferences_.highScore();
    return score ? QVariant::fromValue<qint64>(*score) : QVariant();
}

void PreferencesModel::setHandOnRight(bool value)
{
    preferences_.setLandscapeHandSide(value ? LandscapeHandSide::right : LandscapeHandSide::left);
}

} // namespace zelvaine
