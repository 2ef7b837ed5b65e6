#pragma once

#include <algorithm>
#include <string_view>
#include <zot/memory_buffer.h>

// A view of a page that gives at most `step` bytes at a time.
class TricklingStream : public ZOTFile::MemoryBuffer {
public:
    TricklingStream(std::string_view page, unsigned int step)
        : MemoryBuffer(page.data(), static_cast<unsigned int>(page.size()), 0), step_(step) {}

    unsigned int vGet(void* bytes, unsigned int count) override {
        return MemoryBuffer::vGet(bytes, std::min(count, step_));
    }

private:
    unsigned int step_;
};
