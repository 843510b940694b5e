#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// Marks a text for the translators' string extraction without translating it here;
// the name is the one the extraction tool already recognises.
#ifndef QT_TRANSLATE_NOOP
#define QT_TRANSLATE_NOOP(context, text) text
#endif
// The same for a text whose words follow a number, "%n", in the language's plural forms.
#ifndef QT_TRANSLATE_N_NOOP
#define QT_TRANSLATE_N_NOOP(context, text) text
#endif

namespace zelvaine {

// The one seam through which every player-visible text of the core passes. The English
// text is the key; the application installs a translating localizer at start-up.
class Localizer {
public:
    virtual ~Localizer() = default;
    virtual std::string translate(std::string_view context, std::string_view key) const = 0;
    // The form of `key` for `count` ("1 move", "2 moves"), with "%n" replaced by the count.
    // Without a table, the key itself stands for every count.
    virtual std::string translate(std::string_view context, std::string_view key, std::int64_t count) const;
};

// The localizer in force; English (the key itself) until another is installed.
const Localizer& currentLocalizer();
// Installed once at start-up, before other threads run; nullptr returns to English.
// The localizer must outlive its use.
void installLocalizer(const Localizer* localizer);

// Context under which the rules engine's texts are filed in the string table.
inline constexpr std::string_view engineTextContext = "Zelvaine";

std::string localized(std::string_view key);
std::string localized(std::string_view key, std::int64_t count);

// Puts `count` in place of every "%n".
std::string formatCount(std::string_view pattern, std::int64_t count);

// Fills %1 … %9 in a translated template; arguments are already-formatted texts.
std::string formatText(std::string_view pattern, std::initializer_list<std::string_view> arguments);

} // namespace zelvaine
