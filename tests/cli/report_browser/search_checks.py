"""Searching, filtering and sorting the rows of a page."""

from selenium.webdriver.common.keys import Keys

from pages import LARGE, STATIC, PageTest

MOST_TABS = 60

SORT_STATE = """
return [...document.querySelectorAll('th[aria-sort]')].map(
    head => head.querySelector('button').textContent.trim() + ' ' + head.getAttribute('aria-sort'))
"""
# What a field shows, by its name.
FIELD = """
const field = document.forms[0].elements[arguments[0]];
return field.type === 'checkbox' ? field.checked : field.value;
"""


class SearchChecks(PageTest):
    def tab_to(self, selector):
        for _ in range(MOST_TABS):
            self.browser.press(Keys.TAB)
            if self.run_script("return document.activeElement.matches(arguments[0])", selector):
                return
        self.fail(f"the key Tab does not lead to {selector}")

    def click(self, selector):
        self.run_script("document.querySelector(arguments[0]).click()", selector)

    def sort_by(self, part, column):
        self.click(f"table.{part} th:nth-child({column + 1}) button")

    def read_output(self):
        return self.run_script("return document.querySelector('#find output').textContent")

    def read_target(self):
        """The name in the row that the address leads to; it is within the window."""
        return self.run_script(
            "const row = document.querySelector(':target'), box = row.getBoundingClientRect();"
            "return box.top >= 0 && box.bottom <= innerHeight ? row.cells[1].textContent : null")

    # --- With the keyboard

    def test_a_name_is_typed_and_stands_in_the_address(self):
        self.open("model")
        self.tab_to("[name=q]")
        self.browser.press("found00")
        self.assertEqual(self.read_names("area"), ["Found0010", "Found0011", "Found0012"])
        self.assertEqual(self.read_names("line"), [])
        self.assertEqual(self.read_output(), "Only name “found00”: area 3 of 7, line 0 of 6.")
        self.assertEqual(self.read_hash(), "#q=found00")
        self.browser.press(Keys.ENTER)
        self.assertEqual(self.read_hash(), "#q=found00")

    def test_keys_reach_every_filter_and_take_all_back(self):
        self.open("model")
        self.tab_to("[name=number]")
        self.browser.press("4-7, 10")
        self.tab_to("[name=part]")
        self.browser.press("l")
        self.tab_to("[name=failing]")
        self.browser.press(Keys.SPACE)
        self.assertEqual(self.read_names("line"),
                         ["Sheet-pile wall, embedded", "Rückwand Kranbahn"])
        self.assertEqual(self.read_names("area"), [])
        self.assertEqual(self.read_hash(), "#number=4-7%2C+10&part=line&failing=1")
        self.tab_to("[type=reset]")
        self.browser.press(Keys.ENTER)
        self.assertEqual(len(self.read_names("area")), 7)
        self.assertEqual(len(self.read_names("line")), 6)
        self.assertEqual(self.read_hash(), "")
        self.assertEqual(self.read_output(), "")
        self.assertEqual(self.run_script(FIELD, "number"), "")

    def test_headings_sort_from_the_keyboard(self):
        self.open("model")
        self.tab_to(".area th:nth-child(2) button")
        self.browser.press(Keys.ENTER)
        self.assertEqual(self.run_script(SORT_STATE), ["Name ascending"])
        self.assertEqual(self.read_names("area")[0], "Floor on gravel \"0/45\"")
        self.browser.press(Keys.SPACE)
        self.assertEqual(self.run_script(SORT_STATE), ["Name descending"])

    def test_a_table_that_moves_sideways_does_so_from_the_keyboard(self):
        self.open("wide", 600)
        self.tab_to(".scroll")
        self.browser.press(*[Keys.ARROW_RIGHT] * 3)
        self.assertTrue(self.browser.run_async(
            "const done = arguments[0], box = document.querySelector('.scroll');"
            "setTimeout(() => done(box.scrollLeft > 0), 500)"))

    # --- Filters

    def test_a_link_leads_to_what_was_searched_for_and_sorted(self):
        self.open("model", fragment="#q=s&part=area&sort-area=z-down")
        self.assertEqual(self.read_names("area"),
                         ["Pile cap P1 <4 piles>", "Slab on dense sand", "Raft on stiff clay"])
        self.assertEqual(self.read_names("line"), [])
        self.assertEqual(self.run_script(FIELD, "q"), "s")
        self.assertEqual(self.run_script(FIELD, "part"), "area")
        self.assertEqual(self.run_script(SORT_STATE), ["z descending"])

    def test_a_link_holds_any_character(self):
        self.open("nasty")
        self.tab_to("[name=q]")
        self.browser.press("\"><img src=x")
        fragment = self.read_hash()
        self.assertEqual(self.read_names("line"), ["\"><img src=x onerror=alert(2)> &amp;"])
        self.open("nasty", fragment=fragment)
        self.assertEqual(self.read_names("line"), ["\"><img src=x onerror=alert(2)> &amp;"])
        self.assertEqual(self.count("img"), 0)

    def test_numbers_are_given_one_by_one_and_as_ranges(self):
        for asked, area, line in (("3", ["3"], []), ("1-3,9", ["3"], ["1", "2", "9"]),
                                  ("4 - 5", ["4", "5"], ["5"]), ("4–5", ["4", "5"], ["5"]),
                                  ("5-4,", ["4", "5"], ["5"]), ("11-", ["11", "12"], []),
                                  ("-5", [], [])):
            self.open("model", fragment=f"#number={asked}")
            self.assertEqual(self.read_column("area", 0), area, asked)
            self.assertEqual(self.read_column("line", 0), line, asked)
        self.open("nasty", fragment="#number=-12")
        self.assertEqual(self.read_column("line", 0), ["-12"])

    def test_what_is_no_number_is_told_and_not_asked_for(self):
        self.open("model", fragment="#number=4x&q=slab")
        self.assertEqual(self.read_names("area"), ["Slab on dense sand"])
        self.assertEqual(self.read_output(),
                         "Not asked for: number “4x”, since numbers are such as 1-9, 12. "
                         "Only name “slab”: area 1 of 7, line 0 of 6.")
        self.assertTrue(self.run_script(
            "return document.querySelector('[name=number]').matches('[aria-invalid=true]')"))
        self.open("model", fragment="#number=4")
        self.assertEqual(self.count("[aria-invalid]"), 0)

    def test_names_are_found_however_they_are_written(self):
        for asked in ("RÜCKWAND", "Ru\u0308ckwand", "rückwand  kran"):
            self.open("model", fragment=f"#q={asked}")
            self.assertEqual(self.read_names("line"), ["Rückwand Kranbahn"], asked)

    def test_what_an_address_cannot_mean_is_left_out(self):
        for fragment in ("#part=roof", "#generated=0", "#sort-area=w", "#sort-area=6", "#a=b"):
            self.open("model", fragment=fragment)
            self.assertEqual(self.read_column("area", 0), ["3", "4", "5", "8", "10", "11", "12"],
                             fragment)
            self.assertEqual(self.read_output(), "", fragment)

    def test_filters_leave_what_is_generated_failing_or_found_wrong(self):
        self.open("model", fragment="#generated=1")
        self.assertEqual(self.read_names("area"), ["Found0010", "Found0011", "Found0012"])
        self.open("model", fragment="#failing=1")
        self.assertEqual(self.read_column("area", 0), ["3", "4", "8", "10", "11", "12"])
        self.assertEqual(self.read_column("line", 0), ["2", "6", "7", "9"])
        self.open("nasty", fragment="#findings=1")
        self.assertEqual(self.read_column("area", 0), ["4", "13", "14", "15"])
        self.assertEqual(self.read_column("line", 0), ["6"])

    def test_a_later_address_is_followed(self):
        self.open("model", fragment="#q=strip")
        self.run_script("location.hash = '#part=area'")
        self.browser.run_async("setTimeout(arguments[0], 100)")
        self.assertEqual(len(self.read_names("area")), 7)
        self.assertEqual(self.run_script(FIELD, "q"), "")

    # --- Sorting

    def test_a_heading_sorts_its_table_up_and_down(self):
        self.open("model")
        self.sort_by("area", 6)  # z
        self.assertEqual(self.read_column("area", 6),
                         ["6200", "7450", "8712.5", "15000", "62500", "80000", "120000"])
        self.assertEqual(self.read_column("line", 0), ["1", "2", "5", "6", "7", "9"])
        self.assertEqual(self.run_script(SORT_STATE), ["z ascending"])
        self.assertEqual(self.read_hash(), "#sort-area=z")
        self.sort_by("area", 6)
        self.assertEqual(self.read_column("area", 6)[0], "120000")
        self.assertEqual(self.run_script(SORT_STATE), ["z descending"])
        self.assertEqual(self.read_hash(), "#sort-area=z-down")

    def test_what_is_absent_stands_last_either_way(self):
        self.open("model")
        for values in (["1850.5", "3000", "3750", "125000", "–", "–"],
                       ["125000", "3750", "3000", "1850.5", "–", "–"]):
            self.sort_by("line", 8)
            self.assertEqual(self.read_column("line", 8), values)

    def test_infinities_and_what_is_no_number_stand_at_the_ends_of_a_sorted_column(self):
        self.open("nasty")
        for values in (["-inf", "0", "0", "0", "0", "1", "2", "inf", "nan"],
                       ["inf", "2", "1", "0", "0", "0", "0", "-inf", "nan"]):
            self.sort_by("area", 5)  # y
            self.assertEqual(self.read_column("area", 5), values)

    def test_names_are_sorted_by_the_numbers_in_them(self):
        self.open("many")
        self.sort_by("area", 1)
        self.assertEqual(self.read_names("area")[4:6], ["Bedding of slab 10", "Bedding of slab 12"])

    def test_a_name_that_looks_like_no_number_is_sorted_as_a_name(self):
        self.open("nasty")
        self.sort_by("area", 1)
        names = self.read_names("area")
        self.assertEqual(names.index("nan"), names.index("Current") + 2)

    # --- Links within the page

    def test_a_finding_leads_to_its_row_and_back(self):
        self.open("nasty")
        self.click(".findings a")
        self.assertEqual(self.read_target(), "Current")
        self.assertEqual(self.run_script(
            "const link = document.querySelector(':target a');"
            "return [link.textContent, link.getAttribute('href')]"), ["4 findings", "#findings"])

    def test_a_finding_leads_to_its_row_also_where_that_is_filtered_away(self):
        self.open("nasty", fragment="#q=zero")
        self.assertEqual(self.read_names("area"), ["Zero"])
        self.click(".findings a")
        self.browser.run_async("setTimeout(arguments[0], 100)")
        self.assertEqual(self.read_target(), "Current")
        self.assertEqual(self.run_script(FIELD, "q"), "")

    # --- Rows that are made when they are looked at

    def test_a_row_that_is_made_leads_to_its_findings(self):
        self.open("large", fragment="#number=3334")
        self.assertEqual(self.run_script(
            "const link = document.querySelector('.line tbody a');"
            "return [link.parentElement.textContent, link.textContent, link.getAttribute('href')]"),
            ["1 finding", "1 finding", "#findings"])

    def test_a_link_to_a_number_leads_to_it_among_thousands(self):
        self.open("large")
        self.click(".odd a")
        self.browser.run_async("setTimeout(arguments[0], 100)")
        self.assertEqual(self.read_hash(), "#number=3334")
        self.assertEqual(self.read_column("line", 0), ["3334"])
        self.assertEqual(self.read_column("area", 0), [])

    def test_more_rows_are_shown_by_and_by(self):
        self.open("large")
        self.assertEqual(len(self.read_names("area")), 100)
        rest = self.run_script("return document.querySelector('.rest').textContent")
        self.assertEqual(rest, "100 of 4999 rows. Show 100 more")
        self.run_script("document.querySelector('.rest button').focus()")
        self.browser.press(Keys.ENTER)
        self.assertEqual(len(self.read_names("area")), 200)
        self.assertEqual(self.run_script("return document.activeElement.textContent"),
                         "Show 100 more")
        self.open("large", fragment="#number=4900-4999")
        self.assertEqual(len(self.read_names("area")), 100)
        self.assertTrue(self.run_script("return document.querySelector('.rest').hidden"))

    def test_all_values_are_sorted_and_not_only_those_that_are_shown(self):
        self.open("large")
        self.sort_by("line", 0)
        self.sort_by("line", 0)
        self.assertEqual(self.read_column("line", 0)[:2], [str(LARGE), str(LARGE - 1)])
        self.sort_by("line", 4)  # x
        self.assertEqual(self.read_column("line", 4)[0], "0.5")
        self.sort_by("line", 1)
        self.assertEqual(self.read_names("line")[9], "Bedding of slab 10")
        self.sort_by("line", 8)  # the rotation, which one has not
        self.sort_by("line", 8)
        self.assertEqual(self.read_column("line", 8)[0], "15771.5")

    def test_rows_that_are_made_look_like_those_that_are_in_a_page(self):
        rows = ("return [...document.querySelectorAll('.values tbody tr')].slice(0, 20).map("
                "row => row.outerHTML.replace(/<br>|\\n/g, '').replace(/\\.0%/g, '%'))")
        self.open("static")
        static = self.run_script(rows)
        self.assertEqual(self.count("pre#data"), 0)
        self.open("large", fragment=f"#number=1-{STATIC}")
        self.assertEqual(self.run_script(rows), static)
