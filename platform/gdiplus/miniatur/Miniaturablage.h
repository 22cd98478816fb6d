#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QSize>
#include <cstdint>
#include <mutex>
#include <optional>

#include "platform/gdiplus/bild/Bildkopf.h"
#include "platform/gdiplus/miniatur/Angaben.h"
#include "platform/gdiplus/miniatur/Eintragsort.h"
#include "platform/gdiplus/miniatur/Kostenwache.h"

/// The small pictures that the desktop keeps over the end of programs (freedesktop.org, "Thumbnail Managing Standard"
/// 0.9). Only entries of this program are read: file managers turn theirs by the Exif mark. What they would show in
/// another way (a turned picture, or one that may have transparency, since ours are opaque) goes to a folder of our
/// own.
///
/// Every member may be called from any thread. None raises anything: what does not work has not been kept.
class Miniaturablage {
 public:
  /// A state of a picture file. The caller has looked at the file; here it is never touched when something is asked.
  struct Datei {
    QByteArray ort;  ///< absolute, of this machine
    std::int64_t laenge = 0;
    std::int64_t geaendert_ns = 0;
    /// When the pixels were read, since 1970 (see `jetzt`); 0 is the moment of the call.
    std::int64_t gesehen_ns = 0;
  };
  struct Auskunft {
    Bildkopf kopf;
    std::int32_t status = 0;  ///< a gdiplus::Status
    /// A failure entry: with status Ok the header is sound and nothing of the pixels could be decoded.
    bool fehlschlag = false;
  };
  using Uhr = std::int64_t (*)();

  /// Turned pictures take at most so many bytes; nobody else clears our own folder.
  static constexpr std::int64_t Eigene_Grenze = std::int64_t{512} * 1024 * 1024;

  /// The one of this process, in the cache folder that the environment names when it is first asked for.
  static Miniaturablage& aktuell();

  /// In that cache folder; an empty one is none, and the cache is off.
  explicit Miniaturablage(QByteArray cacheheim);
  Q_DISABLE_COPY_MOVE(Miniaturablage)

  /// Hosts switch it; on from the start.
  void an(bool wert);
  /// Also false where the folder can't be made or written to, and where asking turned out to be too slow.
  bool ist_an();

  /// What an entry of that state says about it, failure entries too; no pixels are decoded. None where none fits.
  std::optional<Auskunft> kopf(const Datei& datei);

  /// Pixels (RGB32) of the smallest entry that reaches for what is shown at `ziel`; null where none does. Those of a
  /// JPEG come reduced to the size that it would be decoded at for `ziel`, where the entry is much larger. Never
  /// smaller than `ziel` on either side, and with the original's proportions: the caller scales down.
  QImage suche(const Datei& datei, QSize ziel);

  /// Edge (128, 256, 512, 1024) of the entry that would reach for an original of that size shown at `ziel`; 0 where
  /// none does, or none is worth it.
  static int kante_fuer(QSize ziel, QSize groesse);
  /// Size of that entry: `merke` needs pixels that are at least as large.
  static QSize groesse_des_Eintrags(QSize groesse, int kante);

  /// Writes an entry; false when it was not written. `pixel` is the whole original, reduced with its proportions, on
  /// black, at least as large as the entry. `gedreht`: the picture has an Exif mark that turns it.
  bool merke(const Datei& datei, const Bildkopf& kopf, const QImage& pixel, int kante, bool gedreht);

  /// Writes a failure entry, for a file whose content is no picture or can't be decoded. A status that tells of the way
  /// to the file, and not of its content, is refused.
  bool merke_Fehlschlag(const Datei& datei, std::int32_t status, const Bildkopf& kopf);

  /// Removes every entry of ours for that file, of all sizes, in both folders, failures too. What was seen of it before
  /// is not written any more.
  void vergiss(const QByteArray& ort);

  /// Nanoseconds since 1970, by the clock in force.
  std::int64_t jetzt() const;
  /// Another clock; none puts the system's back. Tests let time pass with it.
  void uhr(Uhr andere);
  /// The clock that measures what asking costs, likewise.
  void stoppuhr(Uhr andere);
  /// Another cache folder, with costs and failures forgotten. For tests and benchmarks.
  void cacheheim(const QByteArray& anderes);

 private:
  struct Lage {
    miniatur::Ordner ordner;
    Uhr stoppuhr;
  };
  class Anfrage;

  bool ist_nutzbar();
  std::optional<Lage> lage();
  void zaehle_Anfrage(std::int64_t dauer_ns);
  bool ist_anzunehmen(const Lage& lage, const Datei& datei, const miniatur::Angaben& angaben) const;
  bool schreibe(const QByteArray& ordner, const miniatur::Angaben& angaben, const QImage& pixel);
  bool wurde_vergessen(const miniatur::Angaben& angaben) const;
  void zaehle_Schreiben(bool gut);
  bool ist_zu_kuerzen();
  miniatur::Angaben angaben(const Datei& datei, const Bildkopf& kopf, std::int32_t status) const;

  mutable std::mutex sperre_;  ///< never held while a file is opened, read or written
  QByteArray cacheheim_;
  bool an_ = true;
  std::optional<bool> brauchbar_;  ///< the folder was looked at
  miniatur::Kostenwache kosten_;
  int fehlschlaege_ = 0;  ///< writes in a row that did not work
  int eigene_ = 0;        ///< entries written to our own folder
  Uhr uhr_;
  Uhr stoppuhr_;

  std::mutex namenssperre_;                    ///< held while an entry gets its name or files are forgotten
  QHash<QByteArray, std::int64_t> vergessen_;  ///< addresses, and when
  std::int64_t alles_vergessen_ = 0;           ///< what was seen until then is not written, whichever file it is of
};
