-- A firm's own business records for the embedded database: tables, search index and the view that the programs read.
-- Run on a connection that knows the collation SERVERTEXT and the functions LEN, SUCHTEXT and WORTANFAENGE. Running it
-- again does no harm.
CREATE TABLE IF NOT EXISTS Kunden (
  Kundennummer TEXT COLLATE SERVERTEXT NOT NULL PRIMARY KEY
    CONSTRAINT "Kundennummer fasst 1 bis 50 Zeichen" CHECK (LEN(Kundennummer) BETWEEN 1 AND 50),
  Name TEXT COLLATE SERVERTEXT NOT NULL DEFAULT ''
    CONSTRAINT "Name fasst 250 Zeichen" CHECK (LEN(Name) <= 250),
  Ort TEXT COLLATE SERVERTEXT NOT NULL DEFAULT ''
    CONSTRAINT "Ort fasst 250 Zeichen" CHECK (LEN(Ort) <= 250)
);

-- A part of the key that a kind does not have is ''. Stand is "2026-11-22 09:15:00". Whoever writes leaves Bezeichnung
-- out: the triggers fill it in. The columns behind it are made from the others, folded for the search.
CREATE TABLE IF NOT EXISTS Vorgaenge (
  Nr INTEGER PRIMARY KEY,
  Typ1 TEXT COLLATE SERVERTEXT NOT NULL
    CONSTRAINT "Typ1 fasst 1 bis 50 Zeichen" CHECK (LEN(Typ1) BETWEEN 1 AND 50),
  Key1 TEXT COLLATE SERVERTEXT NOT NULL
    CONSTRAINT "Key1 fasst 1 bis 50 Zeichen" CHECK (LEN(Key1) BETWEEN 1 AND 50),
  Key2 TEXT COLLATE SERVERTEXT NOT NULL DEFAULT ''
    CONSTRAINT "Key2 fasst 50 Zeichen" CHECK (LEN(Key2) <= 50),
  Key3 TEXT COLLATE SERVERTEXT NOT NULL DEFAULT ''
    CONSTRAINT "Key3 fasst 50 Zeichen" CHECK (LEN(Key3) <= 50),
  Kundennummer TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Kundennummer fasst 50 Zeichen" CHECK (LEN(Kundennummer) <= 50),
  Projektnummer TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Projektnummer fasst 50 Zeichen" CHECK (LEN(Projektnummer) <= 50),
  Text TEXT COLLATE SERVERTEXT NOT NULL DEFAULT ''
    CONSTRAINT "Text fasst 250 Zeichen" CHECK (LEN(Text) <= 250),
  Ordner TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Ordner fasst 250 Zeichen" CHECK (LEN(Ordner) <= 250),
  Stand TEXT NULL,
  Bezeichnung TEXT COLLATE SERVERTEXT NULL,
  Suchtext TEXT GENERATED ALWAYS AS (SUCHTEXT(Key1 || ' ' || Key2 || ' ' || Key3 || ' ' || Bezeichnung)) STORED,
  Wortanfaenge TEXT
    GENERATED ALWAYS AS (WORTANFAENGE(Key1 || ' ' || Key2 || ' ' || Key3 || ' ' || Bezeichnung)) STORED,
  Suchnummer TEXT GENERATED ALWAYS AS (SUCHTEXT(Key1 || ' ' || Key2 || ' ' || Key3)) STORED,
  Suchnummer2 TEXT GENERATED ALWAYS AS (SUCHTEXT(Key2 || ' ' || Key3)) STORED,
  UNIQUE (Typ1, Key1, Key2, Key3)
);

-- The newest ones; those of a customer; a number from its beginning, with and without its first part.
CREATE INDEX IF NOT EXISTS Vorgaenge_Stand ON Vorgaenge (Stand DESC, Suchnummer);
CREATE INDEX IF NOT EXISTS Vorgaenge_Kunde ON Vorgaenge (Kundennummer);
CREATE INDEX IF NOT EXISTS Vorgaenge_Nummer ON Vorgaenge (Suchnummer);
CREATE INDEX IF NOT EXISTS Vorgaenge_Nummer2 ON Vorgaenge (Suchnummer2) WHERE Suchnummer2 <> '';

