#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "host/betrieb/Arbeitsplatz.h"
#include "host/fenster/bericht/Berichtsfenster.h"
#include "host/fenster/bericht/Seitenansicht.h"
#include "tests/host/fenster/Wirt.h"
#include "tests/support/Umgebung.h"

/// The report's window of a record with pictures of the test's own, in front and driven by mouse and keys. What it
/// remembers goes to the test's folder.
class Berichtsaufbau : public Wirt {
 protected:
  void SetUp() override;
  void TearDown() override;

  static QByteArray foto(QSize groesse);
  static QByteArray foto() { return foto({400, 300}); }
  /// A picture of the record that is marked for printing, the next of the strip. Without bytes its file is missing.
  void nimm(const QString& name, const QString& text = {}, const QByteArray& bytes = foto(),
      const QString& druck = QStringLiteral("0001"));
  void nimm_viele(int anzahl);
  /// Opens the window and waits until it shows the record.
  void oeffne(Berichtsfragen fragen = {});
  /// Until it has read and loaded what is to be seen.
  void warte() const;

  template <class Widget = QWidget>
  Widget& kind(const QString& name) const {
    auto* gefunden = fenster_->findChild<Widget*>(name);
    EXPECT_NE(gefunden, nullptr) << name.toStdString();
    return *gefunden;
  }
  Seitenansicht& ansicht() const { return *fenster_->ansicht(); }
  QString stand() const;
  QString hinweis() const;
  QString status() const;
  void taste(Qt::Key eine, Qt::KeyboardModifiers dazu = {}) const;
  /// Chooses an entry of a combo box with the keys of a user.
  void waehle(const QString& feld, const QString& eintrag) const;
  /// Clicks a check box or a button.
  void kreuze(const QString& haken) const;
  void druecke(const QString& knopf) const;
  /// All texts of the pages, in their order.
  QStringList texte() const;
  /// A printer's or a saver's answers.
  Berichtsfragen nach(const QString& ziel) const;
  /// Runs when the bar shows that something is being put out.
  void bei_Ausgabe(std::function<void()> tat) const;
  /// What a program prints.
  static QString ausgabe(const QString& programm, const QStringList& argumente);
  static int seitenzahl(const QString& pdf);

  /// Runs once while the window reads the record's pictures, if it is set.
  std::function<void()> beim_Lesen_;
  Testordner ordner_;
  Testordner ablage_;
  Wirtsoptionen optionen_;
  std::unique_ptr<Arbeitsplatz> platz_;
  Vorgang vorgang_;
  std::unique_ptr<Berichtsfenster> fenster_;
  int zeilen_ = 0;
};
