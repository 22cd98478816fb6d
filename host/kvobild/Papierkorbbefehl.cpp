#include "host/kvobild/Papierkorbbefehl.h"

#include <QFile>
#include <QLocale>

#include "host/betrieb/Namen.h"
#include "host/betrieb/aufraeumen/Papierkorb.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "host/betrieb/befehl/Haltewunsch.h"
#include "host/kvobild/Befehlssitzung.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Zurueckholen = u"zurueckholen"_s;
const QString Endgueltig = u"endgueltig"_s;

void zeige(const Papierkorb::Bestand& bestand, const QString& lauf, bool als_Json) {
  for (const bool ordner : {false, true})
    for (const QString& pfad : ordner ? bestand.ordner : bestand.dateien) {
      if (als_Json)
        ausgabe::json({{u"pfad"_s, pfad}, {u"art"_s, ordner ? u"ordner"_s : u"datei"_s}, {u"lauf"_s, lauf}});
      else
        ausgabe::zeile(pfad);
    }
}

Ausgang melde(const QList<Papierkorb::Gebliebenes>& geblieben, const QString& worte) {
  for (const auto& g : geblieben) ausgabe::meldung(worte.arg(g.pfad, g.grund));
  return geblieben.isEmpty() ? Ausgang::Erledigt : Ausgang::Teilweise;
}

/// The run that is meant; the last one where none is named.
QString lauf_von(const Papierkorb& korb, const Aufruf& aufruf) {
  const QStringList alle = korb.laeufe();
  if (alle.isEmpty()) throw Abbruch(Ausgang::Teilweise, u"Der Papierkorb ist leer."_s);
  if (aufruf.argumente().isEmpty()) return alle.last();
  const QString& genannt = aufruf.argumente().first();
  if (alle.contains(genannt)) return genannt;
  throw Abbruch(Ausgang::Teilweise,
      u"Ein Aufräumen „%1“ ist nicht im Papierkorb. Da sind: %2."_s.arg(genannt, alle.join(u", "_s)));
}

Ausgang hole_zurueck(const Papierkorb& korb, const Aufruf& aufruf) {
  const QString lauf = lauf_von(korb, aufruf);
  const Papierkorb::Bestand bestand = korb.bestand(lauf);
  zeige(bestand, lauf, aufruf.gesetzt(u"json"_s));
  if (aufruf.gesetzt(u"probe"_s)) return Ausgang::Erledigt;
  const auto geblieben = korb.hole_zurueck(lauf);
  const Ausgang ausgang = melde(geblieben, u"„%1“ bleibt im Papierkorb: %2."_s);
  if (ausgang == Ausgang::Erledigt) ausgabe::meldung(u"„%1“ ist zurückgeholt."_s.arg(lauf));
  return ausgang;
}

Ausgang leere(const Papierkorb& korb, const Aufruf& aufruf) {
  constexpr int Ueblich = 30;
  const int tage = papierkorbbefehl::zahl(aufruf, u"tage"_s, 0).value_or(Ueblich);
  const QStringList laeufe = korb.aeltere(tage);
  if (laeufe.isEmpty()) {
    ausgabe::meldung(u"Nichts im Papierkorb ist älter als %1 Tage."_s.arg(tage));
    return Ausgang::Erledigt;
  }
  qsizetype dateien = 0;
  std::int64_t bytes = 0;
  for (const QString& lauf : laeufe) {
    const Papierkorb::Bestand bestand = korb.bestand(lauf);
    zeige(bestand, lauf, aufruf.gesetzt(u"json"_s));
    dateien += bestand.dateien.size();
    bytes += bestand.bytes;
  }
  if (aufruf.gesetzt(u"probe"_s)) return Ausgang::Erledigt;
  if (!aufruf.gesetzt(u"ja"_s) &&
      !papierkorbbefehl::ist_bestaetigt(
          u"Den Papierkorb endgültig leeren (%1; Dateien: %2, %3)? Mit „ja“ bestätigen:"_s.arg(
              laeufe.join(u", "_s), QString::number(dateien), papierkorbbefehl::groesse(bytes)))) {
    ausgabe::meldung(u"Nichts ist gelöscht."_s);
    return Ausgang::Teilweise;
  }
  const Haltewunsch halt;
  QList<Papierkorb::Gebliebenes> geblieben;
  for (const QString& lauf : laeufe)
    if (!halt.ist_da()) geblieben += korb.loesche(lauf);
  return std::max(
      melde(geblieben, u"„%1“ bleibt im Papierkorb: %2."_s), halt.ist_da() ? Ausgang::Teilweise : Ausgang::Erledigt);
}

}  // namespace

