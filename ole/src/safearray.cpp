#include <ole/browser.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

// One block holds a descriptor and what stands in front of it, another the elements:
//
//   [ IID, or 12 bytes and the element type ][ SAFEARRAY ][ further bounds ]
//                                             ^ what the caller holds

namespace {

constexpr ULONG kMostLocks = 0xFFFF;

struct Front {
    std::uint32_t unused[3];
    std::uint32_t type;
};
static_assert(sizeof(Front) == sizeof(IID));

Front* FrontOf(SAFEARRAY* array) {
    return reinterpret_cast<Front*>(array) - 1;
}

// Bytes of one element; 0 for what cannot stand in an array.
ULONG ElementSize(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1: return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL: return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_ERROR: return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE: return 8;
        case VT_BSTR:
        case VT_UNKNOWN:
        case VT_DISPATCH: return sizeof(void*);
        case VT_DECIMAL: return sizeof(DECIMAL);
        case VT_VARIANT: return sizeof(VARIANT);
        default: return 0;
    }
}

void DescribeElements(SAFEARRAY* array, VARTYPE type) {
    array->cbElements = ElementSize(type);
    if (type == VT_UNKNOWN || type == VT_DISPATCH) {
        array->fFeatures = FADF_HAVEIID | (type == VT_UNKNOWN ? FADF_UNKNOWN : FADF_DISPATCH);
        std::memcpy(FrontOf(array), type == VT_UNKNOWN ? &IID_IUnknown : &IID_IDispatch, sizeof(IID));
        return;
    }
    array->fFeatures = FADF_HAVEVARTYPE;
    if (type == VT_BSTR) array->fFeatures |= FADF_BSTR;
    if (type == VT_VARIANT) array->fFeatures |= FADF_VARIANT;
    FrontOf(array)->type = type;
}

std::atomic_ref<ULONG> Locks(SAFEARRAY* array) {
    return std::atomic_ref<ULONG>(array->cLocks);
}

// The number of elements, or false when they would not fit into memory.
bool CountElements(const SAFEARRAY* array, std::size_t& count) {
    const std::size_t most =
        (std::numeric_limits<std::size_t>::max() / 2) / std::max<ULONG>(array->cbElements, 1);
    count = 1;
    for (unsigned i = 0; i < array->cDims; ++i) {
        const std::size_t length = array->rgsabound[i].cElements;
        if (length != 0 && count > most / length) return false;
        count *= length;
    }
    return true;
}

// Gives `target`, raw memory, a copy of one element of the array's kind.
HRESULT CopyElement(const SAFEARRAY* array, const void* source, void* target) {
    if ((array->fFeatures & FADF_BSTR) != 0) {
        const BSTR string = *static_cast<const BSTR*>(source);
        BSTR copy = nullptr;
        if (string != nullptr) {
            copy = SysAllocStringByteLen(reinterpret_cast<const char*>(string), SysStringByteLen(string));
            if (copy == nullptr) return E_OUTOFMEMORY;
        }
        *static_cast<BSTR*>(target) = copy;
    } else if ((array->fFeatures & FADF_VARIANT) != 0) {
        VariantInit(static_cast<VARIANT*>(target));
        return VariantCopy(static_cast<VARIANT*>(target), static_cast<const VARIANT*>(source));
    } else {
        std::memcpy(target, source, array->cbElements);
        if ((array->fFeatures & (FADF_UNKNOWN | FADF_DISPATCH)) != 0) {
            if (IUnknown* const object = *static_cast<IUnknown**>(target)) object->AddRef();
        }
    }
    return S_OK;
}

HRESULT GiveUpElement(const SAFEARRAY* array, void* element) {
    if ((array->fFeatures & FADF_BSTR) != 0) {
        SysFreeString(*static_cast<BSTR*>(element));
    } else if ((array->fFeatures & FADF_VARIANT) != 0) {
        return VariantClear(static_cast<VARIANT*>(element));
    } else if ((array->fFeatures & (FADF_UNKNOWN | FADF_DISPATCH)) != 0) {
        if (IUnknown* const object = *static_cast<IUnknown**>(element)) object->Release();
    }
    return S_OK;
}

