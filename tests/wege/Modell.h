#pragma once

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <array>
#include <memory>
#include <vector>

#include "tests/wege/Bestand.h"
#include "tests/wege/Schritte.h"

/// A row of the table.
struct Zuordnung {
  QString re;  ///< number of the document
  QString name;
  QString endung = QStringLiteral("jpg");
  QString ordner;  ///< as the table holds it, with backslashes
  QString drucktext;
  std::array<bool, 4> marken{};  ///< in the order of schritt::Marke
  QString anbnr;
  QString ursprung;
  int sort = 0;
};

/// Table and tree of a firm, without a program.
struct Welt {
  std::vector<Zuordnung> tabelle;
  QMap<QString, Bildinhalt> bilder;  ///< by path below the root, with slashes
  QMap<QString, QString> texte;

  /// The record RE 1 with that many pictures, RE 2 beside it, and pictures that wait to be attached.
  static Welt am_Anfang(int bilder);
  Bestand bestand() const;
  /// Path as it stands on the disk, found in any case of its letters; empty where there is none.
  QString finde(const QString& pfad) const;
  /// The same for a text; the path itself where there is none.
  QString finde_Text(const QString& pfad) const;
};

/// Boxes that a clerk may meet.
enum class Kasten { Speichern, Umbenannt, Doppelt, Nicht_umbenannt, Nicht_gedreht };

/// What should come of a road: the dialog and the host's save as a user understands them. Knows nothing of the
/// product's classes; one picture is one object from the strip to the table.
class Modell {
 public:
  explicit Modell(int bilder) : welt(Welt::am_Anfang(bilder)) {}

  Welt welt;
  QDateTime zeit{QDate(2026, 3, 4), QTime(5, 6, 7)};
  /// Boxes that must have come, oldest first.
  QList<Kasten> kaesten;
  /// The host left out what the user wanted saved.
  bool muss_gesagt_werden = false;

  // ── The dialog, opened over what the table holds ──────────────────────────────────────────────────────────────────
  void oeffne();
  /// Paths below the root, with slashes.
  void haenge_an(const QStringList& dateien);
  void waehle(int zeile);
  void verschiebe(int von, int nach);
  void drehe(int viertel, schritt::Antwort namen);
  /// The name field as it stands after one more key.
  void aendere_Namen(const QString& text);
  void schreibe(schritt::Feld feld, const QString& text);
  void schalte(schritt::Marke marke);
  void merke_vor();
  void aktualisiere(schritt::Antwort namen);
  /// True where the dialog closes.
  bool speichere(schritt::Antwort namen);
  bool verlasse(schritt::Antwort sichern, schritt::Antwort namen);
  /// What the host does behind the dialog.
  void wirt_schreibt();

  // ── The share ─────────────────────────────────────────────────────────────────────────────────────────────────────
  void verschwinde(const QString& datei);
  /// The record's folder can't be reached any more.
  void trenne();
  bool ist_getrennt() const { return !ordner_da_; }
  /// Everything comes back but what has been replaced in between; gives the paths of what did.
  QStringList kehre_zurueck();
  /// What lies aside at the moment, by path.
  const QMap<QString, Bildinhalt>& verschwundene() const { return verschwundene_; }
  /// Pictures that never came back, since something else had their place by then.
  const QSet<int>& ersetzte() const { return ersetzte_; }
  void stoere(const QString& datei) { gestoert_.insert(datei); }
  bool ist_gestoert(const QString& datei) const { return gestoert_.contains(datei); }
  /// Path of the stamped name that the row would get now.
  QString gestempelter_Pfad(int zeile) const;

  // ── To be compared with the screen ────────────────────────────────────────────────────────────────────────────────
  int anzahl() const { return static_cast<int>(streifen_.size()); }
  int gewaehlt() const { return gewaehlt_; }
  bool geaendert() const { return geaendert_; }
  /// A row without a name locks the fields once it is selected.
  bool gesperrt() const { return gesperrt_; }
  bool vormerken_moeglich() const {
    const Bild& bild = streifen_[z(gewaehlt_)];
    return !gesperrt_ && !(bild.fehlt && bild.lesbar);
  }
  QString name(int zeile) const { return streifen_[z(zeile)].name; }
  /// Names in the strip's order.
  QStringList namen() const;

 private:
  struct Satz {
    Zuordnung werte;
    QString alter_Name;  ///< with the folder, what finds the row in the table
    QString alter_Ordner;
    bool zu_schreiben = false;
    bool neu = false;
    bool weg = false;
    QString ungeschriebener_Text = {};  ///< the folder was away when it was to be written
  };
  /// One picture of the strip.
  struct Bild {
    std::shared_ptr<Satz> satz;  ///< none while the picture is new
    QString datei;               ///< where its file lies, below the root
    QString ordner;
    QString name;
    QString endung = QStringLiteral("jpg");
    QString original;
    QString drucktext;
    QString info;
    std::array<bool, 4> marken{};
    bool umbenannt = false;
    bool doppelt = false;
    bool fehlt = false;
    bool lesbar = true;  ///< its folder, when the file was looked for
    bool entfernen = false;
    bool vorgemerkt = false;  ///< by the user
    bool angefasst = false;
  };
  /// What the fields show.
  struct Anzeige {
    QString name, alter_Name, info, drucktext;
    std::array<bool, 4> marken{};
    bool entfernen = false;
  };

  static std::size_t z(int zeile) { return static_cast<std::size_t>(zeile); }
  void lade();
  Bild lade_Bild(const std::shared_ptr<Satz>& satz, bool vorgemerkt) const;
  bool ist_lesbar(const Bild& bild) const;
  bool ist_vergeben(const QString& name, const QString& endung, int in_Arbeit) const;
  int kollision() const;
  bool zeige_Kollision();
  bool sichere(schritt::Antwort namen);
  void nimm_Vormerkungen_zurueck();
  bool frage_nach_Namen(schritt::Antwort namen, bool& erledigt);
  void sichere_Bild(int zeile, bool erledigt);
  bool lege_neues_an(Bild& bild, int zeile);
  bool benenne_um(Bild& bild, const QString& nach_Ordner);
  void aendere(int zeile);
  void schreibe_zurueck(Satz& satz);
  static bool ist_Zeile_von(const Satz& satz, const Zuordnung& zeile) {
    return zeile.re == QStringLiteral("1") && zeile.name == satz.alter_Name && zeile.ordner == satz.alter_Ordner;
  }

  std::vector<std::shared_ptr<Satz>> sammlung_;
  std::vector<Bild> streifen_;
  int gewaehlt_ = -1;
  bool geaendert_ = false;
  bool gesperrt_ = false;
  bool ordner_da_ = true;
  Anzeige anzeige_;
  QMap<QString, Bildinhalt> verschwundene_;
  QMap<QString, QString> verschwundene_Texte_;
  QSet<QString> gestoert_;
  QSet<int> ersetzte_;
};
