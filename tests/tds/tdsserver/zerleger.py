"""Cuts SQL texts into pieces and batches into statements, so that nothing inside a literal is taken for a keyword."""

from __future__ import annotations

import re
from dataclasses import dataclass

LEER, KOMMENTAR, LITERAL, NAME, WORT, ZAHL, ZEICHEN = "leer", "kommentar", "literal", "name", "wort", "zahl", "zeichen"

_MUSTER = re.compile(
    r"""(?P<leer>\s+)
      |(?P<kommentar>--[^\n]*|/\*.*?(?:\*/|\Z))
      |(?P<literal>[nN]?'(?:[^']|'')*(?:'|\Z))
      |(?P<name>"(?:[^"]|"")*(?:"|\Z)|\[(?:[^\]]|\]\])*(?:\]|\Z))
      |(?P<zahl>0[xX][0-9a-fA-F]*|(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?)
      |(?P<wort>(?:@@?|\#)?[^\W\d][\w$\#@]*)
      |(?P<zeichen>.)""",
    re.VERBOSE | re.DOTALL,
)


@dataclass(frozen=True)
class Stueck:
    """One piece of a text; `beginn` and `ende` count from the start of the whole text."""

    art: str
    text: str
    beginn: int
    ende: int

    def ist(self, *worte: str) -> bool:
        return self.art in (WORT, ZEICHEN) and self.text.upper() in worte


def zerlege(text: str) -> list[Stueck]:
    return [Stueck(t.lastgroup or ZEICHEN, t.group(), t.start(), t.end()) for t in _MUSTER.finditer(text)]


def bedeutende(text: str) -> list[Stueck]:
    """The pieces without blanks and comments."""
    return [s for s in zerlege(text) if s.art not in (LEER, KOMMENTAR)]


def inhalt_des_literals(stueck: Stueck) -> str:
    text = stueck.text[1:] if stueck.text[0] in "nN" else stueck.text
    return text[1:-1].replace("''", "'")


def blosser_name(stueck: Stueck) -> str:
    """A name without its quotes or brackets."""
    if stueck.art != NAME:
        return stueck.text
    schluss = stueck.text[-1]
    return stueck.text[1:-1].replace(schluss * 2, schluss)


def offene_klammerung(text: str) -> str | None:
    """The rest of a text whose last literal or quoted name is not closed, else None."""
    for stueck in zerlege(text):
        if stueck.art == LITERAL and stueck.text.lstrip("nN")[1:].count("'") % 2 == 0:
            return stueck.text.lstrip("nN")[1:]
        if stueck.art == NAME and (len(stueck.text) < 2 or stueck.text[-1] != {'"': '"', "[": "]"}[stueck.text[0]]):
            return stueck.text[1:]
    return None


ANFAENGE = {
    "SELECT", "INSERT", "UPDATE", "DELETE", "PRINT", "SET", "BEGIN", "COMMIT", "ROLLBACK", "IF", "CREATE", "DROP",
    "ALTER", "EXEC", "EXECUTE", "RAISERROR", "THROW", "USE", "WAITFOR", "SAVE", "WITH", "MERGE", "TRUNCATE", "DECLARE",
    "GRANT",
}  # fmt: skip


def zerlege_stapel(text: str) -> list[str]:
    """The statements of a batch. A statement ends at a semicolon or where a word stands that only begins statements."""
    anweisungen: list[str] = []
    laufend: list[Stueck] = []
    tiefe = 0
    beginn = 0

    def schliesse(ende: int, naechster: int) -> None:
        nonlocal laufend, beginn
        if laufend:
            anweisungen.append(text[beginn:ende].strip())
        laufend, beginn = [], naechster

    for stueck in bedeutende(text):
        if stueck.ist("("):
            tiefe += 1
        elif stueck.ist(")"):
            tiefe -= 1
        if tiefe == 0 and stueck.ist(";"):
            schliesse(stueck.beginn, stueck.ende)
            continue
        if tiefe == 0 and stueck.ist(*ANFAENGE) and laufend and not _gehoert_dazu(laufend, stueck):
            schliesse(stueck.beginn, stueck.beginn)
        laufend.append(stueck)
    # What stands behind the last statement (a blank, a comment) belongs to it.
    schliesse(len(text), len(text))
    if len(anweisungen) == 1 and ";" not in text:
        return [text]
    return anweisungen


def _gehoert_dazu(laufend: list[Stueck], stueck: Stueck) -> bool:
    """The word `stueck` goes on with the statement of which these pieces are there already."""
    erstes, voriges = laufend[0], laufend[-1]
    worte = {s.text.upper() for s in laufend if s.art == WORT}
    if erstes.ist("SET", "PRINT", "USE", "BEGIN", "COMMIT", "ROLLBACK", "SAVE", "WAITFOR", "RAISERROR", "THROW"):
        return False
    if erstes.ist("IF"):
        rumpf = next((i for i, s in enumerate(laufend[1:], 1) if s.ist(*ANFAENGE) and _aussen(laufend, i)), None)
        return rumpf is None or _gehoert_dazu(laufend[rumpf:], stueck)
    if voriges.ist("UNION", "ALL", "EXCEPT", "INTERSECT", "AS", "ON", "FOR", "."):
        return True
    if stueck.ist("SELECT"):
        return erstes.ist("INSERT") and not worte & {"VALUES", "SELECT"} or erstes.ist("WITH") and "SELECT" not in worte
    if stueck.ist("SET"):
        return erstes.ist("UPDATE", "MERGE") and "SET" not in worte
    if stueck.ist("WITH"):
        return not erstes.ist("WITH")
    if erstes.ist("ALTER"):
        return stueck.ist("ALTER", "DROP", "SET") and "COLUMN" not in worte
    if erstes.ist("WITH"):
        return stueck.ist("INSERT", "UPDATE", "DELETE") and not worte & {"SELECT", "INSERT", "UPDATE", "DELETE"}
    return erstes.ist("GRANT", "DECLARE")


def _aussen(stuecke: list[Stueck], stelle: int) -> bool:
    offen = sum(1 if s.ist("(") else -1 if s.ist(")") else 0 for s in stuecke[:stelle])
    return offen == 0
