// What the tour makes of records: one by hand, and some from a list.
#include "host/betrieb/Namen.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/Dateien.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// As a spreadsheet writes it; the third line names a record that its kind does not allow.
const QByteArray Tabelle = QStringLiteral(
    "Typ1;Key1;Key2;Key3;Kundennummer;Kundenname;Ort;Text\r\n"
    "BEL;AN;26-4001;;10004;Gasthaus Krone;Breisach;Lüftung der Küche\r\n"
    "ANL;10004;Lüftung;1;10004;;;Abluft über Dach\r\n"
    "BEL;;26-4002;;;;;ohne Belegart\r\n")
                               .toUtf8();

}  // namespace

void Rundgang::plane_Vorgaenge() {
  const QString datei = ordner_ + u"\\daten\\vorgaenge.csv"_s;
  const Tat waehle_Datei = [=, this] {
    dateien::schreibe_alles(datei, Tabelle);
    fenster_->lies_Liste_ein([=](QWidget*) { return namen::angezeigt(datei); });
  };
  schritt(u"Strg+N: Das Fenster für einen neuen Vorgang öffnet sich."_s, {taste(Qt::Key_N, Qt::ControlModifier)},
      fenster_offen(u"Vorgangsfenster"_s));
  schritt(u"Belegart, Nummer und Text getippt: Jetzt ist der Vorgang vollständig."_s,
      {ueberschreibe(u"txt_Key1"_s, u"LS"_s), ueberschreibe(u"txt_Key2"_s, u"26-1007"_s),
          ueberschreibe(u"txt_Text"_s, u"Ersatzteile für die Wärmepumpe"_s)},
      frei(u"cmd_Speichern"_s), {bild(u"vorgang_neu"_s)});
  schritt(u"Klick auf „Speichern“: Er ist angelegt und gewählt."_s, {klick(u"cmd_Speichern"_s)},
      zeigt(u"lbl_Nummer"_s, u"LS 26-1007"_s));
  schritt(u"Eine Liste aus einer Tabelle gewählt: Die Vorschau zeigt, was neu ist, und eine fehlerhafte Zeile."_s,
      {waehle_Datei},
      beide(fenster_offen(u"Einlesefenster"_s), [this] { return text(u"lbl_Befund"_s).startsWith(u"Neu: 2"_s); }),
      {bild(u"vorgaenge_einlesen"_s)});
  schritt(u"„Fehlerhafte Zeilen auslassen“ angekreuzt."_s, {kreuze_an(u"chk_Auslassen"_s)}, frei(u"cmd_Einlesen"_s));
  schritt(u"Klick auf „Einlesen“: Die beiden anderen Vorgänge stehen in der Liste."_s, {klick(u"cmd_Einlesen"_s)},
      zeigt(u"lbl_Umfang"_s, u"16 Vorgänge"_s));
}
