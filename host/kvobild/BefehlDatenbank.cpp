#include <algorithm>

#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/kvobild/Befehle.h"
#include "host/kvobild/Befehlssitzung.h"
#include "host/kvobild/pruefung/Datenpruefung.h"
#include "host/kvobild/pruefung/Sichtpruefung.h"
#include "host/kvobild/pruefung/Tabellenpruefung.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

void zeile(const QString& was, const QString& wert) {
  ausgabe::zeile((was + u':').leftJustified(18) + wert);
}

/// A value so short that its row stays a line; of a firm's view it can have thousands of characters.
QString wert_von(const QJsonValue& wert) {
  constexpr qsizetype Laengster = 60;
  if (wert.isNull()) return u"NULL"_s;
  const QString text = wert.toString();
  if (text.isEmpty()) return u"''"_s;
  return text.size() <= Laengster ? text : text.left(Laengster - 1) + u'…';
}

QString werte_von(const QJsonObject& zeile, const QStringList& namen) {
  QStringList teile;
  for (const QString& name : namen)
    if (zeile.contains(name)) teile.append(wert_von(zeile[name]));
  return teile.join(u' ');
}

/// A row of Bild_Zuordnungen as "BEL - AB 24-1001 - -: Belege\24-1001\foto.jpg", one of Bild_Vorgaenge or what it has
/// of it as "BEL AB 24-1001 ''"; every part of the identity stands there, empty ones visibly.
QString genannt(const QJsonObject& zeile) {
  QString text = werte_von(zeile, {u"typ1"_s, u"typ2"_s, u"key1"_s, u"key2"_s, u"key3"_s, u"key4"_s, u"ordner"_s});
  if (zeile.contains(u"bildname"_s)) {
    const QString ordner = zeile[u"bildpfad"_s].toString();
    const QString datei = wert_von(zeile[u"bildname"_s]) + u'.' + wert_von(zeile[u"bildext"_s]);
    text += u": "_s + (ordner.isEmpty() ? datei : ordner + u'\\' + datei);
  }
  if (zeile.contains(u"stand"_s)) text += u": "_s + wert_von(zeile[u"stand"_s]);
  if (zeile.contains(u"laenge"_s)) text += u" (%1 Zeichen)"_s.arg(zeile[u"laenge"_s].toString());
  if (zeile.contains(u"zeilen"_s)) text += u" (%1-mal)"_s.arg(zeile[u"zeilen"_s].toString());
  return text;
}

void zeige(const Befund& befund, bool als_Json) {
  if (als_Json) {
    ausgabe::json({{u"art"_s, befund.hinweis ? u"hinweis"_s : u"befund"_s}, {u"kennung"_s, befund.kennung},
        {u"text"_s, befund.text}, {u"sperrt"_s, befund.sperrt}, {u"anzahl"_s, befund.anzahl},
        {u"zeilen"_s, befund.zeilen}});
    return;
  }
  ausgabe::zeile((befund.hinweis ? u"Hinweis: "_s : u"Befund: "_s) + befund.text);
  for (const auto& eine : befund.zeilen) ausgabe::zeile(u"  "_s + genannt(eine.toObject()));
  if (befund.anzahl > befund.zeilen.size()) ausgabe::zeile(u"  … und weitere"_s);
}

void zeige(const Gegenstelle& stelle, bool als_Json) {
  if (als_Json) {
    ausgabe::json({{u"art"_s, u"verbindung"_s}, {u"server"_s, stelle.server}, {u"version"_s, stelle.version},
        {u"datenbank"_s, stelle.datenbank}, {u"benutzer"_s, stelle.benutzer},
        {u"verschluesselt"_s, stelle.verschluesselt ? QJsonValue(*stelle.verschluesselt) : QJsonValue()},
        {u"verschluesselung"_s, stelle.verschluesselung},
        {u"zertifikat"_s, stelle.zertifikat.isEmpty() ? QJsonValue() : QJsonValue(stelle.zertifikat)}});
    return;
  }
  zeile(u"Erreicht"_s, stelle.server);
  zeile(u"Version"_s, stelle.version);
  if (!stelle.datenbank.isEmpty()) zeile(u"Datenbank"_s, stelle.datenbank);
  if (!stelle.benutzer.isEmpty()) zeile(u"Benutzer"_s, stelle.benutzer);
  zeile(u"Verschlüsselung"_s, stelle.verschluesselung);
}

QString rechte_an(const Tabellenlage& lage, const QString& tabelle) {
  QStringList texte;
  for (const Recht& recht : lage.rechte)
    if (recht.tabelle == tabelle) texte.append(recht.anweisung + (recht.reicht ? u" ja"_s : u" NEIN"_s));
  return texte.join(u", "_s);
}

void zeige(const Tabellenlage& lage, bool als_Json) {
  for (qsizetype i = 0; i < lage.tabellen.size(); ++i) {
    const QString& tabelle = lage.tabellen.at(i);
    const auto noetig = schema::spalten(tabelle).size();
    if (als_Json)
      ausgabe::json({{u"art"_s, u"tabelle"_s}, {u"tabelle"_s, tabelle}, {u"spalten"_s, lage.spalten.at(i)},
          {u"noetig"_s, static_cast<qint64>(noetig)}});
    else
      zeile(tabelle,
          u"%1 von %2 Spalten; %3"_s.arg(
              QString::number(lage.spalten.at(i)), QString::number(noetig), rechte_an(lage, tabelle)));
  }
  if (!als_Json) return;
  for (const Recht& recht : lage.rechte)
    ausgabe::json({{u"art"_s, u"recht"_s}, {u"anweisung"_s, recht.anweisung}, {u"tabelle"_s, recht.tabelle},
        {u"reicht"_s, recht.reicht}});
}

