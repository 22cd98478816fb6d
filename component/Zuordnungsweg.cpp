#include "component/Zuordnungsweg.h"

#include <QStringList>
#include <algorithm>
#include <limits>

#include "component/weg/Ablage.h"
#include "component/weg/Aufrichten.h"
#include "component/weg/Meldung.h"
#include "component/weg/Satz.h"
#include "component/weg/Speicherlauf.h"
#include "component/weg/Ungespeichertes.h"
#include "component/weg/Verbindungen.h"
#include "dialogs/assignment/clsDialoge.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"
#include "store/Felder.h"
#include "store/Sammlungszugriff.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace {

const QString Vormerkung =
    u"\r\n\r\nDer Dialog wird nicht geöffnet, weil er alle Bilder zum Entfernen vormerken würde."_s;

/// As the user says it: "AB 24-1001".
QString nummer(const Zuordnungsweg::Vorgang& vorgang) {
  QStringList teile{vorgang.Key1, vorgang.Key2, vorgang.Key3, vorgang.Key4};
  teile.removeAll(u"-"_s);
  teile.removeAll(QString());
  return teile.join(u' ');
}

/// It holds nothing at all, like a place where no drive is mounted.
bool ist_leer(const QString& wurzel) {
  bool leer = true;
  fehler::Weiter weiter;
  weiter([&] {
    const Folder inhalt = FileSystemObject().GetFolder(wurzel + u'\\');
    leer = inhalt.SubFolders().isEmpty() && inhalt.Files().isEmpty();
  });
  return leer;
}

std::vector<const clsBilderSpeicher*> fehlende(clsBildZuordnungen& bilder, const QString& wurzel) {
  std::vector<const clsBilderSpeicher*> liste;
  for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
    bilder.AktInd(i);
    if (!weg::ablage::ist_da(wurzel, *bilder.AktBildObj)) liste.push_back(bilder.AktBildObj.get());
  }
  return liste;
}

/// Takes the rows out that lead above the picture root, and notes each.
void entnimm_Ausserhalb(clsBildZuordnungen& bilder, Zuordnungsweg::Ergebnis& ergebnis) {
  for (std::int32_t i = bilder.AnzahlPos() - 1; i >= 0; --i) {
    bilder.AktInd(i);
    const std::shared_ptr<clsBilderSpeicher> satz = bilder.AktBildObj;
    if (Bilddatei::liegt_unter_Wurzel(*satz)) continue;
    ergebnis.bilder.push_back({Bilddatei::von(*satz).datei(), Zuordnungsweg::Verbleib::Unveraendert,
        u"Der Ordner „%1“ liegt nicht unter der Bildablage. "
        "Dort wird nichts geöffnet, und die Zuordnung bleibt, wie sie ist."_s.arg(satz->Bild_Pfad)});
    ++ergebnis.ausserhalb;
    Sammlungszugriff::entnimm(bilder, satz.get());
  }
}

}  // namespace

Zuordnungsweg::Zuordnungsweg(std::shared_ptr<Anwendungsobjekt> anwendung, QString wurzel, Dialog dialog)
    : anwendung_(std::move(anwendung)), wurzel_(std::move(wurzel)), dialog_(std::move(dialog)) {
  if (!dialog_)
    dialog_ = [](const auto&... argumente) { return clsDialoge().Fkt_Aufruf_Dialog_Zuordnung(argumente...); };
}

Zuordnungsweg::~Zuordnungsweg() = default;

QString Zuordnungsweg::einwand(const Vorgang& vorgang) {
  for (const QString* teil : weg::teile(vorgang)) {
    if (teil->contains(u'\''))
      return u"Die Nummer „%1“ enthält ein Hochkomma; solchen Vorgängen sind keine Bilder zuzuordnen."_s.arg(
          nummer(vorgang));
    if (teil->size() > felder::Kurz)
      return u"Ein Teil der Nummer „%1“ ist länger als 50 Zeichen; solchen Vorgängen sind keine Bilder zuzuordnen."_s
          .arg(nummer(vorgang));
  }
  return {};
}

std::vector<std::int64_t> Zuordnungsweg::uebernimm_Reihenfolge(clsBildZuordnungen& bilder) {
  const std::vector<std::int64_t> folge = Sammlungszugriff::gespeicherte_Reihenfolge(bilder);
  const std::int32_t vorher = bilder.AktInd();
  for (std::int32_t i = 0; i < bilder.AnzahlPos(); ++i) {
    using Grenzen = std::numeric_limits<std::int16_t>;
    bilder.AktInd(i);
    bilder.Bild_SortIndex(
        static_cast<int>(std::clamp<std::int64_t>(folge[static_cast<std::size_t>(i)], Grenzen::min(), Grenzen::max())));
  }
  bilder.AktInd(vorher);
  return folge;
}

