// Every text of every form in one list: what stands on a control, its tool tip and its access key.
#include <gtest/gtest.h>

#include <QHash>
#include <QKeySequence>
#include <QLabel>
#include <QSet>
#include <memory>
#include <ostream>

#include "dialogs/assignment/frm_BildZuordnung.h"
#include "dialogs/overview/frm_AlleZuordnungen.h"
#include "dialogs/overview/frm_AnzeigeZuordnung.h"
#include "dialogs/search/frm_BilderSuchen.h"
#include "exif/frm_BildInfo.h"
#include "tests/support/Umgebung.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Text {
  QString element;  ///< empty for the form itself
  QString beschriftung;
  QString hinweis;
  QString taste;  ///< with Alt
  friend bool operator==(const Text&, const Text&) = default;
};

void PrintTo(const Text& t, std::ostream* os) {
  const auto s = [](const QString& text) { return '"' + text.toStdString() + '"'; };
  *os << '{' << s(t.element) << ", " << s(t.beschriftung) << ", " << s(t.hinweis) << ", " << s(t.taste) << '}';
}

// clang-format off: a row a control
/// As designed: before loading, which fills in what belongs to a record. {control, caption, tool tip, access key}; the
/// first row of a form is the form itself.
const QHash<QString, QList<Text>> Liste{
    {u"frm_BildZuordnung"_s,
        {
            {{}, u"Bildzuordnung"_s, {}, {}},
            {u"SSS_BildZuordnung"_s, {}, {}, {}},
            {u"SSP_Panel(0)"_s, u"  Beleg- oder Monatgeauftrags-Informationen"_s, {}, {}},
            {u"SSC_Bildbearbeitung"_s, {}, u"Bildbearbeitungsprogramm auswählen und starten"_s, {}},
            {u"SSC_Drehen90"_s, {}, u"Bild um 90° nach rechts  drehen"_s, {}},
            {u"SSC_Drehen270"_s, {}, u"Bild um 270° nach rechts  drehen"_s, {}},
            {u"SSC_Drehen180"_s, {}, u"Bild um 180° nach rechts  drehen"_s, {}},
            {u"SSC_Aktualisieren"_s, {}, u"Zuordnung neu einlesen"_s, {}},
            {u"SSC_ExifInfo"_s, {}, u"Erweiterte Bildeigenschaften"_s, {}},
            {u"SSP_Anzahl(0)"_s, u"Bild:"_s, {}, {}},
            {u"SSP_Anzahl(1)"_s, u"0"_s, {}, {}},
            {u"SSP_Anzahl(2)"_s, u"von"_s, {}, {}},
            {u"SSP_Anzahl(3)"_s, u"0"_s, {}, {}},
            {u"SSP_Panel(1)"_s, {}, {}, {}},
            {u"SSP_NameChanged"_s, {}, {}, {}},
            {u"cmd_OriginalName"_s, {}, u"Auf Original-Namen zurücksetzen"_s, {}},
            {u"SSP_WarnungName"_s, u"Dateiname schon vorhanden!"_s, {}, {}},
            {u"txt_BildName"_s, {}, u"Nicht erlaubt sind \\ / : * ? \" < > | ' und Steuerzeichen"_s, {}},
            {u"txt_BildExt"_s, {}, {}, {}},
            {u"lbl_Anzeige(0)"_s, u"Name:"_s, {}, {}},
            {u"chk_Drucken"_s, u"Drucken"_s, {}, {}},
            {u"chk_GesamteSeite"_s, u"Gesamte Seite"_s, {}, {}},
            {u"chk_NeueSeite"_s, u"Neue Seite"_s, {}, {}},
            {u"chk_AlsAnhang"_s, u"Als Anhang"_s, {}, {}},
            {u"chk_Delete"_s, u"Aus Zuordnung entfernen"_s, {}, {}},
            {u"txt_BildText"_s, {}, {}, {}},
            {u"lbl_Anzeige(1)"_s, u"Drucktext:"_s, {}, {}},
            {u"SSP_Panel(2)"_s, {}, {}, {}},
            {u"Pic_Bearbeitung"_s, {}, u"Bearbeitungsprogramm starten mit Doppelklick"_s, {}},
            {u"Pic_Dummy"_s, {}, {}, {}},
            {u"Pic_Dummy0"_s, {}, {}, {}},
            {u"Pic_Blank"_s, {}, {}, {}},
            {u"lbl_Beschreibung"_s, u"Bild-Info:"_s, {}, {}},
            {u"txt_BildInfo"_s, {}, {}, {}},
            {u"SSP_Panel(3)"_s, {}, {}, {}},
            {u"Pic_Thumb(0)"_s, {}, u"Bearbeitungsprogramm starten mit Doppelklick"_s, {}},
            {u"Shp_Thump"_s, {}, {}, {}},
            {u"Shp_Sort"_s, {}, {}, {}},
            {u"SSC_Scroll_Left"_s, {}, u"Streifen um ein Bild nach links"_s, {}},
            {u"SSC_Scroll_Right"_s, {}, u"Streifen um ein Bild nach rechts"_s, {}},
            {u"SSC_BilderLaden"_s, u"&Bilder suchen   "_s, {}, u"B"_s},
            {u"SSC_AlleZuordnungen"_s, u"      &Alle Zuordnungen des   Bildes anzeigen      "_s, {}, u"A"_s},
            {u"SSC_WeitereZuordnungen"_s, u"      &Weitere Zuordnungen    bearbeiten           "_s, {}, u"W"_s},
            {u"SSR_Sortierung"_s, u"         Sortieren"_s, u"Schaltet in den Sortier-Modus um"_s, {}},
            {u"SSC_ZuordnungSpeichern"_s, u"Zuordnung &speichern  "_s, {}, u"S"_s},
            {u"cmd_Abbruch"_s, u"&Zurück"_s, {}, u"Z"_s},
        }},
    {u"frm_BilderSuchen"_s,
        {
            {{}, {}, {}, {}},
            {u"SSC_Drehen"_s, {}, u"Bild 90° nach rechts  drehen"_s, {}},
            {u"SSC_Bildbearbeitung"_s, {}, u"Bildbearbeitungsprogramm auswählen und starten"_s, {}},
            {u"cmd_EinlesenAbrrechen"_s, u"&Einlesen abbrechen"_s, {}, u"E"_s},
            {u"Pic_Blank"_s, {}, {}, {}},
            {u"cmd_TextSpeichern"_s, u"&Info speichern"_s, {}, u"I"_s},
            {u"txt_Info"_s, {}, {}, {}},
            {u"cmd_Abbruch"_s, u"&Zurück"_s, {}, u"Z"_s},
            {u"cmd_Uebernehmen"_s, u"&Übernehmen"_s, {}, u"Ü"_s},
            {u"SSP_Fortschritt"_s, {}, {}, {}},
            {u"SSP_Anzahl"_s, {}, {}, {}},
            {u"cbo_BildTypen"_s, {}, u"Dateityp"_s, {}},
            {u"Dir1"_s, {}, u"Ordner mit Doppelklick oder Eingabetaste öffnen"_s, {}},
            {u"lvwContent"_s, {}, {}, {}},
            {u"SSP_Liste"_s, {}, {}, {}},
            {u"SSP_Info"_s, u"Infotext für die ausgewählten Dateien"_s, {}, {}},
            {u"ImageCombo1"_s, {}, u"Laufwerk"_s, {}},
        }},
    {u"frm_AlleZuordnungen"_s,
        {
            {{}, u"Alle Zuordnungen"_s, {}, {}},
            {u"TDBG_Zuordnungen"_s, {}, u"Zuordnungen auswählen, die gelöscht werden sollen"_s, {}},
            {u"cmd_AlleLoeschen"_s, u"&Alle markieren"_s, u"Alle Zuordnungen auswählen"_s, u"A"_s},
            {u"cmd_Loeschen"_s, u"&Löschen"_s, u"Ausgewählte Zuordnungen löschen"_s, u"L"_s},
            {u"cmd_Abbrechen"_s, u"&Zurück"_s, u"Fenster schließen"_s, u"Z"_s},
            {u"SSP_Info(0)"_s, u"Für Datei: "_s, {}, {}},
            {u"SSP_Info(1)"_s, {}, {}, {}},
        }},
    {u"frm_AnzeigeZuordnung"_s,
        {
            {{}, u"Anzeige der Zuordnungen"_s, {}, {}},
            {u"TDBG_Zuordnungen"_s, {}, u"Angekreuzte Bilder werden zugeordnet"_s, {}},
            {u"TDBG_WeitereZuordnungen"_s, {}, u"Artikel, denen die Bilder zugeordnet werden"_s, {}},
            {u"SSC_ZuordnungSpeichern"_s, u"Zuordnung speichern  "_s, u"Angekreuzte Bilder den Artikeln zuordnen"_s,
                {}},
            {u"cmd_Abbrechen"_s, u"&Zurück"_s, u"Fenster schließen, ohne zuzuordnen"_s, u"Z"_s},
            {u"SSP_Info"_s, {}, {}, {}},
            {u"SSP_Anzeige"_s, {}, {}, {}},
            {u"pic_Anzeige"_s, {}, {}, {}},
            {u"SSP_WeitereZuordnungen"_s, u"   Weitere Zuordnungen für:"_s, {}, {}},
            {u"Pic_Dummy"_s, {}, {}, {}},
            {u"Pic_Blank"_s, {}, {}, {}},
            {u"btnAuswahl"_s, {}, {}, {}},
        }},
    {u"frm_BildInfo"_s,
        {
            {{}, u"Eigenschaften"_s, {}, {}},
            {u"Sft_Eigenschaften"_s, {}, u"Exif-Angaben des Bildes"_s, {}},
            {u"cmd_OK"_s, u"OK"_s, u"Eigenschaften schließen"_s, {}},
        }},
};
// clang-format on

