"""Several pages at a time give what one at a time gives."""
import unittest

from host import HostTest


class Threads(HostTest):
    def test_output_and_errors_stay_in_the_order_of_the_inputs(self):
        arguments = []
        for i in range(120):
            arguments.append(f"{i}.html")
            if i % 30 != 7:  # sizes far apart, so that pages are done out of order
                self.write(arguments[-1], f"Page {i} " + "word " * (100_000 if i % 40 == 0 else i))
        missing = [f"{i}.html" for i in range(7, 120, 30)]
        for show in ([], ["--json"]):
            alone = self.quill(*show, "--jobs", "1", *arguments, code=1, errors=missing)
            self.assertGreater(len(alone), 1_000_000)
            for jobs in ("2", "7", "256"):
                self.assertEqual(self.quill(*show, "--jobs", jobs, *arguments, code=1, errors=missing), alone)

    def test_files_are_written_by_all_threads(self):
        for i in range(100):
            self.write(f"site/{i % 7}/{i % 3}/{i}.html", f"Page {i}")
        self.quill("--jobs", "4", "--output", "out", "site")
        for i in range(100):
            self.assertEqual((self.folder / f"out/{i % 7}/{i % 3}/{i}.txt").read_text().rstrip(), f"Page {i}")


if __name__ == "__main__":
    unittest.main()
