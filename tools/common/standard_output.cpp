#include "standard_output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "platform.h"

namespace QuillTool {

bool StandardOutput::Write(const std::string& bytes) {
    errno = 0;
    return Check(std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size());
}

bool StandardOutput::Flush() {
    errno = 0;
    return Check(std::fflush(stdout) == 0);
}

bool StandardOutput::Check(bool written) {
    if (!written && !IsClosedPipe(errno)) problem_ = std::generic_category().message(errno);
    return written;
}

}  // namespace QuillTool
