"""Transforms and matrices, beside SciPy's rotations and NumPy's matrices."""

from __future__ import annotations

import copy
import pickle

import geomkit
import numpy as np
import pytest
from hypothesis import given, settings
from hypothesis.extra.numpy import mutually_broadcastable_shapes
from hypothesis.strategies import sampled_from
from scipy.linalg import fractional_matrix_power, polar
from scipy.spatial.transform import Rotation, Slerp

RANDOM = np.random.default_rng(7)
ROTATIONS = Rotation.random(40, random_state=8)
TRANSFORMS = geomkit.Transform(
    rotation=ROTATIONS.as_matrix(),
    translation=RANDOM.normal(size=(40, 3)),
    scale=RANDOM.choice([-1, 1], 40) * RANDOM.uniform(0.1, 9, 40),
)
BONES = geomkit.BoneTransform(
    rest=RANDOM.normal(size=(40, 2, 3)),
    pose=RANDOM.normal(size=(40, 2, 3)),
    twist=RANDOM.uniform(-2, 2, 40),
)
BOTH = [
    pytest.param(TRANSFORMS, id="Transform"),
    pytest.param(BONES, id="BoneTransform"),
]


def affine(matrices: np.ndarray, points: np.ndarray) -> np.ndarray:
    linear = np.einsum("...ij,...j->...i", matrices[..., :3, :3], points)
    return linear + matrices[..., :3, 3]


def close(a: np.ndarray, b: np.ndarray, atol: float = 1e-9) -> bool:
    return np.shape(a) == np.shape(b) and np.allclose(a, b, rtol=0, atol=atol)


def test_turns_are_those_of_scipy() -> None:
    vectors = ROTATIONS.as_rotvec()
    angles = np.linalg.norm(vectors, axis=-1)
    made = geomkit.Transform(axis=5 * vectors, angle=angles)
    assert close(made.rotation, ROTATIONS.as_matrix())
    axis, angle = geomkit.rotation_axis_angle(ROTATIONS.as_matrix())
    assert close(Rotation.from_rotvec(axis * angle[:, None]).as_matrix(), made.rotation)
    start, end = RANDOM.normal(size=(2, 40, 3))
    wanted = end / np.linalg.norm(end, axis=-1, keepdims=True)
    units = start / np.linalg.norm(start, axis=-1, keepdims=True)
    assert close(geomkit.Transform.rotate(start, end) @ units, wanted)
    turns = geomkit.rotation_between(start, end)
    assert close(np.einsum("...ij,...j", turns, units), wanted)


@pytest.mark.parametrize("maps", BOTH)
def test_maps_are_their_matrices(maps) -> None:
    points = RANDOM.normal(size=(40, 3))
    other = maps[::-1]
    assert close(maps @ points, affine(maps.matrix, points))
    flat = points @ maps[3].matrix[:3, :3].T
    assert close(maps[3].transform_directions(points), flat)
    assert close((maps @ other).matrix, maps.matrix @ other.matrix)
    assert close(maps.inverse().matrix @ maps.matrix, np.tile(np.eye(4), (40, 1, 1)))
    assert close(geomkit.inverse(maps.matrix), np.linalg.inv(maps.matrix), 1e-6)


def test_mirrors_reflect() -> None:
    point, normal = RANDOM.normal(size=(2, 3))
    points = RANDOM.normal(size=(9, 3))
    unit = normal / np.linalg.norm(normal)
    wanted = points - 2 * ((points - point) @ unit)[:, None] * unit
    assert close(geomkit.Transform.reflection(point, normal) @ points, wanted)


