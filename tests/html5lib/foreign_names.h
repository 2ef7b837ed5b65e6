#pragma once

#include <string>

namespace html5lib {

// The names of elements and attributes in SVG and MathML, from lower case to that of the standard. The parser
// has no use for them, but the cases show them.
// https://html.spec.whatwg.org/multipage/parsing.html#creating-and-inserting-nodes

std::string SvgTagName(const std::string& name);
std::string SvgAttributeName(const std::string& name);
std::string MathMlAttributeName(const std::string& name);

}  // namespace html5lib
