"""The command line itself: help, version, wrong usage."""
import unittest

from host import HostTest


class Options(HostTest):
    def test_help_names_every_option_and_exit_code(self):
        text = self.quill("--help").decode()
        self.assertEqual(self.quill("-h").decode(), text)
        for word in ("--json", "--highlight", "--explain", "--document-text", "--type", "--output", "--layout", "--charset", "--jobs", "--help",
                     "--version", "Examples:", "Exit codes:"):
            self.assertIn(word, text)
        self.assertLessEqual(max(map(len, text.splitlines())), 110)

    def test_version(self):
        self.assertRegex(self.quill("--version").decode(), r"\Aquill \d+\.\d+\.\d+\r?\n\Z")

    def test_wrong_usage_is_explained_and_nothing_is_read(self):
        self.write("a.html", "Tides")
        for arguments in (["--nonsense"], ["--jobs", "0"], ["--jobs", "many"], ["--jobs"], ["--layout", "sideways"],
                          ["--charset", "0"], ["--charset", "-1"], ["--charset", "65536"], ["--charset", "klingon"],
                          ["--charset", ""], ["--output", ""], ["--type", "--json"], ["--type", "--document-text"],
                          ["--type", "--output", "out"], ["--highlight", "--json"], ["--explain", "--highlight"],
                          ["--explain", "--type"], ["-", "-"]):
            with self.subTest(arguments):
                self.assertEqual(self.quill("a.html", *arguments, code=2), b"")
        self.assertFalse((self.folder / "out").exists())

    def test_the_last_of_an_option_counts(self):
        self.write("a.html", "Tides")
        self.assertEqual(self.lines("--jobs", "1", "--jobs", "2", "--charset", "1201", "--charset", "65001", "a.html"),
                         ["Tides"])

    def test_options_may_follow_inputs(self):
        self.write("a.html", "Tides")
        self.assertEqual(self.lines("a.html", "--type"), ["content"])


if __name__ == "__main__":
    unittest.main()
