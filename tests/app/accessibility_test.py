#!/usr/bin/python3
"""The real game played through AT-SPI, as a screen reader would play it.

Starts its own session bus, an Xvfb display and the game with a shared game, and drives the game
only through the accessibility bus and the keyboard, knowing nothing but the names it exposes:
a move, the move counter, the same hint heard twice, the keyboard ring followed as the focus,
the questions, the About box, the rules and the settings with their screens, and at each step a
walk of the whole tree for hidden, nameless or broken elements.
    accessibility_test.py ZELVAINE ZELVAINE_CLI
Exits 77 (skipped) when a needed program or module is missing.
"""

import json
import os
import shutil
import sqlite3
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import atspi_client as client  # noqa: E402
from atspi_client import check, find, press, wait_for  # noqa: E402

client.start_session()

import pyatspi  # noqa: E402

GAME, CLI = sys.argv[1], sys.argv[2]
# Keys go to the window that has the keyboard; without a window manager xdotool hands it over.
KEYBOARD = shutil.which("xdotool") is not None
if not KEYBOARD:
    print("the keyboard's part is skipped: xdotool is not installed; scripts/install-deps installs it")


def selected(node):
    return client.has_state(node, pyatspi.STATE_SELECTED)


def column(board, number):
    return find(board, role=pyatspi.ROLE_LIST, prefix=f"Column {number}, ")


def cards_of(list_node):
    return [child for child in list_node if child is not None]


def stored_preference(data_home, key):
    with sqlite3.connect(os.path.join(data_home, "zelvaine", "defaults.sqlite3")) as db:
        row = db.execute("SELECT value FROM defaults WHERE key = ?", (key,)).fetchone()
    return None if row is None else row[0]


def column_moves(position_path):
    """The moves of a column's lowest card onto another column, with the rules' answers."""
    position = json.load(open(position_path))
    for source in range(10):
        index = len(position["tableau"][source]) - 1
        for destination in range(10):
            if destination == source:
                continue
            answer = json.loads(subprocess.run([CLI, "move", position_path, f"tableau:{source}:{index}",
                                                f"tableau:{destination}"], capture_output=True, text=True).stdout)
            yield source, index, destination, answer


def main():
    started = time.monotonic()
    scratch = client.scratch_folder()
    deal = os.path.join(scratch, "deal.json")
    # A deal where a column's lowest card can go onto another column, as most deals have.
    for _ in range(20):
        with open(deal, "w") as f:
            f.write(subprocess.run([CLI, "deal"], check=True, capture_output=True, text=True).stdout)
        legal = next((m for m in column_moves(deal) if m[3].get("outcome") == "moved"), None)
        if legal is not None:
            break
    position = json.load(open(deal))
    game = client.Game(GAME, client.shared_game(CLI, scratch, position, position), scratch)
    try:
        if game.connect() is not None:
            play(game.app, game.data_home, position, legal)
    finally:
        game.stop()
        shutil.rmtree(scratch, ignore_errors=True)
        client.finish(started)


def play(app, data_home, position, legal):
    announcements = client.Announcements()

    # The shared game asks first; its answer is a button like any other.
    open_button = wait_for(lambda: find(app, name="Open Game", role=pyatspi.ROLE_PUSH_BUTTON),
                           "the Open Game button of the shared game's question")
    if open_button is None:
        return
    press(open_button)
    board = wait_for(lambda: find(app, name="Zelvaine", role=pyatspi.ROLE_FRAME), "the game window")
    wait_for(lambda: column(board, 1) and not find(app, role=pyatspi.ROLE_DIALOG), "the board without the question")
    client.audit(app, "at the start")

    if not check(legal is not None, "the deal has a move from one column's lowest card to another column"):
        return
    play_a_move(board, announcements, position, legal)
    hear_the_same_hint_twice(board, announcements)
    answer_the_questions(app, board)
    follow_the_keyboard_ring(board, announcements)

    # Undo takes back exactly one move: a press is one click, not two.
    press(find(board, name="Undo", role=pyatspi.ROLE_PUSH_BUTTON))
    wait_for(lambda: find(board, name="0 moves"), "the move counter back at 0 moves")

    read_the_rules(app, board)
    change_a_setting(app, board, data_home)


