#include "host/fenster/vorgaenge/Einlesearbeit.h"

#include <QElapsedTimer>
#include <QThread>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int Gezeigte_Werte = 20;
constexpr int Gezeigte_Zeilen = 200;
/// Milliseconds between two words of progress.
constexpr qint64 Takt = 50;

qint64 jetzt() {
  static const QElapsedTimer Uhr = [] {
    QElapsedTimer uhr;
    uhr.start();
    return uhr;
  }();
  return Uhr.elapsed();
}

}  // namespace

Einlesearbeit::~Einlesearbeit() {
  gib_auf();
  // What comes while a statement is just being sent is lost, so it is said until it was heard.
  while (faden_ && !faden_->wait(20)) gib_auf();
}

void Einlesearbeit::gib_auf() {
  if (!faden_) return;
  aufgegeben_ = true;
  if (verbindung_) verbindung_->Cancel();
}

/// Runs a job; what it gives runs here afterwards.
void Einlesearbeit::starte(const std::function<std::function<void()>()>& arbeit) {
  if (faden_) return;
  try {
    if (!verbindung_) verbindung_ = ::oeffne(verbindungszeichenfolge_);
  } catch (const Abbruch& abbruch) {
    if (bei_Ausfall) bei_Ausfall(abbruch.text());
    return;
  }
  aufgegeben_ = false;
  faden_.reset(QThread::create([this, arbeit] {
    std::function<void()> danach;
    QString worte;
    try {
      if (const auto ausfall = versuche_Datenbank([&] { danach = arbeit(); })) worte = ausfall->worte;
    } catch (const Abbruch& abbruch) {
      worte = abbruch.text();
    } catch (const std::bad_alloc&) {
      worte = u"Der Speicher reicht nicht."_s;
    }
    if (!worte.isEmpty() && aufgegeben_) worte = u"Abgebrochen; es ist nichts übernommen."_s;
    QMetaObject::invokeMethod(
        this,
        [this, danach, worte] {
      faden_->wait();
      faden_.reset();
      if (worte.isEmpty())
        danach();
      else if (bei_Ausfall)
        bei_Ausfall(worte);
        },
        Qt::QueuedConnection);
  }));
  faden_->start();
}

/// On the job's thread.
bool Einlesearbeit::melde(Vorgangseinlesung::Schritt schritt, qint64 getan, qint64 ganz) {
  if (const qint64 zeit = jetzt(); zeit - zuletzt_ >= Takt) {
    zuletzt_ = zeit;
    QMetaObject::invokeMethod(
        this,
        [this, schritt, getan, ganz] {
      if (bei_Fortschritt && laeuft()) bei_Fortschritt(schritt, getan, ganz);
        },
        Qt::QueuedConnection);
  }
  return !aufgegeben_;
}

Vorgangseinlesung& Einlesearbeit::einlesung() {
  if (!einlesung_)
    einlesung_ = std::make_unique<Vorgangseinlesung>(*verbindung_,
        [this](Vorgangseinlesung::Schritt schritt, qint64 getan, qint64 ganz) { return melde(schritt, getan, ganz); });
  return *einlesung_;
}

void Einlesearbeit::oeffne(const QString& datei, std::function<void(const Ansicht&)> fertig) {
  starte([this, datei, fertig = std::move(fertig)] {
    liste_ = oeffne_Liste(datei);
    Ansicht ansicht{liste_->form(), spaltenwahl::vorschlag(*liste_), !liste_->feste_Namen().isEmpty(), {}};
    liste_->von_vorn();
    Listenzeile zeile;
    while (ansicht.zeilen.size() < Gezeigte_Werte && liste_->naechste(zeile)) ansicht.zeilen.append(zeile);
    return [fertig, ansicht] { fertig(ansicht); };
  });
}

void Einlesearbeit::pruefe(const Spaltenwahl& wahl, std::function<void(const Vorschau&)> fertig) {
  starte([this, wahl, fertig = std::move(fertig)] {
    einlesung().lies(*liste_, wahl);
    Vorschau vorschau{einlesung().vergleiche(), {}, {}};
    vorschau.falsche = einlesung().zeilen(Zeilenart::Falsch, 0, Gezeigte_Zeilen);
    vorschau.erste = einlesung().zeilen(std::nullopt, 0, Gezeigte_Zeilen);
    return [fertig, vorschau] { fertig(vorschau); };
  });
}

void Einlesearbeit::uebernimm(bool fehlerhafte_auslassen, std::function<void(const Einlesebefund&)> fertig) {
  starte([this, fehlerhafte_auslassen, fertig = std::move(fertig)] {
    const Einlesebefund befund = einlesung().uebernimm(fehlerhafte_auslassen);
    return [fertig, befund] { fertig(befund); };
  });
}
