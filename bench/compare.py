"""Runs every comparison, interleaved and repeated, and prints a table of medians and ratios.

usage: compare.py FOLDER_OF_PROGRAMS

A missed target is said in the table and is no failure of this program.
"""

import contextlib
import json
import os
import pathlib
import re
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
import urllib.request

PROGRAMS = pathlib.Path(sys.argv[1])
GIB = 1 << 30
TRANSFER_ROUNDS = 5
CALL_ROUNDS = 41
DECODE_INSTRUCTIONS_A_BYTE = 18
SMALL_FILES = 5000
SMALL_FOLDERS = 200
SMALL_SIZE = 4096
WALKED_FILES = 200_000
CONTACTS = [1_000, 100_000, 200_000]
PROGRAM_ROUNDS = 9
UPLOADS_AT_ONCE = 4
# A measurement that takes longer than this hangs.
TIME_OUT = 120
# Small calls are judged with both sides on one processor: which core a thread wakes on is noise otherwise.
PINNED = ["taskset", "-c", str(max(os.sched_getaffinity(0)))]


def environment():
    """Loopback alone, whatever proxies and certificates the machine names."""
    return {key: value for key, value in os.environ.items()
            if not key.lower().endswith("_proxy") and not key.startswith(("AWS_", "RCLONE_"))}


def run(command, extra=None):
    result = subprocess.run([str(word) for word in command], env=environment() | (extra or {}), text=True,
                            capture_output=True, timeout=TIME_OUT)
    if result.returncode != 0:
        sys.exit(f"scripts/bench: {' '.join(map(str, command))}: {result.stderr.strip()}")
    return result


def client(*arguments, pinned=False):
    command = [PROGRAMS / "bench_client", *arguments]
    return json.loads(run(PINNED + command if pinned else command).stdout or "null")


@contextlib.contextmanager
def server(folder, pinned=False):
    """The other side, as its port."""
    port_file = folder / "port"
    port_file.unlink(missing_ok=True)
    command = [PROGRAMS / "bench_server", "--port-file", port_file]
    process = subprocess.Popen([str(word) for word in (PINNED if pinned else []) + command])
    try:
        deadline = time.monotonic() + 10
        while not port_file.exists():
            if time.monotonic() > deadline:
                sys.exit("scripts/bench: bench_server does not answer")
            time.sleep(0.01)
        yield port_file.read_text().strip()
    finally:
        process.kill()
        process.wait()


class Table:
    def __init__(self):
        self.rows = [["work", "ours", "other", "ratio", "target", "met"]]

    def add(self, work, ours, other, ratio, target, met):
        self.rows.append([work, ours, other, f"{ratio:.2f}", target, "yes" if met else "NO"])
        print(f"  {work}: {ratio:.2f} ({target})", file=sys.stderr)

    def at_most(self, work, ours, other, limit, form):
        ratio = ours / other
        self.add(work, form(ours), form(other), ratio, f"at most {limit:.2f}", ratio <= limit)

    def at_least(self, work, ours, other, limit, form):
        """`ours` and `other` are times; the ratio is that of the speeds."""
        ratio = other / ours
        self.add(work, form(ours), form(other), ratio, f"at least {limit:.2f}", ratio >= limit)

    def print(self):
        widths = [max(len(row[column]) for row in self.rows) for column in range(len(self.rows[0]))]
        for number, row in enumerate(self.rows):
            print("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |")
            if number == 0:
                print("|" + "|".join("-" * (width + 2) for width in widths) + "|")


def microseconds(seconds):
    return f"{seconds * 1e6:.1f} us"


def seconds_text(seconds):
    return f"{seconds:.3f} s"


def mebibytes(value):
    return f"{value:.1f} MiB"


def bytes_of_mebibytes(value):
    return f"{value * (1 << 20):.0f} B"


def instructions(count):
    return f"{count:,.0f}"


def plain(count):
    return f"{count:.0f}"


def machine():
    text = pathlib.Path("/proc/cpuinfo").read_text()
    model = re.search(r"model name\s*:\s*(.*)", text)
    return f"{model.group(1) if model else 'unknown processor'}, {os.cpu_count()} processors"


