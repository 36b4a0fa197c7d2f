#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
# The desktop program as only a real X session shows it: the real program on an X server of its own
# (Xvfb), with or without a window manager (openbox), keys and clicks from xdotool, windows read
# from the X server, controls read and pressed through AT-SPI, the screen reader's interface. Every
# wait is on a state, with a deadline.
#   xsession.py LEDGERLY bare|openbox
# Run it inside `dbus-run-session`, so that AT-SPI has a session bus of its own.
import os
import shutil
import subprocess
import sys
import tempfile
import time

import pyatspi
from Xlib import X, Xatom, display, protocol

LEDGERLY, MODE = os.path.abspath(sys.argv[1]), sys.argv[2]
MAIN = "Ledgerly - by Tobin Arle"
MWM_FUNC_ALL, MWM_FUNC_MINIMIZE, MWM_FUNC_MAXIMIZE = 1, 8, 16
failures = []


def check(ok, what):
    print(("ok   " if ok else "FAIL ") + what, flush=True)
    if not ok:
        failures.append(what)


def until(ready, what, seconds=20):
    """Polls until ready() gives something true and returns it; fails the run at the deadline."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        value = ready()
        if value:
            return value
        time.sleep(0.05)
    print("FAIL never: " + what, flush=True)
    sys.exit(1)


# ---- the session: X server, window manager, the program in a folder of its own --------------
read_fd, write_fd = os.pipe()
xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(write_fd), "-screen", "0", "1100x800x24", "-nolisten", "tcp"],
                        pass_fds=(write_fd,), stderr=subprocess.DEVNULL)
os.close(write_fd)
number = b""
while not number.endswith(b"\n"):
    chunk = os.read(read_fd, 16)
    if not chunk:
        sys.exit("Xvfb did not start")
    number += chunk
os.environ["DISPLAY"] = ":" + number.decode().strip()
dpy = display.Display()
root = dpy.screen().root
atom = dpy.intern_atom
children = [xvfb]
if MODE == "openbox":
    children.append(subprocess.Popen(["openbox", "--sm-disable"], stderr=subprocess.DEVNULL))
    until(lambda: root.get_full_property(atom("_NET_SUPPORTING_WM_CHECK"), X.AnyPropertyType), "openbox runs")

folder = tempfile.mkdtemp(prefix="ledgerly-x-")
runtime = tempfile.mkdtemp(prefix="runtime-")
shutil.copy(LEDGERLY, folder)
# No printer of the machine's is ever asked.
env = dict(os.environ, XDG_RUNTIME_DIR=runtime, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
           CUPS_SERVER=os.path.join(runtime, "no-cups.sock"))
env.pop("QT_QPA_PLATFORM", None)
program = subprocess.Popen([os.path.join(folder, "ledgerly")], cwd=folder, env=env)


def finish():
    for p in [program] + children[::-1]:
        if p.poll() is None:
            p.kill()
            p.wait()
    shutil.rmtree(folder, ignore_errors=True)
    shutil.rmtree(runtime, ignore_errors=True)


# ---- windows as the X server and the window manager see them ---------------------------------
def name_of(w):
    try:
        p = w.get_full_property(atom("_NET_WM_NAME"), atom("UTF8_STRING"))
        if p:
            return p.value.decode()
        p = w.get_full_property(Xatom.WM_NAME, X.AnyPropertyType)
        return p.value.decode("latin-1") if p else None
    except Exception:
        return None


def viewable(w):
    try:
        return w.get_attributes().map_state == X.IsViewable
    except Exception:
        return False


def stacking():
    """The program's shown top-level windows, bottom to top."""
    managed = root.get_full_property(atom("_NET_CLIENT_LIST_STACKING"), X.AnyPropertyType)
    ids = managed.value if managed else [c.id for c in root.query_tree().children]
    windows = [dpy.create_resource_object("window", i) for i in ids]
    return [w for w in windows if viewable(w) and name_of(w) is not None]


def window(title):
    return next((w for w in reversed(stacking()) if name_of(w) == title), None)


def above(top, below):
    ids = [w.id for w in stacking()]
    return top.id in ids and below.id in ids and ids.index(top.id) > ids.index(below.id)


def asks_no_minimise_or_maximise(w):
    """Motif hints: no decorations at all (no title bar, so no buttons), or functions without
    minimise and maximise."""
    p = w.get_full_property(atom("_MOTIF_WM_HINTS"), X.AnyPropertyType)
    if not p:
        return False
    flags, functions, decorations = p.value[0], p.value[1], p.value[2]
    if flags & 2 and decorations == 0:
        return True
    return bool(flags & 1) and not functions & (MWM_FUNC_ALL | MWM_FUNC_MINIMIZE | MWM_FUNC_MAXIMIZE)


def close_box(w):
    """What the close box does: the window is asked to close (WM_DELETE_WINDOW)."""
    data = [atom("WM_DELETE_WINDOW"), X.CurrentTime, 0, 0, 0]
    w.send_event(protocol.event.ClientMessage(window=w, client_type=atom("WM_PROTOCOLS"), data=(32, data)))
    dpy.flush()


def key(*keys):
    subprocess.run(["xdotool", "key", "--clearmodifiers"] + list(keys), check=True)


def click(w, x, y):
    g = w.translate_coords(root, 0, 0)
    subprocess.run(["xdotool", "mousemove", str(-g.x + x), str(-g.y + y), "click", "1"], check=True)


# ---- controls as a screen reader sees them --------------------------------------------------
def app():
    desktop = pyatspi.Registry.getDesktop(0)
    return next((a for a in desktop if a is not None and a.name == "ledgerly"), None)


