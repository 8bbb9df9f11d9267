"""Texts and paths as the library takes them."""

from __future__ import annotations

import os
from typing import Any

__all__ = ["plain_text", "whole_path"]


def plain_text(what: str, value: Any) -> str:
    """A text that has a form in UTF-8 and no null character, in which names and paths would end."""
    if not isinstance(value, str):
        raise TypeError(f"{what} is a text, not {value!r}")
    try:
        value.encode()
    except UnicodeEncodeError:
        raise ValueError(f"{what} {value!r} has half of a character") from None
    if "\0" in value:
        raise ValueError(f"{what} {value!r} has a null character")
    return value


def whole_path(path: Any) -> str:
    """An absolute path, which a change of the current directory leaves as it is."""
    return os.path.abspath(plain_text("the path", os.fspath(path)))
