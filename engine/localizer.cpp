#include "engine/localizer.hpp"

#include <atomic>
#include <vector>

namespace zelvaine {
namespace {

class EnglishLocalizer final : public Localizer {
public:
    std::string translate(std::string_view, std::string_view key) const override { return std::string(key); }
};

const EnglishLocalizer english;
std::atomic<const Localizer*> installed{&english};

} // namespace

const Localizer& currentLocalizer() { return *installed.load(std::memory_order_acquire); }

void installLocalizer(const Localizer* localizer)
{
    installed.store(localizer ? localizer : &english, std::memory_order_release);
}

std::string localized(std::string_view key) { return currentLocalizer().translate(engineTextContext, key); }

std::string Localizer::translate(std::string_view context, std::string_view key, std::int64_t count) const
{
    return formatCount(translate(context, key), count);
}

std::string localized(std::string_view key, std::int64_t count)
{
    return currentLocalizer().translate(engineTextContext, key, count);
}

std::string formatCount(std::string_view pattern, std::int64_t count)
{
    const std::string number = std::to_string(count);
    std::string out;
    out.reserve(pattern.size() + number.size());
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%' && i + 1 < pattern.size() && pattern[i + 1] == 'n') {
            out += number;
            ++i;
        } else {
            out += pattern[i];
        }
    }
    return out;
}

std::string formatText(std::string_view pattern, std::initializer_list<std::string_view> arguments)
{
    const std::vector<std::string_view> values(arguments);
    std::string out;
    out.reserve(pattern.size() + 32);
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '%' && i + 1 < pattern.size() && pattern[i + 1] >= '1' && pattern[i + 1] <= '9') {
            const auto index = static_cast<std::size_t>(pattern[i + 1] - '1');
            if (index < values.size()) {
                out += values[index];
                ++i;
                continue;
            }
        }
        out += c;
    }
    return out;
}

} // namespace zelvaine
