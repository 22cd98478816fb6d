#include "host/bericht/ausgabe/Zipziel.h"

#include <fcntl.h>
#include <unistd.h>
#include <zip.h>

#include <QScopeGuard>
#include <algorithm>
#include <cerrno>
#include <ctime>
#include <memory>
#include <optional>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Namen.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::int64_t Nanosekunden = 1'000'000'000;

/// Formats that can't be made smaller.
bool ist_schon_klein(const QString& name) {
  static const QStringList Endungen{u".jpg"_s, u".jpeg"_s, u".jpe"_s, u".jfif"_s, u".png"_s, u".gif"_s, u".webp"_s,
      u".heic"_s, u".heif"_s, u".avif"_s};
  return std::any_of(Endungen.begin(), Endungen.end(),
      [&](const QString& endung) { return name.endsWith(endung, Qt::CaseInsensitive); });
}

QString worte(int fehler) {
  switch (fehler) {
    case ENOSPC:
    case EDQUOT:
      return u"Der Datenträger ist voll."_s;
    case EACCES:
    case EPERM:
    case EROFS:
      return u"Der Zugriff ist verweigert."_s;
    default:
      return u"Beim Schreiben ist ein Fehler aufgetreten."_s;
  }
}

Abbruch nicht_zu_schreiben(const QString& datei, int fehler) {
  return {Ausgang::Datei,
      u"„%1“ ist nicht zu schreiben: %2 Es ist nichts ausgegeben."_s.arg(namen::angezeigt(datei), worte(fehler))};
}

/// The content of one file of the archive while it is asked for: a picture is read when its turn comes, and let go when
/// it is written.
struct Inhalt {
  const Ausgabebild* bild = nullptr;
  /// None for a text.
  Bildleser* leser = nullptr;
  std::time_t zeit = 0;
  std::optional<std::int64_t> laenge;
  QByteArray bytes;
  qsizetype ort = 0;
  bool ausgelassen = false;

  bool oeffne() {
    ort = 0;
    if (!leser) {
      bytes = bild->text;
      return true;
    }
    const auto gelesen = leser->lies(*bild);
    ausgelassen = !gelesen;
    bytes = gelesen.value_or(QByteArray());
    laenge = bytes.size();
    return !leser->angehalten();
  }
  zip_int64_t lies(void* ziel, zip_uint64_t hoechstens) {
    const auto anzahl =
        static_cast<qsizetype>(std::min<zip_uint64_t>(hoechstens, static_cast<zip_uint64_t>(bytes.size() - ort)));
    std::copy_n(bytes.constData() + ort, anzahl, static_cast<char*>(ziel));
    ort += anzahl;
    return anzahl;
  }
  void beschreibe(zip_stat_t& stat) const {
    ::zip_stat_init(&stat);
    stat.mtime = zeit;
    stat.valid = ZIP_STAT_MTIME;
    if (!laenge) return;
    stat.size = static_cast<zip_uint64_t>(*laenge);
    stat.valid |= ZIP_STAT_SIZE;
  }
};

