"""The description of the library as plain data."""

from . import _quillbox


def typelib():
    """The published classes and enumerations of the library, in published order."""
    enumerations = [
        {"name": name, "values": [{"name": key, "value": number} for key, number in values]}
        for name, published, values in _quillbox.enumerations()
        if published
    ]
    classes = [_class(info) for info in _quillbox.classes() if info.published]
    return {"library": _quillbox.library, "classes": classes, "enumerations": enumerations}


def _class(info):
    return {
        "name": info.name,
        "creatable": info.creatable,
        "help": info.help,
        "default": info.default,
        "members": [_member(member) for member in info.members if member.listed],
        "events": [{"name": e.name, "id": e.id, "params": [_param(p) for p in e.params]} for e in info.events],
    }


def _member(member):
    return {
        "name": member.name,
        "kind": member.kind,
        "type": member.type,
        "params": [_param(param) for param in member.params],
        "help": member.help,
    }


def _param(param):
    return {
        "name": param.name,
        "type": param.type,
        "byref": param.byref,
        "optional": param.optional,
        "default": param.default,
    }
