#include "tests/platform/adodb/odbc/OdbcDoppel.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/// Copies a text with its closing zero, cut to the room that there is.
void kopiere(const QString& text, char16_t* ziel, SQLSMALLINT platz, SQLSMALLINT* laenge) {
  const qsizetype anzahl = std::min<qsizetype>(text.size(), platz - 1);
  std::copy_n(reinterpret_cast<const char16_t*>(text.utf16()), anzahl, ziel);
  ziel[anzahl] = u'\0';
  if (laenge) *laenge = static_cast<SQLSMALLINT>(text.size());
}

}  // namespace

SQLRETURN OdbcDoppel::AllocHandle(SQLSMALLINT art, SQLHANDLE eltern, SQLHANDLE* neu) {
  Q_UNUSED(art);
  Q_UNUSED(eltern);
  ++offene_Griffe;
  *neu = this;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::FreeHandle(SQLSMALLINT art, SQLHANDLE griff) {
  Q_UNUSED(art);
  Q_UNUSED(griff);
  --offene_Griffe;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::setze(SQLINTEGER attribut, SQLULEN wert) {
  if (unbekannte_Attribute.contains(attribut)) return SQL_ERROR;
  attribute[attribut] = wert;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::SetEnvAttr(SQLHENV umgebung, SQLINTEGER attribut, SQLULEN wert) {
  Q_UNUSED(umgebung);
  return setze(attribut, wert);
}

SQLRETURN OdbcDoppel::SetConnectAttr(SQLHDBC dbc, SQLINTEGER attribut, SQLULEN wert) {
  Q_UNUSED(dbc);
  return setze(attribut, wert);
}

SQLRETURN OdbcDoppel::GetConnectAttr(SQLHDBC dbc, SQLINTEGER attribut, SQLUINTEGER* wert) {
  Q_UNUSED(dbc);
  if (attribut != SQL_ATTR_CONNECTION_DEAD || !kennt_tot) return SQL_ERROR;
  *wert = tot ? SQL_CD_TRUE : SQL_CD_FALSE;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::SetStmtAttr(SQLHSTMT anweisung, SQLINTEGER attribut, SQLULEN wert) {
  Q_UNUSED(anweisung);
  return setze(attribut, wert);
}

SQLRETURN OdbcDoppel::SetStmtZeiger(SQLHSTMT anweisung, SQLINTEGER attribut, void* ziel) {
  Q_UNUSED(anweisung);
  if (unbekannte_Attribute.contains(attribut)) return SQL_ERROR;
  zeiger_[attribut] = ziel;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::BindCol(
    SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laengen) {
  Q_UNUSED(anweisung);
  if (!bindet) return SQL_ERROR;
  bindungen_[spalte] = {art, static_cast<char*>(ziel), platz, laengen};
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::DriverConnect(SQLHDBC dbc, const QString& zeichenfolge) {
  Q_UNUSED(dbc);
  zeichenfolgen.append(zeichenfolge);
  meldungen_ = verbindungsmeldungen;
  return verbindung;
}

SQLRETURN OdbcDoppel::Disconnect(SQLHDBC dbc) {
  Q_UNUSED(dbc);
  ++getrennt;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::beginne_Schritt() {
  zeile_.reset();
  if (schritt_ >= schritte.size()) return SQL_NO_DATA;
  gelesene_Schritte = schritt_ + 1;
  meldungen_ = schritte[schritt_].meldungen;
  return schritte[schritt_].ergebnis;
}

SQLRETURN OdbcDoppel::ExecDirect(SQLHSTMT anweisung, const QString& text) {
  Q_UNUSED(anweisung);
  texte.append(text);
  lies_Parameter();
  if (waehrend_Ausfuehrung) waehrend_Ausfuehrung();
  schritt_ = 0;
  bindungen_.clear();
  zeiger_.clear();
  attribute.erase(SQL_ATTR_ROW_ARRAY_SIZE);
  return beginne_Schritt();
}

SQLRETURN OdbcDoppel::BindParameter(SQLHSTMT anweisung, SQLUSMALLINT nummer, SQLSMALLINT art, SQLSMALLINT typ,
    SQLULEN groesse, const void* wert, SQLLEN bytes, SQLLEN* laenge_des_Werts) {
  Q_UNUSED(anweisung);
  Q_UNUSED(bytes);
  if (beim_Binden) beim_Binden();
  if (nummer == schlechter_Parameter) return SQL_ERROR;
  parameterbindungen_.resize(nummer);
  parameterbindungen_.back() = {{art, typ, groesse}, wert, laenge_des_Werts};
  return SQL_SUCCESS;
}

/// A driver reads the values when it runs the text, not when they are bound.
void OdbcDoppel::lies_Parameter() {
  parameter.clear();
  for (const Parameterbindung& bindung : std::exchange(parameterbindungen_, {})) {
    Parameter gelesener = bindung.parameter;
    const auto zeichen = *bindung.laenge / static_cast<SQLLEN>(sizeof(char16_t));
    if (*bindung.laenge == SQL_NULL_DATA)
      gelesener.wert.reset();
    else if (gelesener.art == SQL_C_WCHAR)
      gelesener.wert = QString(static_cast<const QChar*>(bindung.wert), zeichen);
    else if (gelesener.art == SQL_C_SBIGINT)
      gelesener.wert = QString::number(*static_cast<const qint64*>(bindung.wert));
    else
      gelesener.wert = QString::number(*static_cast<const double*>(bindung.wert), 'g', 17);
    parameter.push_back(gelesener);
  }
}

SQLRETURN OdbcDoppel::Cancel(SQLHSTMT anweisung) {
  Q_UNUSED(anweisung);
  ++abbrueche;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::MoreResults(SQLHSTMT anweisung) {
  Q_UNUSED(anweisung);
  if (waehrend_MoreResults) waehrend_MoreResults();
  ++schritt_;
  return beginne_Schritt();
}

SQLRETURN OdbcDoppel::NumResultCols(SQLHSTMT anweisung, SQLSMALLINT* spalten) {
  Q_UNUSED(anweisung);
  *spalten = static_cast<SQLSMALLINT>(schritte[schritt_].spalten.size());
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::DescribeCol(SQLHSTMT anweisung, SQLUSMALLINT spalte, char16_t* name, SQLSMALLINT platz,
    SQLSMALLINT* name_Laenge, SQLSMALLINT* typ, SQLULEN* groesse) {
  Q_UNUSED(anweisung);
  const Spalte& gefragte = schritte[schritt_].spalten[spalte - 1U];
  kopiere(gefragte.name, name, platz, name_Laenge);
  *typ = gefragte.typ;
  *groesse = gefragte.groesse;
  return gefragte.name.size() < platz ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

SQLRETURN OdbcDoppel::Fetch(SQLHSTMT anweisung) {
  Q_UNUSED(anweisung);
  ++geholte_Bloecke;
  if (waehrend_Holen) waehrend_Holen();
  const SQLULEN block = attribute.contains(SQL_ATTR_ROW_ARRAY_SIZE) ? attribute.at(SQL_ATTR_ROW_ARRAY_SIZE) : 1;
  auto* zustaende = static_cast<SQLUSMALLINT*>(zeiger_[SQL_ATTR_ROW_STATUS_PTR]);
  SQLRETURN ergebnis = SQL_SUCCESS;
  SQLULEN geholte = 0;
  for (; geholte < block && ergebnis == SQL_SUCCESS; geholte += ergebnis == SQL_SUCCESS ? 1 : 0) {
    ergebnis = hole_Zeile();
    if (ergebnis != SQL_SUCCESS) break;
    if (zustaende) zustaende[geholte] = schlechte_Zeile == zeile_ ? SQL_ROW_ERROR : SQL_ROW_SUCCESS;
    for (const auto& [spalte, bindung] : bindungen_)
      lege_ab(schritte[schritt_].zeilen[*zeile_][spalte - 1U], bindung, geholte);
  }
  if (auto* zaehler = static_cast<SQLULEN*>(zeiger_[SQL_ATTR_ROWS_FETCHED_PTR])) *zaehler = geholte;
  if (geholte > 0 && ergebnis == SQL_NO_DATA) return SQL_SUCCESS;
  return ergebnis;
}

void OdbcDoppel::lege_ab(const Zelle& zelle, const Bindung& bindung, std::size_t platz_im_Block) const {
  char* ziel = bindung.ziel + platz_im_Block * static_cast<std::size_t>(bindung.platz);
  SQLLEN& laenge_des_Werts = bindung.laengen[platz_im_Block];
  laenge_des_Werts = SQL_NULL_DATA;
  if (!zelle) return;
  if (bindung.art != SQL_C_WCHAR) {
    const qint64 ganze = zelle->toLongLong();
    const double zahl = zelle->toDouble();
    laenge_des_Werts = 8;
    std::memcpy(ziel, bindung.art == SQL_C_DOUBLE ? static_cast<const void*>(&zahl) : &ganze, 8);
    return;
  }
  const qsizetype anzahl = std::min<qsizetype>(zelle->size(), bindung.platz / 2 - 1);
  std::memcpy(ziel, zelle->utf16(), static_cast<std::size_t>(anzahl) * 2);
  laenge_des_Werts = laenge == Laenge::Rest ? SQLLEN{zelle->size() * 2} : SQLLEN{SQL_NO_TOTAL};
}

SQLRETURN OdbcDoppel::hole_Zeile() {
  const Schritt& schritt = schritte[schritt_];
  zeile_ = zeile_ ? *zeile_ + 1 : 0;
  spalte_ = 0;
  if (schritt.scheitert_bei == zeile_) return SQL_ERROR;
  return *zeile_ < schritt.zeilen.size() ? SQL_SUCCESS : SQL_NO_DATA;
}

SQLRETURN OdbcDoppel::GetData(
    SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* rest) {
  Q_UNUSED(anweisung);
  ++einzelne_Werte;
  if (waehrend_GetData) waehrend_GetData();
  if (spalte != spalte_) stelle_ = 0;
  spalte_ = spalte;
  const Zelle& zelle = schritte[schritt_].zeilen[*zeile_][spalte - 1U];
  if (!zelle) {
    *rest = SQL_NULL_DATA;
    return SQL_SUCCESS;
  }
  if (art == SQL_C_WCHAR) return gib_Text(*zelle, ziel, platz, rest);
  const qint64 ganze = zelle->toLongLong();
  const double zahl = zelle->toDouble();
  *rest = 8;
  std::memcpy(ziel, art == SQL_C_DOUBLE ? static_cast<const void*>(&zahl) : &ganze, 8);
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::gib_Text(const QString& wert, void* ziel, SQLLEN platz, SQLLEN* rest) {
  ++stuecke;
  if (stelle_ > 0 && stelle_ >= wert.size()) return SQL_NO_DATA;
  const qsizetype uebrig = wert.size() - stelle_;
  qsizetype anzahl = std::min<qsizetype>(uebrig, platz / 2 - 1);
  const bool ganz = anzahl == uebrig;
  if (!ganz && paare_ganz && wert.at(stelle_ + anzahl - 1).isHighSurrogate()) --anzahl;
  *rest = ganz || laenge == Laenge::Rest ? SQLLEN{uebrig * 2} : SQLLEN{SQL_NO_TOTAL};
  auto* zeichen = static_cast<char16_t*>(ziel);
  std::fill_n(zeichen, platz / 2, u'#');
  std::copy_n(reinterpret_cast<const char16_t*>(wert.utf16()) + stelle_, anzahl, zeichen);
  zeichen[anzahl] = u'\0';
  stelle_ += anzahl;
  return ganz ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

SQLRETURN OdbcDoppel::GetDiagRec(SQLSMALLINT art, SQLHANDLE griff, SQLSMALLINT satz, char16_t* sqlstate,
    SQLINTEGER* nummer, char16_t* text, SQLSMALLINT platz, SQLSMALLINT* text_Laenge) {
  Q_UNUSED(art);
  Q_UNUSED(griff);
  if (satz > meldungen_.size()) return SQL_NO_DATA;
  const Meldung& meldung = meldungen_.at(satz - 1);
  kopiere(meldung.sqlstate, sqlstate, 6, nullptr);
  *nummer = meldung.nummer;
  kopiere(meldung.text, text, platz, text_Laenge);
  return meldung.text.size() < platz ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

SQLRETURN OdbcDoppel::Drivers(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* angaben) {
  Q_UNUSED(umgebung);
  if (richtung == SQL_FETCH_FIRST) naechster_Treiber_ = 0;
  if (naechster_Treiber_ >= treiber.size()) return SQL_NO_DATA;
  *name = treiber.at(naechster_Treiber_).first;
  *angaben = treiber.at(naechster_Treiber_++).second;
  return SQL_SUCCESS;
}

SQLRETURN OdbcDoppel::DataSources(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* name_Treiber) {
  Q_UNUSED(umgebung);
  Q_UNUSED(richtung);
  Q_UNUSED(name);
  Q_UNUSED(name_Treiber);
  return SQL_NO_DATA;
}

QString OdbcDoppel::Quellenwert(const QString& quelle, const QString& name) {
  Q_UNUSED(quelle);
  Q_UNUSED(name);
  return {};
}

std::optional<std::uint64_t> OdbcDoppel::bestaetigte_Bytes(SQLHDBC dbc) {
  Q_UNUSED(dbc);
  if (bestaetigte.empty()) return std::nullopt;
  const std::uint64_t erste = bestaetigte.front();
  bestaetigte.erase(bestaetigte.begin());
  return erste;
}
