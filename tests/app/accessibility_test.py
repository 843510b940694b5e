#!/usr/bin/python3
"""The real game played through AT-SPI, as a screen reader would play it.

Starts its own session bus, an Xvfb display and the game with a shared game, and drives the game
only through the accessibility bus, knowing nothing but the names it exposes.
    accessibility_test.py ZELVAINE ZELVAINE_CLI
Exits 77 (skipped) when a needed program or module is missing.
"""

import json
import os
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

SKIP = 77

try:
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import GLib
    import pyatspi
except (ImportError, ValueError) as missing:
    print(f"SKIPPED: python3-pyatspi is not installed ({missing}); scripts/install-deps installs it")
    sys.exit(SKIP)

for program in ("Xvfb", "dbus-run-session"):
    if shutil.which(program) is None:
        print(f"SKIPPED: {program} is not installed; scripts/install-deps installs it")
        sys.exit(SKIP)

# A private session bus, and with it a private accessibility bus: nothing else on the desktop is
# seen or touched.
if os.environ.get("ZELVAINE_ACCESSIBILITY_SESSION") != "1":
    os.environ["ZELVAINE_ACCESSIBILITY_SESSION"] = "1"
    os.execvp("dbus-run-session", ["dbus-run-session", "--", sys.executable, *sys.argv])

GAME, CLI = sys.argv[1], sys.argv[2]
failures = []


def check(condition, what):
    if condition:
        print("ok:", what)
    else:
        failures.append(what)
        print("FAILED:", what)


def wait_for(condition, what, seconds=10.0):
    """Polls `condition` while letting AT-SPI events in; the value it returned, or None."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        value = condition()
        if value:
            print("ok:", what)
            return value
        time.sleep(0.05)
    failures.append("timed out waiting for " + what)
    print("FAILED: timed out waiting for", what)
    return None


def descendants(root):
    stack = [root]
    while stack:
        node = stack.pop()
        yield node
        stack.extend(child for child in reversed(list(node)) if child is not None)


def find(root, name=None, role=None, prefix=None):
    for node in descendants(root):
        if role is not None and node.getRole() != role:
            continue
        if name is not None and node.name != name:
            continue
        if prefix is not None and not node.name.startswith(prefix):
            continue
        return node
    return None


def press(node):
    actions = node.queryAction()
    names = [actions.getName(i) for i in range(actions.nActions)]
    check("Press" in names, f"{node.name!r} offers Press (it offers {names})")
    if "Press" in names:
        actions.doAction(names.index("Press"))


def selected(node):
    return node.getState().contains(pyatspi.STATE_SELECTED)


def column(board, number):
    return find(board, role=pyatspi.ROLE_LIST, prefix=f"Column {number}, ")


def stored_preference(data_home, key):
    with sqlite3.connect(os.path.join(data_home, "zelvaine", "defaults.sqlite3")) as db:
        row = db.execute("SELECT value FROM defaults WHERE key = ?", (key,)).fetchone()
    return None if row is None else row[0]


def a_column_move(cli, position_path):
    """A first column card and the column it can go to, by the rules' own answer."""
    position = json.load(open(position_path))
    for source in range(10):
        index = len(position["tableau"][source]) - 1
        for destination in range(10):
            if destination == source:
                continue
            answer = json.loads(subprocess.run([cli, "move", position_path, f"tableau:{source}:{index}",
                                                f"tableau:{destination}"], capture_output=True, text=True).stdout)
            if answer.get("outcome") == "moved":
                return source, index, destination, len(position["tableau"][destination])
    return None


def main():
    scratch = tempfile.mkdtemp(prefix="zelvaine-a11y-")
    data_home = os.path.join(scratch, "data")
    deal = os.path.join(scratch, "deal.json")
    with open(deal, "w") as f:
        f.write(subprocess.run([CLI, "deal"], check=True, capture_output=True, text=True).stdout)
    shared = os.path.join(scratch, "game.zelvaine")
    with open(shared, "w") as f:
        f.write(subprocess.run([CLI, "export", deal, deal], check=True, capture_output=True, text=True).stdout)

    xvfb = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp"],
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    display = ":" + xvfb.stdout.readline().decode().strip()
    env = dict(os.environ, DISPLAY=display, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               XDG_DATA_HOME=data_home, ALSOFT_DRIVERS="null", LANGUAGE="en", LC_ALL="C.UTF-8", LANG="C.UTF-8")
    game = subprocess.Popen([GAME, "-qwindowgeometry", "1600x1000+0+0", shared], env=env)
    try:
        play(game, data_home, deal)
    finally:
        game.terminate()
        game.wait(10)
        xvfb.terminate()
        xvfb.wait(10)
        shutil.rmtree(scratch, ignore_errors=True)


