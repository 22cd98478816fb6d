#include "host/betrieb/Schema.h"

#include <QRegularExpression>
#include <algorithm>

#include "Schematext.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Datenbankart.h"
#include "platform/adodb/SqlZerleger.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a database has of the two tables.
struct Bestand {
  QStringList tabellen;
  QStringList spalten;
  QStringList indexe;
};

QStringList nur_in(const QStringList& neu, const QStringList& alt) {
  QStringList liste;
  for (const QString& name : neu)
    if (!alt.contains(name, Qt::CaseInsensitive)) liste.append(name);
  return liste;
}

class Anleger {
 public:
  explicit Anleger(adodb::Connection& verbindung) : verbindung_(verbindung), art_(Datenbankart::von(verbindung)) {}

  schema::Angelegt lege_an(bool mit_Beispieltabellen) {
    const Bestand vorher = lies();
    fuehre_aus(art_.Skript);
    if (mit_Beispieltabellen) fuehre_aus(art_.Wirtsskript);
    const bool mit_Vorgaengen = vorher.tabellen.isEmpty() && keine_Vorgaenge();
    if (mit_Vorgaengen) fuehre_aus(art_.Vorgangsskript);
    const Bestand nachher = lies();
    schema::Angelegt angelegt{nur_in(nachher.tabellen, vorher.tabellen), {}, nur_in(nachher.indexe, vorher.indexe)};
    for (const QString& spalte : nur_in(nachher.spalten, vorher.spalten))
      if (!angelegt.tabellen.contains(spalte.section(u'.', 0, 0), Qt::CaseInsensitive)) angelegt.spalten.append(spalte);
    if (mit_Vorgaengen) angelegt.tabellen.append(schema::Vorgaenge);
    return angelegt;
  }

  void fuehre_aus(const QString& skript) {
    for (const QString& anweisung : adodb::zerlege_skript(skript)) {
      verbindung_.Execute(anweisung);
      if (!art_.ergaenzt_Spalten && anweisung.contains("CREATE TABLE"_L1)) ergaenze(anweisung);
    }
  }

 private:
  /// Nothing of the database bears a name that the records' script would need.
  bool keine_Vorgaenge() const {
    const QStringList namen{schema::Vorgaenge, u"Vorgaenge"_s, u"Kunden"_s};
    return std::all_of(namen.begin(), namen.end(), [&](const QString& name) {
      const auto ausfall =
          versuche_Datenbank([&] { verbindung_.Execute(u"SELECT 1 FROM %1 WHERE 1 = 0"_s.arg(name)); });
      return ausfall && ausfall->grund == Datenbankgrund::Tabelle_fehlt;
    });
  }

  /// SQLite has no condition for ALTER TABLE, so what the server's script does by itself is done here.
  void ergaenze(const QString& create_table) {
    const QStringList vorhandene = lies().spalten;
    static const QRegularExpression Name(u"CREATE TABLE IF NOT EXISTS (\\w+)"_s);
    const QString tabelle = Name.match(create_table).captured(1);
    const auto gewuenschte = schema::definitionen(create_table);
    for (const schema::Spalte& spalte : schema::spalten(tabelle))
      if (!vorhandene.contains(tabelle + u'.' + spalte.name, Qt::CaseInsensitive))
        verbindung_.Execute(u"ALTER TABLE %1 ADD COLUMN %2"_s.arg(tabelle, gewuenschte.value(spalte.name.toUpper())));
  }

  Bestand lies() {
    Bestand bestand;
    const auto satz = verbindung_.Execute(art_.Spaltennamen.arg(schema::Zuordnungen, schema::Belegkoepfe));
    for (; !satz->Eof(); satz->MoveNext()) {
      if (!bestand.tabellen.contains(satz->Text(0))) bestand.tabellen.append(satz->Text(0));
      bestand.spalten.append(satz->Text(0) + u'.' + satz->Text(1));
    }
    const auto indexe = verbindung_.Execute(art_.Indexnamen.arg(schema::Zuordnungen, schema::Belegkoepfe));
    for (; !indexe->Eof(); indexe->MoveNext()) bestand.indexe.append(indexe->Text(0));
    return bestand;
  }

  adodb::Connection& verbindung_;
  const Datenbankart& art_;
};

}  // namespace

