#include "host/betrieb/vorgang/Vorgangsquelle.h"

#include <QHash>
#include <algorithm>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Datenbankart.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/vorgang/Vorgangsanweisung.h"

using namespace Qt::Literals::StringLiterals;

namespace vorgangsquelle {
namespace {

/// A firm may put longer texts into its view than a line shows.
constexpr qsizetype LaengsterBetreff = 250;

QString gekuerzt(const QString& text) {
  const QString zeile = text.simplified();
  return zeile.size() <= LaengsterBetreff ? zeile : zeile.left(LaengsterBetreff - 1) + u'…';
}

/// What is a pattern to LIKE stands for itself.
QString als_Muster(QString text) {
  for (const QString& zeichen : {u"\\"_s, u"%"_s, u"_"_s, u"["_s}) text.replace(zeichen, u'\\' + zeichen);
  return text;
}

/// Asks a view of the firm's, or in its place the assignments. Columns that are NULL count as empty.
class Sichtfrage {
 public:
  Sichtfrage(adodb::Connection& verbindung, Herkunft herkunft, const Frage& frage)
      : art_(Datenbankart::von(verbindung)), herkunft_(herkunft), frage_(frage) {}

  Vorgangsanweisung saetze() const {
    Vorgangsanweisung innen;
    innen +=
        u"SELECT TOP %1 v.Typ1 AS Typ1, v.Key1 AS Key1, v.Key2 AS Key2, v.Key3 AS Key3, v.Bezeichnung AS "
        "Bezeichnung, v.Ordner AS Ordner, v.Stand AS Stand, "_s.arg(frage_.hoechstens);
    innen.haenge_an(vorn()) += u" AS Vorn"_s + quelle();
    innen.haenge_an(bedingung()) += u" ORDER BY Vorn, v.Stand DESC, v.Key1, v.Key2, v.Key3"_s;
    return mit_Bildern(innen, u"t.Vorn, t.Stand DESC, t.Key1, t.Key2, t.Key3"_s, frage_.hoechstens);
  }

  Vorgangsanweisung zahl() const {
    Vorgangsanweisung alle;
    if (frage_.filter.leer() && !frage_.nur_bestimmte) return alle += u"SELECT COUNT(*)"_s + quelle();
    alle += u"SELECT COUNT(*) FROM (SELECT TOP %1 1 AS Einer"_s.arg(Zaehlgrenze + 1) + quelle();
    return alle.haenge_an(bedingung()) += u") z"_s;
  }

 private:
  QString quelle() const {
    if (herkunft_ == Herkunft::Sicht) return u" FROM Bild_Vorgaenge v"_s;
    return u" FROM (SELECT Typ1, Key1, Key2, Key3, NULL AS Bezeichnung, NULL AS Ordner, NULL AS Stand FROM "
           "Bild_Zuordnungen WHERE key4 = '-' AND Typ2 = '-' GROUP BY Typ1, Key1, Key2, Key3) v"_s;
  }

  /// Without a view there is no text, and a column of nothing but NULL has no type to compare with.
  QStringList spalten() const {
    QStringList alle{u"v.Key1"_s, u"v.Key2"_s, u"v.Key3"_s};
    if (herkunft_ == Herkunft::Sicht) alle.append(u"v.Bezeichnung"_s);
    return alle;
  }

  QString gleicht(const QString& spalte, const QString& wie) const { return art_.Vergleichstext.arg(spalte) + wie; }

  Vorgangsanweisung eines_von(const QStringList& muster) const {
    Vorgangsanweisung glied;
    QStringList alternativen;
    for (const QString& spalte : spalten())
      for (const QString& eines : muster) {
        alternativen.append(gleicht(spalte, u" LIKE ? ESCAPE '\\'"_s));
        glied.werte.emplace_back(eines);
      }
    return glied += u'(' + alternativen.join(u" OR "_s) + u')';
  }

