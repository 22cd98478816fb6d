#include "host/betrieb/aufnahme/Aufnahme.h"

#include <QScopeGuard>
#include <algorithm>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Hochkomma.h"
#include "host/betrieb/aufnahme/Umwandlung.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Verbleib = Zuordnungsweg::Verbleib;

/// Pixels have no name of their own.
const QString Eingefuegt = u"Einfuegung_"_s;

Datensatz als_Datensatz(const Zuordnungsweg::Vorgang& v) {
  return {v.Key1, v.Key2, v.Key3, v.Key4, v.Typ1, v.Typ2};
}

QByteArray summe_der_Datei(const QString& pfad) {
  QByteArray summe;
  if (!pfad.isEmpty()) gelingt([&] { summe = Inhaltsvergleich::summe(dateien::lies_alles(pfad)); });
  return summe;
}

}  // namespace

Aufnahme::Aufnahme(const Arbeitsplatz& platz, Zuordnungsweg::Vorgang vorgang, Regeln regeln)
    : platz_(platz),
      vorgang_(std::move(vorgang)),
      regeln_(std::move(regeln)),
      ordner_(platz.wurzel() + u'\\' + vorgang_.Bildpfad) {}

Aufnahme::~Aufnahme() = default;

template <class Schritt>
bool Aufnahme::geht(const QString& name, Schritt&& schritt) {
  try {
    const auto grund = versuche(schritt);
    if (grund) ergebnis_.probleme.append(u"„%1“: %2"_s.arg(name, grund->Beschreibung()));
    return !grund;
  } catch (const Abbruch& abbruch) {
    ergebnis_.probleme.append(abbruch.text());
    return false;
  }
}

Aufnahmeergebnis Aufnahme::nimm_auf(const QStringList& dateien, const QList<QImage>& pixel) {
  ergebnis_ = {};
  ergebnis_.alle = static_cast<int>(dateien.size() + pixel.size());
  zu_Ende_ = !geht(vorgang_.Infozeile, [&] { beginne(); });
  for (int i = 0; i < ergebnis_.alle && !zu_Ende_; ++i) {
    if (regeln_.fortschritt && !regeln_.fortschritt(i, ergebnis_.alle)) {
      ergebnis_.angehalten = true;
      break;
    }
    if (i < dateien.size())
      nimm_auf(dateien.at(i));
    else
      nimm_auf(pixel.at(i - dateien.size()));
    if (wartende_.size() >= Portion) speichere();
  }
  speichere();
  raeume_Ordner_weg();
  ergebnis_.Ordner_neu = !Ordner_war_da_;
  return std::exchange(ergebnis_, {});
}

void Aufnahme::beginne() {
  if (const QString grund = Zuordnungsweg::einwand(vorgang_); !grund.isEmpty()) throw Abbruch(Ausgang::Aufruf, grund);
  namen::ordner(vorgang_.Bildpfad);
  lies();
  // The road of editing refuses such a record as well.
  hochkomma::pruefe_Zeilen(*store_);
  vergleich_ = std::make_unique<Inhaltsvergleich>(*store_, platz_.wurzel());
  vergebene_ = std::make_unique<bildzeilen::Vergebene>(*store_, ordner_);
  Ordner_war_da_ = FileSystemObject().FolderExists(ordner_);
  bildzeilen::mache_Ordner(*store_, ordner_);
}

/// The rows as the table has them now, and nothing copied for them yet.
void Aufnahme::lies() {
  if (!platz_.verbindung())
    throw Abbruch(
        Ausgang::Datenbank, u"Die Zuordnungen sind nicht zu lesen: "_s + u"Die Datenbank ist nicht geöffnet."_s);
  const Zuordnungsweg::Lesung lesung = Zuordnungsweg(platz_.anwendungsobjekt(), platz_.wurzel()).lies(vorgang_);
  if (!lesung.bilder) throw Abbruch(Ausgang::Datenbank, lesung.grund);
  store_ = lesung.bilder;
  kopien_ = std::make_unique<Bildkopien>();
  wartende_.clear();
}

void Aufnahme::nimm_auf(const QString& ort) {
  geht(ort, [&] {
    const Aufnahmequelle quelle = aufnahmequelle::pruefe_Bild(ort);
    nimm_auf(quelle, aufnahmeinhalt::bereite(quelle, regeln_.aufrecht, true));
  });
}