// A strings or interfaces argument is the value itself, not its place.
const void* PlaceOfArgument(const SAFEARRAY* array, void* const& value) {
    return (array->fFeatures & (FADF_BSTR | FADF_UNKNOWN | FADF_DISPATCH)) != 0 ? &value : value;
}

}  // namespace

HRESULT SafeArrayAllocDescriptorEx(VARTYPE type, UINT dimensions, SAFEARRAY** array) {
    if (array == nullptr) return E_POINTER;
    *array = nullptr;
    if (dimensions == 0 || dimensions > std::numeric_limits<USHORT>::max()) return E_INVALIDARG;
    if (ElementSize(type) == 0) return DISP_E_BADVARTYPE;
    const std::size_t bytes = sizeof(Front) + sizeof(SAFEARRAY) + (dimensions - 1) * sizeof(SAFEARRAYBOUND);
    auto* const front = static_cast<Front*>(std::calloc(1, bytes));
    if (front == nullptr) return E_OUTOFMEMORY;
    *array = reinterpret_cast<SAFEARRAY*>(front + 1);
    (*array)->cDims = static_cast<USHORT>(dimensions);
    DescribeElements(*array, type);
    return S_OK;
}

HRESULT SafeArrayAllocData(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    std::size_t count = 0;
    if (!CountElements(array, count)) return E_OUTOFMEMORY;
    array->pvData = std::calloc(count == 0 ? 1 : count, array->cbElements);
    return array->pvData == nullptr ? E_OUTOFMEMORY : S_OK;
}

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds) {
    SAFEARRAY* array = nullptr;
    if (bounds == nullptr || FAILED(SafeArrayAllocDescriptorEx(type, dimensions, &array))) return nullptr;
    for (UINT i = 0; i < dimensions; ++i) array->rgsabound[dimensions - 1 - i] = bounds[i];
    if (SUCCEEDED(SafeArrayAllocData(array))) return array;
    SafeArrayDestroyDescriptor(array);
    return nullptr;
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count) {
    SAFEARRAYBOUND bound = {count, lowerBound};
    return SafeArrayCreate(type, 1, &bound);
}

HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy) {
    if (copy == nullptr) return E_INVALIDARG;
    *copy = nullptr;
    if (array == nullptr) return S_OK;
    VARTYPE type = VT_EMPTY;
    HRESULT result = SafeArrayGetVartype(array, &type);
    if (FAILED(result)) return result;
    SAFEARRAY* made = nullptr;
    result = SafeArrayAllocDescriptorEx(type, array->cDims, &made);
    if (FAILED(result)) return result;
    std::memcpy(made->rgsabound, array->rgsabound, array->cDims * sizeof(SAFEARRAYBOUND));
    result = SafeArrayAllocData(made);
    std::size_t count = 0;
    CountElements(array, count);
    for (std::size_t i = 0; SUCCEEDED(result) && i < count; ++i) {
        const std::size_t offset = i * array->cbElements;
        result = CopyElement(array, static_cast<const char*>(array->pvData) + offset,
                             static_cast<char*>(made->pvData) + offset);
    }
    if (SUCCEEDED(result)) {
        *copy = made;
    } else {
        SafeArrayDestroy(made);
    }
    return result;
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
    if (array == nullptr) return S_OK;
    const HRESULT result = SafeArrayDestroyData(array);
    return FAILED(result) ? result : SafeArrayDestroyDescriptor(array);
}

HRESULT SafeArrayDestroyData(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    if (Locks(array) != 0) return DISP_E_ARRAYISLOCKED;
    if (array->pvData == nullptr) return S_OK;
    std::size_t count = 0;
    CountElements(array, count);
    char* const data = static_cast<char*>(array->pvData);
    for (std::size_t i = 0; i < count; ++i) {
        char* const element = data + i * array->cbElements;
        const HRESULT result = GiveUpElement(array, element);
        if (FAILED(result)) return result;
        std::memset(element, 0, array->cbElements);
    }
    if ((array->fFeatures & (FADF_STATIC | FADF_AUTO | FADF_EMBEDDED)) != 0) return S_OK;
    std::free(array->pvData);
    array->pvData = nullptr;
    return S_OK;
}

