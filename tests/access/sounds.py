"""A sound, heard: the program plays into a sound server whose only device leads nowhere, and what
that device got is listened to. Which sound is played when is told by the unit tests."""

import os
import struct
import subprocess
import sys
import tempfile
import threading
import wave

import window
from window import wait_for

RATE = 8000
CHUNK = RATE // 10  # samples that are looked at together
LEAST_QUIET = 4  # chunks between two sounds
CAPTION = "Play on irc server connection"


class Ear:
    """A private sound server, and whether its device gets a tone that is as loud as ours."""

    def __init__(self, folder):
        address = os.path.join(folder, "native")
        self.server = "unix:" + address
        # A server started by root asks for nothing more than to be told where to live.
        environment = dict(os.environ, PULSE_RUNTIME_PATH=folder, PULSE_SERVER=self.server)
        self.daemon = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
             "-L", "module-null-sink sink_name=nowhere",
             "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + address],
            env={**environment, "PULSE_SERVER": ""}, stderr=subprocess.DEVNULL)
        wait_for("the sound server", lambda: subprocess.run(
            ["pactl", "info"], env=environment, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, check=False).returncode == 0)
        self.recorder = subprocess.Popen(
            ["parec", "--device=nowhere.monitor", "--rate=%d" % RATE, "--channels=1",
             "--format=s16le", "--latency-msec=50"], env=environment, stdout=subprocess.PIPE)
        self.quiet = 1  # chunks in a row
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        while len(chunk := self.recorder.stdout.read(2 * CHUNK)) == 2 * CHUNK:
            is_loud = max(struct.unpack("<%dh" % CHUNK, chunk)) > 10000
            self.quiet = 0 if is_loud else self.quiet + 1

    def expect(self, what):
        wait_for("the sound of " + what, lambda: not self.quiet)
        # A gap of a busy machine is not its end.
        wait_for("the end of " + what, lambda: self.quiet >= LEAST_QUIET)

    def end(self):
        self.recorder.kill()
        self.daemon.kill()


def main(demo, folder):
    ear = Ear(folder)
    os.environ["PULSE_SERVER"] = ear.server
    brindle = window.Window(demo)

    def test(path):
        brindle.show_tab("Options")
        brindle.select("Sounds")
        brindle.fill("Wave file: " + CAPTION, path)
        brindle.press("Test (%s)" % CAPTION)

    for name, content in (("short.wav", "no wave"), ("broken.wav", 99 * "no wave")):
        path = os.path.join(folder, name)
        with open(path, "w", encoding="ascii") as file:
            file.write(content)
        test(path)
        brindle.label("Cannot play the sound " + path)
    path = os.path.join(folder, "tone.wav")
    with wave.open(path, "wb") as file:
        file.setparams((1, 2, RATE, 0, "NONE", None))
        file.writeframes(struct.pack("<16h", *8 * [16000], *8 * [-16000]) * 300)
    test(path)
    ear.expect("the button")
    brindle.show_tab("Connection")
    brindle.press("Connect")
    ear.expect("the connection")
    brindle.quit()
    ear.end()


if __name__ == "__main__":
    main(sys.argv[1], tempfile.mkdtemp())
