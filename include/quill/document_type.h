#pragma once

namespace QuillNS {

// What kind of page the library found.
enum DocumentType : int {
    LinkPage = 0,     // mostly links, or without any words; such a page is written whole
    ContentPage = 1,  // any other page; only its main content is written
};

}  // namespace QuillNS
