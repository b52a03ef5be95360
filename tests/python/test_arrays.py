"""A coverage matrix for numpy and pandas, where they are there."""

from __future__ import annotations

import pytest
import velk


@pytest.fixture
def matrix() -> velk.Coverage:
    sources = velk.Pin("U1#1", "1", "HI"), velk.Pin("U1#1", "2", "")
    duts = velk.Pin("J1#2", "1", "A"), velk.Pin("J1#2", "2", "B"), velk.Pin("J2#2", "1", "A")
    return velk.Coverage(sources, duts, ((0, None, 2), (None, None, 1)))


def test_numpy(matrix: velk.Coverage) -> None:
    numpy = pytest.importorskip("numpy")
    array = numpy.array(matrix)
    assert array.shape == (2, 3) and array.dtype == float
    numpy.testing.assert_array_equal(array, [[0, numpy.nan, 2], [numpy.nan, numpy.nan, 1]])
    assert numpy.array(matrix, dtype="float32").dtype == "float32"
    assert numpy.array(velk.Coverage((), matrix.duts, ())).shape == (0, 3)


def test_pandas(matrix: velk.Coverage) -> None:
    pandas = pytest.importorskip("pandas")
    frame = matrix.to_pandas()
    assert list(frame.index) == ["U1#1.HI", "U1#1.2"] and list(frame.columns) == ["J1#2.A", "J1#2.B", "J2#2.A"]
    assert frame.loc["U1#1.2", "J2#2.A"] == 1 and frame.loc["U1#1.HI", "J1#2.A"] == 0
    assert frame.isna().sum().sum() == 3 and str(frame.dtypes.iloc[0]) == "Int64"
    assert velk.Coverage((), (), ()).to_pandas().empty
