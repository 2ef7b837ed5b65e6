#include "variant_text.h"

namespace QuillNS {
namespace {

void MoveInto(VARIANT& made, VARIANT& target) noexcept {
    if (SUCCEEDED(VariantClear(&target))) {
        target = made;
        VariantInit(&made);
    }
    VariantClear(&made);
}

SAFEARRAY* ArrayOf(const VARIANT& input) {
    if (!StringArray::Takes(input.vt)) return nullptr;
    if ((input.vt & VT_BYREF) == 0) return input.parray;
    return input.pparray == nullptr ? nullptr : *input.pparray;
}

}  // namespace

BSTR StringOf(const VARIANT& value) {
    if (value.vt == VT_BSTR) return value.bstrVal;
    if (value.vt == (VT_BSTR | VT_BYREF) && value.pbstrVal != nullptr) return *value.pbstrVal;
    return nullptr;
}

void FillVariant(const std::u16string& text, VARIANT& target) noexcept {
    static_assert(sizeof(OLECHAR) == sizeof(char16_t));
    VARIANT made;
    VariantInit(&made);
    made.bstrVal = SysAllocString(reinterpret_cast<const OLECHAR*>(text.c_str()));
    if (made.bstrVal == nullptr) return FillVariantWithoutMemory(target);
    made.vt = VT_BSTR;
    MoveInto(made, target);
}

void FillVariantWithoutMemory(VARIANT& target) noexcept {
    VARIANT made;
    VariantInit(&made);
    made.vt = VT_ERROR;
    made.scode = E_OUTOFMEMORY;
    MoveInto(made, target);
}

bool StringArray::Takes(VARTYPE type) {
    const int plain = type & ~VT_BYREF;
    return plain == (VT_ARRAY | VT_BSTR) || plain == (VT_ARRAY | VT_VARIANT);
}

StringArray::StringArray(const VARIANT& input)
    : array_(ArrayOf(input)), ofVariants_((input.vt & VT_TYPEMASK) == VT_VARIANT) {
    readable_ = FindBounds() && SUCCEEDED(SafeArrayAccessData(array_, &elements_));
    if (!readable_) size_ = 0;
}

StringArray::~StringArray() {
    if (readable_) SafeArrayUnaccessData(array_);
}

// The size of the elements shows a variant that names its array wrongly.
bool StringArray::FindBounds() {
    const std::size_t element = ofVariants_ ? sizeof(VARIANT) : sizeof(BSTR);
    LONG lower = 0;
    LONG upper = 0;
    if (SafeArrayGetDim(array_) != 1 || SafeArrayGetElemsize(array_) != element ||
        FAILED(SafeArrayGetLBound(array_, 1, &lower)) || FAILED(SafeArrayGetUBound(array_, 1, &upper))) {
        return false;
    }
    size_ = static_cast<unsigned int>(upper) - static_cast<unsigned int>(lower) + 1;
    return true;
}

BSTR StringArray::operator[](unsigned int index) const {
    if (ofVariants_) return StringOf(static_cast<const VARIANT*>(elements_)[index]);
    return static_cast<const BSTR*>(elements_)[index];
}

}  // namespace QuillNS
