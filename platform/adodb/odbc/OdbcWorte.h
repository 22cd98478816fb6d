#pragma once

#include <QStringView>

namespace adodb {

/// What a keyword of a connect string is about.
enum class OdbcSinn {
  Anbieter,
  Treiber,
  Datenquelle,
  Abschnitt,
  Server,
  Port,
  Datenbank,
  Benutzer,
  Kennwort,
  Vertraut,
  Verschluesselung,
  FreeTdsVerschluesselung,
  Vertrauen,
  Zertifikatsname,
  Zertifikat,
  Dienstname,
  Bereich,
  Ntlm2,
  Programm,
  Arbeitsplatz,
  Sprache,
  Absicht,
  Netze,
  Protokoll,
  Paketgroesse,
  Anmeldezeit,
  Wirkungslos,
  Protokolldatei,
};

/// One keyword in small letters without blanks and underscores. `nur` lists the values that are taken, parted by bars,
/// in small letters; any other value is refused. Empty where every value is taken.
struct OdbcWort {
  QStringView name;
  OdbcSinn sinn;
  QStringView nur = {};
};

inline constexpr QStringView JaNein = u"yes|true|1|no|false|0";
inline constexpr QStringView Ja = u"yes|true|1";
inline constexpr QStringView Nein = u"no|false|0";

/// All keywords that are known, of OLE DB (SQLOLEDB, SQLNCLI, MSOLEDBSQL), of the maker's ODBC driver and of FreeTDS.
/// Wirkungslos stands where the value asks for what happens in any case.
inline constexpr OdbcWort OdbcWorte[] = {
    {u"provider", OdbcSinn::Anbieter},
    {u"driver", OdbcSinn::Treiber},
    {u"dsn", OdbcSinn::Datenquelle},
    {u"servername", OdbcSinn::Abschnitt},
    {u"datasource", OdbcSinn::Server},
    {u"server", OdbcSinn::Server},
    {u"address", OdbcSinn::Server},
    {u"addr", OdbcSinn::Server},
    {u"networkaddress", OdbcSinn::Server},
    {u"port", OdbcSinn::Port},
    {u"initialcatalog", OdbcSinn::Datenbank},
    {u"database", OdbcSinn::Datenbank},
    {u"userid", OdbcSinn::Benutzer},
    {u"uid", OdbcSinn::Benutzer},
    {u"user", OdbcSinn::Benutzer},
    {u"username", OdbcSinn::Benutzer},
    {u"password", OdbcSinn::Kennwort},
    {u"pwd", OdbcSinn::Kennwort},
    {u"integratedsecurity", OdbcSinn::Vertraut, u"sspi|yes|true|1|no|false|0"},
    {u"trustedconnection", OdbcSinn::Vertraut, JaNein},
    {u"encrypt", OdbcSinn::Verschluesselung, u"yes|true|1|mandatory|no|false|0|optional|strict"},
    {u"useencryptionfordata", OdbcSinn::Verschluesselung, u"yes|true|1|mandatory|no|false|0|optional|strict"},
    {u"encryption", OdbcSinn::FreeTdsVerschluesselung, u"require|request|off"},
    {u"trustservercertificate", OdbcSinn::Vertrauen, JaNein},
    {u"hostnameincertificate", OdbcSinn::Zertifikatsname},
    {u"servercertificate", OdbcSinn::Zertifikat},
    {u"serverspn", OdbcSinn::Dienstname},
    {u"realm", OdbcSinn::Bereich},
    {u"usentlmv2", OdbcSinn::Ntlm2, JaNein},
    {u"applicationname", OdbcSinn::Programm},
    {u"app", OdbcSinn::Programm},
    {u"workstationid", OdbcSinn::Arbeitsplatz},
    {u"wsid", OdbcSinn::Arbeitsplatz},
    {u"currentlanguage", OdbcSinn::Sprache},
    {u"language", OdbcSinn::Sprache},
    {u"applicationintent", OdbcSinn::Absicht, u"readwrite|readonly"},
    {u"multisubnetfailover", OdbcSinn::Netze, JaNein},
    {u"tdsversion", OdbcSinn::Protokoll, u"7.1|7.2|7.3|7.4|auto"},
    {u"packetsize", OdbcSinn::Paketgroesse},
    {u"connecttimeout", OdbcSinn::Anmeldezeit},
    {u"connectiontimeout", OdbcSinn::Anmeldezeit},
    {u"logintimeout", OdbcSinn::Anmeldezeit},
    {u"timeout", OdbcSinn::Anmeldezeit},
    {u"persistsecurityinfo", OdbcSinn::Wirkungslos, JaNein},
    {u"marsconnection", OdbcSinn::Wirkungslos, JaNein},
    {u"marsconn", OdbcSinn::Wirkungslos, JaNein},
    {u"multipleactiveresultsets", OdbcSinn::Wirkungslos, JaNein},
    {u"useprocedureforprepare", OdbcSinn::Wirkungslos, u"0|1|2"},
    {u"autotranslate", OdbcSinn::Wirkungslos, Ja},
    {u"tagwithcolumncollationwhenpossible", OdbcSinn::Wirkungslos, Nein},
    {u"quotedid", OdbcSinn::Wirkungslos, Ja},
    {u"ansinpw", OdbcSinn::Wirkungslos, Ja},
    {u"datatypecompatibility", OdbcSinn::Wirkungslos, u"0|80"},
    {u"networklibrary", OdbcSinn::Wirkungslos, u"dbmssocn"},
    {u"network", OdbcSinn::Wirkungslos, u"dbmssocn"},
    {u"net", OdbcSinn::Wirkungslos, u"dbmssocn"},
    {u"mode", OdbcSinn::Wirkungslos, u"readwrite|share deny none"},
    {u"prompt", OdbcSinn::Wirkungslos, u"4|noprompt"},
    {u"clientcharset", OdbcSinn::Wirkungslos, u"utf-8"},
    {u"localeidentifier", OdbcSinn::Wirkungslos, u"1031|1033"},
    {u"dumpfile", OdbcSinn::Protokolldatei},
    {u"dumpfileappend", OdbcSinn::Protokolldatei},
    {u"debugflags", OdbcSinn::Protokolldatei},
    // Known, and only to be left empty.
    {u"extendedproperties", OdbcSinn::Wirkungslos, u"|"},
    {u"initialfilename", OdbcSinn::Wirkungslos, u"|"},
    {u"attachdbfilename", OdbcSinn::Wirkungslos, u"|"},
    {u"failoverpartner", OdbcSinn::Wirkungslos, u"|"},
    {u"replicationservernameconnectoption", OdbcSinn::Wirkungslos, u"|"},
    {u"filedsn", OdbcSinn::Wirkungslos, u"|"},
};

}  // namespace adodb
