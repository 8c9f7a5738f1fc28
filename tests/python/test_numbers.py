"""Values from Python are taken for what they are: nothing is cut or guessed."""

import decimal
import fractions
import math

import numpy
import pandas
import pytest

import kvfound as kv

FACTORS = ["factor_area", "factor_line"]
FLAGS = ["generated", "fail_possible", "changed"]
MODES = ["fail_area_z", "fail_line_x", "fail_line_y", "fail_line_z"]
VECTORS = ["area", "line", "rotation"]


class Index:
    """What Python takes for an int."""

    def __index__(self):
        return 7


class Raising:
    def __float__(self):
        raise KeyError("mine")

    __index__ = __float__


@pytest.mark.parametrize("value", [7, numpy.int64(7), numpy.uint8(7), Index()])
def test_an_int_is_taken_as_number(value):
    assert kv.Foundation(number=value).number == 7


@pytest.mark.parametrize("value", [7.5, 7.0, float("nan"), "7", None, True, numpy.bool_(True), numpy.float64(7)])
@pytest.mark.parametrize("name", ["number"] + MODES)
def test_what_is_no_int_is_refused_as_int(name, value):
    foundation = kv.Foundation(number=3)

    with pytest.raises(TypeError, match=f"^{name}: an int is wanted, not "):
        setattr(foundation, name, value)

    assert foundation == kv.Foundation() and foundation.number == 3


@pytest.mark.parametrize("value", [2**31, -(2**31) - 1, 10**30, -(10**5000)], ids="abcd")
def test_an_int_beyond_32_bits_is_refused(value):
    with pytest.raises(OverflowError, match="^number: the int is not between -2147483648 and 2147483647$"):
        kv.Foundation(number=value)


@pytest.mark.parametrize("value", [2**31 - 1, -(2**31)])
def test_the_outermost_ints_are_taken(value):
    assert kv.Foundation(number=value).number == value


@pytest.mark.parametrize("name", FACTORS)
@pytest.mark.parametrize("value", [1, 1.0, numpy.float32(1), fractions.Fraction(1), decimal.Decimal(1), Index()])
def test_any_number_is_taken_as_factor(name, value):
    foundation = kv.Foundation()

    setattr(foundation, name, value)

    assert getattr(foundation, name) == float(value if not isinstance(value, Index) else 7)


@pytest.mark.parametrize("name", FACTORS)
@pytest.mark.parametrize("value", ["1", b"1", None, True, numpy.bool_(False), 1j, [1.0]])
def test_what_is_no_number_is_refused_as_factor(name, value):
    with pytest.raises(TypeError, match=f"^{name}: a number is wanted, not "):
        setattr(kv.Foundation(), name, value)


def test_nan_and_infinities_are_taken_as_factors():
    foundation = kv.Foundation(factor_area=math.nan, factor_line=-math.inf)

    assert math.isnan(foundation.factor_area) and foundation.factor_line == -math.inf


def test_an_int_beyond_the_floats_is_refused_as_factor():
    with pytest.raises(OverflowError, match="^factor_area: the int is beyond the range of a float$"):
        kv.Foundation(factor_area=10**400)


@pytest.mark.parametrize("name", FLAGS)
@pytest.mark.parametrize("value", [True, 1, numpy.bool_(True), numpy.int8(1)])
def test_a_bool_or_one_is_taken_as_flag(name, value):
    foundation = kv.Foundation()

    setattr(foundation, name, value)

    assert getattr(foundation, name) is True


@pytest.mark.parametrize("name", FLAGS)
@pytest.mark.parametrize("value", [math.nan, math.inf, 1.0, 0.5, "no", "", None, []])
def test_what_is_no_bool_is_refused_as_flag(name, value):
    with pytest.raises(TypeError, match=f"^{name}: a bool is wanted, not "):
        setattr(kv.Foundation(), name, value)


@pytest.mark.parametrize("value", [2, -1])
def test_other_ints_are_refused_as_flag(value):
    with pytest.raises(ValueError, match="^generated: a bool is wanted$"):
        kv.Foundation(generated=value)


@pytest.mark.parametrize(
    "value",
    [
        (1, 2, 3),
        [1, 2.0, decimal.Decimal(3)],
        numpy.array([1, 2, 3]),
        numpy.array([1, 2, 3], dtype=numpy.float32),
        pandas.Series([1, 2, 3], index=[7, 8, 9]),
        range(1, 4),
        (i for i in (1, 2, 3)),
    ],
    ids=lambda value: type(value).__name__,
)
def test_three_numbers_are_taken_as_vector(value):
    assert kv.Foundation(area=value).area == (1.0, 2.0, 3.0)


def test_a_vector_is_a_tuple_of_floats():
    area = kv.Foundation(area=numpy.array([1, 2, 3])).area

    assert type(area) is tuple and [type(x) for x in area] == [float] * 3


@pytest.mark.parametrize("name", VECTORS)
def test_none_removes_a_vector(name):
    foundation = kv.Foundation(**{name: (1, 2, 3)})

    setattr(foundation, name, None)

    assert getattr(foundation, name) is None


@pytest.mark.parametrize("name", VECTORS)
@pytest.mark.parametrize("count", [0, 1, 2, 4, 1000])
def test_other_than_three_components_are_refused(name, count):
    with pytest.raises(ValueError, match=rf"^{name}: 3 numbers are wanted \(x, y, z\), not "):
        setattr(kv.Foundation(), name, [0.0] * count)


def test_an_endless_vector_is_refused():
    def endless():
        while True:
            yield 1.0

    with pytest.raises(ValueError, match="not more$"):
        kv.Foundation(area=endless())


