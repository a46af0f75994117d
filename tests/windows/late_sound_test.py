#!/usr/bin/env python3
"""A sound device that comes when the game is under way is heard.

    late_sound_test.py FOLDER      FOLDER holds dunkman.exe

Needs a display, Wine and PulseAudio; tools/with-desktop brings them up. The game runs at a sound server of the test's
own, which has no device at first. (Without any server Wine would settle for no sound at all until the process ends.)
"""

import array
import math
import os
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = os.path.join(os.path.abspath(sys.argv.pop(1)), "dunkman.exe")
PATIENCE = 60  # seconds that any single wait may take on a busy machine
FRAMES_A_SECOND = 48000


def eventually(happened):
    end = time.monotonic() + PATIENCE
    while not happened():
        if time.monotonic() > end:
            return False
        time.sleep(0.2)
    return True


class LateSound(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        socket = os.path.join(self.folder.name, "socket")
        environment = dict(os.environ, HOME=self.folder.name, XDG_RUNTIME_DIR=self.folder.name,
                           PULSE_RUNTIME_PATH=self.folder.name)
        del environment["PULSE_SERVER"]
        self.start(["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
                    "--log-level=error", "-L", f"module-native-protocol-unix auth-anonymous=1 socket={socket}"],
                   env=environment)
        self.environment = dict(os.environ, PULSE_SERVER=f"unix:{socket}", WINEDEBUG="-all,warn+debugstr")
        self.assertTrue(eventually(lambda: self.ask("info").returncode == 0), "the sound server did not come up")

    def start(self, command, **options):
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, **options)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def ask(self, *words):
        return subprocess.run(["pactl", *words], env=self.environment, capture_output=True, text=True, check=False)

    def listen(self, seconds):
        """Root of the mean square of what the device plays, 1 for full scale."""
        size = int(seconds * FRAMES_A_SECOND) * 4
        recorder = self.start(["parec", "--device=late.monitor", "--format=s16le", f"--rate={FRAMES_A_SECOND}",
                               "--channels=2"], env=self.environment, stdout=subprocess.PIPE)
        samples = array.array("h", recorder.stdout.read(size))
        recorder.kill()
        recorder.stdout.close()
        return math.sqrt(sum(sample * sample for sample in samples) / len(samples)) / 32768

    def test_a_device_that_comes_after_the_start_is_played_on(self):
        self.assertEqual(self.ask("list", "short", "sinks").stdout, "")
        with tempfile.TemporaryFile() as log:
            self.start(["wine", PROGRAM], cwd="data", env=self.environment, stdout=log, stderr=log)

            def story_is_told():
                log.seek(0)
                return b"screen Intro" in log.read()

            self.assertTrue(eventually(story_is_told), "the story did not begin")
        self.ask("load-module", "module-null-sink", "sink_name=late", f"rate={FRAMES_A_SECOND}", "channels=2")
        self.assertTrue(eventually(lambda: self.ask("list", "short", "sink-inputs").stdout != ""),
                        "the game did not open the device")
        self.assertTrue(eventually(lambda: self.listen(1) > 0.01), "nothing was heard")


if __name__ == "__main__":
    unittest.main()
