// Saving as a user understands it: nothing of what the strip shows gets lost.
#include <algorithm>

#include "tests/wege/Modell.h"

using namespace Qt::Literals::StringLiterals;
using schritt::Antwort;

namespace {

const QString Standardordner = u"Belege\\1"_s;
constexpr qsizetype Namenslaenge = 50;

QString ohne_Rand(const QString& text) {
  qsizetype von = 0;
  qsizetype bis = text.size();
  while (von < bis && text[von] == u' ') ++von;
  while (bis > von && text[bis - 1] == u' ') --bis;
  return text.mid(von, bis - von);
}

QString pfad(const QString& ordner, const QString& datei) {
  return QString(ordner).replace(u'\\', u'/') + u'/' + datei;
}

QString ohne_Verbotenes(QString name) {
  name.replace(u'\'', u'’');
  for (const QChar zeichen : u"\\/:*?\"<>|"_s) name.replace(zeichen, u'_');
  return name;
}

}  // namespace

int Modell::kollision() const {
  for (int i = 0; i < anzahl(); ++i)
    if (streifen_[z(i)].doppelt && !streifen_[z(i)].entfernen) return i;
  return -1;
}

bool Modell::zeige_Kollision() {
  // Without the record's folder nobody looks.
  if (!ordner_da_ || kollision() < 0) return false;
  kaesten.append(Kasten::Doppelt);
  return true;
}

bool Modell::speichere(Antwort namen) {
  if (!geaendert_ || zeige_Kollision()) return false;
  if (!sichere(namen)) nimm_Vormerkungen_zurueck();
  return true;
}

bool Modell::verlasse(Antwort sichern, Antwort namen) {
  bool gesichert = false;
  if (geaendert_ && !zeige_Kollision()) {
    kaesten.append(Kasten::Speichern);
    if (sichern == Antwort::Abbrechen) return false;
    gesichert = sichern == Antwort::Ja && sichere(namen);
  }
  if (!gesichert) nimm_Vormerkungen_zurueck();
  return true;
}

// Turning and reading again save unasked; a picture goes only by a save that was asked for.
void Modell::nimm_Vormerkungen_zurueck() {
  for (const auto& satz : sammlung_) satz->weg = false;
}

bool Modell::frage_nach_Namen(Antwort namen, bool& erledigt) {
  const auto betroffen = [](const Bild& b) { return b.umbenannt && b.satz && !b.entfernen; };
  if (std::none_of(streifen_.begin(), streifen_.end(), betroffen)) return true;
  kaesten.append(Kasten::Umbenannt);
  if (namen == Antwort::Abbrechen) return false;
  erledigt = namen == Antwort::Ja;
  if (erledigt) {
    for (Bild& bild : streifen_)
      if (betroffen(bild)) benenne_um(bild, bild.ordner);
  } else {
    const auto erster = std::find_if(streifen_.begin(), streifen_.end(), [](const Bild& b) { return b.umbenannt; });
    erster->name = erster->original;
  }
  return true;
}

bool Modell::sichere(Antwort namen) {
  // What only a missing file had marked stays when the file is back, also where an earlier save had the mark.
  for (Bild& bild : streifen_) {
    if (!bild.fehlt || !bild.entfernen || bild.vorgemerkt) continue;
    bild.fehlt = welt.finde(bild.datei).isEmpty();
    bild.entfernen = bild.fehlt && ist_lesbar(bild);
    bild.angefasst = bild.angefasst || !bild.entfernen;
  }
  for (Bild& bild : streifen_)
    if (bild.satz && ohne_Rand(bild.name).isEmpty()) bild.name = bild.original, bild.umbenannt = false;
  bool erledigt = false;
  if (!frage_nach_Namen(namen, erledigt)) return false;
  for (int i = 0; i < anzahl(); ++i)
    if (streifen_[z(i)].angefasst) sichere_Bild(i, erledigt);
  sammlung_.clear();
  for (const Bild& bild : streifen_)
    if (bild.satz) sammlung_.push_back(bild.satz);
  geaendert_ = false;
  return true;
}

void Modell::sichere_Bild(int zeile, bool erledigt) {
  Bild& bild = streifen_[z(zeile)];
  if (bild.entfernen && bild.umbenannt) bild.name = bild.original;
  if (bild.satz) {
    const bool noch = bild.umbenannt && !erledigt && ohne_Rand(bild.name) != ohne_Rand(bild.original);
    if (noch && !benenne_um(bild, Standardordner)) kaesten.append(Kasten::Nicht_umbenannt);
  } else if (bild.entfernen || !lege_neues_an(bild, zeile)) {
    return;
  }
  Zuordnung& w = bild.satz->werte;
  w.name = ohne_Rand(bild.name);
  w.endung = bild.endung;
  w.ordner = bild.ordner;
  w.drucktext = bild.drucktext;
  w.marken = bild.marken;
  const QString info = ohne_Rand(bild.info);
  bild.satz->ungeschriebener_Text = ist_lesbar(bild) ? QString() : info;
  if (!info.isEmpty() && ist_lesbar(bild))
    welt.texte[welt.finde_Text(pfad(bild.ordner, w.name + w.endung + u".txt"_s))] = info;
  bild.satz->zu_schreiben = true;
  bild.satz->weg = bild.entfernen;
  bild.angefasst = false;
}

