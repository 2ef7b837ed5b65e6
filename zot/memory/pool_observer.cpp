#include "pool_observer.h"

#include "pool.h"

namespace ZOTMem {

constinit std::atomic<PoolObserver*> poolObserver{nullptr};

void Observe(PoolObserver* observer) {
    poolObserver.store(observer, std::memory_order_relaxed);
    SetSlow(observer != nullptr);
}

void ObserveDelete() {
    PoolObserver* const observer = poolObserver.load(std::memory_order_relaxed);
    if (observer != nullptr) observer->Took();
}

}  // namespace ZOTMem
