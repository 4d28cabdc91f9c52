"""The commands of a shell text that documents show and nobody runs: whether there are such programs, presets and options."""

import json
import pathlib
import re
import shlex
import shutil
import subprocess

SUBSTITUTION = re.compile(r"\$\(([^()]*)\)")
SHELL_WORDS = ("cd", "export", "source")


def simple_commands(text):
    """The words of each command of a shell text, without assignments before it and redirections."""
    for inner in SUBSTITUTION.findall(text):
        yield from simple_commands(inner)
    text = SUBSTITUTION.sub("_", text)
    words = shlex.shlex(text.replace("\\\n", " ").replace("\n", ";"), posix=True, punctuation_chars=True)
    words.commenters = ""
    words.whitespace_split = True
    command = []
    for word in words:
        if re.fullmatch(r"[;&|()<>]+", word):
            if command:
                yield command
            command = []
        elif command or not re.fullmatch(r"\w+=.*", word):
            command.append(word)
    if command:
        yield command


class Commands:
    """Knows which commands there are, of the project and of the machine that it is built on."""

    def __init__(self, root, programs):
        self.root = root
        self.programs = programs
        presets = json.loads((root / "CMakePresets.json").read_text(encoding="utf-8"))
        self.presets = {preset["name"] for preset in presets["buildPresets"]}
        projects = [path.read_text(encoding="utf-8") for path in root.glob("*/CMakeLists.txt")]
        self.made = set(re.findall(r"add_executable\((\w+)", "\n".join(projects)))

    def problem_of(self, command):
        program = pathlib.PurePath(command[0])
        if program.parts[0] == "scripts":
            return None if (self.root / program).exists() else "there is no such script"
        if program.parent.name == "bin" and program.name not in self.made:
            return "no such program is built"
        if program.name in ("quillbox", "quillboxd"):
            return self.unknown_option(program.name, command[1:])
        if program.name in ("cmake", "ctest"):
            return self.unknown_preset(command)
        known = program.parent.name == "bin" or command[0] in SHELL_WORDS or shutil.which(command[0])
        return None if known else "there is no such command"

    def unknown_preset(self, command):
        named = [after for word, after in zip(command, command[1:]) if word == "--preset"]
        return None if self.presets.issuperset(named) else "there is no such preset"

    def unknown_option(self, program, arguments):
        """A command of two words has its help behind both."""
        if "--" in arguments:
            arguments = arguments[:arguments.index("--")]
        named = 0 if program == "quillboxd" else 2 if arguments[:1] in (["backup"], ["restore"]) else 1
        asked = [self.programs / program, *arguments[:named], "--help"]
        told = subprocess.run(asked, check=False, capture_output=True, text=True)
        if told.returncode != 0:
            return f"its help ends with status {told.returncode}"
        options = [word for word in arguments if word.startswith("--")]
        unknown = [option for option in options if not re.search(rf"{option}\b", told.stdout)]
        return f"{unknown[0]} is no option of it" if unknown else None
