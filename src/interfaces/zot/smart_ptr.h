#pragma once

#include <functional>
#include <zot/memory.h>

namespace ZOT {

// Owns one reference on a counted object (one with AddRef and Release), or is null. One pointer wide.
// Not thread-safe itself; the counts that it changes are atomic.
template <class T>
class SmartPtr : public PoolObject {
public:
    SmartPtr() noexcept = default;

    // Holds `object`, which may be null, and takes a reference on it unless `addRef` is false (then the
    // caller's reference becomes this one's).
    SmartPtr(T* object, bool addRef) : object_(object) {
        if (addRef && object_ != nullptr) object_->AddRef();
    }
    SmartPtr(const SmartPtr& other) : SmartPtr(other.object_, true) {}
    ~SmartPtr() {
        if (object_ != nullptr) object_->Release();
    }

    // Assigning the object already held changes no count.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the assignment of a pointer looks for it
    SmartPtr& operator=(const SmartPtr& other) { return *this = other.object_; }
    SmartPtr& operator=(T* object) {
        if (object == object_) return *this;
        T* const old = object_;
        if (object != nullptr) object->AddRef();
        object_ = object;
        if (old != nullptr) old->Release();
        return *this;
    }

    // No null check.
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }

    T* Get() const noexcept { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    // Gives up the object without touching its count.
    T* Detach() noexcept {
        T* const object = object_;
        object_ = nullptr;
        return object;
    }

    // Identity, and an order of identity: the addresses as unsigned numbers.
    friend bool operator==(const SmartPtr& a, const SmartPtr& b) noexcept { return a.object_ == b.object_; }
    friend bool operator!=(const SmartPtr& a, const SmartPtr& b) noexcept { return a.object_ != b.object_; }
    friend bool operator<(const SmartPtr& a, const SmartPtr& b) noexcept {
        return std::less<const T*>()(a.object_, b.object_);
    }
    friend bool operator==(const SmartPtr& a, const T* b) noexcept { return a.object_ == b; }
    friend bool operator!=(const SmartPtr& a, const T* b) noexcept { return a.object_ != b; }

private:
    T* object_ = nullptr;
};

}  // namespace ZOT