# Instructions of a process, counted by the processor where the machine lets us, otherwise by valgrind.

def processor_counts():
    try:
        result = subprocess.run(["perf", "stat", "-x,", "-e", "instructions:u", "true"], capture_output=True,
                                text=True, timeout=TIME_OUT)
    except FileNotFoundError:
        return False
    return result.returncode == 0 and result.stderr.split(",")[0].isdigit()


def counted(*arguments):
    program = [PROGRAMS / "bench_client", *arguments]
    if processor_counts():
        result = run([*PINNED, "perf", "stat", "-x,", "-e", "instructions:u", *program])
        return int(re.search(r"^(\d+),", result.stderr, re.MULTILINE).group(1))
    result = run([*PINNED, "valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *program])
    return int(re.search(r"Collected : (\d+)", result.stderr).group(1))


def instructions_of_one(few, many, *arguments):
    """Two counts, so that what the start of the program costs falls out. `arguments` has "COUNT" in it."""
    def total(count):
        return counted(*[count if word == "COUNT" else word for word in arguments])
    return (total(many) - total(few)) / (many - few)


def inner_loops(table):
    result = run([*PINNED, PROGRAMS / "baseapi_bench", "--benchmark_format=json", "--benchmark_repetitions=9",
                  "--benchmark_enable_random_interleaving=true", "--benchmark_report_aggregates_only=true"])
    times = {one["run_name"]: one["cpu_time"] / 1e9 for one in json.loads(result.stdout)["benchmarks"]
             if one["aggregate_name"] == "median"}
    table.at_most("decode a page of 1,000 files", times["decodeFilePage"], times["decodeFilePageByHand"], 1.10,
                  microseconds)
    page = client("decode", 0)["bytes"]
    table.at_most("the same, instructions a byte", instructions_of_one(5, 25, "decode", "COUNT") / page,
                  DECODE_INSTRUCTIONS_A_BYTE, 1, "{:.1f}".format)
    table.at_most("encode a request of 1,000 parts", times["encodeCreateRequest"], times["encodeCreateRequestByHand"],
                  1.00, microseconds)


def compare_calls(table, folder):
    with server(folder, pinned=True) as port:
        for work, width, count in [("REST calls in turn, time of a call", 1, 500),
                                   ("64 REST calls at once, time of a call, ratio of the rates", 64, 1000)]:
            client("calls", port, "library,curl", width, 500, 1, pinned=True)
            sides = client("calls", port, "library,curl", width, count, CALL_ROUNDS, pinned=True)
            library, curl = (statistics.median(sides[side]) / count for side in ("library", "curl"))
            if width == 1:
                table.at_most(work, library, curl, 1.15, microseconds)
                counts = [instructions_of_one(200, 1200, "calls", port, side, 1, "COUNT", 1)
                          for side in ("library", "curl")]
                table.at_most("REST calls in turn, instructions of a call", *counts, 1.20, instructions)
            else:
                table.at_least(work, library, curl, 0.85, microseconds)


def rclone(command, port, source, target, *options, pinned=False):
    remote = {"RCLONE_CONFIG": os.devnull, "RCLONE_CONFIG_SINK_TYPE": "s3", "RCLONE_CONFIG_SINK_PROVIDER": "Other",
              "RCLONE_CONFIG_SINK_ENDPOINT": f"http://127.0.0.1:{port}", "RCLONE_CONFIG_SINK_ACCESS_KEY_ID": "key",
              "RCLONE_CONFIG_SINK_SECRET_ACCESS_KEY": "secret", "RCLONE_CONFIG_SINK_FORCE_PATH_STYLE": "true",
              "RCLONE_CONFIG_SINK_NO_CHECK_BUCKET": "true"}
    start = time.monotonic()
    run([*(PINNED if pinned else []), "rclone", command, "--transfers", 1, *options, source, f"sink:bucket/{target}"],
        remote)
    return time.monotonic() - start


def make_file(path, size):
    block = os.urandom(1 << 20)
    with path.open("wb") as file:
        for _ in range(size >> 20):
            file.write(block)


class Rounds:
    """The results of one side, round by round."""

    def __init__(self):
        self.results = []

    def add(self, *results):
        """Several results are the parts of one whole."""
        self.results.append({key: sum(result[key] for result in results) for key in results[0]})

    def median(self, key):
        return statistics.median(result[key] for result in self.results)

    def peak(self):
        return max(result["peakMiB"] for result in self.results)

    def growth(self):
        """What the work itself added to the process's memory, in MiB."""
        return max(result["peakMiB"] - result["firstMiB"] for result in self.results)


def transfer_rows(table, work, ours, alone, limit):
    for name, key in [(work, "seconds"), (f"{work}, processor time", "processorSeconds")]:
        table.at_most(name, ours.median(key), alone.median(key), limit, seconds_text)


def compare_uploads(table, folder):
    file = folder / "source.bin"
    make_file(file, GIB)
    ours, alone, one_stream, default = Rounds(), Rounds(), [], []
    with server(folder) as port:
        client("upload", port, file)
        for turn in range(TRANSFER_ROUNDS):
            alone.add(client("hash", file), client("put-parts", port, file))
            ours.add(client("upload", port, file))
            if turn % 2 == 0:
                one_stream.append(rclone("copyto", port, file, f"one-{turn}", "--s3-upload-concurrency", 1))
                default.append(rclone("copyto", port, file, f"default-{turn}"))
    parts = client("parts", file)
    file.unlink()
    transfer_rows(table, "upload of 1 GiB against SHA-256 + raw PUTs", ours, alone, 1.10)
    for streams, rounds in [("one stream", one_stream), ("its four streams", default)]:
        table.at_least(f"upload of 1 GiB against rclone, {streams}", ours.median("seconds"), statistics.median(rounds),
                       4, seconds_text)
    return ours.peak(), parts["partMiB"] * parts["inFlight"] + 32


def compare_downloads(table, folder):
    ours, alone = Rounds(), Rounds()
    target = folder / "target.bin"
    with server(folder) as port:
        for _ in range(TRANSFER_ROUNDS):
            for side, rounds in [("download", ours), ("curl-download", alone)]:
                rounds.add(client(side, port, GIB, target))
                target.unlink()
    transfer_rows(table, "download of 1 GiB against libcurl alone", ours, alone, 1.05)
    return ours.peak()


def count_connections(table, folder):
    files = folder / "small"
    files.mkdir()
    for number in range(SMALL_FILES):
        (files / f"{number}.txt").write_text(f"file {number}")
    with server(folder) as port:
        client("upload-all", port, files, UPLOADS_AT_ONCE)
        with urllib.request.build_opener(urllib.request.ProxyHandler({})).open(
                f"http://127.0.0.1:{port}/connections") as answer:
            connections = int(answer.read()) - 1  # that of the question
    table.at_most(f"connections of {SMALL_FILES:,} small uploads, {UPLOADS_AT_ONCE} at once", connections,
                  client("parts", files / "0.txt")["inFlight"] + 4, 1, plain)


def rounds_of(measurements):
    """The results of several clients by their arguments, each a process of its own, in turn."""
    rounds = {arguments: Rounds() for arguments in measurements}
    for _ in range(PROGRAM_ROUNDS):
        for arguments, results in rounds.items():
            results.add(client(*arguments, pinned=True))
    return rounds


def compare_contacts(table, folder):
    few, many, most = CONTACTS
    files = {count: folder / f"{count}.vcf" for count in CONTACTS}
    for count, file in files.items():
        client("write-contacts", count, file)
    text = {count: ("vcard-text", count) for count in CONTACTS}
    imported = {count: ("import", count, files[count]) for count in CONTACTS}
    by_hand = ("vcard-text-by-hand", many), ("parse-by-hand", many, files[many])
    rounds = rounds_of([*text.values(), *imported.values(), *by_hand])

    def seconds(arguments):
        return rounds[arguments].median("processorSeconds")

    table.at_most("vCard text of 100,000 contacts", seconds(text[many]), seconds(by_hand[0]), 1.30, seconds_text)
    table.at_most("import of 100,000 vCards against parsing them by hand", seconds(imported[many]),
                  seconds(by_hand[1]), 3.00, seconds_text)
    for work, arguments in [("vCard text", text), ("import", imported)]:
        table.at_most(f"{work}, time of a contact, 200,000 against 1,000", seconds(arguments[most]) / most,
                      seconds(arguments[few]) / few, 1.25, microseconds)
        table.at_most(f"{work}, memory of a contact, 200,000 against 100,000",
                      rounds[arguments[most]].growth() / most, rounds[arguments[many]].growth() / many, 1.10,
                      bytes_of_mebibytes)
    for file in files.values():
        file.unlink()


def used_by(command):
    """The processor time of a command whose output nobody reads."""
    process = subprocess.Popen([*PINNED, *map(str, command)], stdout=subprocess.DEVNULL, env=environment())
    _, process.returncode, usage = os.wait4(process.pid, 0)
    if process.returncode != 0:
        sys.exit(f"scripts/bench: {command[0]} failed")
    return {"processorSeconds": usage.ru_utime + usage.ru_stime}


def make_tree(folder, folders, files, size):
    """So many files in all, of random content or, where that would take too long, of zeros that nobody wrote."""
    for number in range(files):
        place = folder / f"album {number % folders % 20}" / f"day {number % folders}"
        if number < folders:
            place.mkdir(parents=True)
        with (place / f"IMG_{number:06}.jpg").open("wb") as file:
            if size is None:
                file.truncate(number % 5000)
            else:
                file.write(os.urandom(size))


def compare_walks(table, folder):
    tree = folder / "tree"
    make_tree(tree, 2000, WALKED_FILES, None)
    ours, find = Rounds(), Rounds()
    for _ in range(PROGRAM_ROUNDS):
        ours.add(client("walk", tree, pinned=True))
        find.add(used_by(["find", tree, "-printf", "%s %p\n"]))
    shutil.rmtree(tree)
    table.at_most("walk of 200,000 files against find", ours.median("processorSeconds"),
                  find.median("processorSeconds"), 1.20, seconds_text)
    table.at_most("the same, bytes of memory a file", ours.growth() * (1 << 20) / WALKED_FILES, 300, 1, plain)


def compare_backups(table, folder):
    tree = folder / "backup"
    make_tree(tree, SMALL_FOLDERS, SMALL_FILES, SMALL_SIZE)
    ours, alone, others = Rounds(), Rounds(), []
    with server(folder, pinned=True) as port:
        for turn in range(PROGRAM_ROUNDS):
            ours.add(client("backup", port, tree, pinned=True))
            alone.add(client("backup-by-curl", port, tree, pinned=True))
            if turn % 3 == 0:
                others.append(rclone("copy", port, tree, f"tree-{turn}", pinned=True))
    shutil.rmtree(tree)
    work = "backup of 5,000 files of 4 KiB"
    table.at_most(f"{work} against three libcurl calls a file", ours.median("seconds"), alone.median("seconds"), 2.00,
                  seconds_text)
    table.at_least(f"{work} against rclone", ours.median("seconds"), statistics.median(others), 2.00, seconds_text)


def place():
    """The disk's mood is noise: the files lie in memory, unless TMPDIR says where they are to lie or memory is short."""
    memory = "/dev/shm"
    if "TMPDIR" in os.environ or not os.path.isdir(memory) or shutil.disk_usage(memory).free < 4 * GIB:
        return None
    return memory


def main():
    table = Table()
    start = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="baseapi-bench-", dir=place()) as name:
        os.environ["TMPDIR"] = name
        folder = pathlib.Path(name)
        inner_loops(table)
        compare_calls(table, folder)
        upload_peak, bound = compare_uploads(table, folder)
        download_peak = compare_downloads(table, folder)
        table.at_most("peak memory of the upload", upload_peak, bound, 1, mebibytes)
        table.at_most("peak memory of the download", download_peak, bound, 1, mebibytes)
        count_connections(table, folder)
        compare_contacts(table, folder)
        compare_walks(table, folder)
        compare_backups(table, folder)
    counter = "the processor's counter" if processor_counts() else "valgrind"
    print(f"\n{machine()}; instructions counted by {counter}; {time.monotonic() - start:.0f} s\n")
    table.print()


if __name__ == "__main__":
    # So that the temporary folder goes away with the program, however it ends.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    main()
