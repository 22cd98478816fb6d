#pragma once

#include <QImage>
#include <QString>
#include <QStringList>
#include <memory>
#include <stdexcept>

#include "host/fenster/Hauptfenster.h"
#include "host/rundgang/Hand.h"
#include "host/rundgang/Schrittfolge.h"
#include "platform/host/KVOCore.h"

/// Walks the program and its dialog without a person: does with mouse and keys what a user does, saves a picture of
/// every state that matters, and checks at each step what is to be seen and at the end what the database holds. It
/// works on sample data of its own.
class Rundgang {
 public:
  /// `ordner` takes the pictures and, in "daten", the sample data. It is made where it is missing. What an earlier tour
  /// left there is replaced; anything else in it stays. The dialog is opened through `dialog`.
  Rundgang(const QString& ordner, Zuordnungsdialog dialog);
  ~Rundgang();
  Rundgang(const Rundgang&) = delete;
  Rundgang& operator=(const Rundgang&) = delete;

  /// Walks all of it and prints what it does. 0 when every step had its effect, 1 otherwise. A folder that can't be
  /// used ends with Abbruch.
  int laufe();

 private:
  class Kern;
  void richte_Daten_ein();
  void plane_Fenster();
  void plane_Waehlen();
  void plane_Oeffnen();
  void plane_Felder();
  void plane_Namen();
  void plane_Entfernen();
  void plane_Sortieren();
  void plane_Groessen();
  void plane_Fragen();
  void plane_Speichern();
  void plane_Anzeigen();
  void plane_Verwerfen();
  void plane_Bildablage();
  void plane_Suchen();
  void plane_Anhaengen();
  void plane_Drehen();
  void plane_Exif();
  void plane_Weitere_Zuordnungen();
  void plane_Alle_Zuordnungen();
  void plane_Aufraeumen();
  void schliesse_ab();

  void schritt(
      const QString& text, std::function<void()> tun, std::function<bool()> bis, std::function<void()> danach = {});
  /// Saves the window in front as the next picture.
  void bild(const QString& name);
  void speichere_Bild(QWidget& vorn, const QString& datei);

  /// A control of the window in front; std::runtime_error when there is none of that name and kind.
  template <class Element = QWidget>
  Element& element(const QString& name) const;
  QString text(const QString& name) const;
  bool zu_sehen(const QString& name) const;
  /// Number of thumbnails in the dialog's strip.
  int bilder_im_Streifen() const;
  void klicke_Vorgang(const QString& nummer, bool doppelt = false);
  void klicke_Antwort(const QString& knopf);
  /// Replaces the text of an input field as a user would.
  void ueberschreibe(const QString& feld, const QString& neuer_Text);
  void groesse(QSize neue);
  bool dialog_offen() const;
  /// The dialog is laid out and shows its strip.
  bool dialog_bereit(const QString& kopf, int bilder) const;
  bool meldung_offen(const QString& titel) const;
  bool fenster_offen(const QString& name) const;
  /// The picture search is in front and has read a folder of that many files.
  bool suche_zeigt(int dateien) const;
  void klicke_Eintrag(
      const QString& liste, const QString& name, bool doppelt = false, Qt::KeyboardModifiers dazu = Qt::NoModifier);
  // Cells of a data grid, by row and column of its table.
  QString zelle(const QString& gitter, int zeile, int spalte) const;
  int zeilenzahl(const QString& gitter) const;
  void klicke_Zelle(const QString& gitter, int zeile, int spalte, bool auf_Knopf = false);
  /// Size in pixels of a picture of the sample data.
  QSize groesse_von(const QString& datei) const;
  /// The first picture of the record that got the new ones.
  QString erste_Datei() const;
  /// The program's window is in front again and tells this in its status bar.
  bool zurueck_mit(const QString& status) const;

  /// The rows of a record as the database holds them, one text each.
  QStringList zeilen(const QString& belegart, const QString& belegnummer) const;
  /// The first column of a query.
  QStringList werte(const QString& abfrage) const;
  void pruefe_Endstand();
  bool datei_da(const QString& datei) const;

  QString ordner_;
  QString daten_;
  Zuordnungsdialog dialog_;
  Schrittfolge folge_;
  Hand hand_;
  std::shared_ptr<KVOCore> voriger_Kern_;
  std::unique_ptr<Hauptfenster> fenster_;
  QStringList vorher_;
  QStringList anderer_vorher_;
  QSize startgroesse_;
  QSize gedreht_;
  int streifenhoehe_ = 0;
  int bilder_ = 0;
};

template <class Element>
Element& Rundgang::element(const QString& name) const {
  const QWidget* vorn = Hand::fenster_vorn();
  const QList<Element*> gefundene = vorn ? vorn->findChildren<Element*>(name) : QList<Element*>();
  if (gefundene.isEmpty()) throw std::runtime_error("Im Fenster fehlt " + name.toStdString());
  // A control that was unloaded may still be there, hidden, beside the one that took its place.
  for (Element* eines : gefundene)
    if (!eines->isHidden()) return *eines;
  return *gefundene.last();
}
