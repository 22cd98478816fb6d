-- Assignments of picture files to business records, for Microsoft SQL Server 2016 and later.
-- Running it again does no harm, and a table of an older installation gets the columns that it lacks, its rows kept.
-- No uniqueness on purpose: a clone of a record may be stored beside its model.
-- The eight columns of the identity are together 1700 bytes wide, the most that an index key may have.
IF OBJECT_ID(N'dbo.Bild_Zuordnungen', N'U') IS NULL
CREATE TABLE dbo.Bild_Zuordnungen (
  Key1 nvarchar(50) NULL,
  Key2 nvarchar(50) NULL,
  Key3 nvarchar(50) NULL,
  key4 nvarchar(50) NULL,
  Bildname nvarchar(50) NULL,
  BildExt nvarchar(200) NULL,
  Typ1 nvarchar(200) NULL,
  Typ2 nvarchar(200) NULL,
  BildPfad nvarchar(250) NULL,
  Beschreibung nvarchar(250) NULL,
  Druckkennzeichen char(50) NULL,
  Grafik_Ursprung nvarchar(250) NULL,
  GrafikAnbNr nvarchar(250) NULL,
  SortIndex smallint NULL
)
GO

-- What came in later, each for itself: a column that stands there stays as it is, whatever its width.
IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Key1') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Key1 nvarchar(50) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Key2') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Key2 nvarchar(50) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Key3') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Key3 nvarchar(50) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'key4') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD key4 nvarchar(50) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Bildname') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Bildname nvarchar(50) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'BildExt') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD BildExt nvarchar(200) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Typ1') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Typ1 nvarchar(200) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Typ2') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Typ2 nvarchar(200) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'BildPfad') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD BildPfad nvarchar(250) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Beschreibung') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Beschreibung nvarchar(250) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Druckkennzeichen') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Druckkennzeichen char(50) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'Grafik_Ursprung') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD Grafik_Ursprung nvarchar(250) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'GrafikAnbNr') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD GrafikAnbNr nvarchar(250) NULL
GO

IF COL_LENGTH(N'dbo.Bild_Zuordnungen', N'SortIndex') IS NULL
ALTER TABLE dbo.Bild_Zuordnungen ADD SortIndex smallint NULL
GO

-- One record's assignments, and one assignment by its identity.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'Bild_Zuordnungen_Schluessel'
               AND object_id = OBJECT_ID(N'dbo.Bild_Zuordnungen'))
CREATE INDEX Bild_Zuordnungen_Schluessel
  ON dbo.Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2)
GO

-- All records of a kind.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'Bild_Zuordnungen_Typ'
               AND object_id = OBJECT_ID(N'dbo.Bild_Zuordnungen'))
CREATE INDEX Bild_Zuordnungen_Typ
  ON dbo.Bild_Zuordnungen (Typ1, Key1, Key2, Key3)
GO

-- All assignments of a picture file.
IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'Bild_Zuordnungen_Datei'
               AND object_id = OBJECT_ID(N'dbo.Bild_Zuordnungen'))
CREATE INDEX Bild_Zuordnungen_Datei
  ON dbo.Bild_Zuordnungen (Bildname, BildExt, BildPfad)
GO
