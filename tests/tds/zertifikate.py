#!/usr/bin/env python3
"""Certificates for the server, made with the command openssl: `python3 tests/tds/zertifikate.py ORDNER`.

    stelle.pem, fremd.pem                the certificates of two authorities
    richtig.pem                          key and certificate for localhost and 127.0.0.1, signed by "stelle"
    unbekannt.pem                        the same, signed by "fremd"
    anderer.pem, abgelaufen.pem          signed by "stelle", but for another name; run out
"""

from __future__ import annotations

import shutil
import subprocess
import sys
from pathlib import Path

HIER = "DNS:localhost,IP:127.0.0.1"
_SCHLUESSEL = ["-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes"]


def ohne_openssl() -> str:
    """Why no certificate can be made here; empty where it can."""
    return "" if shutil.which("openssl") else "openssl fehlt"


def _openssl(*worte: str | int | Path) -> None:
    subprocess.run(["openssl", *map(str, worte)], check=True, capture_output=True)


class Zertifikate:
    """Makes them in a folder."""

    def __init__(self, ordner: Path) -> None:
        self._ordner = ordner
        for stelle in ("stelle", "fremd"):
            _openssl("req", "-x509", *_SCHLUESSEL, "-days", "2", "-subj", f"/CN={stelle}",
                     "-keyout", ordner / f"{stelle}.key", "-out", ordner / f"{stelle}.pem")  # fmt: skip
        self._unterschreibe("richtig", "stelle", HIER)
        self._unterschreibe("unbekannt", "fremd", HIER)
        self._unterschreibe("anderer", "stelle", "DNS:anderer.example")
        self._unterschreibe("abgelaufen", "stelle", HIER, tage=-1)

    def pfad(self, name: str) -> Path:
        return self._ordner / f"{name}.pem"

    def _unterschreibe(self, name: str, stelle: str, namen: str, tage: int = 2) -> None:
        schluessel, antrag, urkunde, zusatz = (self._ordner / f"{name}.{ende}" for ende in ("key", "csr", "crt", "ext"))
        zusatz.write_text(f"subjectAltName={namen}\n", encoding="ascii")
        _openssl("req", *_SCHLUESSEL, "-subj", f"/CN={name}", "-keyout", schluessel, "-out", antrag)
        _openssl("x509", "-req", "-in", antrag, "-CA", self.pfad(stelle), "-CAkey", self._ordner / f"{stelle}.key",
                 "-CAcreateserial", "-days", tage, "-extfile", zusatz, "-out", urkunde)  # fmt: skip
        self.pfad(name).write_bytes(schluessel.read_bytes() + urkunde.read_bytes() + self.pfad(stelle).read_bytes())


if __name__ == "__main__":
    Zertifikate(Path(sys.argv[1]))
