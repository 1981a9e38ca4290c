#!/usr/bin/python3
"""Lists the controls of a running program as a screen reader finds them through AT-SPI.

Usage: atspi_inputs.py PID

Prints one line per control, in the order of the accessibility tree:
    <phase>|<role>|<name>|<states>
Phase "intro" is the whole tree as the program starts, every page included; then the
Bug Report button and then the Identity tab are pressed through their AT-SPI actions,
and phase "identity" lists the controls that are showing then.
Exits nonzero, with the reason on standard error, when the program or a step never
shows up within the deadline.
"""
import sys
import time

import pyatspi

DEADLINE_S = 60
CONTROL_ROLES = {
    "check box", "combo box", "list", "page tab", "page tab list", "password text",
    "progress bar", "push button", "text", "tree",
}
STATES = [(pyatspi.STATE_FOCUSABLE, "focusable"), (pyatspi.STATE_SENSITIVE, "enabled"),
          (pyatspi.STATE_SHOWING, "showing")]


def wait_for(what, find):
    end = time.monotonic() + DEADLINE_S
    while time.monotonic() < end:
        found = find()
        if found is not None:
            return found
        time.sleep(0.1)
    sys.exit("atspi_inputs: %s never appeared" % what)


def application(pid):
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.get_process_id() == pid:
            return app
    return None


def nodes(node):
    yield node
    for child in node:
        if child is not None:
            yield from nodes(child)


def states(node):
    state = node.getState()
    return ",".join(name for flag, name in STATES if state.contains(flag))


def controls(app):
    return [n for n in nodes(app) if n.getRoleName() in CONTROL_ROLES]


def first(app, role, name):
    for node in controls(app):
        if node.getRoleName() == role and node.name == name:
            return node
    return None


def showing(node):
    return node.getState().contains(pyatspi.STATE_SHOWING)


def main():
    pid = int(sys.argv[1])
    app = wait_for("the program's application object", lambda: application(pid))
    for node in controls(app):
        print("intro|%s|%s|%s" % (node.getRoleName(), node.name, states(node)))

    bug = first(app, "push button", "Bug Report (Crashes / Issues)")
    if bug is None:
        sys.exit("atspi_inputs: no Bug Report button")
    bug.queryAction().doAction(0)
    tab = wait_for("the Identity tab", lambda: next(
        (n for n in controls(app) if n.getRoleName() == "page tab" and n.name == "Step 1: Identity" and showing(n)),
        None))
    tab.queryAction().doAction(0)
    wait_for("the name field", lambda: first(app, "text", "Your name:") if showing(
        first(app, "text", "Your name:")) else None)
    for node in controls(app):
        if showing(node):
            print("identity|%s|%s|%s" % (node.getRoleName(), node.name, states(node)))


if __name__ == "__main__":
    main()
