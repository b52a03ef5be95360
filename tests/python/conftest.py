from __future__ import annotations

import boards
import pytest
import velk


@pytest.fixture(scope="session")
def demo() -> velk.System:
    return boards.demo().system


@pytest.fixture(scope="session")
def large() -> velk.System:
    return boards.large().system
