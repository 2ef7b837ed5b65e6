#include "help.h"

namespace QuillTool {

const char* const kHelpUsage = "quill [OPTIONS] [FILE|DIR|-]...";

const char* const kHelpDescription =
    "Prints the readable main content of HTML pages as UTF-8 text, without the navigation bars, link lists\n"
    "and other clutter around it.";

const char* const kHelpFooter = R"(
Inputs:
  A folder stands for the pages in it and below it, in the order of their names: *.html, *.htm, *.xhtml,
  each also with .gz. Files packed with gzip are unpacked, whatever their name. "-" is standard input, and
  so is a command line without inputs. A file whose name begins with "-" comes after "--".

Output:
  The texts of several pages follow one another with one blank line between them. --json and --output tell
  them apart. --json prints one object per line: file, type, text, document_text. With --output a page from
  a folder keeps its path below that folder: quill -o out site writes site/a/b.html as out/a/b.txt (.json
  with --json). Where that name is taken, the later page keeps its own ending: b.html.gz.txt.

Character sets:
  --charset takes the labels of the web, such as utf-8, windows-1252 or shift_jis, and code-page numbers,
  such as 65001, 1252 or 932. UTF-16 is 1201 with the low byte first and 1200 with the high byte first.
  Without it the page says what it is in, or it is found out.

Examples:
  quill page.html                        its main content
  curl -s https://example.org | quill    a page from standard input
  quill --json --jobs 4 site > site.jsonl
  quill --output texts site              one text file per page
  quill --type *.html                    which pages are mostly links?

Exit codes:
  0  all went well
  1  an input could not be read, or the output not be written; standard error says which
  2  wrong usage)";

}  // namespace QuillTool
