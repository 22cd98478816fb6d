#pragma once

#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/befehl/Dialogantwort.h"
#include "host/betrieb/befehl/Dialogauftrag.h"
#include "host/fenster/Hochkommawache.h"
#include "host/fenster/Wirtskomponenten.h"
#include "host/fenster/dialog/Mitschrift.h"

/// Opens one dialog for a caller and tells what came of it. What keeps a dialog from opening ends with Abbruch, unless
/// the user was told already.
class Dialoglauf {
 public:
  explicit Dialoglauf(Dialogauftrag auftrag) : auftrag_(std::move(auftrag)), platz_(auftrag_.wirt) {}

  /// The pictures of the record, on the whole road of a host: read, checked, shown, written, checked again.
  Dialogantwort zuordnung();
  /// The search; the caller gets the paths that the user chose, as this machine has them.
  Dialogantwort suche();
  /// All assignments of a picture of the record; that to the record itself is removed where the user wants it.
  Dialogantwort alle_Zuordnungen();
  /// Pictures of the record for articles.
  Dialogantwort weitere();
  /// The properties of a picture file.
  Dialogantwort eigenschaften();

 private:
  void oeffne_Datenbank();
  /// Ends with Abbruch where the picture tree can't be reached; `folge` says what that means.
  void verlange_Wurzel(const QString& folge);
  std::shared_ptr<clsBildZuordnungen> lies_zum_Bearbeiten() const;
  Dialogantwort nicht_geoeffnet(const Zuordnungsweg::Ergebnis& ergebnis) const;

  Dialogauftrag auftrag_;
  Arbeitsplatz platz_;
  Mitschrift mitschrift_;
  Wirtskomponenten komponenten_;
  Hochkommawache wache_;
};
