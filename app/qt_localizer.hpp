#pragma once

#include "engine/localizer.hpp"

namespace zelvaine {

// Looks the core's texts up in the application's translations (Qt Linguist files); English
// stays when there is none.
class QtLocalizer final : public Localizer {
public:
    std::string translate(std::string_view context, std::string_view key) const override;
    std::string translate(std::string_view context, std::string_view key, std::int64_t count) const override;
};

} // namespace zelvaine