namespace schema {

QList<Spalte> spalten(const QString& tabelle) {
  static const QRegularExpression Eine(
      u"^  (\\w+) (\\w+)(?:\\((\\d+)\\))? (?:NOT )?NULL"_s, QRegularExpression::MultilineOption);
  static const QString Skripte =
      Datenbankart::Server.Skript + Datenbankart::Server.Wirtsskript + Datenbankart::Server.Vorgangsskript;
  const qsizetype anfang = Skripte.indexOf(u"CREATE TABLE dbo.%1 ("_s.arg(tabelle), 0, Qt::CaseInsensitive);
  if (anfang < 0) return {};
  const QString rumpf = Skripte.mid(anfang, Skripte.indexOf(u"\n)"_s, anfang) - anfang);
  QList<Spalte> liste;
  for (auto lauf = Eine.globalMatch(rumpf); lauf.hasNext();) {
    const QRegularExpressionMatch treffer = lauf.next();
    liste.append({treffer.captured(1), treffer.captured(2), treffer.captured(3).toInt()});
  }
  return liste;
}

QHash<QString, QString> definitionen(const QString& create_table) {
  static const QRegularExpression Name(u"^[\"\\[`]?(\\w+)"_s);
  const qsizetype auf = create_table.indexOf(u'(') + 1;
  const QStringView rumpf = QStringView(create_table).sliced(auf, std::max(auf, create_table.lastIndexOf(u')')) - auf);
  QHash<QString, QString> gefunden;
  qsizetype beginn = 0;
  int tiefe = 0;
  QChar marke;
  for (qsizetype i = 0; i <= rumpf.size(); ++i) {
    const QChar zeichen = i < rumpf.size() ? rumpf[i] : QChar(u',');
    if (marke.isNull() && (zeichen == u'\'' || zeichen == u'"'))
      marke = zeichen;
    else if (zeichen == marke)
      marke = QChar();
    if (!marke.isNull()) continue;
    tiefe += zeichen == u'(' ? 1 : zeichen == u')' ? -1 : 0;
    if (tiefe != 0 || zeichen != u',') continue;
    const QString glied = rumpf.sliced(beginn, i - beginn).toString().trimmed();
    gefunden.insert(Name.match(glied).captured(1).toUpper(), glied);
    beginn = i + 1;
  }
  return gefunden;
}

Angelegt lege_an(const QString& verbindung, bool mit_Beispieltabellen) {
  const std::optional<QString> datei = datenbankdatei(verbindung);
  const bool neu = datei && !FileSystemObject().FileExists(*datei);
  const auto offene = oeffne(neu ? verbindung + u";Mode=ReadWriteCreate"_s : verbindung);
  Angelegt angelegt;
  if (const auto grund = versuche_Datenbank([&] { angelegt = Anleger(*offene).lege_an(mit_Beispieltabellen); }))
    throw Abbruch(Ausgang::Datenbank, u"Die Tabelle ist nicht anzulegen: "_s + grund->worte);
  return angelegt;
}

void richte_Betrieb_ein(adodb::Connection& verbindung) {
  Anleger anleger(verbindung);
  for (const char16_t* skript : {Bild_Zuordnungen, Bild_Vorgaenge, Betrieb})
    anleger.fuehre_aus(QString::fromUtf16(skript));
  kennzeichne(verbindung);
}

void uebernimm_Betrieb(adodb::Connection& verbindung) {
  Anleger(verbindung).fuehre_aus(QString::fromUtf16(Betrieb_Uebernahme));
}

bool nennt_Vorgaenge(adodb::Connection& verbindung) {
  const QString katalog = Datenbankart::von(verbindung).ist_Datei
      ? u"SELECT 1 FROM sqlite_master WHERE name = 'Bild_Vorgaenge' COLLATE NOCASE"_s
      : u"SELECT 1 FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME = 'Bild_Vorgaenge'"_s;
  return !verbindung.Execute(katalog)->Eof();
}

bool hat_eigene_Vorgaenge(adodb::Connection& verbindung) {
  if (!Datenbankart::von(verbindung).ist_Datei) return false;
  const auto satz = verbindung.Execute(
      u"SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name IN ('Vorgaenge', 'Kunden', "
      "'Vorgaenge_Ruhe')"_s);
  return satz->Text(0) == "3"_L1;
}

}  // namespace schema
