"""The main job by keys alone. What has the focus, and what is shown, is asked over AT-SPI."""

import sys

import pyatspi

import window
from window import wait_for

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


def main(demo):
    brindle = window.Window(demo)
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
    brindle.label("0 of 500 checked")
    brindle.key("ctrl+l")
    brindle.type("puzzles")
    wait_for("fewer rows", lambda: 0 < brindle.rows("Mail list") < 500)
    brindle.key("Escape")
    wait_for("all rows", lambda: brindle.rows("Mail list") == 500)
    brindle.key("space")
    brindle.label("1 of 500 checked")
    brindle.key("alt+r")  # Request Selected
    brindle.shows("Room", "<visitor> !MailBot send mailfan 1")
    brindle.shows("Room", "on the way to mailfan")

    brindle.key("alt+t")
    brindle.find("page tab list", "Options")
    walk_to(brindle, "Option pages")
    for _ in range(2):
        brindle.key("Down")
    box = brindle.find("check box", "Include timestamp on chat lines")
    brindle.key("alt+n")
    wait_for("the option", lambda: not window.has(box, pyatspi.STATE_CHECKED))

    brindle.key("alt+o")
    brindle.find("page tab list", "Room")
    walk_to(brindle, "Line to send")
    brindle.type("thanks, MailBot!")
    brindle.key("Return")
    brindle.shows("Room", "\n<visitor> thanks, MailBot!")
    brindle.quit()


if __name__ == "__main__":
    main(sys.argv[1])
