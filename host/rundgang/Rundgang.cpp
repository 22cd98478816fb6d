#include "host/rundgang/Rundgang.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBuffer>
#include <QImageWriter>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTreeView>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/rundgang/Fensterbild.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/KVOCore.h"
#include "store/clsBildZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

/// Takes the reports of failures, which no tour expects, and keeps the user's window places out of it.
class Rundgang::Kern final : public KVOCore {
 public:
  explicit Kern(Schrittfolge& folge) : folge_(folge) {}
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool /*mitMeldung*/) override {
    folge_.fehler(u"gemeldet von %1.%2: %3 %4"_s.arg(modul, prozedur).arg(nummer).arg(beschreibung));
  }
  void FensterWiederherstellen(const QString& /*anwendung*/, Fensterplatz& /*fenster*/) override {}
  void FensterSpeichern(const QString& /*anwendung*/, const Fensterplatz& /*fenster*/) override {}

 private:
  Schrittfolge& folge_;
};

namespace {

/// Tells that a folder was made by a tour, so that the next one may replace it.
const QString Kennzettel = u"\\Rundgang.txt"_s;

/// The last sight of a tour that went wrong.
const QString Fehlerbild = u"fehler.png"_s;

/// Empties the folder of an earlier tour's sample data, or makes it. One that somebody else filled is refused.
void mache_frei(const QString& ordner) {
  const FileSystemObject dateien;
  if (dateien.FolderExists(ordner)) {
    const Folder inhalt = dateien.GetFolder(ordner);
    const bool leer = inhalt.Files().isEmpty() && inhalt.SubFolders().isEmpty();
    if (!leer && !dateien.FileExists(ordner + Kennzettel))
      throw Abbruch(Ausgang::Datei,
          u"Der Ordner „%1“ ist nicht von einem Rundgang; er bleibt, wie er ist."_s.arg(namen::angezeigt(ordner)));
  }
  clsBildZuordnungen store;
  if (!store.Fkt_MakePath(ordner) || !dateien.FolderExists(ordner))
    throw Abbruch(Ausgang::Datei, u"Der Ordner „%1“ ist nicht anzulegen."_s.arg(namen::angezeigt(ordner)));
  dateien::schreibe_alles(ordner + Kennzettel,
      "Beispieldaten eines Rundgangs; der n\xC3\xA4"
      "chste ersetzt sie.\r\n");
  datenordner::entferne(ordner + u"\\betrieb"_s);
}

}  // namespace

Rundgang::Rundgang(const QString& ordner, Zuordnungsdialog dialog)
    : ordner_(namen::tabellenpfad(ordner)), daten_(ordner_ + u"\\daten\\betrieb"_s), dialog_(std::move(dialog)) {
  voriger_Kern_ = KVOCore::setze(std::make_shared<Kern>(folge_));
}

Rundgang::~Rundgang() {
  fenster_.reset();
  KVOCore::setze(std::move(voriger_Kern_));
}

void Rundgang::richte_Daten_ein() {
  const auto grund = versuche([&] {
    mache_frei(ordner_ + u"\\daten"_s);
    const FileSystemObject dateien;
    if (const QString alt = ordner_ + u'\\' + Fehlerbild; dateien.FileExists(alt)) dateien.DeleteFile(alt);
  });
  if (grund)
    throw Abbruch(
        Ausgang::Datei, u"In „%1“ ist nicht zu schreiben: %2"_s.arg(namen::angezeigt(ordner_), grund->Beschreibung()));
}

