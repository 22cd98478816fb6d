#!/usr/bin/env python3
"""Makes the documents of the tree into pages: Markdown by pandoc, links between the documents turned to .html, pictures
and other files that they name beside them. Ends with 1 where a link, an anchor or a picture of the pages leads nowhere.

Usage: packaging/doku.py ZIEL
"""
import html.parser
import pathlib
import re
import shutil
import subprocess
import sys
import urllib.parse

WURZEL = pathlib.Path(__file__).resolve().parent.parent
STIL = """<style>
body { max-width: 60em; margin: 2em auto; padding: 0 1em; font-family: sans-serif; line-height: 1.45; color: #222 }
img { max-width: 100% } table { border-collapse: collapse } td, th { border: 1px solid #9fb2c8; padding: .3em .6em; vertical-align: top }
pre { background: #eef2f7; padding: .8em; overflow: auto } code { background: #eef2f7 }
</style>
"""


class Verweise(html.parser.HTMLParser):
    """What a page leads to, and where others may lead in it."""

    def __init__(self, seite):
        super().__init__()
        self.ziele, self.anker = [], set()
        self.feed(seite.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        for name, wert in attrs:
            if name == "id":
                self.anker.add(wert)
            elif name in ("href", "src") and wert is not None:
                self.ziele.append(wert)


def dokumente():
    return [WURZEL / name for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md")] + sorted((WURZEL / "docs").glob("*.md"))


def ist_draussen(ziel):
    return bool(urllib.parse.urlsplit(ziel).scheme)


def seite_von(dokument, ziel):
    return ziel / dokument.relative_to(WURZEL).with_suffix(".html")


def mache(dokument, ziel):
    """One page. What it links within the tree is carried over beside it."""
    titel = re.search(r"^# (.+)$", dokument.read_text(encoding="utf-8"), re.M).group(1).strip("`")
    seite = seite_von(dokument, ziel)
    seite.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(
        ["pandoc", "--from=gfm", "--to=html5", "--standalone", "--wrap=preserve", f"--metadata=pagetitle:{titel}",
         "--metadata=lang:de", "--include-in-header=/dev/stdin", f"--output={seite}", str(dokument)],
        input=STIL, encoding="utf-8", check=True)
    bekannte = set(dokumente())

    def umgelenkt(treffer):
        pfad, raute, anker = treffer.group(2).partition("#")
        quelle = (dokument.parent / urllib.parse.unquote(pfad)).resolve()
        if ist_draussen(pfad) or not pfad or not quelle.is_relative_to(WURZEL):
            return treffer.group(0)
        if quelle in bekannte:
            pfad = str(pathlib.PurePosixPath(pfad).with_suffix(".html"))
        elif quelle.is_file():
            kopie = ziel / quelle.relative_to(WURZEL)
            kopie.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(quelle, kopie)
        return f'{treffer.group(1)}"{pfad}{raute}{anker}"'

    seite.write_text(re.sub(r'((?:href|src)=)"([^"]+)"', umgelenkt, seite.read_text(encoding="utf-8")), encoding="utf-8")


def maengel(ziel):
    """Everything on the pages that leads nowhere."""
    seiten = {seite.resolve(): Verweise(seite) for seite in sorted(ziel.rglob("*.html"))}
    for seite, verweise in seiten.items():
        for verweis in verweise.ziele:
            pfad, _, anker = urllib.parse.unquote(verweis).partition("#")
            gemeint = (seite.parent / pfad).resolve() if pfad else seite
            if ist_draussen(verweis):
                continue
            if not gemeint.is_file() or gemeint.suffix == ".md":
                yield f"{seite.relative_to(ziel)}: {verweis} gibt es nicht"
            elif anker and (gemeint not in seiten or anker not in seiten[gemeint].anker):
                yield f"{seite.relative_to(ziel)}: {verweis} hat keinen solchen Abschnitt"


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    ziel = pathlib.Path(sys.argv[1]).resolve()
    shutil.rmtree(ziel, ignore_errors=True)
    for dokument in dokumente():
        mache(dokument, ziel)
    shutil.copyfile(ziel / "README.html", ziel / "index.html")
    gefunden = list(maengel(ziel))
    for mangel in gefunden:
        print(f"doku: {mangel}", file=sys.stderr)
    anzahl = sum(1 for _ in ziel.rglob("*.html"))
    print(f"doku: {anzahl} Seiten, {sum(1 for _ in ziel.rglob('*.png'))} Bilder in {sys.argv[1]}")
    raise SystemExit(1 if gefunden else 0)


if __name__ == "__main__":
    main()
