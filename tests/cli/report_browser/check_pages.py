"""Opens reports in a browser and looks at what is there:
    check_pages.py KVFOUND EXAMPLES AXE OUT [CHECK...]
makes them with the program KVFOUND of the documents in EXAMPLES, judges them with the script AXE of
axe-core among others, and leaves pages and screenshots in OUT."""

import sys
import unittest

from access_checks import AccessChecks
from large_checks import LargeChecks
from look_checks import LookChecks
from print_checks import PrintChecks
from search_checks import SearchChecks

__all__ = ["AccessChecks", "LargeChecks", "LookChecks", "PrintChecks", "SearchChecks"]

if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[5:]], verbosity=2)
