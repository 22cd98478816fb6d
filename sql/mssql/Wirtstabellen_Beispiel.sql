-- A sample of the one table of the host that is read: the document header. For Microsoft SQL Server.
IF OBJECT_ID(N'dbo.BelegKopfZunft', N'U') IS NULL
CREATE TABLE dbo.BelegKopfZunft (
  Belegart nvarchar(50) NULL,
  Belegnummer nvarchar(50) NULL,
  Kundennummer nvarchar(50) NULL,
  Projektnummer nvarchar(50) NULL
)
GO

IF NOT EXISTS (SELECT 1 FROM sys.indexes WHERE name = N'BelegKopfZunft_Beleg'
               AND object_id = OBJECT_ID(N'dbo.BelegKopfZunft'))
CREATE INDEX BelegKopfZunft_Beleg
  ON dbo.BelegKopfZunft (Belegart, Belegnummer)
GO
