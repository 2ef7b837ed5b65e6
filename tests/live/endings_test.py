"""Pages that do not finish, browsers that are missing or die, signals; and that nothing is left in any case."""
import json
import os
import pathlib
import signal
import socket
import unittest

from live import BROWSERS, LiveTest, main, page

BUSY = "still busy"


class UnfinishedPages(LiveTest):
    def test_a_page_that_never_finishes_is_read_at_the_timeout(self):
        never = lambda request: request.hang()
        self.serve({
            "/image": page("<p>Alpha</p><img src=/never>"),
            "/frame": page("<p>Alpha</p><iframe src=/never></iframe>"),
            "/fetch": page("<p>Alpha</p><script>fetch('/never')</script>"),
            "/document": lambda request: (request.answer(page("<p>Alpha</p>").encode(), whole=False), request.hang()),
            "/script": page("<p>Alpha</p><script>onload = () => { for (;;) { } }</script>"),
            "/reload": page("<p>Alpha</p><script>setTimeout(() => location.reload(), 200)</script>"),
            "/never": never})
        for path in ("/image", "/frame", "/fetch", "/document", "/script", "/reload"):
            with self.subTest(path):
                self.assertEqual(self.lines("--timeout", "4000", self.url(path), said=[BUSY]), ["Alpha"])
        for path in ("/image", "/document"):
            with self.subTest(source=path):
                row = json.loads(self.live("--source", "--json", "--timeout", "4000", self.url(path), said=[BUSY]))
                self.assertEqual((row["text"].strip(), row["complete"]), ("Alpha", False))

    def test_wait_reads_after_a_fixed_time(self):
        self.serve({"/": page("<p>Alpha</p><img src=/never><script>setTimeout(() => document.body.append('early'), 50);"
                              "setTimeout(() => document.body.append('late'), 20000)</script>"),
                    "/never": lambda request: request.hang()})
        self.assertEqual(self.lines("--wait", "1500", self.url()), ["Alpha", "early"])

    def test_streams_of_events_are_not_waited_for(self):
        self.serve({"/": page("<p>Alpha</p><script>new EventSource('/events')</script>"),
                    "/events": lambda request: (request.answer(b"data: 1\n\n", "text/event-stream", whole=False),
                                                request.hang())})
        self.assertEqual(self.lines(self.url()), ["Alpha"])

    def test_no_page_at_all(self):
        self.serve({"/never": lambda request: request.hang(),
                    "/file": lambda request: request.answer(b"\0\1", "application/octet-stream")})
        with socket.socket() as unused:
            unused.bind(("127.0.0.1", 0))
            for url, words in ((self.url("/never"), "no answer within 4000 ms"), (self.url("/file"), "download"),
                               (f"http://127.0.0.1:{unused.getsockname()[1]}/", "ERR_CONNECTION_REFUSED"),
                               ("nonsense:", "")):
                with self.subTest(url):
                    self.assertEqual(self.live("--timeout", "4000", url, code=1, said=[f"quill-live: {url}: ", words]), "")


class Browsers(LiveTest):
    def test_none(self):
        said = self.live(self.url(), path=str(self.folder), code=1, said=["none found", *BROWSERS])
        self.assertEqual(said, "")
        self.live("--browser", "/nonexistent", self.url(), code=1, said=["/nonexistent"])

    def test_programs_that_are_no_browser(self):
        for program in ("/bin/false", "/bin/true"):
            with self.subTest(program):
                self.live("--browser", program, self.url(), code=1, said=[program, "has ended"])

    def test_wrong_usage(self):
        for arguments in ([], ["--nonsense"], ["a:", "b:"], ["no-scheme"], ["--wait", "-1", "a:"],
                          ["--timeout", "0", "a:"], ["--wait", "soon", "a:"], ["--browser", "", "a:"]):
            with self.subTest(arguments):
                self.live(*arguments, code=2, said=["--help"])


class Interruptions(LiveTest):
    def loading(self):
        """A run whose page never finishes, when the page is being loaded."""
        self.serve({"/": page("<p>Alpha</p><img src=/never>"), "/never": lambda request: request.hang()})
        run = self.start(self.url())
        self.wait_for(lambda: "/never" in self.server.asked)
        return run

    def browser_of(self, run):
        return int(pathlib.Path(f"/proc/{run.pid}/task/{run.pid}/children").read_text().split()[0])

    def test_signals_end_the_browser_too(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number):
                self.server.asked.clear()
                run = self.loading()
                run.send_signal(number)
                self.assertEqual(self.finish(run, code=-number), "")

    def test_a_signal_while_the_browser_starts(self):
        run = self.start(self.url())
        self.wait_for(lambda: self.processes("--remote-debugging-pipe"))
        run.send_signal(signal.SIGTERM)
        self.finish(run, code=-signal.SIGTERM)

    def test_the_browser_does_not_outlive_a_host_that_is_killed(self):
        run = self.loading()
        run.kill()
        run.communicate()
        self.wait_for(lambda: not self.processes())

    def test_a_page_that_crashes(self):
        run = self.loading()
        for process in self.processes("--type=renderer"):
            os.kill(process, signal.SIGKILL)
        self.assertEqual(self.finish(run, code=1, said=["the page has crashed"]), "")

    def test_a_browser_that_is_killed(self):
        run = self.loading()
        os.kill(self.browser_of(run), signal.SIGKILL)
        self.assertEqual(self.finish(run, code=1, said=["the browser has ended"]), "")

    def test_a_browser_that_hangs(self):
        run = self.loading()
        os.kill(self.browser_of(run), signal.SIGSTOP)
        run.send_signal(signal.SIGTERM)
        self.finish(run, code=-signal.SIGTERM)


if __name__ == "__main__":
    main()
