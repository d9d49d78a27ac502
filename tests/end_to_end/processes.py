"""Child processes that never outlive a test, and waiting for what they do."""

import os
import shutil
import subprocess
import time

PATIENCE = 25  # seconds; on a busy machine everything takes longer


def wait_until(condition, what, patience=PATIENCE):
    """The condition's answer once it is true; an AssertionError when it never is."""
    deadline = time.monotonic() + patience
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() >= deadline:
            raise AssertionError(f"waited {patience} s in vain until {what}")
        time.sleep(0.01)


def bare_environment(folder):
    """Nothing of the desktop that runs the tests; whatever is written at home goes into the folder."""
    environment = {
        "PATH": os.environ["PATH"],
        "HOME": str(folder),
        "XDG_RUNTIME_DIR": str(folder),
        "LC_ALL": "C.UTF-8",
    }
    environment.update({name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")})
    return environment


class ChildProcess:
    """A program that is running; what it prints goes to files in the folder."""

    def __init__(self, arguments, environment, folder, **options):
        name = os.path.basename(str(arguments[0]))
        if not shutil.which(str(arguments[0])):
            raise AssertionError(f"{name} is not installed: nothing can be proved without it")
        self._output = folder / f"{name}.{id(self)}.out"
        self._errors = folder / f"{name}.{id(self)}.err"
        with self._output.open("wb") as output, self._errors.open("wb") as errors:
            self._process = subprocess.Popen(
                # Even a test that is killed leaves nobody behind.
                ["setpriv", "--pdeathsig", "KILL", *map(str, arguments)],
                env=environment, stdin=subprocess.DEVNULL, stdout=output, stderr=errors, **options)

    @property
    def output_file(self):
        return self._output

    @property
    def output(self):
        return self._output.read_text(errors="replace")

    @property
    def errors(self):
        return self._errors.read_text(errors="replace")

    @property
    def process_id(self):
        return self._process.pid

    def is_running(self):
        return self._process.poll() is None

    def send(self, signal):
        self._process.send_signal(signal)

    def wait(self, patience=PATIENCE):
        """The exit code once it has ended; negative for a signal."""
        return self._process.wait(patience)

    def kill(self):
        self._process.kill()
        self._process.wait()
