"""Types of arrays that go in and come out."""

from typing import Any

import numpy as np
from numpy.typing import ArrayLike, NDArray

Numbers = ArrayLike
Float64 = NDArray[np.float64]
Float32 = NDArray[np.float32]
Int32 = NDArray[np.int32]
Bool = NDArray[np.bool_]
Array = NDArray[Any]
