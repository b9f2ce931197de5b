"""Runs one script with a screen, a window manager and a bus of its own:

    stage.py SCRIPT PROGRAM...

All of it lies in a folder of its own and ends with this process.
"""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

MOST_SECONDS = 150


def start_screen():
    """Starts Xvfb on a display that is free, and returns it with the display's name."""
    reading, writing = os.pipe()
    screen = subprocess.Popen(
        ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
        pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as told:
        number = told.readline().strip()  # an end without a word is read as nothing
    if not number:
        sys.exit("Xvfb did not start.")
    return screen, ":" + number


def start_manager(environment):
    """Starts a window manager and waits until it manages: a window that is there before it does
    would never get the keyboard."""
    manager = subprocess.Popen(["openbox"], env=environment, stderr=subprocess.DEVNULL)
    end = time.monotonic() + MOST_SECONDS / 5
    while subprocess.run(["xdotool", "get_num_desktops"], env=environment, check=False,
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode != 0:
        if time.monotonic() > end:
            sys.exit("The window manager did not start.")
        time.sleep(0.05)
    return manager


def run(script, programs, folder):
    screen, display = start_screen()
    runtime = os.path.join(folder, "runtime")
    os.mkdir(runtime, 0o700)
    environment = dict(os.environ)
    for name in ("DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "WAYLAND_DISPLAY"):
        environment.pop(name, None)
    environment.update(
        DISPLAY=display, HOME=folder, TMPDIR=folder, XDG_RUNTIME_DIR=runtime, LC_ALL="C.UTF-8",
        QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_ACCESSIBILITY="1",
        PYTHONDONTWRITEBYTECODE="1")
    manager = start_manager(environment)
    inside = subprocess.Popen(
        ["dbus-run-session", "--", sys.executable, script, *programs],
        env=environment, start_new_session=True)
    try:
        return inside.wait(timeout=MOST_SECONDS)
    except subprocess.TimeoutExpired:
        print("The script took too long.", file=sys.stderr)
        return 1
    finally:
        try:
            os.killpg(inside.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        manager.kill()
        screen.kill()
        manager.wait()
        screen.wait()


def main():
    # Only the processes of this test may get in, but an IRC server started by root is another user.
    folder = tempfile.mkdtemp(prefix="access")
    os.chmod(folder, 0o711)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    try:
        return run(sys.argv[1], sys.argv[2:], folder)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