  Vorgangsanweisung bedingung() const {
    Vorgangsanweisung alle;
    if (frage_.nur_bestimmte) return bestimmte();
    QString wort = u" WHERE "_s;
    const auto dazu = [&](const QStringList& muster) {
      alle += std::exchange(wort, u" AND "_s);
      alle.haenge_an(eines_von(muster));
    };
    for (const QString& lang : frage_.filter.lange + frage_.filter.zeichen) dazu({u'%' + als_Muster(lang) + u'%'});
    for (const QString& kurz : frage_.filter.kurze)
      dazu({als_Muster(kurz) + u'%', u"% "_s + als_Muster(kurz) + u'%', u"%-"_s + als_Muster(kurz) + u'%'});
    return alle;
  }

  Vorgangsanweisung bestimmte() const {
    Vorgangsanweisung alle;
    QStringList glieder;
    for (const Datensatz& satz : frage_.bestimmte) {
      QStringList teile;
      for (const auto& [spalte, wert] : {std::pair(u"v.Typ1"_s, satz.typ1), {u"v.Key1"_s, satz.key1},
               {u"v.Key2"_s, satz.key2}, {u"v.Key3"_s, satz.key3}}) {
        // The view writes an empty part as '', the assignments as '-'.
        teile.append(spalte + u" IN (?, ?)"_s);
        alle.werte.emplace_back(wert);
        alle.werte.emplace_back(wert == "-"_L1 ? QString() : wert);
      }
      glieder.append(u'(' + teile.join(u" AND "_s) + u')');
    }
    return alle += u" WHERE "_s + (glieder.isEmpty() ? u"1 = 0"_s : glieder.join(u" OR "_s));
  }

  /// 0 for a number that begins with what was typed, else 1: the words in their order fill the parts of the key, the
  /// last one with its beginning, from the first part on or from the second.
  Vorgangsanweisung vorn() const {
    Vorgangsanweisung alle;
    const QStringList worte = frage_.filter.ganz.split(u' ', Qt::SkipEmptyParts);
    if (worte.isEmpty() || worte.size() > 4 || frage_.nur_bestimmte) return alle += u"1"_s;
    QStringList faelle;
    for (const int erste : {1, 2}) sammle(worte, erste, {}, {}, faelle, alle.werte);
    return alle += u"CASE WHEN "_s + faelle.join(u" OR "_s) + u" THEN 0 ELSE 1 END"_s;
  }

  void sammle(const QStringList& worte, int spalte, const QString& bisher, const QStringList& werte,
      QStringList& faelle, std::vector<adodb::Wert>& alle) const {
    const QString name = u"v.Key%1"_s.arg(spalte);
    faelle.append(u'(' + bisher + gleicht(name, u" LIKE ? ESCAPE '\\'"_s) + u')');
    alle.insert(alle.end(), werte.begin(), werte.end());
    alle.emplace_back(als_Muster(worte.join(u' ')) + u'%');
    if (spalte == 3) return;
    for (qsizetype i = 1; i < worte.size(); ++i)
      sammle(worte.mid(i), spalte + 1, bisher + gleicht(name, u" = ? AND "_s),
          werte + QStringList{worte.mid(0, i).join(u' ')}, faelle, alle);
  }

