// Which method a pointer to a method names, kept and compared without its type.
//
// Equal for equal pointers. Methods of unrelated classes may look alike, so whoever compares across classes
// compares the types as well. A virtual method and its overrides are one.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>

class MethodIdentity {
public:
    MethodIdentity() = default; // of no method
    template <typename Method> explicit MethodIdentity(Method method)
    {
        static_assert(sizeof(Method) <= sizeof(m_bytes));
        std::memcpy(m_bytes.data(), &method, sizeof(method));
    }

    bool operator==(const MethodIdentity&) const = default;

private:
    std::array<std::byte, 2 * sizeof(void*)> m_bytes {};
};
