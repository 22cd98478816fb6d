#include "host/fenster/Wirtskern.h"

#include <QGuiApplication>
#include <QScreen>
#include <QSettings>

#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString gruppe(const QString& anwendung, const Fensterplatz& fenster) {
  QString name = anwendung + u'.' + fenster.Fenstername();
  return name.replace(u'/', u'_');
}

}  // namespace

void Wirtskern::FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer,
                             const QString& beschreibung, bool mitMeldung) {
  if (!mitMeldung) return;
  oberflaeche::MsgBox(u"%1\r\n\r\nFehler %2 in %3.%4"_s.arg(beschreibung, QString::number(nummer), modul, prozedur),
                      oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Kritisch, u"Bildzuordnung"_s);
}

void Wirtskern::FensterWiederherstellen(const QString& anwendung, Fensterplatz& fenster) {
  if (datei_.isEmpty()) return;
  QSettings gemerkt(datei_, QSettings::IniFormat);
  gemerkt.beginGroup(gruppe(anwendung, fenster));
  const QRect rechteck = gemerkt.value(u"Rechteck"_s).toRect();
  // A screen that is gone would leave the window where nobody sees it.
  if (!rechteck.isValid() || !QGuiApplication::screenAt(rechteck.center())) return;
  fenster.Lage({rechteck, gemerkt.value(u"Maximiert"_s).toBool()});
}

void Wirtskern::FensterSpeichern(const QString& anwendung, const Fensterplatz& fenster) {
  if (datei_.isEmpty()) return;
  QSettings gemerkt(datei_, QSettings::IniFormat);
  gemerkt.beginGroup(gruppe(anwendung, fenster));
  gemerkt.setValue(u"Rechteck"_s, fenster.Lage().Rechteck);
  gemerkt.setValue(u"Maximiert"_s, fenster.Lage().Maximiert);
}
