"""Transfers at full length, and programs that are killed at any moment: endurance.py BIN_FOLDER MEBIBYTES KILLS

A file of so many mebibytes goes up and comes back within the promised memory. Then uploads and downloads are killed so many
times each, and so is the service; nothing may be torn, and what runs next has to succeed. Prints a line for each trial.
"""

import argparse
import filecmp
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from demo_parts import Failed, Quillbox, Service  # pylint: disable=wrong-import-position

MEBIBYTE = 1 << 20
PART_MEBIBYTES = 8
# What a transfer may hold beside the parts in flight, which are as many as half of the processors.
MEMORY_MEBIBYTES = max(1, os.cpu_count() // 2) * PART_MEBIBYTES + 32
KILLED_MEBIBYTES = 48


def write_file(path, mebibytes):
    """Bytes that are the same in no two mebibytes of no two files."""
    block = bytearray(os.urandom(MEBIBYTE))
    with open(path, "wb") as file:
        for number in range(mebibytes):
            block[:8] = number.to_bytes(8, "little")
            file.write(block)


class Trials:
    def __init__(self, programs, folder, service):
        self.folder = folder
        self.service = service
        self.quillbox = Quillbox(programs / "quillbox", service.address, folder)
        self.quillbox.sign_in()
        self.words = folder / "words"

    def start(self, *arguments):
        with self.words.open("wb") as words:
            return subprocess.Popen([self.quillbox.program, "--json", *arguments], env=self.quillbox.environment,
                                    cwd=self.folder, stdout=subprocess.DEVNULL, stderr=words)

    def succeed(self, *arguments):
        """Runs to its end; gives the seconds and the largest memory in mebibytes."""
        began = time.monotonic()
        process = self.start(*arguments)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            raise Failed(f"quillbox {' '.join(map(str, arguments))} ended with status {process.returncode}: "
                         + self.words.read_text(encoding="utf-8").strip())
        return time.monotonic() - began, usage.ru_maxrss / 1024

    def id_of(self, name):
        return next(item["id"] for item in self.quillbox.children("root") if item["fileName"] == name)

    def bring_back(self, name):
        """The file is in the cloud whole, byte for byte."""
        usage = self.succeed("download", "--file-id", self.id_of(name), "--to", self.folder / "back")
        self.require_same(name)
        (self.folder / "back").unlink()
        return usage

    def require_same(self, name):
        if not filecmp.cmp(self.folder / name, self.folder / "back", shallow=False):
            raise Failed(f"{name} came back with other bytes")

    def large_file(self, mebibytes):
        write_file(self.folder / "large", mebibytes)
        for what, (seconds, memory) in (("up", self.succeed("upload", "large")), ("down", self.bring_back("large"))):
            print(f"{mebibytes} MiB {what}: {seconds:.1f} s, {memory:.1f} MiB of memory", flush=True)
            if memory > MEMORY_MEBIBYTES:
                raise Failed(f"{what}: {memory:.1f} MiB of memory, where {MEMORY_MEBIBYTES} are promised")
        (self.folder / "large").unlink()

    def killed(self, times, start, kill, check, prefix=""):
        """Kills at moments spread over the length of a whole run; gives how many fell before the end of one."""
        began = time.monotonic()
        start(prefix + "whole").wait()
        length = time.monotonic() - began
        check(prefix + "whole")
        caught = 0
        for number in range(times):
            process = start(f"{prefix}{number}")
            time.sleep(random.uniform(0, length))
            caught += process.poll() is None
            kill(process)
            process.wait()
            check(f"{prefix}{number}")
        return f"{caught} of {times} fell in the middle"

    def killed_uploads(self, times, kill, prefix):
        def start(name):
            write_file(self.folder / name, KILLED_MEBIBYTES)
            return self.start("upload", name)

        def check(name):
            self.succeed("upload", name)
            self.bring_back(name)
            (self.folder / name).unlink()

        return self.killed(times, start, kill, check, prefix)

    def killed_downloads(self, times):
        write_file(self.folder / "source", KILLED_MEBIBYTES)
        self.succeed("upload", "source")
        source = self.id_of("source")
        back = self.folder / "back"

        def start(_):
            back.unlink(missing_ok=True)
            return self.start("download", "--file-id", source, "--to", back)

        def check(_):
            if back.exists():
                self.require_same("source")
            self.bring_back("source")

        return self.killed(times, start, subprocess.Popen.kill, check)


def main(programs, mebibytes, kills):
    with tempfile.TemporaryDirectory(prefix="quillbox-endurance-") as name:
        folder = pathlib.Path(name)
        # The file, what the service keeps of it, and what comes back; then, for each kill of an upload or of the service,
        # what was under way, which keeps its room, and the whole file.
        room = (3 * mebibytes + (4 * kills + 8) * KILLED_MEBIBYTES) * MEBIBYTE
        if shutil.disk_usage(folder).free < room:
            raise Failed(f"there is not enough room in {folder.parent}; TMPDIR names another place")
        with Service(programs / "quillboxd", folder, "--quota", str(room)) as service:
            trials = Trials(programs, folder, service)
            trials.large_file(mebibytes)
            print("uploads killed:", trials.killed_uploads(kills, subprocess.Popen.kill, "a "), flush=True)
            print("downloads killed:", trials.killed_downloads(kills), flush=True)
            print("the service killed:",
                  trials.killed_uploads(kills, lambda _: service.kill_and_restart(), "b "), flush=True)


if __name__ == "__main__":
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("programs", type=lambda name: pathlib.Path(name).resolve())
    arguments.add_argument("mebibytes", type=int)
    arguments.add_argument("kills", type=int)
    try:
        main(**vars(arguments.parse_args()))
    except Failed as problem:
        sys.exit(f"endurance.py: {problem}")
