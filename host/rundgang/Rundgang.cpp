#include "host/rundgang/Rundgang.h"

#include <QApplication>
#include <QBuffer>
#include <QImageWriter>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/rundgang/Fensterbild.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/gdiplus/miniatur/Miniaturen.h"
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
  if (!datenordner::ist_frei(ordner) && !dateien.FileExists(ordner + Kennzettel))
    throw Abbruch(Ausgang::Datei,
        u"Der Ordner „%1“ ist nicht von einem Rundgang; er bleibt, wie er ist."_s.arg(namen::angezeigt(ordner)));
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
  // It leaves nothing outside its folder.
  miniaturen::an(false);
  richte_Daten_ein();
  Schrittfolge::sage(u"Rundgang; die Bilder kommen nach "_s + namen::angezeigt(ordner_));
  // A caret that comes and goes would make each tour's pictures differ.
  QApplication::setCursorFlashTime(0);
  Wirtsoptionen optionen;
  optionen.datenordner = namen::angezeigt(daten_);
  optionen.schonfrist = 0;
  fenster_ = std::make_unique<Hauptfenster>(optionen, dialog_);
  fenster_->beginne();
  fenster_->show();
  for (const auto plane :
      {&Rundgang::plane_Fenster, &Rundgang::plane_Waehlen, &Rundgang::plane_Oeffnen, &Rundgang::plane_Felder,
          &Rundgang::plane_Namen, &Rundgang::plane_Streifen, &Rundgang::plane_Groessen, &Rundgang::plane_Speichern,
          &Rundgang::plane_Anzeigen, &Rundgang::plane_Verwerfen, &Rundgang::plane_Bildablage, &Rundgang::plane_Suchen,
          &Rundgang::plane_Anhaengen, &Rundgang::plane_Drehen, &Rundgang::plane_Exif,
          &Rundgang::plane_Weitere_Zuordnungen, &Rundgang::plane_Alle_Zuordnungen, &Rundgang::plane_Aufraeumen,
          &Rundgang::plane_Aufnehmen, &Rundgang::plane_Ausgeben, &Rundgang::plane_Vorgaenge, &Rundgang::plane_Bericht})
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

void Rundgang::schritt(const QString& text, const QList<Tat>& taten, Sicht bis, const QList<Tat>& danach) {
  const auto alle = [](const QList<Tat>& liste) {
    return [=] {
      for (const Tat& tat : liste) tat();
    };
  };
  // Where no window manager does it, the window in front is made the active one here.
  const auto bereit = [bis = std::move(bis)] {
    QWidget* const vorn = Hand::fenster_vorn();
    if (vorn && !vorn->isActiveWindow()) vorn->activateWindow();
    return vorn && bis();
  };
  folge_.plane({text, alle(taten), bereit, alle(danach)});
}

Rundgang::Tat Rundgang::bild(const QString& name) {
  return [=, this] {
    fenster_->ansicht()->lst_Bilder->lade_Sichtbare();
    QWidget* const vorn = Hand::fenster_vorn();
    if (!vorn) return folge_.fehler(u"Für das Bild ist kein Fenster da."_s);
    speichere_Bild(*vorn, u"%1_%2.png"_s.arg(++bilder_, 2, 10, QChar(u'0')).arg(name));
  };
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

Rundgang::Tat Rundgang::pruefe_anderen_Vorgang() {
  return [this] {
    folge_.erwarte(u"Zeilen zu AB 24-1001"_s, zeilen(u"AB"_s, u"24-1001"_s).join(u'\n'), anderer_vorher_.join(u'\n'));
  };
}

Rundgang::Tat Rundgang::pruefe_Artikel_des_Bildes(const QString& soll) {
  return [=, this] {
    QStringList artikel;
    const auto verbindung = oeffne(datenordner::verbindung(daten_));
    const auto satz = verbindung->Execute(
        u"Select Key1 from Bild_Zuordnungen where Typ1 = 'ART' and Bildname like 'Thermostat%' order by Key1"_s);
    for (; !satz->Eof(); satz->MoveNext()) artikel.append(satz->Text(0));
    folge_.erwarte(u"Zeilen des Bildes"_s, artikel.join(u' '), soll);
  };
}

bool Rundgang::datei_da(const QString& datei) const {
  return FileSystemObject().FileExists(datenordner::bilder(daten_) + u'\\' + datei);
}

void Rundgang::schliesse_ab() {
  const auto grund = versuche([&] {
    const auto sage = [](const QString& wann, const QStringList& zeilen) {
      Schrittfolge::sage(u"Die Datenbank %1 zu RE 24-2003:"_s.arg(wann));
      for (QString zeile : zeilen) Schrittfolge::sage(u"    "_s + zeile.replace(u"\r\n"_s, u" / "_s));
    };
    sage(u"hielt vorher"_s, vorher_);
    sage(u"hält jetzt"_s, zeilen(u"RE"_s, u"24-2003"_s));
    if (folge_.durchlaufen()) pruefe_Endstand();
  });
  if (grund) folge_.fehler(grund->Beschreibung());
  Schrittfolge::sage(
      u"%1 Bilder, %2 Prüfungen, %3 Fehler"_s.arg(bilder_).arg(folge_.pruefungen()).arg(folge_.fehlerzahl()));
}
