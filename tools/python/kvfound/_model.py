"""Documents: read, looked at, changed, checked, compared and saved."""

from __future__ import annotations

import copy
import html
import operator
import os
import pathlib
from typing import (
    IO,
    Any,
    Callable,
    Dict,
    Iterable,
    Iterator,
    List,
    NamedTuple,
    Optional,
    Set,
    SupportsIndex,
    Tuple,
    Type,
    Union,
)

from . import _core
from ._differences import Differences, Path, warn
from ._findings import Finding, Findings
from ._tables import Tables

Units = Tuple[str, str]
Key = Union[str, SupportsIndex]  # int, and what counts as one, as of numpy
Source = Union[str, "os.PathLike[str]", "os.PathLike[bytes]", bytes, bytearray, memoryview, IO[bytes]]

_MOST_ROWS = 60  # of the table in a notebook
_ENDINGS = {".csv": "csv", ".json": "json"}
_CLASHES = ("refuse", "rename", "renumber", "skip", "replace")


class Merged(NamedTuple):
    """What merging did.

    ``added`` and ``changed`` are foundations of the model, ``left_out`` tells what did not come
    because of ``on_clash="skip"``, and ``losses`` what the form of the model has no place for.
    """

    added: List[_core.Foundation]
    changed: List[_core.Foundation]
    left_out: Tuple[str, ...]
    losses: Tuple[str, ...]


