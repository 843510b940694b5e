#include "store/game_confirmation.hpp"

#include "engine/localizer.hpp"

#include <array>

namespace zelvaine {
namespace {

struct Texts {
    std::string_view raw;
    const char* title;
    const char* message;
    const char* confirm;
    const char* cancel;
};

constexpr std::array<Texts, 4> table{{
    {"newGame", QT_TRANSLATE_NOOP("Zelvaine", "Start a new game?"),
     QT_TRANSLATE_NOOP("Zelvaine", "The current deal and undo history will be cleared."),
     QT_TRANSLATE_NOOP("Zelvaine", "New Game"), QT_TRANSLATE_NOOP("Zelvaine", "Cancel")},
    {"restartGame", QT_TRANSLATE_NOOP("Zelvaine", "Restart this game?"),
     QT_TRANSLATE_NOOP("Zelvaine", "Return every card to this deal's original position. You can undo this restart."),
     QT_TRANSLATE_NOOP("Zelvaine", "Restart Game"), QT_TRANSLATE_NOOP("Zelvaine", "Cancel")},
    {"autoComplete", QT_TRANSLATE_NOOP("Zelvaine", "Finish automatically?"),
     QT_TRANSLATE_NOOP("Zelvaine", "Every remaining card can now move directly to a foundation. Zelvaine can "
                                   "play those moves for you."),
     QT_TRANSLATE_NOOP("Zelvaine", "Auto Complete"), QT_TRANSLATE_NOOP("Zelvaine", "Keep Playing")},
    {"openSharedGame", QT_TRANSLATE_NOOP("Zelvaine", "Open shared game?"),
     QT_TRANSLATE_NOOP("Zelvaine",
                       "Your current game will be replaced. The shared game will start with a new Undo history."),
     QT_TRANSLATE_NOOP("Zelvaine", "Open Game"), QT_TRANSLATE_NOOP("Zelvaine", "Cancel")},
}};

} // namespace

std::string_view rawValue(GameConfirmation confirmation) { return table[static_cast<std::size_t>(confirmation)].raw; }

std::optional<GameConfirmation> confirmationFromRaw(std::string_view text)
{
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (table[i].raw == text) return static_cast<GameConfirmation>(i);
    }
    return std::nullopt;
}

ConfirmationTexts confirmationTexts(GameConfirmation confirmation)
{
    const Texts& t = table[static_cast<std::size_t>(confirmation)];
    return {localized(t.title), localized(t.message), localized(t.confirm), localized(t.cancel)};
}

} // namespace zelvaine
