#pragma once

#include <utility>
#include <variant>

namespace zelvaine {

// A value or the reason there is none; the standard one arrives only with C++23.
template <class E>
struct Unexpected {
    E error;
};
template <class E>
Unexpected(E) -> Unexpected<E>;

template <class T, class E>
class Expected {
public:
    Expected(T value) : content_(std::in_place_index<0>, std::move(value)) {}
    template <class F>
    Expected(Unexpected<F> failure) : content_(std::in_place_index<1>, std::move(failure.error))
    {}

    bool has_value() const { return content_.index() == 0; }
    explicit operator bool() const { return has_value(); }

    T& value() & { return std::get<0>(content_); }
    const T& value() const& { return std::get<0>(content_); }
    T&& value() && { return std::get<0>(std::move(content_)); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::move(*this).value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }

    const E& error() const { return std::get<1>(content_); }

private:
    std::variant<T, E> content_;
};

} // namespace zelvaine
