#!/usr/bin/env python3
"""Starts the TDS server from any folder: `python3 tests/tds/starte.py --hilfe`."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
sys.dont_write_bytecode = True

from tdsserver.__main__ import haupt  # noqa: E402

if __name__ == "__main__":
    sys.exit(haupt(sys.argv[1:]))
