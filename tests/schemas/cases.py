"""Documents that the schemas take and documents that they refuse, for each rule that they declare."""

import html
import pathlib
from typing import NamedTuple

from declarations import find_schema, read_elements

# Texts of each type, and texts that are none.
TEXTS = {
    "KvFoundInteger": (["7", " -3 ", "+7", "\n8\t", "007", "-0", "2147483647", "-2147483648"],
                       ["", " ", "7.0", "1e3", "7a", "2147483648", "-2147483649", "true", "0x1", "+-1", "1 2",
                        "99999999999", "\u0663"]),
    "KvFoundDouble": (["0", " 1\n", "-0.5", "+7", ".5", "5.", "1e3", "1E-300", "1.5e+08", "1e400", "inf", "-inf",
                       "+INF", "Infinity", "nan", "-nan", "NaN", "nan(7)", "12345678901234567890123456789"],
                      ["", " ", "1,5", "12abc", "0x10", "1e", "e3", ".", "+-1", "--1", "1 2", "infin", "1.5.2", "-",
                       "1e3.5", "none", "\u0663"]),
    "KvFoundFailureNumber": (["-1", "0", "1", "+1", "7", "-2147483648"], ["", "tension", "1.0", "1,", "2147483648"]),
    "KvFoundFailureText": (["tension", "none", "compression", ""],
                           ["Tension", " tension", "none ", "NONE", "1", "-1", "pull", " "]),
    "KvFoundOneDecimal": (["0.0", "-0.0", "1234.6", "1" * 309 + ".0", "inf", "-inf", "nan", "-nan"],
                          ["", "1", "1.25", "1.", ".5", "1e3", "1.0e3", "+1.0", "1,0", "Inf"]),
    "KvFoundTwoDecimals": (["0.00", "-0.12", "1234.56", "inf", "-nan"],
                           ["", "1", "1.2", "1.234", "1.", "1e3", "+1.00", "1,00", "NAN"]),
    "xs:string": (["", " ", "A", "<&>\"'", "\t\n", "\u00fc\U0001f600"], []),
}

# Where an element with attributes stands, and these, in a document that has nothing else.
PLACES = {
    "legacy": {"FOUNDATIONS": "<SMOD><FOUNDATIONS{}></FOUNDATIONS></SMOD>",
               "FOUND": "<SMOD><FOUNDATIONS><FOUND{}></FOUND></FOUNDATIONS></SMOD>"},
    "exchange": {"CurveBedding": "<Exchange><Beddings><CurveBedding{}></CurveBedding></Beddings></Exchange>",
                 "SurfaceBedding": "<Beddings><SurfaceBedding{}></SurfaceBedding></Beddings>"},
    "exchange-1.0": {"Bedding": "<Exchange><Beddings><Bedding{}></Bedding></Beddings></Exchange>",
                     "CurveBedding": "<Beddings><CurveBedding{}></CurveBedding></Beddings>",
                     "SurfaceBedding": "<Beddings><SurfaceBedding{}></SurfaceBedding></Beddings>"},
    "kvml": {"BeddingArea": "<Kvml><Beddings><BeddingArea{}></BeddingArea></Beddings></Kvml>",
             "BeddingBeam": "<Kvml><Beddings><BeddingBeam{}></BeddingBeam></Beddings></Kvml>"},
}

AREA = '<BeddingArea Number="1" Name="" ksx="1.0" ksy="1.0" ksz="1.0" Failure="" Tangential="0.00"/>'
BEAM = '<BeddingBeam Number="1" Name="" ksx="1.0" ksy="1.0" ksz="1.0" ksxx="1.0" Failure="" Tangential="0.00"/>'

