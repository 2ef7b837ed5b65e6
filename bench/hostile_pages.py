"""Pages made to hurt: each a function of the size in bytes that it is to have, nearly."""
import random


def repeat(unit):
    return lambda size: unit * (size // len(unit))


def framed(before, unit, after=b""):
    return lambda size: before + unit * ((size - len(before) - len(after)) // len(unit)) + after


def distinct(form, before=b"", after=b""):
    """The form with ever different numbers."""
    def make(size):
        pieces, left, number = [before], size - len(before) - len(after), 0
        while left > 0:
            pieces.append(form.replace(b"%d", b"%d" % number))
            left -= len(pieces[-1])
            number += 1
        return b"".join(pieces + [after])
    return make


def halves(first, second, before=b""):
    """As many of the first as of the second, all of the first before the second."""
    def make(size):
        count = (size - len(before)) // (len(first) + len(second))
        return before + first * count + second * count
    return make


def long_one(before, after, rest):
    """One long piece of letters in the first half, then many short ones."""
    return lambda size: before + b"x" * (size // 2) + after + rest * (size // 2 // len(rest))


def noise(declared):
    """Random bytes, high ones for the most part, under the name of an encoding."""
    def make(size):
        generator = random.Random(1)
        head = b"<meta charset=" + declared + b"><p>"
        return head + bytes(generator.choices(range(0x20, 0x100), k=size - len(head)))
    return make


def blocks(unit, size):
    """A nest of 150 that is closed again, over and over."""
    opening, closing = unit
    block = opening * 150 + closing * 150
    return block * (size // len(block))


ENCODINGS = (
    b"ibm866 iso-8859-2 iso-8859-3 iso-8859-4 iso-8859-5 iso-8859-6 iso-8859-7 iso-8859-8 iso-8859-8-i iso-8859-10 "
    b"iso-8859-13 iso-8859-14 iso-8859-15 iso-8859-16 koi8-r koi8-u macintosh windows-874 windows-1250 windows-1251 "
    b"windows-1252 windows-1253 windows-1254 windows-1255 windows-1256 windows-1257 windows-1258 x-mac-cyrillic gbk "
    b"gb18030 big5 euc-jp iso-2022-jp shift_jis euc-kr utf-8 replacement x-user-defined").split()

PAGES = {
    # nesting
    "open tables": repeat(b"<table><tr><td>"),
    "open tables with text": repeat(b"<table><tr><td>word "),
    "tables in tables, no cells": repeat(b"<table>"),
    "open b": repeat(b"<b>"),
    "open div": repeat(b"<div>"),
    "open unknown tags": distinct(b"<x%d>"),
    "open unknown tags with text": distinct(b"<x%d>word "),
    "divs closed and opened again": lambda size: blocks((b"<div>", b"</div>"), size),
    "deep divs closed and opened": framed(b"<div>" * 600, b"<div>x</div></div>"),
    "deep spans and blocks": framed(b"<span>" * 600, b"<p>x<li>y"),
    "open a": repeat(b"<a href=x>word "),
    "open form": repeat(b"<form>"),
    "closed forms": repeat(b"<form><div></form>"),
    "open p and button": repeat(b"<p><button>"),
    "open svg": repeat(b"<svg><g>"),
    "svg and a": repeat(b"<svg><a>"),
    "math and text": repeat(b"<math><mi><p>"),
    "math, svg and html in turn": repeat(b"<math><annotation-xml encoding=text/html><svg><desc><b>"),
    "open template": repeat(b"<template>"),
    "templates with rows": repeat(b"<template><tr><td>x"),
    "templates, opened and closed": repeat(b"<template><td>x</template>"),
    "open select and option": repeat(b"<select><option>x"),
    "selects in objects": repeat(b"<select><option>x<object>"),
    "selected contents": framed(b"<select><option>" + b"<br>" * 999 + b"</option>",
                                b"<selectedcontent></selectedcontent><object><select><selectedcontent>"
                                b"</selectedcontent></select></object>"),
    "nested selected contents": framed(b"<select><selectedcontent></selectedcontent><option><object>" * 160, b"<br>"),
    "frameset": repeat(b"<frameset>"),
    "framesets and frames": repeat(b"<frameset><frame>"),
    "dd and dt": repeat(b"<dd><dt>"),
    "li in li": repeat(b"<li>"),
    "li and section": framed(b"<li><section>" + b"<span>" * 500, b"<li>"),
    "li below spans": framed(b"<span>" * 500, b"<li>x"),
    "lists in lists": repeat(b"<ul><li>"),
    "ruby": repeat(b"<ruby><rt><rp>x"),
    "headings": repeat(b"<h1><h2>"),
    # formatting
    "open formatting, blocks between": repeat(b"<b><i><p>x"),
    "misnested formatting": repeat(b"<b><p></b>x"),
    "misnested formatting, both ways": repeat(b"<b><p>x<i></b>y</i>"),
    "misnested a": repeat(b"<a href=x><div>x</a>"),
    "a in a": repeat(b"<a><p>"),
    "a in table": framed(b"<table>", b"<a>x"),
    "nobr": repeat(b"<nobr><p>"),
    "fonts": distinct(b"<font a=%d>x"),
    "fonts closed by p": distinct(b"<p><font a=%d>x"),
    "misnested fonts": distinct(b"<font size=%d><p>x</font>"),
    "500 fonts, then p": framed(b"".join(b"<font a=%d>" % n for n in range(500)), b"<p>x</p>"),
    "500 fonts in p, then p": framed(b"<p>" + b"".join(b"<font a=%d>" % n for n in range(500)), b"<p>x</p>"),
    "500 b, then end tags": framed(b"<b>" * 500, b"</b><p>x"),
    "formatting in cells": framed(b"<table>", b"<tr><td><b><i>x"),
    "objects and formatting": repeat(b"<object><b>x"),
    "one long tag, misnested": long_one(b"<b a=", b">", b"<b><p>x</b>"),
    "one long tag, opened again": long_one(b"<p><b a=", b">", b"<p>x"),
    "one long style, opened again": long_one(b"<div><p><b style=", b">", b"<p>x"),
    "one long style, misnested": long_one(b"<div><b style=", b">", b"<p>x</b><b>"),
    "b and divs": halves(b"<b>", b"<div></b>"),
    "divs in b": halves(b"<b><div>", b"</b>"),
    "text and b in a table": framed(b"<table>", b"x<b>"),
    "foster-parented text": framed(b"<table>", b"<tr>word "),
    "tables and foster-parented i": repeat(b"<table><i>x"),
    "tables and foster-parented text": repeat(b"<table>word "),
    # end tags
    "end tags without start": repeat(b"</b></p></table>"),
    "a and an unknown end tag": repeat(b"a</x>"),
    "empty end tags": repeat(b"</>"),
    "spans, then unknown end tags": framed(b"<span>" * 500, b"</x>"),
    "unknown tags, then their ends": framed(b"<y>" * 500, b"</x>"),
    "one long name, then end tags": long_one(b"<x", b">", b"</x>"),
    "one long name, then ends of another": long_one(b"<x", b">", b"</y>"),
    "end tags of p": repeat(b"</p>"),
    "end tags of br": repeat(b"</br>"),
    "body and html, closed": repeat(b"</body></html>x"),
    # tokens
    "attributes in one tag": distinct(b"a%d=1 ", b"<div ", b">text</div>"),
    "attributes in one cell": distinct(b"a%d=1 ", b"<table><td ", b">text</table>"),
    "attributes in one b": distinct(b"a%d=1 ", b"<b ", b">text<b>x<b>y"),
    "the same attribute in one tag": framed(b"<div ", b"a=1 ", b">text</div>"),
    "html tags with attributes": distinct(b"<html a%d=1>"),
    "body tags with attributes": distinct(b"<body a%d=1>"),
    "a with long addresses": repeat(b"<a href=" + b"x" * 200 + b">y</a>"),
    "ampersands": repeat(b"&"),
    "references": repeat(b"&amp;"),
    "long character references": repeat(b"&CounterClockwiseContourIntegral;&#x10FFFF;&#9999999999;"),
    "nearly long character references": repeat(b"&CounterClockwiseContourIntegra"),
    "a reference of zeros": framed(b"&#", b"0"),
    "references to white space": repeat(b"&#32;&#10;"),
    "references to white space in a table": framed(b"<table>", b"&#32;&#10;"),
    "less-than signs": repeat(b"<"),
    "less-than signs and letters": repeat(b"<a<"),
    "open comment": framed(b"<!--", b"-"),
    "comments": repeat(b"<!---->"),
    "comments that nearly end": framed(b"<!--", b"--!-"),
    "text between comments": repeat(b"x<!---->"),
    "bogus comments": repeat(b"<?><!>"),
    "doctypes": repeat(b"<!doctype html>"),
    "open attribute value": framed(b"<a href=\"", b"x y "),
    "open script": framed(b"<script>", b"<!--<script>"),
    "script and less-than signs": framed(b"<script>", b"</script"),
    "scripts": repeat(b"<script></script>"),
    "titles": repeat(b"<title>x</title>"),
    "open title": framed(b"<title>", b"</titl>"),
    "titles that never end": repeat(b"<title>x</body>"),
    "open textarea": framed(b"<textarea>", b"</texta>&amp;"),
    "CDATA": framed(b"<svg>", b"<![CDATA[x]]>"),
    "open CDATA": framed(b"<svg><![CDATA[", b"]]x"),
    "plaintext": framed(b"<plaintext>", b"<x>"),
    "pre and newlines": repeat(b"<pre>\n\n"),
    "NUL characters": repeat(b"\0"),
    "NUL characters and text": repeat(b"\0x"),
    "NUL characters in a table": framed(b"<table>", b"\0"),
    "carriage returns": repeat(b"\r"),
    "white space": repeat(b" "),
    "white space and text": repeat(b" \t\n x"),
    "invalid UTF-8": repeat(b"\xff\xc3\xe2\x82"),
    "continuation bytes": repeat(b"\x80"),
    "invisible characters": repeat(b"\xe2\x80\x8b\xc2\xad"),
    "line separators": repeat(b"\xe2\x80\xa8"),
    # tables
    "huge colspan": framed(b"<table>", b"<tr><td colspan=1000000000>x"),
    "huge rowspan": framed(b"<table>", b"<tr><td rowspan=1000000000>x"),
    "huge spans both ways": framed(b"<table>", b"<tr><td rowspan=65534 colspan=1000>x"),
    "a rowspan on each row": framed(b"<table>", b"<tr><td rowspan=10000>x<td>y"),
    "many tables with spans": repeat(b"<table><td colspan=1000>x</table>"),
    "many tables with rowspans": repeat(b"<table><tr><td rowspan=9>x<td>y<tr><td>z</table>"),
    "nested tables with spans": repeat(b"<table><tr><td rowspan=9 colspan=9>x"),
    "nested tables with rows": repeat(b"<table><tr><td>x<tr><td rowspan=2>"),
    "tables in cells, each with text": repeat(b"<table><tr><td>one two<td>" * 400 + b"</table>" * 400),
    "tables beside tables in tables": repeat((b"<table><tr><td>x<td>" * 90 + b"</table>" * 90)),
    "small tables": repeat(b"<table><td>x</table>"),
    "small tables in a table": framed(b"<table><td>", b"<table><td>x</table>"),
    "small tables below a hundred": framed(b"<table><td>x" * 100, b"<table><td>x</table>"),
    "empty tables": repeat(b"<table></table>"),
    "empty cells": framed(b"<table>", b"<td>"),
    "cells": framed(b"<table>", b"<td>x"),
    "rows": framed(b"<table>", b"<tr><td>x"),
    "empty rows": framed(b"<table>", b"<tr>"),
    "row groups": framed(b"<table>", b"<tbody><tr><td>x"),
    "foot groups": framed(b"<table>", b"<tfoot><tr><td>x"),
    "captions": framed(b"<table>", b"<caption>x"),
    "columns": framed(b"<table>", b"<col><colgroup>"),
    # text
    "links only": repeat(b"<a href=x>link</a> "),
    "links in cells": framed(b"<table>", b"<td><a href=x>l</a>"),
    "line breaks": repeat(b"<br>"),
    "rules and words": repeat(b"<hr>x"),
    "paragraphs": repeat(b"<p>x"),
    "short words": repeat(b"x "),
    "one word": repeat(b"x"),
    "words in spans": repeat(b"<i>x</i>"),
    "spaces in spans": repeat(b"<i> </i>"),
    "random bytes without a name": noise(b""),
}
PAGES.update({"random bytes, " + name.decode(): noise(name) for name in ENCODINGS})
