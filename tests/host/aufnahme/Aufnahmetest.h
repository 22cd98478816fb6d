#pragma once

#include <QDir>
#include <QFile>
#include <QStringList>
#include <memory>

#include "host/betrieb/aufnahme/Aufnahme.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Handyfoto.h"

/// Taking pictures into the record BEL, XY 1 of a picture tree of the test's own. The record has none at first.
class Aufnahmetest : public Wirt {
 protected:
  void SetUp() override {
    Wirt::SetUp();
    // A root that holds nothing counts as not mounted.
    ablage_.schreibe(QStringLiteral("Belege/liesmich.txt"), "x");
    Wirtsoptionen mit = optionen();
    mit.bilder = ablage_.pfad();
    platz_ = std::make_unique<Arbeitsplatz>(mit);
    platz_->oeffne();
    ASSERT_EQ(platz_->wurzel_fehlt(), std::nullopt);
  }

  static Zuordnungsweg::Vorgang vorgang() {
    return {QStringLiteral("XY"), QStringLiteral("1"), QStringLiteral("-"), QStringLiteral("-"), QStringLiteral("BEL"),
        QStringLiteral("-"), QStringLiteral("Belege\\1"), QStringLiteral("Beleg XY 1")};
  }
  Aufnahmeergebnis nimm_auf(const QStringList& dateien, Aufnahme::Regeln regeln = {}) {
    return Aufnahme(*platz_, vorgang(), std::move(regeln)).nimm_auf(dateien);
  }
  Aufnahmeergebnis nimm_Pixel_auf(const QImage& pixel) {
    return Aufnahme(*platz_, vorgang(), {}).nimm_auf({}, {pixel});
  }

  /// A file that waits; gives its path.
  QString eingang(const QString& name, const QByteArray& bytes) const { return eingang_.schreibe(name, bytes); }
  /// A small picture unlike all others of another number.
  static QByteArray bild(int nummer = 0) {
    return handyfoto::jpeg(handyfoto::motiv({16 + nummer % 32, 16 + nummer / 32}));
  }
  /// Names of the record's files, sorted; without the folder none.
  QStringList dateien() const {
    return QDir(ablage_.pfad(QStringLiteral("Belege/1"))).entryList(QDir::Files, QDir::Name);
  }
  bool hat_Ordner() const { return QDir(ablage_.pfad(QStringLiteral("Belege/1"))).exists(); }
  QByteArray datei(const QString& name) const { return ablage_.lies(QStringLiteral("Belege/1/") + name); }
  /// File names of the record's rows, in their order.
  static QStringList zeilen(const QString& key1 = QStringLiteral("XY")) {
    return werte(
        QStringLiteral("SELECT Bildname || '.' || BildExt FROM Bild_Zuordnungen WHERE Key1 = '%1' AND Key2 = '1' "
                       "ORDER BY SortIndex")
            .arg(key1));
  }

  Testordner ablage_;
  Testordner eingang_;
  std::unique_ptr<Arbeitsplatz> platz_;
};
