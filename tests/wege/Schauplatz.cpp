#include "tests/wege/Schauplatz.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTimer>
#include <array>
#include <optional>
#include <utility>

#include "component/Zuordnungsweg.h"
#include "dialogs/search/frm_BilderSuchen.h"
#include "platform/basic/Windows1252.h"
#include "store/BasZuordnungen.h"
#include "store/mod_BilderSuchen.h"
#include "tests/support/Eingaben.h"
#include "tests/wege/Bildvorrat.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QDateTime& gestellte_Zeit() {
  static QDateTime zeit;
  return zeit;
}

QString sql(const QString& text) {
  return u'\'' + QString(text).replace(u"'"_s, u"''"_s) + u'\'';
}

/// The box that a text belongs to, by words that no other has.
const std::array<std::pair<QStringView, Kasten>, 5> Texte{{{u"Daten wurden verändert!", Kasten::Speichern},
    {u"schon zugeordneten Bilder", Kasten::Umbenannt}, {u"gleichem Namen", Kasten::Doppelt},
    {u"umbennant werden", Kasten::Nicht_umbenannt}, {u"rotieren der JPG", Kasten::Nicht_gedreht}}};

oberflaeche::Antwort antwort(schritt::Antwort a) {
  using oberflaeche::Antwort;
  return a == schritt::Antwort::Ja ? Antwort::Ja : a == schritt::Antwort::Nein ? Antwort::Nein : Antwort::Abbrechen;
}

}  // namespace

class Schauplatz::Fenster final : public oberflaeche::Meldungsfenster {
 public:
  oberflaeche::Antwort zeige(const oberflaeche::Meldung& meldung) override {
    for (const auto& [teil, kasten] : Texte) {
      if (!meldung.Text.contains(teil)) continue;
      kaesten.append(kasten);
      if (kasten == Kasten::Speichern) return antwort(sichern);
      if (kasten == Kasten::Umbenannt) return antwort(namen);
      return oberflaeche::Antwort::OK;
    }
    // The library's own words before the dialog's.
    if (meldung.Text.contains(u"GDI+ Error"_s)) return oberflaeche::Antwort::OK;
    if (const auto antwort = antworte_dem_Weg(meldung)) return *antwort;
    unbekannte.append(meldung.Text);
    return meldung.Auswahl == oberflaeche::Knoepfe::OK ? oberflaeche::Antwort::OK : oberflaeche::Antwort::Nein;
  }
  /// What the host's road says; no box of its own but the question whether to open at all is answered by a step.
  std::optional<oberflaeche::Antwort> antworte_dem_Weg(const oberflaeche::Meldung& meldung) {
    if (meldung.Titel != u"Bildzuordnung"_s) return std::nullopt;
    gesagt.append(meldung.Text);
    if (meldung.Auswahl == oberflaeche::Knoepfe::OK) return oberflaeche::Antwort::OK;
    if (meldung.Text.contains(u"Trotzdem öffnen?"_s)) return oberflaeche::Antwort::Ja;
    if (meldung.Text.contains(u"noch einmal öffnen?"_s) || meldung.Text.contains(u"Noch einmal versuchen?"_s))
      return oberflaeche::Antwort::Nein;
    return std::nullopt;
  }
  QList<Kasten> kaesten;
  QStringList gesagt;
  QStringList unbekannte;
  schritt::Antwort sichern = schritt::Antwort::Ja;
  schritt::Antwort namen = schritt::Antwort::Ja;
};

class Schauplatz::Core final : public KVOCore {
 public:
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
      bool /*mitMeldung*/) override {
    berichte.append(u"%1.%2: %3 %4"_s.arg(modul, prozedur).arg(nummer).arg(beschreibung));
  }
  QStringList berichte;
};

class Schauplatz::Anwendung final : public Anwendungsobjekt {
 public:
  explicit Anwendung(const Pruefdatenbank& db) : db_(db) {}
  QString ConnectStringDB() const override { return db_.verbindungszeichenfolge(); }
  std::shared_ptr<adodb::Connection> ConnectionDB() const override { return db_.verbindung(); }

 private:
  const Pruefdatenbank& db_;
};