QString beschriftung_von(const QWidget& widget) {
  if (const auto* knopf = dynamic_cast<const SSCommand*>(&widget)) return knopf->Caption();
  if (const auto* schalter = dynamic_cast<const SSRibbon*>(&widget)) return schalter->Caption();
  if (const auto* haken = dynamic_cast<const CheckBox*>(&widget)) return haken->Caption();
  if (const auto* flaeche = dynamic_cast<const Textflaeche*>(&widget)) return flaeche->Caption();
  return {};
}

QString taste_von(const QWidget& widget) {
  const auto* const knopf = qobject_cast<const QAbstractButton*>(&widget);
  const QString taste = knopf ? knopf->shortcut().toString() : QString();
  EXPECT_TRUE(taste.isEmpty() || taste.startsWith(u"Alt+"_s)) << taste.toStdString();
  return taste.mid(4);
}

/// The form and all that it is made of, with whatever else says something on it.
template <class Formular>
QList<Text> texte_von(const Formular& form) {
  QList<Text> texte{{{}, form.Caption(), form.toolTip(), {}}};
  for (const QWidget* widget : form.template findChildren<QWidget*>()) {
    const auto* const zeile = qobject_cast<const QLabel*>(widget);
    const auto* const knopf = qobject_cast<const QAbstractButton*>(widget);
    if (dynamic_cast<const Steuerelement*>(widget))
      texte.append({widget->objectName(), beschriftung_von(*widget), widget->toolTip(), taste_von(*widget)});
    else if ((zeile && !zeile->text().isEmpty()) || (knopf && !knopf->text().isEmpty()))
      ADD_FAILURE() << "no control of the form's: " << widget->objectName().toStdString();
  }
  return texte;
}

