/// @file
/// Everything public. Each header named here also compiles alone.
#pragma once

// clang-format off
#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/Vector3.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/eigensystem.h"

#include "geomKit/queries/PolylineProjector.h"

#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/vect2.h"

#include "geomKit/debugDraw/gkFuncBinder.h"
// clang-format on
