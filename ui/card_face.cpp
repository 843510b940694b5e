#include "ui/card_face.hpp"

namespace zelvaine {

std::string facePictureName(const PlayingCard& card)
{
    const int rank = rawValue(card.rank);
    std::string name;
    if (card.rank == Rank::ace) {
        name = "card_ace";
    } else if (rank <= 10) {
        name = "card_" + std::to_string(rank);
    } else {
        name = "court_" + std::string(word(card.rank));
    }
    return name + "_" + std::string(rawValue(card.suit));
}

} // namespace zelvaine
