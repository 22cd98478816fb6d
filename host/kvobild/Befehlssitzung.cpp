#include "host/kvobild/Befehlssitzung.h"

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Hochkomma.h"
#include "host/betrieb/Wirtsoptionen.h"
#include "host/betrieb/befehl/Ausgabe.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString gegeben_oder_Umgebung(const Aufruf& aufruf, const QString& option, const char* umgebung) {
  return aufruf.wert(option).value_or(qEnvironmentVariable(umgebung));
}

}  // namespace

std::optional<QString> bildwurzel_wenn_genannt(const Aufruf& aufruf) {
  const QString angabe = gegeben_oder_Umgebung(aufruf, u"bilder"_s, "KVOBILD_BILDER");
  if (angabe.isEmpty()) return std::nullopt;
  const QString pfad = namen::tabellenpfad(angabe);
  if (!FileSystemObject().FolderExists(pfad))
    throw Abbruch(Ausgang::Datei, u"Die Bildablage „%1“ gibt es nicht."_s.arg(angabe));
  const QString laufwerk = u"P:"_s;
  Pfadkarte::aktuell().setze(laufwerk, QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(pfad)));
  return laufwerk;
}

QString bildwurzel(const Aufruf& aufruf) {
  if (const std::optional<QString> wurzel = bildwurzel_wenn_genannt(aufruf)) return *wurzel;
  throw Abbruch(Ausgang::Aufruf, u"Es fehlt „--bilder“, die Wurzel der Bildablage."_s);
}

QString verbindungszeichenfolge(const Aufruf& aufruf) {
  const QString angabe = gegeben_oder_Umgebung(aufruf, u"verbindung"_s, "KVOBILD_VERBINDUNG");
  if (angabe.isEmpty()) throw Abbruch(Ausgang::Aufruf, u"Es fehlt „--verbindung“, die Datenbank."_s);
  return anmeldung::mit_Kennwort_der_Umgebung(verbindung_aus_Angabe(angabe));
}

QString eigener_Datenordner() {
  const bool heimatlos = qEnvironmentVariableIsEmpty("HOME") && qEnvironmentVariableIsEmpty("XDG_DATA_HOME");
  return heimatlos ? QString() : wirtsoptionen::ueblicher_Datenordner();
}

QString protokollordner(const Aufruf& aufruf) {
  const QString angabe = gegeben_oder_Umgebung(aufruf, u"verbindung"_s, "KVOBILD_VERBINDUNG");
  const QString verbindung = angabe.isEmpty() ? QString() : verbindung_aus_Angabe(angabe);
  return Protokoll::ordner(verbindung, eigener_Datenordner());
}

QString zieldatei(const QString& angabe) {
  const QString ziel = namen::tabellenpfad(angabe);
  if (FileSystemObject().FolderExists(ziel))
    throw Abbruch(Ausgang::Datei, u"„%1“ ist ein Ordner; das Ziel ist eine Datei."_s.arg(angabe));
  return ziel;
}

std::shared_ptr<adodb::Connection> oeffne_vorhandene(const QString& verbindung) {
  if (const auto datei = datenbankdatei(verbindung); datei && !FileSystemObject().FileExists(*datei))
    throw Abbruch(Ausgang::Datenbank,
        u"Die Datenbank „%1“ gibt es nicht; „kvobild anlegen“ legt sie an."_s.arg(anmeldung::ohne_Geheimnis(*datei)));
  return oeffne(verbindung);
}

/// Says each report at once and counts them, since a result of the store can't be told from an empty one.
class Befehlssitzung::Core final : public KVOCore {
 public:
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool mitMeldung) override {
    ++anzahl;
    if (mitMeldung)
      ausgabe::meldung(u"Fehler %1 in %2.%3: %4"_s.arg(QString::number(nummer), modul, prozedur, beschreibung));
  }
  std::int32_t anzahl = 0;
};

