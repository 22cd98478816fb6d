#include "host/betrieb/Namen.h"

#include <QStringList>
#include <algorithm>

#include "host/betrieb/Ausgang.h"
#include "platform/basic/Text.h"
#include "platform/files/Pfadkarte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

Abbruch falsch(const QString& text) {
  return {Ausgang::Aufruf, text};
}

void pruefe_Zeichen(const QString& was, const QString& wert) {
  if (wert.contains(u'\''))
    throw falsch(
        u"%1 „%2“ enthält ein Hochkomma; damit ist keine Anweisung an die Datenbank möglich."_s.arg(was, wert));
  const auto stelle = std::find_if(wert.begin(), wert.end(), Bilddatei::verbietet_Freigabe);
  if (stelle != wert.end())
    throw falsch(u"%1 „%2“ enthält ein Zeichen, das in Dateinamen nicht erlaubt ist („%3“)."_s.arg(was, wert, *stelle));
}

}  // namespace

namespace namen {

Bilddatei zerlege(const QString& datei) {
  const qsizetype punkt = datei.lastIndexOf(u'.');
  if (punkt <= 0 || punkt == datei.size() - 1) throw falsch(u"„%1“ hat keinen Namen mit einer Endung."_s.arg(datei));
  return {datei.left(punkt), datei.mid(punkt + 1)};
}

Bilddatei zerlege_geprueft(const QString& datei) {
  pruefe_Dateiname(datei);
  Bilddatei bild = zerlege(text::Trim(datei));
  if (Bilddatei::ist_Textdatei(bild.datei())) throw falsch(u"„%1“ ist eine Textdatei und kein Bild."_s.arg(datei));
  return bild;
}

void pruefe_Dateiname(const QString& name) {
  pruefe_Zeichen(u"Der Dateiname"_s, name);
  if (name.contains(u'\\') || name.contains(u'/')) throw falsch(u"„%1“ ist kein bloßer Dateiname."_s.arg(name));
}

void pruefe_Schluessel(const QString& option, const QString& wert) {
  if (wert.contains(u'\''))
    throw falsch(
        u"Der Wert von „--%1“ enthält ein Hochkomma; damit ist keine Anweisung an die Datenbank möglich."_s.arg(
            option));
  if (wert.size() > Bilddatei::Namenslaenge)
    throw falsch(
        u"Der Wert von „--%1“ ist länger als %2 Zeichen."_s.arg(option, QString::number(Bilddatei::Namenslaenge)));
}

QString beschreibung(const QString& text) {
  if (text.size() + text.count(u'\'') > Bilddatei::Textlaenge)
    throw falsch(
        u"Die Beschreibung ist länger als %1 Zeichen; ein Hochkomma zählt doppelt."_s.arg(Bilddatei::Textlaenge));
  return text;
}

QString ordner(const QString& angabe) {
  QString pfad = angabe;
  const QStringList ebenen = pfad.replace(u'/', u'\\').split(u'\\', Qt::SkipEmptyParts);
  if (ebenen.isEmpty()) throw falsch(u"„%1“ nennt keinen Ordner unter der Bildablage."_s.arg(angabe));
  for (const QString& ebene : ebenen) {
    pruefe_Zeichen(u"Der Ordner"_s, ebene);
    if (ebene.endsWith(u'.') || ebene.endsWith(u' ') || ebene.startsWith(u' '))
      throw falsch(u"Der Ordner „%1“ beginnt oder endet mit einem Punkt oder Leerzeichen."_s.arg(ebene));
  }
  const QString ergebnis = ebenen.join(u'\\');
  if (ergebnis.size() > Bilddatei::Textlaenge)
    throw falsch(u"Der Ordner „%1“ ist länger als %2 Zeichen."_s.arg(ergebnis, QString::number(Bilddatei::Textlaenge)));
  return ergebnis;
}

QString tabellenpfad(const QString& angabe) {
  const bool laufwerk = angabe.size() > 1 && angabe[1] == u':' && angabe[0].isLetter();
  if (laufwerk || angabe.startsWith("\\\\"_L1)) return QString(angabe).replace(u'/', u'\\');
  return Pfadkarte::aktuell().tabellenpfad(angabe);
}

QString angezeigt(const QString& pfad) {
  QString ort = pfad;
  gelingt([&] { ort = QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(pfad)); });
  return ort;
}

QString ganzer_Pfad(const QString& angabe) {
  QString pfad = angabe;
  gelingt([&] { pfad = angezeigt(tabellenpfad(angabe)); });
  return pfad;
}

}  // namespace namen
