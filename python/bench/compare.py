"""Time the package beside its peers and the library's own calls. Run by `./dev bench python`.

The arguments are the shared library of the library's own calls, and the families to time; all
without one. All answers are compared with those of the peers.
"""

from __future__ import annotations

import os
import sys

import meshFunctions
import spatial


def main() -> None:
    """Print the table."""
    library, *wanted = sys.argv[1:]
    processors = os.sched_getaffinity(0)
    families = {
        "meshFunctions": lambda: meshFunctions.rows(library),
        "library": lambda: spatial.library_calls(library),
        "polylines": spatial.polylines,
        "implicits": spatial.implicits,
        "workers": lambda: meshFunctions.shared_rows(processors),
    }
    print("| Case | geomkit | Beside | takes | ratio |")
    print("|---|---|---|---|---|")
    for family in wanted or families:
        os.sched_setaffinity(0, {min(processors)})
        families[family]()


main()