Zuordnungsweg::Lesung Zuordnungsweg::lies(const Vorgang& vorgang) const {
  if (const QString grund = einwand(vorgang); !grund.isEmpty()) return {nullptr, grund};
  Lesung lesung{std::make_shared<clsBildZuordnungen>(), {}};
  lesung.grund = weg::Verbindungen(*anwendung_).lies(*lesung.bilder, weg::mit_Strichen(vorgang));
  if (!lesung.grund.isEmpty()) return {nullptr, u"Die Zuordnungen sind nicht zu lesen: "_s + lesung.grund};
  uebernimm_Reihenfolge(*lesung.bilder);
  return lesung;
}

Zuordnungsweg::Ergebnis Zuordnungsweg::speichere(
    const std::shared_ptr<clsBildZuordnungen>& bilder, const Vorgang& vorgang) const {
  Ergebnis ergebnis;
  ergebnis.geoeffnet = true;
  weg::Verbindungen verbindungen(*anwendung_);
  weg::speichere(*bilder, verbindungen, {wurzel_, weg::mit_Strichen(vorgang), {}, false}, ergebnis);
  return ergebnis;
}

/// A connection that died since the last walk is no reason not to open the dialog.
Zuordnungsweg::Lesung Zuordnungsweg::lies_auch_nach_Ausfall(const Vorgang& vorgang) const {
  Lesung lesung = lies(vorgang);
  if (lesung.bilder || !einwand(vorgang).isEmpty()) return lesung;
  return weg::Verbindungen(*anwendung_).erneuere().isEmpty() ? lies(vorgang) : lesung;
}

/// False when the dialog must not open: it marks every row whose file is missing for removal.
bool Zuordnungsweg::darf_oeffnen(std::int32_t alle, std::int32_t fehlende, bool nur_Anzeige) const {
  if (fehlende < alle || alle == 0) return true;
  if (ist_leer(wurzel_)) {
    weg::meldung::warne(
        u"Die Bildablage ist leer, obwohl dem Vorgang Bilder zugeordnet sind. Ist das Laufwerk verbunden?"_s +
        Vormerkung);
    return false;
  }
  if (nur_Anzeige || alle < 2) return true;
  return weg::meldung::bejaht(
      u"Keine der %1 Bilddateien dieses Vorgangs liegt in der Bildablage. Der Dialog merkt sie alle zum "
      "Entfernen vor.\r\n\r\nTrotzdem öffnen?"_s.arg(alle),
      false);
}

Zuordnungsweg::Ergebnis Zuordnungsweg::gehe(const Vorgang& vorgang, bool nur_Anzeige, bool nur_Anhang) {
  Ergebnis ergebnis;
  ergebnis.nur_Anzeige = nur_Anzeige;
  const Vorgang ganzer = weg::mit_Strichen(vorgang);
  if (!FileSystemObject().FolderExists(wurzel_ + u'\\')) {
    weg::meldung::warne(u"Die Bildablage „%1“ ist nicht zu erreichen."_s.arg(wurzel_) + Vormerkung);
    return ergebnis;
  }
  const Lesung lesung = lies_auch_nach_Ausfall(ganzer);
  if (!lesung.bilder) {
    MsgBox(lesung.grund, Knoepfe::OK, Symbol::Kritisch, weg::meldung::titel());
    return ergebnis;
  }
  entnimm_Ausserhalb(*lesung.bilder, ergebnis);
  const auto fehlten = fehlende(*lesung.bilder, wurzel_);
  if (!darf_oeffnen(lesung.bilder->AnzahlPos(), static_cast<std::int32_t>(fehlten.size()), nur_Anzeige))
    return ergebnis;
  ergebnis.geoeffnet = true;
  do {
    ergebnis.dialog_gescheitert = !dialog_(anwendung_, wurzel_, ganzer.Bildpfad, lesung.bilder, ganzer.Typ1,
        ganzer.Typ2, ganzer.Infozeile, nur_Anzeige, nur_Anhang);
  } while (!nur_Anzeige && weg::ungespeichertes::soll_wieder_oeffnen(*lesung.bilder));
  if (nur_Anzeige) return ergebnis;
  // What the user saved is in the collection and its files are in place, whatever became of the dialog afterwards.
  weg::Verbindungen verbindungen(*anwendung_);
  const weg::Auftrag auftrag{wurzel_, ganzer, fehlten, true};
  weg::speichere(*lesung.bilder, verbindungen, auftrag, ergebnis);
  if (aufrecht_) weg::richte_Kopien_auf(*lesung.bilder, verbindungen, auftrag, ergebnis);
  weg::ungespeichertes::trage_ein(*lesung.bilder, ergebnis);
  return ergebnis;
}
