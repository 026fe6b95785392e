"""The global object: its members are names of the module, on one instance made at first use."""

from ._classes import CLASS_INFOS, CLASSES
from ._members import function
from ._values import Result

_shared = None


def shared():
    global _shared
    if _shared is None:
        _shared = CLASSES["Root"]()
    return _shared


def release():
    """Drops the shared instance; the next use of one of its members makes a new one."""
    global _shared
    _shared = None


_MEMBERS = next((info.members for info, _ in CLASS_INFOS if info.name == "Root"), [])


def functions():
    return {member.name: function(member, shared) for member in _MEMBERS if member.kind == "method"}


def properties():
    return {member.name for member in _MEMBERS if member.kind != "method"}


def value(name):
    """A property of the global object. One that bears the name of a class makes an object of it when it is called."""
    made = CLASSES.get(name)
    if made is None:
        return getattr(shared(), name)
    return Result(lambda: getattr(shared(), name), made, made)
