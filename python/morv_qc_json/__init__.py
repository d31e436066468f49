"""Quantum-chemistry result documents ("morv.qc.document.v2") between Python and JSON text.

The records, lists, enumerations and the codec live in the compiled extension
`morv_qc_json._core`; this package re-exports them, and leaves room for pure
Python submodules that are imported only when used.
"""

from ._core import *  # noqa: F401,F403
from ._core import __version__ as __version__
from ._core import schema_id as schema_id
