#pragma once

// moc cannot read the C++20 standard headers these pull in, and needs nothing from them.
#ifndef Q_MOC_RUN
#include "store/game_preferences.hpp"
#endif

#include <QObject>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// The player's preferences and statistics for QML; writes go straight to GamePreferences.
class PreferencesModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the application around its preferences")
    Q_PROPERTY(bool showsHint READ showsHint WRITE setShowsHint NOTIFY showsHintChanged FINAL)
    Q_PROPERTY(bool showsUndo READ showsUndo WRITE setShowsUndo NOTIFY showsUndoChanged FINAL)
    Q_PROPERTY(bool handOnRight READ handOnRight WRITE setHandOnRight NOTIFY handOnRightChanged FINAL)
    Q_PROPERTY(bool showsMoveMessages READ showsMoveMessages WRITE setShowsMoveMessages NOTIFY showsMoveMessagesChanged FINAL)
    Q_PROPERTY(bool soundsEnabled READ soundsEnabled WRITE setSoundsEnabled NOTIFY soundsEnabledChanged FINAL)
    Q_PROPERTY(bool showsWinnability READ showsWinnability WRITE setShowsWinnability NOTIFY showsWinnabilityChanged FINAL)
    Q_PROPERTY(bool winnableDealsOnly READ winnableDealsOnly WRITE setWinnableDealsOnly NOTIFY winnableDealsOnlyChanged FINAL)
    // The settings window shows while this is set; closing it clears it.
    Q_PROPERTY(bool showSettings READ showSettings WRITE setShowSettings NOTIFY showSettingsChanged FINAL)
    // The fewest moves of a win; hasHighScore is false until the first win.
    Q_PROPERTY(bool hasHighScore READ hasHighScore NOTIFY highScoreChanged FINAL)
    Q_PROPERTY(int highScore READ highScore NOTIFY highScoreChanged FINAL)
    Q_PROPERTY(int gamesPlayed READ gamesPlayed NOTIFY gamesPlayedChanged FINAL)
    Q_PROPERTY(int gamesWon READ gamesWon NOTIFY gamesWonChanged FINAL)
    Q_PROPERTY(int gamesLost READ gamesLost NOTIFY gamesLostChanged FINAL)
    // The folder that keeps the game, the preferences and the statistics, as the privacy
    // policy names it ("~/.local/share/zelvaine").
    Q_PROPERTY(QString dataFolder READ dataFolder CONSTANT FINAL)

public:
    explicit PreferencesModel(GamePreferences& preferences, QObject* parent = nullptr);
    ~PreferencesModel() override;

    bool showsHint() const { return preferences_.showsHint(); }
    bool showsUndo() const { return preferences_.showsUndo(); }
    bool handOnRight() const { return preferences_.landscapeHandSide() == LandscapeHandSide::right; }
    bool showsMoveMessages() const { return preferences_.showsMoveMessages(); }
    bool soundsEnabled() const { return preferences_.soundsEnabled(); }
    bool showsWinnability() const { return preferences_.showsWinnability(); }
    bool winnableDealsOnly() const { return preferences_.winnableDealsOnly(); }
    bool showSettings() const { return preferences_.showSettings(); }
    void setShowSettings(bool value) { preferences_.setShowSettings(value); }
    bool hasHighScore() const { return preferences_.highScore().has_value(); }
    int highScore() const { return static_cast<int>(preferences_.highScore().value_or(0)); }
    // As QML's plain numbers: no player reaches two thousand million games.
    int gamesPlayed() const { return static_cast<int>(preferences_.gamesPlayed()); }
    int gamesWon() const { return static_cast<int>(preferences_.gamesWon()); }
    int gamesLost() const { return static_cast<int>(preferences_.gamesLost()); }
    static QString dataFolder();

    void setShowsHint(bool value) { preferences_.setShowsHint(value); }
    void setShowsUndo(bool value) { preferences_.setShowsUndo(value); }
    void setHandOnRight(bool value);
    void setShowsMoveMessages(bool value) { preferences_.setShowsMoveMessages(value); }
    void setSoundsEnabled(bool value) { preferences_.setSoundsEnabled(value); }
    void setShowsWinnability(bool value) { preferences_.setShowsWinnability(value); }
    void setWinnableDealsOnly(bool value) { preferences_.setWinnableDealsOnly(value); }

signals:
    void showsHintChanged();
    void showsUndoChanged();
    void handOnRightChanged();
    void showsMoveMessagesChanged();
    void soundsEnabledChanged();
    void showsWinnabilityChanged();
    void winnableDealsOnlyChanged();
    void showSettingsChanged();
    void highScoreChanged();
    void gamesPlayedChanged();
    void gamesWonChanged();
    void gamesLostChanged();

private:
    void notify(GamePreferencesProperty property);

    GamePreferences& preferences_;
    Observable<GamePreferencesProperty>::Token token_;
};

} // namespace zelvaine
