#pragma once

namespace QuillTool {

// How a page is read.
enum class Layout {
    kAuto,    // as the library chooses
    kTables,  // its tables are its layout
    kBlocks,  // its blocks (div, section, article, ...) are too
};

}  // namespace QuillTool
