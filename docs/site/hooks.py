"""What MkDocs does to each page besides."""

import json
import pathlib
import re

WITHOUT_LINKS = re.compile(r"(<(a|h[1-6]|pre)\b.*?</\2>)", re.DOTALL)
CODE = re.compile(r"<code>([\w:]+)(\([^<()]*\))?</code>")


def on_env(env, **_):
    env.filters["breakable"] = make_breakable
    return env


def make_breakable(title):
    """Names in narrow columns break between their words."""
    return re.sub(r"(?<=[a-z])(?=[A-Z])|(?<=::)", "<wbr>", title)


def on_page_content(html, page, config, **_):
    if not page.url.startswith("reference/"):
        names = json.loads((pathlib.Path(config["docs_dir"]).parent / "names.json").read_text())
        html = link_names(html, names, "../" * page.url.count("/"))
    return re.sub(r"<table>.*?</table>", mend_table, html, flags=re.DOTALL)


def link_names(html, names, top):
    """Leads to the reference where a page names a function or class first."""
    linked = set()

    def link(match):
        address = names.get(match[1] + ("()" if match[2] else ""))
        if address is None or address in linked:
            return match[0]
        linked.add(address)
        return f'<a class="name" href="{top}reference/{address}">{match[0]}</a>'

    pieces = WITHOUT_LINKS.split(html)
    # Each piece that stays as it is is followed by the name of its element.
    return "".join(CODE.sub(link, piece) if at % 3 == 0 else piece
                   for at, piece in enumerate(pieces) if at % 3 != 2)


def mend_table(match):
    """Where a table is too wide, it scrolls and not the page. On a phone each row of several columns stands
    by itself; its cells tell the names of their columns then."""
    table = match[0]
    names = [re.sub(r"<.*?>", "", name).replace('"', "&quot;")
             for name in re.findall(r"<th\b[^>]*>(.*?)</th>", table.partition("</thead>")[0], re.DOTALL)]
    if len(names) > 2:
        table = re.sub(r"<tbody>.*</tbody>", lambda body: name_cells(body[0], names), table, flags=re.DOTALL)
        table = table.replace("<table>", '<table class="several">', 1)
    return f'<div class="scroll">{table}</div>'


def name_cells(body, names):
    def name_row(row):
        column = iter(names)
        return re.sub(r"<td", lambda _: f'<td data-column="{next(column)}"', row[0])

    return re.sub(r"<tr>.*?</tr>", name_row, body, flags=re.DOTALL)