QList<Option> papierkorbbefehl::optionen() {
  return {{u"papierkorb"_s, u"ORDNER"_s, u"anderer Platz für den Papierkorb; es wird kopiert und verglichen"_s},
      {Zurueckholen, {}, u"holt das letzte Aufräumen zurück, oder das genannte"_s},
      {Endgueltig, {}, u"leert, was lange genug im Papierkorb liegt"_s},
      {u"tage"_s, u"TAGE"_s, u"mit --endgueltig: so alt muss es sein; ohne Angabe 30"_s}};
}

std::optional<QString> papierkorbbefehl::anderswo(const Aufruf& aufruf) {
  const std::optional<QString> angabe = aufruf.wert(u"papierkorb"_s);
  if (!angabe) return std::nullopt;
  const QString pfad = namen::tabellenpfad(*angabe);
  if (!FileSystemObject().FolderExists(pfad))
    throw Abbruch(Ausgang::Datei, u"Den Ordner „%1“ gibt es nicht."_s.arg(*angabe));
  return pfad;
}

bool papierkorbbefehl::ist_gemeint(const Aufruf& aufruf) {
  const bool zurueck = aufruf.gesetzt(Zurueckholen);
  const bool leeren = aufruf.gesetzt(Endgueltig);
  if (zurueck && leeren) throw Abbruch(Ausgang::Aufruf, u"„--zurueckholen“ und „--endgueltig“ schließen sich aus."_s);
  if (!leeren && aufruf.gesetzt(u"tage"_s)) throw Abbruch(Ausgang::Aufruf, u"„--tage“ gehört zu „--endgueltig“."_s);
  if (!zurueck && !aufruf.argumente().isEmpty())
    throw Abbruch(Ausgang::Aufruf, u"Ein LAUF gehört zu „--zurueckholen“."_s);
  for (const QString& andere : {u"ordner"_s, u"schonfrist"_s})
    if ((zurueck || leeren) && aufruf.gesetzt(andere))
      throw Abbruch(Ausgang::Aufruf, u"„--%1“ gehört nicht zum Papierkorb."_s.arg(andere));
  return zurueck || leeren;
}

Ausgang papierkorbbefehl::fuehre_aus(const Aufruf& aufruf) {
  const QString wurzel = bildwurzel(aufruf);
  const Papierkorb korb(wurzel, anderswo(aufruf));
  const Protokoll protokoll(protokollordner(aufruf), wurzel);
  return aufruf.gesetzt(Zurueckholen) ? hole_zurueck(korb, aufruf) : leere(korb, aufruf);
}

bool papierkorbbefehl::ist_bestaetigt(const QString& frage) {
  ausgabe::meldung(frage);
  QFile eingabe;
  if (!eingabe.open(stdin, QIODevice::ReadOnly)) return false;
  const QString antwort = QString::fromUtf8(eingabe.readLine()).trimmed().toLower();
  return antwort == "ja"_L1 || antwort == "j"_L1;
}

QString papierkorbbefehl::groesse(std::int64_t bytes) {
  return QLocale(QLocale::German).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

std::optional<int> papierkorbbefehl::zahl(const Aufruf& aufruf, const QString& option, int kleinste) {
  const std::optional<QString> angabe = aufruf.wert(option);
  if (!angabe) return std::nullopt;
  bool gueltig = false;
  const int wert = angabe->toInt(&gueltig);
  if (gueltig && wert >= kleinste) return wert;
  throw Abbruch(Ausgang::Aufruf, u"„--%1“ ist keine ganze Zahl ab %2."_s.arg(option, QString::number(kleinste)));
}
