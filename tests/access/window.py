"""The running program as assistive technology sees it: a tree of named things with roles.

Everything is found by role and name, as a user of a screen reader finds it; what is waited for has a
bound.
"""

import contextlib
import subprocess
import sys
import time

import pyatspi
from gi.repository import GLib

# A look at the whole tree takes seconds on a busy machine.
PATIENCE_SECONDS = 30
PAUSE_SECONDS = 0.02


def wait_for(what, condition):
    """The first true value of `condition`. What is gone while it is looked at is looked at again."""
    end = time.monotonic() + PATIENCE_SECONDS
    while True:
        try:
            value = condition()
        except (LookupError, RuntimeError, NotImplementedError, GLib.GError):
            value = None
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError("Waited in vain for " + what)
        time.sleep(PAUSE_SECONDS)


def walk(thing):
    yield thing
    # The rows of a long list are asked for by number, never walked.
    if thing.getRoleName() not in ("table", "tree table"):
        for child in thing:
            if child is not None:
                yield from walk(child)


def has(thing, state):
    return thing.getState().contains(state)


class Window:
    """The program; started on a stage of its own: with an IRC server and a mail bot."""

    def __init__(self, demo):
        self.process = subprocess.Popen([demo])
        self.root = wait_for("the program", self._root)

    def _root(self):
        if self.process.poll() is not None:
            sys.exit("The program ended with %s." % self.process.returncode)
        for program in pyatspi.Registry.getDesktop(0):
            if program is not None and program.name == "Brindle":
                # Asked anew each time: nobody here listens to what changes.
                program.set_cache_mask(pyatspi.Atspi.Cache.NONE)
                return program
        return None

    def everything(self, role=None, name=None):
        """All that is shown, with that role and that beginning of its name."""
        return [thing for thing in walk(self.root)
                if (role is None or thing.getRoleName() == role)
                and (name is None or thing.name.startswith(name))
                and has(thing, pyatspi.STATE_SHOWING)]

    def find(self, role, name):
        return wait_for("the %s '%s'" % (role, name), lambda: self.everything(role, name))[0]

    def menu_item(self, name):
        """An entry of a menu, whether the menu is open or not."""
        return wait_for("the menu item " + name, lambda: [
            thing for thing in walk(self.root)
            if thing.getRoleName() == "menu item" and thing.name == name])[0]

    def act(self, thing, action):
        # A busy program may answer too late, and is asked again.
        actions = wait_for("the actions", thing.queryAction)
        names = wait_for("their names", lambda: [
            actions.getName(i).lower() for i in range(actions.nActions)])
        # A box that opens holds the answer back until it is closed.
        with contextlib.suppress(GLib.GError):
            actions.doAction(names.index(action.lower()))

    def press(self, name):
        button = wait_for("the enabled button " + name, lambda: [
            thing for thing in self.everything("push button", name)
            if has(thing, pyatspi.STATE_ENABLED)])[0]
        self.act(button, "Press")

    def show_tab(self, name):
        self.act(self.find("page tab", name), "Press")
        self.find("page tab list", name)  # which is named like its current tab

    def select(self, name):
        """Makes an entry of a list the selected one."""
        entry = self.find("list item", name)
        if not wait_for("its state", entry.getState).contains(pyatspi.STATE_SELECTED):
            self.act(entry, "Toggle")

    def text(self, name):
        """What a field or a view holds, on whatever tab it is."""
        content = wait_for("the text " + name, lambda: [
            thing for thing in walk(self.root)
            if thing.getRoleName() == "text" and thing.name.startswith(name)])[0].queryText()
        return content.getText(0, content.characterCount)

    def fill(self, name, content):
        field = self.find("text", name)
        wait_for("a field", lambda: field.queryEditableText().setTextContents(content) or True)
        wait_for("the text in " + name, lambda: self.text(name) == content)

    def shows(self, view, part):
        """Waits until a chat view shows `part`."""
        wait_for("'%s' in %s" % (part, view), lambda: part in self.text(view))

    def label(self, part):
        """Waits for a line of text on the screen that contains `part`."""
        return wait_for("the label '%s'" % part, lambda: [
            thing for thing in self.everything("label") if part in thing.name])[0]

    def key(self, keys):
        subprocess.run(["xdotool", "key", keys], check=True)

    def key_until(self, keys, condition):
        """Presses a key again whenever nothing has come of it for a second."""
        pressed = [0.0]

        def has_come():
            if condition():
                return True
            if time.monotonic() - pressed[0] > 1:
                pressed[0] = time.monotonic()
                self.key(keys)
            return False

        wait_for("what " + keys + " does", has_come)

    def rows(self, table):
        return self.find("table", table).queryTable().nRows

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "1", text], check=True)

    def quit(self):
        self.key("ctrl+q")
        code = self.process.wait(timeout=PATIENCE_SECONDS)
        assert code == 0, "The program ended with %s." % code

    def focused(self):
        """What has the focus: the innermost, since what holds it says so too. Entries say so whenever
        they are the current ones."""
        found = [thing for thing in self.everything()
                 if thing.getRoleName() not in ("page tab", "list item", "table cell")
                 and has(thing, pyatspi.STATE_FOCUSED)]
        return found[-1] if found else None
