#include "content_tree.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace QuillNS {

namespace {

struct TableText;

struct ItemText {
    std::string text;
    bool isText = false;
    std::shared_ptr<TableText> table;
};

struct CellText {
    bool exists = false;
    unsigned int words = 0;
    unsigned int linked = 0;
    unsigned int links = 0;
    std::vector<ItemText> items;
};

struct TableText {
    std::string name;
    CellText caption;
    CellText summary;
    std::vector<std::vector<CellText>> rows = {{}};
};

class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    TableText Table() {
        TableText table;
        while (std::isalnum(Here())) table.name += Next();
        Expect('{');
        while (!Take('}')) {
            if (Take(';')) {
                table.rows.emplace_back();
            } else if (Take('^')) {
                table.caption = Cell();
            } else if (Take('$')) {
                table.summary = Cell();
            } else {
                table.rows.back().push_back(Take('.') ? CellText() : Cell());
            }
        }
        return table;
    }

private:
    CellText Cell() {
        CellText cell;
        cell.exists = true;
        const std::size_t before = rest_.size();
        cell.words = Number();
        if (TakeHere('/')) cell.linked = Number();
        if (TakeHere('k')) cell.links = Number();
        if (TakeHere('(')) {
            while (!Take(')')) cell.items.push_back(Item());
        } else {
            if (rest_.size() == before) Fail();
            cell.items.emplace_back();
        }
        return cell;
    }

    ItemText Item() {
        ItemText item;
        if (Take('\'')) {
            item.isText = true;
            while (rest_.substr(0, 1) != "'") item.text += Next();
            Expect('\'');
        } else if (!Take('_')) {
            item.table = std::make_shared<TableText>(Table());
        }
        return item;
    }

    unsigned int Number() {
        unsigned int number = 0;
        while (std::isdigit(Here())) number = number * 10 + static_cast<unsigned int>(Next() - '0');
        return number;
    }

    int Here() const { return rest_.empty() ? 0 : static_cast<unsigned char>(rest_[0]); }
    char Next() {
        if (rest_.empty()) Fail();
        const char next = rest_[0];
        rest_.remove_prefix(1);
        return next;
    }
    bool TakeHere(char wanted) {
        if (Here() != wanted) return false;
        rest_.remove_prefix(1);
        return true;
    }
    bool Take(char wanted) {
        while (std::isspace(Here())) Next();
        return TakeHere(wanted);
    }
    void Expect(char wanted) {
        if (!Take(wanted)) Fail();
    }
    [[noreturn]] void Fail() {
        std::fprintf(stderr, "not a content tree, from here on: %s\n", std::string(rest_).c_str());
        std::abort();
    }

    std::string_view rest_;
};

class Maker {
public:
    explicit Maker(std::map<std::string, ZOT::SmartPtr<KTable>>& names) : names_(names) {}

    ZOT::SmartPtr<KTable> Make(const TableText& text, KTable* parent) {
        std::size_t cols = 0;
        for (const auto& row : text.rows) cols = std::max(cols, row.size());
        const unsigned int level = parent == nullptr ? 0 : parent->Level() + 1;
        const ZOT::SmartPtr<KTable> table(new KTable(parent, static_cast<unsigned int>(cols),
                                                     static_cast<unsigned int>(text.rows.size()), level),
                                          true);
        if (!text.name.empty()) names_.emplace(text.name, table);
        for (unsigned int row = 0; row < text.rows.size(); ++row) {
            for (unsigned int col = 0; col < text.rows[row].size(); ++col) {
                const CellText& cell = text.rows[row][col];
                if (cell.exists) Fill(*table->CreateCell(col, row), cell, *table);
            }
        }
        if (text.caption.exists) Fill(*table->CreateCaption(), text.caption, *table);
        if (text.summary.exists) Fill(*table->CreateSummary(), text.summary, *table);
        return table;
    }

private:
    void Fill(KCell& cell, const CellText& text, KTable& table) {
        cell.AddWords(text.words);
        cell.AddWordsInLinksAndImages(text.linked);
        cell.AddLinks(text.links);
        for (const ItemText& itemText : text.items) {
            const ZOT::SmartPtr<KCellItem> item = cell.AddCellItem();
            if (itemText.isText) item->AppendText(Wide(itemText.text), 0, 0);
            if (!itemText.table) continue;
            item->Table(Make(*itemText.table, &table));
            cell.AddTables(1);
        }
    }

    std::map<std::string, ZOT::SmartPtr<KTable>>& names_;
};

}  // namespace

ContentTree::ContentTree(std::string_view text) : root_(Maker(tables_).Make(Reader(text).Table(), nullptr)) {}

std::string ContentTree::Name(const ZOT::SmartPtr<KTable>& table) const {
    for (const auto& [name, named] : tables_) {
        if (named == table) return name;
    }
    return "?";
}

std::u16string Wide(std::string_view text) {
    return std::u16string(text.begin(), text.end());
}

std::string Narrow(std::u16string_view text) {
    std::string narrow;
    for (const char16_t unit : text) narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    return narrow;
}

}  // namespace QuillNS
