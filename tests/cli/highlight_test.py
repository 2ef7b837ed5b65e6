"""Where the text came from: spans, and the page with the text marked."""
import unittest

from host import HostTest


class Spans(HostTest):
    def spans(self, data, *options):
        row = self.objects(*options, input=data)[0]
        return row["charset"], [data[offset:offset + length] for offset, length in row["spans"]]

    def test_they_are_the_characters_of_the_text_and_no_markup(self):
        for markup, pieces in (
                ("<p>one <b>two</b> three", ["one ", "two", " three"]),
                ("<p>one</em>two<!-- x -->three", ["one", "two", "three"]),
                ("<p>one &amp; two\r\n", ["one &amp; two\r\n"]),
                ("<p>a</p><script>no</script><select><option>no</select><p>b", ["a", "b"]),
                ("<p>a</p><table>b<tr><td>c</table>", ["a", "b", "c"]),
                ("<pre>\n a\n</pre>", [" a\n"]),
                ("<p>a<xmp><b>&amp;</xmp>", ["a", "<b>&amp;"]),
                ("text", ["text"]),
                ("<p> <b> </b> ", []),
                ("", []),
        ):
            with self.subTest(markup):
                self.assertEqual(self.spans(markup.encode())[1], [piece.encode() for piece in pieces])

    def test_they_come_in_the_order_of_the_text(self):
        page = b"<table><tfoot><tr><td>last<tbody><tr><td>one<td>two</table>"
        self.assertEqual(self.spans(page)[1], [b"one", b"two", b"last"])

    def test_clutter_has_none(self):
        clutter = b"<table><tr><td>" + b"<a href=x>one two</a>" * 9 + b"<td>"
        text = b"The tide rises and falls. " * 30
        self.assertEqual(self.spans(clutter + text)[1], [text])

    def test_they_are_bytes_of_the_page_in_every_character_set(self):
        pieces = ["Größe „naïve“", "½ \U0001F30A", "潮汐", "end"]
        for name, charset, encoding in (("UTF-8", "utf-8", "utf-8"), ("UTF-8", None, "utf-8-sig"),
                                        ("UTF-16LE", "1201", "utf-16-le"), ("UTF-16BE", "1200", "utf-16-be"),
                                        ("UTF-16LE", None, "utf-16"), ("windows-1252", "1252", "cp1252"),
                                        ("Shift_JIS", "shift_jis", "shift_jis"), ("gb18030", "gb18030", "gb18030"),
                                        ("ISO-2022-JP", "iso-2022-jp", "iso2022_jp"), ("Big5", "big5", "big5"),
                                        ("EUC-JP", "euc-jp", "euc_jp"), ("EUC-KR", "euc-kr", "euc_kr"),
                                        ("KOI8-R", "koi8-r", "koi8_r")):
            expected = [piece.encode(encoding, "replace").decode(encoding) for piece in pieces]
            page = "<body><i>" + "<b>".join(expected) + "</i>"
            options = ["--charset", charset] if charset else []
            with self.subTest(encoding):
                found, spans = self.spans(page.encode(encoding), *options)
                self.assertEqual(found, name)
                # UTF-16 with a mark is UTF-16 without one from here on.
                plain = "utf-16-le" if encoding == "utf-16" else "utf-8" if encoding == "utf-8-sig" else encoding
                self.assertEqual([span.decode(plain) for span in spans], expected)

    def test_broken_bytes_shift_nothing(self):
        page = b"<p>a\x81\xff<b>b\xe3\x81</b>c\x8f<i>d</i>"
        pieces = [b"a\x81\xff", b"b\xe3\x81", b"c\x8f", b"d"]
        for charset in ("utf-8", "windows-1252", "shift_jis", "gb18030", "euc-jp", "iso-2022-jp", "big5"):
            self.assertEqual(self.spans(page, "--charset", charset)[1], pieces, charset)


