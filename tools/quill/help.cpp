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
  them apart. With --output a page from a folder keeps its path below that folder: quill -o out site writes
  site/a/b.html as out/a/b.txt (.json with --json, .marked.html for marked pages). Where that name is taken,
  the later page keeps its own ending: b.html.gz.txt.

  --json prints one object per line: file, type, text, document_text, charset, spans. The spans say where in
  the page the text comes from, in its order: [offset, length] of characters without markup, in bytes of the
  page (unpacked), whatever its charset.

Marked pages:
  --highlight and --explain print a page to look at in a browser, always in UTF-8. It is the page itself;
  no script, plug-in, frame or form of it works, and it leads nowhere by itself. Each run of its main content
  stands in <mark data-quill="NUMBER">. --explain draws what the choice was made from: each table (or block)
  in a solid outline if it won and a dashed one if not, from red for rank 0 to green for rank 1, with its rank
  and its words; striped in red the cells of winners that were refused, in gray what was taken for clutter.

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
  quill --explain page.html > why.html   why was this chosen?

Exit codes:
  0  all went well
  1  an input could not be read, or the output not be written; standard error says which
  2  wrong usage)";

}  // namespace QuillTool
