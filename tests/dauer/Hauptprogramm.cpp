// Damaged pictures through the commands of `kvobild`, many in one process, for a number or for a time. Every picture
// follows from the seed and its own number alone, so that each can be made again.
#include <fcntl.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <random>

#include "tests/dauer/Befehlslauf.h"
#include "tests/dauer/Schaden.h"
#include "tests/dauer/Urbilder.h"
#include "tests/support/Umfeld.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A picture that is not through after so long hangs; the signal ends the process, and the file stays. By the clock, on
/// a machine that may have other work.
constexpr unsigned Haengt_s = 900;

/// The exit code; a sanitizer's is 1.
constexpr int Mit_Funden = 3;

struct Auftrag {
  std::uint64_t saat = 0;
  std::uint64_t ab = 0;
  std::uint64_t anzahl = 0;
  qint64 sekunden = 0;
  QString funde;
};

Auftrag lies_Auftrag() {
  QCommandLineParser leser;
  leser.addOptions({{u"saat"_s, u"seed"_s, u"N"_s, u"20260304"_s}, {u"ab"_s, u"number of the first"_s, u"N"_s, u"0"_s},
      {u"anzahl"_s, u"how many at most"_s, u"N"_s, u"200"_s},
      {u"sekunden"_s, u"how long at most; 0 for no limit"_s, u"N"_s, u"0"_s},
      {u"funde"_s, u"folder for pictures that fail"_s, u"ORDNER"_s, u"funde"_s}});
  leser.addHelpOption();
  leser.process(*QCoreApplication::instance());
  const auto zahl = [&](const QString& name) { return leser.value(name).toULongLong(); };
  return {zahl(u"saat"_s), zahl(u"ab"_s), zahl(u"anzahl"_s), static_cast<qint64>(zahl(u"sekunden"_s)),
      QDir(leser.value(u"funde"_s)).absolutePath()};
}

/// The commands' results go nowhere, and what they say goes to a file, of which the last picture's part is kept: there
/// stands a sanitizer's report too. Gives our own way out.
std::FILE* leite_um(const QString& meldungen) {
  std::FILE* const hinaus = ::fdopen(::dup(STDOUT_FILENO), "w");
  const int nichts = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  const int datei =
      ::open(QFile::encodeName(meldungen).constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_TRUNC, 0644);
  if (!hinaus || ::dup2(nichts, STDOUT_FILENO) < 0 || ::dup2(datei, STDERR_FILENO) < 0) qFatal("no way out");
  ::close(nichts);
  ::close(datei);
  return hinaus;
}

class Dauerlauf {
 public:
  Dauerlauf(Auftrag auftrag, std::FILE* hinaus)
      : auftrag_(std::move(auftrag)), hinaus_(hinaus), lauf_(ordner_.filePath(u"platz"_s)) {}

  bool laufe() {
    uhr_.start();
    std::uint64_t nummer = auftrag_.ab;
    for (; nummer < auftrag_.ab + auftrag_.anzahl; ++nummer) {
      if (auftrag_.sekunden > 0 && uhr_.elapsed() >= 1000 * auftrag_.sekunden) break;
      pruefe(nummer);
      // Whoever measures or has to begin again behind a crash reads it.
      if (nummer % 100 == 99) std::fprintf(hinaus_, "bis %s\n", qPrintable(QString::number(nummer + 1)));
      std::fflush(hinaus_);
    }
    berichte(nummer);
    return funde_ == 0;
  }

 private:
  void pruefe(std::uint64_t nummer) {
    std::seed_seq folge{auftrag_.saat, nummer};
    std::mt19937_64 zufall(folge);
    const Urbild& urbild = urbilder_[zufall() % urbilder_.size()];
    const QByteArray bytes = beschaedigt(urbild.bytes, urbilder_, zufall);
    // It lies there while it is tried: after a crash it is still there.
    const QString pfad =
        auftrag_.funde + u"/s%1_n%2_%3.%4"_s.arg(auftrag_.saat).arg(nummer).arg(urbild.name, urbild.ext);
    QFile datei(pfad);
    if (!datei.open(QIODevice::WriteOnly) || datei.write(bytes) != bytes.size()) qFatal("cannot write the picture");
    datei.close();
    if (::ftruncate(STDERR_FILENO, 0) != 0) qFatal("cannot empty the file of messages");
    ::alarm(Haengt_s);
    const QStringList maengel = lauf_.pruefe(pfad, bytes, zufall());
    ::alarm(0);
    if (maengel.isEmpty()) {
      QFile::remove(pfad);
      return;
    }
    ++funde_;
    std::fprintf(hinaus_, "Fund: %s: %s\n", qUtf8Printable(pfad), qUtf8Printable(maengel.join(u"; "_s)));
  }

  void berichte(std::uint64_t ende) const {
    std::fprintf(hinaus_, "bis %llu\nBilder: %llu, Saat: %llu, Urbilder: %zu, Funde: %d\n",
        static_cast<unsigned long long>(ende), static_cast<unsigned long long>(ende - auftrag_.ab),
        static_cast<unsigned long long>(auftrag_.saat), urbilder_.size(), funde_);
    for (const auto& [befehl, z] : lauf_.zaehler())
      std::fprintf(hinaus_, "  %-10s %7d Läufe, %7d erledigt, der längste %.2f s, alle %.0f s\n",
          qUtf8Printable(befehl), z.gelaufen, z.erledigt, z.laengste_s, z.zusammen_s);
    std::fflush(hinaus_);
  }

  Auftrag auftrag_;
  std::FILE* hinaus_;
  QTemporaryDir ordner_;
  Befehlslauf lauf_;
  std::vector<Urbild> urbilder_ = urbilder();
  QElapsedTimer uhr_;
  int funde_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  richte_Umfeld_ein();
  // The journal that the commands write is not its user's.
  const QTemporaryDir daten;
  qputenv("XDG_DATA_HOME", QFile::encodeName(daten.path()));
  const QGuiApplication app(argc, argv);
  const Auftrag auftrag = lies_Auftrag();
  const QString meldungen = auftrag.funde + u"/meldungen.txt"_s;
  if (!QDir().mkpath(auftrag.funde)) qFatal("cannot make the folder of the findings");
  std::FILE* const hinaus = leite_um(meldungen);
  const bool gut = Dauerlauf(auftrag, hinaus).laufe();
  // What a sanitizer says at the end is read beside the rest.
  ::dup2(::fileno(hinaus), STDERR_FILENO);
  std::fclose(hinaus);
  if (gut) QFile::remove(meldungen);
  if (gut) QDir().rmdir(auftrag.funde);
  return gut ? 0 : Mit_Funden;
}
