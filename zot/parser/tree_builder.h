#pragma once

#include <initializer_list>

#include "active_formatting.h"
#include "doctype.h"
#include "open_elements.h"
#include "tokenizer.h"

namespace ZOTParser {

// Builds the tree of a page from its tokens.
// https://html.spec.whatwg.org/multipage/parsing.html#tree-construction
//
// Each insertion mode is a function of its own, named as in the standard, in the standard's order of cases,
// and several to a file: tree_builder_head.cpp (up to "after head"), _body.cpp, _table.cpp, _end.cpp
// (templates, framesets and what follows the body), _foreign.cpp. A function returns whether the token is to
// be processed again, by the mode that is then current. Scripting is off.
//
// Where the standard has no bound we have: kMaxDepth open elements, ActiveFormatting::kMostEntries formatting
// elements, and a number of reopened formatting elements that grows with the source.
class TreeBuilder {
public:
    // What the tree is for.
    struct Options {
        bool keepAll = false;  // comments and doctypes become nodes
    };

    TreeBuilder(NodeStore& nodes, Options options) noexcept;
    TreeBuilder(const TreeBuilder&) = delete;
    TreeBuilder& operator=(const TreeBuilder&) = delete;

    // Parses as a fragment in the context of an element of that name, instead of as a document. The nodes
    // become children of an html element.
    // https://html.spec.whatwg.org/multipage/parsing.html#parsing-html-fragments
    void SetContext(Tag tag, Namespace ns) noexcept;

    // Starts at byte `first` of the source.
    void Run(unsigned int first) noexcept;

private:
    enum class Mode : std::uint8_t {
        kInitial,
        kBeforeHtml,
        kBeforeHead,
        kInHead,
        kInHeadNoscript,
        kAfterHead,
        kInBody,
        kText,
        kInTable,
        kInCaption,
        kInColumnGroup,
        kInTableBody,
        kInRow,
        kInCell,
        kInTemplate,
        kAfterBody,
        kInFrameset,
        kAfterFrameset,
        kAfterAfterBody,
        kAfterAfterFrameset,
    };
    static constexpr bool kDone = false;
    static constexpr bool kReprocess = true;

    // --- dispatch
    bool IsPlainBody() const noexcept {
        return mode_ == Mode::kInBody && open_.ForeignCount() == 0 && overflow_ == 0 && !skipNewline_ &&
               !hasContext_;
    }
    void Process() noexcept;
    bool ProcessByMode(Mode mode) noexcept;
    void ProcessEnd() noexcept;
    bool IsForeignToken() const noexcept;
    static TokenizerState StateOfContext(Tag tag) noexcept;

    // --- insertion modes
    bool Initial() noexcept;
    bool BeforeHtml() noexcept;
    bool BeforeHead() noexcept;
    bool InHead() noexcept;
    bool InHeadNoscript() noexcept;
    bool AfterHead() noexcept;
    bool InBody() noexcept;
    bool TextMode() noexcept;
    bool InTable() noexcept;
    bool InCaption() noexcept;
    bool InColumnGroup() noexcept;
    bool InTableBody() noexcept;
    bool InRow() noexcept;
    bool InCell() noexcept;
    bool InTemplate() noexcept;
    bool AfterBody() noexcept;
    bool InFrameset() noexcept;
    bool AfterFrameset() noexcept;
    bool AfterAfterBody() noexcept;
    bool AfterAfterFrameset() noexcept;
    bool ForeignContent() noexcept;

    // --- steps of the head
    void InsertRoot(const OpenElement& html) noexcept;
    void InsertHead(NodeIndex head) noexcept;
    void CloseHead() noexcept;
    void CloseHeadNoscript() noexcept;
    bool InHeadAgain() noexcept;
    void InsertBody() noexcept;

    // --- steps of "in body"
    bool InBodyText() noexcept;
    bool InBodyStartTag() noexcept;
    bool InBodyEndTag() noexcept;
    void AnyOtherEndTag() noexcept;
    // Most end tags are those of the current element, which then needs no more than to be closed.
    bool EndsCurrent() noexcept {
        const bool ends = open_.Current().Is(token_.tag) && token_.tag != Tag::kUnknown;
        if (ends) PopCurrent();
        return ends;
    }
    void ClosePInButtonScope() noexcept {
        if (open_.InButtonScope(Tag::kP)) ClosePElement();
    }
    void ClosePElement() noexcept;
    void CloseListItem(Tag a, Tag b) noexcept;
    void StartFormatting() noexcept;
    void StartA() noexcept;
    void StartNobr() noexcept;
    void StartButton() noexcept;
    void StartForm() noexcept;
    void EndForm() noexcept;
    void StartFrameset() noexcept;
    void StartInput() noexcept;
    void StartSelect() noexcept;
    void StartOption() noexcept;
    void StartForeign(Namespace ns) noexcept;
    void InsertVoid() noexcept;
    void EndBlock() noexcept;
    bool EndBody() noexcept;
    void RunAdoptionAgency() noexcept;
    bool AdoptOnce(Tag subject) noexcept;
    NodeIndex ReparentBetween(NodeIndex formattingNode, unsigned int furthestIndex,
                              unsigned int& bookmark) noexcept;
    bool ScopeEndsAbove(unsigned int index) const noexcept;

    // --- steps of foreign content
    bool ForeignStartTag() noexcept;
    bool ForeignEndTag() noexcept;
    bool HasFontAttribute() const noexcept;
    bool BreakOut() noexcept;

