-- The rest of a data folder's own database: the tables that the component reads of a host, over the firm's records. For
-- SQLite, behind Bild_Vorgaenge.sql. Running it again does no harm.
CREATE VIEW IF NOT EXISTS BelegKopfZunft AS
  SELECT Key1 AS Belegart, Key2 AS Belegnummer, Kundennummer, Projektnummer FROM Vorgaenge WHERE Typ1 = 'BEL';

-- What an article has beside its number and its text.
CREATE TABLE IF NOT EXISTS Artikelzusatz (
  Artikelnummer TEXT COLLATE SERVERTEXT NOT NULL PRIMARY KEY,
  Bezeichnung3 TEXT COLLATE SERVERTEXT NULL,
  Hauptlieferant TEXT COLLATE SERVERTEXT NULL
);

CREATE VIEW IF NOT EXISTS Artikelstamm AS
  SELECT v.Key1 AS Artikelnummer, v.Text AS Bezeichnung, z.Bezeichnung3 AS Bezeichnung3,
    z.Hauptlieferant AS Hauptlieferant
  FROM Vorgaenge v LEFT JOIN Artikelzusatz z ON z.Artikelnummer = v.Key1 WHERE v.Typ1 = 'ART';

-- The second stock of firms that keep one; the setting MitArtikelstammZF chooses it.
CREATE TABLE IF NOT EXISTS ArtikelstammZF (
  Artikelnummer TEXT COLLATE SERVERTEXT,
  Bezeichnung TEXT COLLATE SERVERTEXT,
  Bezeichnung3 TEXT COLLATE SERVERTEXT,
  Hauptlieferant TEXT COLLATE SERVERTEXT
);

CREATE TABLE IF NOT EXISTS Einstellungen (
  Programm TEXT COLLATE SERVERTEXT,
  Benutzer TEXT COLLATE SERVERTEXT,
  Abschnitt TEXT COLLATE SERVERTEXT,
  Schluessel TEXT COLLATE SERVERTEXT,
  Wert TEXT COLLATE SERVERTEXT
);
INSERT INTO Einstellungen (Programm, Benutzer, Abschnitt, Schluessel, Wert)
  SELECT 'Standard', 'Standard', 'Firmendaten', 'MitArtikelstammZF', '0'
  WHERE NOT EXISTS (SELECT 1 FROM Einstellungen WHERE Schluessel = 'MitArtikelstammZF');