def hear_the_same_hint_twice(board, announcements):
    """The same words twice are said twice: a player who cannot see the toast has only its words,
    and asks again when they were missed."""
    first = None
    for attempt in (1, 2):
        heard = len(announcements.heard)
        press(find(board, name="Hint", role=pyatspi.ROLE_PUSH_BUTTON))
        hint = wait_for(lambda: announcements.since(heard, "Game message: "), f"the hint announced, time {attempt}")
        if not hint:
            return
        first = first or hint[0]
        check(hint[0] == first, f"the same hint: {hint[0]!r}")
        # The rest of this announcement's events (it changes its name and appears) come in
        # before the next press, so that they are not taken for the second.
        settle = time.monotonic() + 0.5
        while time.monotonic() < settle:
            client.pump()
            time.sleep(0.02)


def play_a_move(board, announcements, position, legal):
    source, index, destination, _ = legal
    destination_count = len(position["tableau"][destination])
    first = column(board, source + 1)
    check(first.name == f"Column {source + 1}, {index + 1} cards", f"column label {first.name!r}")
    cards = cards_of(first)
    check(len(cards) == index + 1, f"column {source + 1} holds one element per card ({len(cards)})")
    card = cards[-1]
    check(card.getRole() == pyatspi.ROLE_PUSH_BUTTON, f"a card is a button ({card.getRoleName()})")
    check(card.name == card_name(position["tableau"][source][index]), f"the lowest card's name {card.name!r}")
    check(card.description == "Tap to select, double tap to play an unambiguous move, "
                              "or drag this card and its valid string", f"its hint {card.description!r}")
    check(cards[0].description in ("This card is blocked", card.description), "the top card's hint")
    check(not selected(card), "the card starts not selected")

    press(card)
    wait_for(lambda: selected(card), "the pressed card to be selected")
    press(cards_of(column(board, destination + 1))[-1])
    wait_for(lambda: column(board, destination + 1).name
             == f"Column {destination + 1}, {destination_count + 1} cards", "the destination column's new label")
    check(column(board, source + 1).name == f"Column {source + 1}, {index} cards", "the source column's new label")
    # The counter is read where it stands, and its change is told as a change of its name.
    check(find(board, name="1 move", role=pyatspi.ROLE_LABEL) is not None, "the move counter reads 1 move")
    wait_for(lambda: "1 move" in announcements.renamed, "the counter's change told to the screen reader")


def answer_the_questions(app, board):
    """A question is a dialog named by its title; its buttons answer to Press, and Escape to
    the keyboard. The About box, reached through the menu bar, too."""
    for how in ("press", "key") if KEYBOARD else ("press",):
        press(find(board, name="New", role=pyatspi.ROLE_PUSH_BUTTON))
        dialog = wait_for(lambda: find(app, role=pyatspi.ROLE_DIALOG), "the new game's question")
        if dialog is None:
            return
        check(dialog.name == "Start a new game?", f"the question is named by its title ({dialog.name!r})")
        buttons = [node.name for node in client.find_all(dialog, role=pyatspi.ROLE_PUSH_BUTTON)]
        check(sorted(buttons) == ["Cancel", "New Game"], f"its answers are buttons {buttons}")
        if how == "press":
            client.audit(app, "with a question asked")
            press(find(dialog, name="Cancel", role=pyatspi.ROLE_PUSH_BUTTON))
        else:
            client.focus_window("Zelvaine")
            client.key("Escape")
        wait_for(lambda: find(app, role=pyatspi.ROLE_DIALOG) is None, f"the question gone ({how})")
        check(find(board, name="1 move") is not None, "the game is kept")

    press(find(board, name="Zelvaine", role=pyatspi.ROLE_MENU_ITEM) or find(board, name="Zelvaine", role=pyatspi.ROLE_MENU_BAR))
    about = wait_for(lambda: find(board, name="About Zelvaine", role=pyatspi.ROLE_MENU_ITEM), "the application menu")
    if about is None:
        return
    press(about)
    dialog = wait_for(lambda: find(app, name="About Zelvaine", role=pyatspi.ROLE_DIALOG), "the About box")
    if dialog is not None:
        press(find(dialog, name="OK", role=pyatspi.ROLE_PUSH_BUTTON))
        wait_for(lambda: find(app, role=pyatspi.ROLE_DIALOG) is None, "the About box closed by its OK")


