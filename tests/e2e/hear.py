#!/usr/bin/python3
"""Plays through assistive technology's own interfaces, on a bus and a display of its own, and checks what a screen
reader is told. Usage: hear.py PROGRAM. Ends with 77 where the packages for that are missing."""

import os
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
try:
    import pyatspi
    from gi.repository import GLib
except ImportError:
    print("python3-pyatspi is missing")
    sys.exit(SKIPPED)
for tool in (LAUNCHER, "dbus-daemon", "Xvfb", "gdbus"):
    if not shutil.which(tool):
        print(tool, "is missing")
        sys.exit(SKIPPED)

SOLUTION = "534678912672195348198342567859761423426853791713924856961537284287419635345286179"


def serve():
    while GLib.MainContext.default().iteration(False):
        pass


def until(description, happened):
    """Serves the bus until something is true, within a bound."""
    end = time.monotonic() + 30
    while not happened():
        if time.monotonic() > end:
            sys.exit("FAILED: " + description)
        serve()
        time.sleep(0.02)


def outside(box):
    """What the program needs around it. Gives the processes; the environment is this one's from here on."""
    os.environ.update(HOME=box, XDG_RUNTIME_DIR=box, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "WAYLAND_DISPLAY", "AT_SPI_BUS_ADDRESS"):
        os.environ.pop(name, None)
    display, address = os.pipe(), os.pipe()
    server = ["Xvfb", "-displayfd", str(display[1]), "-screen", "0", "1366x768x24", "-noreset"]
    bus = ["dbus-daemon", "--session", "--nofork", f"--print-address={address[1]}"]
    quiet = subprocess.DEVNULL
    yield subprocess.Popen(server, pass_fds=[display[1]], stderr=quiet)
    os.environ["DISPLAY"] = ":" + os.read(display[0], 99).decode().strip()
    yield subprocess.Popen(bus, pass_fds=[address[1]], stderr=quiet)
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = os.read(address[0], 999).decode().strip()
    yield subprocess.Popen([LAUNCHER, "--launch-immediately"], stdout=quiet, stderr=quiet)


def play(program, box):
    with open(box + "/a.nx3", "w", encoding="ascii") as puzzle:
        puzzle.write("[]\r\n")  # cells 3 and 4 are empty
        puzzle.writelines(f"{i}={d}|1|0\r\n" for i, d in enumerate(SOLUTION, 1) if i not in (3, 4))
    with open(box + "/Ninarix.ini", "w", encoding="ascii") as settings:
        settings.write("[Options]\r\nNoSplash=1\r\n")
    shutil.copy(program, box + "/Ninarix")
    with open(box + "/said", "w", encoding="ascii") as said:
        app = subprocess.Popen([box + "/Ninarix", box + "/a.nx3"], stderr=said)
    yield app
    heard = []

    def hear(event):
        if event.type.startswith("object:property-change:accessible-value"):
            heard.append(f"{event.source.name} {event.source.queryText().getText(0, -1)}")
            return
        try:
            if event.source.getRole() == pyatspi.ROLE_NOTIFICATION:
                heard.append(event.source.name)
        except GLib.Error:  # it is gone already
            pass

    pyatspi.Registry.registerEventListener(
        hear, "object:property-change:accessible-value", "object:state-changed:showing")
    desktop = pyatspi.Registry.getDesktop(0)

    def found(role, name):
        try:
            tops = [child for child in desktop if child and child.name == "Ninarix"]
            return tops and pyatspi.findDescendant(tops[0], lambda x: x.getRole() == role and x.name == name)
        except (LookupError, RuntimeError, GLib.Error):  # the tree changes meanwhile
            return None

    def expect(what, act):
        heard.clear()
        act()
        until(f"{what} instead of {heard}", lambda: len(heard) >= len(what))
        serve()
        if heard != what:
            sys.exit(f"FAILED: {heard} instead of {what}")

    def press(role, name):
        found(role, name).queryAction().doAction(0)

    cell3, cell4 = "Ligne 1, colonne 3", "Ligne 1, colonne 4"
    until("the grid is read", lambda: found(pyatspi.ROLE_SPIN_BUTTON, cell4))
    press(pyatspi.ROLE_SPIN_BUTTON, cell3)
    until("it is selected", lambda: found(pyatspi.ROLE_SPIN_BUTTON, cell3).getState().contains(pyatspi.STATE_SELECTED))
    value = found(pyatspi.ROLE_SPIN_BUTTON, cell3).queryValue()

    def enter(digit):
        value.currentValue = digit

    expect(["5 impossible ici"], lambda: enter(5))
    expect([cell3 + " 4"], lambda: enter(4))
    expect([cell3 + " vide"], lambda: enter(0))
    expect(["4 exclu"], lambda: press(pyatspi.ROLE_PUSH_BUTTON, "Exclure le 4"))
    expect(["4 réadmis"], lambda: press(pyatspi.ROLE_PUSH_BUTTON, "Réadmettre le 4"))
    expect([cell3 + " 4"], lambda: press(pyatspi.ROLE_PUSH_BUTTON, "Mettre 4"))
    expect([cell3 + " vide"], lambda: press(pyatspi.ROLE_PUSH_BUTTON, "Annuler"))
    expect([cell3 + " 4"], lambda: press(pyatspi.ROLE_PUSH_BUTTON, "Refaire"))
    press(pyatspi.ROLE_SPIN_BUTTON, cell4)
    expect([cell4 + " 6", "Grille complète"], lambda: press(pyatspi.ROLE_PUSH_BUTTON, "Mettre 6"))
    until("well done", lambda: found(pyatspi.ROLE_LABEL, "Bravo, la grille est terminée."))
    press(pyatspi.ROLE_PUSH_BUTTON, "OK")
    expect(["Mode Initialisation : oui"], lambda: press(pyatspi.ROLE_CHECK_BOX, "Mode Initialisation"))
    with open(box + "/said", encoding="utf-8") as said:
        if "QAccessible" in (complaints := said.read()):
            sys.exit("FAILED: the toolkit complains: " + complaints)
    print("All of it was heard.")


def main():
    processes = []
    with tempfile.TemporaryDirectory(prefix="ninarix-ear-") as box:
        try:
            for part in (outside(box), play(sys.argv[1], box)):
                for process in part:
                    processes.append(process)
        finally:
            for process in reversed(processes):
                process.terminate()
                process.wait()


main()
