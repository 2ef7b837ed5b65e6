#pragma once

// The whole class interface of the library, with the declarations of the ZOT libraries that a host needs for
// it.

#include <quill/beautify.h>
#include <quill/cell.h>
#include <quill/cell_item.h>
#include <quill/document_type.h>
#include <quill/partitions.h>
#include <quill/rank_parameters.h>
#include <quill/ranked_strategy.h>
#include <quill/statistics.h>
#include <quill/table.h>
#include <quill/text_extractor.h>
#include <quill/visitor.h>
#include <quill/visitor_strategy.h>
#include <quill/word_count.h>
#include <zot/charset.h>
#include <zot/fast_vector.h>
#include <zot/memory_buffer.h>
#include <zot/parser.h>
#include <zot/ref_count.h>
#include <zot/ref_count_vector.h>
#include <zot/smart_ptr.h>
#include <zot/stream.h>