class MarkedPages(HostTest):
    def marked(self, markup, option="--highlight"):
        """The marked page behind what is put in front of it."""
        page = self.quill(option, input=markup.encode()).decode()
        self.assertTrue(page.startswith("\ufeff"), page)
        return page[page.rindex("</style>") + len("</style>"):]

    def test_text_is_marked_and_the_rest_stays_as_it_is(self):
        for markup, marked in (
                ("<P CLASS=x> one <b>two\n</b><br/>three", "<P CLASS=x> {1:one} <b>{2:two}\n</b><br/>{3:three}"),
                ("<p>one</em>two", "<p>{1:one}</em>{1:two}"),
                ("<p>a &lt;&amp b</p>", "<p>{1:a &lt;&amp b}</p>"),
                ("<p>a<script>if (a < b) c</script>", "<p>{1:a}<script>if (a < b) c</script>"),
                ("<table>a<tr><td>b</td></tr>c</table>", "<table>{1:a}<tr><td>{2:b}</td></tr>{1:c}</table>"),
                ("<xmp>\n<b>&</xmp>", "<pre>{1:\n&lt;b>&amp;}</pre>"),
                ("a<plaintext></plaintext>", "{1:a}<pre>{2:&lt;/plaintext>}"),
                ("<math><mi><![CDATA[a<b]]></math>", "<math><mi>{1:a&lt;b}</math>"),
        ):
            expected = ""
            for part in marked.split("{"):
                run, colon, rest = part.partition(":")
                expected += f'<mark data-quill="{run}">' + rest.replace("}", "</mark>") if colon else part
            self.assertEqual(self.marked(markup), expected)

    def test_what_harms_goes_and_what_helps_stays(self):
        for markup, safe in (
                ("<meta charset=latin1><p>", "<p>"),
                ("<META HTTP-EQUIV=Refresh content='0;url=x'>", ""),
                ("<meta http-equiv=content-security-policy content=x><meta name=a content=b>", "<meta name=a content=b>"),
                ("<base href=x><link rel=stylesheet href=y>", "<base href=x><link rel=stylesheet href=y>"),
                ("<noscript>a</noscript>", '<quill-noscript><mark data-quill="1">a</mark></quill-noscript>'),
                ("<p title='<noscript>'></p><textarea></noscript></textarea>",
                 "<p title='<noscript>'></p><textarea></noscript></textarea>"),
        ):
            self.assertEqual(self.marked("<!doctype html>" + markup).replace('<mark data-quill="1">a</mark>', "a"),
                             safe.replace('<mark data-quill="1">a</mark>', "a"))
        self.assertIn(b"script-src 'none'", self.quill("--highlight", input=b"<p>a"))

    def test_what_is_put_in_front_stands_behind_the_doctype(self):
        for prolog in ("", "<!-- <p> --> <!DOCTYPE html>\n", "<?xml version='1.0'?><!DOCTYPE html>"):
            page = self.quill("--highlight", input=(prolog + "<html><p>a").encode()).decode()
            self.assertTrue(page.startswith("\ufeff" + prolog + '<meta charset="utf-8">'), page)

    def test_explained_pages_say_what_was_chosen(self):
        table = "<table><tr><td>" + "<a href=x>one two</a>" * 9 + "<td>" + "The tide rises. " * 40 + "</table>"
        page = self.marked(table, "--explain")
        self.assertRegex(page, r'^<table data-quill-table="winner" data-quill-heat="\d+" '
                               r'data-quill-label="rank \d\.\d\d · winner · 138 words, 18 in links">')
        self.assertIn('<td data-quill-cell="refused" data-quill-label="cell refused: 18 words, 18 in links">', page)
        self.assertIn('<td data-quill-cell="good" data-quill-label="cell: 120 words">', page)
        blocks = "<nav>Home</nav><div><a href=x>one</a></div><div>" + "The tide rises. " * 40 + "</div>"
        page = self.marked(blocks, "--explain")
        self.assertIn('<nav data-quill-unread data-quill-label="clutter, not read">Home', page)
        self.assertRegex(page, r'<div data-quill-cell="good" data-quill-table="winner"|<div data-quill-table="winner"')
        self.assertRegex(page, r'<div data-quill-table="loser" data-quill-heat="0" data-quill-label="rank 0.00 · not')


if __name__ == "__main__":
    unittest.main()
