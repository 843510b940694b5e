#!/usr/bin/python3
"""A deal played to its win through AT-SPI alone, as a player who cannot see the table plays it.

The script knows only what the game says and names: it asks the Solver menu for a winning move,
hears the sentence the game announces, finds the card it names (selected by the hint) and the
place it names, presses that place, and goes on until the game offers to finish by itself, which
it accepts with the dialog's button; the win must then be announced.
    whole_deal_test.py ZELVAINE ZELVAINE_CLI [--from-start]
The game starts from a shared game a few dozen moves before the end of a winning line (the whole
line with --from-start, which takes a couple of minutes). Exits 77 (skipped) when a needed program
or module is missing.
"""

import os
import re
import shutil
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import atspi_client as client  # noqa: E402

client.start_session()

import pyatspi  # noqa: E402

GAME, CLI = sys.argv[1], sys.argv[2]
FROM_START = "--from-start" in sys.argv[3:]
SENTENCE = re.compile(r"Game message: Move (?P<card>.+?)(?P<string> and its string)? to "
                      r"(?:column (?P<column>\d+)|foundation (?P<foundation>\d+)|(?P<hand>your hand))\.")


def winnable_deal(scratch):
    """A dealt position and the solver's winning line from it."""
    path = os.path.join(scratch, "deal.json")
    for _ in range(20):
        position = client.cli(CLI, "deal")
        client.json.dump(position, open(path, "w"))
        answer = client.cli(CLI, "solve", path)
        if answer["verdict"] == "winnable":
            return position, answer["moves"]
    return None, None


def line_of_play(scratch, position, moves):
    """The positions of a line of play, from `position` on."""
    positions = [position]
    path = os.path.join(scratch, "line.json")
    for move in moves:
        client.json.dump(positions[-1], open(path, "w"))
        source, destination = move.split(">")
        positions.append(client.cli(CLI, "move", path, source, destination)["state"])
    return positions


def start_of_play(scratch, positions, moves):
    """Where the script takes over: some forty moves before the game would offer to finish by
    itself on this line, and early enough that the line moves a card to the hand and one onto a
    column on the way, which keeps the run short; the deal itself with --from-start."""
    if FROM_START:
        return 0
    path = os.path.join(scratch, "finish.json")
    offer = len(moves)
    for index, position in enumerate(positions):
        client.json.dump(position, open(path, "w"))
        answer = client.cli(CLI, "finish", path)
        if answer["hasNoBlockedKing"] and answer["canAutoComplete"]:
            offer = index
            break
    for start in range(offer - 40, 0, -1):
        destinations = [move.split(">")[1] for move in moves[start:offer]]
        if any(d.startswith("hand") for d in destinations) and any(d.startswith("tableau") for d in destinations):
            return start
    return 0


def main():
    started = time.monotonic()
    scratch = client.scratch_folder()
    try:
        deal, moves = winnable_deal(scratch)
        if not client.check(deal is not None, "the solver finds a winnable deal"):
            return
        positions = line_of_play(scratch, deal, moves)
        start = start_of_play(scratch, positions, moves)
        position = positions[start]
        print(f"the winning line has {len(moves)} moves; the game starts at its move {start}")
        game = client.Game(GAME, client.shared_game(CLI, scratch, position, deal), scratch)
        try:
            if game.connect() is not None:
                play(game.app, position["moveCount"])
        finally:
            game.stop()
    finally:
        shutil.rmtree(scratch, ignore_errors=True)
        client.finish(started)


def move_count(counter):
    match = re.fullmatch(r"(\d+) moves?", counter.name)
    return int(match.group(1)) if match else None