int Rundgang::laufe() {
  richte_Daten_ein();
  Schrittfolge::sage(u"Rundgang; die Bilder kommen nach "_s + namen::angezeigt(ordner_));
  // A caret that comes and goes would make each tour's pictures differ.
  QApplication::setCursorFlashTime(0);
  Wirtsoptionen optionen;
  optionen.datenordner = namen::angezeigt(daten_);
  fenster_ = std::make_unique<Hauptfenster>(optionen, dialog_);
  fenster_->beginne();
  fenster_->show();
  for (const auto plane : {&Rundgang::plane_Fenster, &Rundgang::plane_Waehlen, &Rundgang::plane_Oeffnen,
           &Rundgang::plane_Felder, &Rundgang::plane_Namen, &Rundgang::plane_Entfernen, &Rundgang::plane_Sortieren,
           &Rundgang::plane_Groessen, &Rundgang::plane_Fragen, &Rundgang::plane_Speichern, &Rundgang::plane_Anzeigen,
           &Rundgang::plane_Verwerfen, &Rundgang::plane_Bildablage, &Rundgang::plane_Suchen, &Rundgang::plane_Anhaengen,
           &Rundgang::plane_Drehen, &Rundgang::plane_Exif, &Rundgang::plane_Weitere_Zuordnungen,
           &Rundgang::plane_Alle_Zuordnungen, &Rundgang::plane_Aufraeumen})
    (this->*plane)();
  folge_.beginne([this] {
    // Where something is wrong the last sight tells most.
    if (QWidget* vorn = Hand::fenster_vorn(); vorn && folge_.fehlerzahl() > 0) speichere_Bild(*vorn, Fehlerbild);
    QCoreApplication::exit();
  });
  QApplication::exec();
  schliesse_ab();
  return folge_.fehlerzahl() == 0 ? 0 : 1;
}

void Rundgang::schritt(
    const QString& text, std::function<void()> tun, std::function<bool()> bis, std::function<void()> danach) {
  // Where no window manager does it, the window in front is made the active one here.
  const auto bereit = [bis = std::move(bis)] {
    QWidget* const vorn = Hand::fenster_vorn();
    if (vorn && !vorn->isActiveWindow()) vorn->activateWindow();
    return vorn && bis();
  };
  folge_.plane({text, std::move(tun), bereit, std::move(danach)});
}

void Rundgang::bild(const QString& name) {
  fenster_->ansicht()->lst_Bilder->lade_Sichtbare();
  QWidget* const vorn = Hand::fenster_vorn();
  if (!vorn) return folge_.fehler(u"Für das Bild ist kein Fenster da."_s);
  speichere_Bild(*vorn, u"%1_%2.png"_s.arg(++bilder_, 2, 10, QChar(u'0')).arg(name));
}

void Rundgang::speichere_Bild(QWidget& vorn, const QString& datei) {
  QByteArray bytes;
  QBuffer puffer(&bytes);
  QImageWriter schreiber(&puffer, "png");
  schreiber.setCompression(100);
  if (!schreiber.write(fensterbild::nimm_auf(vorn)))
    return folge_.fehler(u"%1: %2"_s.arg(datei, schreiber.errorString()));
  dateien::schreibe_alles(ordner_ + u'\\' + datei, bytes);
  Schrittfolge::sage(u"    Bild "_s + datei);
}

QString Rundgang::text(const QString& name) const {
  auto& gefunden = element(name);
  if (const auto* feld = qobject_cast<QLineEdit*>(&gefunden)) return feld->text();
  if (const auto* feld = qobject_cast<QPlainTextEdit*>(&gefunden)) return feld->toPlainText();
  if (const auto* feld = qobject_cast<QLabel*>(&gefunden)) return feld->text();
  if (const auto* knopf = qobject_cast<QAbstractButton*>(&gefunden)) return knopf->text();
  throw std::runtime_error(name.toStdString() + " hat keinen Text");
}

bool Rundgang::zu_sehen(const QString& name) const {
  return element(name).isVisible();
}

int Rundgang::bilder_im_Streifen() const {
  int anzahl = 0;
  for (const QWidget* kind : element(u"SSP_Panel(3)"_s).findChildren<QWidget*>())
    if (kind->isVisible() && kind->objectName().startsWith("Pic_Thumb("_L1)) ++anzahl;
  return anzahl;
}

void Rundgang::klicke_Vorgang(const QString& nummer, bool doppelt) {
  auto& baum = element<QTreeView>(u"tree_Vorgaenge"_s);
  const QAbstractItemModel& modell = *baum.model();
  const QModelIndexList treffer =
      modell.match(modell.index(0, 0), Qt::DisplayRole, nummer, 1, Qt::MatchExactly | Qt::MatchRecursive);
  if (treffer.isEmpty()) throw std::runtime_error("Die Liste zeigt nicht " + nummer.toStdString());
  const QPoint stelle = baum.visualRect(treffer.first()).center();
  if (doppelt)
    hand_.doppelklicke(*baum.viewport(), stelle);
  else
    hand_.klicke(*baum.viewport(), stelle);
}

