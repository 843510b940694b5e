#include "engine/json_writer.hpp"

#include <algorithm>

namespace zelvaine {

void appendJsonString(std::string& out, std::string_view text)
{
    static constexpr char hex[] = "0123456789abcdef";
    const auto needsEscape = [](char c) { return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20; };
    out += '"';
    // Nearly every text needs no escaping at all (a suit's name is written for every card).
    if (std::ranges::none_of(text, needsEscape)) {
        out += text;
        out += '"';
        return;
    }
    std::size_t plainFrom = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (!needsEscape(c)) continue;
        out.append(text, plainFrom, i - plainFrom);
        plainFrom = i + 1;
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            out += "\\u00";
            out += hex[(c >> 4) & 0xF];
            out += hex[c & 0xF];
        }
    }
    out.append(text, plainFrom);
    out += '"';
}

} // namespace zelvaine