-- Words of three letters and more anywhere, and beginnings of words of one and two letters.
CREATE VIRTUAL TABLE IF NOT EXISTS Vorgaenge_Text USING fts5(
  Suchtext, content='Vorgaenge', content_rowid='Nr', tokenize='trigram case_sensitive 1');
CREATE VIRTUAL TABLE IF NOT EXISTS Vorgaenge_Anfang USING fts5(
  Wortanfaenge, content='Vorgaenge', content_rowid='Nr', tokenize='unicode61 remove_diacritics 0', detail=none,
  columnsize=0);

-- Room for more words before they are written: a long list is taken in sooner. In bytes, used while records are written.
INSERT INTO Vorgaenge_Text (Vorgaenge_Text, rank) VALUES ('hashsize', 8388608);
INSERT INTO Vorgaenge_Anfang (Vorgaenge_Anfang, rank) VALUES ('hashsize', 8388608);

-- What is shown of a record: its text, its customer and its project.
CREATE VIEW IF NOT EXISTS Vorgaenge_Worte AS
  SELECT Nr,
    Text || CASE WHEN Text <> '' AND Wer <> '' THEN ' · ' ELSE '' END || Wer
      || CASE WHEN Projekt = '' THEN '' WHEN Text || Wer = '' THEN 'Projekt ' || Projekt
           ELSE ' · Projekt ' || Projekt END
      AS Bezeichnung
  FROM (
    SELECT v.Nr AS Nr, v.Text AS Text, COALESCE(v.Projektnummer, '') AS Projekt,
      CASE WHEN k.Kundennummer IS NULL THEN COALESCE(v.Kundennummer, '')
        ELSE k.Name || CASE WHEN k.Name <> '' AND k.Ort <> '' THEN ', ' ELSE '' END || k.Ort END AS Wer
    FROM Vorgaenge v LEFT JOIN Kunden k ON k.Kundennummer = v.Kundennummer);

-- While a row stands here the triggers rest: who takes in many records at once keeps the index in step himself, in the
-- same transaction.
CREATE TABLE IF NOT EXISTS Vorgaenge_Ruhe (Grund TEXT);

CREATE TRIGGER IF NOT EXISTS Vorgaenge_neu AFTER INSERT ON Vorgaenge
WHEN NOT EXISTS (SELECT 1 FROM Vorgaenge_Ruhe)
BEGIN
  UPDATE Vorgaenge SET Bezeichnung = (SELECT w.Bezeichnung FROM Vorgaenge_Worte w WHERE w.Nr = new.Nr)
    WHERE Nr = new.Nr;
  INSERT INTO Vorgaenge_Text (rowid, Suchtext) SELECT Nr, Suchtext FROM Vorgaenge WHERE Nr = new.Nr;
  INSERT INTO Vorgaenge_Anfang (rowid, Wortanfaenge) SELECT Nr, Wortanfaenge FROM Vorgaenge WHERE Nr = new.Nr;
END;

CREATE TRIGGER IF NOT EXISTS Vorgaenge_anders
AFTER UPDATE OF Key1, Key2, Key3, Kundennummer, Projektnummer, Text ON Vorgaenge
WHEN NOT EXISTS (SELECT 1 FROM Vorgaenge_Ruhe)
BEGIN
  INSERT INTO Vorgaenge_Text (Vorgaenge_Text, rowid, Suchtext) VALUES ('delete', old.Nr, old.Suchtext);
  INSERT INTO Vorgaenge_Anfang (Vorgaenge_Anfang, rowid, Wortanfaenge) VALUES ('delete', old.Nr, old.Wortanfaenge);
  UPDATE Vorgaenge SET Bezeichnung = (SELECT w.Bezeichnung FROM Vorgaenge_Worte w WHERE w.Nr = new.Nr)
    WHERE Nr = new.Nr;
  INSERT INTO Vorgaenge_Text (rowid, Suchtext) SELECT Nr, Suchtext FROM Vorgaenge WHERE Nr = new.Nr;
  INSERT INTO Vorgaenge_Anfang (rowid, Wortanfaenge) SELECT Nr, Wortanfaenge FROM Vorgaenge WHERE Nr = new.Nr;
