// What the tour looks at and saves as a picture report.
#include <QComboBox>

#include "host/betrieb/Namen.h"
#include "host/fenster/bericht/Seitenansicht.h"
#include "host/rundgang/Rundgang.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

void Rundgang::plane_Bericht() {
  const QString datei = ordner_ + u"\\daten\\Bildbericht AB 24-1001.pdf"_s;
  const auto zeigt_Seite = [this](const QString& stand) {
    return beide(beide(fenster_offen(u"Berichtsfenster"_s), zeigt(u"lbl_Seite"_s, stand)),
        [this] { return !element<Seitenansicht>(u"Seitenansicht"_s).laedt(); });
  };
  const Tat oeffne = [=, this] {
    Berichtsfragen fragen;
    fragen.ziel = [=](QWidget*, const QString&) { return namen::angezeigt(datei); };
    fenster_->zeige_Bericht(fragen);
  };
  const Tat naechste_Zahl = [this] {
    element<QComboBox>(u"cbo_JeSeite"_s).setFocus();
    hand_.taste(Qt::Key_Down);
  };
  schritt(u"Klick auf AB 24-1001: Vier Bilder sind zum Drucken gekennzeichnet."_s, {klick_Vorgang(u"AB 24-1001"_s)},
      zeigt(u"lbl_Nummer"_s, u"AB 24-1001"_s));
  schritt(u"Strg+P: Der Bericht zeigt sie, zwei je Seite."_s, {taste(Qt::Key_P, Qt::ControlModifier)},
      zeigt_Seite(u"Seite 1 von 2"_s));
  schritt(u"Escape: Das Programm ist wieder da."_s, {taste(Qt::Key_Escape)}, zurueck());
  schritt(u"Klick auf „Bericht …“."_s, {oeffne}, zeigt_Seite(u"Seite 1 von 2"_s));
  schritt(
      u"Den Namen der Firma und ihre Anschrift getippt: Sie stehen über dem Bericht."_s,
      {ueberschreibe(u"txt_Zeile1"_s, u"Winterhalder Haustechnik"_s),
          ueberschreibe(u"txt_Zeile2"_s, u"Talstraße 12 · 79100 Freiburg"_s)},
      [this] {
    const auto& seiten = element<Seitenansicht>(u"Seitenansicht"_s);
    return seiten.bericht().kopf.zeilen.size() == 2 && !seiten.laedt();
      },
      {bild(u"bericht"_s)});
  schritt(u"Vier Bilder je Seite gewählt: Eine Seite genügt."_s, {naechste_Zahl}, zeigt_Seite(u"Seite 1 von 1"_s));
  schritt(u"Klick auf „Als PDF speichern …“: Die Datei ist da."_s, {klick(u"cmd_Speichern"_s)},
      zeigt(u"lbl_Status"_s, u"Gespeichert: "_s + namen::angezeigt(datei)),
      {pruefe(u"die Datei des Berichts"_s, [=] { return FileSystemObject().FileExists(datei); }),
          bild(u"bericht_gespeichert"_s)});
  schritt(u"Klick auf „Schließen“: Die Statuszeile sagt, wo er liegt."_s, {klick(u"cmd_Schliessen"_s)},
      zurueck_mit(
          u"Beleg AB 24-1001 – Bäckerei Huber, Freiburg · Projekt P-24-07: Gespeichert: "_s + namen::angezeigt(datei)));
}
