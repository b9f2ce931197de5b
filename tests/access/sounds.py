"""The seven sounds, heard: the program plays into a sound server whose only device leads nowhere,
and what that device got is recorded. Each sound is a tone of its own pitch."""

import math
import os
import socket
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
LEAST_LOUDNESS = 1000  # of 32767
LEAST_QUIET = 4  # chunks between two sounds
LEAST_SHARE = 0.3  # of what is heard, where two sounds come together
# By the captions of their boxes.
PITCHES = {
    "Play on irc server connection": 500,
    "Play on irc server disconnection": 700,
    "Play when server is added": 900,
    "Play when msg is received": 1100,
    "Play when notice is recieved": 1300,
    "Play when someone parts channel": 1500,
    "Play when someone joins channel": 1700,
}


def write_tone(path, pitch):
    with wave.open(path, "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(b"".join(
            struct.pack("<h", int(16000 * math.sin(2 * math.pi * pitch * i / RATE)))
            for i in range(6 * CHUNK)))


def share_of(pitch, samples):
    """How much of what is heard is this pitch: 0 to 1 (Goertzel's filter)."""
    factor = 2 * math.cos(2 * math.pi * pitch / RATE)
    last = before = 0.0
    for sample in samples:
        last, before = sample + factor * last - before, last
    power = last * last + before * before - factor * last * before
    energy = sum(sample * sample for sample in samples)
    return 2 * power / (len(samples) * energy) if energy else 0


class Ear:
    """A private sound server and the record of all that it was given."""

    def __init__(self, folder):
        address = os.path.join(folder, "native")
        self.server = "unix:" + address
        # A server started by root asks for nothing more than to be told where to live.
        self.environment = dict(os.environ, PULSE_RUNTIME_PATH=folder, PULSE_SERVER=self.server)
        self.daemon = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
             "-L", "module-null-sink sink_name=nowhere",
             "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + address],
            env={**self.environment, "PULSE_SERVER": ""}, stderr=subprocess.DEVNULL)
        wait_for("the sound server", lambda: subprocess.run(
            ["pactl", "info"], env=self.environment, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, check=False).returncode == 0)
        self.recorder = subprocess.Popen(
            ["parec", "--device=nowhere.monitor", "--rate=%d" % RATE, "--channels=1",
             "--format=s16le", "--latency-msec=50"],
            env=self.environment, stdout=subprocess.PIPE)
        self.quiet = 0  # chunks in a row
        self.heard = []  # pitches, in the order of their chunks
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        while len(chunk := self.recorder.stdout.read(2 * CHUNK)) == 2 * CHUNK:
            samples = struct.unpack("<%dh" % CHUNK, chunk)
            if max(samples) < LEAST_LOUDNESS:
                self.quiet += 1
                continue
            self.quiet = 0
            self.heard += [p for p in PITCHES.values() if share_of(p, samples) > LEAST_SHARE]

    def expect(self, caption, perhaps=None):
        """Waits for a sound alone; `perhaps` is the caption of one that may come with it."""
        pitch = PITCHES[caption]
        wait_for("the sound of '%s'" % caption, lambda: pitch in self.heard)
        others = set(self.heard) - {pitch, PITCHES.get(perhaps)}
        assert not others, "Heard %s Hz at '%s'." % (others, caption)
        # Its end is not the beginning of the next one, and a gap of a busy machine is not its end.
        wait_for("the end of '%s'" % caption, lambda: self.quiet >= LEAST_QUIET)
        self.heard.clear()

    def end(self):
        self.recorder.kill()
        self.daemon.kill()


class Friend:
    """Somebody else on the IRC server."""

    def __init__(self, port):
        self.socket = socket.create_connection(("127.0.0.1", port), timeout=15)
        self.lines = self.socket.makefile("r", encoding="utf-8", errors="replace")
        self.say("NICK friend")
        self.say("USER friend 0 * :friend")
        self._until(" 001 ")

    def say(self, line):
        self.socket.sendall((line + "\r\n").encode())

    def join(self, room):
        self.say("JOIN " + room)
        self._until(" 366 ")

    def _until(self, part):
        for line in self.lines:
            if line.startswith("PING"):
                self.say("PONG" + line[4:].strip())
            if part in line:
                return
        raise AssertionError("The server closed before " + part)


def main(demo, folder):
    ear = Ear(folder)
    os.environ["PULSE_SERVER"] = ear.server
    brindle = window.Window(demo)
    brindle.show_tab("Options")
    brindle.select("Sounds")
    for caption, pitch in PITCHES.items():
        path = os.path.join(folder, "%d.wav" % pitch)
        write_tone(path, pitch)
        brindle.fill("Wave file: " + caption, path)
    for caption in PITCHES:
        brindle.press("Test (%s)" % caption)
        ear.expect(caption)

    brindle.show_tab("Connection")
    port = int(brindle.text("text", "Port :"))
    brindle.press("Connect")
    ear.expect("Play on irc server connection")
    brindle.select("#mailroom")
    brindle.press("Join")
    wait_for("the room", lambda: "#mailroom" in brindle.text("text", "Room"))
    friend = Friend(port)
    friend.join("#mailroom")
    ear.expect("Play when someone joins channel")
    friend.say("PRIVMSG #mailroom :Type !Tonebot send <your screen name> list for my list")
    ear.expect("Play when server is added")
    friend.say("PRIVMSG visitor :psst")
    ear.expect("Play when msg is received")
    friend.say("NOTICE visitor :psst")
    ear.expect("Play when notice is recieved")
    friend.say("PART #mailroom")
    ear.expect("Play when someone parts channel")
    brindle.show_tab("Connection")
    brindle.press("Disconnect")
    # The IRC server takes its leave with a notice.
    ear.expect("Play on irc server disconnection", perhaps="Play when notice is recieved")

    brindle.show_tab("Options")
    brindle.select("Sounds")
    brindle.fill("Wave file: " + caption, folder + "/missing.wav")
    brindle.press("Test (%s)" % caption)
    brindle.label("There is no sound file " + folder + "/missing.wav")
    for name, content in (("short.wav", "no wave"), ("broken.wav", 99 * "no wave")):
        path = os.path.join(folder, name)
        with open(path, "w", encoding="ascii") as file:
            file.write(content)
        brindle.fill("Wave file: " + caption, path)
        brindle.press("Test (%s)" % caption)
        brindle.label("Cannot play the sound " + path)
    brindle.quit()
    ear.end()


if __name__ == "__main__":
    main(sys.argv[1], tempfile.mkdtemp())
