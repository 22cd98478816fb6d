#include "host/betrieb/Datenbankart.h"

#include <QRegularExpression>

#include "Schematext.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Schema.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Spaltenlage aus_Server(const adodb::Recordset& satz) {
  Spaltenlage spalte{satz.Text(0), satz.Text(1).toLower()};
  spalte.laenge = satz.Text(2).isEmpty() ? -1 : satz.Text(2).toInt();
  spalte.nullbar = satz.Text(3).compare("NO"_L1, Qt::CaseInsensitive) != 0;
  // A char column fills up with blanks, which do no harm where the text is as long as the column anyway.
  const bool gefuellt = spalte.typ == "char"_L1 || spalte.typ == "nchar"_L1;
  spalte.ist_Text = spalte.typ == "nvarchar"_L1 || spalte.typ == "varchar"_L1 ||
      (gefuellt && spalte.name.compare("Druckkennzeichen"_L1, Qt::CaseInsensitive) == 0);
  spalte.ist_Zahl = QStringList{u"smallint"_s, u"int"_s, u"bigint"_s}.contains(spalte.typ);
  const QString sortierung = satz.Text(4).toUpper();
  spalte.vergleicht_gleich = !sortierung.contains("_CS"_L1) && !sortierung.contains("_BIN"_L1);
  return spalte;
}

/// SQLite takes any length; what bounds it is the condition that the script gives the column.
Spaltenlage aus_Datei(const adodb::Recordset& satz) {
  const QString definition = schema::definitionen(satz.Text(3)).value(satz.Text(0).toUpper());
  Spaltenlage spalte{satz.Text(0), satz.Text(1).toLower()};
  const QRegularExpression laenge(
      u"\\bLEN\\s*\\([^)]*\\)\\s*<=\\s*(\\d+)"_s, QRegularExpression::CaseInsensitiveOption);
  if (const auto treffer = laenge.match(definition); treffer.hasMatch()) spalte.laenge = treffer.captured(1).toInt();
  spalte.nullbar = satz.Text(2) == "0"_L1;
  spalte.ist_Text = spalte.typ.contains("text"_L1) || spalte.typ.contains("char"_L1);
  spalte.ist_Zahl = spalte.typ.contains("int"_L1);
  static const QRegularExpression Sortierung(
      u"\\bCOLLATE\\s+[\"\\[`]?SERVERTEXT"_s, QRegularExpression::CaseInsensitiveOption);
  spalte.vergleicht_gleich = !spalte.ist_Text || definition.contains(Sortierung);
  return spalte;
}

}  // namespace

const Datenbankart Datenbankart::SQLite{
    .ist_Datei = true,
    .Skript = QString::fromUtf16(schema::Bild_Zuordnungen),
    .Wirtsskript = QString::fromUtf16(schema::Wirtstabellen_Beispiel),
    .Vorgangsskript = QString::fromUtf16(schema::Bild_Vorgaenge),
    .ergaenzt_Spalten = false,
    .Spaltennamen =
        u"SELECT m.name, p.name FROM sqlite_master m JOIN pragma_table_info(m.name) p "
        "WHERE m.name COLLATE NOCASE IN ('%1', '%2')"_s,
    .Indexnamen =
        u"SELECT name FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL "
        "AND tbl_name COLLATE NOCASE IN ('%1', '%2')"_s,
    .Spalten =
        u"SELECT p.name, p.type, p.\"notnull\", m.sql FROM sqlite_master m JOIN "
        "pragma_table_info(m.name) p WHERE m.name = '%1' COLLATE NOCASE ORDER BY p.cid"_s,
    .spalte = aus_Datei,
    .Pflichtspalten =
        u"SELECT name FROM pragma_table_info('Bild_Zuordnungen') WHERE \"notnull\" = 1 AND pk = 0 AND "
        "dflt_value IS NULL"_s,
    .Schluesselbytes = 0,
    .Vergleichstext = u"SUCHTEXT(%1)"_s,
    .faltet = true,
    .Ruecknahme = u"ROLLBACK TRANSACTION"_s,
    .gegenstelle = gegenstelle_Datei,
};

const Datenbankart Datenbankart::Server{
    .ist_Datei = false,
    .Skript = QString::fromUtf16(schema::Server_Bild_Zuordnungen),
    .Wirtsskript = QString::fromUtf16(schema::Server_Wirtstabellen_Beispiel),
    .Vorgangsskript = QString::fromUtf16(schema::Server_Bild_Vorgaenge),
    .ergaenzt_Spalten = true,
    .Spaltennamen =
        u"SELECT TABLE_NAME, COLUMN_NAME FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_SCHEMA = 'dbo' "
        "AND TABLE_NAME IN ('%1', '%2')"_s,
    .Indexnamen =
        u"SELECT name FROM sys.indexes WHERE name IS NOT NULL AND object_id IN "
        "(OBJECT_ID(N'dbo.%1'), OBJECT_ID(N'dbo.%2'))"_s,
    .Spalten =
        u"SELECT COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, IS_NULLABLE, COLLATION_NAME FROM "
        "INFORMATION_SCHEMA.COLUMNS WHERE TABLE_SCHEMA = 'dbo' AND TABLE_NAME = '%1' "
        "ORDER BY ORDINAL_POSITION"_s,
    .spalte = aus_Server,
    // 189 is the type of a row's version, which the server fills in itself.
    .Pflichtspalten =
        u"SELECT name FROM sys.columns WHERE object_id = OBJECT_ID(N'dbo.Bild_Zuordnungen') AND "
        "is_nullable = 0 AND is_identity = 0 AND is_computed = 0 AND default_object_id = 0 AND "
        "system_type_id <> 189"_s,
    .Schluesselbytes = 1700,
    .Vergleichstext = u"%1"_s,
    .faltet = false,
    .Ruecknahme = u"IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"_s,
    .gegenstelle = gegenstelle_Server,
};

const Datenbankart& Datenbankart::von(const adodb::Verbindungszeichenfolge& folge) {
  const QString anbieter = folge.wert_zu({adodb::Wortsinn::Anbieter});
  return anbieter.compare("SQLite"_L1, Qt::CaseInsensitive) == 0 ? SQLite : Server;
}

const Datenbankart& Datenbankart::von(const adodb::Connection& verbindung) {
  return von(gelesene_Verbindung(verbindung.ConnectionString()));
}

adodb::Verbindungszeichenfolge gelesene_Verbindung(const QString& verbindung) {
  adodb::Verbindungszeichenfolge folge{QString()};
  gelingt([&] { folge = adodb::Verbindungszeichenfolge(verbindung); });
  return folge;
}