class Model(Tables):
    """A document with foundations: a legacy model, an exchange document, a table or data.

    ``Model(form="legacy")`` makes one without foundations; :func:`kvfound.open` reads one. Nothing
    stays open. ``foundations`` are a :class:`FoundationManager`, to be looked at and changed; what
    else the document holds stays as it is, byte for byte, when it is saved.

    ``model["Raft"]`` is the first foundation of this name, ``model[3]`` the first with this
    *number*; by index they are in ``model.foundations``. Iterating gives the foundations. A model
    equals itself only; :meth:`diff` compares what two hold.

    An operation that raises has changed nothing. Reading, checking, comparing and writing let other
    threads run; they work on the foundations as these were at the start.
    """

    __slots__ = ("__weakref__", "_foundations", "_state")

    _state: _core.ModelState
    _foundations: _core.FoundationManager

    def __init__(self, form: str = "legacy") -> None:
        if form == "kvml":
            raise ValueError("a Kvml listing is only written; to_bytes() and write() do")
        content = _core.make_empty(form)
        reading = form if form in _ENDINGS.values() else None
        version = "1.0" if form == "exchange-1.0" else None
        opened = _core.open_bytes(content, b"new model", reading, version)
        self._foundations, self._state = opened

    @classmethod
    def _adopt(
        cls: Type[Model], foundations: _core.FoundationManager, state: _core.ModelState
    ) -> Model:
        made = cls.__new__(cls)
        made._foundations = foundations
        made._state = state
        return made

    # --- The document

    @property
    def foundations(self) -> _core.FoundationManager:
        """The foundations, in the order of the document and then as they were added."""
        return self._foundations

    @property
    def path(self) -> Optional[pathlib.Path]:
        """The file that it was read from or saved to last, as an absolute path, or None."""
        path = self._state.path
        return None if path is None else pathlib.Path(os.fsdecode(path))

    @property
    def form(self) -> str:
        """ "legacy", "exchange", "exchange-1.0", "csv" or "json"."""
        return self._state.form

    @property
    def encoding(self) -> str:
        """How its bytes stand for characters, such as "utf-8"; names are str whatever it is."""
        return self._state.encoding

    @property
    def units(self) -> Optional[Units]:
        """The units of force and length that it names, such as ("kN", "m"), or None.

        Only csv and json name units, and can be given some (else ValueError): labels, which convert
        nothing; see :meth:`convert_units`. Saving writes them.
        """
        return self._state.units

    @units.setter
    def units(self, units: Optional[Units]) -> None:
        self._state.units = units

    @property
    def labels(self) -> Optional[Units]:
        """How it calls its units, be it only for people, as a legacy model does; or None."""
        return self.units or self._state.labels

    @property
    def notes(self) -> Tuple[str, ...]:
        """What reading skipped or renamed, a line each with file, line and column."""
        return self._state.notes

    # --- The foundations

    @property
    def current(self) -> Optional[_core.Foundation]:
        """The current foundation, or None."""
        return self._foundations.current

    @current.setter
    def current(self, foundation: Optional[_core.Foundation]) -> None:
        self._foundations.current = foundation

    def __len__(self) -> int:
        return len(self._foundations)

    def __iter__(self) -> Iterator[_core.Foundation]:
        return iter(self._foundations)

    def __contains__(self, key: object) -> bool:
        """Whether this name, this number or this very foundation is in it."""
        if isinstance(key, _core.Foundation):
            return key in self._foundations
        return isinstance(key, (str, SupportsIndex)) and self.find(key) is not None

    def __getitem__(self, key: Key) -> _core.Foundation:
        """The first foundation of this name (str) or with this number (int); else KeyError."""
        found = self.find(key)
        if found is None:
            raise KeyError(key)
        return found

    def find(self, key: Key) -> Optional[_core.Foundation]:
        """The first foundation of this name (str) or with this number (int), or None."""
        if isinstance(key, str):
            return _core.find_name(self._foundations, key)
        number = _take_number(key, "key: a name (str) or a number (int)")
        is_possible = -(2**31) <= number < 2**31
        return _core.find_number(self._foundations, number) if is_possible else None

    def select(
        self,
        numbers: Union[None, str, int, Iterable[int]] = None,
        *,
        name: Optional[str] = None,
        generated: bool = False,
        part: Optional[str] = None,
    ) -> List[_core.Foundation]:
        """The foundations that fit all that is asked for.

        ``numbers`` are such as "3,5-9", or ints; ``name`` is a pattern, in which * stands for any
        characters and ? for one; ``generated`` asks for those that were generated; ``part`` for
        those with a stiffness of "area" or "line". Raises ValueError for other texts.
        """
        asked = _join(numbers)
        if asked == "" and not isinstance(numbers, str):
            return []
        return _core.select(self._foundations, asked, name, bool(generated), part)

    def new(self, name: str = "", **values: Any) -> _core.Foundation:
        """Add a foundation of this name and return it.

        Without a name it gets a default one that is free, such as "Found0013". ``values`` are those
        of :class:`Foundation`. Its number is one above the highest, unless
        ``number`` is given. Raises ValueError when another one has its name or number.
        """
        made = _core.Foundation(name, **values)
        return _core.add_new(self._foundations, made, "number" in values)

    def add(self, foundation: _core.Foundation) -> _core.Foundation:
        """Add a foundation that no manager has and return it.

        It gets a free number where its own is below 1. Raises ValueError when a manager has it.
        """
        return _core.add(self._foundations, foundation)

    def remove(self, foundation: Union[Key, _core.Foundation]) -> _core.Foundation:
        """Take a foundation out, by itself, its name or its number, and return it.

        Raises KeyError or ValueError where it is not in the model.
        """
        found = foundation if isinstance(foundation, _core.Foundation) else self[foundation]
        self._foundations.remove(found)
        return found

    # --- Saving

    def save(self, *, lossy: bool = False, overwrite: bool = False) -> None:
        """Save it to its file, in which every byte stays that no change concerns.

        The file is replaced as a whole or not at all, and not touched where nothing changed. One of
        version 1.0 of exchange holds no numbers: the foundations get those a reader counts. Raises
        LossError when the form of the document cannot store something, unless ``lossy``;
        ChangedError when another program changed the file meanwhile, unless ``overwrite``;
        DocumentError when the result could not be read again or a new number or name is taken;
        OSError; ValueError for a model that came from no file; RuntimeError while another thread
        saves it.
        """
        path = self._state.path
        if path is None:
            raise ValueError("the model came from no file; save_as() takes a path")
        existing = "overwrite" if overwrite else "own"
        shown = self._state.shown_path
        _core.save(
            self._state, self._foundations, path, shown, self.form, None, None, existing, lossy
        )

    def save_as(
        self,
        path: Path,
        to: Optional[str] = None,
        *,
        lossy: bool = False,
        existing: str = "refuse",
        separator: Optional[str] = None,
        decimal: Optional[str] = None,
    ) -> None:
        """Save it to another file, which it stands for from then on.

        ``to`` is the form; when left out, that of a path that ends with .csv or .json, else its
        own (ValueError for .kvml, a listing, which write() makes). In its own form all else that
        the document holds comes along. ``existing`` tells what happens to a file that is there:
        "refuse" raises FileExistsError, "replace" replaces it, "update" changes only the
        foundations of the document of that form that it holds. In csv, ``separator`` is "," ";" or
        a tab, and ``decimal`` "." or ",". Raises what :meth:`save`
        does, and LossError also for what was skipped on reading and another form does not get.
        """
        path = os.fspath(path)  # once: it may tell another one each time
        form = self._choose_form(path, to)
        if form == "kvml":
            raise ValueError("a Kvml listing is only written; write() does")
        if existing not in ("refuse", "replace", "update"):
            raise ValueError("existing: only refuse, replace or update")
        _check_marks(separator, decimal)
        shown = os.fsencode(path)
        _core.save(
            self._state,
            self._foundations,
            os.path.abspath(shown),
            shown,
            form,
            separator,
            decimal,
            "overwrite" if existing == "replace" else existing,
            lossy,
        )

    def to_bytes(
        self,
        to: Optional[str] = None,
        *,
        lossy: bool = False,
        separator: Optional[str] = None,
        decimal: Optional[str] = None,
    ) -> bytes:
        """The document as :meth:`save_as` would write it; ``to`` may be "kvml", too."""
        form = self.form if to is None else to
        _check_marks(separator, decimal)
        return _core.render(self._state, self._foundations, form, separator, decimal, lossy)

    def write(
        self,
        target: Union[Path, IO[bytes]],
        to: Optional[str] = None,
        *,
        lossy: bool = False,
        replace: bool = False,
        separator: Optional[str] = None,
        decimal: Optional[str] = None,
    ) -> None:
        """Write a copy to a file or a binary file object; the model keeps its own file.

        ``to`` may be "kvml", too, and is where a path ends with .kvml.

        Raises what :meth:`save_as` does; FileExistsError for a file that is there unless
        ``replace``; TypeError for a file object in text mode; OSError for one that takes no more,
        such as BlockingIOError for a raw one that would have to wait.
        """
        options = {"lossy": lossy, "separator": separator, "decimal": decimal}
        if isinstance(target, (str, bytes, os.PathLike)):
            target = os.fspath(target)  # once: it may tell another one each time
            content = self.to_bytes(self._choose_form(target, to), **options)  # type: ignore[arg-type]
            _core.write_file(os.path.abspath(os.fsencode(target)), content, replace)
            return
        if not hasattr(target, "write"):
            kind = type(target).__name__
            raise TypeError(f"target: a path or a binary file object is wanted, not {kind}")
        target.write(b"")  # which a file in text mode refuses, before anything is made
        _core.write_object(target, self.to_bytes(to, **options))  # type: ignore[arg-type]

    def losses(self, to: Optional[str] = None) -> Tuple[str, ...]:
        """What would be lost in a document of this form (its own when left out), a line each."""
        form = self.form if to is None else to
        return _core.list_losses(self._state, self._foundations, form)

    def _choose_form(self, path: Path, to: Optional[str]) -> str:
        if to is not None:
            return to
        ending = os.path.splitext(os.fsdecode(path))[1].lower()
        if ending in _ENDINGS:
            return _ENDINGS[ending]
        if ending == ".kvml":
            return "kvml"
        if self.form in _ENDINGS.values() and ending:
            raise ValueError(f"the path ends with {ending}; tell which form is wanted, as in to=\"legacy\"")
        return self.form

    # --- Looking at it

    def check(self) -> Findings:
        """What readers of the document accept in silence: see :class:`Finding`.

        Raises LossError when it could not be saved as it is, since then there is no such document.
        """
        filename, found, checked = _core.check(self._state, self._foundations)
        return Findings([Finding(filename, *finding) for finding in found], [checked])

    def diff(
        self, other: Union[Model, Source], *, by: Optional[str] = None, relative: float = 0.0
    ) -> Differences:
        """How another model differs from this one: see :func:`kvfound.diff`."""
        return _compare(self, _open_other(other), by, relative)

    def to_html(
        self,
        *,
        units: Optional[Units] = None,
        numbers: Union[None, str, int, Iterable[int]] = None,
        name: Optional[str] = None,
        generated: bool = False,
        part: Optional[str] = None,
    ) -> str:
        """A page that shows the foundations in pictures and in a table, with what check() finds.

        ``units`` are labels, such as ("kN", "m"); the others tell which foundations are shown, as
        in :meth:`select`. Raises ValueError where none is, or where the document names other units.
        """
        numbers = _join(numbers)
        return _core.report(
            self._state, self._foundations, units, numbers, name, bool(generated), part
        )

    def report(
        self,
        path: Path,
        *,
        units: Optional[Units] = None,
        numbers: Union[None, str, int, Iterable[int]] = None,
        name: Optional[str] = None,
        generated: bool = False,
        part: Optional[str] = None,
    ) -> None:
        """Write the page of :meth:`to_html` to a file, which may replace an older page only.

        Raises FileExistsError where anything else is there.
        """
        page = self.to_html(units=units, numbers=numbers, name=name, generated=generated, part=part)
        _core.write_page(os.path.abspath(os.fsencode(path)), page)

    # --- Changing many

    def merge(
        self,
        other: Union[Model, Source],
        *others: Union[Model, Source],
        on_clash: str = "refuse",
        lossy: bool = False,
    ) -> Merged:
        """Take the foundations of other models over, and remove nothing.

        Those that have number and name alike, or the one that the other document tells, change in
        the fields that both documents tell; others are added. ``on_clash`` tells what becomes of
        one whose number or name another one has: "refuse" raises ClashError, "rename" gives it a
        free name, "renumber" a free number, "skip" leaves it out, "replace" puts it in the place of
        the other. Raises LossError where this form has no place for something, unless ``lossy``.
        Warns with UnitWarning where units differ. Raises RuntimeError where a foundation that
        another thread adds meanwhile has the name or number of one that comes.
        """
        if on_clash not in _CLASHES:
            raise ValueError(f"on_clash: only {', '.join(_CLASHES[:-1])} or {_CLASHES[-1]}")
        models = [_open_other(one) for one in (other, *others)]
        pairs = [(model._state, model._foundations) for model in models]
        return Merged(
            *_core.merge(self._state, self._foundations, pairs, on_clash, lossy, warn)
        )

    def prune(
        self,
        *,
        generated: bool = False,
        used_by: Union[None, Iterable[Union[Key, _core.Foundation]], Callable[..., Any]] = None,
        ignore_missing: bool = False,
        keep_numbers: bool = False,
    ) -> List[_core.Foundation]:
        """Remove foundations that were generated or are not used, and return them.

        With ``generated`` alone all generated ones go, with ``used_by`` all that are not used, with
        both the generated ones that are not used. ``used_by`` lists names (str), numbers (int) or
        foundations, or is a user, as ``foundations.add_user`` takes it; users that were added are
        asked as well, and may do without it. An empty list uses nothing. Where generated ones go,
        the others are numbered 1, 2, 3, ... unless ``keep_numbers``; those of an exchange document
        of version 1.0 always are.

        Raises ValueError where nothing tells what to prune, where the list names none of the
        foundations, and where it names one that is missing, such as a foundation of another model,
        unless ``ignore_missing``.
        """
        users = self._foundations.users
        if used_by is None and not generated and not users:
            raise ValueError("tell what to prune: generated=True, used_by=... or both")
        asks = used_by is not None or (bool(users) and not generated)
        user: Any = None
        if callable(used_by) or hasattr(used_by, "uses_foundation"):
            user = used_by
        elif used_by is not None:
            user = _find_used(self._foundations, used_by, ignore_missing)
        return _core.prune(
            self._state, self._foundations, generated, asks, user, keep_numbers
        )

    def convert_units(self, old: Units, new: Units) -> None:
        """Convert all stiffness from units of force and length to others, exactly, by their names.

        Of force there are N, kN, MN, lbf and kip, of length m, dm, cm, mm, ft and in. A table or
        data names the new ones from then on; a legacy model goes on to name the old ones, since
        these names are its program's own. Raises ValueError for other names, for units that are
        not those of the document, and where something of it could not be read; OverflowError where
        a value would become too large, or zero.
        """
        text = ":".join(",".join(_check_units(units)) for units in (old, new))
        _core.convert_units(self._state, self._foundations, text, None, None)

    def scale_units(self, force: Union[int, float, str] = 1, length: Union[int, float, str] = 1) -> None:
        """The same by factors: how many new units of force and length an old one is.

        A text such as "0.3048" is taken exactly as it is written.
        """
        _core.convert_units(
            self._state, self._foundations, None, _spell(force), _spell(length)
        )

    # --- For Python

    def __repr__(self) -> str:
        where = os.fsdecode(self._state.shown_path)
        return f"<Model {where!r}: {self.form}, {len(self)} foundations>"

    def _repr_html_(self) -> str:
        """A table for notebooks."""
        return _make_table(self)

    def __copy__(self) -> Model:
        """A model of its own: no foundation is in two of them."""
        return copy.deepcopy(self)

    def __reduce__(self) -> Tuple[Any, ...]:
        """With its bytes and all changes; users do not come along."""
        state = _core.export_state(self._state, self._foundations)
        return _restore, (type(self), self._foundations, state)


