#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ZOTParser {

// The tags that tree construction or the keyword table know, in any namespace. Their order is free; no name
// twice.
// clang-format off
#define ZOT_PARSER_TAGS(X)                                                                                     \
    X(A, "a") X(Abbr, "abbr") X(Acronym, "acronym") X(Address, "address") X(AnnotationXml, "annotation-xml")   \
    X(Applet, "applet") X(Area, "area") X(Article, "article") X(Aside, "aside") X(Audio, "audio") X(B, "b")    \
    X(Base, "base") X(Basefont, "basefont") X(Bdi, "bdi") X(Bdo, "bdo") X(Bgsound, "bgsound") X(Big, "big")    \
    X(Blockquote, "blockquote") X(Body, "body") X(Br, "br") X(Button, "button") X(Canvas, "canvas")            \
    X(Caption, "caption") X(Center, "center") X(Cite, "cite") X(Code, "code") X(Col, "col")                    \
    X(Colgroup, "colgroup") X(Data, "data") X(Datalist, "datalist") X(Dd, "dd") X(Del, "del") X(Desc, "desc")  \
    X(Details, "details") X(Dfn, "dfn") X(Dialog, "dialog") X(Dir, "dir") X(Div, "div") X(Dl, "dl")            \
    X(Dt, "dt") X(Em, "em") X(Embed, "embed") X(Fieldset, "fieldset") X(Figcaption, "figcaption")              \
    X(Figure, "figure") X(Font, "font") X(Footer, "footer") X(ForeignObject, "foreignobject") X(Form, "form")  \
    X(Frame, "frame") X(Frameset, "frameset") X(H1, "h1") X(H2, "h2") X(H3, "h3") X(H4, "h4") X(H5, "h5")      \
    X(H6, "h6") X(Head, "head") X(Header, "header") X(Hgroup, "hgroup") X(Hr, "hr") X(Html, "html") X(I, "i")  \
    X(Iframe, "iframe") X(Image, "image") X(Img, "img") X(Input, "input") X(Ins, "ins") X(Kbd, "kbd")          \
    X(Keygen, "keygen") X(Label, "label") X(Legend, "legend") X(Li, "li") X(Link, "link")                      \
    X(Listing, "listing") X(Main, "main") X(Malignmark, "malignmark") X(Map, "map") X(Mark, "mark")            \
    X(Marquee, "marquee") X(Math, "math") X(Menu, "menu") X(Meta, "meta") X(Meter, "meter")                    \
    X(Mglyph, "mglyph") X(Mi, "mi") X(Mn, "mn") X(Mo, "mo") X(Ms, "ms") X(Mtext, "mtext") X(Nav, "nav")        \
    X(Nobr, "nobr") X(Noembed, "noembed") X(Noframes, "noframes") X(Noscript, "noscript") X(Object, "object")  \
    X(Ol, "ol") X(Optgroup, "optgroup") X(Option, "option") X(Output, "output") X(P, "p") X(Param, "param")    \
    X(Picture, "picture") X(Plaintext, "plaintext") X(Pre, "pre") X(Progress, "progress") X(Q, "q")            \
    X(Rb, "rb") X(Rp, "rp") X(Rt, "rt") X(Rtc, "rtc") X(Ruby, "ruby") X(S, "s") X(Samp, "samp")                \
    X(Script, "script") X(Search, "search") X(Section, "section") X(Select, "select")                          \
    X(Selectedcontent, "selectedcontent") X(Small, "small")                                                    \
    X(Source, "source") X(Span, "span") X(Strike, "strike") X(Strong, "strong") X(Style, "style")              \
    X(Sub, "sub") X(Summary, "summary") X(Sup, "sup") X(Svg, "svg") X(Table, "table") X(Tbody, "tbody")        \
    X(Td, "td") X(Template, "template") X(Textarea, "textarea") X(Tfoot, "tfoot") X(Th, "th")                  \
    X(Thead, "thead") X(Time, "time") X(Title, "title") X(Tr, "tr") X(Track, "track") X(Tt, "tt") X(U, "u")    \
    X(Ul, "ul") X(Var, "var") X(Video, "video") X(Wbr, "wbr") X(Xmp, "xmp")