@pytest.mark.parametrize("value", ["123", b"123", bytearray(3), {1, 2, 3}, {1: 1, 2: 2, 3: 3}, 7, 1.5, object()])
def test_what_is_no_sequence_of_numbers_is_refused(value):
    with pytest.raises(TypeError, match="^area: a sequence of 3 numbers, or None, is wanted, not "):
        kv.Foundation(area=value)


def test_components_are_numbers_themselves():
    with pytest.raises(TypeError, match="^line: a number is wanted, not str$"):
        kv.Foundation(line=(1, 2, "3"))


NO_NUMBERS = [
    numpy.complex128(3 + 4j),
    numpy.datetime64(5, "ns"),
    numpy.timedelta64(7, "ns"),
    numpy.array(["12"]),
    numpy.array("12"),
    numpy.array([b"9"]),
    numpy.array([5], "timedelta64[ns]"),
    numpy.array(True),
    numpy.array(["12"], dtype=object),
    numpy.array([1j], dtype=object),
    numpy.array([numpy.complex128(1)], dtype=object),
    numpy.array([1, 2], dtype=object),
]


@pytest.mark.parametrize("value", NO_NUMBERS, ids=repr)
def test_what_only_numpy_takes_for_a_number_is_refused(value):
    foundation = kv.Foundation("Raft", number=1, area=(1, 2, 3))
    manager = kv.FoundationManager([foundation])

    with pytest.raises(TypeError, match="^area: a number is wanted, not "):
        foundation.area = (value, 0, 0)
    with pytest.raises(TypeError, match="^areaX in row 0: a number is wanted, not "):
        manager.update({"number": [1], "areaX": [value]})
    with pytest.raises(TypeError, match="number"):
        kv.modify_value(0, value)

    assert foundation.area == (1.0, 2.0, 3.0)


@pytest.mark.parametrize("kind", [float, numpy.float16, numpy.longdouble, ">f8", numpy.int8, numpy.uint64, object])
def test_an_array_of_one_number_is_a_number(kind):
    value = numpy.array(3).astype(kind)

    assert kv.Foundation(area=(value, value, value)).area == (3.0, 3.0, 3.0)


def test_a_number_may_have_a_dtype_of_its_own():
    class Number:
        dtype = "mine"

        def __float__(self):
            return 2.5

    assert kv.Foundation(factor_area=Number()).factor_area == 2.5


def test_what_asking_for_a_dtype_raises_arrives():
    class Number:
        dtype = property(lambda self: {}["mine"])

        def __float__(self):
            return 2.5

    with pytest.raises(KeyError, match="mine"):
        kv.Foundation(factor_area=Number())


def test_a_table_is_no_vector():
    with pytest.raises(TypeError):
        kv.Foundation(area=numpy.zeros((3, 3)))


@pytest.mark.parametrize("name", VECTORS)
def test_a_refused_vector_leaves_the_old_one(name):
    foundation = kv.Foundation(**{name: (1, 2, 3)})

    with pytest.raises(KeyError, match="mine"):
        setattr(foundation, name, (7, 8, Raising()))

    assert getattr(foundation, name) == (1.0, 2.0, 3.0)


@pytest.mark.parametrize("name", FACTORS + FLAGS + MODES + ["number"])
def test_what_a_conversion_raises_arrives(name):
    with pytest.raises(KeyError, match="mine"):
        setattr(kv.Foundation(), name, Raising())


def test_foreign_failure_modes_are_kept_as_ints():
    foundation = kv.Foundation(fail_line_x=7)

    assert foundation.fail_line_x == 7 and type(foundation.fail_line_x) is int


def test_failure_modes_come_as_members():
    assert kv.Foundation(fail_line_x=-1).fail_line_x is kv.Failure.TENSION


@pytest.mark.parametrize("name", ["", "Räft", "日本", "a\tb", "a\x00b", "\x01", "🏗", "x" * 1_000_000], ids=lambda name: ascii(name[:4]))
def test_a_name_is_any_text(name):
    assert kv.Foundation(name).name == name


@pytest.mark.parametrize("name", ["\ud800", "a\udfff", "\udc00b"])
def test_a_lone_surrogate_is_refused_as_name(name):
    foundation = kv.Foundation("Raft")

    with pytest.raises(UnicodeEncodeError):
        foundation.name = name

    assert foundation.name == "Raft"


@pytest.mark.parametrize("name", [b"Raft", None, 7, ["Raft"]])
def test_what_is_no_text_is_refused_as_name(name):
    with pytest.raises(TypeError, match="^name: a str is wanted, not "):
        kv.Foundation(name)


def test_a_str_of_a_class_of_its_own_is_a_name():
    class Name(str):
        pass

    assert type(kv.Foundation(Name("Raft")).name) is str


def test_misspelt_properties_are_refused():
    with pytest.raises(AttributeError):
        kv.Foundation().aera = (1, 2, 3)


def test_a_property_cannot_be_deleted():
    with pytest.raises(AttributeError):
        del kv.Foundation().area


def test_a_masked_number_is_none():
    numpy = pytest.importorskip("numpy")
    masked = numpy.ma.array([-2.0, -3.0, 4.0], mask=[False, True, False])
    with pytest.raises(TypeError, match="area: a number is wanted, not MaskedConstant"):
        kv.Foundation(area=masked)
    with pytest.raises(TypeError, match="value: a number is wanted, not MaskedConstant"):
        kv.modify_value(kv.Failure.TENSION, masked[1])


def test_modified_arrays_keep_their_mask():
    numpy = pytest.importorskip("numpy")
    masked = numpy.ma.array([-2.0, -3.0, 4.0], mask=[False, True, False])
    modified = kv.modify_value(kv.Failure.TENSION, masked)

    assert modified.tolist() == [-1e-5, None, 4.0] and modified.mask is not masked.mask
