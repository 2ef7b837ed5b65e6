#pragma once

#include <string>
#include <vector>

// Small pages that come by every kind of allocation: of the parser in each reading, of the content tree, of
// the ranking and of the texts.
const std::vector<std::string>& SamplePages();