  const Datenbankart& art_;
  Herkunft herkunft_;
  const Frage& frage_;
};

bool hat_Sicht(adodb::Connection& verbindung) {
  const auto fehlt = [&](const Laufzeitfehler& fehler) {
    // Silently without its view the program would hide most of the firm's records.
    if (ausfall_von(fehler).grund != Datenbankgrund::Tabelle_fehlt || schema::nennt_Vorgaenge(verbindung)) throw;
    return true;
  };
  return !versuche([&] { verbindung.Execute(u"SELECT 1 FROM Bild_Vorgaenge WHERE 1 = 0"_s); }, fehlt);
}

}  // namespace

Herkunft herkunft(adodb::Connection& verbindung) {
  if (schema::hat_eigene_Vorgaenge(verbindung)) return Herkunft::Eigene;
  return hat_Sicht(verbindung) ? Herkunft::Sicht : Herkunft::Zuordnungen;
}

Vorgangsanweisung mit_Bildern(const Vorgangsanweisung& innen, const QString& ordnung, int hoechstens) {
  const auto wie_gespeichert = [](const QString& spalte) {
    return u"CASE WHEN COALESCE(t.%1, '') = '' THEN '-' ELSE t.%1 END"_s.arg(spalte);
  };
  Vorgangsanweisung aussen;
  aussen +=
      u"SELECT TOP %1 t.Typ1, t.Key1, t.Key2, t.Key3, t.Bezeichnung, t.Ordner, t.Stand, (SELECT COUNT(*) FROM "
      "Bild_Zuordnungen z WHERE z.Typ1 = t.Typ1 AND z.Key1 = %2 AND z.Key2 = %3 AND z.Key3 = %4 AND z.key4 = '-' "
      "AND z.Typ2 = '-') AS Bilder FROM ("_s.arg(QString::number(hoechstens), wie_gespeichert(u"Key1"_s),
          wie_gespeichert(u"Key2"_s), wie_gespeichert(u"Key3"_s));
  aussen.haenge_an(innen) += u") t ORDER BY "_s + ordnung;
  return aussen;
}

QList<Vorgang> lies_Vorgaenge(adodb::Connection& verbindung, const Vorgangsanweisung& anweisung) {
  QList<Vorgang> liste;
  const auto satz = verbindung.Execute(anweisung.text, anweisung.werte);
  liste.reserve(satz->RecordCount());
  for (; !satz->Eof(); satz->MoveNext()) {
    Vorgang neu = vorgang::aus_Schluesseln(satz->Text(0), satz->Text(1), satz->Text(2), satz->Text(3));
    neu.betreff = gekuerzt(satz->Text(4));
    neu.ordner = satz->Text(5);
    neu.stand = QDateTime::fromString(satz->Text(6).left(19).replace(u'T', u' '), u"yyyy-MM-dd HH:mm:ss"_s);
    neu.bilder = satz->Text(7).toInt();
    liste.append(neu);
  }
  return liste;
}

namespace {

/// In the order in which they were asked for.
QList<Vorgang> geordnet(const QList<Vorgang>& liste, const QList<Datensatz>& wie) {
  QHash<QString, qsizetype> stellen;
  const auto kennung = [](const Datensatz& satz) { return vorgang::kennung({satz, {}, {}, {}, {}, 0}); };
  for (qsizetype i = 0; i < wie.size(); ++i) stellen.insert(kennung(wie.at(i)), i);
  QList<Vorgang> neue = liste;
  std::stable_sort(neue.begin(), neue.end(), [&](const Vorgang& a, const Vorgang& b) {
    return stellen.value(vorgang::kennung(a), wie.size()) < stellen.value(vorgang::kennung(b), wie.size());
  });
  return neue;
}

}  // namespace

QList<Vorgang> lies(adodb::Connection& verbindung, Herkunft herkunft, const Frage& frage) {
  // Few enough to be asked for like a view's.
  if (herkunft == Herkunft::Eigene && !frage.nur_bestimmte) return lies_Eigene(verbindung, frage);
  const Herkunft woher = herkunft == Herkunft::Eigene ? Herkunft::Sicht : herkunft;
  const QList<Vorgang> liste = lies_Vorgaenge(verbindung, Sichtfrage(verbindung, woher, frage).saetze());
  return frage.nur_bestimmte ? geordnet(liste, frage.bestimmte) : liste;
}

std::int64_t zaehle(adodb::Connection& verbindung, Herkunft herkunft, const Frage& frage) {
  if (herkunft == Herkunft::Eigene && !frage.nur_bestimmte) return zaehle_Eigene(verbindung, frage);
  const Herkunft woher = herkunft == Herkunft::Eigene ? Herkunft::Sicht : herkunft;
  const Vorgangsanweisung zahl = Sichtfrage(verbindung, woher, frage).zahl();
  return verbindung.Execute(zahl.text, zahl.werte)->Text(0).toLongLong();
}

}  // namespace vorgangsquelle
