"""A screen reader's hold on the real game: a private session bus, an Xvfb display, the game on it
with a shared game, and AT-SPI to read, press and hear it. Nothing here knows more of the game
than the names, roles and states it exposes.

A test script calls `start_session()` first: it exits 77 (skipped) when a needed program or module
is missing, and otherwise runs the script again inside its own session bus, with the display
already up, so that the accessibility bus and its key injection see the same display.
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

SKIP = 77

failures = []


def start_session():
    try:
        import gi
        gi.require_version("Atspi", "2.0")
        import pyatspi  # noqa: F401
    except (ImportError, ValueError) as missing:
        print(f"SKIPPED: python3-pyatspi is not installed ({missing}); scripts/install-deps installs it")
        sys.exit(SKIP)
    for program in ("Xvfb", "dbus-run-session"):
        if shutil.which(program) is None:
            print(f"SKIPPED: {program} is not installed; scripts/install-deps installs it")
            sys.exit(SKIP)
    if os.environ.get("ZELVAINE_ACCESSIBILITY_SESSION") == "1":
        return
    # The display first, so that the session's accessibility bus, started on demand, inherits
    # it: key presses sent through AT-SPI go to that display. Nothing else on the desktop is
    # seen or touched.
    xvfb, display = start_display()
    session = subprocess.run(["dbus-run-session", "--", sys.executable, *sys.argv],
                             env=dict(os.environ, ZELVAINE_ACCESSIBILITY_SESSION="1", DISPLAY=display))
    xvfb.terminate()
    xvfb.wait(10)
    sys.exit(session.returncode)


def start_display():
    """An Xvfb server on a free display, away from the low numbers that desktops and other
    test runs take first."""
    first = 300 + os.getpid() % 600
    for number in list(range(first, 900)) + list(range(300, first)):
        if os.path.exists(f"/tmp/.X{number}-lock"):
            continue
        xvfb = subprocess.Popen(["Xvfb", f":{number}", "-displayfd", "1", "-screen", "0", "1600x1000x24",
                                 "-nolisten", "tcp"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        # The number comes back once the server takes connections; nothing when it could not start.
        if xvfb.stdout.readline().strip():
            return xvfb, f":{number}"
        xvfb.wait(10)
    sys.exit("no free display for Xvfb")


def finish(started):
    print(f"{'FAILED' if failures else 'passed'} in {time.monotonic() - started:.1f} s")
    sys.exit(1 if failures else 0)


def check(condition, what, quiet=False):
    if condition:
        if not quiet:
            print("ok:", what)
    else:
        failures.append(what)
        print("FAILED:", what)
    return condition


def pump():
    from gi.repository import GLib
    while GLib.MainContext.default().iteration(False):
        pass


def wait_for(condition, what, seconds=30.0, quiet=False):
    """Polls `condition` while letting AT-SPI events in; the value it returned, or None. The wait is
    long because the game may run under the sanitizers on a busy machine; it ends as soon as the
    condition holds."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        pump()
        value = condition()
        if value:
            if not quiet:
                print("ok:", what)
            return value
        time.sleep(0.02)
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
    return next(find_all(root, name, role, prefix), None)


def find_all(root, name=None, role=None, prefix=None):
    for node in descendants(root):
        if role is not None and node.getRole() != role:
            continue
        if name is not None and node.name != name:
            continue
        if prefix is not None and not node.name.startswith(prefix):
            continue
        yield node


def has_state(node, state):
    return node.getState().contains(state)


def press(node, quiet=False):
    actions = node.queryAction()
    names = [actions.getName(i) for i in range(actions.nActions)]
    if "Press" not in names:
        check(False, f"{node.name!r} offers Press (it offers {names})")
        return
    if not quiet:
        print(f"pressing {node.getRoleName()} {node.name!r}")
    actions.doAction(names.index("Press"))


def key(name):
    """A key pressed and released on the display, as the keyboard would."""
    import pyatspi
    keysyms = {"Left": 0xFF51, "Up": 0xFF52, "Right": 0xFF53, "Down": 0xFF54, "Return": 0xFF0D,
               "Escape": 0xFF1B}
    pyatspi.Registry.generateKeyboardEvent(keysyms[name], None, pyatspi.KEY_SYM)


class Announcements:
    """What a screen reader would speak unasked: every notification as it appears or changes its
    words, and the focus as it moves, in order."""

    def __init__(self):
        import pyatspi
        self.heard = []
        self.focus = []
        self.renamed = []
        pyatspi.Registry.registerEventListener(self._hear, "object:state-changed:showing",
                                               "object:property-change:accessible-name", "focus:")

    def _hear(self, event):
        import pyatspi
        source = event.source
        if source is None:
            return
        try:
            self._note(event, source, pyatspi)
        except Exception:  # an element gone before its event was read: nothing to hear
            pass

    def _note(self, event, source, pyatspi):
        if event.type.startswith("focus"):
            self.focus.append(source.name)
        elif source.getRole() == pyatspi.ROLE_NOTIFICATION:
            if source.name and (event.type.endswith("accessible-name") or event.detail1 == 1):
                self.heard.append(source.name)
        elif event.type.endswith("accessible-name"):
            self.renamed.append(source.name)

    def since(self, count, prefix):
        return [words for words in self.heard[count:] if words.startswith(prefix)]


