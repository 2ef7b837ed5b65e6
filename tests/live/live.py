"""Runs the host for live pages against a server of its own on the loopback interface.

QUILL_LIVE names the program. Without a browser the tests are skipped, unless QUILL_LIVE_REQUIRED is set.
"""
import http.server
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest

PROGRAM = os.environ["QUILL_LIVE"]
BROWSERS = ("chromium", "chromium-browser", "google-chrome")


def main():
    if not any(map(shutil.which, BROWSERS)) and not os.environ.get("QUILL_LIVE_REQUIRED"):
        print("skipped: no browser is installed (scripts/live-test installs one)")
        sys.exit()
    unittest.main()


def page(body, head=""):
    return f"<!DOCTYPE html><html><head><title>Title</title>{head}</head><body>{body}</body></html>"


class Server(http.server.ThreadingHTTPServer):
    """Serves `pages`: by path the text of a page, or a function of the request. A page that is to hang waits for
    `closing`."""
    daemon_threads = True

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Request)
        self.pages = {}
        self.asked = []
        self.closing = threading.Event()
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def close(self):
        self.closing.set()
        self.shutdown()
        self.server_close()

    def handle_error(self, request, client_address):
        pass  # browsers that are killed hang up


class Request(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.server.asked.append(self.path)
        content = self.server.pages.get(self.path)
        if content is None:
            self.send_error(404)
        elif callable(content):
            content(self)
        else:
            self.answer(content.encode())

    def answer(self, body, content_type="text/html; charset=utf-8", whole=True):
        """Sends the headers and the body; one that is not whole goes on, for who waits."""
        self.send_response(200)
        self.send_header("Content-Type", content_type)
        if whole:
            self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)
        self.wfile.flush()

    def hang(self):
        self.server.closing.wait()

    def log_message(self, *arguments):
        pass


class LiveTest(unittest.TestCase):
    """Each run has a folder for temporary files of its own, which has to be empty afterwards; and no process may be
    left that knows of it."""

    def setUp(self):
        self.server = Server()
        self.addCleanup(self.server.close)
        self.port = self.server.server_port
        folder = tempfile.TemporaryDirectory(prefix="quill live test ")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def url(self, path="/", host="127.0.0.1"):
        return f"http://{host}:{self.port}{path}"

    def serve(self, pages):
        self.server.pages.update(pages)

    def start(self, *arguments, path=None):
        environment = dict(os.environ, TMPDIR=str(self.folder))
        if path is not None:
            environment["PATH"] = path
        return subprocess.Popen([PROGRAM, *arguments], env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def finish(self, run, code=0, said=()):
        """Waits for the end, and returns the output. `said` are words of standard error; without any it is empty."""
        out, err = run.communicate(timeout=90)
        message = err.decode()
        self.assertEqual(run.returncode, code, message)
        self.assert_nothing_is_left()
        for words in said:
            self.assertIn(words, message)
        if not said:
            self.assertEqual(message, "")
        return out.decode()

    def live(self, *arguments, code=0, said=(), path=None):
        return self.finish(self.start(*arguments, path=path), code, said)

    def lines(self, *arguments, **options):
        return [line.strip() for line in self.live(*arguments, **options).splitlines() if line.strip()]

    def processes(self, words=""):
        """The processes that know of the folder and have such a command line. Zombies have none."""
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                command = (process / "cmdline").read_bytes()
                knows = str(self.folder).encode() in command + (process / "environ").read_bytes()
            except OSError:
                continue
            if command and knows and words.encode() in command:
                found.append(int(process.name))
        return found

    def assert_nothing_is_left(self):
        self.assertEqual(self.processes(), [])
        self.assertEqual(os.listdir(self.folder), [])

    def wait_for(self, condition):
        deadline = time.monotonic() + 30
        while not condition():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.02)
