-- Brings the records of an older data folder into its tables of today. For SQLite, behind Bild_Vorgaenge.sql, within one
-- transaction; the older tables stand beside, named "…_bisher", those that were missing empty.
INSERT INTO Vorgaenge_Ruhe (Grund) VALUES ('Übernahme');
INSERT OR IGNORE INTO Kunden (Kundennummer, Name, Ort)
  SELECT Kundennummer, COALESCE(Name, ''), COALESCE(Ort, '') FROM Kunden_bisher;
INSERT OR IGNORE INTO Vorgaenge (Typ1, Key1, Key2, Kundennummer, Projektnummer)
  SELECT 'BEL', Belegart, COALESCE(Belegnummer, ''), Kundennummer, Projektnummer FROM BelegKopfZunft_bisher;
INSERT OR IGNORE INTO Vorgaenge (Typ1, Key1, Key2, Key3, Text)
  SELECT 'MON', Belegart, COALESCE(Belegnummer, ''), COALESCE(MontageNr, ''), COALESCE(Aufgabe, '')
  FROM Montageauftraege_bisher;
INSERT OR IGNORE INTO Vorgaenge (Typ1, Key1, Text)
  SELECT 'ART', Artikelnummer, COALESCE(Bezeichnung, '') FROM Artikelstamm_bisher;
INSERT OR IGNORE INTO Vorgaenge (Typ1, Key1, Key2, Key3, Kundennummer, Text)
  SELECT 'ANL', a.Referenz1, COALESCE(a.Referenz2, ''), COALESCE(a.Referenz3, ''), k.Kundennummer,
    COALESCE(a.Bezeichnung, '')
  FROM Anlagen_bisher a LEFT JOIN Kunden k ON k.Kundennummer = a.Referenz1;
-- Records that only the assignments know.
INSERT OR IGNORE INTO Vorgaenge (Typ1, Key1, Key2, Key3)
  SELECT DISTINCT Typ1, Key1, CASE WHEN Key2 = '-' THEN '' ELSE Key2 END, CASE WHEN Key3 = '-' THEN '' ELSE Key3 END
  FROM Bild_Zuordnungen WHERE key4 = '-' AND Typ2 = '-';
INSERT OR IGNORE INTO Artikelzusatz (Artikelnummer, Bezeichnung3, Hauptlieferant)
  SELECT Artikelnummer, Bezeichnung3, Hauptlieferant FROM Artikelstamm_bisher WHERE Artikelnummer IS NOT NULL;
-- The index in whole statements: row by row it would take minutes in a large firm.
UPDATE Vorgaenge SET Bezeichnung = (SELECT w.Bezeichnung FROM Vorgaenge_Worte w WHERE w.Nr = Vorgaenge.Nr);
INSERT INTO Vorgaenge_Text (rowid, Suchtext) SELECT Nr, Suchtext FROM Vorgaenge;
INSERT INTO Vorgaenge_Anfang (rowid, Wortanfaenge) SELECT Nr, Wortanfaenge FROM Vorgaenge;
DELETE FROM Vorgaenge_Ruhe;
