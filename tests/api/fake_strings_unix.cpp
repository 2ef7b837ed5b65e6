#include "api/fake_strings.h"

#include <dlfcn.h>

#include <ole/automation.h>

// The program's own definitions come before the library's, so every string that anybody makes or frees passes
// here.

namespace {

int live = 0;
int depth = 0;  // one function of the library may call another
bool failing = false;

template <class Function, class... Arguments>
BSTR Watch(const char* name, Arguments... arguments) {
    if (failing) return nullptr;
    const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
    ++depth;
    BSTR const string = next(arguments...);
    --depth;
    if (depth == 0 && string != nullptr) ++live;
    return string;
}

}  // namespace

BSTR SysAllocString(const OLECHAR* text) {
    return Watch<decltype(&SysAllocString)>("SysAllocString", text);
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    return Watch<decltype(&SysAllocStringLen)>("SysAllocStringLen", text, length);
}

BSTR SysAllocStringByteLen(const char* bytes, UINT length) {
    return Watch<decltype(&SysAllocStringByteLen)>("SysAllocStringByteLen", bytes, length);
}

void SysFreeString(BSTR string) {
    if (string != nullptr) --live;
    reinterpret_cast<decltype(&SysFreeString)>(dlsym(RTLD_NEXT, "SysFreeString"))(string);
}

int LiveStrings() {
    return live;
}

bool LetNewStringsFail(bool fail) {
    failing = fail;
    return true;
}
