-- A firm's business records, for Microsoft SQL Server 2016 and later: the table that a new database begins with. A firm
-- that has its records elsewhere replaces it by a view of that name with these columns; see Bild_Vorgaenge_Beispiel.sql.
-- Running it again does no harm.
IF OBJECT_ID(N'dbo.Bild_Vorgaenge') IS NULL
CREATE TABLE dbo.Bild_Vorgaenge (
  Typ1 nvarchar(200) NOT NULL,
  Key1 nvarchar(50) NOT NULL,
  Key2 nvarchar(50) NOT NULL,
  Key3 nvarchar(50) NOT NULL,
  Bezeichnung nvarchar(250) NULL,
  Ordner nvarchar(250) NULL,
  Stand datetime NULL
)
GO