def open_model(
    source: Source,
    *,
    form: Optional[str] = None,
    version: Optional[str] = None,
    separator: Optional[str] = None,
    decimal: Optional[str] = None,
) -> Model:
    """Read a document with foundations, whatever its form.

    ``source`` is a path (str or path-like), the bytes of a document (bytes, or anything with a
    buffer, such as a mmap), or a binary file object, which is read to its end. The content tells
    the form, but for a table and data, which need a name that ends with .csv or .json, or ``form``.
    ``version`` is that of an exchange document whose content leaves it open, such as "1.0";
    ``separator`` ("," ";" or a tab) and ``decimal`` ("." or ",") are those of a table.

    Raises DocumentError, with ``filename``, ``lineno``, ``colno`` and ``reason``, for what cannot be
    read, is in UTF-16 or UTF-32, or is of another form than ``form``; OSError such as
    FileNotFoundError; TypeError for a file object in text mode.
    """
    if isinstance(source, (str, os.PathLike)):
        shown = os.fsencode(source)
        opened = _core.open_file(os.path.abspath(shown), shown, form, version, separator, decimal)
    else:
        content, name = _read(source)
        opened = _core.open_bytes(content, name, form, version, separator, decimal)
    return Model._adopt(*opened)


# Its own name, in help(), in messages, and where pickles and other processes look for it.
open_model.__name__ = open_model.__qualname__ = "open"
open_model.__module__ = "kvfound"


