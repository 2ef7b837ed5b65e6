"""Chromium without a window, driven over its debugging pipe."""
import json
import os
import shutil
import subprocess
import tempfile

PROGRAM = shutil.which("chromium")

# Nothing of the outside world is asked for, whatever a page wants to load.
OPTIONS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
           "--disable-background-networking", "--disable-component-update", "--disable-sync",
           "--host-resolver-rules=MAP * ~NOTFOUND", "--remote-debugging-pipe", "--window-size=1200,1600"]


class Browser:
    """A browser with one page. Use it in a with statement."""

    def __enter__(self):
        self.profile = tempfile.TemporaryDirectory(prefix="quill-browser-", ignore_cleanup_errors=True)
        to_browser, self.requests = os.pipe()
        self.answers, from_browser = os.pipe()

        def as_descriptors_3_and_4():
            ends = [os.dup(to_browser), os.dup(from_browser)]  # clear of 3 and 4, which may be in use
            ends = [os.dup(end) for end in ends] if min(ends) < 5 else ends
            os.dup2(ends[0], 3)
            os.dup2(ends[1], 4)

        self.process = subprocess.Popen([PROGRAM, *OPTIONS, f"--user-data-dir={self.profile.name}"],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL, close_fds=False,
                                        preexec_fn=as_descriptors_3_and_4)
        os.close(to_browser)
        os.close(from_browser)
        self.received = b""
        self.sent = 0
        self.session = None
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        self.call("Page.enable")
        return self

    def __exit__(self, *_):
        self.session = None
        self.call("Browser.close")
        self.process.wait(30)
        os.close(self.requests)
        os.close(self.answers)
        self.profile.cleanup()

    def open(self, file):
        """Loads a file and returns when all of it is there."""
        self.call("Page.navigate", url=file.resolve().as_uri())
        self.wait_for(lambda message: message.get("method") == "Page.loadEventFired")

    def evaluate(self, expression):
        """The value of a JavaScript expression in the page, whatever the page's policy says of scripts."""
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True)
        assert "exceptionDetails" not in answer, answer
        return answer["result"].get("value")

    def call(self, method, **parameters):
        self.sent += 1
        request = {"id": self.sent, "method": method, "params": parameters}
        if self.session:
            request["sessionId"] = self.session
        data = json.dumps(request).encode() + b"\0"
        while data:
            data = data[os.write(self.requests, data):]
        answer = self.wait_for(lambda message: message.get("id") == request["id"])
        assert "error" not in answer, answer
        return answer["result"]

    def wait_for(self, wanted):
        while True:
            end = self.received.find(b"\0")
            if end < 0:
                more = os.read(self.answers, 1 << 20)
                assert more, "the browser has gone"
                self.received += more
                continue
            message = json.loads(self.received[:end])
            self.received = self.received[end + 1:]
            if wanted(message):
                return message
