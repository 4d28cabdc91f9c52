"""What people see in a terminal: terminal_test.py BIN_FOLDER"""

import fcntl
import os
import pathlib
import pty
import re
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

PROGRAMS = pathlib.Path(sys.argv.pop(1)).resolve()
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from demo_parts import Quillbox, Service  # pylint: disable=wrong-import-position

COLUMNS = 60


def shown_in_terminal(*command, environment):
    """What the program writes to a terminal, with its exit status."""
    ours, theirs = pty.openpty()
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 24, COLUMNS, 0, 0))
    process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=theirs, stderr=theirs)
    os.close(theirs)
    written = b""
    try:
        while piece := os.read(ours, 65536):
            written += piece
    except OSError:
        pass  # the terminal of a program that has ended
    os.close(ours)
    return written.decode(), process.wait()


class TerminalTest(unittest.TestCase):
    def upload(self, **environment):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "book.txt").write_bytes(b"x" * 20_000_000)
            with Service(PROGRAMS / "quillboxd", folder) as service:
                quillbox = Quillbox(PROGRAMS / "quillbox", service.address, folder)
                quillbox.sign_in()
                shown, status = shown_in_terminal(
                    PROGRAMS / "quillbox", "upload", folder / "book.txt", folder / "missing",
                    environment={**quillbox.environment, "TERM": "xterm", **environment})
        self.assertEqual(status, 1)
        return shown

    def test_a_bar_fills_one_line_and_goes_again(self):
        shown = self.upload()
        bars = re.findall(r"\r([^\r\n]*%[^\r\n]*)\x1b\[K", shown)
        self.assertTrue(bars)
        for bar in bars:
            self.assertLessEqual(len(bar), COLUMNS)
        shares = [int(share) for share in re.findall(r"(\d+) ?%", "".join(bars))]
        self.assertEqual(shares, sorted(shares))
        self.assertLessEqual(shares[-1], 100)
        # The bar is wiped out before a line takes its place.
        self.assertNotIn("%", shown[shown.rindex("\r\x1b[K"):])

    def test_a_success_is_green_and_a_failure_is_told_with_its_cause(self):
        shown = self.upload()
        self.assertRegex(shown, r"\x1b\[32m✓\x1b\[0m [^\n]*book\.txt")
        self.assertIn("missing: No such file or directory", shown)

    def test_who_wants_no_colour_gets_none(self):
        shown = self.upload(NO_COLOR="1")
        self.assertIn("✓ ", shown)
        self.assertNotIn("\x1b[3", shown)

    def test_a_dumb_terminal_is_written_to_as_a_file(self):
        shown = self.upload(TERM="dumb")
        self.assertRegex(shown, r"ok    [^\n]*book\.txt")
        self.assertNotIn("\x1b", shown)


if __name__ == "__main__":
    unittest.main()
