"""Hypothesis keeps nothing: failures are repeated by the seed that they print."""

from hypothesis import settings

settings.register_profile("vistrel", database=None, print_blob=True)
settings.load_profile("vistrel")
