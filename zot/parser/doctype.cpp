#include "doctype.h"

#include "tokenizer.h"

namespace ZOTParser {
namespace {

// The public identifiers, in lower case, of pages written for old browsers.
constexpr std::string_view kQuirkyPublicIdPrefixes[] = {
    "+//silmaril//dtd html pro v0r11 19970101//",
    "-//as//dtd html 3.0 aswedit + extensions//",
    "-//advasoft ltd//dtd html 3.0 aswedit + extensions//",
    "-//ietf//dtd html 2.0 level 1//",
    "-//ietf//dtd html 2.0 level 2//",
    "-//ietf//dtd html 2.0 strict level 1//",
    "-//ietf//dtd html 2.0 strict level 2//",
    "-//ietf//dtd html 2.0 strict//",
    "-//ietf//dtd html 2.0//",
    "-//ietf//dtd html 2.1e//",
    "-//ietf//dtd html 3.0//",
    "-//ietf//dtd html 3.2 final//",
    "-//ietf//dtd html 3.2//",
    "-//ietf//dtd html 3//",
    "-//ietf//dtd html level 0//",
    "-//ietf//dtd html level 1//",
    "-//ietf//dtd html level 2//",
    "-//ietf//dtd html level 3//",
    "-//ietf//dtd html strict level 0//",
    "-//ietf//dtd html strict level 1//",
    "-//ietf//dtd html strict level 2//",
    "-//ietf//dtd html strict level 3//",
    "-//ietf//dtd html strict//",
    "-//ietf//dtd html//",
    "-//metrius//dtd metrius presentational//",
    "-//microsoft//dtd internet explorer 2.0 html strict//",
    "-//microsoft//dtd internet explorer 2.0 html//",
    "-//microsoft//dtd internet explorer 2.0 tables//",
    "-//microsoft//dtd internet explorer 3.0 html strict//",
    "-//microsoft//dtd internet explorer 3.0 html//",
    "-//microsoft//dtd internet explorer 3.0 tables//",
    "-//netscape comm. corp.//dtd html//",
    "-//netscape comm. corp.//dtd strict html//",
    "-//o'reilly and associates//dtd html 2.0//",
    "-//o'reilly and associates//dtd html extended 1.0//",
    "-//o'reilly and associates//dtd html extended relaxed 1.0//",
    "-//sq//dtd html 2.0 hotmetal + extensions//",
    "-//softquad software//dtd hotmetal pro 6.0::19990601::extensions to html 4.0//",
    "-//softquad//dtd hotmetal pro 4.0::19971010::extensions to html 4.0//",
    "-//spyglass//dtd html 2.0 extended//",
    "-//sun microsystems corp.//dtd hotjava html//",
    "-//sun microsystems corp.//dtd hotjava strict html//",
    "-//w3c//dtd html 3 1995-03-24//",
    "-//w3c//dtd html 3.2 draft//",
    "-//w3c//dtd html 3.2 final//",
    "-//w3c//dtd html 3.2//",
    "-//w3c//dtd html 3.2s draft//",
    "-//w3c//dtd html 4.0 frameset//",
    "-//w3c//dtd html 4.0 transitional//",
    "-//w3c//dtd html experimental 19960712//",
    "-//w3c//dtd html experimental 970421//",
    "-//w3c//dtd w3 html//",
    "-//w3o//dtd w3 html 3.0//",
    "-//webtechs//dtd mozilla html 2.0//",
    "-//webtechs//dtd mozilla html//",
};

bool StartsWith(Span text, std::string_view word) noexcept {
    return StartsWithIgnoringCase(text.first, text.last, word);
}

bool IsQuirky(const Doctype& doctype) noexcept {
    if (doctype.forceQuirks || !IsIgnoringCase(doctype.name, "html")) return true;
    if (IsIgnoringCase(doctype.publicId, "-//w3o//dtd w3 html strict 3.0//en//") ||
        IsIgnoringCase(doctype.publicId, "-/w3c/dtd html 4.0 transitional/en") ||
        IsIgnoringCase(doctype.publicId, "html") ||
        IsIgnoringCase(doctype.systemId, "http://www.ibm.com/data/dtd/v11/ibmxhtml1-transitional.dtd")) {
        return true;
    }
    for (const std::string_view prefix : kQuirkyPublicIdPrefixes) {
        if (StartsWith(doctype.publicId, prefix)) return true;
    }
    return !doctype.hasSystemId && (StartsWith(doctype.publicId, "-//w3c//dtd html 4.01 frameset//") ||
                                    StartsWith(doctype.publicId, "-//w3c//dtd html 4.01 transitional//"));
}

bool IsLimitedQuirky(const Doctype& doctype) noexcept {
    return StartsWith(doctype.publicId, "-//w3c//dtd xhtml 1.0 frameset//") ||
           StartsWith(doctype.publicId, "-//w3c//dtd xhtml 1.0 transitional//") ||
           (doctype.hasSystemId && (StartsWith(doctype.publicId, "-//w3c//dtd html 4.01 frameset//") ||
                                    StartsWith(doctype.publicId, "-//w3c//dtd html 4.01 transitional//")));
}

class DoctypeReader {
public:
    DoctypeReader(Span content, bool closed) noexcept
        : at_(content.first), end_(content.last), closed_(closed) {}

