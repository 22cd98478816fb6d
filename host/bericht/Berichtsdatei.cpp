#include "host/bericht/Berichtsdatei.h"

#include <malloc.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <algorithm>
#include <vector>

#include "host/bericht/Bildladung.h"
#include "host/bericht/Firmenzeichen.h"
#include "host/bericht/Seitenmaler.h"
#include "host/bericht/Seitenplaner.h"
#include "host/bericht/pdf/Bildkodierung.h"
#include "host/bericht/pdf/Pdfangaben.h"
#include "host/bericht/pdf/Pdfdatei.h"
#include "host/bericht/pdf/Pdfgeruest.h"
#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace berichtsdatei {
namespace {

/// The user has stopped it.
struct Halt {};

constexpr double Dichte_des_Zeichens = 300;

void liefere_Pixel(const QImage& bild, const pdfdatei::Nehmer& nehmer) {
  for (int y = 0; y < bild.height(); ++y) {
    const QImage zeile = bild.copy(0, y, bild.width(), 1).convertToFormat(QImage::Format_RGB888);
    nehmer(zeile.constScanLine(0), 3 * static_cast<std::size_t>(bild.width()));
  }
}

void liefere_Bytes(const QByteArray& bytes, const pdfdatei::Nehmer& nehmer) {
  nehmer(reinterpret_cast<const unsigned char*>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
}

/// The pictures that the file holds, each once, and how they come into it.
class Bildvorrat {
 public:
  Bildvorrat(const Bericht& bericht, const Berichtswahl& wahl, const Fortgang& fortgang)
      : bericht_(bericht), wahl_(wahl), fortgang_(fortgang), nummern_(bericht.bilder.size(), 0) {}

  /// Which pictures the pages show, and in which size.
  void sammle(const Seitenplan& plan) {
    std::vector<QSize> noetig{QSize()};
    for (const seitenplan::Seite& seite : plan)
      for (const seitenplan::Bildkasten& kasten : seite.bilder)
        if (!kasten.leer) nimm(kasten, noetig);
    for (std::size_t n = 1; n < quellen_.size(); ++n)
      formen_.push_back(bildkodierung::form_von(bericht_.bilder[quellen_[n]], noetig[n], wahl_));
  }

  std::size_t nummer(std::size_t bild) const { return nummern_[bild]; }
  /// Pictures that were there when the pages were laid out and could not be read any more.
  const QStringList& verlorene() const noexcept { return verlorene_; }

  std::vector<pdfdatei::Bildstrom> stroeme(const Seitenplan& plan) {
    std::vector<pdfdatei::Bildstrom> alle{zeichenstrom(plan.front())};
    for (std::size_t n = 1; n < quellen_.size(); ++n)
      alle.push_back({formen_[n], [this, n](const pdfdatei::Nehmer& nehmer) { liefere(n, nehmer); }});
    return alle;
  }

 private:
  void nimm(const seitenplan::Bildkasten& kasten, std::vector<QSize>& noetig) {
    const Berichtsbild& bild = bericht_.bilder[kasten.bild];
    const QString pfad = bild.ordner + u'\\' + bild.datei;
    const std::size_t n = bekannte_.value(pfad, quellen_.size());
    if (n == quellen_.size()) {
      bekannte_.insert(pfad, n);
      quellen_.push_back(kasten.bild);
      noetig.emplace_back(0, 0);
    }
    nummern_[kasten.bild] = n;
    noetig[n] = noetig[n].expandedTo(seitenmaler::pixel(kasten.ort.size(), static_cast<double>(wahl_.dichte)));
  }

  pdfdatei::Bildstrom zeichenstrom(const seitenplan::Seite& erste) const {
    if (!erste.zeichen) return {};
    QImage bild =
        firmenzeichen::pixel(bericht_.kopf.zeichen, seitenmaler::pixel(erste.zeichen->size(), Dichte_des_Zeichens));
    if (bild.isNull()) bild = bildkodierung::ersatz({bildkodierung::Weg::Verlustfrei, {1, 1}, 3});
    return {{bildkodierung::Weg::Verlustfrei, bild.size(), 3},
        [bild](const pdfdatei::Nehmer& nehmer) { liefere_Pixel(bild, nehmer); }};
  }

  void liefere(std::size_t n, const pdfdatei::Nehmer& nehmer) {
    if (fortgang_ && !fortgang_(getan_++, quellen_.size() - 1)) throw Halt{};
    // The next ones are decoded while this one is coded.
    for (angekuendigt_ = std::max(angekuendigt_, n + 1); angekuendigt_ < std::min(n + 1 + Voraus, quellen_.size());
         ++angekuendigt_)
      if (formen_[angekuendigt_].weg != bildkodierung::Weg::Eigene)
        ladung_.kuendige_genau_an(bericht_.bilder[quellen_[angekuendigt_]], formen_[angekuendigt_].groesse);
    const Berichtsbild& bild = bericht_.bilder[quellen_[n]];
    if (formen_[n].weg == bildkodierung::Weg::Verlustfrei) {
      const QImage pixel = bildkodierung::pixel(bild, formen_[n], ladung_);
      if (pixel.isNull()) vermisse(bild);
      return liefere_Pixel(pixel.isNull() ? bildkodierung::ersatz(formen_[n]) : pixel, nehmer);
    }
    const auto bytes = bildkodierung::jpeg(bild, formen_[n], wahl_, ladung_);
    if (!bytes) vermisse(bild);
    liefere_Bytes(bytes ? *bytes : bildkodierung::kodiere(bildkodierung::ersatz(formen_[n])), nehmer);
  }

  void vermisse(const Berichtsbild& bild) {
    verlorene_.append(u"%1: Die Datei war beim Schreiben nicht mehr zu lesen."_s.arg(bild.datei));
  }

  const Bericht& bericht_;
  const Berichtswahl& wahl_;
  const Fortgang& fortgang_;
  Bildladung ladung_;
  QHash<QString, std::size_t> bekannte_;
  /// By the file's numbers; the first is the firm's mark.
  std::vector<std::size_t> quellen_{0};
  std::vector<bildkodierung::Form> formen_{{}};
  /// By the report's pictures.
  std::vector<std::size_t> nummern_;
  std::size_t getan_ = 0;
  /// Those up to here were announced to the threads that decode.
  std::size_t angekuendigt_ = 0;
  static constexpr std::size_t Voraus = 2;
  QStringList verlorene_;
};

Pdfangaben angaben_von(const Bericht& bericht) {
  return {u"Bildbericht"_s, bericht.kopf.zeilen.value(0), bericht.vorgang, QDateTime::currentDateTime()};
}

/// Pixels come and go by the megabyte. Kept by the allocator for the next ones, which mostly have another size, they
/// would add up to a third of what the whole work needs. It holds for the process from then on.
constexpr int Gleich_zurueck = 1 << 20;

Abbruch nicht_zu_schreiben(const QString& ziel, const QString& grund) {
  return {Ausgang::Datei, u"Der Bericht „%1“ ist nicht zu schreiben: %2"_s.arg(ziel, grund)};
}

/// Qt's own words come in the system's language.
QString grund_von(QFileDevice::FileError fehler) {
  return fehler == QFileDevice::OpenError || fehler == QFileDevice::PermissionsError
      ? u"Das Recht dazu fehlt, oder der Ordner lässt es nicht zu."_s
      : u"Der Datenträger ist voll oder nicht mehr zu erreichen."_s;
}

void pruefe_Ziel(const QString& ziel) {
  const QFileInfo datei(ziel);
  // A picture that was named by mistake would be gone.
  if (datei.suffix().compare(u"pdf"_s, Qt::CaseInsensitive) != 0)
    throw Abbruch(Ausgang::Aufruf, u"Der Name des Berichts muss auf „.pdf“ enden, nicht „%1“."_s.arg(ziel));
  if (datei.isDir()) throw nicht_zu_schreiben(ziel, u"Das ist ein Ordner."_s);
  if (!datei.absoluteDir().exists()) throw nicht_zu_schreiben(ziel, u"Den Ordner gibt es nicht."_s);
}

}  // namespace

QStringList fehlende(const Bericht& bericht) {
  QStringList alle;
  for (const Berichtsbild& bild : bericht.bilder)
    if (!bild.grund.isEmpty()) alle.append(u"%1: %2"_s.arg(bild.datei, bild.grund));
  const QString& zeichen = bericht.kopf.zeichen;
  if (!zeichen.isEmpty() && firmenzeichen::groesse(zeichen).isEmpty())
    alle.append(u"%1: Das Zeichen des Briefkopfs ist nicht zu lesen."_s.arg(QFileInfo(zeichen).fileName()));
  return alle;
}

Ergebnis schreibe(const QString& ziel, const Bericht& bericht, const Berichtswahl& wahl, const Fortgang& fortgang) {
  pruefe_Ziel(ziel);
  mallopt(M_MMAP_THRESHOLD, Gleich_zurueck);
  QSaveFile datei(ziel);
  if (!datei.open(QIODevice::WriteOnly)) throw nicht_zu_schreiben(ziel, grund_von(datei.error()));
  const Seitenplan plan = seitenplan::plane(bericht, wahl.je_Seite, firmenzeichen::groesse(bericht.kopf.zeichen));
  Bildvorrat vorrat(bericht, wahl, fortgang);
  vorrat.sammle(plan);
  const QByteArray geruest = pdfgeruest::schreibe(plan, [&](std::size_t bild) { return vorrat.nummer(bild); });
  Ergebnis ergebnis{false, static_cast<int>(plan.size()), 0, fehlende(bericht)};
  try {
    pdfdatei::schreibe(datei, geruest, angaben_von(bericht), vorrat.stroeme(plan));
  } catch (const Halt&) {
    return ergebnis;
  } catch (const Abbruch&) {
    throw nicht_zu_schreiben(ziel, grund_von(datei.error()));
  } catch (const std::bad_alloc&) {
    throw nicht_zu_schreiben(ziel, u"Der Speicher reicht nicht."_s);
  } catch (const std::exception& fehler) {
    throw nicht_zu_schreiben(ziel, QString::fromUtf8(fehler.what()));
  }
  if (!datei.commit()) throw nicht_zu_schreiben(ziel, grund_von(datei.error()));
  ergebnis.fehlende += vorrat.verlorene();
  ergebnis.geschrieben = true;
  ergebnis.bilder =
      static_cast<int>(std::count_if(bericht.bilder.begin(), bericht.bilder.end(), [](const Berichtsbild& bild) {
        return bild.grund.isEmpty();
      }) - vorrat.verlorene().size());
  return ergebnis;
}

}  // namespace berichtsdatei
