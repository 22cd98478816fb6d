-- Assignments of picture files to business records, for SQLite.
-- Run on a connection that knows the collation SERVERTEXT and the function LEN. Running it again does no harm.
-- No uniqueness on purpose: a clone of a record may be stored beside its model.
-- The checks stand for the lengths that a server enforces; LEN counts 16-bit characters without trailing blanks.
CREATE TABLE IF NOT EXISTS Bild_Zuordnungen (
  Key1 TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Key1 fasst 50 Zeichen" CHECK (LEN(Key1) <= 50),
  Key2 TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Key2 fasst 50 Zeichen" CHECK (LEN(Key2) <= 50),
  Key3 TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Key3 fasst 50 Zeichen" CHECK (LEN(Key3) <= 50),
  key4 TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "key4 fasst 50 Zeichen" CHECK (LEN(key4) <= 50),
  Bildname TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Bildname fasst 50 Zeichen" CHECK (LEN(Bildname) <= 50),
  BildExt TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "BildExt fasst 200 Zeichen" CHECK (LEN(BildExt) <= 200),
  Typ1 TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Typ1 fasst 200 Zeichen" CHECK (LEN(Typ1) <= 200),
  Typ2 TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Typ2 fasst 200 Zeichen" CHECK (LEN(Typ2) <= 200),
  BildPfad TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "BildPfad fasst 250 Zeichen" CHECK (LEN(BildPfad) <= 250),
  Beschreibung TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Beschreibung fasst 250 Zeichen" CHECK (LEN(Beschreibung) <= 250),
  Druckkennzeichen TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Druckkennzeichen fasst 50 Zeichen" CHECK (LEN(Druckkennzeichen) <= 50),
  Grafik_Ursprung TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "Grafik_Ursprung fasst 250 Zeichen" CHECK (LEN(Grafik_Ursprung) <= 250),
  GrafikAnbNr TEXT COLLATE SERVERTEXT NULL
    CONSTRAINT "GrafikAnbNr fasst 250 Zeichen" CHECK (LEN(GrafikAnbNr) <= 250),
  SortIndex INTEGER NULL
    CONSTRAINT "SortIndex ist eine 16-Bit-Zahl"
      CHECK (SortIndex IS NULL OR (typeof(SortIndex) = 'integer' AND SortIndex BETWEEN -32768 AND 32767))
);

-- One record's assignments, and one assignment by its identity.
CREATE INDEX IF NOT EXISTS Bild_Zuordnungen_Schluessel
  ON Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2);

-- All records of a kind.
CREATE INDEX IF NOT EXISTS Bild_Zuordnungen_Typ
  ON Bild_Zuordnungen (Typ1, Key1, Key2, Key3);

-- All assignments of a picture file.
CREATE INDEX IF NOT EXISTS Bild_Zuordnungen_Datei
  ON Bild_Zuordnungen (Bildname, BildExt, BildPfad);
