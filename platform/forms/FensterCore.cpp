#include "platform/forms/FensterCore.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QUrl>
#include <algorithm>
#include <cstdio>
#include <optional>

#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Height that a title bar takes above the inner rectangle, and the width of it that a hand needs to grasp it.
constexpr int Titelhoehe = 32;
constexpr int Griffbreite = 64;
/// No screen reaches so far; numbers beyond it were never a placement, and computing with them could overflow.
constexpr int Grenze = 100'000;

/// A name as part of a path and as a group: separators, and dots that would lead upwards, are encoded.
QString sicher(const QString& name) {
  return name.isEmpty() ? u"%"_s : QString::fromLatin1(QUrl::toPercentEncoding(name, " ", "."));
}

/// Access to the group of one window.
class Ablage {
 public:
  Ablage(const QString& anwendung, const QString& fenstername)
      : datei_(QSettings::IniFormat, QSettings::UserScope, sicher(anwendung), u"Fenster"_s) {
    datei_.setFallbacksEnabled(false);
    datei_.beginGroup(sicher(fenstername));
  }

  void schreibe(const Fensterlage& lage) {
    datei_.setValue(u"Links"_s, lage.Rechteck.x());
    datei_.setValue(u"Oben"_s, lage.Rechteck.y());
    datei_.setValue(u"Breite"_s, lage.Rechteck.width());
    datei_.setValue(u"Hoehe"_s, lage.Rechteck.height());
    datei_.setValue(u"Maximiert"_s, lage.Maximiert);
  }

  std::optional<Fensterlage> lies() const {
    const auto links = zahl(u"Links"_s, -Grenze);
    const auto oben = zahl(u"Oben"_s, -Grenze);
    const auto breite = zahl(u"Breite"_s, 1);
    const auto hoehe = zahl(u"Hoehe"_s, 1);
    const QString maximiert = datei_.value(u"Maximiert"_s).toString();
    const bool ja = maximiert == u"true"_s;
    if (!links || !oben || !breite || !hoehe || (!ja && maximiert != u"false"_s)) return std::nullopt;
    return Fensterlage{QRect(*links, *oben, *breite, *hoehe), ja};
  }

 private:
  std::optional<int> zahl(const QString& schluessel, int mindestens) const {
    bool gelesen = false;
    const int wert = datei_.value(schluessel).toString().toInt(&gelesen);
    return gelesen && wert >= mindestens && wert <= Grenze ? std::optional(wert) : std::nullopt;
  }

  QSettings datei_;
};

qint64 flaeche(const QRect& r) {
  return r.isEmpty() ? 0 : qint64{r.width()} * r.height();
}

/// Square of the way from a rectangle's middle to the nearest point of a screen.
qint64 entfernung(const QRect& rechteck, const QRect& bildschirm) {
  const QPoint mitte = rechteck.center();
  const qint64 dx = mitte.x() - std::clamp(mitte.x(), bildschirm.left(), bildschirm.right());
  const qint64 dy = mitte.y() - std::clamp(mitte.y(), bildschirm.top(), bildschirm.bottom());
  return dx * dx + dy * dy;
}

/// The screen that shows most of a rectangle; the nearest one where none shows any of it.
QRect zustaendiger(const QRect& rechteck, const QList<QRect>& bildschirme) {
  return *std::max_element(bildschirme.begin(), bildschirme.end(), [&](const QRect& a, const QRect& b) {
    const qint64 in_a = flaeche(a & rechteck);
    const qint64 in_b = flaeche(b & rechteck);
    return in_a != in_b ? in_a < in_b : entfernung(rechteck, a) > entfernung(rechteck, b);
  });
}

/// Enough of the title bar, or of the window's upper edge below it, lies on some screen.
bool greifbar(const QRect& rechteck, const QList<QRect>& bildschirme) {
  const QRect griff(rechteck.x(), rechteck.y() - Titelhoehe, rechteck.width(), 2 * Titelhoehe);
  return std::any_of(bildschirme.begin(), bildschirme.end(), [&](const QRect& bildschirm) {
    const QRect sichtbar = bildschirm & griff;
    return sichtbar.height() >= Titelhoehe && sichtbar.width() >= std::min(Griffbreite, rechteck.width());
  });
}

}  // namespace

QRect eingepasst(const QRect& rechteck, const QList<QRect>& bildschirme) {
  if (bildschirme.isEmpty()) return rechteck;
  const QRect ziel = zustaendiger(rechteck, bildschirme);
  const bool zu_gross = rechteck.width() > ziel.width() || rechteck.height() > ziel.height();
  if (!zu_gross && greifbar(rechteck, bildschirme)) return rechteck;
  const QRect platz = ziel.adjusted(0, std::min(Titelhoehe, ziel.height() / 2), 0, 0);
  const QSize groesse = rechteck.size().boundedTo(platz.size());
  return {std::clamp(rechteck.x(), platz.x(), platz.x() + platz.width() - groesse.width()),
      std::clamp(rechteck.y(), platz.y(), platz.y() + platz.height() - groesse.height()), groesse.width(),
      groesse.height()};
}

void FensterCore::FehlerMelden(
    const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung, bool mitMeldung) {
  const QString stelle = u"Fehler %1 in %2.%3"_s.arg(QString::number(nummer), modul, prozedur);
  if (mitMeldung) {
    oberflaeche::MsgBox(
        beschreibung + u"\n\n"_s + stelle, oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Kritisch, u"Fehler"_s);
    return;
  }
  const QByteArray zeile = (stelle + u": "_s + beschreibung).simplified().toUtf8() + '\n';
  std::fwrite(zeile.constData(), 1, static_cast<std::size_t>(zeile.size()), stderr);
}

void FensterCore::FensterWiederherstellen(const QString& anwendung, Fensterplatz& fenster) {
  std::optional<Fensterlage> lage = Ablage(anwendung, fenster.Fenstername()).lies();
  if (!lage) return;
  QList<QRect> bildschirme;
  for (const QScreen* bildschirm : QGuiApplication::screens()) bildschirme.append(bildschirm->availableGeometry());
  lage->Rechteck = eingepasst(lage->Rechteck, bildschirme);
  fenster.Lage(*lage);
}

void FensterCore::FensterSpeichern(const QString& anwendung, const Fensterplatz& fenster) {
  const Fensterlage lage = fenster.Lage();
  if (!lage.Rechteck.isEmpty()) Ablage(anwendung, fenster.Fenstername()).schreibe(lage);
}
