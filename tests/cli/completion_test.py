"""The completions and the manual page, each by the program that reads them: completion_test.py BIN_FOLDER"""

import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

PROGRAMS = pathlib.Path(sys.argv.pop(1)).resolve()
SESSION = ["--cacert", "--content-id", "--host", "--json", "--log", "--state", "--token", "--token-file"]


def output_of(*arguments, **options):
    environment = {**os.environ, "PATH": f"{PROGRAMS}:{os.environ['PATH']}", **options.pop("environment", {})}
    return subprocess.run(arguments, env=environment, check=True, capture_output=True, text=True, **options).stdout


def script_for(shell):
    return output_of("quillbox", "completion", shell)


class ShellTest:
    """What a shell offers; `offers` gives the words for the end of a line, in their order."""

    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        (self.folder / "letter one.txt").touch()
        (self.folder / "letters").mkdir()
        self.script = self.folder / f".{self.shell}"
        self.script.write_text(script_for(self.shell), encoding="utf-8")

    def test_commands_are_offered(self):
        self.assertEqual(self.offers("quillbox down"), ["download"])
        self.assertEqual(self.offers("quillbox scope"), ["scope-add", "scope-remove", "scopes"])

    def test_a_command_of_two_words_is_offered_word_by_word(self):
        self.assertEqual(self.offers("quillbox back"), ["backup"])
        self.assertEqual(self.offers("quillbox --json backup d"), ["dirs"])
        self.assertEqual(self.offers("quillbox backup dirs --dr"), ["--dry-run"])

    def test_a_command_has_its_options_and_those_of_the_session(self):
        self.assertEqual(self.offers("quillbox mkdir --"), sorted(["--help", "--parent", *SESSION]))
        self.assertEqual(self.offers("quillbox --st"), ["--state"])

    def test_files_and_folders_are_offered_in_their_place(self):
        self.assertEqual(self.offers("quillbox upload let"), ["letter one.txt", "letters"])
        self.assertEqual(self.offers("quillbox backup album --photos let"), ["letters"])
        self.assertEqual(self.offers("quillbox mkdir --token-file letter"), ["letter one.txt", "letters"])

    def test_nothing_is_offered_where_anything_may_stand(self):
        self.assertEqual(self.offers("quillbox mkdir let"), [])
        self.assertEqual(self.offers("quillbox upload --parent let"), [])

    def test_operations_are_offered(self):
        self.assertEqual(self.offers("quillbox call getStarB"), ["getStarBatch"])


class BashTest(ShellTest, unittest.TestCase):
    shell = "bash"

    def offers(self, line):
        words = shlex.split(line)
        program = (f"source {self.script}; COMP_WORDS=({shlex.join(words)}); COMP_CWORD={len(words) - 1}; _quillbox; "
                   '[[ ${#COMPREPLY[@]} -eq 0 ]] || printf "%s\\n" "${COMPREPLY[@]}"')
        return sorted(output_of("bash", "-c", program, cwd=self.folder).splitlines())


class FishTest(ShellTest, unittest.TestCase):
    shell = "fish"

    def offers(self, line):
        program = f"source {self.script}; complete -C {shlex.quote(line)}"
        offered = output_of("fish", "--no-config", "-c", program, cwd=self.folder,
                            environment={"HOME": str(self.folder), "XDG_DATA_HOME": str(self.folder)})
        names = [entry.split("\t")[0].replace("\\", "").rstrip("/") for entry in offered.splitlines()]
        return sorted(names)


class ZshTest(unittest.TestCase):
    """A line with a tab at its end, typed into a zsh in a terminal of its own, becomes what it is completed to."""

    COMMANDS = r"""
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "unset zle_bracketed_paste; PS1=; fpath=($1 \$fpath); autoload -Uz compinit; compinit -u -d $1/.dump; echo RE''ADY"
zpty -r shell seen '*READY*'
zpty -n -w shell "$2"$'\t'
zpty -r shell seen "*$3*"
zpty -d shell
"""

    def expect_completion(self, line, end):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "_quillbox").write_text(script_for("zsh"), encoding="utf-8")
            pathlib.Path(folder, "letters").mkdir()
            output_of("zsh", "-f", "-c", self.COMMANDS, "zsh", folder, line, end, cwd=folder, timeout=60)

    def test_commands_and_their_options_are_offered(self):
        self.expect_completion("quillbox dow", "download")
        self.expect_completion("quillbox backup di", "dirs")
        self.expect_completion("quillbox backup dirs --dr", "dry-run")
        self.expect_completion("quillbox mkdir --tok", "token")

    def test_operations_files_and_folders_are_offered_in_their_place(self):
        self.expect_completion("quillbox call getStarB", "getStarBatch")
        self.expect_completion("quillbox upload let", "letters")
        self.expect_completion("quillbox backup album --photos let", "letters")


class ManualTest(unittest.TestCase):
    def test_it_has_no_error_and_names_all_commands_and_options(self):
        page = output_of("quillbox", "manual")
        output_of("mandoc", "-Tlint", "-Werror", input=page)
        shown = output_of("mandoc", "-Tascii", "-Owidth=200", input=page)
        plain = re.sub(".\b", "", shown)
        for words in ["quillbox upload PATH... [--parent ID] [--retries N]", "quillbox backup dirs --device-id N",
                      "--address-book DIR", "QUILLBOX_TOKEN_FILE", "130"]:
            self.assertIn(words, plain)


if __name__ == "__main__":
    unittest.main()