def play(app, first_count):
    announcements = client.Announcements()
    open_button = client.wait_for(lambda: client.find(app, name="Open Game", role=pyatspi.ROLE_PUSH_BUTTON),
                                  "the Open Game button of the shared game's question")
    if open_button is None:
        return
    client.press(open_button)
    frame = client.wait_for(lambda: client.find(app, name="Zelvaine", role=pyatspi.ROLE_FRAME), "the game window")
    counter = client.wait_for(lambda: next((node for node in frame if node is not None and node.getRole() == pyatspi.ROLE_LABEL
                                            and move_count(node) == first_count), None),
                              f"the move counter at {first_count}")
    solver = client.find(frame, name="Solver")
    if counter is None or solver is None:
        client.check(solver is not None, "the menu bar has a Solver menu")
        return
    client.audit(app, "at the start")

    played = {"column": 0, "foundation": 0, "hand": 0}
    offer = None
    while offer is None:
        # The game asks its question a moment after the move that makes the finish possible; a
        # Solver menu opened in that moment would come too soon.
        settle = time.monotonic() + 0.25
        while offer is None and time.monotonic() < settle:
            client.pump()
            offer = client.find(frame, name="Auto Complete", role=pyatspi.ROLE_PUSH_BUTTON)
            if offer is None:
                time.sleep(0.05)
        if offer is not None:
            break
        sentence = winning_move(frame, solver, announcements)
        if sentence is None:
            # The command is off while a question is asked: that can only be the offer to finish.
            # Or the command was chosen just as the offer came, on a busy machine: the question
            # then stands, and no winning move is told while it does.
            offer = client.wait_for(lambda: client.find(frame, name="Auto Complete", role=pyatspi.ROLE_PUSH_BUTTON),
                                    "the offer to finish automatically")
            break
        kind = play_move(frame, counter, sentence)
        if kind is None:
            return
        played[kind] += 1
    print("moves played through AT-SPI, by destination:", played)
    client.check(sum(played.values()) > 0, "the script played the winning moves up to the offer")
    if offer is None:
        return

    dialog = offer.parent
    while dialog is not None and dialog.getRole() != pyatspi.ROLE_DIALOG:
        dialog = dialog.parent
    client.check(dialog is not None and dialog.name == "Finish automatically?", "the offer is a dialog that says what it asks")
    client.press(offer)
    won = client.wait_for(lambda: announcements.since(0, "Zelvaine Complete: "), "the win's announcement", 60)
    if won:
        print("announced:", won[-1])
        client.check(won[-1].endswith(f" in {move_count(counter)} moves."), "the praise counts the moves the counter shows")
        client.audit(app, "at the win")


def winning_move(frame, solver, announcements):
    """The Solver menu's winning move, as the sentence the game announces; None when the command
    is unavailable or the offer to finish came instead."""
    heard = len(announcements.heard)
    client.press(solver, quiet=True)
    item = client.wait_for(lambda: client.find(frame, name="Show a Winning Move", role=pyatspi.ROLE_MENU_ITEM),
                           "the Solver menu", quiet=True)
    if item is None:
        return None
    if not client.has_state(item, pyatspi.STATE_ENABLED):
        client.press(solver, quiet=True)  # closes the menu again
        return None
    client.press(item, quiet=True)
    # The offer to finish can come between reading the command's state and pressing it: the press
    # then finds the command off, and the question is what the game has to say.
    told = client.wait_for(lambda: announcements.since(heard, "Game message: ")
                           or client.find(frame, name="Auto Complete", role=pyatspi.ROLE_PUSH_BUTTON),
                           "a winning move or the offer to finish", 30, quiet=True)
    return told[-1] if isinstance(told, list) else None


def play_move(frame, counter, sentence):
    """Finds the named card and place and presses the place; the kind of destination, or None."""
    match = SENTENCE.fullmatch(sentence)
    if not client.check(match is not None, f"the announced move reads as a move: {sentence!r}", quiet=True):
        return None
    card = match.group("card")
    # The hint selected the card it names, in a column, the hand or a foundation.
    sources = [node for node in client.descendants(frame)
               if node.name == card and client.has_state(node, pyatspi.STATE_SELECTED)]
    if not client.check(len(sources) == 1, f"{sentence!r}: exactly one selected element is named {card!r}", quiet=True):
        return None
    if match.group("column"):
        kind = "column"
        place = client.find(frame, role=pyatspi.ROLE_LIST, prefix=f"Column {match.group('column')}, ")
    elif match.group("foundation"):
        kind = "foundation"
        number = match.group("foundation")
        place = next((node for node in client.find_all(frame, role=pyatspi.ROLE_LIST, prefix="Foundation ")
                      if node.name == f"Foundation {number}"), None)
    else:
        kind = "hand"
        place = client.find(frame, role=pyatspi.ROLE_PUSH_BUTTON, prefix="Empty hand slot ")
    if not client.check(place is not None, f"{sentence!r}: the place it names is there", quiet=True):
        return None
    before = move_count(counter)
    print(f"{sentence[len('Game message: '):]} -> pressing {place.name!r}")
    client.press(place, quiet=True)
    if client.wait_for(lambda: move_count(counter) == before + 1, f"move {before + 1}", quiet=True) is None:
        return None
    return kind


if __name__ == "__main__":
    main()