def diff(
    first: Union[Model, Source],
    second: Union[Model, Source],
    *,
    by: Optional[str] = None,
    relative: float = 0.0,
) -> Differences:
    """How the foundations of two models, or documents, differ, whatever their forms.

    Foundations that do not have number and name alike are paired by name, then by number, or only
    ``by`` "name" or "number". Stiffness and factors that differ by no more than ``relative``, a
    share of the larger one, are alike. Warns with UnitWarning where units differ; raises
    DocumentError where tables or data name different ones.
    """
    return _compare(_open_other(first), _open_other(second), by, relative)


def _compare(first: Model, second: Model, by: Optional[str], relative: float) -> Differences:
    comparison = _core.diff(
        first._state, first._foundations, second._state, second._foundations, by, float(relative)
    )
    warn(comparison.unit_note, 4)
    return Differences(comparison)


def _open_other(other: Union[Model, Source]) -> Model:
    return other if isinstance(other, Model) else open_model(other)


def _read(source: Any) -> Tuple[bytes, bytes]:
    """The content of a buffer or a file object, and how messages call it."""
    try:
        return memoryview(source).tobytes(), b"<bytes>"
    except TypeError:
        pass
    read = getattr(source, "read", None)
    if read is None:
        kind = type(source).__name__
        raise TypeError(f"source: a path, bytes or a binary file object is wanted, not {kind}")
    content = read()
    if isinstance(content, str):
        raise TypeError("source: the file is open in text mode; open it with mode \"rb\"")
    try:
        content = memoryview(content).tobytes()  # bytes() would take a count or a list of ints, too
    except TypeError:
        kind = type(content).__name__
        raise TypeError(f"source: read() returned {kind}, not bytes") from None
    name = getattr(source, "name", None)
    shown = os.fsencode(name) if isinstance(name, (str, bytes)) and name else b"<bytes>"
    return content, shown


