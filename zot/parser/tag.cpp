#include "tag.h"

#include <array>
#include <bit>
#include <cstring>

// Names of up to eight bytes are one 64-bit number: the bytes, first one lowest, every letter in lower case.
// One multiplication sends each of them to a slot of its own in a table of 2048; the multiplier is found
// while compiling.

namespace ZOTParser {
namespace {

constexpr std::array<std::string_view, kTagCount> kNames = {"",
#define ZOT_PARSER_TAG(id, name) name,
                                                            ZOT_PARSER_TAGS(ZOT_PARSER_TAG)
#undef ZOT_PARSER_TAG
};

constexpr unsigned int kShortName = 8;
constexpr unsigned int kSlotBits = 11;
constexpr std::uint64_t kLowerCaseBits = 0x2020202020202020u;

constexpr std::uint64_t KeyOf(std::string_view name) {
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        key |= static_cast<std::uint64_t>(static_cast<unsigned char>(name[i])) << (8 * i);
    }
    return key;
}

constexpr std::size_t SlotOf(std::uint64_t key, std::uint64_t multiplier) {
    return static_cast<std::size_t>((key * multiplier) >> (64 - kSlotBits));
}

struct ShortNames {
    std::uint64_t multiplier = 0x9E3779B97F4A7C15u;
    std::array<std::uint8_t, 1u << kSlotBits> slots{};
    std::array<std::uint64_t, kTagCount> keys{};
};

constexpr bool Fill(ShortNames& table) {
    table.slots.fill(0);
    for (unsigned int tag = 1; tag < kTagCount; ++tag) {
        if (kNames[tag].size() > kShortName) continue;
        std::uint8_t& slot = table.slots[SlotOf(table.keys[tag], table.multiplier)];
        if (slot != 0) return false;
        slot = static_cast<std::uint8_t>(tag);
    }
    return true;
}

constexpr ShortNames MakeShortNames() {
    ShortNames table;
    for (unsigned int tag = 1; tag < kTagCount; ++tag)
        table.keys[tag] = KeyOf(kNames[tag].substr(0, kShortName));
    while (!Fill(table)) table.multiplier = table.multiplier * 6364136223846793005u + 1442695040888963406u;
    return table;
}

constexpr ShortNames kShortNames = MakeShortNames();

// Whether a byte of the name is below 0x20, so that setting bit 5 made it look like another character: in a
// name each byte has bit 5 or bit 6.
bool HasControls(std::uint64_t name, std::uint64_t key) noexcept {
    const std::uint64_t lengthMask = (key & kLowerCaseBits) << 1;  // bit 6 of every byte of the name
    return ((name | (name << 1)) & lengthMask) != lengthMask;
}

Tag InternLongName(const char* name, std::size_t length, std::uint64_t head) noexcept {
    for (unsigned int tag = 1; tag < kTagCount; ++tag) {
        if (kNames[tag].size() != length || kShortNames.keys[tag] != head) continue;
        for (std::size_t i = kShortName; i < length; ++i) {
            const char c = name[i];
            if ((c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c) != kNames[tag][i]) return Tag::kUnknown;
        }
        return static_cast<Tag>(tag);
    }
    return Tag::kUnknown;
}

constexpr std::size_t kLongestName = 15;

struct FlagTables {
    std::uint16_t html[kTagCount] = {};
    std::uint16_t svg[kTagCount] = {};
    std::uint16_t mathMl[kTagCount] = {};
};

constexpr FlagTables MakeFlags() {
    using enum Tag;
    FlagTables flags;
    const auto add = [](std::uint16_t* table, TagFlag flag, std::initializer_list<Tag> tags) {
        for (const Tag tag : tags) table[static_cast<unsigned int>(tag)] |= flag;
    };
    add(flags.html, kSpecial,
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
    add(flags.html, kFormatting,
        {kA, kB, kBig, kCode, kEm, kFont, kI, kNobr, kS, kSmall, kStrike, kStrong, kTt, kU});
    add(flags.html, kScope,
        {kApplet, kCaption, kHtml, kTable, kTd, kTh, kMarquee, kObject, kSelect, kTemplate});
    add(flags.html, kListItemScope, {kOl, kUl});
    add(flags.html, kButtonScope, {kButton});
    add(flags.html, kTableScope, {kHtml, kTable, kTemplate});
    add(flags.html, kImpliedEnd, {kDd, kDt, kLi, kOptgroup, kOption, kP, kRb, kRp, kRt, kRtc});
    add(flags.html, kImpliedEndThoroughly, {kCaption, kColgroup, kTbody, kTd, kTfoot, kTh, kThead, kTr});
    add(flags.html, kTableStructure, {kTable, kTbody, kTfoot, kThead, kTr});
    add(flags.html, kHeading, {kH1, kH2, kH3, kH4, kH5, kH6});
    for (const auto flag : {kSpecial, kScope}) {
        add(flags.mathMl, flag, {kMi, kMo, kMn, kMs, kMtext, kAnnotationXml});
        add(flags.svg, flag, {kForeignObject, kDesc, kTitle});
    }
    for (unsigned int tag = 0; tag < kTagCount; ++tag) {
        flags.svg[tag] |= kForeign;
        flags.mathMl[tag] |= kForeign;
    }
    return flags;
}

constexpr FlagTables kFlags = MakeFlags();

}  // namespace

std::uint16_t FlagsOf(Tag tag, Namespace ns) noexcept {
    const std::uint16_t* const tables[] = {kFlags.html, kFlags.svg, kFlags.mathMl};
    return tables[static_cast<unsigned int>(ns)][static_cast<unsigned int>(tag)];
}

std::string_view NameOf(Tag tag) noexcept {
    return kNames[static_cast<unsigned int>(tag)];
}

Tag InternTag(const char* name, std::size_t length) noexcept {
    static_assert(std::endian::native == std::endian::little,
                  "the first byte of a name is the lowest of its key");
    std::uint64_t key;
    std::memcpy(&key, name, sizeof key);
    if (length > kShortName) {
        return length > kLongestName ? Tag::kUnknown : InternLongName(name, length, key | kLowerCaseBits);
    }
    // Setting bit 5 turns A-Z into a-z and leaves a-z, 0-9 and '-' alone. Whatever else it changes becomes a
    // byte that no listed name has.
    const std::uint64_t name64 = key & (~std::uint64_t{0} >> (8 * (kShortName - length)));
    key = name64 | (kLowerCaseBits & (~std::uint64_t{0} >> (8 * (kShortName - length))));
    const std::uint8_t tag = kShortNames.slots[SlotOf(key, kShortNames.multiplier)];
    return kShortNames.keys[tag] == key && !HasControls(name64, key) ? static_cast<Tag>(tag) : Tag::kUnknown;
}

}  // namespace ZOTParser
