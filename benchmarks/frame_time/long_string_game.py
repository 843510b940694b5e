#!/usr/bin/env python3
"""Writes a shared game whose first column ends in an 11-card string (king of spades down to the
three of spades) over a full table: the heaviest drag a player can make; or, with --won, the
same deal finished, every foundation built to the king, which opens under falling confetti.
Reads a fresh deal (zelvaine-cli deal) on standard input, so that every card keeps its
identity; writes the position to standard output for zelvaine-cli export."""
import json
import sys

deal = json.load(sys.stdin)
cards = [c for column in deal["tableau"] for c in column] + [c for c in deal["hand"] if c]
suits = {"C": "clubs", "D": "diamonds", "H": "hearts", "S": "spades"}
ranks = {"A": 1, "J": 11, "Q": 12, "K": 13}


def take(name):
    rank = ranks.get(name[:-1]) or int(name[:-1])
    for i, c in enumerate(cards):
        if c["rank"] == rank and c["suit"] == suits[name[-1]]:
            return cards.pop(i)
    raise SystemExit(f"no {name} left")


if "--won" in sys.argv:
    piles = {}
    for card in cards:
        piles.setdefault((card["suit"], card["deck"]), []).append(card)
    foundations = [sorted(piles[key], key=lambda c: c["rank"]) for key in sorted(piles)]
    json.dump(dict(deal, foundations=foundations, tableau=[[] for _ in range(10)], hand=[None] * 4, moveCount=104),
              sys.stdout)
    sys.exit(0)

first = [take(n) for n in "4C 5D 6S KS QH JS 10H 9S 8H 7S 6H 5S 4H 3S".split()]
hand = [cards.pop() for _ in range(4)]
rest = [[] for _ in range(9)]
for i, c in enumerate(cards):
    rest[i % 9].append(c)
current = dict(deal, tableau=[first] + rest, hand=hand, moveCount=1)
json.dump(current, sys.stdout)
