#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

// Pages to measure with, loaded before anything is measured: UTF-8 text, as bench/sample writes it.
using Pages = std::vector<std::string>;

// The files of `folder` in the order of their names; nothing when one of them cannot be read.
std::optional<Pages> LoadPages(const std::filesystem::path& folder);
