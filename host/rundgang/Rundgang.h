#pragma once

#include <QApplication>
#include <QString>
#include <QStringList>
#include <memory>
#include <stdexcept>

#include "host/fenster/Hauptfenster.h"
#include "host/rundgang/Hand.h"
#include "host/rundgang/Schrittfolge.h"
#include "platform/host/KVOCore.h"

class QAbstractItemView;
class QModelIndex;

/// Walks the program and its dialog without a person: does with mouse and keys what a user does, saves a picture of
/// every state that matters, and checks at each step what is to be seen and at the end what the database holds. It
/// works on sample data of its own.
class Rundgang {
 public:
  /// `ordner` takes the pictures and, in "daten", the sample data. It is made where it is missing. What an earlier tour
  /// left there is replaced; anything else in it stays. The dialog is opened through `dialog`.
  Rundgang(const QString& ordner, Zuordnungsdialog dialog);
  ~Rundgang();
  Q_DISABLE_COPY_MOVE(Rundgang)

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
  void plane_Streifen();
  void plane_Groessen();
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
  void plane_Aufnehmen();
  void plane_Ausgeben();
  void plane_Vorgaenge();
  void plane_Bericht();
  void schliesse_ab();

  using Tat = std::function<void()>;
  using Sicht = std::function<bool()>;
  /// Plans a step: what is done, one after the other, what is to be seen of it, and what is done and checked then.
  void schritt(const QString& text, const QList<Tat>& taten, Sicht bis, const QList<Tat>& danach = {});
  void speichere_Bild(QWidget& vorn, const QString& datei);

  /// A control of the window in front; std::runtime_error when there is none of that name and kind.
  template <class Element = QWidget>
  Element& element(const QString& name) const;
  QString text(const QString& name) const;
  bool zu_sehen(const QString& name) const { return element(name).isVisible(); }
  int zeilenzahl(const QString& liste) const;
  QString zelle(const QString& gitter, int zeile, int spalte) const;
  void klicke_Stelle(
      QAbstractItemView& liste, const QModelIndex& stelle, bool doppelt, Qt::KeyboardModifiers dazu = Qt::NoModifier);

  // What a step does. Controls are looked up only then.
  Tat klick(const QString& name) {
    return [=, this] { hand_.klicke(element(name)); };
  }
  Tat taste(Qt::Key taste, Qt::KeyboardModifiers dazu = Qt::NoModifier) {
    return [=, this] { hand_.taste(taste, dazu); };
  }
  Tat tippe(const QString& text) {
    return [=, this] { hand_.tippe(text); };
  }
  Tat kreuze_an(const QString& name) {
    return [=, this] { hand_.klicke(element(name), QPoint(10, element(name).height() / 2)); };
  }
  /// Replaces the text of an input field as a user would.
  Tat ueberschreibe(const QString& feld, const QString& neuer_Text);
  Tat antworte(const QString& knopf);
  Tat klick_Vorgang(const QString& nummer, bool doppelt = false);
  Tat klick_Eintrag(
      const QString& liste, const QString& name, bool doppelt = false, Qt::KeyboardModifiers dazu = Qt::NoModifier);
  Tat klick_Zelle(const QString& gitter, int zeile, int spalte, bool auf_Knopf = false);
  Tat klick_erste_Vorschau();
  /// Saves the window in front as the next picture.
  Tat bild(const QString& name);
  /// Checks the text of a control.
  Tat pruefe(const QString& was, const QString& name, const QString& soll) {
    return [=, this] { folge_.erwarte(was, text(name), soll); };
  }
  Tat pruefe(const QString& was, const Sicht& sicht) {
    return [=, this] { folge_.erwarte(was, sicht()); };
  }
  /// The record that nothing was saved for has the rows of the beginning.
  Tat pruefe_anderen_Vorgang();
  /// The articles that the thermostat's picture is assigned to.
  Tat pruefe_Artikel_des_Bildes(const QString& soll);

  // What is to be seen.
  static Sicht beide(const Sicht& eine, const Sicht& andere) {
    return [=] { return eine() && andere(); };
  }
  static Sicht nicht(const Sicht& sicht) {
    return [=] { return !sicht(); };
  }
  Sicht zeigt(const QString& name, const QString& soll) const {
    return [=, this] { return text(name) == soll; };
  }
  Sicht sichtbar(const QString& name) const {
    return [=, this] { return zu_sehen(name); };
  }
  Sicht frei(const QString& name) const {
    return [=, this] { return element(name).isEnabled(); };
  }
  Sicht angekreuzt(const QString& name) const;
  Sicht hat_Zelle(const QString& gitter, int zeile, int spalte, const QString& soll) const {
    return [=, this] { return zelle(gitter, zeile, spalte) == soll; };
  }
  /// The dialog shows the picture of that number.
  Sicht am_Bild(int nummer) const { return zeigt(QStringLiteral("SSP_Anzahl(1)"), QString::number(nummer)); }
  /// The dialog's strip shows that many thumbnails.
  Sicht im_Streifen(int anzahl) const;
  static Sicht fenster_offen(const QString& name);
  static Sicht dialog_offen() { return fenster_offen(QStringLiteral("frm_BildZuordnung")); }
  /// The dialog is laid out and shows its strip.
  Sicht dialog_bereit(const QString& kopf, int bilder) const;
  static Sicht meldung_offen(const QString& titel) {
    return beide(
        fenster_offen(QStringLiteral("Meldung")), [=] { return Hand::fenster_vorn()->windowTitle() == titel; });
  }
  /// The picture search is in front and has read a folder of that many files.
  Sicht suche_zeigt(int dateien) const;
  /// The program's window is in front again, and tells this in its status bar.
  static Sicht zurueck() {
    return [] { return !QApplication::activeModalWidget(); };
  }
  Sicht zurueck_mit(const QString& status) const;

  /// Size in pixels of a picture of the sample data.
  QSize groesse_von(const QString& datei) const;
  /// The first picture of the record that got the new ones.
  QString erste_Datei() const;
  /// The rows of a record as the database holds them, one text each.
  QStringList zeilen(const QString& belegart, const QString& belegnummer) const;
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