template <class Formular>
class Formulartexte : public ::testing::Test {
 protected:
  const Formular form;
};

using Formulare =
    ::testing::Types<frm_BildZuordnung, frm_BilderSuchen, frm_AlleZuordnungen, frm_AnzeigeZuordnung, frm_BildInfo>;

}  // namespace

TYPED_TEST_SUITE(Formulartexte, Formulare);

TYPED_TEST(Formulartexte, AreThoseOfTheListAndNoOthers) {
  const QList<Text> soll = Liste.value(this->form.Name());
  const QList<Text> ist = texte_von(this->form);
  for (const Text& text : ist) EXPECT_TRUE(soll.contains(text)) << "not in the list: " << testing::PrintToString(text);
  for (const Text& text : soll) EXPECT_TRUE(ist.contains(text)) << "not on the form: " << testing::PrintToString(text);
  EXPECT_EQ(ist.size(), soll.size());
}

TYPED_TEST(Formulartexte, HaveEachAccessKeyOnceAndMarkItInTheCaption) {
  QSet<QString> tasten;
  for (const Text& text : texte_von(this->form)) {
    const qsizetype marke = text.beschriftung.indexOf(u'&');
    EXPECT_EQ(text.taste, marke < 0 ? QString() : text.beschriftung.mid(marke + 1, 1).toUpper());
    if (text.taste.isEmpty()) continue;
    EXPECT_FALSE(tasten.contains(text.taste)) << text.taste.toStdString();
    tasten.insert(text.taste);
  }
}
