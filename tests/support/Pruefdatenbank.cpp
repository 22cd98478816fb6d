#include "tests/support/Pruefdatenbank.h"

#include <QFile>
#include <algorithm>
#include <utility>

#include "platform/adodb/SqlZerleger.h"
#include "platform/adodb/Verbindungszeichenfolge.h"

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

void Mitschrift::scheitere_bei_beginn(const QString& anfang, std::int32_t nummer) {
  plaene_.push_back({0, anfang, nummer});
}

void Mitschrift::heile() {
  plaene_.clear();
  beim_oeffnen_ = 0;
}

void Mitschrift::pruefe_oeffnen() const {
  if (beim_oeffnen_ != 0)
    throw adodb::Datenbankfehler(beim_oeffnen_, u"Die Verbindung sollte scheitern"_s, u"08001"_s, 0);
}

void Mitschrift::nimm(Seite seite, const QString& text) {
  std::int32_t nummer = 0;
  for (auto plan = plaene_.begin(); plan != plaene_.end();) {
    const bool gezaehlt = plan->n > 0;
    const bool trifft = gezaehlt ? --plan->n == 0 : text.startsWith(plan->anfang, Qt::CaseInsensitive);
    if (trifft) nummer = plan->nummer;
    plan = gezaehlt && trifft ? plaene_.erase(plan) : plan + 1;
  }
  eintraege_.push_back({seite, text, nummer != 0});
  if (nummer != 0) throw adodb::Datenbankfehler(nummer, u"Die Anweisung sollte scheitern"_s, u"HY000"_s, 0);
}

Aufzeichner::Aufzeichner(std::shared_ptr<Mitschrift> mitschrift, Mitschrift::Seite seite,
                         std::chrono::milliseconds wartegrenze)
    : mitschrift_(std::move(mitschrift)), seite_(seite), sqlite_(wartegrenze) {}

void Aufzeichner::oeffne(const QString& verbindungszeichenfolge) {
  mitschrift_->pruefe_oeffnen();
  sqlite_.oeffne(verbindungszeichenfolge);
}

adodb::Ergebnis Aufzeichner::fuehre_aus(const QString& text) {
  mitschrift_->nimm(seite_, text);
  try {
    return sqlite_.fuehre_aus(text);
  } catch (...) {
    mitschrift_->eintraege_.back().gescheitert = true;
    throw;
  }
}

Pruefdatenbank::Pruefdatenbank(std::chrono::milliseconds wartegrenze)
    : mitschrift_(std::make_shared<Mitschrift>()), daneben_(std::make_unique<adodb::Connection>()) {
  const QString quelle = u"Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(pfad());
  daneben_->Open(u"Provider=SQLite;Mode=ReadWriteCreate;"_s + quelle);
  for (const QString& skript : {u"sql/sqlite/Bild_Zuordnungen.sql"_s, u"sql/sqlite/Wirtstabellen_Beispiel.sql"_s})
    for (const QString& anweisung : adodb::zerlege_skript(projektdatei(skript))) daneben_->Execute(anweisung);
  adodb::registriere_treiber(u"Pruefling"_s, [mitschrift = mitschrift_, wartegrenze] {
    return std::make_unique<Aufzeichner>(mitschrift, Mitschrift::Seite::System, wartegrenze);
  });
  verbindung_ = std::make_shared<adodb::Connection>(
      std::make_unique<Aufzeichner>(mitschrift_, Mitschrift::Seite::Wirt, wartegrenze));
  verbindung_->Open(u"Provider=Pruefling;"_s + quelle);
}

Pruefdatenbank::~Pruefdatenbank() {
  adodb::registriere_treiber(u"Pruefling"_s, [] { return std::unique_ptr<adodb::Treiber>(); });
}

QString Pruefdatenbank::verbindungszeichenfolge() const {
  return u"Provider=Pruefling;Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(pfad());
}

std::shared_ptr<adodb::Recordset> Pruefdatenbank::fuehre_aus(const QString& text) {
  try {
    return daneben_->Execute(text);
  } catch (const Laufzeitfehler& fehler) {
    ADD_FAILURE() << text.toStdString() << ": " << fehler.what();
    return std::make_shared<adodb::Recordset>(adodb::Ergebnis{{u"fehlt"_s}, {}});
  }
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
