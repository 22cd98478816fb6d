#pragma once

#include <gtest/gtest.h>

#include <QStringList>
#include <functional>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Schema.h"
#include "host/betrieb/vorgaenge/Vorgangstabelle.h"
#include "platform/adodb/Connection.h"
#include "tests/support/Umgebung.h"

/// An embedded database with the tables of a firm's records, all empty, and two desks at it.
class Vorgangsdatenbank : public ::testing::Test {
 protected:
  Vorgangsdatenbank() {
    schema::lege_an(zeichenfolge());
    db_.Open(zeichenfolge());
    schema::richte_Betrieb_ein(db_);
    anderer_.Open(zeichenfolge());
  }
  QString datei() const { return ordner_.pfad(QStringLiteral("betrieb.db")); }
  QString zeichenfolge() const { return verbindung_zur_Datei(datei()); }

  /// The rows of a query, values parted by "|", NULL as ~.
  QStringList zeilen(const QString& abfrage) {
    QStringList liste;
    for (const auto satz = db_.Execute(abfrage); !satz->Eof(); satz->MoveNext()) {
      QStringList werte;
      for (std::int32_t i = 0; i < satz->Spalten().size(); ++i)
        werte.append(std::holds_alternative<Null>(satz->Value(i)) ? QStringLiteral("~") : satz->Text(i));
      liste.append(werte.join(u'|'));
    }
    return liste;
  }
  QStringList vorgaenge() {
    return zeilen(
        QStringLiteral("SELECT Typ1, Key1, Key2, Key3, Kundennummer, Projektnummer, Text, Ordner, Stand "
                       "FROM Vorgaenge ORDER BY Nr"));
  }
  QStringList kunden() {
    return zeilen(QStringLiteral("SELECT Kundennummer, Name, Ort FROM Kunden ORDER BY Kundennummer"));
  }
  /// The index holds what the table holds, word by word, and nothing rests.
  void pruefe_Index() {
    for (const QString& index : {QStringLiteral("Vorgaenge_Text"), QStringLiteral("Vorgaenge_Anfang")})
      EXPECT_NO_THROW(db_.Execute(QStringLiteral("INSERT INTO %1 (%1, rank) VALUES ('integrity-check', 1)").arg(index)))
          << index.toStdString();
    EXPECT_EQ(zeilen(QStringLiteral("SELECT COUNT(*) FROM Vorgaenge_Ruhe")), QStringList{QStringLiteral("0")});
    EXPECT_EQ(zeilen(QStringLiteral("SELECT v.Key1 FROM Vorgaenge v JOIN Vorgaenge_Worte w ON w.Nr = v.Nr "
                                    "WHERE v.Bezeichnung IS NOT w.Bezeichnung")),
        QStringList());
  }
  void gib_Bild(const QString& typ1, const QString& key1, const QString& key2, const QString& key3) {
    db_.Execute(QStringLiteral("INSERT INTO Bild_Zuordnungen (Typ1, Typ2, Key1, Key2, Key3, key4, Bildname, BildExt) "
                               "VALUES (?, '-', ?, ?, ?, '-', 'bild', 'jpg')"),
        {typ1, key1, key2, key3});
  }

  Testordner ordner_;
  adodb::Connection db_;
  adodb::Connection anderer_;
};

/// The words that something ends with.
inline QString abbruch_von(const std::function<void()>& tat, Ausgang ausgang = Ausgang::Datenbank) {
  try {
    tat();
  } catch (const Abbruch& ende) {
    EXPECT_EQ(ende.ausgang(), ausgang);
    return ende.text();
  }
  return QStringLiteral("kein Abbruch");
}
