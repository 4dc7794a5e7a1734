/// @file
/// Which types of other libraries `ktNM::vect2` converts from and to.
#pragma once

#include <type_traits>
#include <utility>

#include "geomKit/vAlgebra/foreignVector.h"

namespace geomKit::detail {

/// Numbers by the names x and y.
template <typename V, typename = void>
struct HasXy : std::false_type {};
template <typename V>
struct HasXy<V, std::void_t<decltype(static_cast<double>(std::declval<const V&>().x)),
                            decltype(static_cast<double>(std::declval<const V&>().y))>>
    : std::true_type {};

/// A third number, as vectors of space have it.
template <typename V, typename = void>
struct HasZ : std::false_type {};
template <typename V>
struct HasZ<V, std::void_t<decltype(static_cast<double>(std::declval<const V&>().z))>>
    : std::true_type {};

template <typename V>
inline constexpr bool kIsForeignVector2 =
    (HasXy<V>::value && !HasZ<V>::value) || HasElements<V, 2>::value;

/// Component I of a foreign vector, as a T.
template <typename T, int I, typename V>
constexpr T foreignComponent2(const V& v) {
    if constexpr (HasXy<V>::value) {
        return static_cast<T>(I == 0 ? v.x : v.y);
    } else {
        return static_cast<T>(v[I]);
    }
}

/// A foreign vector of two numbers, each rounded to its element type.
template <typename V, typename T>
constexpr V makeForeign2(T x, T y) {
    V v{};
    if constexpr (HasXy<V>::value) {
        v.x = static_cast<std::decay_t<decltype(v.x)>>(x);
        v.y = static_cast<std::decay_t<decltype(v.y)>>(y);
    } else {
        using Element = std::decay_t<decltype(v[0])>;
        v[0] = static_cast<Element>(x);
        v[1] = static_cast<Element>(y);
    }
    return v;
}

}  // namespace geomKit::detail
