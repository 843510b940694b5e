#pragma once

#include <string>
#include <string_view>

namespace zelvaine {

// Appends `text` as a JSON string literal, escaping what JSON requires; output stays compact.
void appendJsonString(std::string& out, std::string_view text);

} // namespace zelvaine
