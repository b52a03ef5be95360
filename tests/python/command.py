"""What the command answers."""

from __future__ import annotations

import csv
import json
import os
import subprocess
from typing import Any, Dict, List


def text_of(*arguments: object) -> str:
    """The standard output, byte for byte. That there is no route, no plan or a finding is status 1."""
    done = subprocess.run([os.environ["VELK_COMMAND"], *map(str, arguments)], capture_output=True, check=False)
    assert done.returncode in (0, 1), done.stderr.decode()
    return done.stdout.decode()


def json_of(*arguments: object) -> Dict[str, Any]:
    return json.loads(text_of(*arguments, "--format", "json"))


def rows_of(*arguments: object) -> List[Dict[str, str]]:
    return list(csv.DictReader(text_of(*arguments, "--format", "csv").splitlines()))
