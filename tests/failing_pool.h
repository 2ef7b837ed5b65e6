#pragma once

// A memory pool for tests, in place of the library's: it counts what is out, and fails on demand. A test
// program that links it gets all of the library's memory from it.
namespace QuillNS {

// Allocations that have not come back yet.
unsigned int LiveAllocations();

// Makes the n-th allocation from now on fail, and all that follow, for as long as it lives. One at a time.
class FailFromNthAllocation {
public:
    explicit FailFromNthAllocation(unsigned int n);
    FailFromNthAllocation(const FailFromNthAllocation&) = delete;  // there is only one pool
    FailFromNthAllocation& operator=(const FailFromNthAllocation&) = delete;
    ~FailFromNthAllocation();

    // Whether an allocation has failed.
    bool Happened() const;
};

}  // namespace QuillNS
