"""A copy of the project to break things in: kept up to date by content, built with its own folder, tested bounded.

The developer's own tree is only ever read. Each worker has a copy of its own, since two breakages at once would hide
each other.
"""

import fcntl
import filecmp
import hashlib
import os
import pathlib
import re
import selectors
import shutil
import signal
import subprocess
import tempfile
import time

QUICK_FLAGS = "-O0 -g0"  # a breakage is compiled once and run once: optimising it would cost more than it saves
BUILD_LIMIT = 1200  # seconds; a header that every window includes takes long on a small machine
PATIENCE = 10  # times what a test takes in unbroken code, and not less than the following
LEAST_LIMIT = 20  # seconds
RESULT = re.compile(r"\[ +(RUN|OK|FAILED|SKIPPED) +\] ([\w./]+)(?:.*\((\d+) ms\))?")


class Stopped(Exception):
    """The run was broken off from outside."""


class Processes:
    """Every process that we have started and not yet seen ending, so that Ctrl+C leaves none behind."""

    def __init__(self):
        self.running = set()
        self.stopped = False

    def start(self, command, **options):
        if self.stopped:
            raise Stopped
        process = subprocess.Popen(
            command, start_new_session=True, stdin=subprocess.DEVNULL, stderr=subprocess.STDOUT, **options
        )
        self.running.add(process)
        return process

    def end(self, process):
        """Also what it has left behind: a test that crashed may have second processes of its own."""
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()
        self.running.discard(process)

    def end_all(self):
        self.stopped = True
        for process in list(self.running):
            self.end(process)


PROCESSES = Processes()


class BuildFailed(Exception):
    """`is_code`: the compiler or the linker refused it. Else the built program failed while making a delivered file."""

    def __init__(self, target, output):
        super().__init__(output)
        failed = re.findall(r"^FAILED: (\S+)", output, re.MULTILINE)
        self.step = failed[0] if failed else f"{target} (no end)"
        self.is_code = bool(failed) and not self.step.startswith("delivered/")


