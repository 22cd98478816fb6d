#include "tests/wege/Fahrt.h"

#include <QTest>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "tests/support/Eingaben.h"

using namespace Qt::Literals::StringLiterals;
using namespace schritt;
using eingaben::klicke;

namespace {

void ersetze_Text(QWidget& feld, const QString& text, const std::function<void(const QString&)>& je_Taste) {
  feld.setFocus();
  QWindow* const fenster = feld.window()->windowHandle();
  QTest::keyClick(fenster, Qt::Key_A, Qt::ControlModifier);
  if (text.isEmpty()) {
    QTest::keyClick(fenster, Qt::Key_Delete);
    je_Taste(text);
  }
  for (qsizetype i = 0; i < text.size(); ++i) {
    // Qt's table of keys ends with ASCII.
    if (text[i].unicode() < 0x80)
      QTest::keyClick(fenster, text[i].toLatin1());
    else
      QTest::sendKeyEvent(QTest::Click, &feld, Qt::Key_unknown, QString(text[i]), {});
    je_Taste(text.left(i + 1));
  }
}

void klicke_Schalter(CheckBox& schalter) {
  klicke(schalter, QPoint(8, schalter.height() / 2));
}

bool ausserhalb(const Schritt& s) {
  return std::holds_alternative<Verschwinde>(s) || std::holds_alternative<Kehre_zurueck>(s) ||
      std::holds_alternative<Stoere>(s) || std::holds_alternative<Trenne>(s) || std::holds_alternative<Warte>(s);
}

}  // namespace

Fahrt::Fahrt(Schauplatz& schauplatz, const Weg& weg) : schauplatz_(schauplatz), weg_(weg), modell_(weg.bilder) {}

QStringList Fahrt::fahre() {
  schauplatz_.richte_ein(modell_.welt);
  schauplatz_.stelle_Uhr(modell_.zeit);
  for (const Bildinhalt& inhalt : std::as_const(modell_.welt.bilder)) bilder_.insert(inhalt.bild);
  while (naechster_ < weg_.schritte.size() && maengel_.isEmpty())
    if (ausserhalb(weg_.schritte[naechster_]))
      fuehre_aus(weg_.schritte[naechster_++]);
    else
      sitzung();
  return maengel_;
}

void Fahrt::sitzung() {
  modell_.oeffne();
  schauplatz_.gehe([this](frm_BildZuordnung& form) {
    form_ = &form;
    vergleiche_Strip();
    while (form.isVisible() && naechster_ < weg_.schritte.size() && maengel_.isEmpty())
      fuehre_aus(weg_.schritte[naechster_++]);
    if (form.isVisible() && maengel_.isEmpty()) schliesse_ab();
  });
  form_ = nullptr;
  if (!maengel_.isEmpty()) return;
  modell_.wirt_schreibt();
  gerade_ = u"Der Wirt schreibt"_s;
  if (std::exchange(modell_.muss_gesagt_werden, false) && schauplatz_.hole_Gesagtes().isEmpty())
    mangel(u"ein Bild ist nicht gespeichert, und niemand sagt es"_s);
  vergleiche_Kaesten();
  vergleiche_Bestand();
}

void Fahrt::fuehre_aus(const Schritt& schritt) {
  gerade_ = als_Text(Weg{0, {schritt}});
  std::visit([this](const auto& s) { tu(s); }, schritt);
  vergleiche_Kaesten();
  if (form_ && form_->isVisible()) vergleiche_Strip();
}

// Whatever the road left open is saved; a name that collides keeps the dialog open, and then it is left.
void Fahrt::schliesse_ab() {
  if (modell_.geaendert()) fuehre_aus(Speichere{Antwort::Ja});
  if (form().isVisible()) fuehre_aus(Verlasse{Ausgang::Rahmen, Antwort::Nein, Antwort::Ja});
  if (form().isVisible()) mangel(u"der Dialog geht nicht zu"_s);
}

// ── Comparing ───────────────────────────────────────────────────────────────────────────────────────────────────────

void Fahrt::mangel(const QString& text) {
  maengel_.append(gerade_ + u": "_s + text);
}

