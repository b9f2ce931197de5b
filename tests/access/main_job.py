"""The main job, done as with a screen reader: everything is found by role and name and worked by its
actions; the answers come from a real IRC server and a mail bot."""

import sys

import pyatspi

import window
from window import wait_for

MAILS = 500


def load_list(brindle):
    brindle.show_tab("List")
    brindle.act(brindle.menu_item("From File"), "Press")
    brindle.fill("File name:", "MailBot list.txt")
    brindle.press("Open")
    brindle.label("0 of %d checked" % MAILS)


def check(brindle, row, table="Mail list"):
    """Checks a row of a list by its own action."""
    cell = brindle.find("table", table).queryTable().getAccessibleAt(row, 0)
    brindle.act(cell, "Toggle")
    wait_for("the check of row %d" % row, lambda: window.has(cell, pyatspi.STATE_CHECKED))


def main(demo):
    brindle = window.Window(demo)
    brindle.show_tab("Connection")
    brindle.press("Connect")
    brindle.shows("Status", "You are now connected.")
    brindle.select("#mailroom")
    brindle.press("Join")
    brindle.shows("Room", "Now talking in #mailroom")
    wait_for("the bot among who is here", lambda: [
        entry for entry in brindle.everything("list item") if "MailBot" in entry.name])

    load_list(brindle)
    for row in (1, 2, 3):
        check(brindle, row)
    brindle.label("3 of %d checked" % MAILS)

    brindle.fill("Filter titles", "puzzles")
    wait_for("fewer rows", lambda: 0 < brindle.rows("Mail list") < MAILS)
    brindle.label("3 of %d checked" % MAILS)
    brindle.fill("Filter titles", "")
    wait_for("all rows", lambda: brindle.rows("Mail list") == MAILS)

    brindle.press("Find")
    brindle.fill("Text to search for", "puzzles")
    brindle.press("Search")
    check(brindle, 0, "Search results")
    brindle.press("Send Checked to List")
    brindle.press("OK")
    brindle.press("Return")
    brindle.label("4 of %d checked" % MAILS)

    brindle.press("Request Selected")
    # The first title with puzzles is that of mail 1.
    brindle.shows("Room", "<visitor> !MailBot send mailfan 1-4")
    brindle.shows("Room", "on the way to mailfan")

    # A run that takes a while, and does not come to its end.
    for row in range(0, 120, 2):
        check(brindle, row)
    brindle.press("Request Selected")
    brindle.press("Stop")
    wait_for("the end of the run", lambda: not brindle.everything("push button", "Stop"))
    left = brindle.label("of %d checked" % MAILS).name
    assert int(left.split()[0]) > 20, left

    brindle.fill("Line to send", "thanks, MailBot!")
    brindle.press("Send")
    brindle.shows("Room", "<visitor> thanks, MailBot!")

    brindle.show_tab("Options")
    brindle.select("Room")
    box = brindle.find("check box", "Include timestamp on chat lines")
    assert box.description == "Display the time the chatline was received.", box.description
    brindle.act(box, "Toggle")
    wait_for("the option", lambda: not window.has(box, pyatspi.STATE_CHECKED))
    brindle.fill("Line to send", "no time")
    brindle.press("Send")
    brindle.shows("Room", "\n<visitor> no time")
    brindle.quit()


if __name__ == "__main__":
    main(sys.argv[1])
