#include "host/betrieb/vorgang/Vorgangsdienst.h"

#include <QObject>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <thread>
#include <utility>

#include "platform/basic/Laufzeitfehler.h"

namespace {

/// So long the end of the service waits for its thread. A statement that is given up has ended by then.
constexpr std::chrono::milliseconds Geduld{300};

std::atomic<bool> zurueckgelassen = false;

}  // namespace

/// What both threads share. It outlives the service where its thread is left behind.
struct Vorgangsdienst::Lage {
  std::mutex schloss;
  std::condition_variable wecker;
  bool ende = false;
  bool fertig = false;
  QString verbindungszeichenfolge;
  bool neu_oeffnen = false;
  std::optional<vorgangsquelle::Frage> naechste;
  /// Number of the newest question, of the newest one with an answer, and of the newest one that is done with; the last
  /// two belong to the GUI thread.
  std::uint64_t gestellt = 0;
  std::uint64_t beantwortet = 0;
  std::uint64_t erledigt = 0;
  /// Where a statement may run; null while the connection is opened or closed.
  adodb::Connection* laufende = nullptr;
  /// Lives on the GUI thread; null once the service is gone.
  QObject* ziel = nullptr;
  Vorgangsdienst* dienst = nullptr;
  /// A giving up that came between two statements has hit nothing; this one comes again as long as it is needed.
  QTimer* nachfasser = nullptr;

  bool ueberholt(std::uint64_t nummer) {
    const std::lock_guard wache(schloss);
    return ende || nummer != gestellt;
  }

  /// Runs on the GUI thread, unless the service is gone or the question overtaken by then.
  template <class Rumpf>
  void melde(const std::shared_ptr<Lage>& selbst, std::uint64_t nummer, Rumpf rumpf) {
    const std::lock_guard wache(schloss);
    if (!ziel) return;
    QMetaObject::invokeMethod(
        ziel,
        [selbst, nummer, rumpf = std::move(rumpf)] {
      // Both only change on this thread.
      if (selbst->dienst && nummer == selbst->gestellt) rumpf(*selbst->dienst);
        },
        Qt::QueuedConnection);
  }
};

/// The other thread's side.
class Vorgangsdienst::Arbeiter {
 public:
  explicit Arbeiter(std::shared_ptr<Lage> lage) : lage_(std::move(lage)) {}

  void laufe() {
    while (warte_auf_Frage()) {
      beantworte();
      // Behind the answer and its number.
      lage_->melde(
          lage_, nummer_, [lage = lage_.get(), nummer = nummer_](Vorgangsdienst&) { lage->erledigt = nummer; });
    }
    schliesse();
    const std::lock_guard wache(lage_->schloss);
    lage_->fertig = true;
    lage_->wecker.notify_all();
  }

 private:
  bool warte_auf_Frage() {
    std::unique_lock wache(lage_->schloss);
    lage_->wecker.wait(wache, [this] { return lage_->ende || lage_->naechste; });
    if (lage_->ende) return false;
    frage_ = *std::exchange(lage_->naechste, std::nullopt);
    nummer_ = lage_->gestellt;
    verbindungszeichenfolge_ = lage_->verbindungszeichenfolge;
    neu_oeffnen_ = std::exchange(lage_->neu_oeffnen, false) || neu_oeffnen_;
    return true;
  }

  void beantworte() {
    Antwort antwort;
    try {
      lies(antwort);
    } catch (const std::bad_alloc&) {
      antwort.ausfall = ausfall_von(Laufzeitfehler(fehlernummer::SpeicherErschoepft));
    }
    // The next question shall not meet a link that is gone.
    if (antwort.ausfall && antwort.ausfall->grund == Datenbankgrund::Unerreichbar) schliesse();
    if (lage_->ueberholt(nummer_)) return;
    lage_->melde(lage_, nummer_, [antwort, lage = lage_.get(), nummer = nummer_](Vorgangsdienst& dienst) {
      lage->beantwortet = nummer;
      if (dienst.bei_Antwort) dienst.bei_Antwort(antwort);
    });
    if (!antwort.ausfall) zaehle(antwort);
  }

