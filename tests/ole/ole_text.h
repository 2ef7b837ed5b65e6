#pragma once

#include <string>

#include <ole/automation.h>

// Text of OLE Automation as the tests' comparisons and messages want it, whatever the platform's unit type
// is.

inline std::u16string TextOf(BSTR string) {
    if (string == nullptr) return {};
    return std::u16string(string, string + SysStringLen(string));
}

inline BSTR NewString(const std::u16string& text) {
    BSTR const string = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) string[i] = static_cast<OLECHAR>(text[i]);
    return string;
}