void Fahrt::vergleiche_Strip() {
  QStringList namen;
  if (!form().KeineBilder())
    for (std::int32_t i = 0; i <= form().LetzteZeile(); ++i) namen.append(form().Zeile(i).Bildname);
  if (namen != modell_.namen())
    mangel(u"Streifen ["_s + namen.join(u'|') + u"] statt ["_s + modell_.namen().join(u'|') + u']');
  if (form().SSC_ZuordnungSpeichern.Enabled() != modell_.geaendert())
    mangel(u"Speichern ist "_s + (modell_.geaendert() ? u"nicht möglich"_s : u"möglich"_s));
}

void Fahrt::vergleiche_Kaesten() {
  const auto worte = [](const QList<Kasten>& kaesten) {
    QStringList alle;
    for (const Kasten k : kaesten) alle.append(QString::number(static_cast<int>(k)));
    return alle.join(u',');
  };
  QStringList gemeldet;
  const QList<Kasten> kaesten = schauplatz_.hole_Kaesten(gemeldet);
  for (const QString& text : gemeldet) mangel(text);
  if (const auto soll = std::exchange(modell_.kaesten, {}); soll != kaesten)
    mangel(u"Kästen ["_s + worte(kaesten) + u"] statt ["_s + worte(soll) + u']');
}

void Fahrt::vergleiche_Bestand() {
  QStringList gefunden;
  const Bestand ist = schauplatz_.bestand(gefunden);
  gefunden += unterschiede(modell_.welt.bestand(), ist);
  for (const QString& text : gefunden) mangel(text);
  pruefe_Verluste(ist);
}

// True whatever the model says: a picture is somewhere, and a row has a file.
void Fahrt::pruefe_Verluste(const Bestand& ist) {
  QSet<int> da = modell_.ersetzte();
  QSet<QString> pfade;
  for (const auto* dateien : {&ist.bilder, &modell_.verschwundene()})
    for (auto i = dateien->begin(); i != dateien->end(); ++i) {
      da.insert(i.value().bild);
      pfade.insert(i.key().toLower());
    }
  for (const int bild : bilder_)
    if (!da.contains(bild)) mangel(u"Bild %1 gibt es nicht mehr"_s.arg(bild));
  for (const QString& zeile : ist.zeilen.value(u"1"_s)) {
    const QStringList teile = zeile.split(u'|');
    const QString pfad = QString(teile[2]).replace(u'\\', u'/') + u'/' + teile[0] + u'.' + teile[1];
    if (!pfade.contains(pfad.toLower())) mangel(u"die Zeile zeigt auf nichts: "_s + pfad);
  }
}

// ── The strip ───────────────────────────────────────────────────────────────────────────────────────────────────────

bool Fahrt::ist_im_Bild(int zeile) const {
  const int index = zeile - form().ErsteZeile + 1;
  if (index < 1 || !form().Pic_Thumb.vorhanden(index)) return false;
  const QWidget& thumbnail = form().Pic_Thumb(index);
  return thumbnail.geometry().right() < form().SSC_Scroll_Right.geometry().left();
}

bool Fahrt::bringe_ins_Bild(int zeile) {
  for (int i = 0; i < 100 && form().ErsteZeile > zeile; ++i) klicke(form().SSC_Scroll_Left);
  for (int i = 0; i < 100 && !ist_im_Bild(zeile) && form().ErsteZeile < zeile; ++i) klicke(form().SSC_Scroll_Right);
  if (!ist_im_Bild(zeile)) mangel(u"Bild %1 ist nicht zu sehen"_s.arg(zeile));
  return ist_im_Bild(zeile);
}

// Switching off selects: the row's number counts as a place in the strip.
void Fahrt::ende_Sortierung() {
  if (!form().SSR_Sortierung.Value()) return;
  const int danach = form().ErsteZeile + modell_.gewaehlt();
  klicke(form().SSR_Sortierung);
  if (modell_.gewaehlt() >= 0) modell_.waehle(danach < modell_.anzahl() ? danach : 0);
}

bool Fahrt::waehle(int zeile) {
  if (modell_.anzahl() == 0) return false;
  if (zeile >= 0) {
    ende_Sortierung();
    zeile %= modell_.anzahl();
    if (!bringe_ins_Bild(zeile)) return false;
    klicke(form().Pic_Thumb(zeile - form().ErsteZeile + 1));
    modell_.waehle(zeile);
  }
  // A name in other letters than the row's stays in the field until the row is selected again.
  if (form().txt_BildName.Text().trimmed().compare(modell_.name(modell_.gewaehlt()).trimmed(), Qt::CaseInsensitive) !=
      0)
    mangel(u"das Namensfeld zeigt "_s + form().txt_BildName.Text());
  return true;
}