class Workshop:
    def __init__(self, root, folder, lock):
        self.root = root
        self.source = folder / "source"
        self.build_folder = self.source / "build"
        self.lock = lock  # held as long as we live

    @classmethod
    def first_free(cls, root, folder):
        """The first copy that nobody works in; another run may be going on."""
        number = 1
        while True:
            place = folder / f"worker-{number}"
            place.mkdir(parents=True, exist_ok=True)
            lock = open(place / "lock", "w")
            try:
                fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
                return cls(root, place, lock)
            except BlockingIOError:
                lock.close()
                number += 1

    def refresh(self):
        """Takes over what differs, and only that: everything else stays built. Gives back a sign of the contents."""
        listed = subprocess.run(
            ["git", "-C", self.root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            check=True, capture_output=True,
        ).stdout.decode()  # fmt: skip
        wanted = {name for name in listed.split("\0") if name and (self.root / name).is_file()}
        for name in sorted(wanted):
            mine, theirs = self.source / name, self.root / name
            if not mine.is_file() or not filecmp.cmp(mine, theirs, shallow=False):
                mine.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(theirs, mine)
        for folder, folders, files in os.walk(self.source):
            if pathlib.Path(folder) == self.source and "build" in folders:
                folders.remove("build")
            for file in files:
                path = pathlib.Path(folder, file)
                if str(path.relative_to(self.source)) not in wanted:
                    path.unlink()
        contents = hashlib.sha256()
        for name in sorted(name for name in wanted if not name.startswith("tools/mutate/")):
            contents.update(name.encode() + b"\0" + (self.source / name).read_bytes())
        return contents.hexdigest()

    def configure(self):
        if not (self.build_folder / "build.ninja").exists():
            alike = self.source / "tools" / "mutate" / "alike.cmake"
            options = [f"-DCMAKE_CXX_FLAGS={QUICK_FLAGS}", f"-DCMAKE_PROJECT_INCLUDE={alike}"]
            self.run_build(["cmake", "-S", ".", "-B", "build", "-G", "Ninja", *options], "cmake")

    def build(self, targets, jobs=1):
        """Raises BuildFailed."""
        self.run_build(["ninja", "-C", "build", f"-j{jobs}", *targets], " ".join(targets))

    def run_build(self, command, target):
        # The copies lie in different folders; ccache is to take the objects of one for the other all the same.
        environment = dict(
            os.environ,
            CCACHE_BASEDIR=str(self.source),
            CCACHE_NOHASHDIR="1",
            CCACHE_SLOPPINESS="pch_defines,time_macros,include_file_mtime,include_file_ctime",
        )
        process = PROCESSES.start(command, cwd=self.source, env=environment, stdout=subprocess.PIPE)
        try:
            output = process.communicate(timeout=BUILD_LIMIT)[0].decode(errors="replace")
        except subprocess.TimeoutExpired:
            output = "The build did not end."
        finally:
            PROCESSES.end(process)
        if PROCESSES.stopped:
            raise Stopped
        if process.returncode != 0:
            raise BuildFailed(target, output)

    def run_tests(self, program, names, usual):
        """Runs the tests that the filter `names` takes, up to the first that fails, crashes or does not end.

        Gives back what noticed the breakage, or None, and the seconds of each test that passed. `usual` holds the
        seconds of each test in unbroken code.
        """
        place = tempfile.mkdtemp(prefix="mutate-")
        os.chmod(place, 0o755)  # some tests become somebody else, who has to find his files
        environment = dict(
            os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", TMPDIR=place, HOME=place, XDG_CONFIG_HOME=place
        )
        command = [str(self.build_folder / "tests" / program), f"--gtest_filter={names}"]
        process = PROCESSES.start(command, cwd=place, env=environment, stdout=subprocess.PIPE)
        try:
            watched = Watched(process, program, usual)
            noticed = watched.first_failure()
        finally:
            PROCESSES.end(process)
            process.stdout.close()
            shutil.rmtree(place, ignore_errors=True)
        if PROCESSES.stopped:
            raise Stopped
        return noticed, watched.seconds


class Watched:
    """A running test program, read line by line as it writes."""

    def __init__(self, process, program, usual):
        self.process = process
        self.program = program
        self.usual = usual
        self.test = None
        self.since = time.monotonic()
        self.seconds = {}
        self.rest = b""

    def first_failure(self):
        with selectors.DefaultSelector() as selector:
            selector.register(self.process.stdout, selectors.EVENT_READ)
            while True:
                if selector.select(timeout=0.2):
                    written = os.read(self.process.stdout.fileno(), 65536)
                    failed = self.read(written)
                    if failed:
                        return failed
                    if not written:
                        return self.ending()
                elif self.process.poll() is not None:  # a process that it left behind keeps the pipe open
                    return self.ending()
                if time.monotonic() - self.since > self.limit():
                    return f"{self.where()} (no end)"

    def limit(self):
        return max(LEAST_LIMIT, PATIENCE * self.usual.get(self.test, 0))

    def where(self):
        return self.test or self.program

    def read(self, written):
        lines = (self.rest + written).split(b"\n")
        self.rest = lines.pop()
        for line in lines:
            match = RESULT.search(line.decode(errors="replace"))
            if not match:
                continue
            self.since = time.monotonic()
            self.test = match[2] if match[1] == "RUN" else None
            if match[1] == "FAILED":
                return match[2]
            if match[1] == "OK":
                self.seconds[match[2]] = int(match[3] or 0) / 1000
        return None

    def ending(self):
        try:
            self.process.wait(timeout=LEAST_LIMIT)
        except subprocess.TimeoutExpired:
            return f"{self.where()} (no end)"
        return f"{self.where()} (crash)" if self.process.returncode != 0 else None
