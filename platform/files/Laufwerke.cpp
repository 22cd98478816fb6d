#include "platform/files/Laufwerke.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/basic/Dienstplatz.h"
#include "platform/basic/Text.h"
#include "platform/files/Pfadkarte.h"
#include "platform/files/Verzeichnis.h"

using namespace Qt::Literals::StringLiterals;
using verzeichnis::Einhaengung;

namespace laufwerke {
namespace {

/// Type of what is mounted, as far as it gets a letter of its own.
std::optional<Typ> eigener_Typ(const Einhaengung& e) {
  if (!e.freigabe.isEmpty()) return Netz;
  if (e.art == "iso9660"_L1 || e.art == "udf"_L1 || e.quelle.startsWith("/dev/sr"_L1)) return CdRom;
  const bool medium = e.ordner.startsWith("/media/"_L1) || e.ordner.startsWith("/run/media/"_L1);
  if (medium && e.quelle.startsWith("/dev/"_L1)) return Wechsel;
  return std::nullopt;
}

bool liegt_in(const QString& ordner, const QString& oberer) {
  return oberer == "/"_L1 || ordner == oberer || ordner.startsWith(oberer + u'/');
}

class Systemlaufwerke final : public Anbieter {
 public:
  explicit Systemlaufwerke(QString mounts = u"/proc/self/mounts"_s, QString marken = u"/dev/disk/by-label"_s)
      : tabelle_(std::move(mounts)), marken_(std::move(marken)) {}

  void sieh_nach() override {
    nachgesehen_ = true;
    mounts_ = verzeichnis::einhaengungen(tabelle_);
    QList<Einhaengung> eigene;
    for (const Einhaengung& e : std::as_const(mounts_))
      if (eigener_Typ(e)) eigene.append(e);
    std::stable_sort(
        eigene.begin(), eigene.end(), [](const Einhaengung& a, const Einhaengung& b) { return a.ordner < b.ordner; });
    vergiss_Verschwundene(eigene);
    for (const Einhaengung& e : std::as_const(eigene)) vergib(e.ordner);
  }

  std::int32_t GetDriveType(const QString& wurzel) override {
    const auto ordner = ordner_von(wurzel.left(2));
    if (!ordner) return OhneWurzel;
    const Einhaengung* mount = mount_von(*ordner);
    return mount ? eigener_Typ(*mount).value_or(Fest) : Fest;
  }

  bool GetVolumeInformation(const QString& wurzel, QString& bezeichnung) override {
    const auto ordner = ordner_von(wurzel.left(2));
    const Einhaengung* mount = ordner ? mount_von(*ordner) : nullptr;
    if (!mount) return false;
    const QString geraet = QFileInfo(mount->quelle).canonicalFilePath();
    for (const QFileInfo& marke : QDir(marken_).entryInfoList(QDir::Files | QDir::System | QDir::NoDotAndDotDot)) {
      if (geraet.isEmpty() || marke.canonicalFilePath() != geraet) continue;
      bezeichnung = entschluesselt(marke.fileName());
      return true;
    }
    return false;
  }

  std::int32_t WNetGetConnection(const QString& laufwerk, QString& ziel) override {
    constexpr std::int32_t NichtVerbunden = 2250;
    const auto ordner = ordner_von(laufwerk);
    const Einhaengung* mount = ordner ? mount_von(*ordner) : nullptr;
    if (!mount || mount->freigabe.isEmpty()) return NichtVerbunden;
    ziel = mount->freigabe;
    return 0;
  }

  // Shares have no letter: a directory that a host mapped as one lies on the drive around it.
  QString aktuelles_Verzeichnis() override {
    if (!nachgesehen_) sieh_nach();
    const QString pfad = QDir::currentPath();
    QString laufwerk = u"C:"_s;
    QString bester;
    for (const QString& name : Pfadkarte::aktuell().namen()) {
      const QString ordner = name.size() == 2 ? *Pfadkarte::aktuell().ordner(name) : QString();
      if (ordner.isEmpty() || !liegt_in(pfad, ordner) || ordner.size() <= bester.size()) continue;
      laufwerk = text::UCase(name);
      bester = ordner;
    }
    QString rest = bester.size() > 1 ? pfad.mid(bester.size()) : pfad;
    rest.replace(u'/', u'\\');
    return rest.isEmpty() ? laufwerk + u'\\' : laufwerk + rest;
  }

 private:
  static std::optional<QString> ordner_von(const QString& laufwerk) {
    if (const auto ordner = Pfadkarte::aktuell().ordner(laufwerk)) return ordner;
    if (laufwerk.compare("C:"_L1, Qt::CaseInsensitive) == 0) return u"/"_s;
    return std::nullopt;
  }

  /// The mount that a folder lies in: the deepest, and of several in one place the last.
  const Einhaengung* mount_von(const QString& ordner) const {
    const Einhaengung* tiefster = nullptr;
    for (const Einhaengung& e : mounts_)
      if (liegt_in(ordner, e.ordner) && (!tiefster || e.ordner.size() >= tiefster->ordner.size())) tiefster = &e;
    return tiefster;
  }

  void vergiss_Verschwundene(const QList<Einhaengung>& da) {
    for (const QString& laufwerk : vergeben_.keys()) {
      const QString ordner = vergeben_.value(laufwerk);
      const bool noch_da = std::any_of(da.begin(), da.end(), [&](const auto& e) { return e.ordner == ordner; });
      if (noch_da) continue;
      vergeben_.remove(laufwerk);
      if (Pfadkarte::aktuell().ordner(laufwerk) == ordner) Pfadkarte::aktuell().entferne(laufwerk);
    }
  }

  void vergib(const QString& ordner) {
    for (const QString& name : Pfadkarte::aktuell().namen())
      if (name.size() == 2 && Pfadkarte::aktuell().ordner(name) == ordner) return;
    for (char16_t buchstabe = u'D'; buchstabe <= u'Z'; ++buchstabe) {
      const QString laufwerk = QString(QChar(buchstabe)) + u':';
      if (Pfadkarte::aktuell().ordner(laufwerk)) continue;
      Pfadkarte::aktuell().setze(laufwerk, ordner);
      vergeben_.insert(laufwerk, ordner);
      return;
    }
  }

  /// Labels are written with "\x20" for what no file name may hold.
  static QString entschluesselt(const QString& name) {
    QByteArray bytes = name.toUtf8();
    for (qsizetype i = bytes.indexOf("\\x"); i >= 0; i = bytes.indexOf("\\x", i + 1)) {
      bool gut = false;
      const int zeichen = bytes.mid(i + 2, 2).toInt(&gut, 16);
      if (gut) bytes.replace(i, 4, QByteArray(1, static_cast<char>(zeichen)));
    }
    return QString::fromUtf8(bytes);
  }

  const QString tabelle_;
  const QString marken_;
  QList<Einhaengung> mounts_;
  QMap<QString, QString> vergeben_;
  /// The letters have been assigned. Until then a directory on a medium would seem to lie on C:.
  bool nachgesehen_ = false;
};

using Platz = Dienstplatz<Anbieter, Systemlaufwerke>;

}  // namespace

Anbieter::~Anbieter() = default;

Anbieter& aktuell() {
  return *Platz::in_Kraft();
}

std::shared_ptr<Anbieter> setze(std::shared_ptr<Anbieter> anbieter) {
  return Platz::setze(std::move(anbieter));
}

std::shared_ptr<Anbieter> dieser_Maschine(const QString& mounts, const QString& marken) {
  return std::make_shared<Systemlaufwerke>(mounts, marken);
}

}  // namespace laufwerke
