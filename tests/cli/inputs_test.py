"""What is read: files, folders, packed pages, standard input."""
import gzip
import os
import unittest

from host import HostTest, page, unix_only


class Files(HostTest):
    def test_an_unreadable_file_is_named_and_the_rest_goes_on(self):
        self.write("a.html", "Alpha")
        self.write("b.html", "Beta")
        self.assertEqual(self.lines("a.html", "missing.html", "b.html", code=1, errors=["missing.html"]),
                         ["Alpha", "Beta"])
        self.assertEqual(self.files_read("missing.html", "b.html", code=1, errors=["missing.html"]), ["b.html"])
        self.assertEqual(self.quill("", code=1, errors=[""]), b"")

    def test_odd_names(self):
        names = ["two words.html", "Straße 東京.html", "[a]", "{b}", "a,b", "%s%n", "--json.html"]
        for name in names:
            self.write(name, "Alpha")
        self.assertEqual(self.files_read("--", *names), names)

    @unix_only
    def test_names_that_are_no_text(self):
        name = b"caf\xe9.html"
        (self.folder / os.fsdecode(name)).write_bytes(page("Alpha"))
        self.assertEqual(self.files_read(name), ["caf\ufffd.html"])
        self.assertEqual(self.quill(b"\x1b[2J\n.html", code=1, errors=["?[2J?.html"]), b"")

    @unix_only
    def test_a_named_pipe_is_read_like_a_file(self):
        pipe = self.folder / "pipe"
        os.mkfifo(pipe)
        if os.fork() == 0:
            pipe.write_bytes(page("Alpha" + " beta" * 100_000))
            os._exit(0)
        self.assertEqual(len(self.lines("pipe")[0].split()), 100_001)
        os.wait()


class PackedPages(HostTest):
    def test_packed_pages_are_known_by_their_bytes(self):
        self.write_packed("a.html.gz", "Alpha")
        self.write_packed("b.html", "Beta")
        self.write("c.html.gz", "Gamma")  # not packed at all
        self.write("d.gz", gzip.compress(page("Delta")[:50]) + gzip.compress(page("Delta")[50:]))
        self.write("e.gz", gzip.compress(page("Epsilon")) + bytes(512))
        self.write_packed("f.gz", "Zeta " * 50_000)
        self.assertEqual(self.lines("a.html.gz", "b.html", "c.html.gz", "d.gz", "e.gz"),
                         ["Alpha", "Beta", "Gamma", "Delta", "Epsilon"])
        self.assertEqual(self.quill("f.gz").count(b"Zeta"), 50_000)

    def test_broken_packed_pages_are_unreadable(self):
        packed = bytearray(gzip.compress(page("Alpha " * 1000)))
        self.write("truncated.gz", bytes(packed[:-9]))
        self.write("head.gz", bytes(packed[:3]))
        packed[-6] ^= 1  # of the checksum
        self.write("damaged.gz", bytes(packed))
        self.write("a.html", "Alpha")
        self.assertEqual(self.lines("truncated.gz", "head.gz", "damaged.gz", "a.html", code=1,
                                    errors=["truncated.gz", "head.gz", "damaged.gz"]), ["Alpha"])

    @unix_only
    def test_a_file_beyond_4_gib_is_refused_unread(self):
        with open(self.folder / "huge.html", "wb") as file:
            file.truncate(1 << 32)
        self.assertEqual(self.quill("huge.html", code=1, errors=["huge.html"]), b"")


class Folders(HostTest):
    def test_pages_are_found_below_a_folder_in_the_order_of_their_names(self):
        for name in ("b.html", "a.htm", "c.xhtml", "B.HTML", "sub/z.html", "sub/deeper/y.HtM", "zz.html", "sub.html"):
            self.write("site/" + name, "Alpha")
        for name in ("d.html.gz", "e.XHTML.GZ", "sub/f.htm.gz"):
            self.write_packed("site/" + name, "Alpha")
        for name in ("a.txt", "b.html.txt", "html", ".html", "c.gz", "style.css", "sub/page.php"):
            self.write("site/" + name, "Omega")
        found = ["B.HTML", "a.htm", "b.html", "c.xhtml", "d.html.gz", "e.XHTML.GZ", "sub/deeper/y.HtM",
                 "sub/f.htm.gz", "sub/z.html", "sub.html", "zz.html"]
        self.assertEqual(self.files_read("site"), ["site/" + name for name in found])
        self.assertEqual(self.files_read("site/"), ["site/" + name for name in found])
        self.assertEqual(self.files_read("site/zz.html", "site/sub/deeper"),
                         ["site/zz.html", "site/sub/deeper/y.HtM"])

    def test_a_folder_without_pages_is_worth_a_note_and_no_error(self):
        (self.folder / "empty").mkdir()
        self.assertEqual(self.quill("empty", errors=["empty"]), b"")

    @unix_only
    def test_links_lead_to_pages_and_not_in_circles(self):
        self.write("site/a.html", "Alpha")
        os.symlink("..", self.folder / "site/up.html")
        os.symlink("a.html", self.folder / "site/b.html")
        os.symlink("nowhere", self.folder / "site/c.html")
        os.mkfifo(self.folder / "site/d.html")
        os.symlink("site", self.folder / "link")
        self.assertEqual(self.files_read("link", code=1, errors=["link/c.html"]), ["link/a.html", "link/b.html"])


class StandardInput(HostTest):
    def test_it_is_read_when_nothing_is_named_or_a_dash_is(self):
        self.write("a.html", "Alpha")
        self.assertEqual(self.lines(input=page("Omega")), ["Omega"])
        self.assertEqual(self.lines("a.html", "-", "a.html", input=page("Omega")), ["Alpha", "Omega", "Alpha"])
        self.assertEqual(self.files_read(input=page("Omega")), ["-"])
        self.assertEqual(self.quill(input=b""), b"")

    def test_its_bytes_come_through_unchanged(self):
        for data, text in ((gzip.compress(page("Omega")), "Omega"),
                           (page("one\r\ntwo\x1athree"), "one twothree"),
                           (page("x " * 100_000 + "end"), "x " * 100_000 + "end")):
            self.assertEqual(self.quill(input=data).decode().rstrip(), text)


if __name__ == "__main__":
    unittest.main()
