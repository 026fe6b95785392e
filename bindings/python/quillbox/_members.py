"""Makes Python attributes of described members."""

import inspect

from ._values import Result, callable_value


class ParameterProperty:
    """A property with parameters, of one object: `x.P("a")`, `x.P["a"]`, `x.P["a"] = value`."""

    __slots__ = ("_object", "_member")
    __iter__ = None

    def __init__(self, target, member):
        self._object = target
        self._member = member

    def __call__(self, *arguments, **keywords):
        return self._member.invoke(self._object, arguments, keywords)

    def __getitem__(self, key):
        return self._member.invoke(self._object, _tuple(key), {})

    def __setitem__(self, key, value):
        _write(self._member, self._object, _tuple(key), value)

    def __repr__(self):
        return f"<property {signature_text(self._member)} of {self._object!r}>"


class Event:
    """An event of one object."""

    __slots__ = ("_object", "_event")

    def __init__(self, target, event):
        self._object = target
        self._event = event

    def connect(self, handler):
        """Calls `handler` with the event's arguments whenever it is raised; by-reference ones come as ByRef.

        Gives the connection, whose disconnect() ends it. A handler stays connected as long as the object lives. One
        that refers to the object it is connected to goes with it; one that refers to the object's owner (a topic's
        handler that uses the project) keeps the owner alive until it is disconnected.
        """
        return Connection(self._event.connect(self._object, handler))

    def __repr__(self):
        return f"<event {self._event.name} of {self._object!r}>"


class Connection:
    """A handler on an event."""

    __slots__ = ("disconnect",)

    def __init__(self, disconnect):
        self.disconnect = disconnect


def _tuple(key):
    return key if type(key) is tuple else (key,)


def _write(member, target, arguments, value):
    if member.kind == "property-read":
        raise AttributeError(f"property '{member.name}' cannot be written")
    member.write(target, arguments, value)


def signature(member, leading=()):
    """How a member is called."""
    parameters = [inspect.Parameter(name, inspect.Parameter.POSITIONAL_ONLY) for name in leading]
    optional = False
    for param in member.params:
        optional = optional or param.optional
        parameters.append(
            inspect.Parameter(
                param.name,
                inspect.Parameter.POSITIONAL_OR_KEYWORD,
                default=param.default if optional else inspect.Parameter.empty,
                annotation=f"ByRef[{param.type}]" if param.byref else param.type,
            )
        )
    result = member.type or None
    return inspect.Signature(parameters, return_annotation=result)


def signature_text(member):
    return f"{member.name}{signature(member)}"


def method(member):
    invoke = member.invoke

    def call(self, *arguments, **keywords):
        return invoke(self, arguments, keywords)

    return _described(call, member, ("self",))


def function(member, target):
    """A method of the object that `target` gives, as a function."""
    invoke = member.invoke

    def call(*arguments, **keywords):
        return invoke(target(), arguments, keywords)

    return _described(call, member)


def _described(call, member, leading=()):
    call.__name__ = call.__qualname__ = member.name
    call.__doc__ = member.help
    call.__signature__ = signature(member, leading)
    return call


def _reader(member):
    invoke = member.invoke
    params = member.params
    if not params and member.kind == "property-read":
        return lambda self: callable_value(invoke(self, (), {}))
    if not params:
        return lambda self: invoke(self, (), {})
    if all(param.optional for param in params):
        return lambda self: _result(self, member, invoke(self, (), {}))
    return lambda self: ParameterProperty(self, member)


def _result(target, member, value):
    plain = callable_value(value)
    if value is None or plain is not value:
        return plain
    return Result(lambda: value, lambda *arguments, **keywords: member.invoke(target, arguments, keywords))


def _writer(member):
    if any(not param.optional for param in member.params):
        return None
    return lambda self, value: member.write(self, (), value)


def attribute(member):
    """The attribute of a class for one member."""
    if member.kind == "method":
        return method(member)
    read = None if member.kind == "property-write" else _reader(member)
    write = None if member.kind == "property-read" else _writer(member)
    doc = member.help
    if member.params:
        doc = f"{signature_text(member)}\n{doc}"
    if member.kind == "property-write" and member.params:
        read = lambda self: ParameterProperty(self, member)
    return property(read, write, None, doc)


def event_attribute(event):
    arguments = ", ".join(f"{'ByRef ' if p.byref else ''}{p.name}: {p.type}" for p in event.params)
    return property(lambda self: Event(self, event), None, None, f"Event({arguments}). Use connect(handler).")
