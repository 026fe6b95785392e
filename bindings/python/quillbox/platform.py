"""What the object model takes from the platform and a script may hold or replace."""

from ._classes import names_of as _names_of
from ._quillbox import DeleteRegistryValue, ReadRegistryValue, SetMessageBox, SetWebRequest, WriteRegistryValue
from ._root import release as ReleaseRoot

_NAMES = _names_of(published=False)
globals().update(_NAMES)

__all__ = [
    "DeleteRegistryValue",
    "ReadRegistryValue",
    "ReleaseRoot",
    "SetMessageBox",
    "SetWebRequest",
    "WriteRegistryValue",
    *_NAMES,
]
