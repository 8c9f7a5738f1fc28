"""Everything public in include/found is within reach of Python."""

import pathlib
import re

import pytest

import kvfound as kv

HEADERS = pathlib.Path(__file__).resolve().parents[2] / "include" / "found"

F, M, R = kv.Foundation, kv.FoundationManager, kv.ReadMessenger

# What stands for each function of the library. A property stands for get and set.
REACHED = {
    "Foundation": {
        "Foundation": F,
        "operator=": F.assign,
        "getName setName": F.name,
        "getNumber setNumber": F.number,
        "getChanged setChanged": F.changed,
        "isGenerated setGenerated": F.generated,
        "getFailPossible setFailPossible": F.fail_possible,
        "getFactorArea setFactorArea": F.factor_area,
        "getFactorLine setFactorLine": F.factor_line,
        "getFailAreaZ setFailAreaZ": F.fail_area_z,
        "getFailLineX setFailLineX": F.fail_line_x,
        "getFailLineY setFailLineY": F.fail_line_y,
        "getFailLineZ setFailLineZ": F.fail_line_z,
        "getFailureArea": F.failure_area,
        "getFailureLine": F.failure_line,
        "setFailureArea": F.set_failure_area,
        "setFailureLine": F.set_failure_line,
        "getDispArea getDispAreaZ setDispArea": F.area,
        "getDispLine setDispLine": F.line,
        "getRotLine setRotLine": F.rotation,
        "operator==": F.__eq__,
        "copy": F.assign,
        "addValues": F.add_values,
        "scaleValues": F.scale_values,
        "interpolate": F.interpolate,
        "clearAreaValues": F.clear_area_values,
        "clearLineValues": F.clear_line_values,
        "hasValues": F.has_values,
        "hasAreaValues": F.has_area_values,
        "hasLineValues": F.has_line_values,
        "getValueArea": F.value_area,
        "getValueLine": F.value_line,
        "releases": F.releases,
        "modifyValue": F.modify_value,
    },
    "FoundationManager": {
        "FoundationManager": M,
        "operator=": M.__copy__,
        "reset": M.reset,
        "add": M.add,
        "findFoundation": M.find,
        "getCurrentFoundation setCurrentFoundation": M.current,
        "getFoundations": M.foundations,
        "getRemovedFoundations": M.removed,
        "remove": M.remove,
        "redo": M.redo,
        "giveFoundation": M.give,
        "giveNextFoundationName": M.give_next_name,
        "addUser": M.add_user,
        "removeUser": M.remove_user,
        "checkUsed": M.is_used,
        "getNumberOfUsedFoundations": M.number_of_used,
        "removeAllGenerated": M.remove_all_generated,
        "removeAllNotUsed": M.remove_all_not_used,
        "removeAllNotUsedGenerated": M.remove_all_not_used_generated,
        "getMaxFoundationValue setMaxFoundationValue": M.max_value,
        "updateFoundationMaximum": M.update_max_value,
        "createFromXml readXml": M.read_xml,
        "updateXml": M.update_xml,
        "writeXml": M.write_xml,
    },
    # Users are any callables, or objects with uses_foundation().
    "FoundationUser": {"FoundationUser operator= usesFoundation": M.add_user},
    "BeddingReader": {"BeddingReader read setMessenger": M.read_exchange},
    # The library's writer sends no messages.
    "BeddingWriter": {"BeddingWriter write setMessenger": M.write_exchange},
    "KvmlWriter": {"KvmlWriter write": M.write_kvml},
    "ReadMessenger": {
        "ReadMessenger operator=": R,
        "onReadFinished": R.on_read_finished,
        "onUnknownElement": R.on_unknown_element,
        "onMissingName": R.on_missing_name,
        "onMissingBeddingName": R.on_missing_bedding_name,
        "onEmptyName": R.on_empty_name,
        "onEmptyBeddingName": R.on_empty_bedding_name,
        "onMissingNumber": R.on_missing_number,
        "onInvalidNumber": R.on_invalid_number,
        "onNameChanged": R.on_name_changed,
    },
}


def list_public(text):
    """The public functions of each exported class in a header."""
    text = re.sub(r"//.*|.*= delete;", "", text)
    for name, body in re.findall(r"class FOUND_API (\w+) \{\n(.*?)^\};", text, re.S | re.M):
        public = body.split(" private:")[0]
        declared = re.findall(r"^  (?!using|struct|enum)[^\n~()]*?(operator\S+|\w+)\(", public, re.M)
        yield name, set(declared)


def test_the_headers_are_understood():
    found = dict(pair for path in HEADERS.glob("*.h") for pair in list_public(path.read_text()))
    assert set(found) == set(REACHED)
    assert {"setDispArea", "operator==", "modifyValue"} <= found["Foundation"]
    assert {"add", "readXml", "giveFoundation"} <= found["FoundationManager"]


@pytest.mark.parametrize("header", sorted(path.name for path in HEADERS.glob("*.h")))
def test_every_function_is_within_reach(header):
    for name, functions in list_public((HEADERS / header).read_text()):
        reached = {function for names in REACHED[name] for function in names.split()}
        assert functions == reached, name
        assert all(callable(one) or isinstance(one, property) for one in REACHED[name].values())


def test_failures_are_those_of_the_library():
    text = (HEADERS / "foundation.h").read_text()
    values = re.search(r"enum Failure : int \{(.*?)\}", text, re.S)[1]
    modes = re.findall(r"(\w+) = (-?\d+)", values)
    assert [(one.upper(), int(value)) for one, value in modes] == [
        (mode.name, mode.value) for mode in kv.Failure
    ]


def test_all_that_is_public_is_documented():
    for name in kv.__all__:
        thing = getattr(kv, name)
        if isinstance(thing, type):
            assert thing.__doc__, name
            for member, value in vars(thing).items():
                if not member.startswith("_") and (callable(value) or isinstance(value, property)):
                    assert getattr(thing, member).__doc__, f"{name}.{member}"
        elif callable(thing):
            assert thing.__doc__, name