Schauplatz::Schauplatz()
    : anwendung_(std::make_shared<Anwendung>(db_)),
      kasten_(std::make_shared<Fenster>()),
      kasten_vorher_(oberflaeche::setze(kasten_)),
      core_(std::make_shared<Core>()),
      core_vorher_(KVOCore::setze(core_)),
      uhr_vorher_(uhr::setze([] { return gestellte_Zeit(); })) {
  BasZuordnungen::gConnection().reset();
}

Schauplatz::~Schauplatz() {
  uhr::setze(uhr_vorher_);
  mod_BilderSuchen::pLetzterOrdner.clear();
  BasZuordnungen::gConnection().reset();
  oberflaeche::setze(kasten_vorher_);
}

// ── Table and tree ──────────────────────────────────────────────────────────────────────────────────────────────────

void Schauplatz::lege_Bild(const QString& pfad, const Bildinhalt& inhalt) {
  static QHash<int, QByteArray> vorrat;
  QByteArray& bytes = vorrat[inhalt.bild * 4 + inhalt.viertel];
  if (bytes.isEmpty()) bytes = bildvorrat::bytes(inhalt);
  wurzel_.schreibe(pfad, bytes);
}

void Schauplatz::richte_ein(const Welt& welt) {
  for (const QString& name : QDir(beiseite_.pfad()).entryList(QDir::Files)) QFile::remove(beiseite_.pfad(name));
  for (const QString& ordner : QDir(wurzel_.pfad()).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
    QDir(wurzel_.pfad(ordner)).removeRecursively();
  for (auto i = welt.bilder.begin(); i != welt.bilder.end(); ++i) lege_Bild(i.key(), i.value());
  for (auto i = welt.texte.begin(); i != welt.texte.end(); ++i)
    wurzel_.schreibe(i.key(), windows1252::encode(i.value()));
  db_.fuehre_aus(u"Delete from Bild_Zuordnungen"_s);
  for (const Zuordnung& z : welt.tabelle) {
    QString kennzeichen;
    for (const bool marke : z.marken) kennzeichen += marke ? u'1' : u'0';
    db_.fuehre_aus(
        u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, "
        "Beschreibung, Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung, SortIndex) values ('RE', "_s +
        QStringList{sql(z.re), u"'-'"_s, u"'-'"_s, sql(z.name), sql(z.endung), u"'BEL'"_s, u"'-'"_s, sql(z.ordner),
            sql(z.drucktext), sql(kennzeichen.leftJustified(50)), sql(z.anbnr), sql(z.ursprung),
            QString::number(z.sort)}
            .join(u", "_s) +
        u')');
  }
  db_.mitschrift().hole();
  if (pruefziel() == Pruefziel::Sqlite) db_.mitschrift().vergiss_Weitergegebenes();
}

void Schauplatz::lies_Tabelle(Bestand& bestand, QStringList& maengel) {
  QMap<QString, QString> letzter;
  for (QStringList zeile : db_.zeilen(u"select SortIndex, Key1, Key2, Key3, key4, Typ1, Typ2, Bildname, BildExt, "
                                      "BildPfad, Beschreibung, Druckkennzeichen, GrafikAnbNr, Grafik_Ursprung from "
                                      "Bild_Zuordnungen order by SortIndex, Bildname"_s)) {
    for (QString& wert : zeile)
      if (wert == u"<NULL>"_s) wert.clear();
    if (const QStringList schluessel = zeile.mid(1, 1) + zeile.mid(3, 4);
        schluessel != QStringList{u"RE"_s, u"-"_s, u"-"_s, u"BEL"_s, u"-"_s})
      maengel.append(u"Schlüssel: "_s + schluessel.join(u'|'));
    const QString& re = zeile[2];
    if (re == u"1"_s && letzter.value(re) == zeile[0]) maengel.append(u"zwei Zeilen am Platz "_s + zeile[0]);
    letzter[re] = zeile[0];
    zeile[11] = zeile[11].trimmed();
    bestand.zeilen[re].append(zeile.mid(7).join(u'|'));
  }
}

Bestand Schauplatz::bestand(QStringList& maengel) {
  Bestand b;
  lies_Tabelle(b, maengel);
  QDirIterator dateien(wurzel_.pfad(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
  while (dateien.hasNext()) {
    const QString name = dateien.next().mid(wurzel_.pfad().size() + 1);
    QFile datei(wurzel_.pfad(name));
    // What was disturbed lies aside.
    if (datei.symLinkTarget().size() > 0) datei.setFileName(beiseite_.pfad(QString(name).replace(u'/', u'#')));
    if (!datei.open(QIODevice::ReadOnly)) maengel.append(u"unlesbar: "_s + name);
    if (name.endsWith(u".txt"_s))
      b.texte[name] = windows1252::decode(datei.readAll());
    else
      b.bilder[name] = bildvorrat::inhalt(datei.readAll());
  }
  return b;
}

void Schauplatz::verschwinde(const QString& pfad) {
  const QString platz = beiseite_.pfad(QString(pfad).replace(u'/', u'#'));
  QFile::remove(platz);
  QFile::rename(wurzel_.pfad(pfad), platz);
}

// The process's own memory: a file that is there, and of which the first byte can't be read.
void Schauplatz::stoere(const QString& pfad) {
  verschwinde(pfad);
  QFile::link(u"/proc/self/mem"_s, wurzel_.pfad(pfad));
}

void Schauplatz::trenne() {
  const QDir ordner(wurzel_.pfad(u"Belege/1"_s));
  for (const QString& name : ordner.entryList(QDir::Files | QDir::Hidden)) verschwinde(u"Belege/1/"_s + name);
  QDir().rmdir(ordner.path());
}

void Schauplatz::hole_zurueck(const QStringList& pfade) {
  QDir().mkpath(wurzel_.pfad(u"Belege/1"_s));
  for (const QString& pfad : pfade) {
    const QString platz = wurzel_.pfad(pfad);
    if (QFileInfo(platz).isSymLink()) QFile::remove(platz);
    QFile::rename(beiseite_.pfad(QString(pfad).replace(u'/', u'#')), platz);
  }
}

// ── Boxes and the clock ─────────────────────────────────────────────────────────────────────────────────────────────

QList<Kasten> Schauplatz::hole_Kaesten(QStringList& maengel) {
  for (const QString& text : std::exchange(kasten_->unbekannte, {})) maengel.append(u"unbekannter Kasten: "_s + text);
  for (const QString& text : std::exchange(core_->berichte, {})) maengel.append(u"Bericht: "_s + text);
  return std::exchange(kasten_->kaesten, {});
}

QStringList Schauplatz::hole_Gesagtes() {
  return std::exchange(kasten_->gesagt, {});
}

void Schauplatz::beantworte(schritt::Antwort sichern, schritt::Antwort namen) {
  kasten_->sichern = sichern;
  kasten_->namen = namen;
}

void Schauplatz::stelle_Uhr(const QDateTime& zeit) {
  gestellte_Zeit() = zeit;
}

// ── The dialogs ─────────────────────────────────────────────────────────────────────────────────────────────────────

void Schauplatz::gehe(const std::function<void(frm_BildZuordnung&)>& waehrend) {
  kasten_->gesagt.clear();
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, qApp, [&] {
    auto* const form = dynamic_cast<frm_BildZuordnung*>(QApplication::activeModalWidget());
    // Not in the middle of the first layout, which lets events in.
    if (!form || fenster_.pumpt) return;
    takt.stop();
    waehrend(*form);
    if (form->isVisible()) form->Hide();
  });
  takt.start(0);
  Zuordnungsweg(anwendung_, u"P:"_s).gehe({u"RE"_s, u"1"_s, {}, {}, u"BEL"_s, {}, u"Belege\\1"_s, u"Rechnung 1"_s});
}

void Schauplatz::suche(frm_BildZuordnung& form, const QString& ordner, const QStringList& namen) {
  mod_BilderSuchen::pLetzterOrdner = u"P:\\"_s + QString(ordner).replace(u'/', u'\\');
  QTimer takt;
  QObject::connect(&takt, &QTimer::timeout, qApp, [&] {
    auto* const dialog = dynamic_cast<frm_BilderSuchen*>(QApplication::activeModalWidget());
    if (!dialog || fenster_.pumpt || dialog->SSP_Anzahl.Caption().isEmpty()) return;
    takt.stop();
    for (int i = 1; i <= dialog->lvwContent.Count(); ++i)
      dialog->lvwContent.Selected(i, namen.contains(dialog->lvwContent.ItemTag(i).section(u'\\', -1)));
    eingaben::klicke(dialog->cmd_Uebernehmen);
  });
  takt.start(0);
  eingaben::klicke(form.SSC_BilderLaden);
}
