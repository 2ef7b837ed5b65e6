#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace QuillLive {

using Json = nlohmann::json;

// Reads a message of the browser. A surrogate that stands alone, which pages can put into their strings and
// which is no JSON, becomes U+FFFD. A discarded value for what is no JSON even so.
Json ParseMessage(std::string message);

// A member of an object, or a value that stands for none: null, "", false. Never fails, whatever `object` is.
const Json& Member(const Json& object, const char* name);
std::string Text(const Json& object, const char* name);
bool Flag(const Json& object, const char* name);

}  // namespace QuillLive
