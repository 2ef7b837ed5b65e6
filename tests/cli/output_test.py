"""What is written: texts, JSON, one file per page, and what happens when writing fails."""
import json
import os
import subprocess
import unittest

from host import PROGRAM, HostTest, page, unix_only


LINKS = b"<body>" + b"".join(b"<p><a href=/%d>Link number %d</a></p>" % (i, i) for i in range(30))


class Texts(HostTest):
    def setUp(self):
        super().setUp()
        self.write("a.html", "Alpha")
        self.write("b.html", "Grüße &amp; &#x1F30A;")
        self.write("empty.html", b"")
        self.write("links.html", LINKS)

    def test_texts_are_utf8_with_one_blank_line_between_them(self):
        self.assertEqual(self.quill("a.html"), b"Alpha\n")
        self.assertEqual(self.quill("empty.html"), b"")
        self.assertEqual(self.quill("empty.html", "a.html", "empty.html", "b.html", "empty.html").decode(),
                         "Alpha\n\nGrüße & \U0001F30A\n")

    def test_document_text_has_the_clutter_too(self):
        clutter = LINKS + b"<table><tr><td><p>" + b"The tide rises and falls. " * 20
        self.write("c.html", clutter)
        self.assertNotIn(b"Link number 7", self.quill("c.html"))
        self.assertIn(b"Link number 7", self.quill("--document-text", "c.html"))

    def test_type(self):
        self.assertEqual(self.lines("--type", "a.html"), ["content"])
        self.assertEqual(self.lines("--type", input=LINKS), ["links"])
        self.assertEqual(self.lines("--type", "a.html", "links.html", "empty.html"),
                         ["content a.html", "links links.html", "links empty.html"])

    def test_json_has_one_object_per_page_and_line(self):
        lines = self.quill("--json", "b.html", "empty.html", "links.html").decode().split("\n")
        self.assertEqual(lines.pop(), "")
        rows = [json.loads(line) for line in lines]
        for row in rows:
            self.assertEqual(list(row), ["file", "type", "text", "document_text", "charset", "spans"])
        self.assertEqual([row["file"] for row in rows], ["b.html", "empty.html", "links.html"])
        self.assertEqual([row["type"] for row in rows], ["content", "links", "links"])
        self.assertEqual(rows[0]["text"].rstrip(), "Grüße & \U0001F30A")
        self.assertEqual(rows[0]["document_text"].rstrip(), "Grüße & \U0001F30A")
        self.assertEqual((rows[1]["text"], rows[1]["document_text"]), ("", ""))

    def test_every_layout_reads_a_plain_page(self):
        for layout in ("auto", "tables", "blocks"):
            self.assertEqual(self.quill("--layout", layout, "a.html"), b"Alpha\n")

    def test_layouts_read_blocks_differently(self):
        links = b"<div>" + b"".join(b"<a href=/%d>Link %d</a> " % (i, i) for i in range(9)) + b"</div>"
        self.write("c.html", links + b"<div><p>" + b"The tide rises and falls. " * 20 + b"</div>")
        for layout, has_links in (("tables", True), ("blocks", False), ("auto", False)):
            self.assertEqual(b"Link 7" in self.quill("--layout", layout, "c.html"), has_links, layout)


