#pragma once

#include <QStringView>

#include "platform/adodb/Verbindungszeichenfolge.h"

namespace adodb {

/// Keywords of one meaning, in small letters without blanks and underscores, parted by bars. `nur` lists the values
/// that are taken in the same form; any other value is refused. Empty where every value is taken.
struct Verbindungswort {
  QStringView namen;
  Wortsinn sinn;
  QStringView nur = {};
};

inline constexpr QStringView JaNein = u"yes|true|1|no|false|0";
inline constexpr QStringView Ja = u"yes|true|1";
inline constexpr QStringView Nein = u"no|false|0";

/// All keywords that are known, of OLE DB (SQLOLEDB, SQLNCLI, MSOLEDBSQL), of the maker's ODBC driver and of FreeTDS.
inline constexpr Verbindungswort Verbindungsworte[] = {
    {u"provider", Wortsinn::Anbieter},
    {u"driver", Wortsinn::Treiber},
    {u"dsn", Wortsinn::Datenquelle},
    {u"servername", Wortsinn::Abschnitt},
    {u"datasource|server|address|addr|networkaddress", Wortsinn::Server},
    {u"port", Wortsinn::Port},
    {u"initialcatalog|database", Wortsinn::Datenbank},
    {u"userid|uid|user|username", Wortsinn::Benutzer},
    {u"password|pwd", Wortsinn::Kennwort},
    {u"integratedsecurity", Wortsinn::Vertraut, u"sspi|yes|true|1|no|false|0"},
    {u"trustedconnection", Wortsinn::Vertraut, JaNein},
    {u"encrypt|useencryptionfordata", Wortsinn::Verschluesselung, u"yes|true|1|mandatory|no|false|0|optional|strict"},
    {u"encryption", Wortsinn::FreeTdsVerschluesselung, u"require|request|off"},
    {u"trustservercertificate", Wortsinn::Vertrauen, JaNein},
    {u"hostnameincertificate", Wortsinn::Zertifikatsname},
    {u"servercertificate", Wortsinn::Zertifikat},
    {u"serverspn", Wortsinn::Dienstname},
    {u"realm", Wortsinn::Bereich},
    {u"usentlmv2", Wortsinn::Ntlm2, JaNein},
    {u"applicationname|app", Wortsinn::Programm},
    {u"workstationid|wsid", Wortsinn::Arbeitsplatz},
    {u"currentlanguage|language", Wortsinn::Sprache},
    {u"applicationintent", Wortsinn::Absicht, u"readwrite|readonly"},
    {u"multisubnetfailover", Wortsinn::Netze, JaNein},
    {u"tdsversion", Wortsinn::Protokoll, u"7.1|7.2|7.3|7.4|auto"},
    {u"packetsize", Wortsinn::Paketgroesse},
    {u"connecttimeout|connectiontimeout|logintimeout|timeout", Wortsinn::Anmeldezeit},
    {u"dumpfile|dumpfileappend|debugflags", Wortsinn::Protokolldatei},
    {u"persistsecurityinfo|marsconnection|marsconn|multipleactiveresultsets", Wortsinn::Wirkungslos, JaNein},
    {u"useprocedureforprepare", Wortsinn::Wirkungslos, u"0|1|2"},
    {u"autotranslate|quotedid|ansinpw", Wortsinn::Wirkungslos, Ja},
    {u"tagwithcolumncollationwhenpossible", Wortsinn::Wirkungslos, Nein},
    {u"datatypecompatibility", Wortsinn::Wirkungslos, u"0|80"},
    {u"networklibrary|network|net", Wortsinn::Wirkungslos, u"dbmssocn"},
    {u"mode", Wortsinn::Wirkungslos, u"readwrite|share deny none"},
    {u"prompt", Wortsinn::Wirkungslos, u"4|noprompt"},
    {u"clientcharset", Wortsinn::Wirkungslos, u"utf-8"},
    {u"localeidentifier", Wortsinn::Wirkungslos, u"1031|1033"},
    // Known, and only to be left empty.
    {u"extendedproperties|initialfilename|attachdbfilename|failoverpartner|replicationservernameconnectoption|filedsn",
        Wortsinn::Wirkungslos, u"|"},
};

/// A keyword as it is compared: case, blanks and underscores do not count.
QString schlichtes_Wort(QString wort);
/// The word is one of a list that bars part; case does not count.
bool steht_in(QStringView liste, const QString& wort);
/// The row of a keyword as it is written in a connect string; null where nobody knows it.
const Verbindungswort* verbindungswort(const QString& wort);

}  // namespace adodb