QString Modell::gestempelter_Pfad(int zeile) const {
  const QString stempel = zeit.toString(u"yyyyMMdd_HHmmss"_s);
  QString name = ohne_Verbotenes(streifen_[z(zeile)].name);
  while (name.startsWith(u' ')) name.remove(0, 1);
  for (int nummer = 1;; ++nummer) {
    const QString ende = (nummer > 1 ? u"_%1"_s.arg(nummer) : QString()) + stempel;
    const QString neu = ohne_Rand(name.left(Namenslaenge - ende.size()) + ende);
    const QString ziel = pfad(Standardordner, neu + u'.' + streifen_[z(zeile)].endung);
    // A text that waits under the name belongs to another picture.
    const QString text = pfad(Standardordner, neu + streifen_[z(zeile)].endung + u".txt"_s);
    bool frei = welt.finde(ziel).isEmpty() && !welt.texte.contains(welt.finde_Text(text));
    for (int i = 0; i < anzahl(); ++i)
      frei = frei && (i == zeile || ohne_Rand(streifen_[z(i)].name).compare(neu, Qt::CaseInsensitive) != 0);
    if (frei) return ziel;
  }
}

bool Modell::lege_neues_an(Bild& bild, int zeile) {
  ordner_da_ = true;
  const QString quelle = welt.finde(bild.datei);
  if (quelle.isEmpty() || gestoert_.contains(quelle)) return false;
  const QString ziel = gestempelter_Pfad(zeile);
  welt.bilder[ziel] = welt.bilder[quelle];
  bild.satz = std::make_shared<Satz>();
  bild.satz->neu = true;
  bild.satz->werte.re = u"1"_s;
  bild.satz->werte.ursprung = u"-"_s;
  bild.ordner = Standardordner;
  bild.name = ziel.mid(ziel.lastIndexOf(u'/') + 1).chopped(bild.endung.size() + 1);
  bild.umbenannt = false;
  return true;
}

// The file goes first; table and text follow it, in every record that has the picture.
bool Modell::benenne_um(Bild& bild, const QString& nach_Ordner) {
  const QString neu = ohne_Rand(bild.name);
  const QString ziel = pfad(nach_Ordner, neu + u'.' + bild.endung);
  const QString quelle = welt.finde(bild.datei);
  if (quelle.isEmpty() || !welt.finde(ziel).isEmpty() || (!ordner_da_ && nach_Ordner == Standardordner)) {
    bild.name = bild.original;
    return false;
  }
  welt.bilder[ziel] = welt.bilder.take(quelle);
  if (gestoert_.remove(quelle)) gestoert_.insert(ziel);
  const QString alter_Text = welt.finde_Text(pfad(bild.ordner, bild.original + bild.endung + u".txt"_s));
  if (welt.texte.contains(alter_Text)) {
    // No picture had the new name: a text that waits there belongs to none.
    const QString text = welt.texte.take(alter_Text);
    const QString neuer_Text = pfad(nach_Ordner, neu + bild.endung + u".txt"_s);
    welt.texte.remove(welt.finde_Text(neuer_Text));
    welt.texte[neuer_Text] = text;
  }
  for (Zuordnung& zeile : welt.tabelle)
    if (zeile.name.compare(bild.original, Qt::CaseInsensitive) == 0 && zeile.ordner == bild.ordner) {
      zeile.name = neu;
      zeile.ordner = nach_Ordner;
    }
  bild.satz->alter_Name = neu;
  bild.satz->alter_Ordner = nach_Ordner;
  bild.ordner = nach_Ordner;
  bild.datei = ziel;
  return true;
}

// ── The host ────────────────────────────────────────────────────────────────────────────────────────────────────────

void Modell::schreibe_zurueck(Satz& satz) {
  if (satz.neu) return welt.tabelle.push_back(satz.werte);
  for (Zuordnung& zeile : welt.tabelle)
    if (ist_Zeile_von(satz, zeile)) zeile = satz.werte;
}

// The order is that of the strip as it was saved, whatever numbers stand for it. A new picture whose file is gone again
// gets no row, which the user is told.
void Modell::wirt_schreibt() {
  int platz = 0;
  for (const auto& satz : sammlung_) {
    satz->werte.sort = platz++;
    if (satz->weg)
      std::erase_if(welt.tabelle, [&](const Zuordnung& zeile) { return !satz->neu && ist_Zeile_von(*satz, zeile); });
    else if (satz->neu && welt.finde(pfad(satz->werte.ordner, satz->werte.name + u'.' + satz->werte.endung)).isEmpty())
      muss_gesagt_werden = true;
    else if (satz->zu_schreiben)
      schreibe_zurueck(*satz);
    else
      for (Zuordnung& zeile : welt.tabelle)
        if (ist_Zeile_von(*satz, zeile)) zeile.sort = satz->werte.sort;
  }
  sammlung_.clear();
  streifen_.clear();
}