bool Fahrt::waehle_zum_Aendern(int zeile) {
  if (!waehle(zeile)) return false;
  for (QWidget* feld : std::initializer_list<QWidget*>{&form().txt_BildName, &form().txt_BildText, &form().txt_BildInfo,
           &form().chk_Drucken, &form().chk_NeueSeite})
    if (feld->isEnabled() == modell_.gesperrt()) mangel(u"falsch gesperrt: "_s + feld->objectName());
  return !modell_.gesperrt();
}

// ── Steps ───────────────────────────────────────────────────────────────────────────────────────────────────────────

void Fahrt::tu(const Haenge_an& s) {
  QStringList da;
  for (const QString& name : s.namen)
    if (modell_.welt.bilder.contains(s.ordner + u'/' + name)) da.append(name);
  if (da.isEmpty()) return;
  schauplatz_.suche(form(), s.ordner, da);
  // The search lists files by their names, in any case of their letters.
  std::sort(
      da.begin(), da.end(), [](const QString& x, const QString& y) { return x.compare(y, Qt::CaseInsensitive) < 0; });
  for (QString& name : da) name.prepend(s.ordner + u'/');
  modell_.haenge_an(da);
}

void Fahrt::tu(const Ziehe& s) {
  if (modell_.anzahl() < 2) return;
  const int von = std::max(s.von, 0) % modell_.anzahl();
  if (!bringe_ins_Bild(von)) return;
  if (!form().SSR_Sortierung.Value()) klicke(form().SSR_Sortierung);
  QWidget& quelle = form().Pic_Thumb(von - form().ErsteZeile + 1);
  QTest::mousePress(form().windowHandle(), Qt::LeftButton, {}, eingaben::im_Fenster(quelle, {-1, -1}));
  const auto bewege = [&](QWidget& wohin, QPoint wo) {
    QTest::mouseMove(form().windowHandle(), eingaben::im_Fenster(wohin, wo));
    QCoreApplication::processEvents();
  };
  for (int i = 0; i < s.rollen; ++i) bewege(form().SSC_Scroll_Right, QPoint(10, 20 + i));
  int nach = form().ErsteZeile;
  for (int i = 0; i < s.nach && ist_im_Bild(nach + 1); ++i) ++nach;
  QWidget& ziel = form().Pic_Thumb(nach - form().ErsteZeile + 1);
  bewege(ziel, {-1, -1});
  QTest::mouseRelease(form().windowHandle(), Qt::LeftButton, {}, eingaben::im_Fenster(ziel, {-1, -1}));
  modell_.verschiebe(von, nach);
}

void Fahrt::tu(const Rolle& s) {
  for (int i = 0; i < std::abs(s.schritte); ++i)
    klicke(s.schritte < 0 ? form().SSC_Scroll_Left : form().SSC_Scroll_Right);
}

void Fahrt::tu(const Waehle& s) {
  waehle(s.zeile);
}

void Fahrt::tu(const Drehe& s) {
  if (!waehle(s.zeile)) return;
  schauplatz_.beantworte(Antwort::Abbrechen, s.namen);
  klicke(s.viertel == 1 ? form().SSC_Drehen90 : s.viertel == 2 ? form().SSC_Drehen180 : form().SSC_Drehen270);
  modell_.drehe(s.viertel, s.namen);
  nach_Kollision();
}

void Fahrt::tu(const Benenne& s) {
  if (!waehle_zum_Aendern(s.zeile)) return;
  QString vorher = form().txt_BildName.text();
  ersetze_Text(form().txt_BildName, s.name, [&](const QString& /*text*/) {
    const QString jetzt = form().txt_BildName.text();
    if (std::exchange(vorher, jetzt) != jetzt) modell_.aendere_Namen(jetzt);
  });
}

void Fahrt::tu(const Schreibe& s) {
  if (!waehle_zum_Aendern(s.zeile)) return;
  Textblock& feld = s.feld == Feld::Info ? form().txt_BildInfo : form().txt_BildText;
  const bool leer = feld.Text().isEmpty() && s.text.isEmpty();
  ersetze_Text(feld, s.text, [](const QString&) {});
  if (!leer) modell_.schreibe(s.feld, s.text);
}

