/* A host in C that loads the library at run time and knows nothing of it but <quill/exports.h>: it sends HTML
 * as a string, as an array of strings that begins at 1, and as an array of variants, and prints what comes
 * back.
 *
 *   host PATH-OF-THE-LIBRARY
 */
#include <stdio.h>
#include <quill/exports.h>

#include "library.h"

typedef HRESULT(STDAPICALLTYPE* FromString)(VARIANT* input, VARIANT* text, VARIANT* documentText);

static const OLECHAR kTides[] = OLESTR(
    "<title>Tides</title><table><tr>"
    "<td><a href=/>Home</a><br><a href=/sea>The sea</a><br><a href=/sky>The sky</a>"
    "<td><p>The pull of the Moon raises two bulges of water, and the Earth turns below them."
    "<p>So the sea rises and falls twice a day \u2013 a little later on each day than on the one "
    "before.</table>");
static const OLECHAR kFrame[] = OLESTR(
    "<p>When the Sun pulls in the same line, at full moon and at new moon, the tides "
    "are at their highest.");

/* Prints UTF-16 as UTF-8. Surrogates stand in pairs in the text of the library. */
static void PrintText(BSTR text) {
    const UINT length = SysStringLen(text);
    for (UINT i = 0; i < length; ++i) {
        unsigned long point = (unsigned long)text[i];
        if (point >= 0xD800 && point < 0xDC00 && i + 1 < length) {
            point = 0x10000 + ((point - 0xD800) << 10) + ((unsigned long)text[++i] - 0xDC00);
        }
        if (point < 0x80) {
            printf("%c", (int)point);
        } else if (point < 0x800) {
            printf("%c%c", (int)(0xC0 | point >> 6), (int)(0x80 | (point & 0x3F)));
        } else if (point < 0x10000) {
            printf("%c%c%c", (int)(0xE0 | point >> 12), (int)(0x80 | (point >> 6 & 0x3F)),
                   (int)(0x80 | (point & 0x3F)));
        } else {
            printf("%c%c%c%c", (int)(0xF0 | point >> 18), (int)(0x80 | (point >> 12 & 0x3F)),
                   (int)(0x80 | (point >> 6 & 0x3F)), (int)(0x80 | (point & 0x3F)));
        }
    }
}

/* Sends `input`, prints the answer, and clears all three. Returns whether there was a text. */
static int Send(FromString beautify, const char* what, VARIANT* input) {
    VARIANT text;
    VARIANT documentText;
    VariantInit(&text);
    VariantInit(&documentText);
    const HRESULT result = beautify(input, &text, &documentText);
    printf("== %s: 0x%08lX\n", what, (unsigned long)result & 0xFFFFFFFFul);
    const int found = result == S_OK && V_VT(&text) == VT_BSTR;
    if (found) {
        PrintText(V_BSTR(&text));
        printf("\n-- of %u characters on the page\n", SysStringLen(V_BSTR(&documentText)));
    }
    VariantClear(input);
    VariantClear(&text);
    VariantClear(&documentText);
    return found;
}

static int SendString(FromString beautify) {
    VARIANT input;
    VariantInit(&input);
    V_VT(&input) = VT_BSTR;
    V_BSTR(&input) = SysAllocString(kTides);
    return Send(beautify, "a string", &input);
}

static int SendStrings(FromString beautify) {
    VARIANT input;
    VariantInit(&input);
    V_VT(&input) = VT_ARRAY | VT_BSTR;
    V_ARRAY(&input) = SafeArrayCreateVector(VT_BSTR, 1, 2);
    const OLECHAR* const pages[] = {kTides, kFrame};
    for (LONG index = 1; index <= 2; ++index) {
        BSTR page = SysAllocString(pages[index - 1]);
        SafeArrayPutElement(V_ARRAY(&input), &index, page);
        SysFreeString(page);
    }
    return Send(beautify, "an array of strings from 1 on", &input);
}

/* The number in front of the strings is passed over. */
static int SendVariants(FromString beautify) {
    VARIANT input;
    VariantInit(&input);
    V_VT(&input) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&input) = SafeArrayCreateVector(VT_VARIANT, 0, 3);
    VARIANT element;
    VariantInit(&element);
    V_VT(&element) = VT_I4;
    V_I4(&element) = 42;
    LONG index = 0;
    SafeArrayPutElement(V_ARRAY(&input), &index, &element);
    const OLECHAR* const pages[] = {kTides, kFrame};
    for (index = 1; index <= 2; ++index) {
        V_VT(&element) = VT_BSTR;
        V_BSTR(&element) = SysAllocString(pages[index - 1]);
        SafeArrayPutElement(V_ARRAY(&input), &index, &element);
        VariantClear(&element);
    }
    return Send(beautify, "an array of variants", &input);
}

int main(int argc, char** argv) {
    void* const library = argc == 2 ? OpenLibrary(argv[1]) : NULL;
    const FromString beautify =
        library ? (FromString)FindFunction(library, "GetBeautifiedTextFromString") : NULL;
    if (!beautify) {
        fprintf(stderr, "usage: host PATH-OF-THE-LIBRARY\n");
        return 2;
    }
    const int done = SendString(beautify) & SendStrings(beautify) & SendVariants(beautify);
    CloseLibrary(library);
    return done ? 0 : 1;
}
