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

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string text(utf8.size(), u'\0');  // no byte becomes more than one unit
    ZOTCharset::ConversionState state;
    unsigned int read = 0;
    unsigned int written = 0;
    const auto size = static_cast<unsigned int>(utf8.size());
    ZOTCharset::Conv::MbToWcConversionFunction(ZOT::kCharsetUtf8)(
        state, reinterpret_cast<const unsigned char*>(utf8.data()), size, read, text.data(), size, written,
        true);
    text.resize(written);
    return text;
}

}  // namespace QuillTool
