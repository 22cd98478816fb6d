#include "tests/dialogs/overview/Uebersichtstest.h"

#include "store/BasZuordnungen.h"

using namespace Qt::Literals::StringLiterals;

Uebersichtstest::Uebersichtstest() {
  BasZuordnungen::gConnection().reset();
}

Uebersichtstest::~Uebersichtstest() {
  BasZuordnungen::gConnection().reset();
}

void Uebersichtstest::fuege_ein(const Zuordnung& z) {
  const QStringList werte{
      z.key1, z.key2, z.key3, z.key4, z.name, z.ext, z.typ1, z.typ2, z.pfad, z.beschreibung, z.druck};
  db.fuehre_aus(
      u"insert into Bild_Zuordnungen (Key1, Key2, Key3, key4, Bildname, BildExt, Typ1, Typ2, BildPfad, Beschreibung, "
      "Druckkennzeichen, SortIndex) values ('"_s +
      werte.join(u"', '"_s) + u"', 0)"_s);
}

QStringList Uebersichtstest::gespeichert() {
  QStringList alle;
  for (const QStringList& zeile :
      db.zeilen(u"select Typ1, Key1, Key2, Bildname from Bild_Zuordnungen order by rowid"_s))
    alle += zeile.join(u'|');
  return alle;
}

QStringList Uebersichtstest::anweisungen(const QString& anfang) {
  QStringList texte;
  for (const QString& text : db.mitschrift().hole())
    if (text.startsWith(anfang, Qt::CaseInsensitive)) texte += text;
  return texte;
}

void Uebersichtstest::zeige(Form& form, const std::function<void()>& waehrend) {
  bool gelaufen = false;
  QTimer::singleShot(0, &form, [&] {
    gelaufen = true;
    waehrend();
    form.Hide();
  });
  form.Show();
  EXPECT_TRUE(gelaufen);
}

void Uebersichtstest::klicke(TDBGrid& gitter, int zeile, int spalte, Qt::KeyboardModifiers dazu) {
  const QModelIndex zelle = gitter.model()->index(zeile, spalte);
  gitter.scrollTo(zelle);
  eingaben::klicke(*gitter.viewport(), gitter.visualRect(zelle).center(), dazu);
}

void Uebersichtstest::klicke_Knopf(TDBGrid& gitter, int zeile, int spalte) {
  const QRect zelle = gitter.visualRect(gitter.model()->index(zeile, spalte));
  eingaben::klicke(*gitter.viewport(), QPoint(zelle.right() - zelle.height() / 2, zelle.center().y()));
}

void Uebersichtstest::tippe(QWidget& fenster, const QString& text) {
  for (const QChar zeichen : text) QTest::keyClick(fenster.window()->windowHandle(), zeichen.toLatin1());
}

QString Uebersichtstest::gezeigt(const TDBGrid& gitter, int zeile, int spalte) {
  return gitter.model()->index(zeile, spalte).data().toString();
}

QString Uebersichtstest::auswahl(const TDBGrid& gitter) {
  QStringList zeilen;
  for (int i = 0; i < gitter.SelBookmarks().Count(); ++i) zeilen += QString::number(gitter.SelBookmarks().Item(i));
  return zeilen.join(u',');
}

void Uebersichtstest::erwarte_Bericht(const QString& modul, const QString& prozedur, std::int32_t nummer) {
  const auto berichte = core.hole();
  ASSERT_EQ(berichte.size(), 1);
  EXPECT_EQ(berichte[0].Modul, modul);
  EXPECT_EQ(berichte[0].Prozedur, prozedur);
  EXPECT_EQ(berichte[0].Nummer, nummer);
  EXPECT_FALSE(berichte[0].Beschreibung.isEmpty());
  EXPECT_TRUE(berichte[0].MitMeldung);
}