void Aufnahme::nimm_auf(const QImage& pixel) {
  geht(u"Einfügung"_s, [&] {
    nimm_auf({u"das eingefügte Bild"_s, {}, {Eingefuegt, u"jpg"_s}}, {false, umwandlung::in_Jpeg(pixel), u"jpg"_s, {}});
  });
}

void Aufnahme::nimm_auf(const Aufnahmequelle& quelle, const Aufnahmeinhalt& inhalt) {
  if (ist_unerwuenscht(quelle.angabe, inhalt.bytes)) {
    ++ergebnis_.uebersprungene;
    return;
  }
  const namen::Bilddatei neu = vergebene_->freier_Name({quelle.name.name, inhalt.ext}, stempel_);
  // The picture without the text that belongs to it would be half of it.
  bool vollendet = false;
  const auto zurueck = qScopeGuard([&] {
    if (!vollendet) kopien_->verwirf(neu);
  });
  QString text;
  if (inhalt.wie_Quelle)
    text = kopien_->kopiere(quelle.pfad, ordner_, neu);
  else
    text = kopien_->schreibe(inhalt.bytes, quelle.pfad, ordner_, neu);
  const std::int64_t platz = bildzeilen::naechster_Platz(*store_, 1);
  bildzeilen::lege_an(*store_, als_Datensatz(vorgang_), quelle.name, neu, vorgang_.Bildpfad, platz);
  vollendet = true;
  wartende_.push_back(
      {{neu, vorgang_.Bildpfad, Inhaltsvergleich::summe(inhalt.bytes), summe_der_Datei(text)}, quelle.name});
  vergleich_->merke(inhalt.bytes);
  if (!inhalt.hinweis.isEmpty()) ergebnis_.hinweise.append(inhalt.hinweis);
}

bool Aufnahme::ist_unerwuenscht(const QString& name, const QByteArray& bytes) {
  if (!regeln_.doppelte || !vergleich_->kennt(bytes)) return false;
  if (!doppelte_nehmen_) doppelte_nehmen_ = regeln_.doppelte(name);
  return !*doppelte_nehmen_;
}

void Aufnahme::speichere() {
  if (wartende_.empty()) return;
  const bool gespeichert = geht(vorgang_.Infozeile, [&] {
    uebernimm(Zuordnungsweg(platz_.anwendungsobjekt(), platz_.wurzel()).speichere(store_, vorgang_));
    if (!zu_Ende_) lies();
  });
  if (!gespeichert) zu_Ende_ = true;
  // What is not kept goes with it.
  kopien_ = std::make_unique<Bildkopien>();
  wartende_.clear();
}

void Aufnahme::uebernimm(const Zuordnungsweg::Ergebnis& ergebnis) {
  for (const Wartendes& eines : wartende_) {
    const auto bild = std::find_if(ergebnis.bilder.begin(), ergebnis.bilder.end(),
        [&](const Zuordnungsweg::Bild& b) { return b.name == eines.aufgenommen.bild.datei(); });
    const Verbleib verbleib = bild == ergebnis.bilder.end() ? Verbleib::Nicht_geschrieben : bild->verbleib;
    // A file without a row is cleared away some day, a row without its file shows nothing.
    if (verbleib == Verbleib::Neu || verbleib == Verbleib::Ungewiss) kopien_->behalte(eines.aufgenommen.bild);
    if (verbleib == Verbleib::Neu) {
      ergebnis_.bilder.push_back(eines.aufgenommen);
      continue;
    }
    zu_Ende_ = true;
    const QString grund = bild == ergebnis.bilder.end() ? QString() : bild->hinweis;
    ergebnis_.probleme.append(verbleib == Verbleib::Ungewiss
            ? u"Ob „%1“ zugeordnet ist, ist ungewiss; die Kopie in der Ablage bleibt."_s.arg(eines.alt.datei())
            : u"„%1“ ist nicht gespeichert: %2"_s.arg(eines.alt.datei(), grund));
  }
}

/// A folder that was made for nothing goes again; one that holds anything can't.
void Aufnahme::raeume_Ordner_weg() const {
  if (Ordner_war_da_ || !ergebnis_.bilder.empty()) return;
  gelingt([&] { FileSystemObject().DeleteFolder(ordner_); });
}