def follow_the_keyboard_ring(board, announcements):
    """Each step of the keyboard's ring is a focus change that a screen reader follows."""
    if not KEYBOARD:
        return
    client.focus_window("Zelvaine")
    lowest = cards_of(column(board, 1))[-1].name
    before = len(announcements.focus)
    client.key("Right")
    if wait_for(lambda: lowest in announcements.focus[before:], f"the focus on column 1's lowest card, {lowest}") is None:
        print("  the focus went to:", announcements.focus[before:])
    before = len(announcements.focus)
    client.key("Up")
    wait_for(lambda: len(announcements.focus) > before, "the focus moved up")
    focused = [node.name for node in client.descendants(board) if client.has_state(node, pyatspi.STATE_FOCUSED)]
    check(focused == announcements.focus[-1:], f"the focused element is the one announced ({focused})")
    client.key("Escape")


def read_the_rules(app, board):
    for how in ("press", "key") if KEYBOARD else ("press",):
        press(find(board, name="Rules", role=pyatspi.ROLE_PUSH_BUTTON))
        rules = wait_for(lambda: find(app, name="How to Play", role=pyatspi.ROLE_FRAME), "the rules window")
        if rules is None:
            return
        if how == "press":
            check(find(rules, prefix="Two complete decks are dealt", role=pyatspi.ROLE_LABEL) is not None,
                  "the rules read as text")
            client.audit(app, "with the rules open")
            press(find(rules, name="Done", role=pyatspi.ROLE_PUSH_BUTTON))
        else:
            client.focus_window("How to Play")
            client.key("Escape")
        wait_for(lambda: find(app, name="How to Play", role=pyatspi.ROLE_FRAME) is None, f"the rules closed ({how})")


def change_a_setting(app, board, data_home):
    # A settings switch's Toggle changes the stored preference.
    press(find(board, name="Settings", role=pyatspi.ROLE_PUSH_BUTTON))
    settings = wait_for(lambda: find(app, name="Settings", role=pyatspi.ROLE_FRAME), "the settings window")
    if settings is None:
        return
    switch = wait_for(lambda: find(settings, name="Show Hint", role=pyatspi.ROLE_CHECK_BOX), "the Show Hint switch")
    if switch is None:
        return
    client.audit(app, "with the settings open")
    check(client.has_state(switch, pyatspi.STATE_CHECKED), "Show Hint starts on")
    actions = switch.queryAction()
    names = [actions.getName(i) for i in range(actions.nActions)]
    actions.doAction(names.index("Toggle") if "Toggle" in names else names.index("Press"))
    wait_for(lambda: stored_preference(data_home, "zelvaine.preferences.shows-hint") == 0,
             "the stored Show Hint preference to be off")
    wait_for(lambda: find(board, name="Hint", role=pyatspi.ROLE_PUSH_BUTTON) is None, "the Hint button to go")
    check(find(settings, prefix="Games played: ", role=pyatspi.ROLE_LABEL) is not None, "a statistics tile reads as one")

    # The privacy policy opens in place, with its way back.
    press(find(settings, name="Privacy Policy"))
    back = wait_for(lambda: find(settings, name="Settings", role=pyatspi.ROLE_PUSH_BUTTON), "the privacy policy's way back")
    if back is None:
        return
    check(find(settings, prefix="Zelvaine does not collect", role=pyatspi.ROLE_LABEL) is not None, "the policy reads as text")
    client.audit(app, "with the privacy policy open")
    press(back)
    done = wait_for(lambda: find(settings, name="Done", role=pyatspi.ROLE_PUSH_BUTTON), "the settings again")
    if done is None:
        return
    press(done)
    wait_for(lambda: find(app, name="Settings", role=pyatspi.ROLE_FRAME) is None, "the settings closed by Done")

    # And by the keyboard.
    if not KEYBOARD:
        return
    press(find(board, name="Settings", role=pyatspi.ROLE_PUSH_BUTTON))
    if wait_for(lambda: find(app, name="Settings", role=pyatspi.ROLE_FRAME), "the settings window again"):
        client.focus_window("Settings")
        client.key("Escape")
        wait_for(lambda: find(app, name="Settings", role=pyatspi.ROLE_FRAME) is None, "the settings closed by Escape")


RANKS = {1: "ace", 2: "two", 3: "three", 4: "four", 5: "five", 6: "six", 7: "seven", 8: "eight", 9: "nine",
         10: "ten", 11: "jack", 12: "queen", 13: "king"}


def card_name(card):
    return f"{RANKS[card['rank']]} of {card['suit']}"


if __name__ == "__main__":
    main()
