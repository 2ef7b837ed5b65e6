#include "properties/random_page.h"

#include <iterator>
#include <random>

namespace {

class Writer {
public:
    Writer(unsigned int seed, PageKind kind) : random_(seed), links_(kind == PageKind::kLinks) {}

    std::string Page() {
        if (Choose(2) == 0) page_ += "<!doctype html><meta charset=utf-8><title>left out</title>\n";
        for (unsigned int left = 1 + Choose(6); left != 0; --left) Block(0);
        return page_;
    }

private:
    static constexpr unsigned int kDeepest = 3;

    unsigned int Choose(unsigned int bound) { return static_cast<unsigned int>(random_() % bound); }

    void Block(unsigned int depth) {
        static constexpr const char* kTags[] = {"div",        "p",       "h2",    "section",
                                                "blockquote", "article", "center"};
        static constexpr const char* kClutter[] = {"script",     "nav",
                                                   "footer",     "aside",
                                                   "style",      "select",
                                                   "div hidden", "div style='display: none'",
                                                   "main",       "div class=sidebar",
                                                   "form"};
        if (depth == kDeepest) return Run();
        switch (Choose(links_ ? 6 : 8)) {
            case 0: return Table(depth);
            case 1: return List(depth);
            case 2: return Run();
            case 6: return Element(kClutter[Choose(std::size(kClutter))], depth);
            case 7:
                page_ += "<pre>\n";
                Words(1 + Choose(20));
                page_ += "</pre>";
                return;
            default: return Element(kTags[Choose(std::size(kTags))], depth);
        }
    }

    void Element(const std::string& tag, unsigned int depth) {
        page_ += '<' + tag + '>';
        for (unsigned int left = 1 + Choose(3); left != 0; --left) Block(depth + 1);
        if (Choose(8) != 0) page_ += "</" + tag.substr(0, tag.find(' ')) + '>';
    }

    void List(unsigned int depth) {
        page_ += "<ul>\n";
        for (unsigned int left = 1 + Choose(4); left != 0; --left) {
            page_ += "<li>";
            Block(depth + 1);
        }
        page_ += "</ul>\n";
    }

    void Table(unsigned int depth) {
        static constexpr const char* kSpans[] = {"",           "",           "",
                                                 " colspan=2", " rowspan=2", " rowspan=9 colspan=3"};
        page_ += "<table>\n";
        for (unsigned int rows = 1 + Choose(3); rows != 0; --rows) {
            page_ += "<tr>\n";
            for (unsigned int cells = 1 + Choose(3); cells != 0; --cells) {
                page_ += std::string("<td") + kSpans[Choose(std::size(kSpans))] + '>';
                Block(depth + 1);
            }
        }
        page_ += "</table>\n";
    }

    void Run() {
        static constexpr const char* kTags[] = {"b", "i", "span", "font size=2", "a href=x", "a href=x"};
        for (unsigned int left = 1 + Choose(4); left != 0; --left) {
            const std::string tag = links_ ? "a href=x" : kTags[Choose(std::size(kTags))];
            if (!links_ && Choose(3) != 0) {
                Words(1 + Choose(30));
                continue;
            }
            page_ += '<' + tag + '>';
            Words(1 + Choose(4));
            page_ += "</" + tag.substr(0, tag.find(' ')) + '>';
        }
    }

    void Words(unsigned int count) {
        static constexpr const char* kGaps[] = {" ",    "\n",     "\t ",        "&nbsp;",
                                                "\r\n", " <br> ", " <!-- --> ", ", "};
        for (; count != 0; --count)
            page_ += " w" + std::to_string(++words_) + kGaps[Choose(std::size(kGaps))];
    }

    std::mt19937 random_;
    const bool links_;
    std::string page_;
    unsigned int words_ = 0;
};

}  // namespace

std::string RandomPage(unsigned int seed, PageKind kind) {
    return Writer(seed, kind).Page();
}
