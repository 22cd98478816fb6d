#include "host/betrieb/Gegenstelle.h"

#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using adodb::Leitungsschutz;

void nenne_Zertifikat(Leitungsschutz::Pruefung pruefung, Gegenstelle& stelle) {
  switch (pruefung) {
    case Leitungsschutz::Pruefung::Ganz:
      stelle.zertifikat = u"geprueft"_s;
      stelle.verschluesselung = u"ja, Zertifikat geprüft"_s;
      return;
    case Leitungsschutz::Pruefung::Ohne_Namen:
      stelle.zertifikat = u"ohne_namen"_s;
      stelle.verschluesselung = u"ja, Zertifikat geprüft bis auf den Namen"_s;
      return;
    case Leitungsschutz::Pruefung::Keine:
      stelle.zertifikat = u"nicht_geprueft"_s;
      stelle.verschluesselung = u"ja, Zertifikat nicht geprüft"_s;
      return;
    case Leitungsschutz::Pruefung::Unbekannt:
      stelle.verschluesselung = u"ja; ob das Zertifikat geprüft ist, sagt der Treiber nicht"_s;
  }
}

void nenne(bool verschluesselt, Leitungsschutz::Pruefung pruefung, Gegenstelle& stelle) {
  stelle.verschluesselt = verschluesselt;
  stelle.verschluesselung = u"nein"_s;
  if (verschluesselt) nenne_Zertifikat(pruefung, stelle);
}

/// The driver knows where it was told; for the rest the server's own view is asked, which most users may not read: no
/// function that everybody may call has it.
void lies_Verschluesselung(adodb::Connection& verbindung, Gegenstelle& stelle) {
  const Leitungsschutz schutz = verbindung.Schutz();
  if (schutz.umfang != Leitungsschutz::Umfang::Offen)
    return nenne(schutz.umfang == Leitungsschutz::Umfang::Ganz, schutz.pruefung, stelle);
  QString antwort;
  const auto ausfall = versuche_Datenbank([&] {
    const auto satz =
        verbindung.Execute(u"SELECT encrypt_option FROM sys.dm_exec_connections WHERE session_id = @@SPID"_s);
    if (!satz->Eof()) antwort = satz->Text(0).trimmed().toUpper();
  });
  if (antwort == "TRUE"_L1 || antwort == "FALSE"_L1) return nenne(antwort == "TRUE"_L1, schutz.pruefung, stelle);
  const bool ohne_Recht = ausfall && ausfall->grund == Datenbankgrund::Recht_fehlt;
  stelle.verschluesselung = u"nicht festzustellen ("_s +
      (ohne_Recht       ? u"dem Benutzer fehlt das Recht VIEW SERVER STATE"_s
              : ausfall ? ausfall->worte
                        : u"der Server nennt diese Verbindung nicht"_s) +
      u')';
}

}  // namespace

Gegenstelle gegenstelle_Datei(adodb::Connection& verbindung) {
  Gegenstelle stelle;
  stelle.server = namen::angezeigt(datenbankdatei(verbindung.ConnectionString()).value_or(QString()));
  stelle.version = u"SQLite "_s + verbindung.Execute(u"SELECT sqlite_version()"_s)->Text(0);
  stelle.verschluesselung = u"keine Verbindung, eine Datei"_s;
  return stelle;
}

Gegenstelle gegenstelle_Server(adodb::Connection& verbindung) {
  // The server gives its properties as values without a type; only with one does every driver bring them as text.
  const auto satz = verbindung.Execute(
      u"SELECT CAST(SERVERPROPERTY('ServerName') AS nvarchar(128)) AS Servername, "
      "CAST(SERVERPROPERTY('ProductVersion') AS nvarchar(128)) AS Fassung, "
      "CAST(SERVERPROPERTY('Edition') AS nvarchar(128)) AS Ausgabe, DB_NAME() AS Datenbank, SUSER_SNAME() AS Benutzer"_s);
  Gegenstelle stelle;
  stelle.server = satz->Text(0);
  stelle.version = u"Microsoft SQL Server %1, %2"_s.arg(satz->Text(1), satz->Text(2));
  stelle.datenbank = satz->Text(3);
  stelle.benutzer = satz->Text(4);
  lies_Verschluesselung(verbindung, stelle);
  return stelle;
}