/// What the road of an assignment needs of this program.
class Befehlssitzung::Anwendung final : public Anwendungsobjekt {
 public:
  explicit Anwendung(const Befehlssitzung& sitzung) : sitzung_(sitzung) {}
  QString ConnectStringDB() const override { return sitzung_.zeichenfolge_; }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return sitzung_.verbindung_; }

 private:
  const Befehlssitzung& sitzung_;
};

Befehlssitzung::Befehlssitzung(const Aufruf& aufruf)
    : core_(std::make_shared<Core>()),
      vorher_(KVOCore::setze(core_)),
      zeichenfolge_(verbindungszeichenfolge(aufruf)),
      protokoll_(Protokoll::ordner(zeichenfolge_, eigener_Datenordner()), u"P:"_s),
      verbindung_(oeffne_vorhandene(zeichenfolge_)),
      store_(std::make_shared<clsBildZuordnungen>()) {
  store_->Init(zeichenfolge_, verbindung_, {});
}

Befehlssitzung::~Befehlssitzung() {
  KVOCore::setze(vorher_);
}

std::int32_t Befehlssitzung::berichte() const {
  return core_->anzahl;
}

bool Befehlssitzung::lies_mit(const Datensatz& satz, const namen::Bilddatei& bild, const QString& pfad) {
  const std::int32_t vorher = berichte();
  const QString frei = pfad.isEmpty() ? QString() : u"BildPfad = '%1'"_s.arg(pfad);
  const bool gefunden = store_->FKT_LeseBilder(
      satz.key1, satz.key2, satz.key3, satz.key4, bild.name, bild.ext, satz.typ1, satz.typ2, frei);
  if (berichte() != vorher)
    throw Abbruch(Ausgang::Datenbank,
        u"Die Zuordnungen sind nicht zu lesen. Fehlt die Tabelle, legt „kvobild anlegen“ sie an."_s);
  sortindex_ = Zuordnungsweg::uebernimm_Reihenfolge(*store_);
  return gefunden;
}

std::vector<std::int32_t> Befehlssitzung::zeilen_von(const namen::Bilddatei& bild) {
  std::vector<std::int32_t> zeilen;
  for (std::int32_t i = 0; i < store_->AnzahlPos(); ++i) {
    store_->AktInd(i);
    if (aktuelles_Bild().gleich(bild)) zeilen.push_back(i);
  }
  return zeilen;
}

/// Nothing is sent where one of the rows could not be: a part of them would be written and the rest widened or broken.
void Befehlssitzung::pruefe_gekennzeichnete() {
  for (std::int32_t i = 0; i < store_->AnzahlPos(); ++i) {
    store_->AktInd(i);
    if (store_->Bild_Delete())
      hochkomma::pruefe_Kennung(*store_->AktBildObj);
    else if (store_->Bild_Changeflag())
      hochkomma::pruefe_Zeile(*store_->AktBildObj);
  }
}

Zuordnungsweg::Ergebnis Befehlssitzung::speichere(const Datensatz& satz) {
  pruefe_gekennzeichnete();
  const Zuordnungsweg::Vorgang vorgang{satz.key1, satz.key2, satz.key3, satz.key4, satz.typ1, satz.typ2, {}, {}};
  Zuordnungsweg::Ergebnis ergebnis =
      Zuordnungsweg(std::make_shared<Anwendung>(*this), u"P:"_s).speichere(store_, vorgang);
  using Verbleib = Zuordnungsweg::Verbleib;
  for (const Zuordnungsweg::Bild& bild : ergebnis.bilder)
    if (!bild.hinweis.isEmpty() && bild.verbleib != Verbleib::Neu && bild.verbleib != Verbleib::Ungewiss)
      ausgabe::meldung(u"„%1“: %2"_s.arg(bild.name, bild.hinweis));
  return ergebnis;
}

void Befehlssitzung::speichere_ganz(const Datensatz& satz, const QString& sonst) {
  const Zuordnungsweg::Ergebnis ergebnis = speichere(satz);
  if (!ergebnis.vollstaendig() || !ergebnis.geprueft) throw Abbruch(Ausgang::Datenbank, sonst);
}
