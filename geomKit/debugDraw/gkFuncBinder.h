/// @file
/// The debug drawing hooks: callbacks by which code under test shows its geometry.
#pragma once

#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Vector3.h"

namespace geomKit {

/// The process-wide registry of four drawing callbacks, all null when the library is loaded. A draw
/// call whose callback is null does nothing.
///
/// No function of the library draws by itself: a host puts draw calls into the code that it is
/// looking at, its own or a copy of the library's, and registers what its renderer offers. Colours,
/// sizes and styles are passed through untouched: they mean what the host's callback says.
///
/// Each slot holds a plain function, or a function with a context pointer that is handed back to it
/// last; the context is how a callback reaches an object:
///
///     gkFuncBinder::registerDrawPoint(
///         [](const Vector3& p, int colour, void* window) {
///             static_cast<Window*>(window)->mark(p, colour);
///         },
///         &window);
///
/// The slots have no lock: a host registers once, before anything is drawn; after that any number
/// of threads may draw, as far as the callbacks allow it. What a context points to must live as
/// long as it is registered.
class gkFuncBinder {
public:
    using DrawVector = void (*)(const Vector3& origin, const Vector3& vector, int colour,
                                double scale);
    using DrawPoint = void (*)(const Vector3& point, int colour);
    using DrawPoints = void (*)(const std::vector<Vector3>& points, int colour, int style);
    using Clear = void (*)();
    using DrawVectorIn = void (*)(const Vector3& origin, const Vector3& vector, int colour,
                                  double scale, void* context);
    using DrawPointIn = void (*)(const Vector3& point, int colour, void* context);
    using DrawPointsIn = void (*)(const std::vector<Vector3>& points, int colour, int style,
                                  void* context);
    using ClearIn = void (*)(void* context);

    /// The one instance. Never null.
    [[nodiscard]] GEOMKIT_API static gkFuncBinder* iGet() noexcept;
    /// Sets all four slots to null.
    GEOMKIT_API void iReset() noexcept;

    /// Each replaces what its slot held, of either kind; null unregisters.
    GEOMKIT_API static void registerDrawVector(DrawVector fn) noexcept;
    GEOMKIT_API static void registerDrawPoint(DrawPoint fn) noexcept;
    GEOMKIT_API static void registerDrawPoints(DrawPoints fn) noexcept;
    GEOMKIT_API static void registerClear(Clear fn) noexcept;
    GEOMKIT_API static void registerDrawVector(DrawVectorIn fn, void* context) noexcept;
    GEOMKIT_API static void registerDrawPoint(DrawPointIn fn, void* context) noexcept;
    GEOMKIT_API static void registerDrawPoints(DrawPointsIn fn, void* context) noexcept;
    GEOMKIT_API static void registerClear(ClearIn fn, void* context) noexcept;

    GEOMKIT_API static void drawVector(const Vector3& a, const Vector3& b, int colour,
                                       double scale);
    GEOMKIT_API static void drawPoint(const Vector3& p, int colour);
    /// Draws only when the draw-POINT callback is registered too: a host that registers only the
    /// draw-points callback gets no output. With a draw-point but no draw-points callback nothing
    /// is drawn either.
    GEOMKIT_API static void drawPoints(const std::vector<Vector3>& pts, int colour, int style);
    GEOMKIT_API static void clear();

private:
    /// A callback of either kind.
    template <typename Plain, typename In>
    struct Slot {
        Plain plain = nullptr;
        In in = nullptr;
        void* context = nullptr;

        [[nodiscard]] bool isNull() const noexcept { return plain == nullptr && in == nullptr; }
        template <typename... Args>
        void call(const Args&... args) const {
            if (plain != nullptr) {
                plain(args...);
            } else if (in != nullptr) {
                in(args..., context);
            }
        }
    };

    Slot<DrawVector, DrawVectorIn> drawVector_;
    Slot<DrawPoint, DrawPointIn> drawPoint_;
    Slot<DrawPoints, DrawPointsIn> drawPoints_;
    Slot<Clear, ClearIn> clear_;
};

/// Short names for quick insertion into code under test. Each does nothing when its callback is
/// null. `dVec` draws with scale 0.1.
GEOMKIT_API void dVec(Vector3& origin, Vector3& v, int colour);
GEOMKIT_API void dVecSc(Vector3& origin, Vector3& v, int colour, double scale);
GEOMKIT_API void dPnt(Vector3& p, int colour);
GEOMKIT_API void cl();

/// The same for sums, constants and whatever else is not a variable: `dPnt(a + b, 1)`.
GEOMKIT_API void dVec(const Vector3& origin, const Vector3& v, int colour);
GEOMKIT_API void dVecSc(const Vector3& origin, const Vector3& v, int colour, double scale);
GEOMKIT_API void dPnt(const Vector3& p, int colour);

}  // namespace geomKit
