#include "ui/preferences_model.hpp"

#include "store/defaults_location.hpp"

#include <QDir>

namespace zelvaine {

PreferencesModel::PreferencesModel(GamePreferences& preferences, QObject* parent)
    : QObject(parent), preferences_(preferences)
{
    token_ = preferences_.observe([this](GamePreferencesProperty property) { notify(property); });
}

PreferencesModel::~PreferencesModel() { preferences_.unobserve(token_); }

// One signal per property, so that a changed statistic does not re-read every setting in QML.
void PreferencesModel::notify(GamePreferencesProperty property)
{
    switch (property) {
    case GamePreferencesProperty::showsHint: emit showsHintChanged(); break;
    case GamePreferencesProperty::showsUndo: emit showsUndoChanged(); break;
    case GamePreferencesProperty::landscapeHandSide: emit handOnRightChanged(); break;
    case GamePreferencesProperty::showsMoveMessages: emit showsMoveMessagesChanged(); break;
    case GamePreferencesProperty::soundsEnabled: emit soundsEnabledChanged(); break;
    case GamePreferencesProperty::highScore: emit highScoreChanged(); break;
    case GamePreferencesProperty::gamesPlayed: emit gamesPlayedChanged(); break;
    case GamePreferencesProperty::gamesWon: emit gamesWonChanged(); break;
    case GamePreferencesProperty::gamesLost: emit gamesLostChanged(); break;
    case GamePreferencesProperty::showSettings: emit showSettingsChanged(); break;
    case GamePreferencesProperty::showsWinnability: emit showsWinnabilityChanged(); break;
    case GamePreferencesProperty::winnableDealsOnly: emit winnableDealsOnlyChanged(); break;
    case GamePreferencesProperty::gameCenterEligibleWins:
    case GamePreferencesProperty::gameCenterBestMoveCount: break; // not shown
    }
}

QString PreferencesModel::dataFolder()
{
    const QString folder = QString::fromStdString(defaultDefaultsDatabasePath().parent_path().string());
    const QString home = QDir::homePath();
    if (folder.startsWith(home + QLatin1Char('/'))) return QStringLiteral("~") + folder.mid(home.size());
    return folder;
}

void PreferencesModel::setHandOnRight(bool value)
{
    preferences_.setLandscapeHandSide(value ? LandscapeHandSide::right : LandscapeHandSide::left);
}

} // namespace zelvaine
