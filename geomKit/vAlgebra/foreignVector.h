/// @file
/// Which types of other libraries `Vector3` converts from and to.
#pragma once

#include <type_traits>
#include <utility>

namespace geomKit::detail {

/// Numbers by the names x, y and z.
template <typename V, typename = void>
struct HasXyz : std::false_type {};
template <typename V>
struct HasXyz<V, std::void_t<decltype(static_cast<double>(std::declval<const V&>().x)),
                             decltype(static_cast<double>(std::declval<const V&>().y)),
                             decltype(static_cast<double>(std::declval<const V&>().z))>>
    : std::true_type {};

/// A fourth number, as quaternions and homogeneous vectors have it.
template <typename V, typename = void>
struct HasW : std::false_type {};
template <typename V>
struct HasW<V, std::void_t<decltype(static_cast<double>(std::declval<const V&>().w))>>
    : std::true_type {};

/// N numbers by subscript, as many as the type itself says: Eigen's vectors and expressions do.
template <typename V, int N, typename = void>
struct HasSizeByName : std::false_type {};
template <typename V, int N>
struct HasSizeByName<V, N, std::void_t<decltype(V::SizeAtCompileTime)>>
    : std::bool_constant<V::SizeAtCompileTime == N> {};

/// N numbers by subscript. A type without a number of elements must consist of them, so that
/// pointers and containers of any length are left out.
template <typename V, int N, typename = void>
struct HasElements : std::false_type {};
template <typename V, int N>
struct HasElements<V, N, std::void_t<decltype(static_cast<double>(std::declval<const V&>()[0]))>>
    : std::bool_constant<HasSizeByName<V, N>::value ||
                         (std::is_trivially_copyable_v<V> &&
                          sizeof(V) == N * sizeof(std::declval<const V&>()[0]))> {};

template <typename V>
inline constexpr bool kIsForeignVector =
    (HasXyz<V>::value && !HasW<V>::value) || HasElements<V, 3>::value;

/// Component I of a foreign vector.
template <int I, typename V>
constexpr double foreignComponent(const V& v) {
    if constexpr (HasXyz<V>::value) {
        return static_cast<double>(I == 0 ? v.x : I == 1 ? v.y : v.z);
    } else {
        return static_cast<double>(v[I]);
    }
}

/// A foreign vector of three numbers, each rounded to its element type.
template <typename V>
constexpr V makeForeign(double x, double y, double z) {
    V v{};
    if constexpr (HasXyz<V>::value) {
        v.x = static_cast<std::decay_t<decltype(v.x)>>(x);
        v.y = static_cast<std::decay_t<decltype(v.y)>>(y);
        v.z = static_cast<std::decay_t<decltype(v.z)>>(z);
    } else {
        using Element = std::decay_t<decltype(v[0])>;
        v[0] = static_cast<Element>(x);
        v[1] = static_cast<Element>(y);
        v[2] = static_cast<Element>(z);
    }
    return v;
}

}  // namespace geomKit::detail
