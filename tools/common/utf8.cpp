#include "utf8.h"

#include <zot/conv.h>

namespace QuillTool {

bool ToUtf8(std::u16string_view text, std::string& utf8) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    ZOT::PoolBuffer converted;
    if (!ZOTCharset::ToUtf8(ZOT::kCharsetUtf16Le, bytes, text.size() * sizeof(char16_t), converted, 0))
        return false;
    utf8.assign(reinterpret_cast<const char*>(converted.Data()), converted.Size());
    return true;
}

}  // namespace QuillTool