// clang-format on

// A tag name as a number. kUnknown stands for every name that is not listed; such an element has its name in
// the source.
enum class Tag : std::uint8_t {
    kUnknown,
#define ZOT_PARSER_TAG(id, name) k##id,
    ZOT_PARSER_TAGS(ZOT_PARSER_TAG)
#undef ZOT_PARSER_TAG
};

// NOLINTNEXTLINE(bugprone-macro-parentheses): one term of the sum below
#define ZOT_PARSER_TAG(id, name) +1
constexpr unsigned int kTagCount = 1 ZOT_PARSER_TAGS(ZOT_PARSER_TAG);
#undef ZOT_PARSER_TAG

enum class Namespace : std::uint8_t { kHtml, kSvg, kMathMl };

// What tree construction asks of an element, as bits. They are looked up once, when the element is opened.
// https://html.spec.whatwg.org/multipage/parsing.html#the-stack-of-open-elements
enum TagFlag : std::uint16_t {
    kSpecial = 1 << 0,
    kFormatting = 1 << 1,
    kScope = 1 << 2,  // ends the default scope, and with it the list item and button scopes
    kListItemScope = 1 << 3,
    kButtonScope = 1 << 4,
    kTableScope = 1 << 5,
    kImpliedEnd = 1 << 6,
    kImpliedEndThoroughly = 1 << 7,  // besides those of kImpliedEnd
    kTableStructure = 1 << 8,        // table, tbody, tfoot, thead, tr: text in them is foster-parented
    kHeading = 1 << 9,
    kForeign = 1 << 10,  // not in the HTML namespace
};

struct TagFlagTables {
    std::uint16_t of[3][kTagCount];  // by namespace, then by tag
};
extern const TagFlagTables kTagFlags;

// The flags of an element with the given name in the given namespace.
inline std::uint16_t FlagsOf(Tag tag, Namespace ns) noexcept {
    return kTagFlags.of[static_cast<unsigned int>(ns)][static_cast<unsigned int>(tag)];
}

// The name, in lower case; empty for kUnknown.
std::string_view NameOf(Tag tag) noexcept;

// Names of up to eight bytes are one 64-bit number, the key: the bytes, first one lowest, every letter in
// lower case. One multiplication sends each of them to a slot of its own; the multiplier is found while
// compiling.
struct ShortTagNames {
    static constexpr unsigned int kLongest = 8;
    static constexpr unsigned int kSlotBits = 11;

    // Where the search starts: one that fits the present names, as Clang gives up a long search.
    std::uint64_t multiplier = 0xD43AB212729A598Bu;
    std::uint8_t slots[1u << kSlotBits] = {};
    std::uint64_t keys[kTagCount] = {};  // of longer names: their first eight bytes

    constexpr std::size_t SlotOf(std::uint64_t key) const noexcept {
        return static_cast<std::size_t>((key * multiplier) >> (64 - kSlotBits));
    }
};
extern const ShortTagNames kShortTagNames;

// The same for names of more than eight bytes.
Tag InternLongTag(const char* name, std::size_t length) noexcept;

// The tag of a name of `length` bytes, at least one, in any letter case. At least eight bytes can be read at
// `name`, whatever its length.
inline Tag InternTag(const char* name, std::size_t length) noexcept {
    static_assert(std::endian::native == std::endian::little,
                  "the first byte of a name is the lowest of its key");
    if (length > ShortTagNames::kLongest) return InternLongTag(name, length);
    std::uint64_t bytes;
    std::memcpy(&bytes, name, sizeof bytes);
    bytes &= ~std::uint64_t{0} >> (8 * (ShortTagNames::kLongest - length));
    // Bit 5 tells small letters from capitals, and bit 6 letters, with a few bytes that no name has, from
    // digits.
    constexpr std::uint64_t kBit6 = 0x4040404040404040u;
    const std::uint64_t key = bytes | (bytes & kBit6) >> 1;
    const std::uint8_t tag = kShortTagNames.slots[kShortTagNames.SlotOf(key)];
    return kShortTagNames.keys[tag] == key ? static_cast<Tag>(tag) : Tag::kUnknown;
}

}  // namespace ZOTParser
