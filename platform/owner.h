// The owner of a handle: a key, an icon, a module. Moves, never copies.
#pragma once

#include <utility>

// `close` takes the handle; a null handle is none.
template <typename Handle, auto close>
class Owner {
public:
    Owner() = default;
    explicit Owner(Handle handle) : handle_(handle) {}
    Owner(Owner&& other) noexcept : handle_(other.release()) {}
    Owner& operator=(Owner&& other) noexcept {
        if (this != &other) {
            Reset();
            handle_ = other.release();
        }
        return *this;
    }
    ~Owner() { Reset(); }

    explicit operator bool() const { return handle_ != nullptr; }
    Handle get() const { return handle_; }
    Handle release() { return std::exchange(handle_, nullptr); }
    // Where a call hands the handle over.
    Handle* out() {
        Reset();
        return &handle_;
    }

private:
    void Reset() {
        if (handle_ != nullptr) close(release());
    }

    Handle handle_ = nullptr;
};