    // --- steps of tables and templates
    bool InTableStartTag() noexcept;
    bool InTableEndTag() noexcept;
    bool InTableAnythingElse() noexcept;
    bool InTableText() noexcept;
    void ClearStackBackTo(std::initializer_list<Tag> context) noexcept;
    bool CloseCaption() noexcept;
    void CloseCell() noexcept;
    bool CloseTableBody() noexcept;
    bool CloseRow() noexcept;
    void StartTemplate() noexcept;
    void EndTemplate() noexcept;
    void CloseTemplate() noexcept;
    bool InTemplateStartTag() noexcept;
    void PushTemplateMode() noexcept {
        if (!templateModes_.Append(Mode::kInTemplate)) nodes_.Fail();
    }
    bool SwitchTemplateMode(Mode mode) noexcept;
    Mode TemplateMode() const noexcept {
        return templateModes_.Size() == 0 ? Mode::kInBody : templateModes_[templateModes_.Size() - 1];
    }

    // --- insertion
    struct Place {
        NodeIndex parent;
        NodeIndex before;  // kNoNode: at the end
    };
    Place AppropriatePlace(const OpenElement& target) const noexcept;
    void InsertAt(Place place, NodeIndex node) noexcept;
    NodeIndex InsertHtmlElement() noexcept;
    NodeIndex InsertHtmlElement(Tag tag) noexcept;  // one that the page does not spell out
    NodeIndex InsertForeignElement(Namespace ns) noexcept;
    NodeIndex InsertAndPush(const OpenElement& element) noexcept;
    NodeIndex CloneElement(NodeIndex element) noexcept;
    OpenElement NewElement(Tag tag, Namespace ns, bool spelledOut) noexcept;
    void InsertText(Span text, TextKind kind) noexcept;
    void InsertComment(NodeIndex parent) noexcept;
    void InsertComment() noexcept;
    void InsertCommentAt(Place place) noexcept;
    void AddIntegrationPoint(OpenElement& element, bool hasToken) const noexcept;
    void StartRawText(TokenizerState state) noexcept;
    void MakeRoom() noexcept {
        if (open_.Full()) [[unlikely]] {
            CloseForRoom();
        }
    }
    void CloseForRoom() noexcept;
    bool PayOverflow() noexcept;
    // The html element stays open to the end.
    void PopCurrent() noexcept {
        if (open_.Size() > 1) open_.Pop();
    }

    // --- helpers of the standard
    void GenerateImpliedEndTags(Tag except = Tag::kUnknown) noexcept;
    void GenerateAllImpliedEndTagsThoroughly() noexcept;
    void ReconstructFormatting() noexcept {
        if (open_.FormattingClosed() && !formatting_.Empty()) ReconstructClosed();
    }
    void ReconstructClosed() noexcept;
    void ReopenFormatting(unsigned int from) noexcept;
    void ResetInsertionMode() noexcept;
    OpenElement AdjustedCurrent() const noexcept;
    bool IsTag(TokenKind kind, std::initializer_list<Tag> tags) const noexcept;
    bool IsStart(std::initializer_list<Tag> tags) const noexcept { return IsTag(TokenKind::kStartTag, tags); }
    bool IsEnd(std::initializer_list<Tag> tags) const noexcept { return IsTag(TokenKind::kEndTag, tags); }
    bool IsText() const noexcept { return token_.kind == TokenKind::kText; }
    bool IsComment() const noexcept { return token_.kind == TokenKind::kComment; }
    bool IsDoctype() const noexcept { return token_.kind == TokenKind::kDoctype; }
    bool HasAttributeValue(std::string_view name,
                           std::initializer_list<std::string_view> values) const noexcept;
    bool SameName(const OpenElement& element) const noexcept;
    void MergeAttributes(unsigned int openIndex) noexcept;

    // --- characters
    Span LeadingSpace() const noexcept;
    bool SkipLeadingSpace() noexcept;    // whether anything is left of the text
    bool InsertLeadingSpace() noexcept;  // the same, and the white space goes into the tree
    void InsertOnlySpace() noexcept;     // of all the text
    bool SkipNewline() noexcept;
    bool HasVisibleText() const noexcept;
    bool IsOnlyNul() const noexcept;
    NodeIndex TextBefore(Place place) const noexcept;

    // Formatting elements that may still be reopened, so that their number stays in proportion to the source.
    bool TakeReopening() noexcept;

    NodeStore& nodes_;
    const Options options_;
    Tokenizer tokenizer_;
    Token token_;
    Mode mode_ = Mode::kInitial;
    Mode originalMode_ = Mode::kInitial;
    bool fosterParenting_ = false;
    bool framesetOk_ = true;
    bool skipNewline_ = false;
    bool adopted_ = false;          // whole subtrees have moved, so depths may have grown
    bool selectedContent_ = false;  // there is such an element
    QuirksMode quirks_ = QuirksMode::kNone;
    NodeIndex headElement_ = kNoNode;
    NodeIndex formElement_ = kNoNode;
    unsigned int reopened_ = 0;
    bool hasContext_ = false;
    OpenElement context_{};
    OpenElements open_;
    ActiveFormatting formatting_;
    ZOT::FastVector<Mode> templateModes_;
    // End tags still owed by elements that were closed because the stack was full.
    unsigned int overflow_ = 0;
    std::uint16_t overflowOf_[kTagCount] = {};
};

}  // namespace ZOTParser
