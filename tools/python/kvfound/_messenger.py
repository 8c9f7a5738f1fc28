"""What reading an exchange document tells."""

from __future__ import annotations


class ReadMessenger:
    """Told what :meth:`FoundationManager.read_exchange` reads and refuses.

    Derive from it and override what you want to hear; any other object with at least one of these
    methods does as well. Each element that is refused is told once, with the reason, and skipped.

    The messages come in the order of the document, when it has been read and before its foundations
    are in the manager, whose list cannot be changed meanwhile. When one raises, nothing is added.
    """

    __module__ = "kvfound"

    def on_read_finished(self, count: int) -> None:
        """The last message of every element that holds beddings: so many were read from it."""

    def on_unknown_element(self, element_name: str) -> None:
        """An element that is no bedding of this version."""

    def on_missing_name(self, number: int) -> None:
        """The curve or surface bedding of this number has no name."""

    def on_missing_bedding_name(self) -> None:
        """A bedding of version 1.0 has no name."""

    def on_empty_name(self, number: int, name: str) -> None:
        """The curve or surface bedding of this number has an empty name."""

    def on_empty_bedding_name(self, name: str) -> None:
        """A bedding of version 1.0 has an empty name."""

    def on_missing_number(self, element_name: str) -> None:
        """A curve or surface bedding has no number that can be read."""

    def on_invalid_number(self, element_name: str, number: int) -> None:
        """The number of a curve or surface bedding is below 1 or in use already."""

    def on_name_changed(self, old_name: str, new_name: str) -> None:
        """The name is in use already; the bedding is read under the new name."""
