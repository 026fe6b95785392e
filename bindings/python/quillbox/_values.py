"""What goes into and comes out of members besides plain values."""


class Error(Exception):
    """A failure of the library, with its number and description."""

    def __init__(self, number, description):
        super().__init__(number, description)
        self.number = number
        self.description = description

    def __str__(self):
        return self.description


class ByRef:
    """An argument that is passed by reference: `value` holds what came back."""

    __slots__ = ("value",)

    def __init__(self, value=None):
        self.value = value

    def __repr__(self):
        return f"ByRef({self.value!r})"


class Boolean(int):
    """A Boolean that may also be called, so that a property can be read like a method. Compare it with `==`."""

    __slots__ = ()

    def __call__(self):
        return bool(self)

    def __repr__(self):
        return repr(bool(self))

    __str__ = __repr__

    def __format__(self, spec):
        return format(bool(self), spec)


class Integer(int):
    __slots__ = ()

    def __call__(self):
        return int(self)


class Number(float):
    __slots__ = ()

    def __call__(self):
        return float(self)


class Text(str):
    __slots__ = ()

    def __call__(self):
        return str(self)


_CALLABLE = {bool: Boolean, int: Integer, float: Number, str: Text}


def callable_value(value):
    """A Boolean, number or text that gives itself when it is called; every other value as it is."""
    kind = _CALLABLE.get(type(value))
    return value if kind is None else kind(value)


class Result:
    """A value that may be called as well: what a property gives whose parameters may all be left out."""

    __slots__ = ("_get", "_call", "_class")

    def __init__(self, get, call, type_of_call=None):
        object.__setattr__(self, "_get", get)
        object.__setattr__(self, "_call", call)
        object.__setattr__(self, "_class", type_of_call)

    @property
    def _value(self):
        return self._get()

    @property
    def __class__(self):
        return type(self._value)

    def __call__(self, *arguments, **keywords):
        return self._call(*arguments, **keywords)

    def __getattr__(self, name):
        return getattr(self._value, name)

    def __setattr__(self, name, value):
        setattr(self._value, name, value)

    def __len__(self):
        return len(self._value)

    def __bool__(self):
        return bool(self._value)

    def __iter__(self):
        return iter(self._value)

    def __getitem__(self, key):
        return self._value[key]

    def __contains__(self, item):
        return item in self._value

    def __eq__(self, other):
        return self._value == (other._value if type(other) is Result else other)

    def __hash__(self):
        return hash(self._value)

    def __repr__(self):
        return repr(self._value)

    def __str__(self):
        return str(self._value)

    def __dir__(self):
        return dir(self._value)

    def __instancecheck__(self, instance):
        if self._class is None:
            raise TypeError("isinstance() needs a class")
        return isinstance(instance, self._class)