class OutputFolder(HostTest):
    def written(self, folder="out"):
        base = self.folder / folder
        return {str(file.relative_to(base)).replace("\\", "/"): file.read_text("utf-8").rstrip()
                for file in base.rglob("*") if file.is_file()}

    def test_pages_of_a_folder_keep_their_paths_below_it(self):
        self.write("site/a.html", "Alpha")
        self.write("site/sub/deeper/b.xhtml", "Beta")
        self.write("other/c.html", "Gamma")
        self.write("other/page.php", "Delta")
        self.assertEqual(self.quill("--output", "new/out", "site", str(self.folder / "other"), "other/page.php", "-",
                                    input=page("Epsilon")), b"")
        self.assertEqual(self.written("new/out"),
                         {"a.txt": "Alpha", "sub/deeper/b.txt": "Beta", "c.txt": "Gamma", "page.php.txt": "Delta",
                          "stdin.txt": "Epsilon"})

    def test_no_page_takes_the_file_of_another(self):
        self.write("site/a.html", "first")
        self.write_packed("site/a.html.gz", "second")
        self.write("site/A.htm", "third")
        self.write("x/a.html", "fourth")
        self.write("y/a.html", "fifth")
        self.quill("-o", "out", "site/a.html", "site/a.html.gz", "site/A.htm", "x/a.html", "y/a.html", "y/a.html")
        self.assertEqual(self.written(),
                         {"a.txt": "first", "a.html.gz.txt": "second", "A.htm.txt": "third", "a.html.txt": "fourth",
                          "a.html-2.txt": "fifth", "a.html-3.txt": "fifth"})

    def test_files_of_an_earlier_run_are_replaced(self):
        self.write("a.html", "long text " * 100)
        self.quill("-o", "out", "a.html")
        self.write("a.html", "short")
        self.quill("-o", "out", "a.html")
        self.assertEqual(self.written(), {"a.txt": "short"})

    def test_a_page_that_cannot_be_read_leaves_no_file(self):
        self.write("a.html", "Alpha")
        self.quill("-o", "out", "missing.html", "a.html", code=1, errors=["missing.html"])
        self.assertEqual(self.written(), {"a.txt": "Alpha"})

    def test_json_and_document_text(self):
        self.write("site/sub/a.html", "Alpha")
        self.quill("-o", "out", "--json", "site")
        self.quill("-o", "out", "--document-text", "site")
        written = self.written()
        self.assertEqual(sorted(written), ["sub/a.json", "sub/a.txt"])
        self.assertEqual(json.loads(written["sub/a.json"])["text"].rstrip(), "Alpha")

    def test_marked_pages(self):
        self.write("site/a.html", "Alpha")
        self.write("site/b.html", "Beta")
        for option in ("--highlight", "--explain"):
            self.quill(option, "site", code=2, errors=["--output"])
            self.quill("-o", option, option, "site")
            written = self.written(option)
            self.assertEqual(sorted(written), ["a.marked.html", "b.marked.html"])
            self.assertIn('<mark data-quill="1">Beta</mark>', written["b.marked.html"])

    def test_a_folder_that_cannot_be_made(self):
        self.write("a.html", "Alpha")
        self.write("out", b"a file")
        self.quill("-o", "out", "a.html", code=1, errors=["out"])

    @unix_only
    def test_nothing_is_written_behind_links_that_lead_out(self):
        self.write("site/a.html", "Alpha")
        self.write("site/sub/b.html", "Beta")
        self.write("site/sub/deeper/c.html", "Gamma")
        self.write("secret.txt", b"untouched")
        for name in ("out", "elsewhere"):
            (self.folder / name).mkdir()
        os.symlink("../elsewhere", self.folder / "out/sub")
        os.symlink("../secret.txt", self.folder / "out/a.txt")
        os.symlink("out", self.folder / "link")
        self.quill("-o", "link", "site", code=1, errors=["site/sub/b.html", "site/sub/deeper/c.html"])
        self.assertEqual((self.folder / "secret.txt").read_bytes(), b"untouched")
        self.assertEqual(os.listdir(self.folder / "elsewhere"), [])
        self.assertEqual((self.folder / "out/a.txt").read_text().rstrip(), "Alpha")


@unix_only
class FailingOutput(HostTest):
    def test_a_closed_pipe_is_no_error(self):
        for i in range(40):
            self.write(f"site/{i}.html", f"Page {i} " + "word " * 10_000)
        for jobs in ("1", "2"):
            with subprocess.Popen([*PROGRAM, "--jobs", jobs, "site"], cwd=self.folder, stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE) as run:
                self.assertTrue(run.stdout.read(10))
                run.stdout.close()
                self.assertEqual(run.stderr.read(), b"")
            self.assertEqual(run.returncode, 0)

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is full")
    def test_a_full_disk_is_an_error(self):
        self.write("a.html", "Alpha")
        with open("/dev/full", "wb") as full:
            run = subprocess.run([*PROGRAM, "a.html"], cwd=self.folder, stdout=full, stderr=subprocess.PIPE)
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"standard output", run.stderr)


@unix_only
class ProgressBar(HostTest):
    def shown(self, pages):
        """What a terminal as standard error is sent while so many pages are read."""
        import pty
        for i in range(pages):
            self.write(f"site/{i}.html", "Alpha")
        terminal, other_end = pty.openpty()
        self.addCleanup(os.close, terminal)
        subprocess.run([*PROGRAM, "site"], cwd=self.folder, stdout=subprocess.DEVNULL, stderr=other_end, check=True)
        os.write(other_end, b"end")
        os.close(other_end)
        sent = b""
        while not sent.endswith(b"end"):
            sent += os.read(terminal, 4096)
        return sent[:-3]

    def test_a_bar_is_shown_and_removed_when_many_pages_are_read(self):
        sent = self.shown(20)
        self.assertIn(b"of 20 pages", sent)
        self.assertRegex(sent, rb"\r +\r\Z")

    def test_few_pages_need_no_bar(self):
        self.assertEqual(self.shown(3), b"")


if __name__ == "__main__":
    unittest.main()
