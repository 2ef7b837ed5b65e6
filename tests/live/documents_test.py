"""What is read of a page and its frames."""
import json
import unittest

from live import LiveTest, main, page


class LiveDom(LiveTest):
    def test_text_written_by_scripts(self):
        self.serve({
            "/": page("<p>Alpha</p><script>document.body.append('by script')</script><p id=later>gone</p>"
                      "<script>fetch('/data').then(r => r.text()).then(t => { later.textContent = t })</script>"),
            "/data": lambda request: (request.server.closing.wait(1), request.answer(b"after a second"))})
        self.assertEqual(self.lines(self.url()), ["Alpha", "by script", "after a second"])

    def test_json(self):
        self.serve({"/": page("<script>location.replace('/moved')</script>"), "/moved": page("<p>Grüße \U0001F30A")})
        row = json.loads(self.live("--json", self.url()))
        self.assertEqual(list(row), ["url", "complete", "text"])
        self.assertEqual((row["url"], row["complete"]), (self.url("/moved"), True))
        self.assertEqual(row["text"].strip(), "Grüße \U0001F30A")

    def test_strings_that_are_no_unicode_lose_nothing_else(self):
        self.serve({"/": page("<p>Alpha<script>document.body.append('a \\ud800 b \\0 c')</script>"
                              "<iframe srcdoc='<p>Beta'></iframe>")})
        text = self.live(self.url())
        self.assertRegex(text, "a \ufffd b \ufffd c")
        self.assertIn("Beta", text)

    def test_dialogs_are_answered(self):
        self.serve({"/": page("<p>Alpha</p><script>alert('!'); document.body.append(confirm('?') ? 'yes' : 'no')"
                              "</script>")})
        self.assertEqual(self.lines(self.url()), ["Alpha", "yes"])

    def test_the_page_cannot_disturb_the_reading(self):
        self.serve({"/": page("<p>Alpha</p><script>String.prototype.replaceAll = () => 'forged';"
                              "Object.defineProperty(document, 'body', {value: null});"
                              "Element.prototype.querySelectorAll = () => { throw 0 }</script>"
                              "<iframe srcdoc='<p>Beta'></iframe>")})
        self.assertEqual(self.lines(self.url()), ["Alpha", "Beta"])

    def test_plain_text(self):
        self.serve({"/": lambda request: request.answer(b"a < b", "text/plain")})
        self.assertEqual(self.lines(self.url()), ["a < b"])

    def test_a_page_without_a_body_has_no_text(self):
        self.serve({"/": lambda request: request.answer(b"<svg xmlns='http://www.w3.org/2000/svg'/>", "image/svg+xml")})
        self.assertEqual(self.live(self.url()), "")


class Frames(LiveTest):
    def test_nested_frames_come_in_document_order(self):
        self.serve({
            "/": page("<p>top</p><script>const frame = document.createElement('iframe'); frame.src = '/third';"
                      "document.body.prepend(frame)</script><iframe src=/first></iframe><p><object data=/second></object>"),
            "/first": page("<p>first</p><iframe src=/inner></iframe>"),
            "/inner": page("<p>inner</p>"), "/second": page("<p>second</p>"), "/third": page("<p>third</p>")})
        self.assertEqual(self.lines(self.url()), ["top", "third", "first", "inner", "second"])

    def test_frames_from_other_origins(self):
        other = self.url("/other", "localhost")
        self.serve({
            "/": page(f"<p>top</p><iframe src='{other}'></iframe><iframe src=/same></iframe>"),
            "/other": page(f"<p>other</p><iframe src='{self.url('/back')}'></iframe><iframe src=/same></iframe>"),
            "/back": page("<p>back</p>"), "/same": page("<p>same</p>")})
        for arguments in ([], ["--source"]):
            with self.subTest(arguments):
                self.assertEqual(self.lines(*arguments, self.url()), ["top", "other", "back", "same", "same"])

    def test_frames_without_an_address_and_in_shadow_trees(self):
        self.serve({
            "/": page("<p>top</p><div id=closed></div><div id=open></div><iframe></iframe>"
                      "<iframe srcdoc='<p>srcdoc'></iframe><iframe src='data:text/html,<p>data'></iframe>"
                      "<script>for (const mode of ['open', 'closed']) document.getElementById(mode)"
                      ".attachShadow({mode}).innerHTML = `<iframe src=/${mode}></iframe>`</script>"),
            "/open": page("<p>in an open one"), "/closed": page("<p>in a closed one")})
        self.assertEqual(self.lines(self.url()), ["top", "in an open one", "srcdoc", "data", "in a closed one"])

    def test_frames_that_fail_leave_the_others(self):
        self.serve({"/": page("<p>top</p><iframe src='http://127.0.0.1:9/'></iframe><iframe src=/good></iframe>"
                              "<iframe src=/empty></iframe>"),
                    "/good": page("<p>good</p>"),
                    "/empty": lambda request: (request.send_response(204), request.end_headers())})
        self.assertEqual(self.lines(self.url()), ["top", "good"])

    def test_a_frame_that_is_removed_while_it_loads(self):
        self.serve({"/": page("<p>top</p><iframe id=frame src=/slow></iframe>"
                              "<script>setTimeout(() => frame.remove(), 300)</script>"),
                    "/slow": lambda request: request.hang()})
        self.assertEqual(self.lines(self.url()), ["top"])


class Source(LiveTest):
    def test_is_what_the_server_sent(self):
        self.serve({"/": page("<p id=text>as sent</p><iframe src=/frame></iframe>"
                              "<script>text.textContent = 'as changed'</script>"),
                    "/frame": page("<p>frame</p><script>document.body.textContent = ''</script>")})
        self.assertEqual(self.lines(self.url()), ["as changed"])
        self.assertEqual(self.lines("--source", self.url()), ["as sent", "frame"])
        self.assertEqual(self.server.asked.count("/"), 2)  # one for each run

    def test_keeps_its_character_set(self):
        text = "<p>Übergröße żółć"
        for head, encoding, content_type in (("", "iso-8859-2", "text/html; charset=iso-8859-2"),
                                             ("<meta charset=iso-8859-2>", "iso-8859-2", "text/html"),
                                             ("<meta charset=iso-8859-1>", "utf-8", "text/html; charset=utf-8"),
                                             ("", "utf-16", "text/html")):
            with self.subTest(encoding=encoding, head=head):
                body = page(text.replace("Ü", "Ö"), head).encode(encoding)
                self.serve({"/": lambda request: request.answer(body, content_type)})
                self.assertEqual(self.lines("--source", self.url()), ["Öbergröße żółć"])


if __name__ == "__main__":
    main()
