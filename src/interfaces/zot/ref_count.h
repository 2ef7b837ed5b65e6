#pragma once

#include <zot/counted.h>

namespace ZOT {

// The count that the holders of one value share.
struct SharedCount : PoolObject {
    SPRefCounter holders;
};

// A shared holder for a value that is not counted itself, or empty. The value is destroyed and freed when the
// last holder lets go. The count changes atomically; a single holder is used by one thread at a time.
template <class T>
class RefCount : public PoolObject {
public:
    RefCount() noexcept = default;

    // Takes over `value`, allocated with `new`; null makes an empty holder. When no count can be allocated
    // the value is deleted and the holder stays empty.
    explicit RefCount(T* value) {
        if (value == nullptr) return;
        count_ = new SharedCount;
        if (count_ == nullptr) {
            delete value;
            return;
        }
        count_->holders.Add();
        value_ = value;
    }

    // Shares `value`, which lives under the existing count `count`.
    RefCount(SharedCount* count, T* value) : count_(count), value_(value) { Share(); }

    RefCount(const RefCount& other) : RefCount(other.count_, other.value_) {}
    ~RefCount() { LetGo(); }

    RefCount& operator=(const RefCount& other) {
        if (this == &other) return *this;
        RefCount old(*this);  // lives on until the new value is in place, which may be reached through it
        LetGo();
        count_ = other.count_;
        value_ = other.value_;
        Share();
        return *this;
    }

    T* operator->() const noexcept { return value_; }
    T& operator*() const noexcept { return *value_; }
    T* Get() const noexcept { return value_; }
    explicit operator bool() const noexcept { return value_ != nullptr; }

    // Holders of the value; 0 for an empty holder.
    long NbRef() const noexcept { return count_ == nullptr ? 0 : count_->holders.Get(); }

private:
    void Share() {
        if (value_ != nullptr) count_->holders.Add();
    }
    void LetGo() {
        if (value_ == nullptr || count_->holders.Sub() != 0) return;
        delete value_;
        delete count_;
    }

    SharedCount* count_ = nullptr;
    T* value_ = nullptr;
};

}  // namespace ZOT
