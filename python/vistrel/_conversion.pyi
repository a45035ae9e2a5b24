from collections.abc import Sequence
from types import TracebackType
from typing import Any, Literal, Protocol, SupportsFloat, SupportsIndex

import numpy as np
import numpy.typing as npt
from typing_extensions import Self

class _HasArrayInterface(Protocol):
    @property
    def __array_interface__(self) -> dict[str, Any]: ...

# Python 3.11 has no type for objects with a buffer, such as mmap.mmap: hence Any below.
_Samples = npt.NDArray[Any] | memoryview | _HasArrayInterface
_Integers = Sequence[SupportsIndex] | npt.NDArray[np.integer[Any]]

def convert(
    raw: _Samples | Any,
    phase: str,
    bits: SupportsIndex | None = ...,
    algorithm: str = ...,
    format: str | None = ...,
    *,
    region: _Integers | None = ...,
    binning: SupportsIndex = ...,
    bin_mode: Literal["sum", "mean"] = ...,
    window: SupportsIndex = ...,
    curve: SupportsIndex | None = ...,
    table: _Integers | None = ...,
    black: SupportsIndex | _Integers | None = ...,
    white: SupportsIndex | None = ...,
    gains: Literal["gray-world"] | Sequence[SupportsFloat] | npt.NDArray[Any] | None = ...,
    edges: Literal["native", "padded"] = ...,
    threshold: SupportsIndex = ...,
    gray: Literal["luma", "raw"] = ...,
    truncate_to: SupportsIndex | None = ...,
    excess: Literal["reject", "mask"] = ...,
    align: Literal["low", "high"] = ...,
    orientation: SupportsIndex = ...,
    threads: SupportsIndex = ...,
    layout: Literal["hwc", "chw"] = ...,
    dtype: npt.DTypeLike = ...,
    out: npt.NDArray[Any] | None = ...,
    stream: Stream | None = ...,
    dark: _Samples | Any | None = ...,
    flat: _Samples | Any | None = ...,
    hot: npt.NDArray[np.integer[Any]] | Sequence[_Integers] | None = ...,
) -> npt.NDArray[Any]: ...
def unpack(
    buffer: _Samples | Any,
    pixel_format: str,
    width: SupportsIndex,
    height: SupportsIndex,
    stride: SupportsIndex | None = ...,
    continuous: bool = ...,
) -> npt.NDArray[Any]: ...
def trim() -> None: ...

class Stream:
    def __init__(self, wait: bool = ...) -> None: ...
    def __enter__(self) -> Self: ...
    def __exit__(
        self,
        *exception: type[BaseException] | BaseException | TracebackType | None,
    ) -> None: ...
    def release(self) -> None: ...
    def trim(self) -> None: ...
