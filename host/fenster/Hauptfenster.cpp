#include "host/fenster/Hauptfenster.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "host/betrieb/Anmeldung.h"
#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Fassung.h"
#include "host/betrieb/vorgang/Bildsammlung.h"
#include "host/betrieb/vorgang/Vorgangsfilter.h"
#include "host/betrieb/vorgang/Vorgangsquelle.h"
#include "host/fenster/Anmeldefenster.h"
#include "host/fenster/Gemerkterplatz.h"
#include "host/fenster/Vorgangsansicht.h"
#include "host/fenster/aufnahme/Wartezeile.h"
#include "host/fenster/dialog/Entfernungsfrage.h"
#include "platform/host/KVOCore.h"
#include "platform/host/Oberflaeche.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Anwendungsname = u"bildzuordnung"_s;

/// The hourglass for as long as what it gives lives.
auto zeige_Sanduhr() {
  const auto vorher = oberflaeche::mauszeiger().form();
  oberflaeche::mauszeiger().form(oberflaeche::Zeigerform::Sanduhr);
  return qScopeGuard([vorher] { oberflaeche::mauszeiger().form(vorher); });
}

QList<Vorschaubild> vorschaubilder(clsBildZuordnungen& store, const QString& wurzel) {
  QList<Vorschaubild> bilder;
  for (std::int32_t i = 0; i < store.AnzahlPos(); ++i) {
    store.AktInd(i);
    Vorschaubild bild{store.Bild_Pfad(), store.Bild_Bildname() + u'.' + store.Bild_BildExt(), store.Bild_Beschreibung(),
        false, !Bilddatei::liegt_unter_Wurzel(*store.AktBildObj)};
    bild.fehlt = bild.ausserhalb || !store.Fkt_FileExists(wurzel + u'\\' + bild.ordner + u'\\' + bild.datei);
    bilder.append(bild);
  }
  return bilder;
}

/// Where the records come from, if the call or an earlier one has named it.
QString ort_der_Datenbank(const Arbeitsplatz& platz) {
  const anmeldung::Worte worte = anmeldung::worte(platz.optionen().verbindung);
  if (worte.server.isEmpty()) return {};
  if (worte.datenbank.isEmpty()) return u" · Datenbank "_s + worte.server;
  return u" · Datenbank %1 auf %2"_s.arg(worte.datenbank, worte.server);
}

}  // namespace

Hauptfenster::Hauptfenster(Wirtsoptionen optionen, Zuordnungsdialog dialog)
    : platz_(std::move(optionen)),
      lauf_(platz_, entfernungsfrage::hinter(std::move(dialog))),
      zuletzt_(platz_.optionen()),
      liste_(new Vorgangsliste),
      ansicht_(new Vorgangsansicht),
      lbl_Status(new QLabel),
      cmd_Ueber(new QPushButton(u"&Über …"_s)),
      cmd_Rueckgaengig(new QPushButton(u"Rückgängig"_s)),
      wartezeile_(new Wartezeile),
      wartende_(platz_.optionen().dateien),
      anfangstat_(platz_.optionen().tat),
      anfang_(platz_.optionen().vorgang) {
  setObjectName(u"Hauptfenster"_s);
  setWindowTitle(u"Bildzuordnung"_s);
  baue_auf();
  baue_Aktionen();
  richte_Aufnahme_ein();
  richte_Anfang_ein();
  resize(1120, 680);
  Gemerkterplatz platz(*this);
  KVOCore::aktuell().FensterWiederherstellen(Anwendungsname, platz);
  liste_->bei_Wahl = [this] {
    vergiss_Aufnahme();
    zeige_gewaehlten();
  };
  liste_->bei_Oeffnen = [this] { oeffne_Dialog(false); };
  liste_->bei_Frage = [this] { frage(); };
  dienst_.bei_Antwort = [this](const Vorgangsdienst::Antwort& antwort) { nimm_Antwort(antwort); };
  dienst_.bei_Zahl = [this](std::int64_t zahl) { nimm_Zahl(zahl); };
  ansicht_->lst_Bilder->Ladeweg([this](const Vorschaubild& bild, QSize groesse) {
    return vorschau_.lade(platz_.wurzel() + u'\\' + bild.ordner, bild.datei, groesse);
  });
  connect(ansicht_->cmd_Zuordnen, &QPushButton::clicked, this, [this] { oeffne_Dialog(false); });
  connect(ansicht_->cmd_Anzeigen, &QPushButton::clicked, this, [this] { oeffne_Dialog(true); });
  connect(ansicht_->cmd_Exif, &QPushButton::clicked, this, &Hauptfenster::zeige_Exif);
  connect(ansicht_->cmd_AlleZuordnungen, &QPushButton::clicked, this, &Hauptfenster::zeige_AlleZuordnungen);
  connect(ansicht_->cmd_WeitereZuordnungen, &QPushButton::clicked, this, &Hauptfenster::zeige_WeitereZuordnungen);
  connect(liste_->cmd_Suchen, &QPushButton::clicked, this, &Hauptfenster::suche_Bilder);
  connect(liste_->cmd_Aufraeumen, &QPushButton::clicked, this, &Hauptfenster::raeume_auf);
  connect(liste_->cmd_Papierkorb, &QPushButton::clicked, this, &Hauptfenster::zeige_Papierkorb);
  for (const QPushButton* knopf : {liste_->cmd_Einlesen, ansicht_->cmd_NochEinmal})
    connect(knopf, &QPushButton::clicked, this, &Hauptfenster::lies_neu);
  erlaube_Aktionen(false);
}

