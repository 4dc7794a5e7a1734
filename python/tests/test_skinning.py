"""Skinning, beside sums of matrices in NumPy."""

from __future__ import annotations

import geomkit
import numpy as np
import pytest

COUNT = 5000
RANDOM = np.random.default_rng(11)
POSITIONS = RANDOM.normal(size=(COUNT, 3))
NORMALS = RANDOM.normal(size=(COUNT, 3))
BONES = RANDOM.integers(0, 30, (COUNT, 4))
WEIGHTS = RANDOM.dirichlet(np.ones(4), COUNT)
SKELETON = geomkit.BoneTransform(
    rest=RANDOM.normal(size=(30, 2, 3)), pose=RANDOM.normal(size=(30, 2, 3)), twist=0.3
)


def blended() -> np.ndarray:
    return np.einsum("nk,nkij->nij", WEIGHTS, SKELETON.matrix[BONES])


def test_same_as_blended_matrices() -> None:
    matrices = blended()
    moved = np.einsum("nij,nj->ni", matrices[:, :3, :3], POSITIONS) + matrices[:, :3, 3]
    assert np.allclose(
        geomkit.skin(POSITIONS, BONES, WEIGHTS, SKELETON), moved, rtol=0, atol=1e-9
    )
    # Normals go by the inverse transposed, but for the sign of a mirror.
    linear = matrices[:, :3, :3]
    usable = np.abs(np.linalg.det(linear)) > 1e-3
    cofactors = np.linalg.det(linear)[:, None, None] * np.linalg.inv(linear).transpose(
        0, 2, 1
    )
    wanted = np.einsum("nij,nj->ni", cofactors, NORMALS)
    wanted /= np.linalg.norm(wanted, axis=-1, keepdims=True)
    skinned = geomkit.skin(POSITIONS, BONES, WEIGHTS, SKELETON, NORMALS)
    assert usable.mean() > 0.9
    assert np.allclose(skinned.normals[usable], wanted[usable], rtol=0, atol=1e-7)


@pytest.mark.parametrize("workers", [1, 2, 3, -1])
@pytest.mark.parametrize("bone_type", [np.uint8, np.int32, np.uint64])
def test_workers_and_types_do_not_change_a_bit(workers: int, bone_type: type) -> None:
    one = geomkit.skin(POSITIONS, BONES, WEIGHTS, SKELETON, NORMALS)
    bones = np.asfortranarray(BONES.astype(bone_type))
    many = geomkit.skin(POSITIONS, bones, WEIGHTS, list(SKELETON), NORMALS, workers)
    parts = [slice(i, i + 1) for i in range(100)]
    alone = [
        geomkit.skin(POSITIONS[p], BONES[p], WEIGHTS[p], SKELETON.matrix, NORMALS[p])
        for p in parts
    ]
    for name in geomkit.Skinned._fields:
        answers = getattr(many, name)
        assert answers.tobytes() == getattr(one, name).tobytes(), name
        singles = np.concatenate([getattr(answer, name) for answer in alone])
        assert answers[:100].tobytes() == singles.tobytes(), name


def test_weights_of_zero_hide_any_bone() -> None:
    bones, weights = BONES.copy(), WEIGHTS.copy()
    bones[:, 2:] = [-1, 2**40]
    weights[:, 2:] = [0.0, -0.0]
    padded = geomkit.skin(POSITIONS, bones, weights, SKELETON)
    short = geomkit.skin(POSITIONS, bones[:, :2], weights[:, :2], SKELETON)
    assert padded.tobytes() == short.tobytes()
    nothing = np.zeros((COUNT, 0))
    still = geomkit.skin(POSITIONS, nothing.astype(int), nothing, [], NORMALS)
    assert still.positions.tobytes() == POSITIONS.tobytes()
    units = NORMALS / np.linalg.norm(NORMALS, axis=-1, keepdims=True)
    assert np.allclose(still.normals, units, rtol=0, atol=1e-12)


@pytest.mark.parametrize(
    ("change", "error", "message"),
    [
        ({"bones": [[0, 1], [2, 3]]}, ValueError, "bones: vertex 1 has bone 3 of 3"),
        ({"bones": [[0, 1], [-1, 1]]}, ValueError, "bones: vertex 1 has bone -1 of 3"),
        (
            {"bones": [[2**62, 1], [0, -9]]},
            ValueError,
            f"bones: vertex 0 has bone {2**62} of 3",
        ),
        (
            {"bones": [[0.0, 1.0], [1.0, 2.0]]},
            TypeError,
            "bones: dtype float64, wanted integers",
        ),
        ({"bones": [0, 1]}, ValueError, r"bones: shape \(2,\), wanted \(n, k\)"),
        (
            {"weights": [[1.0], [1.0]]},
            ValueError,
            "weights: 1 a vertex, wanted as many as bones, 2",
        ),
        (
            {"weights": [[1, 1]]},
            ValueError,
            "weights: length 1, wanted that of positions, 2",
        ),
        (
            {"normals": [[1, 1, 1]]},
            ValueError,
            "normals: length 1, wanted that of positions, 2",
        ),
        (
            {"transforms": SKELETON[0]},
            ValueError,
            r"transforms: shape \(\), wanted \(n,\)",
        ),
        (
            {"transforms": np.eye(3)},
            ValueError,
            r"transforms: shape \(3, 3\), wanted \(\.\.\., 4, 4\)",
        ),
    ],
)
def test_what_is_wrong_is_named(change: dict, error: type, message: str) -> None:
    good = {
        "positions": POSITIONS[:2],
        "bones": [[0, 1], [2, 1]],
        "weights": [[0.5, 0.5], [0.25, 0.75]],
        "transforms": SKELETON[:3],
    }
    with pytest.raises(error, match=message):
        geomkit.skin(**{**good, **change})