def _take_number(number: Any, wanted: str) -> int:
    try:
        return operator.index(number)
    except TypeError:
        raise TypeError(f"{wanted} is wanted, not {type(number).__name__}") from None


def _join(numbers: Union[None, str, int, Iterable[int]]) -> Optional[str]:
    """Numbers as a text such as "3,5-9"."""
    if numbers is None or isinstance(numbers, str):
        return numbers
    wanted = "numbers: a text such as \"3,5-9\" or ints"
    if isinstance(numbers, Iterable):
        return ",".join(str(_take_number(number, wanted)) for number in numbers)
    return str(_take_number(numbers, wanted))


def _check_marks(separator: Optional[str], decimal: Optional[str]) -> None:
    """Whether a table can be written with these."""
    if isinstance(separator, str) and separator not in (",", ";", "\t"):
        raise ValueError(f"separator: only ',', ';' or a tab, not {separator!r}")
    if isinstance(decimal, str) and decimal not in (".", ","):
        raise ValueError(f"decimal: only '.' or ',', not {decimal!r}")


def _spell(number: Union[int, float, str]) -> str:
    if isinstance(number, str):
        return number
    return repr(number if isinstance(number, int) else float(number))


def _check_units(units: Any) -> Units:
    if isinstance(units, str) or not isinstance(units, Iterable) or len(told := tuple(units)) != 2:
        raise TypeError('units: a tuple of force and length is wanted, such as ("kN", "m")')
    force, length = told
    for unit in told:
        if not isinstance(unit, str):
            raise TypeError(f"units: str is wanted, not {type(unit).__name__}")
        if set(unit) & set(",:"):
            raise ValueError(f"there is no unit {unit!r}")
    return force, length


