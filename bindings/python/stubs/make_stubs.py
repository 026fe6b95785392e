"""Writes the type stubs of the package that is on the path: `make_stubs.py FOLDER`."""

import json
import sys
from pathlib import Path

from quillbox import _classes, _quillbox, _root

PLAIN = {
    "Boolean": "bool",
    "Long": "int",
    "Single": "float",
    "Double": "float",
    "String": "str",
    "Date": "datetime.datetime",
    "Variant": "Any",
    "Object": "Any",
    "": "None",
}
CALLABLE = {"Boolean": "_Boolean", "Long": "_Integer", "Single": "_Number", "Double": "_Number", "String": "_Text"}

HEAD = '''"""Generated with the module."""

import datetime
import enum
from typing import Any, Callable, Generic, Iterator, TypeAlias, TypeVar
'''

COMMON = '''
_T = TypeVar("_T")
_H = TypeVar("_H")
_E = TypeVar("_E", bound="_Enumeration")

class _Boolean(bool):  # type: ignore[misc]
    def __call__(self) -> bool: ...

class _Integer(int):
    def __call__(self) -> int: ...

class _Number(float):
    def __call__(self) -> float: ...

class _Text(str):
    def __call__(self) -> str: ...

class _Enumeration(enum.IntEnum):
    def __call__(self: _E) -> _E: ...

class _Connection:
    def disconnect(self) -> None: ...

class _Event(Generic[_H]):
    def connect(self, handler: _H) -> _Connection: ...

class _ParameterProperty(Generic[_T]):
    def __call__(self, *arguments: Any, **keywords: Any) -> _T: ...
    def __getitem__(self, key: Any) -> _T: ...
    def __setitem__(self, key: Any, value: _T) -> None: ...

class Error(Exception):
    """A failure of the library, with its number and description."""

    number: int
    description: str
    def __init__(self, number: int, description: str) -> None: ...

class ByRef:
    """An argument that is passed by reference: `value` holds what came back."""

    value: Any
    def __init__(self, value: Any = ...) -> None: ...

def CreateObject(name: str) -> Any: ...
def typelib() -> dict[str, Any]:
    """The published classes and enumerations of the library, in published order."""
'''

PORTS = '''
def SetMessageBox(handler: Callable[[str, str, MessageButtonsEnum, MessageIconEnum], int] | None) -> None: ...
def SetWebRequest(handler: Callable[[str], str] | None) -> None: ...
def ReadRegistryValue(Hive: int, Key: str, ValueName: str) -> str: ...
def WriteRegistryValue(Hive: int, Key: str, ValueName: str, Value: Any) -> None: ...
def DeleteRegistryValue(Hive: int, Key: str, ValueName: str) -> None: ...
def ReleaseRoot() -> None: ...
'''

SHARED = "from . import ByRef, _Boolean, _Enumeration, _Event, _Integer, _Number, _ParameterProperty, _Text\n"


