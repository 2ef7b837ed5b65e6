#pragma once

#include <map>
#include <string>
#include <string_view>
#include <quill/statistics.h>
#include <quill/table.h>

// Content trees written as text:
//
//   R{ 8/2k1('one' A{ 5 } 'two') . ; ^3 $4() _ }
//
//   R{ ... }       a table, with or without a name (a capital letter, perhaps digits)
//   ;              ends a row; rows may differ in length, the longest one gives the columns
//   .              a slot without a cell
//   8/2k1(...)     a cell: 8 words, 2 of them in links, 1 link, its items. Every part may be left out, but
//   not all.
//                  A cell without parentheses has one item that holds nothing, one with () has none.
//   ^3 $4()        caption and summary cells, anywhere in the table
//   'one'          a text item (without the quotes), from anything but a quote
//   _              an item that holds nothing; A{ ... } a nested table
namespace QuillNS {

class ContentTree {
public:
    // Ends the program when the text is none of the language.
    explicit ContentTree(std::string_view text);

    const ZOT::SmartPtr<KTable>& Root() const { return root_; }
    const ZOT::SmartPtr<KTable>& Table(const std::string& name) const { return tables_.at(name); }
    // All tables that have names.
    const std::map<std::string, ZOT::SmartPtr<KTable>>& Tables() const { return tables_; }

    // The names of the tables of a list or set, in its order, with blanks between them.
    template <class List>
    std::string Names(const List& tables) const {
        std::string names;
        for (const ZOT::SmartPtr<KTable>& table : tables) {
            if (!names.empty()) names += ' ';
            names += Name(table);
        }
        return names;
    }

    // Fills `totals` from the whole tree.
    void Gather(KStatistics& totals) const { root_->Statistics(totals, kAllLevels); }

private:
    std::string Name(const ZOT::SmartPtr<KTable>& table) const;

    std::map<std::string, ZOT::SmartPtr<KTable>> tables_;
    ZOT::SmartPtr<KTable> root_;
};

// ASCII to and from wide strings; what is not ASCII becomes '?'.
std::u16string Wide(std::string_view text);
std::string Narrow(std::u16string_view text);

}  // namespace QuillNS
