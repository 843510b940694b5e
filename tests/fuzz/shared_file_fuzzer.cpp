// Feeds arbitrary bytes to the shared game reader and, when they read, to the game conversion:
// every input must end in a document, a reading failure or one of the document's errors. What
// was read, written again, must read back the same and write the same bytes; a game made from
// it, shared again, must open again.

#include "store/game_document.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    auto document = zelvaine::ZelvaineGameDocument::decode(bytes);
    if (!document) return 0;
    auto states = document->makeStates();
    if (states && (!zelvaine::isWellFormed(states->current) || !zelvaine::isWellFormed(states->initial))) {
        __builtin_trap(); // a converted game must always be playable
    }
    const std::string encoded = document->encode();
    const auto again = zelvaine::ZelvaineGameDocument::decode(encoded);
    if (!again || *again != *document || again->encode() != encoded) __builtin_trap();
    if (states) {
        const auto shared = zelvaine::ZelvaineGameDocument::decode(
            zelvaine::ZelvaineGameDocument::fromStates(states->current, states->initial).encode());
        if (!shared || !shared->makeStates()) __builtin_trap();
    }
    return 0;
}
