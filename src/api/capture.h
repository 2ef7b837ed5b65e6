#pragma once

#include <ole/browser.h>
#include <quill/partitions.h>

namespace QuillNS {

// From the live document of a web browser control to document partitions: each document as bytes with a known
// character set, each embedded frame as a child. All calls are made on the caller's thread; every interface
// and string that the browser hands out is given back before the return.

// Captures `document` into `partition` and the documents of its frames, in the container's order, into new
// child partitions, down to their own frames. A frame that fails leaves its child as far as it got, and is no
// failure. Browsers let a page have no more than a thousand frames; what lies beyond that, or deeper than a
// hundred, is left out.
//
// Result: S_OK, or what CaptureDocument returned for `document`.
HRESULT CaptureDocumentTree(IHTMLDocument2* document, HtmlDocPartitions& partition);

// Captures one document: its source where it can be saved (IPersistStreamInit), else the markup of its body
// as it stands now. UTF-16 arrives as UTF-8; a document without a body leaves the stream of the partition as
// it was.
//
// Result: S_OK; E_CHARSET_UNDETECTED when no character set can be found out; else the code of the browser's
// call that failed, or gave less than a success.
HRESULT CaptureDocument(IHTMLDocument2* document, HtmlDocPartitions& partition);

// Gives `partition` a new stream with the saved bytes of a document, which stay the caller's: converted to
// UTF-8 when `detected` is UTF-16 (low byte first), filtered to ASCII and called Windows-1252 when it is
// kCharsetNone, else as they are.
void FillFromSource(const void* bytes, unsigned int size, ZOT::CHARSET detected,
                    HtmlDocPartitions& partition);

}  // namespace QuillNS
