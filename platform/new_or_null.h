// Objects whose failed allocation has an answer.
#pragma once

#include <memory>
#include <new>
#include <utility>

// Null when there is no memory for the object or for what its constructor asks for.
template <typename T, typename... Arguments>
std::unique_ptr<T> NewOrNull(Arguments&&... arguments) {
    try {
        return std::make_unique<T>(std::forward<Arguments>(arguments)...);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