class Stub:
    """The stub of one of the two modules. A class C goes by _C inside classes, where a member may be named C."""

    def __init__(self, published):
        self.published = published
        self.lines = []
        self.late = []  # classes that stand behind all others
        self.classes = [info for info, _ in _classes.CLASS_INFOS if info.published == published]
        self.published_names = {info.name: info.published for info, _ in _classes.CLASS_INFOS}

    def text(self):
        for name, (published, enumeration) in _classes.ENUMERATIONS.items():
            if published == self.published:
                self.enumeration(name, enumeration)
        for info in self.classes:
            self.klass(info)
        if self.published:
            self.root()
        foreign = [name for name, published in self.published_names.items() if published != self.published]
        module = "platform" if self.published else "quillbox"
        aliases = [f"_{name}: TypeAlias = {module}.{self.real_name(name)}" for name in foreign if self.uses(name)]
        return "\n".join([*aliases, "", *self.lines, *self.late]) + "\n"

    def uses(self, name):
        return any(f"_{name}" in line for line in self.lines + self.late)

    def real_name(self, name):
        return f"_{name}" if name in _root.properties() and self.published_names[name] else name

    def enumeration(self, name, enumeration):
        self.lines += [f"class {name}(_Enumeration):"]
        self.lines += [f"    {key} = {member.value}" for key, member in enumeration.__members__.items()]
        self.lines += [""] + [f"{key}: {name}" for key in enumeration.__members__] + [""]

    def type_of(self, name):
        """As a result; an object may be none, which a script is not made to ask for each time."""
        if name in self.published_names:
            return f"_{name} | Any"
        return PLAIN.get(name, name)

    def parameter(self, param):
        name = "Any" if param.byref else self.type_of(param.type)
        if param.type in _classes.ENUMERATIONS:
            name = "int"
        return f"{param.name}: {name}{' = ...' if param.optional else ''}"

    def parameters(self, member):
        optional, listed = False, []
        for param in member.params:
            text = self.parameter(param)
            if optional and not param.optional:
                text += " = ..."
            optional = optional or param.optional
            listed.append(text)
        return listed

    def klass(self, info):
        name = self.real_name(info.name)
        self.lines += [f"class {name}:", f"    {json.dumps(info.help, ensure_ascii=False)}", ""]
        if not info.creatable:
            self.lines += ["    def __init__(self, *, made_by_the_library: None) -> None: ..."]
        for member in info.members:
            self.member(info, member)
        for event in info.events:
            types = ", ".join("ByRef" if p.byref else self.type_of(p.type) for p in event.params)
            self.property(event.name, f"_Event[Callable[[{types}], object]]", "")
        self.collection(info)
        self.lines += [""]
        if name == info.name:
            self.lines += [f"_{name}: TypeAlias = {name}", ""]

    def member(self, info, member):
        result = self.type_of(member.type)
        doc = json.dumps(member.help, ensure_ascii=False)
        if member.kind == "method":
            arguments = ", ".join(["self", *self.parameters(member)])
            self.lines += [f"    def {member.name}({arguments}) -> {result}:", f"        {doc}"]
        elif any(not param.optional for param in member.params):
            self.property(member.name, f"_ParameterProperty[{result}]", doc)
        elif member.params and member.type in self.published_names:
            self.callable_object(info, member, doc)
        else:
            if member.kind == "property-read":
                result = CALLABLE.get(member.type, result)
            self.property(member.name, result, doc, member.kind != "property-read")

    def property(self, name, result, doc, writable=False):
        self.lines += ["    @property", f"    def {name}(self) -> {result}:", f"        {doc or '...'}"]
        if writable:
            self.lines += [f"    @{name}.setter", f"    def {name}(self, value: {result}) -> None: ..."]

    def callable_object(self, info, member, doc):
        made = f"_{info.name}_{member.name}"
        arguments = ", ".join(["self", *self.parameters(member)])
        self.property(member.name, made, doc)
        self.late += [f"class {made}(_{member.type}):", f"    def __call__({arguments}) -> _{member.type}: ...", ""]

    def collection(self, info):
        default = next((member for member in info.members if member.name == info.default), None)
        item = self.type_of(default.type) if default else "Any"
        if default and default.params:
            self.lines += [f"    def __getitem__(self, key: Any) -> {item}: ..."]
        if info.enumerable:
            self.lines += [f"    def __iter__(self) -> Iterator[{item}]: ...", "    def __len__(self) -> int: ..."]

    def root(self):
        members = [member for info in self.classes if info.name == "Root" for member in info.members]
        for member in members:
            doc = json.dumps(member.help, ensure_ascii=False)
            result = self.type_of(member.type)
            if member.kind == "method":
                self.lines += [f"def {member.name}({', '.join(self.parameters(member))}) -> {result}:", f"    {doc}"]
            elif self.published_names.get(member.name):
                made = f"_Shared{member.name}"
                self.lines += [f"class {made}(_{member.name}):"]
                self.lines += [f"    def __call__(self) -> _{member.name}: ...", "", f"{member.name}: {made}"]
            else:
                self.lines += [f"{member.name}: {CALLABLE.get(member.type, result)}"]


def write(folder):
    for published, name in ((True, "__init__.pyi"), (False, "platform.pyi")):
        before = ["from . import platform as platform", COMMON] if published else ["import quillbox", SHARED, PORTS]
        (folder / name).write_text("\n".join([HEAD, *before, Stub(published).text()]), encoding="utf-8")
    (folder / "py.typed").write_text("", encoding="utf-8")


if __name__ == "__main__":
    write(Path(sys.argv[1]))
