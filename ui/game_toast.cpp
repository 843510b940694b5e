#include "ui/game_toast.hpp"

namespace zelvaine {

GameToast::GameToast(QObject* parent) : QObject(parent)
{
    expiry_.setSingleShot(true);
    expiry_.setInterval(showMilliseconds);
    connect(&expiry_, &QTimer::timeout, this, [this] {
        if (!board_ || board_->message() != text_) return;
        setText({});
        board_->clearMessage();
    });
}

void GameToast::setBoard(GameBoard* board)
{
    if (board == board_) return;
    if (board_) disconnect(board_, nullptr, this, nullptr);
    board_ = board;
    if (board_) {
        connect(board_, &GameBoard::messageChanged, this, &GameToast::onMessageChanged);
        connect(board_, &GameBoard::messageArrived, this, &GameToast::onMessageArrived);
    }
    emit boardChanged();
}

void GameToast::setPreferences(PreferencesModel* preferences)
{
    if (preferences == preferences_) return;
    preferences_ = preferences;
    emit preferencesChanged();
}

bool GameToast::hidesMoveFeedback() const
{
    return board_ && board_->messageKind() == Message::Kind::MoveFeedback && preferences_ &&
           !preferences_->showsMoveMessages();
}

void GameToast::onMessageChanged()
{
    if (!board_->message().isEmpty()) return;
    expiry_.stop();
    setText({});
}

void GameToast::onMessageArrived()
{
    expiry_.stop();
    const QString message = board_->message();
    if (hidesMoveFeedback()) {
        setText({});
        // After the store's operation, which is still under way.
        QMetaObject::invokeMethod(
            this,
            [this, message] {
                if (board_ && hidesMoveFeedback() && board_->message() == message) board_->clearMessage();
            },
            Qt::QueuedConnection);
        return;
    }
    setText(message);
    expiry_.start();
    if (arrivalQueued_) return;
    arrivalQueued_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            arrivalQueued_ = false;
            if (!text_.isEmpty()) emit arrived();
        },
        Qt::QueuedConnection);
}

void GameToast::setText(const QString& text)
{
    if (text == text_) return;
    text_ = text;
    emit textChanged();
}

} // namespace zelvaine
