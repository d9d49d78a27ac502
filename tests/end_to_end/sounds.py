"""A sound server that nobody hears, and comparing what it was given with what should have been heard."""

import array
import os
import subprocess
from pathlib import Path

from processes import ChildProcess, wait_until

RATE = 44100
AUDIBLE = 100  # of 32768; what stays under it is silence


class SoundServer:
    """A server of a test's own, with a recorder at its only sink."""

    def __init__(self, folder, environment):
        self._folder = folder
        self._recorder = None
        self._socket = folder / "native"
        self._server_environment = environment
        self._environment = {**environment, "PULSE_SERVER": self.address}
        self.start()

    def start(self):
        """At the same address as before, where it was stopped; what was heard before is forgotten."""
        self._socket.unlink(missing_ok=True)  # a server that was killed leaves it
        self._server = ChildProcess(
            ["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
             "-L", f"module-null-sink sink_name=t norewinds=1 rate={RATE} channels=1",
             "-L", f"module-native-protocol-unix auth-anonymous=1 socket={self._socket}"],
            self._server_environment, self._folder)
        try:
            wait_until(self._is_listening, "the sound server listens")
            self._recorder = ChildProcess(
                ["parec", "-d", "t.monitor", "--raw", "--format=s16le", f"--rate={RATE}", "--channels=1",
                 "--latency-msec=20"],
                self._environment, self._folder)
            wait_until(self.count, "samples flow")
        except BaseException:
            self.stop()
            raise

    def _is_listening(self):
        if not self._server.is_running():
            raise AssertionError(f"the sound server did not start: {self._server.errors}")
        return self._socket.exists()

    @property
    def address(self):
        return f"unix:{self._socket}"

    def stop(self):
        if self._recorder:
            self._recorder.kill()
        self._server.kill()

    def count(self):
        """How many samples have been heard so far, silence included."""
        return os.path.getsize(self._recorder.output_file) // 2

    def heard(self, begin=0, end=None):
        samples = array.array("h", self._recorder.output_file.read_bytes()[:2 * self.count()])
        return samples[begin:end]

    def wait_for(self, seconds):
        """Until this much more has been heard."""
        goal = self.count() + int(seconds * RATE)
        wait_until(lambda: self.count() >= goal, f"{seconds} s more are heard")

    def wait_until_audible(self, begin):
        wait_until(lambda: is_audible(self.heard(begin)), "something is heard")


def is_audible(samples):
    return len(samples) > 0 and max(max(samples), -min(samples)) > AUDIBLE


def level(samples):
    return (sum(sample * sample for sample in samples) / len(samples)) ** 0.5


def run_tool(name, *arguments):
    tool = Path(os.environ["ORUVANE_SOUND_TOOLS"]) / name
    return subprocess.run([tool, *arguments], check=True, capture_output=True).stdout


def decoded(path):
    return array.array("h", run_tool("decode_clip", path))


def find(folder, sound, searched):
    """Where in the searched samples the sound is most likely: (offset, correlation)."""
    paths = folder / "sound", folder / "searched"
    for path, samples in zip(paths, (sound, searched)):
        path.write_bytes(samples.tobytes())
    offset, correlation = run_tool("find_sound", *paths).split()
    return int(offset), float(correlation)
