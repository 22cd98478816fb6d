#include "tests/ende/Dialogsitzung.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

QString Zuordnungszeile::als_Text() const {
  return QStringList{
      schluessel, name, u"jpg"_s, typ, u"-"_s, pfad, text, druck, u"-"_s, u"<NULL>"_s, QString::number(platz)}
      .join(u'|');
}

void Dialogsitzung::SetUp() {
  if (const QString grund = Programm::hindernis(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
  if (const QString grund = x.beginne(); !grund.isEmpty()) GTEST_SKIP() << grund.toStdString();
}

void Dialogsitzung::starte() {
  programm.starte();
  programm.warte("the records", [](const Anblick& a) {
    return a.name == "Hauptfenster"_L1 && a.zeile(u"tree_Vorgaenge"_s, u"AN 24-3005"_s) != nullptr;
  });
  soll = programm.bestand();
  EXPECT_EQ(soll.zuordnungen.size(), 22);
}

void Dialogsitzung::oeffne_Dialog(const QString& vorgang, int bilder) {
  x.klicke(programm.zeile(u"tree_Vorgaenge"_s, vorgang));
  programm.warte("the record", [&](const Anblick& a) { return a[u"lbl_Nummer"_s].text == vorgang; });
  programm.klicke(u"cmd_Zuordnen"_s);
  programm.warte("the dialog with its pictures", [&](const Anblick& a) { return dialog_zeigt(a, bilder); });
}

void Dialogsitzung::vergroessere() {
  const Anblick a = programm.warte("the dialog", [](const Anblick& b) { return b.name == "frm_BildZuordnung"_L1; });
  x.maximiere_am_Rahmen(a.kennung);
  programm.warte("the large dialog", [](const Anblick& b) { return b.ort.width() > 1500; });
}

void Dialogsitzung::pruefe(const char* wann) {
  SCOPED_TRACE(wann);
  Bestand ist = programm.bestand();
  ist.zuordnungen.sort();
  Bestand erwartet = soll;
  erwartet.zuordnungen.sort();
  EXPECT_EQ(unterschied(ist, erwartet), QStringList());
}

void Dialogsitzung::waehle_Bild(int im_Streifen, int zeile) {
  programm.klicke(u"Pic_Thumb(%1)"_s.arg(im_Streifen));
  programm.warte(
      "the picture's number", [&](const Anblick& a) { return a[u"SSP_Anzahl(1)"_s].text == QString::number(zeile); });
}

void Dialogsitzung::schalte(const QString& haken, bool an) {
  programm.klicke_Haken(haken);
  programm.warte("the box has its mark", [&](const Anblick& a) { return a[haken].an == an; });
}

void Dialogsitzung::sortieren(bool an) {
  programm.klicke(u"SSR_Sortierung"_s);
  programm.warte("sorting is switched", [&](const Anblick& a) { return a[u"SSR_Sortierung"_s].an == an; });
}

void Dialogsitzung::fasse_und_ziehe(int von, int nach) {
  const Anblick a = programm.warte("the strip", [&](const Anblick& b) {
    return b[u"Pic_Thumb(%1)"_s.arg(von)].sichtbar && b[u"Pic_Thumb(%1)"_s.arg(nach)].sichtbar;
  });
  x.zeige_auf(a[u"Pic_Thumb(%1)"_s.arg(von)].ort.center());
  x.druecke();
  x.ziehe_nach(a[u"Pic_Thumb(%1)"_s.arg(nach)].ort.center());
  programm.warte("the mark of the place", [](const Anblick& b) { return b[u"Shp_Sort"_s].sichtbar; });
}

void Dialogsitzung::lasse_fallen() {
  x.lasse_los();
  programm.warte("the picture was dropped", [](const Anblick& a) { return !a[u"Shp_Sort"_s].sichtbar; });
}

void Dialogsitzung::gehe_in(const QString& ordner_dort) {
  if (!std::exchange(schon_gesucht_, true)) {
    programm.klicke(u"ImageCombo1"_s);
    x.klicke(programm.zeile(QString(), u"(C:)"_s));
    programm.warte(
        "the folder of the program", [](const Anblick& a) { return a.zeile(u"Dir1"_s, u"heim"_s) != nullptr; });
    x.doppelklicke(programm.zeile(u"Dir1"_s, ordner.pfad().section(u'/', -1)));
  }
  x.doppelklicke(programm.zeile(u"Dir1"_s, u"daten"_s));
  x.doppelklicke(programm.zeile(u"Dir1"_s, ordner_dort));
}

void Dialogsitzung::haenge_an(const QString& ordner_dort, int dateien, const QStringList& namen, int bilder_danach) {
  programm.klicke(u"SSC_BilderLaden"_s);
  programm.warte("the search", [](const Anblick& a) { return a.name == "frm_BilderSuchen"_L1; });
  gehe_in(ordner_dort);
  programm.warte("the pictures that wait", [&](const Anblick& a) { return suche_zeigt(a, dateien); });
  for (const QString& name : namen) {
    const QPoint stelle = programm.zeile(u"lvwContent"_s, name + u".jpg"_s);
    if (name == namen.first())
      x.klicke(stelle);
    else
      x.klicke_dazu(stelle);
    programm.warte("the picture is chosen", [&](const Anblick& a) {
      const Anblickzeile* zeile = a.zeile(u"lvwContent"_s, name + u".jpg"_s);
      return zeile && zeile->gewaehlt;
    });
  }
  programm.klicke(u"cmd_Uebernehmen"_s);
  programm.warte("the attached pictures", [&](const Anblick& a) { return dialog_zeigt(a, bilder_danach); });
}

QString Dialogsitzung::warte_auf_Ergebnis(const QString& vorgang) {
  const QString anfang = vorgang + u": "_s;
  const Anblick a = programm.warte("the window tells what was written",
      [&](const Anblick& b) { return b.name == "Hauptfenster"_L1 && b[u"lbl_Status"_s].text.startsWith(anfang); });
  return a[u"lbl_Status"_s].text.mid(anfang.size());
}

void Dialogsitzung::beantworte(const QString& titel, const QString& text, const QString& knopf) {
  const Anblick a = programm.warte("a box", [&](const Anblick& b) { return b.titel == titel; });
  EXPECT_EQ(QString(a[u"qt_msgbox_label"_s].text).replace(u"\r\n"_s, u"\n"_s), text);
  programm.klicke_Knopf(knopf);
  programm.warte("the box is gone", [&](const Anblick& b) { return b.kennung != a.kennung; });
}

void Dialogsitzung::beende() {
  const Anblick a = programm.warte("the window", [](const Anblick& b) { return b.name == "Hauptfenster"_L1; });
  x.schliesse_am_Rahmen(a.kennung);
  EXPECT_EQ(programm.warte_auf_Ende(), 0);
  EXPECT_EQ(programm.fehlerausgabe(), QString());
}

bool Dialogsitzung::dialog_zeigt(const Anblick& a, int bilder) {
  return a.name == "frm_BildZuordnung"_L1 && a.anzahl_sichtbarer(u"Pic_Thumb("_s) == bilder &&
      a[u"SSP_Anzahl(3)"_s].text == QString::number(bilder);
}

bool Dialogsitzung::suche_zeigt(const Anblick& a, int dateien) {
  return a.name == "frm_BilderSuchen"_L1 && a[u"lvwContent"_s].sichtbar &&
      a[u"SSP_Anzahl"_s].text == u"%1 Objekt(e)"_s.arg(dateien);
}

QString Dialogsitzung::gestempelt(
    const QString& ablage, const QString& name, const Bestand& ist, const QDateTime& von) {
  const QRegularExpression muster(u"^%1(%2(\\d{8}_\\d{6}))\\.jpg$"_s.arg(ablage, name));
  for (const QString& datei : ist.dateien.keys()) {
    const QRegularExpressionMatch treffer = muster.match(datei);
    if (!treffer.hasMatch()) continue;
    const QDateTime zeit = QDateTime::fromString(treffer.captured(2), u"yyyyMMdd_HHmmss"_s);
    EXPECT_GE(zeit, von) << qUtf8Printable(datei);
    EXPECT_LE(zeit, QDateTime::currentDateTime()) << qUtf8Printable(datei);
    return treffer.captured(1);
  }
  ADD_FAILURE() << "not saved: " << qUtf8Printable(name);
  return name;
}
