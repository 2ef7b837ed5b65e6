#include <ole/bstr.h>

#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace {

// The block in front of the first unit. Its second half is the published length; the first half keeps the
// units as aligned as the block.
struct Prefix {
    std::uint32_t pad;
    std::uint32_t bytes;
};

constexpr UINT kMaxBytes = std::numeric_limits<UINT>::max() - sizeof(Prefix) - sizeof(OLECHAR);

Prefix* PrefixOf(BSTR string) {
    return reinterpret_cast<Prefix*>(string) - 1;
}

}  // namespace

BSTR SysAllocStringByteLen(const char* bytes, UINT length) {
    if (length > kMaxBytes) return nullptr;
    const std::size_t room = sizeof(Prefix) + length + sizeof(OLECHAR);
    auto* const prefix = static_cast<Prefix*>(std::malloc(room));
    if (prefix == nullptr) return nullptr;
    *prefix = {0, length};
    char* const units = reinterpret_cast<char*>(prefix + 1);
    if (bytes != nullptr && length != 0) std::memcpy(units, bytes, length);
    std::memset(units + length, 0, sizeof(OLECHAR));
    return reinterpret_cast<BSTR>(units);
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    if (length > kMaxBytes / sizeof(OLECHAR)) return nullptr;
    return SysAllocStringByteLen(reinterpret_cast<const char*>(text), length * UINT{sizeof(OLECHAR)});
}

BSTR SysAllocString(const OLECHAR* text) {
    if (text == nullptr) return nullptr;
    const std::size_t length = std::char_traits<OLECHAR>::length(text);
    if (length > kMaxBytes / sizeof(OLECHAR)) return nullptr;
    return SysAllocStringLen(text, static_cast<UINT>(length));
}

void SysFreeString(BSTR string) {
    if (string != nullptr) std::free(PrefixOf(string));
}

UINT SysStringByteLen(BSTR string) {
    return string == nullptr ? 0 : PrefixOf(string)->bytes;
}

UINT SysStringLen(BSTR string) {
    return SysStringByteLen(string) / UINT{sizeof(OLECHAR)};
}