def frame(title):
    a = app()
    return next((f for f in a if f is not None and f.name == title and
                 f.getState().contains(pyatspi.STATE_SHOWING)), None) if a else None


def walk(acc, depth=0):
    yield acc
    if depth > 12 or acc.getRoleName() in ("table", "menu bar"):
        return
    for child in acc:
        if child is not None:
            yield from walk(child, depth + 1)


def find(f, name, role=None):
    return next((a for a in walk(f) if a.name == name and (role is None or a.getRoleName() == role)), None)


def press(f, name):
    button = until(lambda: find(f, name, "push button"), "a button " + name)
    button.queryAction().doAction(0)


REACHABLE = {"text", "entry", "push button", "check box", "combo box", "table", "list", "radio button"}


def unnamed_controls(f):
    return ["%s in %s" % (a.getRoleName(), f.name) for a in walk(f)
            if a.getRoleName() in REACHABLE and a.getState().contains(pyatspi.STATE_SHOWING) and not a.name.strip()]


def exit_code():
    try:
        return program.wait(20)
    except subprocess.TimeoutExpired:
        return None


def open_modal(main, keys, title):
    key(keys)
    return until(lambda: next((w for w in stacking() if name_of(w) == title and w.id != main.id and above(w, main)),
                              None), title + " in front of the main window")


def close_by_button(w, title, button):
    press(until(lambda: frame(title), title + " to AT-SPI"), button)
    until(lambda: not viewable(w), title + " closed")


MODALS = [  # key, title, the button that closes it
    ("ctrl+a", "About Ledgerly", "Close"),
    ("ctrl+h", "Ledgerly help", "Close"),
    ("ctrl+comma", "Ledgerly preferences", "close"),
    ("ctrl+e", "Stock window", "Done"),
    ("ctrl+n", "Untitled", "Do it"),  # the form opens for typing
    ("ctrl+l", "Untitled", "Close"),
    ("ctrl+alt+l", "Leopard Labeler for 4 up label sheets", "Close"),
]

try:
    # The first start: its message, then the preferences.
    until(lambda: app() and any(f is not None and find(f, "Please fill out the prefs.") for f in app()),
          "the message of the first start")
    key("Return")
    prefs = until(lambda: window("Ledgerly preferences"), "the preferences at the first start")
    if MODE == "bare":
        # With no window manager to keep them there: a change of the currency makes the main window
        # come into being behind the preferences, which stay above it.
        click(prefs, 2 + 500, 2 + 128)
        until(lambda: any(a.getRoleName() == "list" and a.getState().contains(pyatspi.STATE_SHOWING) and
                          any(i is not None and i.name == "\u20ac" for i in a) for f in app() if f is not None
                          for a in walk(f)), "the currency popup open")
        key("Down", "Return")
        main = until(lambda: window(MAIN), "the main window behind the preferences")
        until(lambda: above(prefs, main), "the preferences above the main window")
        check(above(prefs, main), "the first start's preferences stay above the main window that came after them")
    close_by_button(prefs, "Ledgerly preferences", "close")
    main = until(lambda: window(MAIN), "the main window")

    if MODE == "openbox":
        # Each modal window in front of the main window, with its own title, the main window as its
        # transient parent, no minimise or maximise asked for, and a name on every control.
        check(name_of(main) == MAIN, "the main window's title is its own: " + repr(name_of(main)))
        form = until(lambda: frame(MAIN), "the main window to AT-SPI")
        for name, role in [("order number", "text"), ("invoice date", "text"), ("Tax/Vat", "text"),
                           ("cost each, row 3", "text"), ("customer name", "text"), ("comments", "text"),
                           ("customers", "table")]:
            check(find(form, name, role) is not None, "the main window has a %s named %r" % (role, name))
        check(unnamed_controls(form) == [], "every control of the main window has a name: %s" % unnamed_controls(form))
        for keys, title, button in MODALS:
            w = open_modal(main, keys, title)
            check(name_of(w) == title, "title %r" % name_of(w))
            parent = w.get_full_property(Xatom.WM_TRANSIENT_FOR, X.AnyPropertyType)
            check(parent is not None and parent.value[0] == main.id, title + " has the main window as transient parent")
            check(asks_no_minimise_or_maximise(w), title + " asks for neither minimise nor maximise")
            f = until(lambda: frame(title), title + " to AT-SPI")
            check(unnamed_controls(f) == [], "every control of %s has a name: %s" % (title, unnamed_controls(f)))
            close_by_button(w, title, button)

        # A person tries to lose About: minimises it, clicks and types on the main window, presses
        # the main window's close box. About stays in front and the program goes on.
        name = find(form, "customer name", "text").queryText()
        typed = name.getText(0, name.characterCount)
        about = open_modal(main, "ctrl+a", "About Ledgerly")
        subprocess.run(["xdotool", "windowminimize", str(about.id)], check=True)
        dpy.sync()
        until(lambda: viewable(about) and viewable(main) and above(about, main), "About back in front after minimising")
        click(main, 44 + 30, 14 + 30)
        subprocess.run(["xdotool", "type", "zz"], check=True)
        close_box(main)
        close_by_button(about, "About Ledgerly", "Close")
        check(program.poll() is None and viewable(main), "the main window's close box did nothing while About was open")
        check(name.getText(0, name.characterCount) == typed, "the main window took no keys while About was open")
    close_box(main)
    check(exit_code() == 0, "the main window's close box ends the program")
finally:
    finish()

print("%d failed" % len(failures))
sys.exit(1 if failures else 0)