QList<Befund> pruefe_und_zeige_Vorgaenge(adodb::Connection& verbindung, bool mit_Zuordnungen, bool als_Json) {
  const Sichtlage lage = pruefe_Sicht(verbindung, mit_Zuordnungen);
  zeige(lage.sicht, als_Json);
  if (lage.vorgaenge && als_Json) ausgabe::json({{u"art"_s, u"vorgaenge"_s}, {u"anzahl"_s, *lage.vorgaenge}});
  if (lage.vorgaenge && !als_Json) zeile(u"Vorgänge"_s, QString::number(*lage.vorgaenge));
  return lage.sicht.befunde;
}

/// A root without anything in it is a share that is not mounted; every picture would be missing.
void pruefe_Wurzel(const std::optional<QString>& wurzel, qint64 zeilen) {
  if (wurzel && zeilen > 0 && FileSystemObject().GetFolder(*wurzel).Anzahl_Eintraege() == 0)
    throw Abbruch(Ausgang::Datei, u"Die Bildablage ist leer, obwohl es Zuordnungen gibt. Ist sie eingehängt?"_s);
}

Datenlage pruefe_und_zeige_Daten(adodb::Connection& verbindung, const std::optional<QString>& wurzel, bool als_Json) {
  const Datenlage lage = pruefe_Daten(verbindung, wurzel);
  if (als_Json) {
    ausgabe::json({{u"art"_s, u"zeilen"_s}, {u"anzahl"_s, lage.zeilen}, {u"mit_bildern"_s, wurzel.has_value()}});
  } else {
    zeile(u"Zeilen"_s, QString::number(lage.zeilen));
    zeile(u"Bilder"_s, wurzel ? u"geprüft"_s : u"nicht geprüft (dazu gehört „--bilder“)"_s);
  }
  pruefe_Wurzel(wurzel, lage.zeilen);
  return lage;
}

Ausgang pruefe(const Aufruf& aufruf) {
  const bool als_Json = aufruf.gesetzt(u"json"_s);
  const std::optional<QString> wurzel = bildwurzel_wenn_genannt(aufruf);
  const auto verbindung = oeffne_vorhandene(verbindungszeichenfolge(aufruf));
  QList<Befund> befunde;
  const auto ausfall = versuche_Datenbank([&] {
    zeige(Datenbankart::von(*verbindung).gegenstelle(*verbindung), als_Json);
    const Tabellenlage lage = pruefe_Tabellen(*verbindung);
    zeige(lage, als_Json);
    befunde = lage.befunde;
    befunde += pruefe_und_zeige_Vorgaenge(*verbindung, lage.lesbar, als_Json);
    if (lage.lesbar) befunde += pruefe_und_zeige_Daten(*verbindung, wurzel, als_Json).befunde;
  });
  for (const Befund& befund : befunde) zeige(befund, als_Json);
  if (ausfall) throw Abbruch(Ausgang::Datenbank, u"Die Datenbank ist nicht zu Ende zu prüfen: "_s + ausfall->worte);
  befunde.removeIf([](const Befund& befund) { return befund.hinweis; });
  if (!als_Json) zeile(u"Ergebnis"_s, befunde.isEmpty() ? u"kein Befund"_s : u"Befunde: %1"_s.arg(befunde.size()));
  if (std::any_of(befunde.begin(), befunde.end(), [](const Befund& b) { return b.sperrt; })) return Ausgang::Datenbank;
  return befunde.isEmpty() ? Ausgang::Erledigt : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::datenbank_pruefen() {
  return {u"datenbank pruefen"_s, u"sagt, ob Datenbank, Tabellen, Rechte und Zeilen in Ordnung sind"_s, {},
      uR"(Nennt, was erreicht ist (Server oder Datei, Version, Datenbank, Benutzer, Verschlüsselung), prüft die
Tabellen Bild_Zuordnungen und BelegKopfZunft und die Sicht Bild_Vorgaenge mit allen Spalten, versucht die
Anweisungen des Systems, ohne eine Spur zu hinterlassen, und sucht Zeilen mit leerem Teil des Schlüssels,
mehrfache Zeilen und (mit --bilder) Zeilen, deren Bild fehlt; in der Sicht leere, NULL, zu lange und
mehrfache Schlüssel, Ordner, die die Bildablage verlassen, und was kein Datum ist; in eigenen Tabellen, ob
der Suchindex stimmt. Jeder Befund nennt die ersten 20 Zeilen; ein Hinweis ist keiner. Ausgang 1: es gibt
Befunde; 3: die Datenbank ist nicht zu erreichen, oder eine Tabelle, eine Spalte oder ein Recht fehlt;
4: die Bildablage fehlt oder ist leer. Mit --json steht je Zeile ein Objekt mit „art“: verbindung,
tabelle, recht, vorgaenge, zeilen, befund, hinweis; die beiden letzten haben „kennung“, „text“, „sperrt“,
„anzahl“ und „zeilen“.)"_s,
      {befehlszeile::verbindung_Option(), befehlszeile::bilder_Option(), befehlszeile::json_Option()}, 0, 0, pruefe};
}
