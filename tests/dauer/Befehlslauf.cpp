#include "tests/dauer/Befehlslauf.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <ctime>
#include <utility>

#include "host/kvobild/Befehle.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a command may take: so much and for each megapixel that the picture claims so much more. A false claim of many
/// is sound, and is worked through. The sanitizers make a picture that is coded anew take 25 times as long. Without
/// them it is a check's short run, which shares its machine and is to find what hangs.
#ifdef __SANITIZE_ADDRESS__
constexpr double Langsam_s = 5;
constexpr double Langsam_je_Megapixel_s = 1.5;
#else
constexpr double Langsam_s = 30;
constexpr double Langsam_je_Megapixel_s = 0.15;
#endif
constexpr int Runde = 20;

/// As the header has it, or 0.
double megapixel(const QString& pfad) {
  QImageReader leser(pfad);
  leser.setDecideFormatFromContent(true);
  const QSize groesse = leser.size();
  return groesse.isValid() ? 1e-6 * groesse.width() * groesse.height() : 0;
}

QByteArray lies(const QString& pfad) {
  QFile datei(pfad);
  return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

}  // namespace

Befehlslauf::Befehlslauf(QString ordner) : ordner_(std::move(ordner)) {
  QDir().mkpath(pfad(u"baum"_s));
  if (!laufe({u"anlegen"_s, u"--verbindung"_s, pfad(u"betrieb.db"_s)})) qFatal("no table");
}

/// True where all of it was done. A damaged picture may be refused or left out; it is never a wrong call, and the
/// database has nothing to do with it.
bool Befehlslauf::laufe(const QStringList& worte) {
  Zaehler& z = zaehler_[worte.first()];
  const std::clock_t beginn = std::clock();
  const Ausgang ausgang = befehle::laufe(worte);
  const double dauer = static_cast<double>(std::clock() - beginn) / CLOCKS_PER_SEC;
  z.laengste_s = std::max(z.laengste_s, dauer);
  z.zusammen_s += dauer;
  ++z.gelaufen;
  if (ausgang == Ausgang::Erledigt) ++z.erledigt;
  if (ausgang == Ausgang::Aufruf || ausgang == Ausgang::Datenbank)
    maengel_.append(u"%1 endet mit %2"_s.arg(worte.first()).arg(static_cast<int>(ausgang)));
  if (dauer > erlaubt_s_) maengel_.append(u"%1 braucht %2 s"_s.arg(worte.first()).arg(dauer));
  return ausgang == Ausgang::Erledigt;
}

QStringList Befehlslauf::satz(const QString& befehl) const {
  return {befehl, u"--verbindung"_s, pfad(u"betrieb.db"_s), u"--typ1"_s, u"BEL"_s, u"--key1"_s, u"AB"_s, u"--key2"_s,
      u"1"_s};
}

QStringList Befehlslauf::pruefe(const QString& bild, const QByteArray& inhalt, std::uint64_t zug) {
  maengel_.clear();
  const double punkte = megapixel(bild);
  megapixel_der_Runde_ += punkte;
  erlaubt_s_ = Langsam_s + Langsam_je_Megapixel_s * punkte;
  zeige(bild, zug);
  drehe(bild, zug);
  zeichne(bild);
  ordne_zu(bild, zug);
  if (++gepruefte_ % Runde == 0) schliesse_Runde();
  if (lies(bild) != inhalt) maengel_.append(u"die Quelle ist verändert"_s);
  return maengel_;
}

void Befehlslauf::zeige(const QString& bild, std::uint64_t zug) {
  QStringList worte{u"exif"_s, bild};
  if (zug % 2 == 0) worte.append(u"--json"_s);
  laufe(worte);
}

/// What cannot be turned leaves no target.
void Befehlslauf::drehe(const QString& bild, std::uint64_t zug) {
  static const QStringList Arten{u"90"_s, u"180"_s, u"270"_s, u"waagerecht"_s, u"senkrecht"_s};
  const QString ziel = pfad(u"gedreht.jpg"_s);
  const QString& art = Arten[static_cast<qsizetype>(zug / 2 % 5)];
  if (laufe({u"drehen"_s, u"--um"_s, art, bild, ziel}) != QFile::exists(ziel))
    maengel_.append(u"das Ziel des Drehens passt nicht zum Ausgang"_s);
  if (QFile::exists(ziel) && !lies(ziel).startsWith("\xff\xd8")) maengel_.append(u"gedreht ist es kein JPEG"_s);
  QFile::remove(ziel);
}

/// Whatever the file is, there is a sheet for it.
void Befehlslauf::zeichne(const QString& bild) {
  const QString ziel = pfad(u"klein.png"_s);
  laufe({u"thumbnail"_s, u"--breite"_s, u"60"_s, u"--hoehe"_s, u"40"_s, bild, ziel});
  if (QImage(ziel).size() != QSize(61, 41)) maengel_.append(u"kein Vorschaubild"_s);
  QFile::remove(ziel);
}

void Befehlslauf::ordne_zu(const QString& bild, std::uint64_t zug) {
  QStringList worte = satz(u"zuordnen"_s);
  worte += {u"--bilder"_s, pfad(u"baum"_s), u"--ordner"_s, u"Belege"_s, bild};
  if (zug / 10 % 4 == 0) worte.append(u"--wie-aufgenommen"_s);
  if (laufe(worte)) ++zugeordnete_;
}

void Befehlslauf::schliesse_Runde() {
  erlaubt_s_ = Langsam_s + Langsam_je_Megapixel_s * std::exchange(megapixel_der_Runde_, 0);
  const QStringList baum{u"--bilder"_s, pfad(u"baum"_s)};
  QDir belege(pfad(u"baum/Belege"_s));
  const QStringList namen = belege.entryList(QDir::Files | QDir::Hidden);
  if (namen.size() != std::exchange(zugeordnete_, 0)) maengel_.append(u"Dateien: %1"_s.arg(namen.size()));
  if (!namen.isEmpty()) {
    const QString pdf = pfad(u"bericht.pdf"_s);
    const QString zip = pfad(u"bilder.zip"_s);
    laufe(satz(u"bericht"_s) + baum + QStringList{u"--alle"_s, u"--je-seite"_s, u"6"_s, u"--ziel"_s, pdf});
    laufe(satz(u"ausgeben"_s) + baum + QStringList{u"--ziel"_s, zip});
    if (!laufe(satz(u"lesen"_s) + baum + QStringList{u"--json"_s})) maengel_.append(u"lesen gelingt nicht"_s);
    if (!laufe(satz(u"entfernen"_s) + namen)) maengel_.append(u"nicht jedes Bild hat seine Zeile"_s);
    QFile::remove(pdf);
    QFile::remove(zip);
  }
  belege.removeRecursively();
}
