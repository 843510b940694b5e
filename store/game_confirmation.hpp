#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zelvaine {

// A question the player answers before the game is replaced, reset or finished for them.
enum class GameConfirmation : std::uint8_t { newGame, restartGame, autoComplete, openSharedGame };

std::string_view rawValue(GameConfirmation confirmation);
std::optional<GameConfirmation> confirmationFromRaw(std::string_view text);

struct ConfirmationTexts {
    std::string title;
    std::string message;
    std::string confirmButton;
    std::string cancelButton;
};
// Translated through the installed localizer.
ConfirmationTexts confirmationTexts(GameConfirmation confirmation);

enum class GameMessageKind : std::uint8_t { hint, moveFeedback, notice };

} // namespace zelvaine