    Doctype Read() noexcept {
        SkipSpace();
        if (AtEnd()) return Quirky();
        ReadName();
        SkipSpace();
        // At the end of the source a declaration is incomplete, whatever it holds.
        if (AtEnd()) return closed_ ? doctype_ : Quirky();
        if (StartsWithIgnoringCase(at_, end_, "public")) {
            at_ += 6;
            return ReadPublicId();
        }
        if (StartsWithIgnoringCase(at_, end_, "system")) {
            at_ += 6;
            return ReadSystemId(true);
        }
        return Quirky();
    }

private:
    void ReadName() noexcept {
        doctype_.hasName = true;
        doctype_.name.first = at_;
        while (!AtEnd() && !IsHtmlSpace(*at_)) ++at_;
        doctype_.name.last = at_;
    }

    Doctype ReadPublicId() noexcept {
        SkipSpace();
        if (!ReadQuoted(doctype_.publicId, doctype_.hasPublicId)) return Quirky();
        return ReadSystemId(false);
    }

    Doctype ReadSystemId(bool required) noexcept {
        SkipSpace();
        if (AtEnd() && !required) return closed_ ? doctype_ : Quirky();
        if (!ReadQuoted(doctype_.systemId, doctype_.hasSystemId)) return Quirky();
        SkipSpace();
        // Anything but white space behind the identifiers is skipped, to the end of the source if need be.
        return closed_ || !AtEnd() ? doctype_ : Quirky();
    }

    bool ReadQuoted(Span& id, bool& has) noexcept {
        if (AtEnd() || (*at_ != '"' && *at_ != '\'')) return false;
        const char quote = *at_++;
        has = true;
        id.first = at_;
        id.last = at_ = FindByte(at_, end_, quote);
        if (AtEnd()) return false;
        ++at_;
        return true;
    }

    Doctype Quirky() noexcept {
        doctype_.forceQuirks = true;
        return doctype_;
    }

    bool AtEnd() const noexcept { return at_ >= end_; }
    void SkipSpace() noexcept { at_ = SkipHtmlSpace(at_, end_); }

    const char* at_;
    const char* end_;
    bool closed_;
    Doctype doctype_;
};

}  // namespace

Doctype ReadDoctype(Span content, bool closed) noexcept {
    return DoctypeReader(content, closed).Read();
}

QuirksMode QuirksOf(const Doctype& doctype) noexcept {
    if (IsQuirky(doctype)) return QuirksMode::kFull;
    return IsLimitedQuirky(doctype) ? QuirksMode::kLimited : QuirksMode::kNone;
}

}  // namespace ZOTParser