END;

CREATE TRIGGER IF NOT EXISTS Vorgaenge_weg AFTER DELETE ON Vorgaenge
WHEN NOT EXISTS (SELECT 1 FROM Vorgaenge_Ruhe)
BEGIN
  INSERT INTO Vorgaenge_Text (Vorgaenge_Text, rowid, Suchtext) VALUES ('delete', old.Nr, old.Suchtext);
  INSERT INTO Vorgaenge_Anfang (Vorgaenge_Anfang, rowid, Wortanfaenge) VALUES ('delete', old.Nr, old.Wortanfaenge);
END;

-- A customer's new name is found with all its records.
CREATE TRIGGER IF NOT EXISTS Kunden_neu AFTER INSERT ON Kunden
WHEN NOT EXISTS (SELECT 1 FROM Vorgaenge_Ruhe)
BEGIN
  UPDATE Vorgaenge SET Kundennummer = Kundennummer WHERE Kundennummer = new.Kundennummer;
END;

CREATE TRIGGER IF NOT EXISTS Kunden_anders AFTER UPDATE ON Kunden
WHEN NOT EXISTS (SELECT 1 FROM Vorgaenge_Ruhe)
BEGIN
  UPDATE Vorgaenge SET Kundennummer = Kundennummer WHERE Kundennummer IN (old.Kundennummer, new.Kundennummer);
END;

CREATE TRIGGER IF NOT EXISTS Kunden_weg AFTER DELETE ON Kunden
WHEN NOT EXISTS (SELECT 1 FROM Vorgaenge_Ruhe)
BEGIN
  UPDATE Vorgaenge SET Kundennummer = Kundennummer WHERE Kundennummer = old.Kundennummer;
END;

-- A record that got its pictures by another road is in the list too.
CREATE TRIGGER IF NOT EXISTS Bild_Zuordnungen_Vorgang AFTER INSERT ON Bild_Zuordnungen
WHEN new.key4 = '-' AND new.Typ2 = '-'
BEGIN
  INSERT OR IGNORE INTO Vorgaenge (Typ1, Key1, Key2, Key3)
    SELECT new.Typ1, new.Key1, CASE WHEN new.Key2 = '-' THEN '' ELSE new.Key2 END,
      CASE WHEN new.Key3 = '-' THEN '' ELSE new.Key3 END
    WHERE NOT EXISTS (SELECT 1 FROM Vorgaenge WHERE Typ1 = new.Typ1 AND Key1 = new.Key1
      AND Key2 = CASE WHEN new.Key2 = '-' THEN '' ELSE new.Key2 END
      AND Key3 = CASE WHEN new.Key3 = '-' THEN '' ELSE new.Key3 END);
END;

CREATE TRIGGER IF NOT EXISTS Bild_Zuordnungen_Vorgang_anders AFTER UPDATE OF Typ1, Key1, Key2, Key3 ON Bild_Zuordnungen
WHEN new.key4 = '-' AND new.Typ2 = '-'
BEGIN
  INSERT OR IGNORE INTO Vorgaenge (Typ1, Key1, Key2, Key3)
    SELECT new.Typ1, new.Key1, CASE WHEN new.Key2 = '-' THEN '' ELSE new.Key2 END,
      CASE WHEN new.Key3 = '-' THEN '' ELSE new.Key3 END
    WHERE NOT EXISTS (SELECT 1 FROM Vorgaenge WHERE Typ1 = new.Typ1 AND Key1 = new.Key1
      AND Key2 = CASE WHEN new.Key2 = '-' THEN '' ELSE new.Key2 END
      AND Key3 = CASE WHEN new.Key3 = '-' THEN '' ELSE new.Key3 END);
END;

-- What the programs read of a firm's records, whatever stands behind it.
CREATE VIEW IF NOT EXISTS Bild_Vorgaenge AS
  SELECT Typ1, Key1, Key2, Key3, Bezeichnung, Ordner, Stand FROM Vorgaenge;