void Fahrt::tu(const Schalte& s) {
  if (!waehle_zum_Aendern(s.zeile)) return;
  CheckBox* const schalter[] = {
      &form().chk_NeueSeite, &form().chk_AlsAnhang, &form().chk_GesamteSeite, &form().chk_Drucken};
  CheckBox& einer = *schalter[static_cast<int>(s.marke)];
  klicke_Schalter(einer);
  modell_.schalte(s.marke);
}

void Fahrt::tu(const Merke_vor& s) {
  if (!waehle(s.zeile)) return;
  if (form().chk_Delete.isEnabled() != modell_.vormerken_moeglich()) mangel(u"Vormerken: falsch gesperrt"_s);
  if (!modell_.vormerken_moeglich()) return;
  klicke_Schalter(form().chk_Delete);
  modell_.merke_vor();
}

// A box about a name that is taken leads to its row.
void Fahrt::nach_Kollision() {
  if (!modell_.kaesten.contains(Kasten::Doppelt) || !form().isVisible()) return;
  if (form().AktZeile >= 0) modell_.waehle(form().AktZeile);
}

void Fahrt::tu(const Aktualisiere& s) {
  schauplatz_.beantworte(Antwort::Abbrechen, s.namen);
  klicke(form().SSC_Aktualisieren);
  modell_.aktualisiere(s.namen);
  nach_Kollision();
}

void Fahrt::tu(const Speichere& s) {
  schauplatz_.beantworte(Antwort::Abbrechen, s.namen);
  klicke(form().SSC_ZuordnungSpeichern);
  if (modell_.speichere(s.namen) == form().isVisible()) mangel(u"Speichern schließt falsch"_s);
  nach_Kollision();
}

void Fahrt::tu(const Verlasse& s) {
  schauplatz_.beantworte(s.sichern, s.namen);
  if (s.wie == Ausgang::Zurueck) klicke(form().cmd_Abbruch);
  if (s.wie == Ausgang::Escape) QTest::keyClick(form().windowHandle(), Qt::Key_Escape);
  if (s.wie == Ausgang::Rahmen) form().windowHandle()->close();
  if (modell_.verlasse(s.sichern, s.namen) == form().isVisible()) mangel(u"Verlassen schließt falsch"_s);
}

// ── The share and the clock ─────────────────────────────────────────────────────────────────────────────────────────

QString Fahrt::datei(int nummer) const {
  const QStringList alle = modell_.welt.bilder.keys();
  return alle.isEmpty() ? QString() : alle[nummer % alle.size()];
}

void Fahrt::tu(const Verschwinde& s) {
  if (modell_.welt.bilder.isEmpty()) return;
  const QString name = datei(s.datei);
  if (modell_.ist_gestoert(name)) return;
  schauplatz_.verschwinde(name);
  modell_.verschwinde(name);
}

void Fahrt::tu(const Kehre_zurueck& /*s*/) {
  schauplatz_.hole_zurueck(modell_.kehre_zurueck());
}

void Fahrt::tu(const Trenne& /*s*/) {
  if (modell_.ist_getrennt()) return;
  schauplatz_.trenne();
  modell_.trenne();
}

void Fahrt::tu(const Stoere& s) {
  if (modell_.welt.bilder.isEmpty()) return;
  const QString name = datei(s.datei);
  // A stored picture that can't be read is no matter of this dialog.
  if (modell_.ist_gestoert(name) || !name.startsWith(u"Neu/"_s)) return;
  schauplatz_.stoere(name);
  modell_.stoere(name);
}

void Fahrt::tu(const Belege& s) {
  if (modell_.anzahl() == 0 || modell_.ist_getrennt()) return;
  const QString pfad = modell_.gestempelter_Pfad(std::max(s.zeile, 0) % modell_.anzahl());
  modell_.welt.bilder[pfad] = {99, 0};
  schauplatz_.lege_Bild(pfad, {99, 0});
}

void Fahrt::tu(const Warte& /*s*/) {
  modell_.zeit = modell_.zeit.addSecs(1);
  schauplatz_.stelle_Uhr(modell_.zeit);
}
