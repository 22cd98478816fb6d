#include "host/betrieb/vorgaenge/Vorgangsausgabe.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>
#include <algorithm>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/vorgaenge/Vorgangsspalten.h"

using namespace Qt::Literals::StringLiterals;
using adodb::Wert;

namespace {

constexpr std::int64_t Teil = 5'000;

/// Quotes stand where the text would not come in as it is without them, and around an empty text that is not NULL.
QString als_Csv(const std::optional<QString>& wert, bool nullbar) {
  if (!wert || (wert->isEmpty() && !nullbar)) return {};
  const bool blank = wert->startsWith(u' ') || wert->endsWith(u' ');
  const bool noetig = wert->isEmpty() || blank ||
      std::any_of(wert->begin(), wert->end(), [](QChar c) { return u";,\t\"\r\n"_s.contains(c); });
  if (!noetig) return *wert;
  return u'"' + QString(*wert).replace(u'"', u"\"\""_s) + u'"';
}

QByteArray csv_Zeile(const Vorgangswerte& werte) {
  QStringList teile;
  for (const Vorgangsspalte spalte : vorgangsspalten::alle())
    teile.append(als_Csv(werte.at(vorgangsspalten::platz(spalte)), vorgangsspalten::eigenschaft(spalte).nullbar));
  return (teile.join(u';') + u"\r\n"_s).toUtf8();
}

QByteArray json_Zeile(const Vorgangswerte& werte) {
  QJsonObject objekt;
  for (const Vorgangsspalte spalte : vorgangsspalten::alle()) {
    const auto& wert = werte.at(vorgangsspalten::platz(spalte));
    objekt.insert(
        vorgangsspalten::eigenschaft(spalte).name.toLower(), wert ? QJsonValue(*wert) : QJsonValue(QJsonValue::Null));
  }
  return QJsonDocument(objekt).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray csv_Kopf() {
  Vorgangswerte namen;
  for (const Vorgangsspalte spalte : vorgangsspalten::alle())
    namen.at(vorgangsspalten::platz(spalte)) = vorgangsspalten::eigenschaft(spalte).name;
  return QByteArray("\xEF\xBB\xBF") + csv_Zeile(namen);
}

/// The columns of the record under the cursor, behind its Nr.
Vorgangswerte werte_von(const adodb::Recordset& satz) {
  Vorgangswerte werte;
  for (std::size_t i = 0; i < werte.size(); ++i) {
    const auto spalte = static_cast<std::int32_t>(i + 1);
    if (!std::holds_alternative<Null>(satz.Value(spalte))) werte.at(i) = satz.Text(spalte);
  }
  return werte;
}

void gib(const vorgangsausgabe::Senke& senke, const QByteArray& bytes) {
  if (!senke(bytes)) throw Abbruch(Ausgang::Datei, u"Die Liste der Vorgänge ist nicht vollständig zu schreiben."_s);
}

}  // namespace

qint64 vorgangsausgabe::gib_aus(adodb::Connection& verbindung, Form form, const Senke& senke) {
  verbindung.Execute(u"BEGIN"_s);
  const auto ende = qScopeGuard([&] { gelingt([&] { verbindung.Execute(u"ROLLBACK"_s); }); });
  if (form == Form::Csv) gib(senke, csv_Kopf());
  qint64 anzahl = 0;
  for (std::int64_t hinter = std::numeric_limits<std::int64_t>::min();;) {
    const auto satz = verbindung.Execute(
        u"SELECT v.Nr, v.Typ1, v.Key1, v.Key2, v.Key3, v.Kundennummer, k.Name, k.Ort, v.Projektnummer, v.Text, "
        "v.Ordner, v.Stand FROM Vorgaenge v LEFT JOIN Kunden k ON k.Kundennummer = v.Kundennummer WHERE v.Nr > ? "
        "ORDER BY v.Nr LIMIT ?"_s,
        {Wert(hinter), Wert(Teil)});
    if (satz->Eof()) return anzahl;
    QByteArray bytes;
    for (; !satz->Eof(); satz->MoveNext(), ++anzahl) {
      const Vorgangswerte werte = werte_von(*satz);
      bytes += form == Form::Csv ? csv_Zeile(werte) : json_Zeile(werte);
      hinter = satz->Text(0).toLongLong();
    }
    gib(senke, bytes);
  }
}
