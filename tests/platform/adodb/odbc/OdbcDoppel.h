#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "platform/adodb/odbc/OdbcSchicht.h"

/// A driver manager that answers as a test scripts it, and writes down what it was asked.
class OdbcDoppel final : public adodb::OdbcSchicht {
 public:
  struct Meldung {
    QString sqlstate;
    SQLINTEGER nummer;
    QString text;
  };
  struct Spalte {
    QString name;
    SQLSMALLINT typ;
    SQLULEN groesse = 0;
  };
  using Zelle = std::optional<QString>;
  /// What one result of a text answers: the return value of the call that reaches it, and its rows.
  struct Schritt {
    SQLRETURN ergebnis = SQL_SUCCESS;
    QList<Meldung> meldungen = {};
    std::vector<Spalte> spalten = {};
    std::vector<std::vector<Zelle>> zeilen = {};
    /// Fetching this row, counted from 0, fails with `meldungen`.
    std::optional<std::size_t> scheitert_bei = std::nullopt;
  };
  enum class Laenge { Rest, Unbekannt };

  // The script.
  QList<QPair<QString, QString>> treiber = {{QStringLiteral("FreeTDS"), QStringLiteral("Driver=libtdsodbc.so")}};
  SQLRETURN verbindung = SQL_SUCCESS;
  QList<Meldung> verbindungsmeldungen;
  std::vector<Schritt> schritte = {Schritt{}};
  bool tot = false;
  bool kennt_tot = true;
  Laenge laenge = Laenge::Rest;
  /// A piece never ends between the two halves of a character outside the basic plane.
  bool paare_ganz = false;
  std::set<SQLINTEGER> unbekannte_Attribute;
  /// Takes bound columns; without it every value is asked for by itself.
  bool bindet = false;
  /// With bound columns: the row of a block that is marked as failed while the block itself succeeds, from 0.
  std::optional<std::size_t> schlechte_Zeile;
  /// Runs while a value is bound, while the text is executed, while each block is fetched, and at each single value.
  std::function<void()> beim_Binden;
  std::function<void()> waehrend_Ausfuehrung;
  std::function<void()> waehrend_Holen;
  std::function<void()> waehrend_GetData;
  /// Runs while the next result is asked for.
  std::function<void()> waehrend_MoreResults;
  /// The marker, from 1, whose value is refused.
  SQLUSMALLINT schlechter_Parameter = 0;
  /// Answers to the question for the bytes that went out, one after the other; none behind the last.
  std::vector<std::uint64_t> bestaetigte;

  /// A marker's value as it stood when the text was executed.
  struct Parameter {
    SQLSMALLINT art = 0;
    SQLSMALLINT typ = 0;
    SQLULEN groesse = 0;
    Zelle wert = {};
    bool operator==(const Parameter&) const = default;
  };

  // What was asked.
  std::vector<Parameter> parameter;
  std::atomic<int> abbrueche = 0;
  QStringList zeichenfolgen;
  QStringList texte;
  std::map<SQLINTEGER, SQLULEN> attribute;
  int offene_Griffe = 0;
  int getrennt = 0;
  int stuecke = 0;
  std::size_t gelesene_Schritte = 0;
  int geholte_Bloecke = 0;
  int einzelne_Werte = 0;

  SQLRETURN AllocHandle(SQLSMALLINT art, SQLHANDLE eltern, SQLHANDLE* neu) override;
  SQLRETURN FreeHandle(SQLSMALLINT art, SQLHANDLE griff) override;
  SQLRETURN SetEnvAttr(SQLHENV umgebung, SQLINTEGER attribut, SQLULEN wert) override;
  SQLRETURN SetConnectAttr(SQLHDBC dbc, SQLINTEGER attribut, SQLULEN wert) override;
  SQLRETURN GetConnectAttr(SQLHDBC dbc, SQLINTEGER attribut, SQLUINTEGER* wert) override;
  SQLRETURN SetStmtAttr(SQLHSTMT anweisung, SQLINTEGER attribut, SQLULEN wert) override;
  SQLRETURN SetStmtZeiger(SQLHSTMT anweisung, SQLINTEGER attribut, void* ziel) override;
  SQLRETURN DriverConnect(SQLHDBC dbc, const QString& zeichenfolge) override;
  SQLRETURN Disconnect(SQLHDBC dbc) override;
  SQLRETURN BindParameter(SQLHSTMT anweisung, SQLUSMALLINT nummer, SQLSMALLINT art, SQLSMALLINT typ, SQLULEN groesse,
      const void* wert, SQLLEN bytes, SQLLEN* laenge_des_Werts) override;
  SQLRETURN Cancel(SQLHSTMT anweisung) override;
  SQLRETURN ExecDirect(SQLHSTMT anweisung, const QString& text) override;
  SQLRETURN NumResultCols(SQLHSTMT anweisung, SQLSMALLINT* spalten) override;
  SQLRETURN DescribeCol(SQLHSTMT anweisung, SQLUSMALLINT spalte, char16_t* name, SQLSMALLINT platz,
      SQLSMALLINT* name_Laenge, SQLSMALLINT* typ, SQLULEN* groesse) override;
  SQLRETURN BindCol(
      SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* laengen) override;
  SQLRETURN Fetch(SQLHSTMT anweisung) override;
  SQLRETURN GetData(
      SQLHSTMT anweisung, SQLUSMALLINT spalte, SQLSMALLINT art, void* ziel, SQLLEN platz, SQLLEN* rest) override;
  SQLRETURN MoreResults(SQLHSTMT anweisung) override;
  SQLRETURN GetDiagRec(SQLSMALLINT art, SQLHANDLE griff, SQLSMALLINT satz, char16_t* sqlstate, SQLINTEGER* nummer,
      char16_t* text, SQLSMALLINT platz, SQLSMALLINT* text_Laenge) override;
  SQLRETURN Drivers(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* angaben) override;
  SQLRETURN DataSources(SQLHENV umgebung, SQLUSMALLINT richtung, QString* name, QString* name_Treiber) override;
  QString Quellenwert(const QString& quelle, const QString& name) override;
  std::optional<std::uint64_t> bestaetigte_Bytes(SQLHDBC dbc) override;

 private:
  SQLRETURN beginne_Schritt();
  void lies_Parameter();
  struct Bindung {
    SQLSMALLINT art = 0;
    char* ziel = nullptr;
    SQLLEN platz = 0;
    SQLLEN* laengen = nullptr;
  };
  struct Parameterbindung {
    Parameter parameter;
    const void* wert = nullptr;
    const SQLLEN* laenge = nullptr;
  };
  SQLRETURN hole_Zeile();
  void lege_ab(const Zelle& zelle, const Bindung& bindung, std::size_t platz_im_Block) const;
  SQLRETURN gib_Text(const QString& wert, void* ziel, SQLLEN platz, SQLLEN* rest);
  SQLRETURN setze(SQLINTEGER attribut, SQLULEN wert);

  QList<Meldung> meldungen_;
  std::size_t schritt_ = 0;
  std::optional<std::size_t> zeile_;
  std::map<SQLUSMALLINT, Bindung> bindungen_;
  std::map<SQLINTEGER, void*> zeiger_;
  std::vector<Parameterbindung> parameterbindungen_;
  SQLUSMALLINT spalte_ = 0;
  qsizetype stelle_ = 0;
  qsizetype naechster_Treiber_ = 0;
};
