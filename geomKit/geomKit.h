/// @file
/// Everything public, directly or through another header. Each header also compiles alone.
#pragma once

// clang-format off
#include "geomKit/vAlgebra/Tolerances.h"
#include "geomKit/vAlgebra/Vector3.h"
#include "geomKit/vAlgebra/UVector3.h"
#include "geomKit/vAlgebra/vectorUtils.h"
#include "geomKit/vAlgebra/centroid.h"
#include "geomKit/vAlgebra/exactHash.h"
#include "geomKit/vAlgebra/Matrix3.h"
#include "geomKit/vAlgebra/eigensystem.h"
#include "geomKit/vAlgebra/VectorS.h"

#include "geomKit/transforms/Matrix.h"
#include "geomKit/transforms/Matrixf.h"
#include "geomKit/transforms/Transform.h"
#include "geomKit/transforms/BoneTransform.h"
#include "geomKit/transforms/BaseDisplayData.h"
#include "geomKit/transforms/FlatInfluences.h"
#include "geomKit/transforms/BoneTransformVector.h"

#include "geomKit/queries/LineLineInt.h"
#include "geomKit/queries/LinePlaneInt.h"
#include "geomKit/queries/PlanePlaneInt.h"
#include "geomKit/queries/LineTriangleInt.h"
#include "geomKit/queries/LineSphereInt.h"
#include "geomKit/queries/TriangleWeightsFinder.h"
#include "geomKit/queries/Bbox.h"
#include "geomKit/queries/segments2D.h"
#include "geomKit/queries/SmoothWeight.h"
#include "geomKit/queries/polynomialRoots.h"
#include "geomKit/queries/pointFitting.h"
#include "geomKit/queries/PolylineProjector.h"
#include "geomKit/queries/ProximityTester.h"

#include "geomKit/implicits/Implicit.h"
#include "geomKit/implicits/ImplicitCheck.h"
#include "geomKit/implicits/ImplEllipsoid.h"

#include "geomKit/meshFunc2d/vect2.h"
#include "geomKit/meshFunc2d/vect2S.h"
#include "geomKit/meshFunc2d/MeshFunction2D.h"
#include "geomKit/meshFunc2d/MeshFunction2DCheck.h"

#include "geomKit/debugDraw/gkFuncBinder.h"

#include "geomKit/tags/loadDocument.h"
#include "geomKit/tags/saveDocument.h"
#include "geomKit/tags/Serializable.h"
#include "geomKit/tags/SerializableFactory.h"
#include "geomKit/tags/ClassDesc.h"
#include "geomKit/tags/CompositeField.h"
#include "geomKit/tags/MemberField.h"
#include "geomKit/tags/MemberAccessor.h"
#include "geomKit/tags/SimpleTypeHandler.h"
#include "geomKit/tags/SequenceTypeHandler.h"
#include "geomKit/tags/CompositeTypeHandler.h"
#include "geomKit/tags/getSingularName.h"
// clang-format on
