#pragma once

// The two functions that hosts of any language call, by linking or by name (LoadLibrary, dlopen): undecorated
// names, C calling convention, OLE Automation types. Usable from C and C++.
//
// Windows brings OLE Automation itself. Elsewhere <ole/automation.h> and the library quill_ole, which stands
// beside this one, give the same types and functions: strings, arrays and variants of the host and of the
// library come from there.
//
// Any thread may call, with arguments of its own. No state is kept between calls, nothing is thrown, and no
// argument is kept after the return.

#include <ole/automation.h>
#include <zot/export.h>

#define S_NO_INPUT ((HRESULT)0x00040002)           // there was no string to work on
#define E_UNSUPPORTED_INPUT ((HRESULT)0x80040003)  // a type, or a shape of array, that is not taken
#define E_CHARSET_UNDETECTED \
    ((HRESULT)0x80040001)  // nobody knows the character set of the browser's document

typedef struct IHTMLDocument2 IHTMLDocument2;

#ifdef __cplusplus
#define QUILL_NOEXCEPT noexcept
extern "C" {
#else
#define QUILL_NOEXCEPT
#endif

// Reads the document of a web browser control, with the documents of its frames, and replaces `*text` by a
// VT_BSTR with its main content; the caller frees it with VariantClear. `*text` must be a valid variant; what
// it held is cleared. The text of a document without any is an empty string.
//
// Called on the thread of the document. The interfaces asked for are IPersistStreamInit, IOleContainer (which
// lists frames as IWebBrowser2) and, where the document cannot be saved, IHTMLElement of its body.
//
//   S_OK                   `*text` is set
//   E_INVALIDARG           an argument is null
//   E_CHARSET_UNDETECTED   see above
//   anything else          what the document's own interfaces answered when they failed
//
// `*text` is untouched unless S_OK is returned. When memory runs out `*text` is a VT_ERROR holding
// E_OUTOFMEMORY, or an empty string, and the result S_OK.
QUILL_API HRESULT STDAPICALLTYPE GetBeautifiedText(IHTMLDocument2* document, VARIANT* text) QUILL_NOEXCEPT;

// Reads an HTML page, or several that belong together, from strings: `*input` is one of
//
//   VT_BSTR                  one page
//   VT_ARRAY | VT_BSTR       one dimension, any lower bound: the first string is the page, the others
//                            belong to it (like the frames of a page), and one ranking decides over all
//   VT_ARRAY | VT_VARIANT    the same; elements that are neither VT_BSTR nor VT_BSTR | VT_BYREF are
//                            passed over
//
// or the same with VT_BYREF, which refers to the string or array. A string ends at its first NUL; null and
// empty strings of an array are passed over. `*input` is not changed; an array is locked during the reading.
//
// When the page has main content, `*text` and then `*documentText` (all the text a reader of the page could
// see, of the first page alone; may be empty) are replaced as in GetBeautifiedText. Otherwise both stay as
// they were. `text` may be `input`.
//
//   S_OK                   there was a string; there may be no text
//   S_NO_INPUT             null, or an array without any string that is not empty
//   E_INVALIDARG           an argument is null
//   E_UNSUPPORTED_INPUT    another type; an array of other elements or more dimensions, or one that
//                          cannot be locked
//
// No output is touched on a failure. When memory runs out an output is a VT_ERROR holding E_OUTOFMEMORY, or
// there is no text; the result is S_OK.
QUILL_API HRESULT STDAPICALLTYPE GetBeautifiedTextFromString(VARIANT* input, VARIANT* text,
                                                             VARIANT* documentText) QUILL_NOEXCEPT;

#ifdef __cplusplus
}
#endif