HRESULT SafeArrayDestroyDescriptor(SAFEARRAY* array) {
    if (array == nullptr) return S_OK;
    if (Locks(array) != 0) return DISP_E_ARRAYISLOCKED;
    if ((array->fFeatures & (FADF_AUTO | FADF_EMBEDDED)) == 0) std::free(FrontOf(array));
    return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) {
    return array == nullptr ? 0 : array->cDims;
}

UINT SafeArrayGetElemsize(SAFEARRAY* array) {
    return array == nullptr ? 0 : array->cbElements;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    if (array == nullptr || bound == nullptr) return E_INVALIDARG;
    if (dimension == 0 || dimension > array->cDims) return DISP_E_BADINDEX;
    *bound = array->rgsabound[array->cDims - dimension].lLbound;
    return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
    const HRESULT result = SafeArrayGetLBound(array, dimension, bound);
    if (FAILED(result)) return result;
    const ULONG length = array->rgsabound[array->cDims - dimension].cElements;
    *bound = static_cast<LONG>(static_cast<ULONG>(*bound) + length - 1);
    return S_OK;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
    if (array == nullptr || type == nullptr) return E_INVALIDARG;
    if ((array->fFeatures & FADF_HAVEVARTYPE) != 0) {
        *type = static_cast<VARTYPE>(FrontOf(array)->type);
    } else if ((array->fFeatures & FADF_DISPATCH) != 0) {
        *type = VT_DISPATCH;
    } else if ((array->fFeatures & FADF_UNKNOWN) != 0) {
        *type = VT_UNKNOWN;
    } else {
        return E_INVALIDARG;
    }
    return S_OK;
}

HRESULT SafeArrayLock(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    if (++Locks(array) <= kMostLocks) return S_OK;
    --Locks(array);
    return E_UNEXPECTED;
}

HRESULT SafeArrayUnlock(SAFEARRAY* array) {
    if (array == nullptr) return E_INVALIDARG;
    if (Locks(array)-- != 0) return S_OK;
    ++Locks(array);
    return E_UNEXPECTED;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
    if (array == nullptr || data == nullptr) return E_INVALIDARG;
    const HRESULT result = SafeArrayLock(array);
    *data = SUCCEEDED(result) ? array->pvData : nullptr;
    return result;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
    return SafeArrayUnlock(array);
}

HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, LONG* indices, void** place) {
    if (array == nullptr || indices == nullptr || place == nullptr) return E_INVALIDARG;
    std::size_t offset = 0;
    std::size_t stride = array->cbElements;
    for (unsigned i = 0; i < array->cDims; ++i) {
        const SAFEARRAYBOUND& bound = array->rgsabound[array->cDims - 1 - i];
        const std::int64_t index = std::int64_t{indices[i]} - bound.lLbound;
        if (index < 0 || index >= std::int64_t{bound.cElements}) return DISP_E_BADINDEX;
        offset += static_cast<std::size_t>(index) * stride;
        stride *= bound.cElements;
    }
    *place = static_cast<char*>(array->pvData) + offset;
    return S_OK;
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* value) {
    void* place = nullptr;
    HRESULT result = SafeArrayPtrOfIndex(array, indices, &place);
    if (FAILED(result)) return result;
    const void* const source = PlaceOfArgument(array, value);
    if (source == nullptr) return E_INVALIDARG;
    // The copy comes first: what stands there may own what is put.
    alignas(std::max_align_t) unsigned char copy[sizeof(VARIANT)];
    result = CopyElement(array, source, copy);
    if (FAILED(result)) return result;
    result = GiveUpElement(array, place);
    if (FAILED(result)) {
        GiveUpElement(array, copy);
        return result;
    }
    std::memcpy(place, copy, array->cbElements);
    return S_OK;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* value) {
    if (value == nullptr) return E_INVALIDARG;
    void* place = nullptr;
    const HRESULT result = SafeArrayPtrOfIndex(array, indices, &place);
    return FAILED(result) ? result : CopyElement(array, place, value);
}