  void lies(Antwort& antwort) {
    antwort.ausfall = oeffne();
    if (antwort.ausfall) return;
    antwort.ausfall = versuche_Datenbank([&] {
      if (!herkunft_) herkunft_ = vorgangsquelle::herkunft(*verbindung_);
      antwort.herkunft = *herkunft_;
      antwort.vorgaenge = vorgangsquelle::lies(*verbindung_, antwort.herkunft, frage_);
      antwort.vielleicht_mehr = antwort.vorgaenge.size() >= frage_.hoechstens;
    });
  }

  void zaehle(const Antwort& antwort) {
    std::int64_t zahl = antwort.vorgaenge.size();
    if (antwort.vielleicht_mehr &&
        versuche_Datenbank([&] { zahl = vorgangsquelle::zaehle(*verbindung_, antwort.herkunft, frage_); }))
      return;
    lage_->melde(lage_, nummer_, [zahl](Vorgangsdienst& dienst) {
      if (dienst.bei_Zahl) dienst.bei_Zahl(zahl);
    });
  }

  std::optional<Datenbankausfall> oeffne() {
    if (verbindung_ && !neu_oeffnen_) return std::nullopt;
    schliesse();
    if (auto ausfall = versuche_zu_oeffnen(verbindungszeichenfolge_, verbindung_)) return ausfall;
    neu_oeffnen_ = false;
    const std::lock_guard wache(lage_->schloss);
    lage_->laufende = verbindung_.get();
    return std::nullopt;
  }

  void schliesse() {
    {
      const std::lock_guard wache(lage_->schloss);
      lage_->laufende = nullptr;
    }
    verbindung_.reset();
    herkunft_.reset();
  }

  std::shared_ptr<Lage> lage_;
  std::shared_ptr<adodb::Connection> verbindung_;
  /// Of the open connection.
  std::optional<vorgangsquelle::Herkunft> herkunft_;
  QString verbindungszeichenfolge_;
  bool neu_oeffnen_ = false;
  vorgangsquelle::Frage frage_;
  std::uint64_t nummer_ = 0;
};

Vorgangsdienst::Vorgangsdienst() : lage_(std::make_shared<Lage>()) {
  auto* ziel = new QObject;
  lage_->ziel = ziel;
  lage_->dienst = this;
  lage_->nachfasser = new QTimer(ziel);
  lage_->nachfasser->setInterval(20);
  QObject::connect(lage_->nachfasser, &QTimer::timeout, ziel, [lage = lage_.get()] {
    const std::lock_guard wache(lage->schloss);
    // Without a question that waits there is none to give up for.
    if (!lage->naechste) return lage->nachfasser->stop();
    if (lage->laufende) lage->laufende->Cancel();
  });
  std::thread([lage = lage_] { Arbeiter(lage).laufe(); }).detach();
}

Vorgangsdienst::~Vorgangsdienst() {
  QObject* ziel = nullptr;
  {
    std::unique_lock wache(lage_->schloss);
    lage_->ende = true;
    lage_->dienst = nullptr;
    ziel = std::exchange(lage_->ziel, nullptr);
    if (lage_->laufende) lage_->laufende->Cancel();
    lage_->wecker.notify_all();
    if (!lage_->wecker.wait_for(wache, Geduld, [this] { return lage_->fertig; })) zurueckgelassen = true;
  }
  delete ziel;
}

void Vorgangsdienst::verbinde(const QString& verbindungszeichenfolge) {
  const std::lock_guard wache(lage_->schloss);
  lage_->verbindungszeichenfolge = verbindungszeichenfolge;
  lage_->neu_oeffnen = true;
}

void Vorgangsdienst::frage(const vorgangsquelle::Frage& frage) {
  const std::lock_guard wache(lage_->schloss);
  ++lage_->gestellt;
  lage_->naechste = frage;
  if (lage_->laufende) lage_->laufende->Cancel();
  lage_->nachfasser->start();
  lage_->wecker.notify_all();
}

bool Vorgangsdienst::fragt() const {
  return lage_->beantwortet != lage_->gestellt;
}

bool Vorgangsdienst::ruht() const {
  return lage_->erledigt == lage_->gestellt;
}

bool Vorgangsdienst::einer_zurueckgelassen() {
  return zurueckgelassen;
}