def test_bones_carry_their_ends_and_keep_widths() -> None:
    rest, pose = RANDOM.normal(size=(2, 40, 2, 3))
    bones = geomkit.BoneTransform(rest=rest, pose=pose, twist=0.7)
    assert close(bones[:, None] @ rest, pose)
    along = (rest[:, 1] - rest[:, 0]) / np.linalg.norm(
        rest[:, 1] - rest[:, 0], axis=-1
    )[:, None]
    across = np.cross(along, RANDOM.normal(size=(40, 3)))
    across /= np.linalg.norm(across, axis=-1)[:, None]
    assert close(
        np.linalg.norm(bones.transform_directions(across), axis=-1), np.ones(40)
    )


def test_rigid_motions_take_points_and_directions() -> None:
    p, q, d, e = RANDOM.normal(size=(4, 40, 3))
    d, e = (v / np.linalg.norm(v, axis=-1, keepdims=True) for v in (d, e))
    motions = geomkit.rigid_matrix(p, d, q, e)
    assert close(affine(motions, p), q)
    assert close(affine(motions, p + d), q + e)


def test_blends_turn_about_one_axis() -> None:
    t = np.linspace(0, 1, 11)
    a = geomkit.Transform(ROTATIONS[0].as_matrix(), [1, 2, 3], 0.5)
    b = geomkit.Transform(ROTATIONS[1].as_matrix(), [5, 2, 1], 8)
    path = geomkit.interpolate(a, b, t)
    slerp = Slerp([0, 1], ROTATIONS[:2])(t).as_matrix()
    assert close(path.rotation, slerp)
    assert close(path.scale, 0.5 ** (1 - t) * 8**t)
    assert close(path.translation, np.outer(1 - t, [1, 2, 3]) + np.outer(t, [5, 2, 1]))
    assert close(geomkit.interpolate(a.matrix, b.matrix, t), path.matrix)


def test_blends_of_bones_are_powers_of_their_polar_parts() -> None:
    stretch = np.diag([1.0, 2.0, 3.0])
    bone = geomkit.BoneTransform(np.pad(ROTATIONS[2].as_matrix() @ stretch, (0, 1)))
    turn, symmetric = polar(bone.linear)
    for t in (0.25, 0.5, 0.75):
        wanted = fractional_matrix_power(turn, t) @ fractional_matrix_power(
            symmetric, t
        )
        blend = geomkit.interpolate(geomkit.BoneTransform(), bone, t)
        assert close(blend.linear, wanted.real, 1e-7)


@pytest.mark.parametrize("maps", BOTH)
def test_arrays_have_the_bits_of_single_calls(maps) -> None:
    points = RANDOM.normal(size=(4000, 3))
    t = RANDOM.uniform(-0.5, 1.5, 4000)
    one, other = maps[0], maps[1]
    images = maps[:, None] @ points[:50]
    assert np.array_equal(images, [m @ points[:50] for m in maps])
    assert np.array_equal(images[0], [one @ p for p in points[:50]])
    pairs = maps[:, None] @ maps[:3]
    assert all(pairs[i, j] == maps[i] @ maps[j] for i in (0, 39) for j in range(3))
    path = geomkit.interpolate(one, other, t)
    singles = [geomkit.interpolate(one, other, s) for s in t[:100]]
    assert all(a == b for a, b in zip(path, singles))
    assert geomkit.interpolate(maps[:1], other, t) == path
    for workers in (2, 3, -1):
        assert type(one).interpolate(one, other, t, workers) == path
        many = maps[:, None].transform_points(points, workers)
        assert many.tobytes() == (maps[:, None] @ points).tobytes()


@settings(database=None, deadline=None)
@given(
    mutually_broadcastable_shapes(num_shapes=2, max_dims=3, min_side=0, max_side=4),
    sampled_from([np.float64, np.float32, np.int16, ">f8"]),
)
def test_leading_axes_broadcast_as_those_of_numpy(shapes, dtype) -> None:
    own, of_points = shapes.input_shapes
    which = np.arange(np.prod(own, dtype=int)).reshape(own) % 40
    points = (
        np.arange(np.prod(of_points, dtype=int) * 6)
        .reshape(*of_points, 6)
        .astype(dtype)
    )
    images = TRANSFORMS[which] @ points[..., ::2]
    assert images.shape == (*shapes.result_shape, 3)
    which = np.broadcast_to(which, shapes.result_shape)
    alike = np.broadcast_to(points[..., ::2], images.shape)
    for i in np.ndindex(*shapes.result_shape):
        assert np.array_equal(images[i], TRANSFORMS[int(which[i])] @ alike[i])


