"""What the package raises and warns of."""

from __future__ import annotations

from typing import Sequence


class Error(Exception):
    """Base of everything that KelStd raises. ``details`` has what there is to list, one a line."""

    def __init__(self, text: str, details: Sequence[str] = ()) -> None:
        super().__init__(text)
        self.details = tuple(details)


class NotReadyError(Error):
    """PROJ, the home directory or the library of coordinate systems cannot be used."""


class SystemNotFoundError(Error, LookupError):
    """There is no coordinate system, or no geoid model, of that name, code or file."""


class SystemRefusedError(Error):
    """A system is not used: its document is in doubt, or its import needs a decision."""


class FitRefusedError(Error):
    """Control points are not fitted or checked."""


class ValueRefusedError(Error, ValueError):
    """A text or a number is no such value."""


class KelstdWarning(UserWarning):
    """What has to be known before numbers are relied on."""
