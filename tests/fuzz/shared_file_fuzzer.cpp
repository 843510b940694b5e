// Feeds arbitrary bytes to the shared game reader and, when they read, to the game conversion:
// every input must end in a document, a reading failure or one of the document's errors.

#include "store/game_document.hpp"

#include <cstddef>
#include <cstdint>
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
    (void)document->encode();
    return 0;
}
