// The exported function for strings, with variants of any kind that are valid as OLE has them: strings,
// arrays and references, or none of it, as input and as what the outputs hold before.

#include <quill/exports.h>

#include <cstring>
#include <deque>
#include <initializer_list>

#include "api/fake_strings.h"
#include "choices.h"
#include "fuzz_target.h"
#include "ole/ole_text.h"

namespace {

// Makes variants, and keeps what they refer to until it goes.
class Variants {
public:
    explicit Variants(Choices& choose) : choose_(choose) {}
    Variants(const Variants&) = delete;
    Variants& operator=(const Variants&) = delete;
    ~Variants() {
        for (SAFEARRAY* const array : locked_) SafeArrayUnlock(array);
        for (VARIANT& variant : variants_)
            Require(SUCCEEDED(VariantClear(&variant)), "a variant can be cleared");
        for (BSTR const string : strings_) SysFreeString(string);
        for (SAFEARRAY* const array : arrays_) SafeArrayDestroy(array);
    }

    VARIANT& Any() {
        VARIANT& variant = variants_.emplace_back();
        VariantInit(&variant);
        Fill(variant, true);
        return variant;
    }

private:
    void Fill(VARIANT& variant, bool mayHoldArray) {
        switch (choose_(mayHoldArray ? 9 : 5)) {
            case 0:
                variant.vt = VT_BSTR;
                variant.bstrVal = String();
                break;
            case 1:
                variant.vt = VT_BSTR | VT_BYREF;
                variant.pbstrVal = choose_(4) == 0 ? nullptr : &strings_.emplace_back(String());
                break;
            case 2:
                variant.vt = VT_I4;
                variant.lVal = static_cast<LONG>(choose_(256));
                break;
            case 3: variant.vt = VT_EMPTY; break;
            case 4: variant.vt = VT_NULL; break;
            case 5: FillWithArray(variant, VT_BSTR); break;
            case 6: FillWithArray(variant, VT_VARIANT); break;
            case 7: FillWithArray(variant, VT_UI1); break;
            default: FillWithReferredArray(variant);
        }
    }

    BSTR String() { return choose_(8) == 0 ? nullptr : NewString(choose_.Text()); }

    void FillWithArray(VARIANT& variant, VARTYPE element) {
        variant.vt = static_cast<VARTYPE>(VT_ARRAY | element);
        variant.parray = choose_(8) == 0 ? nullptr : Array(element);
        if (variant.parray != nullptr && choose_(8) == 0 && SUCCEEDED(SafeArrayLock(variant.parray))) {
            locked_.push_back(variant.parray);
        }
    }

    void FillWithReferredArray(VARIANT& variant) {
        const VARTYPE element = choose_(2) == 0 ? VT_BSTR : VT_VARIANT;
        variant.vt = static_cast<VARTYPE>(VT_ARRAY | VT_BYREF | element);
        variant.pparray = choose_(4) == 0 ? nullptr : &arrays_.emplace_back(Array(element));
    }

    SAFEARRAY* Array(VARTYPE element) {
        SAFEARRAYBOUND bounds[2] = {{choose_(5), static_cast<LONG>(choose_(256)) - 128}, {1 + choose_(2), 0}};
        const bool isFlat = choose_(8) != 0;
        SAFEARRAY* const array = SafeArrayCreate(element, isFlat ? 1 : 2, bounds);
        if (array == nullptr || element == VT_UI1) return array;
        void* elements = nullptr;
        if (FAILED(SafeArrayAccessData(array, &elements))) return array;
        const unsigned int count = bounds[0].cElements * (isFlat ? 1 : bounds[1].cElements);
        for (unsigned int i = 0; i < count; ++i) {
            if (element == VT_BSTR) {
                static_cast<BSTR*>(elements)[i] = String();
            } else {
                Fill(static_cast<VARIANT*>(elements)[i], false);
            }
        }
        SafeArrayUnaccessData(array);
        return array;
    }

    Choices& choose_;
    std::deque<VARIANT> variants_;  // deques: what is referred to stays where it is
    std::deque<BSTR> strings_;
    std::deque<SAFEARRAY*> arrays_;
    std::deque<SAFEARRAY*> locked_;
};

bool IsUnchanged(const VARIANT& variant, const VARIANT& before) {
    return variant.vt == before.vt && variant.llVal == before.llVal;
}

void Call(Variants& variants, bool textIsInput) {
    VARIANT& input = variants.Any();
    VARIANT& text = textIsInput ? input : variants.Any();
    VARIANT& documentText = variants.Any();
    const VARIANT before[] = {input, text, documentText};
    const HRESULT result = GetBeautifiedTextFromString(&input, &text, &documentText);
    Require(result == S_OK || result == S_NO_INPUT || result == E_UNSUPPORTED_INPUT,
            "a result that is promised");
    Require(textIsInput || IsUnchanged(input, before[0]), "the input is not changed");
    if (result == S_OK) return;
    Require(IsUnchanged(text, before[1]) && IsUnchanged(documentText, before[2]),
            "without a page the outputs are untouched");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int strings = LiveStrings();
    {
        Choices choose(data, size);
        const bool textIsInput = choose(8) == 7;
        Variants variants(choose);
        Call(variants, textIsInput);
    }
    Require(LiveStrings() == strings, "every string is freed once");
    return 0;
}
