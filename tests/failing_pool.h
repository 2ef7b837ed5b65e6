#pragma once

// Watches the memory pool of a test program that links it: counts what is out, and has allocations fail on
// demand.
namespace QuillNS {

// Allocations that have not come back yet.
unsigned int LiveAllocations();

// Makes the n-th allocation from now on fail, and all that follow or no other, for as long as it lives. One
// at a time.
enum class Failing { kFromThenOn, kOnce };
class FailFromNthAllocation {
public:
    explicit FailFromNthAllocation(unsigned int n, Failing failing = Failing::kFromThenOn);
    FailFromNthAllocation(const FailFromNthAllocation&) = delete;  // there is only one pool
    FailFromNthAllocation& operator=(const FailFromNthAllocation&) = delete;
    ~FailFromNthAllocation();

    // Whether an allocation has failed.
    bool Happened() const;
};

}  // namespace QuillNS
