#include "tree_dump.h"

#include <cstring>
#include <map>
#include <utility>
#include <zot/memory.h>
#include <zot/parser.h>

#include "doctype.h"
#include "foreign_names.h"
#include "node_store.h"
#include "text.h"
#include "tree_builder.h"

namespace html5lib {
namespace {

using ZOTParser::Namespace;
using ZOTParser::NodeIndex;
using ZOTParser::NodeStore;
using ZOTParser::NodeType;
using ZOTParser::Tag;
using ZOTParser::TextKind;

class TreeDump {
public:
    explicit TreeDump(const NodeStore& nodes) : nodes_(nodes) {}

    // All below `parent`, whose children stand at that level.
    std::string Children(NodeIndex parent, unsigned level) {
        DumpChildren(parent, level);
        return std::move(lines_);
    }

private:
    void DumpChildren(NodeIndex parent, unsigned level) {
        for (NodeIndex node = nodes_.FirstChild(parent); node != ZOTParser::kNoNode;
             node = nodes_.NextSibling(node)) {
            Dump(node, level);
        }
    }

    void Dump(NodeIndex node, unsigned level) {
        switch (nodes_.TypeOf(node)) {
            case NodeType::kElement: return DumpElement(node, level);
            case NodeType::kText: return AddLine(level, '"' + TextOf(node) + '"');
            case NodeType::kComment:
                return AddLine(level, "<!-- " + Decoded(DataOf(node), TextKind::kRaw) + " -->");
            case NodeType::kDoctype: return DumpDoctype(node, level);
            case NodeType::kBreak: return;
        }
    }

    void DumpElement(NodeIndex node, unsigned level) {
        AddLine(level, '<' + ElementName(node) + '>');
        for (const auto& [name, value] : AttributesOf(node)) AddLine(level + 1, name + "=\"" + value + '"');
        const bool isTemplate =
            nodes_.TagOf(node) == Tag::kTemplate && nodes_.NamespaceOf(node) == Namespace::kHtml;
        if (isTemplate) AddLine(level + 1, "content");
        DumpChildren(node, isTemplate ? level + 2 : level + 1);
    }

    std::string ElementName(NodeIndex node) const {
        const std::string name = DecodedName(nodes_.Name(node));
        switch (nodes_.NamespaceOf(node)) {
            case Namespace::kSvg: return "svg " + SvgTagName(name);
            case Namespace::kMathMl: return "math " + name;
            case Namespace::kHtml: break;
        }
        return name;
    }

    // By the name that is shown.
    std::map<std::string, std::string> AttributesOf(NodeIndex node) const {
        std::map<std::string, std::string> attributes;
        nodes_.VisitAttributes(nodes_[node], [&](const ZOTParser::Attribute& attribute) {
            attributes.emplace(AttributeName(DecodedName(attribute.name.View()), nodes_.NamespaceOf(node)),
                               DecodedValue(attribute.value.View()));
            return true;
        });
        return attributes;
    }

    static std::string AttributeName(const std::string& name, Namespace ns) {
        switch (ns) {
            case Namespace::kSvg: return SvgAttributeName(name);
            case Namespace::kMathMl: return MathMlAttributeName(name);
            case Namespace::kHtml: break;
        }
        return name;
    }

    void DumpDoctype(NodeIndex node, unsigned level) {
        const std::string_view content = DataOf(node);
        const char* const end = content.data() + content.size();
        const bool closed = end < nodes_.SourceEnd() && *end == '>';
        const ZOTParser::Doctype doctype = ZOTParser::ReadDoctype({content.data(), end}, closed);
        std::string line = "<!DOCTYPE " + DecodedName(doctype.name.View());
        const std::string publicId = Decoded(doctype.publicId.View(), TextKind::kRaw);
        const std::string systemId = Decoded(doctype.systemId.View(), TextKind::kRaw);
        if (!publicId.empty() || !systemId.empty()) line += " \"" + publicId + "\" \"" + systemId + '"';
        AddLine(level, line + '>');
    }

    std::string TextOf(NodeIndex node) const {
        std::u16string text;
        nodes_.GetText(nodes_[node], text);
        return ToUtf8(text);
    }

    std::string_view DataOf(NodeIndex node) const {
        return {nodes_.Source() + nodes_[node].SourcePosition(), nodes_[node].SourceLength()};
    }

    void AddLine(unsigned level, const std::string& content) {
        lines_ += "| " + std::string(2 * level, ' ') + content + '\n';
    }

    const NodeStore& nodes_;
    std::string lines_;
};

// Puts the source into an empty store. False when memory is out.
bool Load(std::string_view source, NodeStore& nodes) {
    const std::size_t size = source.size() + ZOTParser::kSourcePadding;
    auto* const bytes = static_cast<unsigned char*>(ZOT::PoolAllocate(size));
    if (bytes == nullptr) return false;
    std::memset(bytes, 0, size);
    if (!source.empty()) std::memcpy(bytes, source.data(), source.size());
    return nodes.Init(bytes, static_cast<unsigned>(source.size()));
}

// Takes the prefix of a foreign context from `name`.
Namespace TakeNamespace(std::string_view& name) {
    const auto take = [&name](std::string_view prefix) {
        if (!name.starts_with(prefix)) return false;
        name.remove_prefix(prefix.size());
        return true;
    };
    return take("svg ") ? Namespace::kSvg : take("math ") ? Namespace::kMathMl : Namespace::kHtml;
}

}  // namespace

std::string DumpDocument(std::string_view page) {
    NodeStore nodes;
    if (!Load(page, nodes)) return "out of memory";
    ZOTParser::TreeBuilder(nodes, {.keepAll = true}).Run(0);
    return TreeDump(nodes).Children(ZOTParser::kDocumentNode, 0);
}

std::string DumpFragment(std::string_view fragment, std::string_view context) {
    NodeStore nodes;
    if (!Load(fragment, nodes)) return "out of memory";
    const Namespace ns = TakeNamespace(context);
    std::string name(context);
    const std::size_t length = name.size();
    name.resize(length + ZOTParser::kSourcePadding);
    ZOTParser::TreeBuilder builder(nodes, {.keepAll = true});
    builder.SetContext(ZOTParser::InternTag(name.data(), length), ns);
    builder.Run(0);
    return TreeDump(nodes).Children(nodes.FirstChild(ZOTParser::kDocumentNode), 0);
}

}  // namespace html5lib
