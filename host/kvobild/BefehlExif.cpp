#include <QJsonArray>

#include "exif/clsExifInfo.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/kvobild/Befehle.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Spalte = clsExifInfo::Spalte;

/// What the reader made of one file.
struct Befund {
  QJsonValue load;
  QJsonValue eintraege;
  std::vector<Exif_Entry> liste;
  /// None where the reader gives none.
  std::shared_ptr<XArrayDBObject> tabelle;
  QString fehler;
};

QJsonValue als_Json(const Variant& wert) {
  if (const auto* zahl = std::get_if<std::int32_t>(&wert)) return *zahl;
  if (const auto* wahr = std::get_if<bool>(&wert)) return *wahr;
  if (const auto* text = std::get_if<QString>(&wert)) return *text;
  return QJsonValue();
}

QString als_Text(const Variant& wert) {
  QString text = CStr(wert);
  constexpr qsizetype Hoechstens = 100;
  if (text.size() > Hoechstens) text = text.left(Hoechstens) + u"…"_s;
  for (QChar& c : text)
    if (c < u' ') c = u'.';
  return text;
}

Befund lies(const QString& angabe) {
  Befund befund;
  // The reader's way of opening would make a missing file; a mistyped name must not leave one behind.
  const QString pfad = namen::tabellenpfad(angabe);
  if (!FileSystemObject().FileExists(pfad) && !FileSystemObject().FolderExists(pfad))
    return {false, {}, {}, nullptr, u"Die Datei gibt es nicht."_s};
  clsExifInfo leser;
  if (const auto grund = versuche([&] { befund.load = leser.Load(pfad); })) {
    befund.load = u"fehler"_s;
    befund.fehler = u"%1 (Fehler %2)"_s.arg(grund->Beschreibung(), QString::number(grund->Nummer()));
  }
  if (const auto anzahl = leser.Anzahl_Entries()) befund.eintraege = *anzahl;
  befund.liste = leser.Entries();
  if (befund.load.toBool()) befund.tabelle = leser.Get_ExifInfo();
  return befund;
}

const Variant& zelle(const XArrayDBObject& tabelle, std::int32_t zeile, clsExifInfo::Spalte spalte) {
  return tabelle.Value(zeile, static_cast<std::int32_t>(spalte));
}

QJsonValue tabelle_als_Json(const Befund& befund) {
  if (!befund.tabelle) return QJsonValue();
  const XArrayDBObject& tabelle = *befund.tabelle;
  QJsonArray zeilen;
  for (std::int32_t i = 0; i <= tabelle.UpperBound(XArrayDBObject::Dimension::Zeilen); ++i)
    zeilen.append(QJsonObject{{u"zeile"_s, i}, {u"zeigen"_s, als_Json(zelle(tabelle, i, Spalte::Zeigen))},
        {u"tag"_s, als_Json(zelle(tabelle, i, Spalte::Tag))}, {u"name"_s, als_Json(zelle(tabelle, i, Spalte::Name))},
        {u"beschriftung"_s, als_Json(zelle(tabelle, i, Spalte::Beschriftung))},
        {u"wert"_s, als_Json(zelle(tabelle, i, Spalte::Wert))}});
  return zeilen;
}

void zeige_Json(const QString& datei, const Befund& befund) {
  QJsonArray liste;
  for (const Exif_Entry& e : befund.liste)
    liste.append(QJsonObject{{u"tag"_s, e.Tag_Id}, {u"format"_s, e.Format_Code}, {u"anzahl"_s, e.Item_Count},
        {u"wert"_s, als_Json(e.Value)}});
  ausgabe::json({{u"datei"_s, datei}, {u"load"_s, befund.load}, {u"eintraege"_s, befund.eintraege}, {u"liste"_s, liste},
      {u"tabelle"_s, tabelle_als_Json(befund)}});
}

/// The rows that have a value.
void zeige_Tabelle(const XArrayDBObject& tabelle) {
  ausgabe::zeile(u"  Tabelle:"_s);
  for (std::int32_t i = 0; i <= tabelle.UpperBound(XArrayDBObject::Dimension::Zeilen); ++i) {
    const Variant& wert = zelle(tabelle, i, Spalte::Wert);
    if (CStr(wert).isEmpty()) continue;
    const bool zeigen = !CStr(zelle(tabelle, i, Spalte::Zeigen)).isEmpty();
    ausgabe::zeile(u"  %1  %2  %3  "_s.arg(i, 3)
                       .arg(zeigen ? u"zeigen"_s : u"-     "_s)
                       .arg(CStr(zelle(tabelle, i, Spalte::Tag)), 5) +
        CStr(zelle(tabelle, i, Spalte::Name)).leftJustified(28) +
        CStr(zelle(tabelle, i, Spalte::Beschriftung)).leftJustified(28) + als_Text(wert));
  }
}

void zeige(const QString& datei, const Befund& befund) {
  if (!befund.fehler.isEmpty()) return;
  ausgabe::zeile(datei + (befund.load.toBool() ? u": %1 Einträge"_s.arg(befund.liste.size()) : u": kein Exif"_s));
  for (const Exif_Entry& e : befund.liste)
    ausgabe::zeile(u"  %1  Format %2  Anzahl %3  "_s.arg(e.Tag_Id, 5).arg(e.Format_Code, 2).arg(e.Item_Count, 6) +
        als_Text(e.Value));
  if (befund.tabelle) zeige_Tabelle(*befund.tabelle);
}

Ausgang zeige_alle(const Aufruf& aufruf) {
  qsizetype gescheitert = 0;
  for (const QString& datei : aufruf.argumente()) {
    const Befund befund = lies(datei);
    if (aufruf.gesetzt(u"json"_s))
      zeige_Json(datei, befund);
    else
      zeige(datei, befund);
    if (befund.fehler.isEmpty()) continue;
    ++gescheitert;
    ausgabe::meldung(u"„%1“ ist nicht zu lesen: %2"_s.arg(datei, befund.fehler));
  }
  if (gescheitert == 0) return Ausgang::Erledigt;
  return gescheitert == aufruf.argumente().size() ? Ausgang::Datei : Ausgang::Teilweise;
}

}  // namespace

Befehl befehle::exif() {
  return {u"exif"_s, u"zeigt die Exif-Angaben von Bilddateien"_s, u"DATEI…"_s,
      uR"(Liest den Exif-Block jeder Datei und zeigt seine Einträge in der Reihenfolge des Lesens, danach die
Zeilen der Eigenschaftentabelle, die einen Wert haben: Zeile, ob die Eigenschaften sie zeigen, Tag,
Name, Beschriftung, Wert. Mit --json steht je Datei eine Zeile: „datei“; „load“ (true, false oder
"fehler", wenn das Lesen scheiterte); „eintraege“ (Anzahl oder null); „liste“ mit „tag“, „format“,
„anzahl“ und „wert“ (null, Zahl oder Text) je Eintrag; „tabelle“ (null, wo es keine gibt) mit „zeile“,
„zeigen“ (true oder ""), „tag“, „name“, „beschriftung“ und „wert“ für alle Zeilen von 0 bis 150; hinter
111 stehen keine Tags mehr. Eine Datei ohne Exif ist kein Fehler.)"_s,
      {befehlszeile::json_Option()}, 1, 1000000, zeige_alle};
}
