#pragma once

#include <string>

#include "ole_holders.h"

// Text in and out of VARIANTs.

namespace QuillNS {

// The string of a VT_BSTR, with or without VT_BYREF; null for any other type and for a null reference. It
// stays the variant's.
BSTR StringOf(const VARIANT& value);

// Replaces the caller's variant by a VT_BSTR of `text`, or by a VT_ERROR of E_OUTOFMEMORY. A variant that
// cannot be cleared keeps what it held.
void FillVariant(const std::u16string& text, VARIANT& target) noexcept;

// The same for a text that there was no memory for.
void FillVariantWithoutMemory(VARIANT& target) noexcept;

// The strings of a one-dimensional array in their order. The array is locked as long as this lives.
class StringArray {
public:
    // Takes arrays of VT_BSTR and VT_VARIANT, with or without VT_BYREF.
    explicit StringArray(const VARIANT& input);
    StringArray(const StringArray&) = delete;  // one lock, one unlock
    StringArray& operator=(const StringArray&) = delete;
    ~StringArray();

    // Whether `type` is one that the constructor takes.
    static bool Takes(VARTYPE type);

    // False when it is no such array, or its elements cannot be reached; it then has no strings.
    bool Readable() const { return readable_; }

    unsigned int Size() const { return size_; }
    // Null for an element that is no string. It stays the array's.
    BSTR operator[](unsigned int index) const;

private:
    bool FindBounds();

    SAFEARRAY* array_;
    bool ofVariants_;
    bool readable_ = false;
    unsigned int size_ = 0;
    void* elements_ = nullptr;
};

}  // namespace QuillNS