void Rundgang::klicke_Antwort(const QString& knopf) {
  for (auto* antwort : Hand::fenster_vorn()->findChildren<QAbstractButton*>())
    if (antwort->text() == knopf) return hand_.klicke(*antwort);
  throw std::runtime_error("Die Frage hat keinen Knopf " + knopf.toStdString());
}

void Rundgang::ueberschreibe(const QString& feld, const QString& neuer_Text) {
  hand_.klicke(element(feld));
  hand_.taste(Qt::Key_A, Qt::ControlModifier);
  hand_.tippe(neuer_Text);
}

void Rundgang::groesse(QSize neue) {
  Hand::fenster_vorn()->windowHandle()->resize(neue);
}

bool Rundgang::dialog_offen() const {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->objectName() == "frm_BildZuordnung"_L1;
}

// The header gets its line last of all when the dialog opens.
bool Rundgang::dialog_bereit(const QString& kopf, int bilder) const {
  return dialog_offen() && text(u"SSP_Panel(0)"_s) == u"   "_s + kopf && zu_sehen(u"SSP_Panel(3)"_s) &&
      bilder_im_Streifen() == bilder && text(u"SSP_Anzahl(3)"_s) == QString::number(bilder);
}

bool Rundgang::meldung_offen(const QString& titel) const {
  const QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->objectName() == "Meldung"_L1 && modal->windowTitle() == titel;
}

bool Rundgang::zurueck_mit(const QString& status) const {
  return !QApplication::activeModalWidget() && fenster_->findChild<QLabel*>(u"lbl_Status"_s)->text() == status;
}

QStringList Rundgang::zeilen(const QString& belegart, const QString& belegnummer) const {
  const auto verbindung = oeffne(datenordner::verbindung(daten_));
  const auto satz = verbindung->Execute(
      u"SELECT SortIndex, Bildname, BildExt, BildPfad, Beschreibung, Druckkennzeichen FROM dbo.Bild_Zuordnungen "
      "WHERE Typ1 = 'BEL' AND Key1 = '%1' AND Key2 = '%2' ORDER BY SortIndex"_s.arg(belegart, belegnummer));
  QStringList liste;
  for (; !satz->Eof(); satz->MoveNext())
    liste.append(u"%1 %2\\%3.%4 „%5“ Druck %6"_s.arg(
        satz->Text(0), satz->Text(3), satz->Text(1), satz->Text(2), satz->Text(4), satz->Text(5).left(4)));
  return liste;
}

QStringList Rundgang::werte(const QString& abfrage) const {
  const auto verbindung = oeffne(datenordner::verbindung(daten_));
  QStringList liste;
  for (const auto satz = verbindung->Execute(abfrage); !satz->Eof(); satz->MoveNext()) liste.append(satz->Text(0));
  return liste;
}

bool Rundgang::datei_da(const QString& datei) const {
  return FileSystemObject().FileExists(datenordner::bilder(daten_) + u'\\' + datei);
}

namespace {

void sage_Zeilen(const QStringList& zeilen) {
  for (QString zeile : zeilen) Schrittfolge::sage(u"    "_s + zeile.replace(u"\r\n"_s, u" / "_s));
}

}  // namespace

void Rundgang::schliesse_ab() {
  const auto grund = versuche([&] {
    Schrittfolge::sage(u"Die Datenbank hielt vorher zu RE 24-2003:"_s);
    sage_Zeilen(vorher_);
    Schrittfolge::sage(u"Die Datenbank hält jetzt zu RE 24-2003:"_s);
    sage_Zeilen(zeilen(u"RE"_s, u"24-2003"_s));
    if (folge_.durchlaufen()) pruefe_Endstand();
  });
  if (grund) folge_.fehler(grund->Beschreibung());
  Schrittfolge::sage(
      u"%1 Bilder, %2 Prüfungen, %3 Fehler"_s.arg(bilder_).arg(folge_.pruefungen()).arg(folge_.fehlerzahl()));
}
