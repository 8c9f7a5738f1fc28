"""Whatever is done to a model, what is saved reads back as it is, and foreign parts stay."""

import hypothesis
from hypothesis import strategies as st
from hypothesis.stateful import RuleBasedStateMachine, invariant, precondition, rule

import kvfound as kv

DOCUMENTS = (
    b'<?xml version="1.0"?>\n<SMOD><!-- kept -->\n<FOUNDATIONS CURRENT="A">\n'
    b'<FOUND NUMBER="1" NAME="A" FZAREA="1" OWN="kept"/>\n<OTHER kept="1"/>\n'
    b"<FOUND NUMBER='2' NAME='B' FZLINE='2'/>\n<FOUND NUMBER='5'\n NAME='C' FXAREA='7'/>\n"
    b"</FOUNDATIONS></SMOD>",
    b"<X><!-- kept --><Beddings><SurfaceBedding Number='1' Name='A' StiffnessZ='1'/>"
    b"<CurveBedding Number='2' Name='B' StiffnessZ='2'/>\n"
    b"<CurveBedding Number='5' Name='C' StiffnessX='7'/></Beddings></X>",
    b"number;name;areaX;areaY;areaZ;lineX;lineY;lineZ;current\r\n1;A;0;0;1,5;;;;true\r\n"
    b"2;B;;;;0;0;2;\r\n5;C;7;0;0;;;;\r\n",
    b'{"foundations": [{"number": 1, "name": "A", "areaX": 0.0, "areaY": 0.0, "areaZ": 1.0},'
    b'{"number": 2, "name": "B", "lineZ": 2.0}, {"number": 5, "name": "C", "areaX": 7.0}]}',
)
FORMS = (None, None, "csv", "json")

values = st.floats(min_value=0, max_value=1e9, allow_nan=False).map(lambda x: x + 1)
vectors = st.tuples(values, values, values)
picks = st.integers(min_value=0, max_value=100)


class Saving(RuleBasedStateMachine):
    @hypothesis.stateful.initialize(which=st.integers(min_value=0, max_value=3))
    def open(self, which):
        self.form = FORMS[which]
        self.model = kv.open(DOCUMENTS[which], form=self.form)
        self.out = []
        self.count = 0

    def pick(self, index):
        foundations = self.model.foundations
        return foundations[index % len(foundations)]

    @precondition(lambda self: len(self.model))
    @rule(index=picks, vector=vectors)
    def give_an_area(self, index, vector):
        self.pick(index).area = vector

    @precondition(lambda self: len(self.model))
    @rule(index=picks, vector=vectors)
    def give_a_line(self, index, vector):
        self.pick(index).line = vector

    @precondition(lambda self: len(self.model))
    @rule(index=picks)
    def rename(self, index):
        self.count += 1
        self.pick(index).name = f"ä{self.count}"

    @precondition(lambda self: len(self.model))
    @rule(index=picks)
    def renumber(self, index):
        self.count += 1
        self.pick(index).number = 100 + self.count

    @precondition(lambda self: len(self.model) > 1)
    @rule(index=picks)
    def remove(self, index):
        found = self.pick(index)
        if found is not self.model.current:
            self.out.append(self.model.remove(found))

    @precondition(lambda self: self.out)
    @rule()
    def bring_back(self):
        found = self.out.pop()
        if found.number not in self.model and found.name not in self.model:
            self.model.foundations.add(found)

    @rule(vector=vectors)
    def add(self, vector):
        self.count += 1
        self.model.new(f"n{self.count}", area=vector)

    @rule()
    def settle(self):
        """From here on it stands for what was written."""
        self.model = kv.open(self.model.to_bytes(), form=self.form)
        self.out = []

    @invariant()
    def reads_back(self):
        content = self.model.to_bytes()
        read = kv.open(content, form=self.form)
        wanted = {f.number: f for f in self.model}
        assert {f.number for f in read} == set(wanted) and len(read) == len(wanted)
        for found in read:
            other = wanted[found.number]
            assert found.name == other.name
            assert (found.area or (0, 0, 0)) == (other.area or (0, 0, 0))
            assert (found.line or (0, 0, 0)) == (other.line or (0, 0, 0))
        current = self.model.current
        assert (read.current and read.current.number) == (current and current.number)
        assert b"kept" in content or self.form is not None
        assert not kv.diff(self.model, read)


TestSaving = Saving.TestCase
TestSaving.settings = hypothesis.settings(
    max_examples=60, stateful_step_count=15, deadline=None, derandomize=True
)