void Hauptfenster::baue_auf() {
  auto* teiler = new QSplitter(Qt::Horizontal);
  teiler->setObjectName(u"teiler"_s);
  teiler->addWidget(liste_);
  teiler->addWidget(ansicht_);
  teiler->setChildrenCollapsible(false);
  teiler->setHandleWidth(9);
  teiler->setStretchFactor(0, 0);
  teiler->setStretchFactor(1, 1);
  teiler->setSizes({480, 620});
  liste_->setMinimumWidth(260);
  ansicht_->setMinimumWidth(320);
  auto* mitte = new QWidget;
  auto* lage = new QVBoxLayout(mitte);
  lage->addWidget(wartezeile_);
  lage->addWidget(teiler, 1);
  setCentralWidget(mitte);
  // From the record to its pictures; what serves the whole tree comes last.
  setTabOrder(ansicht_->cmd_Anzeigen, ansicht_->cmd_Bericht);
  setTabOrder(ansicht_->cmd_Bericht, ansicht_->cmd_Ausgeben);
  setTabOrder(ansicht_->cmd_Ausgeben, ansicht_->cmd_AlleZuordnungen);
  setTabOrder(ansicht_->cmd_AlleZuordnungen, ansicht_->cmd_WeitereZuordnungen);
  setTabOrder(ansicht_->cmd_WeitereZuordnungen, ansicht_->cmd_Exif);
  setTabOrder(ansicht_->cmd_Exif, liste_->cmd_NeuerVorgang);
  setTabOrder(liste_->cmd_NeuerVorgang, liste_->cmd_ListeEinlesen);
  setTabOrder(liste_->cmd_ListeEinlesen, liste_->cmd_Suchen);
  setTabOrder(liste_->cmd_Suchen, liste_->cmd_Aufraeumen);
  setTabOrder(liste_->cmd_Aufraeumen, liste_->cmd_Papierkorb);
  lbl_Status->setObjectName(u"lbl_Status"_s);
  lbl_Status->setTextFormat(Qt::PlainText);
  // A long message must not widen the window; its tool tip has all of it.
  lbl_Status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  statusBar()->setContentsMargins(6, 0, 0, 0);
  statusBar()->addWidget(lbl_Status, 1);
  cmd_Ueber->setObjectName(u"cmd_Ueber"_s);
  cmd_Ueber->setFlat(true);
  cmd_Ueber->setToolTip(u"Fassung des Programms, seiner Bibliotheken und Treiber"_s);
  connect(cmd_Ueber, &QPushButton::clicked, this, &Hauptfenster::zeige_Ueber);
  statusBar()->addPermanentWidget(cmd_Ueber);
  setTabOrder(liste_->cmd_Papierkorb, cmd_Ueber);
}

