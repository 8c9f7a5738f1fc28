"""Documents that a report must stand: one with all that is odd, some that are large, one empty."""

import random

BEGIN = '<?xml version="1.0" encoding="UTF-8"?>\n<SMOD>\n<FOUNDATIONS CURRENT="Current">\n'
END = "</FOUNDATIONS>\n</SMOD>\n"

NASTY = """\
<FOUND NUMBER="1" NAME="&lt;script&gt;alert(1)&lt;/script&gt;" FZAREA="1"/>
<FOUND NUMBER="2" NAME="&quot;&gt;&lt;img src=x onerror=alert(2)&gt; &amp;amp;" FZLINE="10"/>
<FOUND NUMBER="3" NAME="&lt;/title&gt;&lt;/style&gt;&lt;/svg&gt;&lt;!--" FXAREA="1" FZAREA="2"/>
<FOUND NUMBER="4" NAME="Current" FXAREA="-5" FYAREA="inf" FZAREA="nan" FAILZAREA="7"/>
<FOUND NUMBER="5" NAME="Zero" FXAREA="0" FYAREA="0" FZAREA="0"/>
<FOUND NUMBER="6" NAME="Failures only" FAILXLINE="-1" FAILYLINE="1" FAILZLINE="-12"/>
<FOUND NUMBER="7" NAME="Rotation only" FXX="12345.6789012345"/>
<FOUND NUMBER="8" NAME="Tiny and huge" FXAREA="5e-324" FYAREA="1" FZAREA="1.7976931348623157e308"/>
<FOUND NUMBER="9" NAME="A name that is far too long for its place, twice over" FZLINE="0.1" FXX="1e-7"/>
<FOUND NUMBER="2147483647" NAME="WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW" FZLINE="3" IsGenerated="1"/>
<FOUND NUMBER="-12" NAME="&#x645;&#x633;&#x62A;&#x648;&#x64A; 12" FZLINE="4" FAILZLINE="1"/>
<FOUND NUMBER="12" NAME="&#x57FA;&#x790E;&#x306E;&#x57FA;&#x790E;&#x306E;&#x57FA;&#x790E;&#x306E;&#x57FA;&#x790E;&#x306E;&#x57FA;&#x790E;" FZLINE="5"/>
<FOUND NUMBER="13" NAME="a&#10;b&#9;c&#x202E;d" FZLINE="6"/>
<FOUND NUMBER="13" NAME="Current" FZLINE="seven" FZLNE="7"/>
<FOUND NUMBER="14" NAME=" &#x200B;" FYAREA="-inf"/>
<FOUND NUMBER="15" NAME="nan" FYAREA="nan"/>
<FOUND NUMBER="16" NAME="A%s" FYAREA="2"/>
""" % ("&#x301;" * 3000)

# Values as long as pictures show them, failures in all directions, and names of wide letters.
WIDE = """\
<FOUND NUMBER="9999" NAME="Current" FXAREA="150000.25" FYAREA="123456.78" FZAREA="888888.88" \
FAILZAREA="-1" FXLINE="150000.25" FYLINE="123456.78" FZLINE="888888.88" FXX="123456.78" \
FAILXLINE="-1" FAILYLINE="1" FAILZLINE="-1" IsGenerated="1" X="1" Y="2"/>
<FOUND NUMBER="2" NAME="%s" FXAREA="-1.234e-300" FYAREA="-1.79e+308" FZAREA="-0.00012345678" \
FAILZAREA="1" FXLINE="-1.23e-300" FYLINE="-123456.789" FZLINE="-123456.789" FXX="-123456.789" \
FAILXLINE="2147483647" FAILYLINE="-2147483648" FAILZLINE="-2147483648" IsGenerated="1"/>
<FOUND NUMBER="3" NAME="%s" FXAREA="150000.25" FYAREA="123456.78" FZAREA="888888.88" FXLINE="1"/>
<FOUND NUMBER="2147483647" NAME="%s" FXAREA="1" FXLINE="1" FAILXLINE="1"/>
<FOUND NUMBER="4" NAME="%s" FXAREA="1" FXLINE="1" FAILXLINE="1"/>
""" % ("W" * 40, "&#x416;" * 40, "@%" * 20, "&#x57FA;" * 40)

# Texts of a model and what stands for them once it is changed.
CHANGES = (
    ('NAME="Slab on dense sand"', 'NAME="Slab on very dense sand, compacted"'),
    ('FZAREA="15000" FAILZAREA="-1"', 'FZAREA="16250" FAILZAREA="1"'),
    ('FXLINE="9000" FYLINE="9000"', 'FXLINE="90000" FYLINE="-9000"'),
    ('FXX="1850.5"', 'FXX="925.25"'),
    ('FZAREA="62500"', 'FZAREA="62500.00001"'),
    ('<FOUND NUMBER="12" FXAREA="871.25"', '<FOUND NUMBER="13" NAME="Ramp" FXLINE="871.25"'),
)


def write(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def write_nasty(path):
    write(path, BEGIN + NASTY + END)


def write_wide(path):
    write(path, BEGIN + WIDE + END)


def write_long(path, count):
    """Values of many digits, as they come from other units and from sums, and all failures."""
    numbers = random.Random(2)
    lines = []
    for i in range(1, count + 1):
        sizes = [numbers.uniform(1e6, 1e8) for _ in range(7)]
        texts = [f"{size:.6f}".rstrip("0") if i % 2 else repr(size) for size in sizes]
        names = ("FXAREA", "FYAREA", "FZAREA", "FXLINE", "FYLINE", "FZLINE", "FXX")
        values = " ".join(f'{name}="{text}"' for name, text in zip(names, texts))
        lines.append(f'<FOUND NUMBER="{i}" NAME="Bedding {i} under the machine hall" {values} '
                     'FAILXLINE="-1" FAILYLINE="1" FAILZLINE="-1" FACLINE="0.12345"/>\n')
    lines.append('<FOUND NUMBER="900" NAME="Sum" FXAREA="13445080.768799" '
                 'FXLINE="13445080.768799" FXX="1234567.8901234567"/>\n')
    write(path, BEGIN + "".join(lines) + END)


def write_changed(path, source):
    """Values that grow, shrink and change their sign, another failure, another name, one foundation
    more and one less."""
    with open(source, encoding="utf-8") as file:
        text = file.read()
    for before, after in CHANGES:
        assert before in text, before
        text = text.replace(before, after)
    write(path, text)


def write_many(path, count, share_of_both=20):
    """Half of them for areas, half for lines, every so many for both, and one far from all
    others, of which something is not read."""
    numbers = random.Random(1)
    lines = []
    for i in range(1, count + 1):
        size = round(10 ** numbers.uniform(3, 4.5), 1)
        turn = f"{size / 2:.10g}"
        push = f"{size / 10:.4g}"
        area = f' FXAREA="{push}" FYAREA="{push}" FZAREA="{size:.10g}" FAILZAREA="-1"'
        sides = f' FXLINE="{size / 5:.4g}" FYLINE="{size / 4:.4g}"'
        line = f'{sides} FZLINE="{size:.10g}" FXX="{turn}"'
        if i == count * 2 // 3 + 1:
            area, line = "", ' FXLINE="0.5" FYLINE="9000" FZLINE="9000" COLOUR="red"'
        parts = area + line if not area or i % share_of_both == 0 else area if i % 2 == 0 else line
        lines.append(f'<FOUND NUMBER="{i}" NAME="Bedding of slab {i}"{parts}/>\n')
    write(path, BEGIN + "".join(lines) + END)


def write_empty(path):
    write(path, BEGIN + END)
