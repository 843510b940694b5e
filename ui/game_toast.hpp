#pragma once

#include "ui/game_board.hpp"
#include "ui/preferences_model.hpp"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace zelvaine {

// What the toast shows of the store's message, and for how long: hints and notices always,
// refusals only when the player wants move messages, each for four seconds from its arrival.
// A refusal the player does not want is cleared from the store at once, so that nothing
// unseen lingers to be read out later.
class GameToast : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(zelvaine::GameBoard* board READ board WRITE setBoard NOTIFY boardChanged FINAL)
    Q_PROPERTY(zelvaine::PreferencesModel* preferences READ preferences WRITE setPreferences NOTIFY preferencesChanged FINAL)
    // The text on show; empty while the toast is away.
    Q_PROPERTY(QString text READ text NOTIFY textChanged FINAL)

public:
    static constexpr int showMilliseconds = 4000;

    explicit GameToast(QObject* parent = nullptr);

    GameBoard* board() const { return board_; }
    void setBoard(GameBoard* board);
    PreferencesModel* preferences() const { return preferences_; }
    void setPreferences(PreferencesModel* preferences);
    QString text() const { return text_; }

signals:
    void boardChanged();
    void preferencesChanged();
    void textChanged();
    // A message arrived, after the store's operation: a screen reader should hear it, even when
    // its text is the one already on show.
    void arrived();

private:
    void onMessageChanged();
    void onMessageArrived();
    void setText(const QString& text);
    bool hidesMoveFeedback() const;

    QPointer<GameBoard> board_;
    QPointer<PreferencesModel> preferences_;
    QString text_;
    QTimer expiry_;
    bool arrivalQueued_ = false;
};

} // namespace zelvaine
