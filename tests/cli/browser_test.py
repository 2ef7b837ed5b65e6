"""Marked pages as a browser shows them: what is marked is what was extracted, and looking at it is safe."""
import os
import pathlib
import time
import unittest

from browser import PROGRAM as BROWSER, Browser
from host import HostTest

ROOT = pathlib.Path(__file__).resolve().parents[2]
CORPUS = pathlib.Path(os.environ.get("QUILL_SHARED_DIR") or ROOT / "../shared") / "corpus"
SAMPLE = int(os.environ.get("QUILL_SAMPLE", "1"))  # pages of each data set

# White space, and what shows nothing: the text is cleaned of them, the page is not.
NOT_COMPARED = dict.fromkeys([*range(0x21), *range(0x7F, 0xA1), 0xAD, 0x1680, *range(0x2000, 0x200C), 0x2028, 0x2029,
                              0x202F, 0x205F, 0x3000, 0xFEFF])

MARKS = """[...document.querySelectorAll("mark")].filter(mark => mark.hasAttribute("data-quill"))
           .map(mark => [Number(mark.getAttribute("data-quill")), mark.textContent])"""

# Markup around the texts "one", "two" and so on that is easily broken by a mark in the wrong place.
ODD_PAGES = {
    "pushed out of a table": "<p>one two<table>three<tr><td>four</td>five</tr>six</table>seven",
    "ignored markup": "<p>one</em>two</span> thr</nonsense>ee<!-- x -->four",
    "quirks": "<p>one<table><tr><td>two</table>three",
    "standards": "<!doctype html><p>one<table><tr><td>two</table>three",
    "misnested": "<p><b>one<i>two</b>three</i>four<p>five<a href=x>six<div>seven</a>eight",
    "references": "<p>one &amp; two &copy three&lt;four &notit; five &#x110000; six&amp",
    "raw text": "<p>one<xmp>\n<b>two</b> &amp; & three</xmp>four<listing>\nfive</listing><plaintext>six</p> &amp; </plaintext>",
    "foreign": "<p>one<math><mi>two</mi><mtext><![CDATA[three<b>four]]></mtext><mo>five</math>six",
    "preformatted": "<p>one<pre>\n\n two\n  three </pre>four",
    "no markup": "one two three four five",
    "text after the end": "<html><body><p>one</p></body>two</html>three",
    "noscript": "<head><noscript><link rel=x><style>p{}</style></noscript><title>t</title></head><body><p>one"
                "<noscript><p title='</noscript><p>'>two</noscript>three",
    "newlines": "<p>one\r\ntwo\rthree\0four",
    "definitions and lists": "<ul><li>one<li>two<ol><li>three</ol></ul><dl><dt>four<dd>five</dl>",
    "foot first": "<p>zero<table><tfoot><tr><td>three<tbody><tr><td>one<td>two</table>",
    "body of its own": "<body class=a><p>one<body class=b lang=de><p>two",
}

# Sets window.ran, or leads away, where a browser lets it.
HOSTILE_PAGE = """<!doctype html><html onclick="ran = 1"><head>
<meta http-equiv=Refresh content="0;url=about:blank">
<noscript><p title="</noscript><meta http-equiv=refresh content='0;url=about:blank'><script>ran = 2</script>"></noscript>
<script>ran = 3</script><script src="data:text/javascript,ran = 4"></script></head>
<body onload="ran = 5"><p>one two three <img src=x onerror="ran = 6">
<a id=link href="javascript:void(window.ran = 7)">four</a>
<iframe srcdoc="<script>parent.ran = 8</script>"></iframe><svg onload="ran = 9"><script>ran = 10</script></svg>
<object data="data:text/html,x"></object><form id=form action="file:///"><input name=x></form>"""


def visible(text):
    return text.translate(NOT_COMPARED)


