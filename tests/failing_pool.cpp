#include "failing_pool.h"

#include <atomic>

#include "pool_observer.h"

namespace {

constexpr unsigned int kNever = 0xFFFFFFFFu;

std::atomic<unsigned int> live{0};
std::atomic<unsigned int> left{kNever};  // allocations until they fail
bool failsOnce = false;
bool happened = false;

class Observer final : public ZOTMem::PoolObserver {
public:
    Observer() { ZOTMem::Observe(this); }

    bool Grant() override {
        if (left == 0 || (left != kNever && --left == 0)) {
            happened = true;
            if (failsOnce) left = kNever;
            return false;
        }
        ++live;
        return true;
    }
    void Took() override { --live; }
};

Observer observer;  // from before the first allocation to after the last

}  // namespace

namespace QuillNS {

unsigned int LiveAllocations() {
    return live;
}

FailFromNthAllocation::FailFromNthAllocation(unsigned int n, Failing failing) {
    left = n;
    failsOnce = failing == Failing::kOnce;
    happened = false;
}
FailFromNthAllocation::~FailFromNthAllocation() {
    left = kNever;
}
bool FailFromNthAllocation::Happened() const {
    return happened;
}

}  // namespace QuillNS
