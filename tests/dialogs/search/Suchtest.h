#pragma once

#include <gtest/gtest.h>

#include <QColor>
#include <QMap>
#include <QSize>
#include <functional>
#include <memory>
#include <optional>

#include "dialogs/search/frm_BilderSuchen.h"
#include "platform/files/Laufwerke.h"
#include "platform/host/Oberflaeche.h"
#include "tests/support/Bilddatei.h"
#include "tests/support/Doppel.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Umgebung.h"

/// The drives of a machine as a test scripts them.
class Laufwerksdoppel final : public laufwerke::Anbieter {
 public:
  struct Laufwerk {
    std::int32_t typ = laufwerke::Fest;
    std::optional<QString> marke = {};  ///< label; none makes asking for it fail
    QString netz = {};                  ///< remote place
    std::int32_t netzfehler = 0;
  };
  QMap<QChar, Laufwerk> laufwerke;
  QString verzeichnis = QStringLiteral("C:\\Heim");
  /// Roots that were asked for their label.
  QStringList nach_Marke_gefragt;
  /// Asking for the remote place raises.
  bool netz_wirft = false;

  std::int32_t GetDriveType(const QString& wurzel) override;
  bool GetVolumeInformation(const QString& wurzel, QString& bezeichnung) override;
  std::int32_t WNetGetConnection(const QString& laufwerk, QString& ziel) override;
  QString aktuelles_Verzeichnis() override { return verzeichnis; }
};

/// The search dialog over two drives of the test's own: C: with the current directory "C:\Heim", and P:. No folder is
/// remembered at the beginning. Boxes and reports that the test did not announce fail it.
class Suchtest : public ::testing::Test {
 protected:
  Suchtest();
  ~Suchtest() override;

  /// Content of a picture of one colour.
  static QByteArray bild(QSize groesse = QSize(40, 30), const QColor& farbe = Qt::blue, const char* format = "JPEG") {
    return bilddatei(groesse, farbe, format);
  }
  /// Writes a JPEG below drive P:, e.g. "Bilder/a.jpg".
  void lege_Bild(const QString& name, QSize groesse = QSize(40, 30), const QColor& farbe = Qt::blue);
  void lege_Bilder(int anzahl, const QString& unter = QStringLiteral("Bilder"));

  /// A form as the entry point makes it, up to its loading.
  frm_BilderSuchen& form();
  bool form_da() const { return form_ != nullptr; }
  /// The form is unloaded and forgotten.
  void entlade();
  /// Shows the form modally; `waehrend` runs once it is up and no read runs. A form that it leaves open is hidden.
  void zeige(const std::function<void()>& waehrend);
  /// The same on the entry point.
  bool rufe_auf(const std::function<void(frm_BilderSuchen&)>& waehrend, const QString& root = {},
      std::optional<bool> mit_mehreren = {});
  /// Runs at each time the dialog lets events in, with the number of that time from 1 since this was set.
  void beim_Pumpen(std::function<void(int)> tu);
  /// Names of all items.
  static QStringList eintraege(const frm_BilderSuchen& f);
  QStringList eintraege() { return eintraege(form()); }
  /// Picture of an item as it is shown, 1 for the first.
  QImage bild_von(int eintrag);
  /// The picture that stands for what can't be read, as an item shows it.
  QImage ersatz();
  static void waehle_Filter(frm_BilderSuchen& f, int index);

  Testordner ordner;
  std::shared_ptr<Laufwerksdoppel> laufwerke_ = std::make_shared<Laufwerksdoppel>();
  CoreDoppel core;
  MeldungsDoppel meldungen;
  std::shared_ptr<XArrayDBObject> feld;
  QString rootpath = QStringLiteral("P:\\Bilder");
  bool mehrfach = true;

 private:
  class Pumpe;
  /// Runs `tu` from the event loop, not from within a read.
  void nach_dem_Lesen(QTimer& takt, const std::function<void()>& tu);

  std::shared_ptr<Pumpe> pumpe_;
  std::shared_ptr<oberflaeche::Ereignispumpe> pumpe_vorher_;
  std::shared_ptr<laufwerke::Anbieter> anbieter_vorher_;
  std::unique_ptr<frm_BilderSuchen> form_;
};
