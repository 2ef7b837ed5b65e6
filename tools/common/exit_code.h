#pragma once

namespace QuillTool {

constexpr int kExitWell = 0;
constexpr int kExitFailed = 1;
constexpr int kExitWrongUsage = 2;

}  // namespace QuillTool