def play(game, data_home, deal):
    def the_game():
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.name.lower() == "zelvaine" and application.childCount:
                return application
        return None

    app = wait_for(the_game, "the game on the accessibility bus", 30)
    if app is None:
        return

    # Announcements: every notification that appears or changes its words, in order.
    heard = []

    def listen(event):
        source = event.source
        if source is not None and source.getRole() == pyatspi.ROLE_NOTIFICATION:
            heard.append(source.name)

    pyatspi.Registry.registerEventListener(listen, "object:state-changed:showing",
                                           "object:property-change:accessible-name")

    # The shared game asks first; its answer is a button like any other.
    open_button = wait_for(lambda: find(app, name="Open Game", role=pyatspi.ROLE_PUSH_BUTTON),
                           "the Open Game button of the shared game's question")
    if open_button is None:
        return
    press(open_button)

    move = a_column_move(CLI, deal)
    check(move is not None, "the deal has a move from one column's lowest card to another column")
    if move is None:
        return
    source, index, destination, destination_count = move
    position = json.load(open(deal))

    board = app
    first = wait_for(lambda: column(board, source + 1), f"column {source + 1}")
    if first is None:
        return
    check(first.name == f"Column {source + 1}, {index + 1} cards", f"column label {first.name!r}")
    cards = [child for child in first if child is not None]
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
    target = column(board, destination + 1)
    press([child for child in target if child is not None][-1])
    wait_for(lambda: column(board, destination + 1).name
             == f"Column {destination + 1}, {destination_count + 1} cards", "the destination column's new label")
    check(column(board, source + 1).name == f"Column {source + 1}, {index} cards", "the source column's new label")
    check(find(board, name="1 move") is not None, "the move counter reads 1 move")

    # A hint is spoken as a notification.
    before = len(heard)
    press(find(board, name="Hint", role=pyatspi.ROLE_PUSH_BUTTON))
    hint = wait_for(lambda: [words for words in heard[before:] if words.startswith("Game message: ")],
                    "the hint's announcement")
    if hint:
        print("announced:", hint[0])

    # Undo takes back exactly one move: a press is one click, not two.
    press(find(board, name="Undo", role=pyatspi.ROLE_PUSH_BUTTON))
    wait_for(lambda: find(board, name="0 moves"), "the move counter back at 0 moves")

    # A settings switch's Toggle changes the stored preference.
    press(find(board, name="Settings", role=pyatspi.ROLE_PUSH_BUTTON))
    switch = wait_for(lambda: find(app, name="Show Hint", role=pyatspi.ROLE_CHECK_BOX)
                      or find(app, name="Show Hint", role=pyatspi.ROLE_TOGGLE_BUTTON), "the Show Hint switch")
    if switch is None:
        return
    check(switch.getState().contains(pyatspi.STATE_CHECKED), "Show Hint starts on")
    actions = switch.queryAction()
    names = [actions.getName(i) for i in range(actions.nActions)]
    actions.doAction(names.index("Toggle") if "Toggle" in names else names.index("Press"))
    wait_for(lambda: stored_preference(data_home, "zelvaine.preferences.shows-hint") == 0,
             "the stored Show Hint preference to be off")
    wait_for(lambda: find(board, name="Hint", role=pyatspi.ROLE_PUSH_BUTTON) is None
             or not find(board, name="Hint", role=pyatspi.ROLE_PUSH_BUTTON).getState().contains(pyatspi.STATE_SHOWING),
             "the Hint button to go")
    press(find(app, name="Done", role=pyatspi.ROLE_PUSH_BUTTON))
    check(game.poll() is None, "the game is still running")


RANKS = {1: "ace", 2: "two", 3: "three", 4: "four", 5: "five", 6: "six", 7: "seven", 8: "eight", 9: "nine",
         10: "ten", 11: "jack", 12: "queen", 13: "king"}


def card_name(card):
    return f"{RANKS[card['rank']]} of {card['suit']}"


if __name__ == "__main__":
    started = time.monotonic()
    main()
    print(f"{'FAILED' if failures else 'passed'} in {time.monotonic() - started:.1f} s")
    sys.exit(1 if failures else 0)
