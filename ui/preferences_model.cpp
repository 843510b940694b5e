#include "ui/preferences_model.hpp"

#include "store/defaults_location.hpp"

#include <QDir>

namespace zelvaine {

PreferencesModel::PreferencesModel(GamePreferences& preferences, QObject* parent)
    : QObject(parent), preferences_(preferences)
{
    token_ = preferences_.observe([this](GamePreferencesProperty) { emit changed(); });
}

PreferencesModel::~PreferencesModel() { preferences_.unobserve(token_); }

QString PreferencesModel::dataFolder()
{
    const QString folder = QString::fromStdString(defaultDefaultsDatabasePath().parent_path().string());
    const QString home = QDir::homePath();
    if (folder.startsWith(home + QLatin1Char('/'))) return QStringLiteral("~") + folder.mid(home.size());
    return folder;
}

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
