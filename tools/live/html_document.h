#pragma once

#include <ole/browser.h>

#include "live_document.h"

namespace QuillLive {

// The document as a web browser control would show it, with one reference for the caller. `document` outlives
// all objects that come from it. Null when memory runs out.
//
// A document with a source offers IPersistStreamInit, every one IOleContainer with the browsers of its
// frames.
IHTMLDocument2* NewHtmlDocument(const LiveDocument& document);

}  // namespace QuillLive
