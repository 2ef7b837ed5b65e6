#include "tag.h"

#include <array>

namespace ZOTParser {
namespace {

constexpr std::array<std::string_view, kTagCount> kNames = {"",
#define ZOT_PARSER_TAG(id, name) name,
                                                            ZOT_PARSER_TAGS(ZOT_PARSER_TAG)
#undef ZOT_PARSER_TAG
};

constexpr std::size_t kLongestName = 15;

constexpr std::uint64_t KeyOf(std::string_view name) {
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        key |= static_cast<std::uint64_t>(static_cast<unsigned char>(name[i])) << (8 * i);
    }
    return key;
}

// False when two names have the same slot.
constexpr bool Fill(ShortTagNames& table) {
    for (std::uint8_t& slot : table.slots) slot = 0;
    for (unsigned int tag = 1; tag < kTagCount; ++tag) {
        if (kNames[tag].size() > ShortTagNames::kLongest) continue;
        std::uint8_t& slot = table.slots[table.SlotOf(table.keys[tag])];
        if (slot != 0) return false;
        slot = static_cast<std::uint8_t>(tag);
    }
    return true;
}

constexpr ShortTagNames MakeShortNames() {
    ShortTagNames table;
    for (unsigned int tag = 1; tag < kTagCount; ++tag) {
        table.keys[tag] = KeyOf(kNames[tag].substr(0, ShortTagNames::kLongest));
    }
    while (!Fill(table)) table.multiplier = table.multiplier * 6364136223846793005u + 1442695040888963406u;
    return table;
}

constexpr bool SameName(const char* name, std::string_view listed) noexcept {
    for (const char expected : listed) {
        const char c = *name++;
        if ((c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c) != expected) return false;
    }
    return true;
}

constexpr TagFlagTables MakeFlags() {
    using enum Tag;
    TagFlagTables flags{};
    std::uint16_t* const html = flags.of[static_cast<unsigned int>(Namespace::kHtml)];
    std::uint16_t* const svg = flags.of[static_cast<unsigned int>(Namespace::kSvg)];
    std::uint16_t* const mathMl = flags.of[static_cast<unsigned int>(Namespace::kMathMl)];
    const auto add = [](std::uint16_t* table, TagFlag flag, std::initializer_list<Tag> tags) {
        for (const Tag tag : tags) table[static_cast<unsigned int>(tag)] |= flag;
    };
    add(html, kSpecial,
        {kAddress,  kApplet,   kArea,     kArticle, kAside,   kBase,     kBasefont,   kBgsound, kBlockquote,
         kBody,     kBr,       kButton,   kCaption, kCenter,  kCol,      kColgroup,   kDd,      kDetails,
         kDir,      kDiv,      kDl,       kDt,      kEmbed,   kFieldset, kFigcaption, kFigure,  kFooter,
         kForm,     kFrame,    kFrameset, kH1,      kH2,      kH3,       kH4,         kH5,      kH6,
         kHead,     kHeader,   kHgroup,   kHr,      kHtml,    kIframe,   kImg,        kInput,   kKeygen,
         kLi,       kLink,     kListing,  kMain,    kMarquee, kMenu,     kMeta,       kNav,     kNoembed,
         kNoframes, kNoscript, kObject,   kOl,      kP,       kParam,    kPlaintext,  kPre,     kScript,
         kSearch,   kSection,  kSelect,   kSource,  kStyle,   kSummary,  kTable,      kTbody,   kTd,
         kTemplate, kTextarea, kTfoot,    kTh,      kThead,   kTitle,    kTr,         kTrack,   kUl,
         kWbr,      kXmp});
    add(html, kFormatting,
        {kA, kB, kBig, kCode, kEm, kFont, kI, kNobr, kS, kSmall, kStrike, kStrong, kTt, kU});
    add(html, kScope, {kApplet, kCaption, kHtml, kTable, kTd, kTh, kMarquee, kObject, kSelect, kTemplate});
    add(html, kListItemScope, {kOl, kUl});
    add(html, kButtonScope, {kButton});
    add(html, kTableScope, {kHtml, kTable, kTemplate});
    add(html, kImpliedEnd, {kDd, kDt, kLi, kOptgroup, kOption, kP, kRb, kRp, kRt, kRtc});
    add(html, kImpliedEndThoroughly, {kCaption, kColgroup, kTbody, kTd, kTfoot, kTh, kThead, kTr});
    add(html, kTableStructure, {kTable, kTbody, kTfoot, kThead, kTr});
    add(html, kHeading, {kH1, kH2, kH3, kH4, kH5, kH6});
    for (const auto flag : {kSpecial, kScope}) {
        add(mathMl, flag, {kMi, kMo, kMn, kMs, kMtext, kAnnotationXml});
        add(svg, flag, {kForeignObject, kDesc, kTitle});
    }
    for (unsigned int tag = 0; tag < kTagCount; ++tag) {
        svg[tag] |= kForeign;
        mathMl[tag] |= kForeign;
    }
    return flags;
}

}  // namespace

constinit const TagFlagTables kTagFlags = MakeFlags();
constinit const ShortTagNames kShortTagNames = MakeShortNames();

std::string_view NameOf(Tag tag) noexcept {
    return kNames[static_cast<unsigned int>(tag)];
}

Tag InternLongTag(const char* name, std::size_t length) noexcept {
    if (length > kLongestName) return Tag::kUnknown;
    for (unsigned int tag = 1; tag < kTagCount; ++tag) {
        if (kNames[tag].size() == length && SameName(name, kNames[tag])) return static_cast<Tag>(tag);
    }
    return Tag::kUnknown;
}

}  // namespace ZOTParser
