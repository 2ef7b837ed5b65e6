#include <ole/dispatch.h>
#include <ole/variant.h>

namespace {

constexpr VARTYPE kHole = 15;  // no type has this number

bool IsVariantType(VARTYPE type) {
    if ((type & (VT_VECTOR | VT_RESERVED)) != 0) return false;
    const int base = type & VT_TYPEMASK;
    const bool compound = (type & (VT_ARRAY | VT_BYREF)) != 0;
    if (base == VT_RECORD) return compound;  // a record by value would need its description to be cleared
    return base <= VT_UINT && base != kHole && !(compound && base <= VT_NULL);
}

// What the variant owns beside its own bytes.
enum class Owned { kNothing, kString, kArray, kReference };

Owned OwnedBy(const VARIANTARG& variant) {
    if ((variant.vt & VT_BYREF) != 0) return Owned::kNothing;
    if ((variant.vt & VT_ARRAY) != 0) return Owned::kArray;
    switch (variant.vt) {
        case VT_BSTR: return Owned::kString;
        case VT_UNKNOWN:
        case VT_DISPATCH: return Owned::kReference;
        default: return Owned::kNothing;
    }
}

}  // namespace

void VariantInit(VARIANTARG* variant) {
    *variant = {};
    variant->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANTARG* variant) {
    if (variant == nullptr) return E_INVALIDARG;
    if (!IsVariantType(variant->vt)) return DISP_E_BADVARTYPE;
    switch (OwnedBy(*variant)) {
        case Owned::kNothing: break;
        case Owned::kString: SysFreeString(variant->bstrVal); break;
        case Owned::kArray: {
            const HRESULT result = SafeArrayDestroy(variant->parray);
            if (FAILED(result)) return result;
            break;
        }
        case Owned::kReference:
            if (variant->punkVal != nullptr) variant->punkVal->Release();
            break;
    }
    variant->vt = VT_EMPTY;
    return S_OK;
}

HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source) {
    if (target == nullptr || source == nullptr) return E_INVALIDARG;
    if (target == source) return S_OK;
    if (!IsVariantType(source->vt)) return DISP_E_BADVARTYPE;
    const HRESULT cleared = VariantClear(target);
    if (FAILED(cleared)) return cleared;

    VARIANTARG copy = *source;
    switch (OwnedBy(copy)) {
        case Owned::kNothing: break;
        case Owned::kString:
            if (source->bstrVal == nullptr) break;
            copy.bstrVal = SysAllocStringByteLen(reinterpret_cast<const char*>(source->bstrVal),
                                                 SysStringByteLen(source->bstrVal));
            if (copy.bstrVal == nullptr) return E_OUTOFMEMORY;
            break;
        case Owned::kArray: {
            const HRESULT result = SafeArrayCopy(source->parray, &copy.parray);
            if (FAILED(result)) return result;
            break;
        }
        case Owned::kReference:
            if (copy.punkVal != nullptr) copy.punkVal->AddRef();
            break;
    }
    *target = copy;
    return S_OK;
}
