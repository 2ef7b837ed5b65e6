#pragma once

#include <filesystem>
#include <string>
#include <vector>

// Real pages: every tenth of the corpus, in the order of their paths; every n-th where the environment says
// QUILL_CORPUS_EVERY=n. None where QUILL_SHARED_DIR holds no corpus.
std::filesystem::path CorpusFolder();
std::vector<std::filesystem::path> CorpusPages();

// The bytes of such a page as it was published.
std::string Unpacked(const std::filesystem::path& page);
