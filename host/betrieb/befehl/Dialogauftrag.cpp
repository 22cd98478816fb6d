#include "host/betrieb/befehl/Dialogauftrag.h"

#include <unistd.h>

#include <QStringList>
#include <algorithm>
#include <cstdio>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Gedaechtnis.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/befehl/Datensatzangaben.h"
#include "host/betrieb/vorgang/Vorgang.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Abbruch falsch(const QString& text) {
  return {Ausgang::Aufruf, text};
}

const QString Kennwortoption = u"kennwort-von-stdin"_s;

/// A window's number as programs tell it: "0x2c00007" or "46137351".
std::uint32_t kennung(const QString& angabe) {
  bool gut = false;
  const bool hex = angabe.startsWith("0x"_L1, Qt::CaseInsensitive);
  const std::uint32_t wert = hex ? angabe.mid(2).toUInt(&gut, 16) : angabe.toUInt(&gut, 10);
  if (!gut || wert == 0) throw falsch(u"„--ueber“ nimmt die Nummer eines Fensters, nicht „%1“."_s.arg(angabe));
  return wert;
}

/// One line of standard input without its end. Typed in a terminal it would stand on the screen.
QString kennwort_der_Eingabe() {
  if (::isatty(STDIN_FILENO) != 0)
    throw falsch(u"„--kennwort-von-stdin“ liest aus einer Umleitung, nicht von der Tastatur."_s);
  QByteArray zeile;
  int zeichen = 0;
  while ((zeichen = std::fgetc(stdin)) != EOF && zeichen != '\n') zeile.append(static_cast<char>(zeichen));
  if (zeile.endsWith('\r')) zeile.chop(1);
  if (zeichen == EOF && zeile.isEmpty()) throw falsch(u"Auf der Standardeingabe steht kein Kennwort."_s);
  return QString::fromUtf8(zeile);
}

/// The options of the call in the form in which the program with the main window reads them, so that both mean the
/// same.
QStringList wirtsargumente(const Aufruf& aufruf) {
  QStringList liste;
  for (const QString& name : {u"verbindung"_s, u"bilder"_s, u"datenordner"_s})
    if (const auto wert = aufruf.wert(name)) liste.append(u"--%1=%2"_s.arg(name, *wert));
  if (aufruf.gesetzt(u"eingebettet"_s)) liste.append(u"--eingebettet"_s);
  return liste;
}

}  // namespace

namespace dialogauftrag {

QList<Option> vorgang_Optionen() {
  return befehlszeile::datensatz_Optionen() +
      QList<Option>{{u"titel"_s, u"TEXT"_s,
                        u"steht im Kopf des Dialogs und im Titel des Fensters, etwa \"Beleg AB 24-1001\";\n"
                        "sonst Art und Nummer"_s},
          {u"ordner"_s, u"PFAD"_s,
              u"Ordner für neue Bilder unter der Bildablage, etwa \"Belege\\2024\"; bei BEL, MON, ART und\n"
              "ANL sonst der, den auch das Programm mit dem Hauptfenster nimmt"_s}};
}

QList<Option> datenbank_Optionen() {
  return {befehlszeile::verbindung_Option(), befehlszeile::bilder_Option(),
      {u"eingebettet"_s, {}, u"die Datenbank im Datenordner, auch wenn eine andere gemerkt ist"_s},
      {u"datenordner"_s, u"ORDNER"_s,
          u"Datenordner des Programms mit dem Hauptfenster, wenn es nicht der übliche ist"_s},
      {Kennwortoption, {}, u"die erste Zeile der Standardeingabe ist das Kennwort der Datenbank"_s}};
}

QList<Option> fenster_Optionen() {
  return {{u"ueber"_s, u"KENNUNG"_s,
              u"hält den Dialog über diesem Fenster eines anderen Programms (X11), etwa 0x2c00007"_s},
      {u"json"_s, {}, u"das Ergebnis als eine Zeile mit einem JSON-Objekt"_s}};
}

Dialogauftrag lies(const Aufruf& aufruf) {
  Dialogauftrag auftrag;
  auftrag.titel = aufruf.wert(u"titel"_s).value_or(QString()).simplified();
  auftrag.bild = aufruf.argumente().value(0);
  auftrag.nur_Anzeige = aufruf.gesetzt(u"nur-anzeigen"_s);
  auftrag.nur_Anhang = aufruf.gesetzt(u"nur-anhang"_s);
  auftrag.eines = aufruf.gesetzt(u"eines"_s);
  auftrag.json = aufruf.gesetzt(u"json"_s);
  if (const auto wert = aufruf.wert(u"ueber"_s)) auftrag.ueber = kennung(*wert);
  return auftrag;
}

Dialogauftrag mit_Vorgang(const Aufruf& aufruf) {
  Dialogauftrag auftrag = lies(aufruf);
  const Datensatz satz = datensatzangaben::genau(aufruf);
  const Vorgang regel = vorgang::aus_Schluesseln(satz.typ1, satz.key1, satz.key2, satz.key3);
  const auto ordner = aufruf.wert(u"ordner"_s);
  auftrag.vorgang = {satz.key1, satz.key2, satz.key3, satz.key4, satz.typ1, satz.typ2,
      ordner ? namen::ordner(*ordner) : vorgang::bildordner(regel), {}};
  if (auftrag.titel.isEmpty()) auftrag.titel = vorgang::infozeile(regel);
  auftrag.vorgang.Infozeile = auftrag.titel;
  return auftrag;
}

void lies_Datenbank(const Aufruf& aufruf, Dialogauftrag& auftrag) {
  std::optional<QString> kennwort;
  if (aufruf.gesetzt(Kennwortoption)) {
    kennwort = kennwort_der_Eingabe();
    qunsetenv("KVOBILD_KENNWORT");
  }
  auftrag.wirt = wirtsoptionen::lies(wirtsargumente(aufruf));
  // What another program asks for says nothing of where the user wants to go on.
  if (!auftrag.wirt.eingebettet) auftrag.wirt = gedaechtnis::ergaenzt(auftrag.wirt);
  auftrag.wirt.merken = false;
  if (kennwort && anmeldung::fehlt_Kennwort(auftrag.wirt.verbindung))
    auftrag.wirt.verbindung = anmeldung::mit_Kennwort(auftrag.wirt.verbindung, *kennwort);
  qunsetenv("KVOBILD_KENNWORT");
}

}  // namespace dialogauftrag
