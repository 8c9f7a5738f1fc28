"""What MkDocs does to each page besides."""

import re


def on_page_content(html, **_):
    """Wide tables scroll by themselves, so that the page does not."""
    return re.sub(r"(<table.*?</table>)", r'<div class="scroll">\1</div>', html, flags=re.DOTALL)
