-- A worked example for Microsoft SQL Server 2016 and later: the view Bild_Vorgaenge over the tables of an invented craft
-- firm. Adapt the tables and their columns to your own; the names, the order and the meaning of the view's columns stay.
-- Running it again replaces the view. A table Bild_Vorgaenge that "kvobild datenbank anlegen" has made goes first.
IF OBJECT_ID(N'dbo.Bild_Vorgaenge', N'V') IS NOT NULL DROP VIEW dbo.Bild_Vorgaenge
GO

CREATE VIEW dbo.Bild_Vorgaenge AS
-- Documents: kind and number are the key, customer and project are what one looks for.
SELECT N'BEL' AS Typ1,
  CAST(b.Belegart AS nvarchar(50)) AS Key1,
  CAST(b.Belegnummer AS nvarchar(50)) AS Key2,
  N'' AS Key3,
  CAST(CONCAT(k.Name1, N', ' + k.Ort, N' · ' + NULLIF(b.Betreff, N''), N' · Projekt ' + NULLIF(b.Projektnummer, N''))
    AS nvarchar(400)) AS Bezeichnung,
  CAST(NULL AS nvarchar(250)) AS Ordner,
  b.GeaendertAm AS Stand
FROM dbo.BelegKopfZunft AS b
LEFT JOIN dbo.Kundenstamm AS k ON k.Kundennummer = b.Kundennummer
WHERE b.Belegart IS NOT NULL AND b.Belegnummer IS NOT NULL

UNION ALL
-- Works orders: several of one document.
SELECT N'MON', CAST(m.Belegart AS nvarchar(50)), CAST(m.Belegnummer AS nvarchar(50)), CAST(m.MontageNr AS nvarchar(50)),
  CAST(CONCAT(m.Aufgabe, N' · Monteur ' + p.Nachname) AS nvarchar(400)), NULL, m.GeplantFuer
FROM dbo.Montageauftrag AS m
LEFT JOIN dbo.Personal AS p ON p.PersonalNr = m.Monteur
WHERE m.Belegart IS NOT NULL AND m.Belegnummer IS NOT NULL AND m.MontageNr IS NOT NULL

UNION ALL
-- Articles: their pictures lie in a folder for each group of goods.
SELECT N'ART', CAST(a.Artikelnummer AS nvarchar(50)), N'', N'',
  CAST(CONCAT(a.Bezeichnung1, N' ' + a.Bezeichnung2) AS nvarchar(400)),
  CAST(N'Artikel\' + a.Warengruppe AS nvarchar(250)), a.GeaendertAm
FROM dbo.Artikelstamm AS a
WHERE a.Artikelnummer IS NOT NULL AND a.Gesperrt = 0

UNION ALL
-- Installations at the customer's.
SELECT N'ANL', CAST(n.Kundennummer AS nvarchar(50)), CAST(n.Gewerk AS nvarchar(50)), CAST(n.LfdNr AS nvarchar(50)),
  CAST(CONCAT(n.Bezeichnung, N' · ' + k.Name1, N', ' + n.Standort) AS nvarchar(400)), NULL, n.LetzteWartung
FROM dbo.Anlagen AS n
LEFT JOIN dbo.Kundenstamm AS k ON k.Kundennummer = n.Kundennummer
WHERE n.Kundennummer IS NOT NULL AND n.Gewerk IS NOT NULL AND n.LfdNr IS NOT NULL
GO

-- Reading is enough; the tables behind stay closed to the programs.
-- GRANT SELECT ON dbo.Bild_Vorgaenge TO kvo
