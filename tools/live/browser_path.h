#pragma once

#include <string>

namespace QuillLive {

// The path of the first of chromium, chromium-browser and google-chrome that the environment's PATH leads to,
// or nothing.
std::string FindBrowser();

// Whether `path` names a program that may be run.
bool IsProgram(const std::string& path);

}  // namespace QuillLive
