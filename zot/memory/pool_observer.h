#pragma once

#include <atomic>

// A way for tests to see every request to the pool, and to refuse it. The pool asks only on its slow way,
// onto which Observe sends everything.
namespace ZOTMem {

class PoolObserver {
public:
    virtual bool Grant() = 0;  // whether a request is served
    virtual void Took() = 0;   // an object was given back

protected:
    ~PoolObserver() = default;
};

// Shows `observer` every request from now on, or nobody for null. To be called before other threads use the
// pool.
void Observe(PoolObserver* observer);

// For the pool; null when nobody looks on.
extern constinit std::atomic<PoolObserver*> poolObserver;

// Tells the observer, if there is one, that an object was given back.
void ObserveDelete();

}  // namespace ZOTMem