def _find_used(
    foundations: _core.FoundationManager,
    used: Iterable[Union[Key, _core.Foundation]],
    ignore_missing: bool,
) -> Callable[[_core.Foundation], bool]:
    """A user of the foundations that are listed."""
    if isinstance(used, (str, bytes, int)) or not isinstance(used, Iterable):
        raise TypeError("used_by: a list of names, numbers and foundations is wanted")
    wanted = list(used)
    listed = foundations.foundations
    names: Set[str] = set()
    numbers: Set[int] = set()
    held: Dict[int, _core.Foundation] = {}
    for one in wanted:
        if isinstance(one, _core.Foundation):
            held[id(one)] = one
        elif isinstance(one, str):
            names.add(one)
        else:
            numbers.add(_take_number(one, "used_by: a name, a number or a Foundation"))
    there = {id(one) for one in listed}
    missing = [repr(one) for key, one in held.items() if key not in there]
    missing += [f'"{name}"' for name in sorted(names - {one.name for one in listed})]
    missing += [f"number {number}" for number in sorted(numbers - {one.number for one in listed})]
    if wanted and len(missing) == len(held) + len(names) + len(numbers):
        raise ValueError("none of the foundations is named; nothing was removed")
    if missing and not ignore_missing:
        raise ValueError(f"there is no foundation {missing[0]}")

    for one in listed:  # now, since pruning gives other numbers
        if one.name in names or one.number in numbers:
            held[id(one)] = one
    return lambda foundation: id(foundation) in held


def _restore(cls: Type[Model], foundations: _core.FoundationManager, state: Any) -> Model:
    return cls._adopt(foundations, _core.restore_state(foundations, *state))


def _show(value: Optional[Tuple[float, float, float]]) -> str:
    return "–" if value is None else " / ".join(f"{component:g}" for component in value)


def _make_table(model: Model) -> str:
    foundations = list(model.foundations)
    shown = foundations
    if len(foundations) > _MOST_ROWS:
        shown = foundations[: _MOST_ROWS // 2] + foundations[-_MOST_ROWS // 2 :]
    rows = []
    for place, foundation in enumerate(shown):
        if len(shown) < len(foundations) and place == _MOST_ROWS // 2:
            rows.append(f'<tr><td colspan="5">… {len(foundations) - len(shown)} more …</td></tr>')
        cells = (foundation.area, foundation.line, foundation.rotation)
        values = "".join(f"<td>{_show(cell)}</td>" for cell in cells)
        name = html.escape(foundation.name)
        rows.append(f"<tr><th>{foundation.number}</th><td>{name}</td>{values}</tr>")
    labels = model.labels
    units = f", in {html.escape(labels[0])} and {html.escape(labels[1])}" if labels else ""
    title = html.escape(os.fsdecode(model._state.shown_path))
    heads = ("number", "name", "area x / y / z", "line x / y / z", "rotation x / y / z")
    head = "".join(f"<th>{text}</th>" for text in heads)
    return (
        f"<table><caption>{title}: {len(foundations)} foundations{units}</caption>"
        f"<thead><tr>{head}</tr></thead><tbody>{''.join(rows)}</tbody></table>"
    )
