"""Tests of what runs the stories."""

import os
import pathlib
import tempfile
import unittest

import story


def block(text):
    return f"Prose.\n\n```console\n{text}```\n"


class StoryTest(unittest.TestCase):
    def tell(self, *blocks):
        with tempfile.TemporaryDirectory() as folder:
            return story.tell("\n".join(map(block, blocks)), folder, dict(os.environ))

    def assert_fails(self, text, *blocks):
        with self.assertRaises(story.Failed) as caught:
            self.tell(*blocks)
        self.assertIn(text, str(caught.exception))

    def test_what_is_printed_is_compared(self):
        self.assertEqual(self.tell("$ echo one\none\n$ true\n"), 2)
        self.assert_fails("It printed, with status 0:\none", "$ echo one\ntwo\n")
        self.assert_fails("It printed", "$ echo one\n")
        self.assert_fails("It printed", "$ echo one; echo more\none\n")
        self.assert_fails("It printed", "$ true\none\n")

    def test_standard_error_is_printed_too(self):
        self.tell("$ echo one >&2\none\n")

    def test_a_line_without_an_end_is_a_line(self):
        self.tell("$ printf one\none\n")

    def test_the_status_is_compared(self):
        self.tell("$ (exit 3)\n[3]\n", "$ echo one; false\none\n[1]\n")
        self.assert_fails("with status 3", "$ (exit 3)\n")
        self.assert_fails("with status 0", "$ true\n[1]\n")

    def test_blocks_share_a_shell(self):
        self.tell("$ export A=1\n$ cd /\n", "$ echo $A $PWD\n1 /\n")

    def test_a_command_may_have_several_lines(self):
        self.tell("$ echo one \\\n>   two\none two\n")

    def test_a_command_does_not_read_the_story(self):
        self.tell("$ cat\n$ echo one\none\n")

    def test_a_name_takes_what_it_stands_for(self):
        self.tell('$ echo \'{"id":"7"}\'\n{"id":"<id>"}\n$ echo <id> more\n<id> more\n$ echo 7\n<id>\n')
        self.assert_fails("It printed", "$ echo 7\n<id>\n$ echo 8\n<id>\n")
        self.assert_fails("It printed", "$ echo 7 8\n<id> <id>\n")
        self.assert_fails("before it has been seen", "$ echo <id>\n")

    def test_dots_stand_for_anything_in_their_line(self):
        self.tell("$ echo one two three\none...three\n")
        self.assert_fails("It printed", "$ printf 'one\\ntwo three\\n'\none...three\n")

    def test_a_line_of_dots_stands_for_any_lines(self):
        self.tell("$ seq 9\n1\n...\n9\n", "$ true\n...\n", "$ seq 3\n1\n  ...\n")
        self.assert_fails("It printed", "$ seq 9\n1\n...\n8\n")

    def test_a_pattern_is_no_regular_expression(self):
        self.assert_fails("It printed", "$ echo abc\na.c\n")

    def test_what_a_story_leaves_running_is_ended(self):
        self.tell("$ sleep 1000 >/dev/null 2>&1 &\n")

    def test_a_block_with_the_name_of_a_file_is_written_where_the_shell_is(self):
        content = "#include <future>\n// $HOME 'and' \\n\n"
        with tempfile.TemporaryDirectory() as folder:
            story.tell(block("$ mkdir a\n$ cd a\n") + f"```cpp main.cpp\n{content}```\n", folder, dict(os.environ))
            self.assertEqual(pathlib.Path(folder, "a", "main.cpp").read_text(encoding="utf-8"), content)

    def test_blocks_of_other_kinds_are_not_run(self):
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(story.tell("```sh\nfalse\n```\n" + block("$ true\n"), folder, dict(os.environ)), 1)

    def test_a_shell_that_ends_fails_the_story(self):
        self.assert_fails("the shell ended", "$ exit 0\n")


if __name__ == "__main__":
    unittest.main()