/// The library's way to ask for a content.
zip_int64_t gib(void* inhalt, void* daten, zip_uint64_t laenge, zip_source_cmd_t befehl) {
  auto& quelle = *static_cast<Inhalt*>(inhalt);
  switch (befehl) {
    case ZIP_SOURCE_OPEN:
      return quelle.oeffne() ? 0 : -1;
    case ZIP_SOURCE_READ:
      return quelle.lies(daten, laenge);
    case ZIP_SOURCE_CLOSE:
      quelle.bytes.clear();
      return 0;
    case ZIP_SOURCE_STAT:
      quelle.beschreibe(*static_cast<zip_stat_t*>(daten));
      return sizeof(zip_stat_t);
    case ZIP_SOURCE_ERROR: {
      zip_error_t fehler;
      ::zip_error_init(&fehler);
      ::zip_error_set(&fehler, ZIP_ER_READ, 0);
      return ::zip_error_to_data(&fehler, daten, laenge);
    }
    case ZIP_SOURCE_SUPPORTS:
      return ::zip_source_make_command_bitmap(
          ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
    default:
      return 0;
  }
}

/// An archive that is being written; what was not closed leaves nothing behind.
class Archiv {
 public:
  Archiv(const QString& ort, int art) : ort_(ort) {
    int fehler = 0;
    zip_.reset(::zip_open(Pfadkarte::aktuell().maschinenpfad_neu(ort).constData(), art, &fehler));
    if (!zip_) throw nicht_zu_schreiben(ort, errno);
  }
  void nimm(const QString& name, Inhalt& inhalt, bool klein) {
    const QByteArray utf8 = name.toUtf8();
    zip_source_t* quelle = ::zip_source_function(zip_.get(), gib, &inhalt);
    const zip_int64_t nummer =
        quelle ? ::zip_file_add(zip_.get(), utf8.constData(), quelle, ZIP_FL_ENC_UTF_8) : zip_int64_t{-1};
    if (nummer < 0) {
      ::zip_source_free(quelle);
      throw nicht_zu_schreiben(ort_, 0);
    }
    ::zip_set_file_compression(zip_.get(), static_cast<zip_uint64_t>(nummer), klein ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0);
    ::zip_file_set_mtime(zip_.get(), static_cast<zip_uint64_t>(nummer), inhalt.zeit, 0);
  }
  void streiche(zip_uint64_t nummer) { ::zip_delete(zip_.get(), nummer); }
  /// False where it can't be written; `fehler` tells why.
  bool schliesse(int& fehler) {
    if (::zip_close(zip_.get()) == 0) {
      static_cast<void>(zip_.release());
      return true;
    }
    fehler = ::zip_error_code_system(::zip_get_error(zip_.get()));
    return false;
  }

 private:
  struct Verwerfer {
    void operator()(zip_t* zip) const { ::zip_discard(zip); }
  };
  QString ort_;
  std::unique_ptr<zip_t, Verwerfer> zip_;
};

std::time_t jetzt() {
  return std::time(nullptr);
}

/// A picture and its text, in the archive's order.
std::vector<Inhalt> inhalte_von(const std::vector<Ausgabebild>& bilder, Bildleser& leser) {
  std::vector<Inhalt> alle;
  for (const Ausgabebild& bild : bilder) {
    Inhalt inhalt{&bild, &leser, jetzt(), std::nullopt, {}, 0, false};
    versuche([&] {
      const dateien::Kennung kennung = dateien::kennung(bild.quelle);
      inhalt.zeit = kennung.geaendert_ns / Nanosekunden;
      inhalt.laenge = kennung.laenge;
    });
    alle.push_back(inhalt);
    if (!bild.textname.isEmpty()) alle.push_back({&bild, nullptr, jetzt(), bild.text.size(), {}, 0, false});
  }
  return alle;
}

/// Takes out the places that were kept for pictures that could not be read, with their texts.
void streiche_Ausgelassene(const QString& ort, const std::vector<Inhalt>& inhalte) {
  Archiv archiv(ort, 0);
  bool ausgelassen = false;
  for (std::size_t i = 0; i < inhalte.size(); ++i) {
    if (inhalte[i].leser) ausgelassen = inhalte[i].ausgelassen;
    if (ausgelassen) archiv.streiche(i);
  }
  int fehler = 0;
  if (!archiv.schliesse(fehler)) throw nicht_zu_schreiben(ort, fehler);
}

}  // namespace

Zipziel::Zipziel(QString datei) : datei_(std::move(datei)) {}

Zipziel::~Zipziel() {
  if (daneben_.isEmpty() || !FileSystemObject().FileExists(daneben_)) return;
  gelingt([&] { FileSystemObject().DeleteFile(daneben_, true); });
}

void Zipziel::pruefe() const {
  const FileSystemObject dateien;
  if (dateien.FileExists(datei_) || dateien.FolderExists(datei_))
    throw Abbruch(Ausgang::Datei, u"„%1“ gibt es schon; es ist nichts ausgegeben."_s.arg(namen::angezeigt(datei_)));
  const QString ordner = datei_.left(datei_.lastIndexOf(u'\\'));
  if (!dateien.FolderExists(ordner + u'\\'))
    throw Abbruch(Ausgang::Datei, u"Den Ordner „%1“ gibt es nicht."_s.arg(namen::angezeigt(ordner)));
}

void Zipziel::schreibe(const std::vector<Ausgabebild>& bilder, Bildleser& leser) {
  daneben_ = dateien::verborgener_Name(datei_);
  std::vector<Inhalt> inhalte = inhalte_von(bilder, leser);
  Archiv archiv(daneben_, ZIP_CREATE | ZIP_EXCL);
  for (Inhalt& inhalt : inhalte)
    archiv.nimm(inhalt.leser ? inhalt.bild->name : inhalt.bild->textname, inhalt,
        inhalt.leser && ist_schon_klein(inhalt.bild->name));
  int fehler = 0;
  const bool geschrieben = archiv.schliesse(fehler);
  if (leser.angehalten()) return;
  if (!geschrieben) throw nicht_zu_schreiben(datei_, fehler);
  if (leser.gelesene() > 0 && !leser.ausgelassene().empty()) streiche_Ausgelassene(daneben_, inhalte);
}

void Zipziel::behalte() {
  // The name must not stand for half of it after a power cut.
  const QByteArray ort = Pfadkarte::aktuell().maschinenpfad(daneben_);
  const int deskriptor = ::open(ort.constData(), O_RDONLY | O_CLOEXEC);
  const bool auf_der_Platte = deskriptor >= 0 && ::fsync(deskriptor) == 0;
  const int fehler = errno;
  if (deskriptor >= 0) ::close(deskriptor);
  if (!auf_der_Platte) throw nicht_zu_schreiben(datei_, fehler);
  if (const auto grund = versuche([&] { FileSystemObject().MoveFile(daneben_, datei_); }))
    throw Abbruch(Ausgang::Datei,
        u"„%1“ ist nicht zu schreiben: %2 Es ist nichts ausgegeben."_s.arg(
            namen::angezeigt(datei_), grund->Beschreibung() + u'.'));
}
