#include "tests/freigabe/Abbruch.h"

#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Frist = 120'000;

int zahl_aus(const char* name, int sonst) {
  const int zahl = qEnvironmentVariableIntValue(name);
  return zahl > 0 ? zahl : sonst;
}

bool kennt_zweite_Namen(const QString& ordner) {
  const QByteArray datei = QFile::encodeName(ordner + u"/probe"_s);
  const QByteArray zweite = datei + "2";
  if (!QFile(QFile::decodeName(datei)).open(QIODevice::WriteOnly)) return false;
  const bool kennt = ::link(datei.constData(), zweite.constData()) == 0;
  ::unlink(zweite.constData());
  ::unlink(datei.constData());
  return kennt;
}

}  // namespace

int abbrueche(int sonst) {
  return zahl_aus("KVO_ABBRUECHE", sonst);
}

unsigned abbruchsaat(unsigned sonst) {
  return static_cast<unsigned>(zahl_aus("KVO_ABBRUECHE_SAAT", static_cast<int>(sonst)));
}

Abbruch::Abbruch(Ablage& ablage, QString baum, unsigned saat, QString nachbar)
    : ablage_(ablage),
      baum_(std::move(baum)),
      nachbar_(std::move(nachbar)),
      zweite_Namen_(kennt_zweite_Namen(baum_)),
      zufall_(saat) {
  // What a turn makes of the one picture that is turned again and again.
  const QString bild = ablage_.wartendes(u"drehen.jpg"_s);
  const QString ziel = ablage_.pfad(u"eingang/gedreht.jpg"_s);
  EXPECT_EQ(ablage_.fuehre(baum_, u"drehen"_s, {u"--um"_s, u"90"_s, bild, ziel}), 0) << ablage_.gesagt().toStdString();
  QFile gedreht(ziel);
  EXPECT_TRUE(gedreht.open(QIODevice::ReadOnly));
  ablage_.erlaube(gedreht.readAll());
  EXPECT_EQ(ablage_.fuehre(baum_, u"zuordnen"_s, {bild}), 0) << ablage_.gesagt().toStdString();
}

Abbruch::Auftrag Abbruch::ziehe() {
  const QString eingang = ablage_.pfad(u"eingang/drehen.jpg"_s);
  switch (std::uniform_int_distribution<int>(0, 6)(zufall_)) {
    case 0:
      return {u"drehen"_s, {u"--um"_s, u"90"_s, eingang, baum_ + u"/Belege/1/gedreht.jpg"_s}};
    case 1:
      // A picture that the neighbour has copied and not yet saved is nobody's.
      if (!nachbar_.isEmpty()) return ziehe_Zuordnen();
      return {u"aufraeumen"_s, {u"--ja"_s, u"--schonfrist"_s, u"0"_s, u"--ordner"_s, u"Belege"_s}};
    case 2:
      return {u"aendern"_s, {u"--beschreibung"_s, QString::number(++nummer_), ziehe_Bild()}};
    case 3:
      // Elsewhere a rename that is killed between file and row leaves the row behind.
      if (!zweite_Namen_) return ziehe_Zuordnen();
      return {u"umbenennen"_s, {ziehe_Bild(), u"Straße %1"_s.arg(++nummer_)}};
    default:
      return ziehe_Zuordnen();
  }
}

QString Abbruch::ziehe_Bild() {
  const auto zeilen = ablage_.zeilen();
  const QJsonObject zeile = zeilen.at(std::uniform_int_distribution<qsizetype>(0, zeilen.size() - 1)(zufall_));
  return zeile[u"bildname"_s].toString() + u'.' + zeile[u"bildext"_s].toString();
}

Abbruch::Auftrag Abbruch::ziehe_Zuordnen() {
  QStringList bilder;
  for (int i = 0; i < 3; ++i) bilder.append(ablage_.wartendes(u"Bäder%1.jpg"_s.arg(++nummer_), i == 1));
  return {u"zuordnen"_s, bilder};
}

std::unique_ptr<QProcess> Abbruch::beginne_nebenan() {
  if (nachbar_.isEmpty()) return nullptr;
  if (zufall_() % 2 == 0) std::swap(baum_, nachbar_);
  const Auftrag auftrag = ziehe_Zuordnen();
  return ablage_.beginne(nachbar_, auftrag.befehl, auftrag.argumente);
}

/// Whoever is not killed gets through.
void Abbruch::warte_auf(QProcess& nebenan) {
  if (!Ablage::endet(nebenan)) schlechte_.append(u"der Nachbar hängt"_s);
  if (nebenan.exitCode() != 0)
    schlechte_.append(u"der Nachbar: "_s + QString::fromUtf8(nebenan.readAllStandardError()));
}

void Abbruch::merke_Reste(const QString& befehl) {
  for (const QString& name : ablage_.reste()) {
    if (bekannte_Reste_.contains(name)) continue;
    bekannte_Reste_.insert(name);
    reste_[befehl].append(name);
  }
}

bool Abbruch::erschlage_einen() {
  const Auftrag auftrag = ziehe();
  // The first of its kind tells how long one takes, and goes on telling when one ends before its time.
  double& dauer = dauer_ms_[auftrag.befehl];
  const int frist = dauer == 0 ? Frist : std::uniform_int_distribution<int>(1, static_cast<int>(dauer * 1.1))(zufall_);
  const auto nebenan = beginne_nebenan();
  QElapsedTimer uhr;
  uhr.start();
  const auto prozess = ablage_.beginne(baum_, auftrag.befehl, auftrag.argumente);
  const bool geendet = prozess->waitForFinished(frist);
  if (geendet) {
    dauer = dauer == 0 ? static_cast<double>(uhr.elapsed()) : 0.9 * dauer + 0.1 * static_cast<double>(uhr.elapsed());
  } else {
    prozess->kill();
    prozess->waitForFinished(Frist);
    ++erschlagene_;
  }
  if (nebenan) warte_auf(*nebenan);
  if (!geendet) merke_Reste(auftrag.befehl);
  for (const QString& name : ablage_.schlechte()) schlechte_.append(auftrag.befehl + u": "_s + name);
  return !geendet;
}