# What no single attribute shows.
RIGHT = {
    "legacy": [
        '<SMOD/>', '<SMOD VERSION="12">text<NODES><NODE/></NODES><FOUNDATIONS/></SMOD>',
        '<SMOD><FOUND X="1">a host\'s</FOUND></SMOD>', '<SMOD><FOUNDATIONS> <!-- --> <?host x?> </FOUNDATIONS></SMOD>',
        '<SMOD><FOUNDATIONS><FOUND NUMBER="1"/><FOUND NUMBER="2"/><FOUND NUMBER="-1"/></FOUNDATIONS></SMOD>',
        '<SMOD><FOUNDATIONS><FOUND NUMBER="1">\n <!-- --></FOUND></FOUNDATIONS></SMOD>',
        '<SMOD><FOUNDATIONS><FOUND xml:space="preserve" NUMBER="1"/></FOUNDATIONS></SMOD>',
        '<SMOD><A><B><FOUNDATIONS CURRENT="A"><FOUND NUMBER="1"/></FOUNDATIONS></B></A></SMOD>',
        '<SMOD><FOUNDATIONS><FOUND NUMBER="1" NAME="A"/><FOUND NUMBER="2" NAME="A"/></FOUNDATIONS></SMOD>'],
    "exchange": [
        '<Exchange/>', '<Exchange Version="2.0">text<Other><CurveBedding Number="1" Name="A"/></Other></Exchange>',
        '<Beddings Level="1"/>', '<Exchange><Beddings> <!-- --> </Beddings><Beddings/></Exchange>',
        '<Beddings xmlns:h="urn:host" h:a="1"><CurveBedding h:a="1" Number="1" Name="A"/></Beddings>',
        '<Beddings><SurfaceBedding Number="1" Name="A"/><CurveBedding Number="1" Name="A"> </CurveBedding></Beddings>'],
    "exchange-1.0": [
        '<Exchange/>', '<Exchange Version="1.0">text<Other><Bedding Name="A"/></Other></Exchange>',
        '<Beddings Level="1"/>', '<Beddings xmlns:h="urn:host"><Bedding h:a="1" Name="A"> </Bedding></Beddings>',
        '<Beddings><CurveBedding Number="1" Name="A"/><Bedding Name="A"/></Beddings>',
        '<Beddings><Bedding Name="A"/><SurfaceBedding Number="2" Name="B"/></Beddings>'],
    "kvml": [
        '<Kvml/>', '<Kvml Version="1">text<Other/><Beddings/><Beddings/></Kvml>', '<Beddings/>',
        f'<Kvml><Beddings>{AREA}{AREA}{BEAM}{BEAM}</Beddings></Kvml>', f'<Beddings>{BEAM}</Beddings>',
        '<Beddings xmlns:h="urn:host" h:a="1"/>'],
}
WRONG = {
    "legacy": [
        '<FOUND NUMBER="1"/>', '<smod/>', '<Exchange/>', '<SMOD><FOUNDATIONS><found NUMBER="1"/></FOUNDATIONS></SMOD>',
        '<SMOD><FOUNDATIONS><FOUND NUMBER="1"/><REMARK/></FOUNDATIONS></SMOD>',
        '<SMOD><FOUNDATIONS>text</FOUNDATIONS></SMOD>', '<SMOD><FOUNDATIONS><FOUNDATIONS/></FOUNDATIONS></SMOD>',
        '<SMOD><FOUNDATIONS><FOUND NUMBER="1"/><FOUND NUMBER="1"/></FOUNDATIONS></SMOD>',
        '<SMOD><FOUNDATIONS><FOUND NUMBER="1"/><FOUND NUMBER="+01"/></FOUNDATIONS></SMOD>',
        '<SMOD xmlns:h="urn:host"><FOUNDATIONS><h:FOUND NUMBER="1"/></FOUNDATIONS></SMOD>'],
    "exchange": [
        '<CurvedBedding/>', '<SMOD/>', '<Beddings>text</Beddings>', '<Beddings><Bedding Name="A"/></Beddings>',
        '<Beddings><curveBedding Number="1" Name="A"/></Beddings>', '<Beddings><Beddings/></Beddings>',
        '<Beddings><SurfaceBedding Number="1" Name="A" StiffnessXX="1"/></Beddings>',
        '<Exchange><Other/><Beddings><Other/></Beddings></Exchange>'],
    "exchange-1.0": [
        '<SMOD/>', '<Beddings>text</Beddings>', '<Beddings><Bedding Number="1" Name="A"/></Beddings>',
        '<Beddings><bedding Name="A"/></Beddings>', '<Beddings><Other/></Beddings>',
        '<Beddings><Bedding Name="A" StiffnessX="1"/></Beddings>'],
    "kvml": [
        '<Exchange/>', f'<Beddings>{BEAM}{AREA}</Beddings>', '<Beddings>text</Beddings>', '<Beddings Level="1"/>',
        '<Beddings><CurveBedding/></Beddings>', f'<Beddings>{BEAM}<Other/></Beddings>',
        f'<Beddings>{AREA.replace(" ksx", " ksxx")}</Beddings>'],
}

# What only libxml2 looks at: Xerces passes over all of an element that is not declared.
DEEP = ['<SMOD><A><FOUNDATIONS><FOUND/></FOUNDATIONS></A></SMOD>',
        '<SMOD><A><B><FOUNDATIONS><FUND/></FOUNDATIONS></B></A></SMOD>']


class Case(NamedTuple):
    text: str
    valid: bool
    forXerces: bool = True


def write_attributes(values):
    # Line ends and tabs as references, since a parser makes blanks of others.
    return "".join(f' {name}="{html.escape(value)}"'.replace("\n", "&#10;").replace("\t", "&#9;")
                   for name, value in values.items())


def list_cases_of_element(element, place):
    texts = {a.name: TEXTS[a.type] for a in element.attributes}
    every = {name: right[0] for name, (right, _) in texts.items()}
    needed = {a.name: every[a.name] for a in element.attributes if a.required}

    def make(values, valid):
        return Case(place.format(write_attributes(values)), valid)

    yield make(every, True)
    yield make(dict(reversed(every.items())), True)
    yield make(needed, True)
    yield Case(place.format(write_attributes(needed) + ' xmlns:h="urn:host" h:a="1"'), True)
    for name in needed:
        yield make({other: value for other, value in every.items() if other != name}, False)
    seen = set()
    for attribute in element.attributes:
        name = attribute.name
        # All texts for one attribute of each type, and two for the others.
        some = 2 if attribute.type in seen else None
        seen.add(attribute.type)
        right, wrong = texts[name]
        yield from (make({**needed, name: value}, True) for value in right[:some])
        yield from (make({**needed, name: value}, False) for value in wrong[:some])
        yield make({**every, name.swapcase(): every[name]}, False)
    yield make({**every, "Colour": "red"}, False)
    if element.name != "FOUNDATIONS":
        for inside in ("text", "<Other/>", "<!-- -->0"):
            yield Case(place.format(write_attributes(every)).replace("></", f">{inside}</", 1), False)


def list_cases(schemas, form):
    elements = read_elements(find_schema(pathlib.Path(schemas), form))
    cases = [case for name, place in PLACES[form].items() for case in list_cases_of_element(elements[name], place)]
    cases += [Case(text, True) for text in RIGHT[form]] + [Case(text, False) for text in WRONG[form]]
    if form == "legacy":
        cases += [Case(text, False, forXerces=False) for text in DEEP]
    return cases
