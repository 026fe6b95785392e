"""Makes Python classes and enumerations of the described ones."""

import enum

from . import _quillbox
from ._members import attribute, event_attribute
from ._values import Boolean, ByRef, Error, Result


class Enumeration(enum.IntEnum):
    """A number of an enumeration. It may be called, so that a property can be read like a method."""

    def __call__(self):
        return self


class ForeignObject(_quillbox.Object):
    """An object of another library: its members are found by name."""

    __slots__ = ()

    def __getattr__(self, name):
        if name.startswith("__"):
            raise AttributeError(name)
        if _quillbox.late_has_method(self, name):
            return lambda *arguments: _quillbox.late_call(self, name, arguments)
        return _quillbox.late_get(self, name)

    def __setattr__(self, name, value):
        _quillbox.late_put(self, name, value)


_quillbox.use_types(Error, ByRef, Boolean, Result, ForeignObject)


def make_class(info, module):
    members = {member.name: member for member in info.members}
    attributes = {event.name: event_attribute(event) for event in info.events}
    attributes.update((name, attribute(member)) for name, member in members.items())
    attributes.update(__slots__=(), __doc__=info.help, __module__=module)
    if info.enumerable:
        attributes["__iter__"] = lambda self: info.items(self)
        attributes["__len__"] = _length(info, members.get("Count"))
    default = members.get(info.default)
    if default and default.params:
        attributes["__getitem__"] = lambda self, key: default.invoke(self, (key,), {})
        if default.kind == "property":
            attributes["__setitem__"] = lambda self, key, value: default.write(self, (key,), value)
    made = type(info.name, (_quillbox.Object,), attributes)
    info.bind(made)
    return made


def _length(info, count):
    if count:
        return lambda self: count.invoke(self, (), {})
    return lambda self: info.items(self).__length_hint__()


def make_enumeration(name, values, module):
    made = Enumeration(name, values, module=module)
    _quillbox.bind_enumeration(name, {member.value: member for member in made})
    return made


def _all_classes():
    return [(info, "quillbox" if info.published else "quillbox.platform") for info in _quillbox.classes()]


CLASS_INFOS = _all_classes()
CLASSES = {info.name: make_class(info, module) for info, module in CLASS_INFOS}
ENUMERATIONS = {
    name: (published, make_enumeration(name, values, "quillbox" if published else "quillbox.platform"))
    for name, published, values in _quillbox.enumerations()
}


def names_of(published):
    """The classes, enumerations and values of enumerations of the library, or of the platform."""
    names = {info.name: CLASSES[info.name] for info, _ in CLASS_INFOS if info.published == published}
    for name, (listed, enumeration) in ENUMERATIONS.items():
        if listed == published:
            names[name] = enumeration
            names.update(enumeration.__members__)
    return names
