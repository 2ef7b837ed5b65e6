#pragma once

#include <optional>
#include <string>
#include <vector>

#include <ole/unimplemented.h>

#include "ole/ole_text.h"

// A browser's documents as the capture meets them. A page is described by a value; its objects count
// themselves, and any one call into them can be made to fail.

struct FakePage {
    // What one object embedded in the page is.
    struct Embedded;

    std::u16string mime = u"HTML Document";
    std::optional<std::string> source;   // what the document saves; absent when it cannot be saved
    std::optional<std::u16string> body;  // markup of the body; absent when there is none
    std::vector<Embedded> embedded;      // in the order of the container's list
    bool container = true;               // whether there is a list at all
    HRESULT bodyResult = S_OK;           // of the calls that hand out the body and its markup
    HRESULT markupResult = S_OK;
};

struct FakePage::Embedded {
    bool isBrowser = true;
    bool hasDocument = true;
    FakePage page;
};

class FakeWorld {
public:
    // A new document with one reference for the caller. The page and the world outlive it.
    IHTMLDocument2* Document(const FakePage& page);

    // Lets the `n`th call from now on fail with E_FAIL; 0 for none.
    void FailNthCall(int n) {
        calls_ = 0;
        failing_ = n;
    }
    // Whether the call that was to fail has been made.
    bool Failed() const { return failing_ != 0 && calls_ >= failing_; }

    // Objects that have not been released.
    int Live() const { return live_; }

    // The objects' side.
    void Born() { ++live_; }
    void Died() { --live_; }
    bool NextCallFails() { return ++calls_ == failing_; }

private:
    int live_ = 0;
    int calls_ = 0;
    int failing_ = 0;
};
