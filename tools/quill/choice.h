#pragma once

#include <string>
#include <quill/quill.h>

namespace QuillTool {

// What the library chooses of a page: its content tree, and the strategy by which its text is written.
struct Choice {
    ZOT::SmartPtr<QuillNS::KTable> root;
    ZOT::SmartPtr<QuillNS::QuillVisitorStrategy> strategy;
    QuillNS::DocumentType type = QuillNS::LinkPage;
    std::u16string text;  // as QuillNS::Beautify gives it
};

// False when memory runs out.
bool Choose(ZOTParser::HtmlDocTree& tree, Choice& choice);

}  // namespace QuillTool
