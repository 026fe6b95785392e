"""Quillbox Objects: help projects, read, edited, checked and built by script.

Everything here is made from the library's own description: `help(quillbox.Topic)` tells the members of a class, and
`quillbox.typelib()` gives the whole description as data.
"""

from . import _quillbox, _root, platform
from ._classes import names_of as _names_of
from ._typelib import typelib
from ._values import ByRef, Error


def CreateObject(name):
    """Makes an object of a class by its name, such as "Quillbox.Topic"; of another library too, where it is registered."""
    return _quillbox.create(name)


for _shown in (ByRef, Error, typelib):
    _shown.__module__ = __name__

_PROPERTIES = _root.properties()
# A property of the global object goes before a class of the same name; see __getattr__.
_NAMES = {name: made for name, made in _names_of(published=True).items() if name not in _PROPERTIES}
_NAMES.update(_root.functions())
globals().update(_NAMES)

__all__ = ["ByRef", "CreateObject", "Error", "platform", "typelib", *_NAMES]


def __getattr__(name):
    if name in _PROPERTIES:
        return _root.value(name)
    raise AttributeError(f"module 'quillbox' has no attribute '{name}'")


def __dir__():
    return sorted({*globals(), *_PROPERTIES})
