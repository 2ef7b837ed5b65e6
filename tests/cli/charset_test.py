"""--charset, and what happens without it."""
import unittest

from host import HostTest, page


class Charset(HostTest):
    def test_a_named_character_set_counts(self):
        text = "Größe “naïve”"
        for name, encoding in (("65001", "utf-8"), ("UTF8", "utf-8"), ("1252", "cp1252"), ("latin1", "cp1252"),
                               ("1201", "utf-16-le"), ("utf-16", "utf-16-le"), ("1200", "utf-16-be")):
            data = page(text).decode().encode(encoding)
            self.assertEqual(self.quill("--charset", name, input=data).decode().rstrip(), text)

    def test_without_one_the_page_decides(self):
        text = "Größe “naïve”"
        declared = b"<meta charset=windows-1252>"
        for data in (page(text), page(text).decode().encode("utf-16"), declared + page(text).decode().encode("cp1252"),
                     page(text).decode().encode("cp1252")):
            self.assertEqual(self.quill(input=data).decode().rstrip(), text)


if __name__ == "__main__":
    unittest.main()
