"""Everything public in include/found can be reached from Python."""

import re

import kvfound as kv

# By class: what a public function is called in Python; where it is none, why.
NAMES = {
    "Foundation": {
        "getName": "name",
        "setName": "name",
        "getNumber": "number",
        "setNumber": "number",
        "getChanged": "changed",
        "setChanged": "changed",
        "isGenerated": "generated",
        "setGenerated": "generated",
        "getFailPossible": "fail_possible",
        "setFailPossible": "fail_possible",
        "getFactorArea": "factor_area",
        "setFactorArea": "factor_area",
        "getFactorLine": "factor_line",
        "setFactorLine": "factor_line",
        "getFailAreaZ": "fail_area_z",
        "setFailAreaZ": "fail_area_z",
        "getFailLineX": "fail_line_x",
        "setFailLineX": "fail_line_x",
        "getFailLineY": "fail_line_y",
        "setFailLineY": "fail_line_y",
        "getFailLineZ": "fail_line_z",
        "setFailLineZ": "fail_line_z",
        "getFailureArea": "failure_area",
        "getFailureLine": "failure_line",
        "setFailureArea": "set_failure_area",
        "setFailureLine": "set_failure_line",
        "getDispArea": "area",
        "getDispAreaZ": "value_area",
        "setDispArea": "area",
        "getDispLine": "line",
        "setDispLine": "line",
        "getRotLine": "rotation",
        "setRotLine": "rotation",
        "copy": "assign",
        "addValues": "add_values",
        "scaleValues": "scale_values",
        "interpolate": "interpolate",
        "clearAreaValues": "clear_area_values",
        "clearLineValues": "clear_line_values",
        "hasValues": "has_values",
        "hasAreaValues": "has_area_values",
        "hasLineValues": "has_line_values",
        "getValueArea": "value_area",
        "getValueLine": "value_line",
        "releases": "releases",
        "modifyValue": "modify_value",
    },
    "FoundationManager": {
        "reset": "reset",
        "add": "add",
        "findFoundation": "find",
        "getCurrentFoundation": "current",
        "setCurrentFoundation": "current",
        "getFoundations": "foundations",
        "getRemovedFoundations": "removed",
        "remove": "remove",
        "redo": "redo",
        "giveFoundation": "give",
        "giveNextFoundationName": "give_next_name",
        "addUser": "add_user",
        "removeUser": "remove_user",
        "checkUsed": "is_used",
        "getNumberOfUsedFoundations": "number_of_used",
        "removeAllGenerated": "remove_all_generated",
        "removeAllNotUsed": "remove_all_not_used",
        "removeAllNotUsedGenerated": "remove_all_not_used_generated",
        "getMaxFoundationValue": "max_value",
        "setMaxFoundationValue": "max_value",
        "updateFoundationMaximum": "update_max_value",
        "createFromXml": "read_xml",
        "readXml": "read_xml",
        "updateXml": "update_xml",
        "writeXml": "write_xml",
    },
    "ReadMessenger": {
        "onReadFinished": "on_read_finished",
        "onUnknownElement": "on_unknown_element",
        "onMissingName": "on_missing_name",
        "onMissingBeddingName": "on_missing_bedding_name",
        "onEmptyName": "on_empty_name",
        "onEmptyBeddingName": "on_empty_bedding_name",
        "onMissingNumber": "on_missing_number",
        "onInvalidNumber": "on_invalid_number",
        "onNameChanged": "on_name_changed",
    },
}

# Classes of one operation, which is a method of the manager, or none of the package's.
OTHERS = {
    "BeddingReader": "read_exchange",
    "BeddingWriter": "write_exchange",
    "KvmlWriter": "write_kvml",
    "FoundationUser": "add_user",
}


def list_public(header):
    """The public functions of the class that a header declares."""
    text = re.sub(r"//.*", "", header.read_text())
    found = re.search(r"^class FOUND_API (\w+)[^;]*?\{(.*?)^\};", text, re.S | re.M)
    if found is None:
        return None, set()
    public = found.group(2).split(" private:")[0]
    names = set(re.findall(r"\b([a-z]\w*)\(", public)) - {"operator"}
    return found.group(1), names


def test_every_public_function_is_in_python(examples):
    classes = set()
    for header in (examples.parent / "include" / "found").glob("*.h"):
        name, functions = list_public(header)
        if name is None:
            continue
        classes.add(name)
        if name in NAMES:
            assert functions == set(NAMES[name]), name
            for attribute in NAMES[name].values():
                assert hasattr(getattr(kv, name), attribute), attribute
        else:
            assert hasattr(kv.FoundationManager, OTHERS[name])

    assert classes == set(NAMES) | set(OTHERS)


def test_everything_public_is_documented():
    for cls in (kv.Foundation, kv.FoundationManager, kv.ReadMessenger):
        assert cls.__doc__
        for name in NAMES[cls.__name__].values():
            assert getattr(cls, name).__doc__, name
