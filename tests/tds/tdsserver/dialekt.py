"""What SQLite needs otherwise than the server: TOP, the schema's name, N'…', numbers with a word right behind."""

from __future__ import annotations

from dataclasses import dataclass

from .katalog import typ_aus_text
from .zerleger import KOMMENTAR, LEER, LITERAL, NAME, WORT, ZAHL, Stueck, blosser_name, zerlege

_UMBENANNT = {"ISNULL": "IFNULL", "GETDATE": "datetime"}
_TYPWORTE = {"NVARCHAR", "VARCHAR", "CHAR", "NCHAR", "SMALLINT"}


@dataclass(frozen=True)
class _Aenderung:
    beginn: int
    ende: int
    ersatz: str = ""


@dataclass
class _Ebene:
    """What is known of the select at one depth of brackets."""

    hinter_select: bool = False
    verbunden: bool = False
    grenze: str = ""
    wegfall: _Aenderung | None = None


def sqlite_dialekt(text: str) -> str:
    """The text as SQLite takes it; a text that needs no change comes back as it is."""
    alle = zerlege(text)
    stuecke = [s for s in alle if s.art not in (LEER, KOMMENTAR)]
    aenderungen = _kleinigkeiten(alle, stuecke) + _Topsuche(text, stuecke).suche()
    if [s.text.upper() for s in stuecke[:2]] in (["CREATE", "TABLE"], ["ALTER", "TABLE"]):
        aenderungen += _spaltentypen(text, stuecke)
    return _wende_an(text, aenderungen)


def _wende_an(text: str, aenderungen: list[_Aenderung]) -> str:
    teile: list[str] = []
    bis = 0
    for aenderung in sorted(aenderungen, key=lambda a: a.beginn):
        if aenderung.beginn >= bis:
            teile += [text[bis : aenderung.beginn], aenderung.ersatz]
            bis = aenderung.ende
    return "".join([*teile, text[bis:]])


def _kleinigkeiten(alle: list[Stueck], stuecke: list[Stueck]) -> list[_Aenderung]:
    aenderungen = []
    for links, rechts in zip(alle, alle[1:]):
        if rechts.art == WORT and links.art == ZAHL:
            aenderungen.append(_Aenderung(rechts.beginn, rechts.beginn, " "))
    for i, stueck in enumerate(stuecke):
        naechstes = stuecke[i + 1] if i + 1 < len(stuecke) else None
        if stueck.art == LITERAL and stueck.text[0] in "nN":
            aenderungen.append(_Aenderung(stueck.beginn, stueck.beginn + 1))
        if naechstes is None:
            continue
        if stueck.art in (WORT, NAME) and blosser_name(stueck).lower() == "dbo" and naechstes.ist("."):
            aenderungen.append(_Aenderung(stueck.beginn, naechstes.ende))
        if stueck.art == WORT and stueck.text.upper() in _UMBENANNT and naechstes.ist("("):
            aenderungen.append(_Aenderung(stueck.beginn, stueck.ende, _UMBENANNT[stueck.text.upper()]))
        if stueck.ist("(") and naechstes.ist("MAX") and i + 2 < len(stuecke) and stuecke[i + 2].ist(")"):
            aenderungen.append(_Aenderung(stueck.beginn, stuecke[i + 2].ende))
    return aenderungen


def _spaltentypen(text: str, stuecke: list[Stueck]) -> list[_Aenderung]:
    """Gives the columns of a new table, and those that a table gets, the server's collation and the server's bounds."""
    aenderungen = []
    for i, stueck in enumerate(stuecke[2:], 2):
        if not stueck.ist(*_TYPWORTE) or stuecke[i - 1].art not in (WORT, NAME):
            continue
        spalte = stuecke[i - 1].text
        typ = typ_aus_text(text[stueck.beginn :])
        if typ is not None and typ.name == "smallint":
            zusatz = f" CHECK ({spalte} IS NULL OR {spalte} BETWEEN -32768 AND 32767)"
            aenderungen.append(_Aenderung(stueck.ende, stueck.ende, zusatz))
        elif typ is not None and i + 3 < len(stuecke) and stuecke[i + 3].ist(")"):
            grenze = f" CHECK (LEN({spalte}) <= {typ.laenge})" if typ.laenge else ""
            ende = stuecke[i + 3].ende
            aenderungen.append(_Aenderung(stueck.beginn, ende, f"TEXT COLLATE SERVERTEXT{grenze}"))
    return aenderungen


class _Topsuche:
    """Finds each TOP of a text and what it becomes."""

    def __init__(self, text: str, stuecke: list[Stueck]) -> None:
        self._text = text
        self._stuecke = stuecke
        self._ebenen = [_Ebene()]
        self._aenderungen: list[_Aenderung] = []

    def suche(self) -> list[_Aenderung]:
        i = 0
        while i < len(self._stuecke):
            stueck = self._stuecke[i]
            if stueck.ist("("):
                self._ebenen.append(_Ebene())
            elif stueck.ist(")"):
                self._schliesse(i)
                if len(self._ebenen) > 1:
                    self._ebenen.pop()
            else:
                i = self._sieh_an(i)
            i += 1
        if len(self._ebenen) == 1:
            self._schliesse(len(self._stuecke))
        return self._aenderungen

    def _ist(self, i: int, *worte: str) -> bool:
        return i < len(self._stuecke) and self._stuecke[i].ist(*worte)

    def _sieh_an(self, i: int) -> int:
        """Gives the number of the last piece that it used up."""
        ebene = self._ebenen[-1]
        if self._ist(i, "SELECT"):
            ebene.hinter_select = True
        elif self._ist(i, "UNION", "EXCEPT", "INTERSECT"):
            ebene.verbunden, ebene.hinter_select = True, False
        elif ebene.hinter_select and self._ist(i, "TOP"):
            ebene.hinter_select = False
            return self._nimm_top(i, ebene)
        elif not self._ist(i, "ALL", "DISTINCT"):
            ebene.hinter_select = False
        return i

    def _nimm_top(self, i: int, ebene: _Ebene) -> int:
        klammer = self._ist(i + 1, "(")
        zahl = i + (2 if klammer else 1)
        if zahl >= len(self._stuecke) or not self._stuecke[zahl].text.isdigit():
            return i
        letztes = zahl + (1 if klammer else 0)
        prozent = self._ist(letztes + 1, "PERCENT")
        if prozent and self._stuecke[zahl].text != "100":
            return i
        letztes += 1 if prozent else 0
        ende = self._stuecke[letztes].ende
        while self._text[ende : ende + 1] == " ":
            ende += 1
        wegfall = _Aenderung(self._stuecke[i].beginn, ende)
        if prozent:
            self._aenderungen.append(wegfall)
        elif ebene.grenze:
            ebene.verbunden = True
        else:
            ebene.grenze, ebene.wegfall = self._stuecke[zahl].text, wegfall
        return letztes

    def _schliesse(self, i: int) -> None:
        ebene = self._ebenen[-1]
        if ebene.wegfall is None or ebene.verbunden or i == 0:
            return
        ende = self._stuecke[i - 1].ende
        self._aenderungen += [ebene.wegfall, _Aenderung(ende, ende, f" LIMIT {ebene.grenze}")]
