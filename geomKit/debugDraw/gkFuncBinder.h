/// @file
/// The debug drawing hooks: callbacks by which a host shows intermediate geometry.
#pragma once

#include <vector>

#include "geomKit/export.h"
#include "geomKit/vAlgebra/Vector3.h"

/// The process-wide registry of four drawing callbacks, all null when the library is loaded. A draw
/// call whose callback is null does nothing.
///
/// Colours, sizes and styles are passed through untouched: they mean what the host's callback says.
/// The slots are plain pointers without a lock: a host registers once, before anything is drawn;
/// after that any number of threads may draw, as far as the callbacks allow it.
class gkFuncBinder {
public:
    using DrawVector = void (*)(const Vector3& origin, const Vector3& vector, int colour,
                                double scale);
    using DrawPoint = void (*)(const Vector3& point, int colour);
    using DrawPoints = void (*)(const std::vector<Vector3>& points, int colour, int style);
    using Clear = void (*)();

    /// The one instance. Never null.
    GEOMKIT_API static gkFuncBinder* iGet();
    /// Sets all four slots to null.
    GEOMKIT_API void iReset();

    /// Each replaces what its slot held; null unregisters.
    GEOMKIT_API static void registerDrawVector(DrawVector fn);
    GEOMKIT_API static void registerDrawPoint(DrawPoint fn);
    GEOMKIT_API static void registerDrawPoints(DrawPoints fn);
    GEOMKIT_API static void registerClear(Clear fn);

    GEOMKIT_API static void drawVector(const Vector3& a, const Vector3& b, int colour,
                                       double scale);
    GEOMKIT_API static void drawPoint(const Vector3& p, int colour);
    /// Draws only when the draw-POINT callback is registered too: a host that registers only the
    /// draw-points callback gets no output. With a draw-point but no draw-points callback nothing
    /// is drawn either.
    GEOMKIT_API static void drawPoints(const std::vector<Vector3>& pts, int colour, int style);
    GEOMKIT_API static void clear();

private:
    DrawVector drawVector_ = nullptr;
    DrawPoint drawPoint_ = nullptr;
    DrawPoints drawPoints_ = nullptr;
    Clear clear_ = nullptr;
};

/// Short names for quick insertion into code under test. Each does nothing when its callback is
/// null. `dVec` draws with scale 0.1.
GEOMKIT_API void dVec(Vector3& origin, Vector3& v, int colour);
GEOMKIT_API void dVecSc(Vector3& origin, Vector3& v, int colour, double scale);
GEOMKIT_API void dPnt(Vector3& p, int colour);
GEOMKIT_API void cl();
