"""Geometry and numerical routines with documented, bit-exact answers, over NumPy arrays.

Arrays of points have any leading shape: (..., 2) in the plane, (..., 3) in space. Contiguous arrays
of float64 are not copied. Wrong shapes raise ``ValueError`` and wrong types ``TypeError``, and both
name the argument.
"""

from ._bbox import (
    Bbox,
    BoxBounds,
)
from ._documents import (
    DocumentError,
    DocumentWarning,
    dumps,
    load,
    loads,
    save,
)
from ._drawing import (
    draw_point,
    draw_vector,
    register_drawing,
)
from ._implicits import (
    ImplEllipsoid,
    Implicit,
)
from ._matrices import (
    AxisAngle,
    inverse,
    rigid_matrix,
    rotation_axis_angle,
    rotation_between,
    rotation_matrix,
)
from ._mesh import (
    Evaluation,
    Field2D,
    MeshCheck,
    MeshFault,
    MeshFunction2D,
    MeshWarning,
)
from ._numerics import (
    Eigensystem,
    Fit,
    Roots,
    best_fit_line,
    best_fit_plane,
    eigensystem,
    solve_cubic,
    solve_quadratic,
)
from ._polyline import (
    PolylineProjection,
    PolylineProjector,
    ProximityTester,
)
from ._queries import (
    line_line,
    line_plane,
    line_sphere,
    line_triangle,
    plane_plane,
    triangle_weights,
)
from ._query_answers import (
    LineLineInt,
    LineLineStatus,
    LinePlaneInt,
    LinePlaneStatus,
    LineSphereInt,
    LineTriangleInt,
    LineTriangleStatus,
    PlanePlaneInt,
    PlanePlaneStatus,
)
from ._segments import (
    ClippedSegment,
    seg_clip_half_plane,
    seg_clip_rect,
    seg_intersect_rect,
    segs_intersect,
)
from ._skinning import (
    Skinned,
    skin,
)
from ._transforms import (
    BoneTransform,
    Transform,
    interpolate,
)

__version__ = "0.1.0"
__all__ = [
    "AxisAngle",
    "Bbox",
    "BoneTransform",
    "BoxBounds",
    "ClippedSegment",
    "DocumentError",
    "DocumentWarning",
    "Eigensystem",
    "Evaluation",
    "Field2D",
    "Fit",
    "ImplEllipsoid",
    "Implicit",
    "LineLineInt",
    "LineLineStatus",
    "LinePlaneInt",
    "LinePlaneStatus",
    "LineSphereInt",
    "LineTriangleInt",
    "LineTriangleStatus",
    "MeshCheck",
    "MeshFault",
    "MeshFunction2D",
    "MeshWarning",
    "PlanePlaneInt",
    "PlanePlaneStatus",
    "PolylineProjection",
    "PolylineProjector",
    "ProximityTester",
    "Roots",
    "Skinned",
    "Transform",
    "best_fit_line",
    "best_fit_plane",
    "draw_point",
    "draw_vector",
    "dumps",
    "eigensystem",
    "interpolate",
    "inverse",
    "line_line",
    "line_plane",
    "line_sphere",
    "line_triangle",
    "load",
    "loads",
    "plane_plane",
    "register_drawing",
    "rigid_matrix",
    "rotation_axis_angle",
    "rotation_between",
    "rotation_matrix",
    "save",
    "seg_clip_half_plane",
    "seg_clip_rect",
    "seg_intersect_rect",
    "segs_intersect",
    "skin",
    "solve_cubic",
    "solve_quadratic",
    "triangle_weights",
]
