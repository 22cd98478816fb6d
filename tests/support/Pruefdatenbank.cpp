#include "tests/support/Pruefdatenbank.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>
#include <utility>

#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/adodb/odbc/OdbcTreiber.h"

using namespace Qt::Literals::StringLiterals;

QStringList Mitschrift::hole() {
  QStringList texte;
  for (const Eintrag& eintrag : std::exchange(eintraege_, {})) texte.append(eintrag.text);
  return texte;
}

QStringList Mitschrift::hole(Seite seite) {
  QStringList texte;
  for (const Eintrag& eintrag : std::exchange(eintraege_, {}))
    if (eintrag.seite == seite) texte.append(eintrag.text);
  return texte;
}

void Mitschrift::scheitere_am(int n, std::int32_t nummer) {
  plaene_.push_back({n, {}, nummer});
}

void Mitschrift::scheitere_bei_Beginn(const QString& anfang, std::int32_t nummer) {
  plaene_.push_back({0, anfang, nummer});
}

void Mitschrift::heile() {
  plaene_.clear();
  beim_Oeffnen_ = 0;
}

void Mitschrift::pruefe_Oeffnen() const {
  if (beim_Oeffnen_ != 0)
    throw adodb::Datenbankfehler(beim_Oeffnen_, u"Die Verbindung sollte scheitern"_s, u"08001"_s, 0);
}

void Mitschrift::nimm(Seite seite, const QString& text, const std::vector<adodb::Wert>& werte) {
  std::int32_t nummer = 0;
  for (auto plan = plaene_.begin(); plan != plaene_.end();) {
    const bool gezaehlt = plan->n > 0;
    const bool trifft = gezaehlt ? --plan->n == 0 : text.startsWith(plan->anfang, Qt::CaseInsensitive);
    if (trifft) nummer = plan->nummer;
    plan = gezaehlt && trifft ? plaene_.erase(plan) : plan + 1;
  }
  eintraege_.push_back({seite, text, nummer != 0, werte});
  if (nummer != 0) throw adodb::Datenbankfehler(nummer, u"Die Anweisung sollte scheitern"_s, u"HY000"_s, 0);
  if (dabei_) dabei_(text);
  weitergegeben_.append(text);
}

Aufzeichner::Aufzeichner(
    std::shared_ptr<Mitschrift> mitschrift, Mitschrift::Seite seite, std::unique_ptr<adodb::Treiber> innen)
    : mitschrift_(std::move(mitschrift)), seite_(seite), innen_(std::move(innen)) {}

void Aufzeichner::oeffne(const QString& verbindungszeichenfolge) {
  mitschrift_->pruefe_Oeffnen();
  innen_->oeffne(verbindungszeichenfolge);
}

adodb::Ergebnis Aufzeichner::fuehre_aus(const QString& text, const std::vector<adodb::Wert>& werte) {
  mitschrift_->nimm(seite_, text, werte);
  try {
    return innen_->fuehre_aus(text, werte);
  } catch (...) {
    mitschrift_->eintraege_.back().gescheitert = true;
    throw;
  }
}

Pruefdatenbank::Pruefdatenbank(std::chrono::milliseconds wartegrenze)
    : wartegrenze_(wartegrenze), mitschrift_(std::make_shared<Mitschrift>()) {
  if (pruefziel() == Pruefziel::Sqlite) {
    lege_Datei_an();
  } else {
    angaben_ = pruefserver_Angaben();
    pruefserver().steuere(u"weiter"_s);
    pruefserver().steuere(u"leere"_s);
  }
  adodb::registriere_treiber(u"Pruefling"_s,
      [this] { return std::make_unique<Aufzeichner>(mitschrift_, Mitschrift::Seite::System, treiber()); });
  verbindung_ = std::make_shared<adodb::Connection>(
      std::make_unique<Aufzeichner>(mitschrift_, Mitschrift::Seite::Wirt, treiber()));
  verbindung_->Open(verbindungszeichenfolge());
}

Pruefdatenbank::~Pruefdatenbank() {
  // The next test gets the tables as they were.
  if (umgebaut_) verwirf_Pruefserver();
  adodb::registriere_treiber(u"Pruefling"_s, [] { return std::unique_ptr<adodb::Treiber>(); });
}

