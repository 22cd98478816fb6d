-- A sample of the one table of the host that is read: the document header. For SQLite.
CREATE TABLE IF NOT EXISTS BelegKopfZunft (
  Belegart TEXT COLLATE SERVERTEXT NULL CONSTRAINT "Belegart fasst 50 Zeichen" CHECK (LEN(Belegart) <= 50),
  Belegnummer TEXT COLLATE SERVERTEXT NULL CONSTRAINT "Belegnummer fasst 50 Zeichen" CHECK (LEN(Belegnummer) <= 50),
  Kundennummer TEXT COLLATE SERVERTEXT NULL CONSTRAINT "Kundennummer fasst 50 Zeichen" CHECK (LEN(Kundennummer) <= 50),
  Projektnummer TEXT COLLATE SERVERTEXT NULL CONSTRAINT "Projektnummer fasst 50 Zeichen" CHECK (LEN(Projektnummer) <= 50)
);

CREATE INDEX IF NOT EXISTS BelegKopfZunft_Beleg
  ON BelegKopfZunft (Belegart, Belegnummer);
