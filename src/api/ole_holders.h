#pragma once

#include <string_view>

#include <ole/automation.h>

// Owners of what OLE calls hand out.

namespace QuillNS {

// One reference on an object, or null.
template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    // Takes a reference of its own.
    explicit ComPtr(Interface* object) : object_(object) {
        if (object_ != nullptr) object_->AddRef();
    }
    ComPtr(const ComPtr&) = delete;  // nobody needs a second one
    ComPtr& operator=(const ComPtr&) = delete;
    ~ComPtr() {
        if (object_ != nullptr) object_->Release();
    }

    // Where a call puts the reference that it hands out. Once for each holder.
    Interface** Out() { return &object_; }
    // The same for QueryInterface.
    void** OutVoid() { return reinterpret_cast<void**>(&object_); }

    Interface* operator->() const { return object_; }
    Interface* Get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    Interface* object_ = nullptr;
};

using OleText = std::basic_string_view<OLECHAR>;

// The string as far as its first NUL; empty for null.
inline OleText UpToNul(BSTR string) {
    return string == nullptr ? OleText() : OleText(string);
}

// A string that a call hands out.
class OwnedBstr {
public:
    OwnedBstr() = default;
    OwnedBstr(const OwnedBstr&) = delete;  // nobody needs a second one
    OwnedBstr& operator=(const OwnedBstr&) = delete;
    ~OwnedBstr() { SysFreeString(string_); }

    BSTR* Out() { return &string_; }
    OleText Text() const { return UpToNul(string_); }

private:
    BSTR string_ = nullptr;
};

}  // namespace QuillNS
