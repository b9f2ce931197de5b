"""The main job twice over: by keys alone, and by the actions that a screen reader takes. What is shown
is asked over AT-SPI; the answers come from a real IRC server and a mail bot."""

import sys

import pyatspi

import window
from window import wait_for

MAILS = 500
MOST_STEPS = 40


def walk_to(brindle, name):
    """Presses Tab until the control with that name has the focus."""
    for _ in range(MOST_STEPS):
        here = wait_for("a focus", brindle.focused)
        if here.name.startswith(name):
            return
        brindle.key("Tab")
        wait_for("the next focus", lambda here=here: brindle.focused() != here)
    raise AssertionError("Tab does not lead to " + name)


def check(brindle, row, table="Mail list"):
    """Checks a row of a list by its own action."""
    found = brindle.find("table", table)
    cell = wait_for("row %d" % row, lambda: found.queryTable().getAccessibleAt(row, 0))
    brindle.act(cell, "Toggle")
    wait_for("the check of row %d" % row, lambda: window.has(cell, pyatspi.STATE_CHECKED))


def by_keys(brindle):
    brindle.find("page tab", "Connection")
    wait_for("the window in front", brindle.focused)
    brindle.key("alt+e")
    brindle.find("page tab list", "Connection")
    brindle.key("alt+n")  # Connect
    brindle.shows("Status", "You are now connected.")
    walk_to(brindle, "Channels")
    brindle.key("space")
    wait_for("the room", lambda: window.has(
        brindle.find("list item", "#mailroom"), pyatspi.STATE_SELECTED))
    brindle.key("Return")
    brindle.shows("Room", "Now talking in #mailroom")

    brindle.key("ctrl+o")
    brindle.find("text", "File name:")
    brindle.type("MailBot list.txt")
    # The list of completions may take a Return for itself.
    brindle.key_until("Return", lambda: not brindle.everything("text", "File name:"))
    brindle.label("0 of %d checked" % MAILS)
    brindle.key("ctrl+l")
    brindle.type("puzzles")
    wait_for("fewer rows", lambda: 0 < brindle.rows("Mail list") < MAILS)
    brindle.key("Escape")
    wait_for("all rows", lambda: brindle.rows("Mail list") == MAILS)
    brindle.key("space")
    brindle.label("1 of %d checked" % MAILS)
    brindle.key("alt+r")  # Request Selected
    brindle.shows("Room", "<visitor> !MailBot send mailfan 1")
    brindle.shows("Room", "on the way to mailfan")
    brindle.key("alt+o")
    brindle.find("page tab list", "Room")
    walk_to(brindle, "Line to send")
    brindle.type("thanks, MailBot!")
    brindle.key("Return")
    brindle.shows("Room", "<visitor> thanks, MailBot!")


def by_actions(brindle):
    brindle.show_tab("List")
    brindle.act(brindle.menu_item("From File"), "Press")
    brindle.fill("File name:", "MailBot list.txt")
    brindle.press("Open")
    brindle.label("0 of %d checked" % MAILS)
    check(brindle, 1)
    brindle.press("Find")
    brindle.fill("Text to search for", "puzzles")
    brindle.press("Search")
    check(brindle, 0, "Search results")  # which is the first mail
    brindle.press("Send Checked to List")
    brindle.press("OK")
    brindle.press("Return")
    brindle.label("2 of %d checked" % MAILS)
    brindle.press("Request Selected")
    brindle.shows("Room", "<visitor> !MailBot send mailfan 1-2")

    brindle.show_tab("Options")
    brindle.select("Room")
    box = brindle.find("check box", "Include timestamp on chat lines")
    assert box.description == "Display the time the chatline was received.", box.description
    brindle.act(box, "Toggle")
    brindle.fill("Line to send", "no time")
    brindle.press("Send")
    brindle.shows("Room", "\n<visitor> no time")


def main(demo):
    brindle = window.Window(demo)
    by_keys(brindle)
    by_actions(brindle)
    brindle.quit()


if __name__ == "__main__":
    main(sys.argv[1])