def audit(app, moment):
    """The whole tree as a screen reader walks it: no hidden element named or focusable, no
    visible focusable without a name, no "undefined" or "NaN" from a broken binding."""
    import pyatspi
    problems = []
    count = 0
    for node in descendants(app):
        count += 1
        name, description = node.name or "", node.description or ""
        label = f"{node.getRoleName()} {name!r}"
        if any(word in name or word in description for word in ("undefined", "NaN")):
            problems.append(f"{label} reads {name!r} / {description!r}")
        focusable = has_state(node, pyatspi.STATE_FOCUSABLE)
        if is_hidden(node):
            if name or focusable:
                problems.append(f"hidden {label} is {'named' if name else 'focusable'}")
        # A scroll bar is read by its role and position, in every toolkit.
        elif focusable and not name and node.getRole() != pyatspi.ROLE_SCROLL_BAR:
            problems.append(f"{label} can take the focus but has no name")
    for problem in problems:
        print("  ", problem)
    check(not problems, f"{moment}: the tree of {count} elements has no hidden, nameless or undefined element")


def is_hidden(node):
    """Hidden, as opposed to scrolled out of view: both are not visible, but a hidden element has
    no place on the screen at all."""
    import pyatspi
    if has_state(node, pyatspi.STATE_VISIBLE):
        return False
    try:
        extents = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    except NotImplementedError:
        return True
    return extents.width <= 0 and extents.height <= 0


def focus_window(title):
    """Gives a window the keyboard, as a window manager would on a desktop; Xvfb has none. False
    when xdotool, which does it, is missing."""
    if shutil.which("xdotool") is None:
        return False
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"],
                           capture_output=True, text=True).stdout.split()
    for window in found:
        subprocess.run(["xdotool", "windowfocus", "--sync", window], capture_output=True)
    return bool(found)


class Game:
    """The game on the session's display, with a private data folder, opening `shared`."""

    def __init__(self, executable, shared, scratch):
        import pyatspi
        # The accessibility bus is up before the game starts: started together, the display
        # now and then turned the game's connection away.
        pyatspi.Registry.getDesktop(0).childCount
        self.data_home = os.path.join(scratch, "data")
        env = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                   XDG_DATA_HOME=self.data_home, ALSOFT_DRIVERS="null", LANGUAGE="en", LC_ALL="C.UTF-8",
                   LANG="C.UTF-8")
        self.log_path = os.path.join(scratch, "game.log")
        self.command = [executable, "-qwindowgeometry", "1600x1000+0+0", shared]
        self.env = env
        self.process = self._launch()
        self.app = None

    def _launch(self):
        return subprocess.Popen(self.command, env=self.env, stdout=open(self.log_path, "w"), stderr=subprocess.STDOUT)

    def _refused_by_display(self):
        return self.process.poll() is not None and "could not connect to display" in open(self.log_path).read()

    def connect(self):
        import pyatspi

        def the_game():
            for application in pyatspi.Registry.getDesktop(0):
                if application is not None and application.name.lower() == "zelvaine" and application.childCount:
                    return application
            return None

        def the_game_or_its_end():
            return the_game() or self._refused_by_display()

        found = wait_for(the_game_or_its_end, "the game on the accessibility bus", 30)
        if found is True:
            # Now and then, here, a freshly started Xvfb turns the game's first connection away
            # while it takes every other; a second start is let in.
            print("the display turned the game away; starting it again")
            self.process = self._launch()
            found = wait_for(the_game, "the game on the accessibility bus, the second time", 30)
        self.app = found or None
        if self.app is None:
            print("the game's log:", open(self.log_path).read()[-2000:], sep="\n")
        return self.app

    def stop(self):
        check(self.process.poll() is None, "the game is still running")
        self.process.terminate()
        self.process.wait(10)
        # A QML warning or TypeError in the log is a fault of the game.
        problems = [line.rstrip() for line in open(self.log_path) if ".qml:" in line]
        for line in problems:
            print("  ", line)
        check(not problems, "the game's log has no QML warning")


def cli(program, *args):
    return json.loads(subprocess.run([program, *args], check=True, capture_output=True, text=True).stdout)


def shared_game(program, scratch, current, initial):
    """A shared game file of the position `current` dealt as `initial` (both position dicts)."""
    paths = []
    for name, position in (("current.json", current), ("initial.json", initial)):
        path = os.path.join(scratch, name)
        with open(path, "w") as f:
            json.dump(position, f)
        paths.append(path)
    shared = os.path.join(scratch, "game.zelvaine")
    with open(shared, "w") as f:
        f.write(subprocess.run([program, "export", *paths], check=True, capture_output=True, text=True).stdout)
    return shared


def scratch_folder():
    return tempfile.mkdtemp(prefix="zelvaine-a11y-")