@pytest.mark.parametrize("maps", BOTH)
def test_copies_are_equal_and_repr_is_exact(maps, decimal_comma: None) -> None:
    copies = [
        pickle.loads(pickle.dumps(maps, p)) for p in range(pickle.HIGHEST_PROTOCOL + 1)
    ]
    for other in [*copies, copy.copy(maps), copy.deepcopy(maps)]:
        assert other.matrix.tobytes() == maps.matrix.tobytes()
        assert other == maps and hash(other) == hash(maps)
        assert not other.translation.flags.writeable
    assert maps != maps[::-1] and maps[0] != maps
    assert repr(maps) == f"{type(maps).__name__}(shape (40,))"
    names = {name: getattr(geomkit, name) for name in ("Transform", "BoneTransform")}
    assert eval(repr(maps[5]), names) == maps[5]


NAN = float("nan")


def test_degenerate_transforms() -> None:
    nowhere = geomkit.Transform(scale=NAN)
    assert nowhere != nowhere
    flat = geomkit.BoneTransform(np.diag([1.0, 1.0, 0.0, 1.0]))
    assert not flat.inverse().matrix[:3].any()
    assert np.array_equal(geomkit.inverse(np.zeros((4, 4))), np.eye(4))
    assert not geomkit.inverse(np.full((3, 3), 1e-9)).any()
    ends = geomkit.Transform(), geomkit.Transform(scale=2.0)
    assert geomkit.interpolate(*ends, NAN) == ends[0]
    assert geomkit.Transform(axis=[0, 0, 0], angle=1) == geomkit.Transform(
        axis=[0, 0, 1], angle=1
    )
    assert (TRANSFORMS[0] @ np.zeros((0, 4, 3))).shape == (0, 4, 3)


@pytest.mark.parametrize(
    ("call", "error", "message"),
    [
        (
            lambda: geomkit.Transform(axis=[0, 0, 1]),
            TypeError,
            "axis and angle: one is missing",
        ),
        (
            lambda: geomkit.Transform(rotation=np.eye(4)),
            ValueError,
            r"rotation: shape \(4, 4\), wanted \(\.\.\., 3, 3\)",
        ),
        (
            lambda: geomkit.Transform(translation=np.zeros((2, 3)), scale=[1, 2, 3]),
            ValueError,
            r"scale: leading shape \(3,\), wanted one that goes with \(2,\)",
        ),
        (
            lambda: TRANSFORMS @ np.zeros((3, 3)),
            ValueError,
            r"points: leading shape \(3,\), wanted one that goes with \(40,\)",
        ),
        (lambda: TRANSFORMS @ BONES, TypeError, "unsupported operand"),
        (lambda: np.eye(3) @ TRANSFORMS[0], TypeError, "unsupported operand"),
        (
            lambda: geomkit.interpolate(BONES[0], TRANSFORMS[0], 0),
            TypeError,
            "b: Transform, wanted",
        ),
        (
            lambda: geomkit.BoneTransform(twist=1.0),
            TypeError,
            "twist: given without rest and pose",
        ),
        (lambda: TRANSFORMS[0] @ ["a", "b", "c"], TypeError, "points: dtype <U1"),
        (lambda: len(TRANSFORMS[0]), TypeError, "a single Transform has no length"),
        (
            lambda: BONES.transform_points([0, 0, 0], workers=0),
            ValueError,
            "workers: 0",
        ),
    ],
)
def test_what_is_wrong_is_named(call, error: type, message: str) -> None:
    with pytest.raises(error, match=message):
        call()
