#!/usr/bin/python3
"""Prints what a screen reader finds of a report window just opened from a kvfb:// link,
one line each:
    area-list|<the selected areas, comma-separated>
    start-over|<showing or hidden>,<enabled or disabled>
Usage: atspi-launch-state.py PID. Waits up to 60 s for the program on the AT-SPI bus.
The list's lock is not among them: Qt's item views report no disabled state.
"""
import sys
import time

import pyatspi

DEADLINE_S = 60


def nodes(node):
    yield node
    for child in node:
        if child is not None:
            yield from nodes(child)


def find(pid, role, name):
    for app in pyatspi.Registry.getDesktop(0):
        if app is None or app.get_process_id() != pid:
            continue
        for node in nodes(app):
            if node.getRoleName() == role and node.name == name:
                return node
    return None


def wait_for(pid, role, name):
    end = time.monotonic() + DEADLINE_S
    while time.monotonic() < end:
        node = find(pid, role, name)
        if node is not None:
            return node
        time.sleep(0.2)
    apps = ["%s (pid %s)" % (app.name, app.get_process_id()) for app in pyatspi.Registry.getDesktop(0) if app]
    sys.exit("atspi-launch-state: no %s named '%s' of pid %d within %d s; the applications are: %s"
             % (role, name, pid, DEADLINE_S, ", ".join(apps) or "none"))


def main():
    pid = int(sys.argv[1])
    area = wait_for(pid, "list", "Area:")
    selected = [item.name for item in area if item is not None and item.getState().contains(pyatspi.STATE_SELECTED)]
    print("area-list|%s" % ",".join(selected))
    state = wait_for(pid, "push button", "Start Over").getState()
    print("start-over|%s,%s" % ("showing" if state.contains(pyatspi.STATE_SHOWING) else "hidden",
                                "enabled" if state.contains(pyatspi.STATE_SENSITIVE) else "disabled"))


if __name__ == "__main__":
    main()
