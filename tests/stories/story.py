"""A story is a document whose console blocks are run: a line that begins with "$ " is a command, "> " continues it, and what
follows up to the next command is what it prints. A block with the name of a file is written into that file when its turn comes.

In what is printed, <name> takes the text that stands there, and is the same text wherever it comes again; "..." stands for
anything in its line, or for any lines where it is a line of its own. A last line [N] is the exit status, which is 0 otherwise.
"""

import dataclasses
import os
import pathlib
import re
import secrets
import shlex
import signal
import subprocess
import sys
import threading

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from documents import blocks_of  # pylint: disable=wrong-import-position

NAME = re.compile(r"<([a-z][a-z_]*)>")
STATUS = re.compile(r"\[(\d+)\]\n\Z")
SECONDS = 300


class Failed(Exception):
    """The story does not go as it is told."""


@dataclasses.dataclass
class Step:
    line: int
    command: str
    output: str = ""
    status: int = 0
    has_names: bool = True


def commands_of(block):
    steps = []
    for number, content in enumerate(block.text.splitlines(), block.line):
        if content.startswith("$ "):
            steps.append(Step(number, content[2:]))
        elif not steps:
            raise Failed(f"line {number}: output before the first command")
        elif content.startswith("> ") and not steps[-1].output:
            steps[-1].command += "\n" + content[2:]
        else:
            steps[-1].output += content + "\n"
    for step in steps:
        if told := STATUS.search(step.output):
            step.status = int(told.group(1))
            step.output = step.output[:told.start()]
    return steps


def writing_of(block):
    end = secrets.token_hex(16)
    return Step(block.line, f"cat > {shlex.quote(block.file)} <<'{end}'\n{block.text}{end}", has_names=False)


def steps_of(text):
    """The commands and the files of all blocks, in their order."""
    steps = []
    for block in blocks_of(text):
        if block.file:
            steps.append(writing_of(block))
        elif block.language == "console":
            steps += commands_of(block)
    return steps


def pattern_of(output, known):
    """The regular expression for what a step prints."""
    taken = set()

    def name(found):
        word = found.group(1)
        if word in known:
            return re.escape(known[word])
        if word in taken:
            return f"(?P={word})"
        taken.add(word)
        return rf"(?P<{word}>[^\s\"<>]+)"

    pattern = ""
    for line in output.splitlines():
        if line.strip() == "...":
            pattern += r"(?:.*\n)*?"
            continue
        place = 0
        for found in re.finditer(rf"{NAME.pattern}|\.\.\.", line):
            pattern += re.escape(line[place:found.start()])
            pattern += ".*?" if found.group() == "..." else name(found)
            place = found.end()
        pattern += re.escape(line[place:]) + r"\n"
    return pattern


class Shell:
    """One bash for all commands of a story, which ends with all that it started."""

    def __init__(self, folder, environment):
        self.process = subprocess.Popen(
            ["bash"], cwd=folder, env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True, start_new_session=True)
        self.timer = threading.Timer(SECONDS, self.end)
        self.timer.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.timer.cancel()
        self.end()
        self.process.communicate()

    def end(self):
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass

    def run(self, command):
        """What the command prints, and its exit status."""
        mark = secrets.token_hex(16)
        self.process.stdin.write(f"{{\n{command}\n}} </dev/null\nprintf '%s %d\\n' {mark} $?\n")
        self.process.stdin.flush()
        output = ""
        for line in self.process.stdout:
            before, found, status = line.partition(mark)
            output += before
            if found:
                return output + ("\n" if output and not output.endswith("\n") else ""), int(status)
        raise Failed(f"the shell ended, or nothing came for {SECONDS} seconds: {command}\n{output}")


def tell(text, folder, environment):
    """Runs a story; gives the number of its commands and files."""
    known = {}

    def filled(found):
        if found.group(1) not in known:
            raise Failed(f"<{found.group(1)}> is used before it has been seen")
        return known[found.group(1)]

    steps = steps_of(text)
    with Shell(folder, environment) as shell:
        for step in steps:
            output, status = shell.run(NAME.sub(filled, step.command) if step.has_names else step.command)
            found = re.fullmatch(pattern_of(step.output, known), output)
            if status != step.status or not found:
                raise Failed(f"line {step.line}: {step.command}\nis told to print, with status {step.status}:\n"
                             f"{step.output}It printed, with status {status}:\n{output}Known: {known}")
            known.update(found.groupdict())
    return len(steps)
