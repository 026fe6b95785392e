"""What the object model takes from the platform and a script may hold or replace."""

from . import _quillbox
from ._classes import names_of as _names_of
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


def SetMessageBox(handler):
    """Calls handler(Text, Title, Buttons, Icon) for every message box; it returns the button pressed. None puts the
    default back."""
    _quillbox.set_message_box(handler)


def SetWebRequest(handler):
    """Calls handler(url) for every fetch; it returns the error text, empty for success. None puts the real one back."""
    _quillbox.set_web_request(handler)


def ReadRegistryValue(Hive, Key, ValueName):
    """A value of the settings store as text; empty for an absent one."""
    return _quillbox.read_registry_value(Hive, Key, ValueName)


def WriteRegistryValue(Hive, Key, ValueName, Value):
    """Writes a value of the settings store."""
    _quillbox.write_registry_value(Hive, Key, ValueName, Value)


def DeleteRegistryValue(Hive, Key, ValueName):
    """Deletes a value of the settings store; one that is not there is fine."""
    _quillbox.delete_registry_value(Hive, Key, ValueName)
