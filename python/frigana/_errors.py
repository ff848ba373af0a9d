"""What goes wrong, as exceptions that can be pickled and carry what a program needs to know."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Optional, Sequence, Tuple, Type, Union


@dataclass(frozen=True)
class Problem:
    """One thing that is wrong with a request."""

    text: str
    line: int = 0
    parameter: Optional[str] = None
    limit: Optional[str] = None


class FriganaError(Exception):
    """Whatever this package refuses.

    code       number of the refusal, or a word
    parameter  key of the parameter that caused it, where it was one
    limit      what is allowed for it, as text
    """

    def __init__(
        self,
        text: str,
        code: Union[int, str] = "",
        parameter: Optional[str] = None,
        limit: Optional[str] = None,
        problems: Sequence[Problem] = (),
    ) -> None:
        super().__init__(text)
        self.text = text
        self.code = code
        self.parameter = parameter
        self.limit = limit
        self.problems: Tuple[Problem, ...] = tuple(problems)

    def __reduce__(self) -> Tuple[Type["FriganaError"], Tuple[Any, ...]]:
        return type(self), (self.text, self.code, self.parameter, self.limit, self.problems)

    def __eq__(self, other: object) -> bool:
        return type(self) is type(other) and self.__reduce__()[1] == other.__reduce__()[1]

    def __hash__(self) -> int:
        return hash((type(self), self.text, self.code))


class RequestError(FriganaError):
    """A request that cannot be read; `problems` has all that is wrong with it."""


class RefusedError(FriganaError):
    """A request that the calculation refused."""


class StateError(FriganaError):
    """A state that does not exist or was not found."""


class StudyError(FriganaError):
    """A study that cannot be read or could not be brought to its end."""


class StateWarning(UserWarning):
    """States without an answer among others, or outside the range that their equations were made for."""
