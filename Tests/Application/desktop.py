"""The program as a user's desktop sees it: started for real in an X server, read and pressed through the
accessibility tree, with the pointer and the keys of the X server."""

import os
import pathlib
import subprocess
import sys
import time

import gi
import pyatspi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

DEADLINE = 30  # seconds, for whatever a test waits for


def wait_for(what, condition):
    """Returns what `condition` comes to give, once that is true."""
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        try:
            value = condition()
            if value:
                return value
        except Exception:  # parts of the tree vanish while it is read
            pass
        time.sleep(0.05)
    raise AssertionError(f"waited in vain for {what}")


def xdotool(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True, timeout=DEADLINE)


def children_of(process):
    tasks = pathlib.Path(f"/proc/{process}/task").glob("*/children")
    return " ".join(task.read_text() for task in tasks).split()


class Program:
    """One run of the application, with a settings folder that outlives it."""

    def __init__(self, binary, settings, folder, *files):
        env = dict(os.environ, XDG_CONFIG_HOME=str(settings), LANGUAGE="", LC_ALL="C.UTF-8",
                   QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb", QT_QUICK_BACKEND="software", QT_FORCE_STDERR_LOGGING="1")
        self.process = subprocess.Popen([binary, *map(str, files)], env=env, cwd=folder)
        self.root = wait_for("the program's tree", self._find)

    def _find(self):
        for application in pyatspi.Registry.getDesktop(0):
            if application and application.get_process_id() == self.process.pid and application.childCount:
                # Nobody here listens to what changes: everything is asked for anew.
                application.set_cache_mask(Atspi.Cache.NONE)
                return application
        return None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        try:
            self.process.wait(DEADLINE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise

    def nodes(self, node=None):
        """All that is showing, depth first."""
        for child in (self.root if node is None else node):
            if child is None:
                continue
            if node is None or child.getState().contains(pyatspi.STATE_SHOWING):
                yield child
                yield from self.nodes(child)

    def all(self, role):
        return [node for node in self.nodes() if node.getRoleName() == role]

    def names(self, role):
        return [node.name for node in self.all(role)]

    def find(self, role, name):
        """Waits until there is one."""
        return wait_for(f"{role} {name!r}",
                        lambda: next((node for node in self.all(role) if node.name == name), None))

    def press(self, role, name):
        action = self.find(role, name).queryAction()
        for index in range(action.nActions):
            if action.getName(index) == "Press":
                action.doAction(index)
                return
        raise AssertionError(f"{role} {name!r} can't be pressed")

    def size(self):
        """Of the main window, in pixels."""
        extents = self.find("frame", "Nolfa").queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        return extents.width, extents.height

    def click(self, role, name):
        """With the pointer, in the middle."""
        extents = self.find(role, name).queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        xdotool("mousemove", extents.x + extents.width // 2, extents.y + extents.height // 2, "click", 1)

    def choose(self, title, entry):
        """From the list that a combo box opens."""
        self.press("combo box", title)
        self.press("list item", entry)

    def key(self, keys):
        """To the main window: there is no window manager to hand the keyboard round."""
        xdotool("search", "--sync", "--onlyvisible", "--name", "^Nolfa$", "windowfocus", "--sync", "key", keys)


class DragSource:
    """A window of another program, with files to drag from it. Stays until the end: a drop fetches its data late."""

    X, Y = 1150, 600

    def __init__(self, binary, files):
        self.process = subprocess.Popen([binary, str(self.X), str(self.Y), *map(str, files)],
                                        env=dict(os.environ, QT_QPA_PLATFORM="xcb"), stdout=subprocess.PIPE, text=True)
        assert self.process.stdout.readline() == "shown\n"

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.communicate()

    def drag(self, x, y):
        """To a place on the screen, as a pointer travels. Returns whether the files were taken."""
        xdotool("mousemove", self.X + 50, self.Y + 50, "mousedown", 1)
        for step in (10, 20, 30):
            xdotool("mousemove", self.X + 50 + step, self.Y + 50)
            time.sleep(0.05)
        for step in range(1, 6):
            xdotool("mousemove", self.X + (x - self.X) * step // 5, self.Y + (y - self.Y) * step // 5)
            time.sleep(0.05)
        time.sleep(0.3)
        xdotool("mouseup", 1)
        return self.process.stdout.readline() == "dropped\n"


def main(cases):
    """Runs under an X server and a session bus of its own: application_test.py BINARY DRAG-SOURCE SAMPLES"""
    import unittest
    suite = unittest.TestSuite()
    for case in cases:
        suite.addTests(unittest.defaultTestLoader.loadTestsFromTestCase(case))
    result = unittest.TextTestRunner(verbosity=2).run(suite)
    sys.exit(0 if result.wasSuccessful() and result.testsRun else 1)