def corpus_sample():
    """(name, page) of pages spread evenly over each data set."""
    for folder in sorted(CORPUS.glob("*/html")):
        pages = sorted(folder.rglob("*.html.gz"))
        for page in pages[len(pages) // (2 * SAMPLE)::max(1, len(pages) // SAMPLE)][:SAMPLE]:
            yield str(page.relative_to(CORPUS)), page


class MarkedPages(HostTest):
    @classmethod
    def setUpClass(cls):
        if not BROWSER:
            raise unittest.SkipTest("needs chromium")
        cls.browser = cls.enterClassContext(Browser())

    def open_marked(self, page, option="--highlight", *reading):
        marked = self.folder / "marked.html"
        marked.write_bytes(self.quill(option, *reading, page))
        self.browser.open(marked)

    def check(self, page, *reading):
        """The marked text is the extracted text, run by run."""
        text = self.objects(*reading, page)[0]["text"]
        for option in ("--highlight", "--explain"):
            self.open_marked(page, option, *reading)
            marks = self.browser.evaluate(MARKS)
            marked = "".join(text for _, text in sorted(marks, key=lambda mark: mark[0]))
            self.assertEqual(visible(marked), visible(text), option)

    def test_odd_pages(self):
        for name, markup in ODD_PAGES.items():
            with self.subTest(name):
                self.write("a.html", markup.encode())
                for layout in ("tables", "blocks"):
                    self.check("a.html", "--layout", layout)
                    self.assertEqual(self.browser.evaluate(MARKS)[0][0], 1)

    def test_character_sets(self):
        text = "<p>Größe “naïve” <b>tide</b> tables: 1½ €"
        for head, encoding in (("<meta charset=windows-1252>", "cp1252"), ("<meta charset=utf-8>", "utf-8-sig"),
                               ("", "utf-16"), ("<?xml version='1.0' encoding='windows-1252'?>", "cp1252")):
            with self.subTest(encoding):
                self.write("a.html", (head + text).encode(encoding))
                self.check("a.html")
                self.assertEqual(self.browser.evaluate("document.characterSet"), "UTF-8")
        self.write("a.html", "<meta http-equiv=content-type content='text/html; charset=shift_jis'><p>東京の潮汐".encode("sjis"))
        self.check("a.html")

    def test_the_page_is_laid_out_as_before(self):
        for doctype, mode in (("", "BackCompat"), ("<!doctype html>", "CSS1Compat"), ("<!-- x --> <!doctype html>", "CSS1Compat")):
            self.write("a.html", (doctype + "<html lang=de><head><base href=https://example.org/a/></head><body id=b><a href=c>one").encode())
            self.open_marked("a.html")
            self.assertEqual(self.browser.evaluate("[document.compatMode, document.links[0].href, document.body.id,"
                                                   " document.documentElement.lang]"),
                             [mode, "https://example.org/a/c", "b", "de"])

    def test_no_script_of_the_page_runs_and_nothing_leads_away(self):
        self.write("a.html", HOSTILE_PAGE.encode())
        self.open_marked("a.html")
        self.browser.evaluate("document.getElementById('link').click(); document.body.click();"
                              "document.getElementById('form').submit()")
        time.sleep(1)
        self.assertIsNone(self.browser.evaluate("window.ran"))
        self.assertTrue(self.browser.evaluate("location.href").endswith("/marked.html"))

    def test_explained_tables_are_outlined_by_rank(self):
        self.write("a.html", b"<table><tr><td id=menu>" + b"<a href=x>one two</a> " * 9 + b"<td id=text>" +
                   b"The tide rises and falls. " * 40 + b"</table>")
        self.open_marked("a.html", "--explain")
        look = """(id, part) => { const style = getComputedStyle(document.getElementById(id), part);
                                  return [style.outlineStyle, style.content, style.backgroundImage !== "none"]; }"""
        self.assertEqual(self.browser.evaluate(f"({look})('menu')")[2], True)
        self.assertEqual(self.browser.evaluate(f"({look})('menu', '::before')")[1], '"cell refused: 18 words, 18 in links"')
        self.assertEqual(self.browser.evaluate(f"({look})('text', '::before')")[1], '"cell: 200 words"')
        table = self.browser.evaluate("getComputedStyle(document.querySelector('table')).outlineStyle")
        self.assertEqual(table, "solid")
        self.assertIn("200 of its 218 words are chosen", self.browser.evaluate(
            "getComputedStyle(document.documentElement, '::before').content"))

    def test_example_pages(self):
        for page in sorted((ROOT / "examples/pages").glob("*.html")):
            with self.subTest(page.name):
                self.check(str(page))

    def test_corpus_sample(self):
        if not CORPUS.is_dir():
            self.skipTest(f"there is no {CORPUS}")
        for name, page in corpus_sample():
            with self.subTest(name):
                self.check(str(page))


if __name__ == "__main__":
    unittest.main(verbosity=2)
