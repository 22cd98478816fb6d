#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/basic/kvo_export.h"
#include "platform/host/Anwendungsobjekt.h"
#include "store/clsBildZuordnungen.h"

/// The road of a host: reads the pictures of one record, opens the dialog, writes what the user saved, asks again after
/// a failure, and checks afterwards that table, files and texts hold what was wanted. What differs is mended where it
/// can be and told otherwise, by picture. Used on the GUI thread; needs a QApplication as soon as the dialog opens.
///
/// Nothing is raised. Messages come as boxes (oberflaeche::MsgBox) under the title "Bildzuordnung"; reports of the
/// store while it writes are caught and told in them.
class KVO_EXPORT Zuordnungsweg {
 public:
  /// clsDialoge::Fkt_Aufruf_Dialog_Zuordnung or what stands in for it, with the same arguments and result.
  using Dialog = std::function<bool(const std::shared_ptr<Anwendungsobjekt>& pAppObj, const QString& pRootpath,
      const QString& pStandardBildPfad, const std::shared_ptr<clsBildZuordnungen>& pBildObj, const QString& PTyp1,
      const QString& pTyp2, const QString& pInfoZeile, bool pNurAnzeige, bool pNurAnhang)>;

  /// The record whose pictures are meant, exactly: an empty key or type stands for "-", as it does in the table. None
  /// may be longer than 50 characters or hold an apostrophe; such a record is refused with words.
  struct Vorgang {
    QString Key1, Key2, Key3, Key4;
    QString Typ1, Typ2;
    /// Folder below the root for the record's new pictures, as "Belege\24-1001".
    QString Bildpfad;
    /// Stands in the dialog's header.
    QString Infozeile;
  };

  /// What became of a picture. `Unveraendert` has a note only. `Ungewiss`: the table could not be asked.
  enum class Verbleib {
    Neu,
    Geaendert,
    Entfernt,
    Nachgefuehrt,
    Unveraendert,
    Nicht_geschrieben,
    Nicht_kopiert,
    Nicht_gespeichert,
    Ungewiss
  };

  struct Bild {
    /// File name with its extension; of a picture whose copy failed, that of its source.
    QString name;
    Verbleib verbleib = Verbleib::Unveraendert;
    /// German words for the user where there is something to say, otherwise empty.
    QString hinweis;
  };

  struct KVO_EXPORT Ergebnis {
    /// The dialog was open.
    bool geoeffnet = false;
    /// It came back with a failure, which was reported.
    bool dialog_gescheitert = false;
    bool nur_Anzeige = false;
    /// The table was read again after the save; true as well where there was nothing to save.
    bool geprueft = true;
    /// Rows that were written; `nachgefuehrt` for their place alone.
    int neu = 0;
    int geaendert = 0;
    int entfernt = 0;
    int nachgefuehrt = 0;
    /// Pictures that were not stored as the user wanted, for whatever reason.
    int nicht_geschrieben = 0;
    /// Rows of which nobody can tell.
    int ungewiss = 0;
    /// Rows whose folder leads out of the picture root. The dialog does not get them, since it would open what stands
    /// there or mark them for removal; they stay as they are, and each has its note.
    int ausserhalb = 0;
    /// Every picture that something was to be done with or is to be said of, in the dialog's order.
    std::vector<Bild> bilder;

    int geschrieben() const noexcept { return neu + geaendert + entfernt + nachgefuehrt; }
    /// All that the user saved is stored.
    bool vollstaendig() const noexcept { return nicht_geschrieben == 0 && ungewiss == 0 && !dialog_gescheitert; }
    /// All of it in one line, for a status bar or a log.
    QString text() const;
  };

  /// The pictures of a record as they were read, each with its stored place in Bild_SortIndex (within its 16 bits).
  struct Lesung {
    std::shared_ptr<clsBildZuordnungen> bilder;
    /// Why they can't be read; `bilder` is null then. Otherwise empty.
    QString grund;
  };

  /// `anwendung` gives the connection to read over and the connect string for the writing one. `wurzel` is the picture
  /// root without a closing backslash. Without a `dialog` it is the component's own.
  Zuordnungsweg(std::shared_ptr<Anwendungsobjekt> anwendung, QString wurzel, Dialog dialog = {});
  ~Zuordnungsweg();
  Zuordnungsweg(const Zuordnungsweg&) = delete;
  Zuordnungsweg& operator=(const Zuordnungsweg&) = delete;

  /// Whether `gehe` sets the new pictures upright that the dialog has copied, once their rows are stored: a JPEG whose
  /// Exif mark (Orientation) tells that it is turned gets its pixels turned and the mark 1, the copy alone and never a
  /// file that another row names. What can't be turned stays as it came and is told. Off at first.
  void aufrecht(bool wert) noexcept { aufrecht_ = wert; }
  bool aufrecht() const noexcept { return aufrecht_; }

  /// Walks the whole road. With `nur_Anzeige` nothing is written; with `nur_Anhang` every picture shown becomes an
  /// attachment. Every failure has been told when it returns. After an outage the host's connection may have been
  /// opened anew in its place.
  Ergebnis gehe(const Vorgang& vorgang, bool nur_Anzeige = false, bool nur_Anhang = false);

  // ── Pieces, for hosts without windows: they ask nothing and show nothing ──────────────────────────────────────────
  /// Why no statement can name that record, or empty.
  static QString einwand(const Vorgang& vorgang);
  Lesung lies(const Vorgang& vorgang) const;
  /// Writes what is flagged in `bilder`, once, and checks it against the table; reports go on to the host's KVOCore.
  /// New rows get the record's keys. The files of new pictures must be in place, or their rows are not written.
  Ergebnis speichere(const std::shared_ptr<clsBildZuordnungen>& bilder, const Vorgang& vorgang) const;
  /// Sets Bild_SortIndex of every record to its stored place (within its 16 bits), which reading leaves at 0, so that a
  /// row that is saved keeps it. Gives the stored numbers, one for each row.
  static std::vector<std::int64_t> uebernimm_Reihenfolge(clsBildZuordnungen& bilder);

 private:
  bool darf_oeffnen(std::int32_t alle, std::int32_t fehlende, bool nur_Anzeige) const;
  Lesung lies_auch_nach_Ausfall(const Vorgang& vorgang) const;

  std::shared_ptr<Anwendungsobjekt> anwendung_;
  QString wurzel_;
  Dialog dialog_;
  bool aufrecht_ = false;
};
