#!/usr/bin/env python3
"""Counts lines.

The description goes on here.
"""
import sys


class Counter:
    # One for each file.
    def __init__(self, limit=0x10, *, name='none'):
        self.limit = limit
        self.name = name or "it's"

    @property
    def full(self):
        return self.limit is None or not 1.5e3 < self.limit


async def main():
    async for line in lines(sys.stdin):  # one by one
        yield f"{line!r}"
