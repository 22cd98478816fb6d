#include "host/betrieb/Arbeitsplatz.h"

#include <QCoreApplication>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Einstellungstabelle.h"
#include "host/betrieb/Gedaechtnis.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/beispiel/Datenordner.h"
#include "host/betrieb/beispiel/Uebernahme.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Anwendung final : public Anwendungsobjekt {
 public:
  Anwendung(QString verbindungszeichenfolge, std::shared_ptr<adodb::Connection> verbindung)
      : verbindungszeichenfolge_(std::move(verbindungszeichenfolge)), verbindung_(std::move(verbindung)) {}
  QString ConnectStringDB() const override { return verbindungszeichenfolge_; }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return verbindung_; }
  std::shared_ptr<Einstellungen> Settings() const override {
    return std::make_shared<Einstellungstabelle>(verbindung_);
  }
  QString Name() const override { return QCoreApplication::applicationName(); }
  QString User() const override { return qEnvironmentVariable("USER", qEnvironmentVariable("LOGNAME")); }
  QString ExeDir() const override { return namen::tabellenpfad(QCoreApplication::applicationDirPath()); }
  QString ReportDBTemplateDir() const override { return ExeDir() + u"\\Vorlagen"_s; }
  QString DBName() const override {
    const anmeldung::Worte worte = anmeldung::worte(verbindungszeichenfolge_);
    return worte.datenbank.isEmpty() ? worte.server : worte.datenbank;
  }

 private:
  QString verbindungszeichenfolge_;
  std::shared_ptr<adodb::Connection> verbindung_;
};

}  // namespace

bool Arbeitsplatz::erster_Start() const {
  return optionen_.verbindung.isEmpty() && !datenordner::eingerichtet(namen::tabellenpfad(optionen_.datenordner));
}

bool Arbeitsplatz::uebernimmt() const {
  return optionen_.verbindung.isEmpty() && !erster_Start() &&
      uebernahme::noetig(namen::tabellenpfad(optionen_.datenordner));
}

bool Arbeitsplatz::wartet_auf_Server() const {
  return !optionen_.verbindung.isEmpty() && !datenbankdatei(optionen_.verbindung);
}

bool Arbeitsplatz::braucht_Kennwort() const {
  return !kennwort_ && anmeldung::fehlt_Kennwort(optionen_.verbindung);
}

void Arbeitsplatz::bereite_vor() {
  verbindung_.reset();
  verbindungszeichenfolge_.clear();
  ausfallgrund_ = Datenbankgrund::Anderer;
  QString zeichenfolge = optionen_.verbindung;
  if (zeichenfolge.isEmpty()) {
    const QString ordner = namen::tabellenpfad(optionen_.datenordner);
    datenordner::richte_ein(
        ordner, optionen_.anfang == Anfangsbestand::Leer ? datenordner::Inhalt::Leer : datenordner::Inhalt::Beispiele);
    zeichenfolge = datenordner::verbindung(ordner);
  } else if (kennwort_) {
    zeichenfolge = anmeldung::mit_Kennwort(zeichenfolge, *kennwort_);
  }
  if (const auto datei = datenbankdatei(zeichenfolge); datei && !FileSystemObject().FileExists(*datei))
    throw Abbruch(Ausgang::Datenbank,
        u"Die Datenbank „%1“ gibt es nicht."_s.arg(anmeldung::ohne_Geheimnis(namen::angezeigt(*datei))));
  verbindungszeichenfolge_ = zeichenfolge;
}

void Arbeitsplatz::oeffne() {
  if (verbindungszeichenfolge_.isEmpty()) bereite_vor();
  verbindung_.reset();
  if (const auto ausfall = versuche_zu_oeffnen(verbindungszeichenfolge_, verbindung_)) {
    merke_Ausfall(ausfall->grund);
    throw Abbruch(Ausgang::Datenbank, ausfall->worte);
  }
  gedaechtnis::merke(optionen_);
  protokoll_ =
      std::make_shared<Protokoll>(Protokoll::ordner(verbindungszeichenfolge_, optionen_.datenordner), wurzel());
}

void Arbeitsplatz::merke_Ausfall(Datenbankgrund grund) {
  ausfallgrund_ = grund;
  // A server that is away says nothing against the password.
  if (grund != Datenbankgrund::Unerreichbar) kennwort_.reset();
}

std::shared_ptr<Anwendungsobjekt> Arbeitsplatz::anwendungsobjekt() const {
  return std::make_shared<Anwendung>(verbindungszeichenfolge_, verbindung_);
}

QString Arbeitsplatz::angabe_der_Wurzel() const {
  if (!optionen_.bilder.isEmpty()) return namen::tabellenpfad(optionen_.bilder);
  // The samples' pictures beside another database would leave all its records without theirs.
  if (!optionen_.verbindung.isEmpty()) return {};
  return datenordner::bilder(namen::tabellenpfad(optionen_.datenordner));
}

/// Looked up only until it succeeds: P: itself may be what the user gave.
void Arbeitsplatz::binde_Wurzel() {
  if (wurzel_gebunden_) return;
  const QString ordner = QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(angabe_der_Wurzel()));
  Pfadkarte::aktuell().setze(wurzel(), ordner);
  wurzel_gebunden_ = true;
}

std::optional<QString> Arbeitsplatz::wurzel_fehlt() {
  const QString angabe = angabe_der_Wurzel();
  if (angabe.isEmpty()) return u"Zu dieser Datenbank ist keine Bildablage genannt; „--bilder“ beim Aufruf nennt sie."_s;
  const auto grund = versuche([&] { binde_Wurzel(); });
  if (!grund && FileSystemObject().FolderExists(wurzel() + u'\\')) return std::nullopt;
  return u"Die Bildablage „%1“ ist nicht zu erreichen."_s.arg(
      optionen_.bilder.isEmpty() ? namen::angezeigt(angabe) : optionen_.bilder);
}

bool Arbeitsplatz::wurzel_leer() const {
  const FileSystemObject dateien;
  if (!dateien.FolderExists(wurzel() + u'\\')) return true;
  const Folder inhalt = dateien.GetFolder(wurzel() + u'\\');
  return inhalt.SubFolders().isEmpty() && inhalt.Files().isEmpty();
}
