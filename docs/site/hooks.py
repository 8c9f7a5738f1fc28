"""What MkDocs does to each page besides."""

import re


def on_page_content(html, **_):
    return re.sub(r"<table>.*?</table>", mend_table, html, flags=re.DOTALL)


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