void Pruefdatenbank::lege_Datei_an() {
  angaben_ = u"Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(ordner_.pfad(u"bilder.db"_s));
  daneben_ = std::make_unique<adodb::Connection>();
  daneben_->Open(u"Provider=SQLite;Mode=ReadWriteCreate;"_s + angaben_);
  for (const QString& skript : {u"sql/sqlite/Bild_Zuordnungen.sql"_s, u"sql/sqlite/Wirtstabellen_Beispiel.sql"_s})
    for (const QString& anweisung : adodb::zerlege_skript(projektdatei(skript))) daneben_->Execute(anweisung);
}

std::unique_ptr<adodb::Treiber> Pruefdatenbank::treiber() const {
  if (pruefziel() == Pruefziel::Sqlite) return std::make_unique<adodb::SqliteTreiber>(wartegrenze_);
  return std::make_unique<adodb::OdbcTreiber>();
}

namespace {

adodb::Wert wert(const QJsonValue& gelesener) {
  if (gelesener.isNull()) return std::monostate();
  if (gelesener.isDouble()) return static_cast<std::int64_t>(gelesener.toInteger());
  return gelesener.toString();
}

/// One statement through the server's control channel, beside its log. Its columns are numbered from 1.
adodb::Ergebnis frage_Server(const QString& text) {
  const QByteArray liste = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
  const QString antwort = pruefserver().steuere(u"sql "_s + QString::fromUtf8(liste.sliced(1).chopped(1)));
  adodb::Ergebnis ergebnis{{u"1"_s}, {}};
  for (const auto zeile : QJsonDocument::fromJson(antwort.toUtf8()).array()) {
    const QJsonArray werte = zeile.toArray();
    while (ergebnis.spalten.size() < werte.size())
      ergebnis.spalten.append(QString::number(ergebnis.spalten.size() + 1));
    for (const auto einer : werte) ergebnis.werte.push_back(wert(einer));
  }
  return ergebnis;
}

bool aendert_mehr_als_Zeilen(const QString& text) {
  return text.startsWith("ALTER"_L1, Qt::CaseInsensitive) || text.startsWith("CREATE"_L1, Qt::CaseInsensitive) ||
      text.startsWith("DROP"_L1, Qt::CaseInsensitive);
}

}  // namespace

std::shared_ptr<adodb::Recordset> Pruefdatenbank::fuehre_aus(const QString& text) {
  if (!daneben_) {
    umgebaut_ |= aendert_mehr_als_Zeilen(text);
    return std::make_shared<adodb::Recordset>(frage_Server(text));
  }
  try {
    return daneben_->Execute(text);
  } catch (const Laufzeitfehler& fehler) {
    ADD_FAILURE() << text.toStdString() << ": " << fehler.what();
    return std::make_shared<adodb::Recordset>(adodb::Ergebnis{{u"fehlt"_s}, {}});
  }
}

QStringList Pruefdatenbank::angekommen() {
  const QStringList alle = pruefziel() == Pruefziel::Sqlite ? mitschrift_->weitergegeben() : pruefserver().angekommen();
  return alle.sliced(std::exchange(gesehen_, alle.size()));
}

void Pruefdatenbank::pruefe_Ankunft() const {
  if (pruefziel() == Pruefziel::Sqlite) return;
  // Half of a surrogate pair is the one thing that FreeTDS can't send.
  QStringList texte = mitschrift_->weitergegeben();
  for (QString& text : texte)
    if (!text.isValidUtf16()) text = QString::fromUtf8(text.toUtf8());
  EXPECT_EQ(pruefserver().angekommen(), texte);
}

std::vector<QStringList> Pruefdatenbank::zeilen(const QString& abfrage) {
  std::vector<QStringList> zeilen;
  const auto satz = fuehre_aus(abfrage);
  for (; !satz->Eof(); satz->MoveNext()) {
    QStringList zeile;
    for (std::int32_t i = 0; i < satz->Spalten().size(); ++i)
      zeile.append(std::holds_alternative<Null>(satz->Value(i)) ? u"<NULL>"_s : satz->Text(i));
    zeilen.push_back(zeile);
  }
  return zeilen;
}

int Pruefdatenbank::anzahl(const QString& where) {
  const QString bedingung = where.isEmpty() ? QString() : u" where "_s + where;
  const auto satz = fuehre_aus(u"Select count(*) from Bild_Zuordnungen"_s + bedingung);
  return satz->Eof() ? -1 : satz->Text(0).toInt();
}

QString projektdatei(const QString& name) {
  QFile datei(QStringLiteral(KVO_QUELLORDNER "/") + name);
  if (!datei.open(QIODevice::ReadOnly)) {
    ADD_FAILURE() << "cannot read " << name.toStdString();
    return {};
  }
  return QString::fromUtf8(datei.readAll());
}