void Hauptfenster::zeige_Ueber() {
  oberflaeche::MsgBox(u"Bildzuordnung "_s + fassung::nummer() + u"\r\n\r\n"_s + fassung::angaben().join(u"\r\n"_s),
      oberflaeche::Knoepfe::OK, oberflaeche::Symbol::Information, u"Über Bildzuordnung"_s);
}

/// No menu bar: making one loads all of Qt's image formats, which takes a third of the program's start.
void Hauptfenster::baue_Aktionen() {
  act_Zuordnen =
      aktion(u"act_Zuordnen"_s, u"Bilder zuordnen …"_s, Qt::CTRL | Qt::Key_B, [this] { oeffne_Dialog(false); });
  act_Anzeigen =
      aktion(u"act_Anzeigen"_s, u"Nur anzeigen …"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_B, [this] { oeffne_Dialog(true); });
  aktion(u"act_Exif"_s, u"Exif …"_s, Qt::CTRL | Qt::Key_E, &Hauptfenster::zeige_Exif);
  auto* suchen = aktion(u"act_Suchen"_s, u"Bilder suchen …"_s, Qt::CTRL | Qt::Key_F, &Hauptfenster::suche_Bilder);
  auto* aufraeumen = aktion(u"act_Aufraeumen"_s, u"Bilderbaum aufräumen …"_s, {}, &Hauptfenster::raeume_auf);
  auto* einlesen = aktion(u"act_Einlesen"_s, u"Neu einlesen"_s, Qt::Key_F5, &Hauptfenster::lies_neu);
  aktion(u"act_Beenden"_s, u"Beenden"_s, Qt::CTRL | Qt::Key_Q, &Hauptfenster::close);
  act_Einfuegen = aktion(u"act_Einfuegen"_s, u"Einfügen"_s, QKeySequence::Paste, &Hauptfenster::fuege_ein);
  aktion(u"act_Rueckgaengig"_s, u"Rückgängig"_s, QKeySequence::Undo, &Hauptfenster::nimm_zurueck);
  act_Aufrecht = aktion(u"act_Aufrecht"_s, u"Neue Bilder aufrecht stellen"_s, {}, [] {});
  const QList<QAction*> bilder{
      act_Zuordnen, act_Anzeigen, baue_Berichtsaktion(), baue_Ausgabe(), act_Einfuegen, act_Aufrecht};
  liste_->Kontextmenue(bilder + baue_Vorgangsaktionen() + QList<QAction*>{suchen, aufraeumen, einlesen});
  ansicht_->addActions(bilder);
  ansicht_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void Hauptfenster::beginne() {
  QString hinweis;
  if (platz_.erster_Start())
    hinweis = u"Der Datenordner wird angelegt …"_s;
  else if (platz_.wartet_auf_Server())
    hinweis = u"Die Datenbank wird geöffnet …"_s;
  else if (platz_.uebernimmt())
    hinweis = u"Die Vorgänge werden in neue Tabellen übernommen …"_s;
  else
    return lies_neu();
  ansicht_->zeige_Hinweis(hinweis, {});
  wartet_aufs_Malen_ = true;
}

bool Hauptfenster::event(QEvent* ereignis) {
  const bool ergebnis = QMainWindow::event(ereignis);
  // A window has opened over this one.
  if (ereignis->type() == QEvent::WindowBlocked) vergiss_Aufnahme();
  if (wartet_aufs_Malen_ && ereignis->type() == QEvent::Paint && !std::exchange(gemalt_, true))
    QTimer::singleShot(0, this, [this] {
      wartet_aufs_Malen_ = false;
      lies_neu();
    });
  return ergebnis;
}

void Hauptfenster::closeEvent(QCloseEvent* ereignis) {
  KVOCore::aktuell().FensterSpeichern(Anwendungsname, Gemerkterplatz(*this));
  ereignis->accept();
}

void Hauptfenster::melde(const QString& text) {
  vergiss_Aufnahme();
  lbl_Status->setText(text);
  lbl_Status->setToolTip(text);
}

void Hauptfenster::erlaube_Aktionen(bool erlaubt) {
  for (QAction* aktion : {act_Zuordnen, act_Anzeigen, act_Bericht, act_Einfuegen}) aktion->setEnabled(erlaubt);
  erlaube_Vorgangsaktionen();
  zeige_Wartende(erlaubt);
  for (QWidget* knopf : {ansicht_->cmd_Zuordnen, ansicht_->cmd_Anzeigen, ansicht_->cmd_Bericht})
    knopf->setEnabled(erlaubt);
  // Only what has pictures can be handed out.
  act_Ausgeben->setEnabled(false);
  ansicht_->cmd_Ausgeben->setEnabled(false);
}

void Hauptfenster::zeige_Ausfall(const QString& grund) {
  erlaube_Aktionen(false);
  liste_->zeige_Ausfall(grund);
  ansicht_->zeige_Hinweis(u"Die Vorgänge sind nicht zu lesen"_s,
      grund + u"\n\nIst die Ursache behoben, liest „Neu einlesen“ (F5) sie."_s, true);
  melde(grund);
}

void Hauptfenster::lies_neu() {
  if (dialog_offen_) return;
  vergiss_Aufnahme();
  try {
    {
      const QScopedValueRollback offen(dialog_offen_, true);
      frage_Kennwort(platz_, std::exchange(abgelehnt_, {}), this);
    }
    frage_Anfang();
    const auto sanduhr = zeige_Sanduhr();
    platz_.bereite_vor();
  } catch (const Abbruch& abbruch) {
    return zeige_Ausfall(abbruch.text());
  }
  dienst_.verbinde(platz_.verbindungszeichenfolge());
  frisch_ = true;
  vorige_Meldung_ = lbl_Status->text();
  frage();
}

void Hauptfenster::frage() {
  if (platz_.verbindungszeichenfolge().isEmpty()) return;
  vorgangsquelle::Frage frage;
  frage.filter = Vorgangsfilter::lies(liste_->filter());
  frage.hoechstens = liste_->gewuenschte();
  frage.nur_bestimmte = liste_->nur_zuletzt();
  frage.bestimmte = zuletzt_.saetze();
  liste_->zeige_Frage();
  dienst_.frage(frage);
}

void Hauptfenster::nimm_Antwort(const Vorgangsdienst::Antwort& antwort) {
  if (antwort.ausfall) return nimm_Ausfall(*antwort.ausfall);
  if (!platz_.verbindung()) {
    // The server has just answered somebody else.
    try {
      platz_.oeffne();
    } catch (const Abbruch& abbruch) {
      return zeige_Ausfall(abbruch.text());
    }
  }
  const bool andere_Wahl = liste_->setze(antwort.vorgaenge, antwort.vielleicht_mehr);
  liste_->zeige_Hinweis(antwort.herkunft == vorgangsquelle::Herkunft::Zuordnungen
          ? u"Gezeigt werden nur Vorgänge, die Bilder haben. Alle zeigt das Programm, sobald die Datenbank eine Sicht "
            u"„Bild_Vorgaenge“ hat; das Kapitel „Vorgänge des Betriebs“ in docs/DATENBANK.md sagt, wie."_s
          : QString());
  if (!anfang_.isEmpty()) waehle_Anfang(antwort.vielleicht_mehr);
  if (frisch_ || andere_Wahl) zeige_gewaehlten();
  // What opens a window of its own waits until this answer is dealt with.
  if (anfangstat_ != Anfangstat::Keine) QTimer::singleShot(0, this, &Hauptfenster::tu_Anfangstat);
}

/// Where it is not among the first ones, the filter finds it.
void Hauptfenster::waehle_Anfang(bool vielleicht_mehr) {
  const QString nummer = anfang_;
  const bool gefiltert = liste_->filter() == nummer;
  if (!waehle(nummer) && vielleicht_mehr && !gefiltert) return liste_->filter(nummer);
  anfang_.clear();
  if (liste_->gewaehlt()) return;
  melde(u"Den Vorgang „%1“ gibt es nicht."_s.arg(nummer));
  frisch_ = false;
  zeige_gewaehlten();
  if (gefiltert) liste_->filter({});
}

void Hauptfenster::nimm_Ausfall(const Datenbankausfall& ausfall) {
  const bool war_frisch = std::exchange(frisch_, false);
  if (!war_frisch) {
    liste_->zeige_Ausfall(ausfall.worte);
    return melde(ausfall.worte);
  }
  platz_.merke_Ausfall(ausfall.grund);
  if (!platz_.braucht_Kennwort()) return zeige_Ausfall(ausfall.worte);
  abgelehnt_ = ausfall.worte;
  lies_neu();
}

void Hauptfenster::nimm_Zahl(std::int64_t zahl) {
  liste_->zeige_Zahl(zahl, liste_->filter().trimmed().isEmpty() ? zahl : vorgangsquelle::Zaehlgrenze);
  // What the user has done meanwhile is the newer message.
  if (!std::exchange(frisch_, false) || lbl_Status->text() != vorige_Meldung_) return;
  const QString anzahl = QLocale(QLocale::German).toString(static_cast<qlonglong>(zahl));
  melde(u"%1 Vorgänge"_s.arg(anzahl) + ort_der_Datenbank(platz_));
}

void Hauptfenster::zeige_gewaehlten() {
  const Vorgang* vorgang = liste_->gewaehlt();
  erlaube_Aktionen(vorgang != nullptr);
  if (!platz_.verbindung()) return;
  if (!vorgang) {
    QString text = u"Wählen Sie links einen Vorgang; hier erscheinen dann seine Bilder."_s;
    if (liste_->leer()) text = u"In der Datenbank stehen keine Vorgänge."_s;
    if (liste_->leer() && hat_eigene_Vorgaenge())
      text =
          u"Noch steht kein Vorgang da. „Neuer Vorgang …“ legt einen an, „Vorgänge einlesen …“ nimmt eine Liste auf."_s;
    return ansicht_->zeige_Hinweis(u"Kein Vorgang gewählt"_s, text, liste_->leer());
  }
  try {
    // Makes the drive known; what is wrong with it is told by the pictures that are missing and by the dialog.
    static_cast<void>(platz_.wurzel_fehlt());
    const auto sammlung = lies_Bildsammlung(platz_, *vorgang);
    ansicht_->zeige(*vorgang, vorschaubilder(*sammlung, platz_.wurzel()));
    act_Ausgeben->setEnabled(ansicht_->cmd_Ausgeben->isEnabled());
  } catch (const Abbruch& abbruch) {
    ansicht_->zeige_Hinweis(vorgang::infozeile(*vorgang), abbruch.text(), true);
    melde(abbruch.text());
  }
}

void Hauptfenster::oeffne_Dialog(bool nur_Anzeige) {
  const Vorgang* gewaehlt = liste_->gewaehlt();
  if (!gewaehlt || dialog_offen_) return;
  const Vorgang vorgang = *gewaehlt;
  if (!nur_Anzeige && !erlaubt_Bearbeiten(vorgang)) return;
  const QScopedValueRollback offen(dialog_offen_, true);
  const Laufergebnis ergebnis = lauf_.gehe(vorgang, nur_Anzeige);
  if (ergebnis.geoeffnet && !nur_Anzeige) zuletzt_.merke(vorgang.satz);
  if (ergebnis.geoeffnet) aktualisiere();
  melde(vorgang::art_von(vorgang.satz.typ1).einzahl + u' ' + vorgang.nummer + u": "_s + ergebnis.text());
}

void Hauptfenster::aktualisiere() {
  zeige_gewaehlten();
  frage();
}
