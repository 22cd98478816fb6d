#include "host/betrieb/vorgaenge/Vorgangspruefung.h"

#include <algorithm>

#include "host/betrieb/vorgaenge/Vorgangsspalten.h"
#include "host/betrieb/vorgang/Vorgang.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView Nicht_im_Ordner = u"<>\"|?*:/\\";

bool ist_Steuerzeichen(QChar zeichen) {
  return zeichen.category() == QChar::Other_Control;
}

bool hat_halbes_Zeichen(const QString& wert) {
  for (qsizetype i = 0; i < wert.size(); ++i) {
    if (!wert[i].isSurrogate()) continue;
    if (!wert[i].isHighSurrogate() || i + 1 == wert.size() || !wert[i + 1].isLowSurrogate()) return true;
    ++i;
  }
  return false;
}

/// What goes into a statement as it is, and into the name of a folder.
QString pruefe_Teil(const QString& was, const QString& wert) {
  using namespace vorgangspruefung;
  if (wert == "-"_L1) return was + u" ist „-“; ein Teil, den es nicht gibt, bleibt leer"_s;
  if (const QString grund = pruefe_Text(was, wert, vorgangsspalten::eigenschaft(Vorgangsspalte::Key1).laenge);
      !grund.isEmpty())
    return grund;
  if (wert.contains(u'\''))
    return was + u" enthält ein Hochkomma; damit ist keine Anweisung an die Datenbank möglich"_s;
  const auto stelle = std::find_if(wert.begin(), wert.end(), [](QChar c) { return Nicht_im_Ordner.contains(c); });
  if (stelle != wert.end()) return was + u" enthält „%1“, das kein Ordner im Namen haben kann"_s.arg(*stelle);
  if (text::Trim(wert) != wert) return was + u" beginnt oder endet mit einem Leerzeichen"_s;
  return {};
}

}  // namespace

namespace vorgangspruefung {

std::array<Teil, 3> teile(const QString& typ1) {
  const QString typ = vorgang::art_von(typ1).typ1;
  if (typ == "BEL"_L1) return {{{u"Belegart"_s, true}, {u"Belegnummer"_s, true}, {}}};
  if (typ == "MON"_L1) return {{{u"Belegart"_s, true}, {u"Belegnummer"_s, true}, {u"Montagenummer"_s, true}}};
  if (typ == "ART"_L1) return {{{u"Artikelnummer"_s, true}, {}, {}}};
  if (typ == "ANL"_L1) return {{{u"Kunde oder Referenz"_s, true}, {u"Anlage"_s, true}, {u"Nummer der Anlage"_s, true}}};
  return {{{u"Nummer"_s, true}, {u"Nummer, 2. Teil"_s, false}, {u"Nummer, 3. Teil"_s, false}}};
}

QString pruefe_Typ(const QString& typ1) {
  if (text::Trim(typ1).isEmpty()) return u"Die Art fehlt"_s;
  return pruefe_Teil(u"Die Art"_s, typ1);
}

QString pruefe_Schluessel(const QString& typ1, const std::array<QString, 3>& keys) {
  if (const QString grund = pruefe_Typ(typ1); !grund.isEmpty()) return grund;
  const std::array<Teil, 3> verlangte = teile(typ1);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const Teil& teil = verlangte.at(i);
    const QString was = teil.name.isEmpty() ? u"Key%1"_s.arg(i + 1) : teil.name;
    if (teil.noetig && text::Trim(keys.at(i)).isEmpty()) return was + u" fehlt"_s;
    if (const QString grund = pruefe_Teil(was, keys.at(i)); !grund.isEmpty()) return grund;
  }
  return {};
}

QString pruefe_Text(const QString& was, const QString& wert, int laenge, Umbruch umbruch) {
  if (wert.contains(QChar(u'\0'))) return was + u" enthält ein Nullzeichen"_s;
  const auto verboten = [umbruch](QChar c) {
    const bool umbrechend = c == u'\n' || c == u'\r' || c == u'\t';
    return ist_Steuerzeichen(c) && !(umbrechend && umbruch == Umbruch::Erlaubt);
  };
  if (std::any_of(wert.begin(), wert.end(), verboten)) return was + u" enthält ein Steuerzeichen"_s;
  if (hat_halbes_Zeichen(wert)) return was + u" enthält ein halbes Zeichen (ein Surrogat ohne das andere)"_s;
  if (wert.size() > laenge) return was + u" ist länger als %1 Zeichen"_s.arg(laenge);
  return {};
}

QString pruefe_Ordner(const QString& ordner) {
  const auto& eigenschaft = vorgangsspalten::eigenschaft(Vorgangsspalte::Ordner);
  if (const QString grund = pruefe_Text(eigenschaft.name, ordner, eigenschaft.laenge); !grund.isEmpty()) return grund;
  if (ordner.isEmpty() || vorgang::ordner_bleibt_unten(ordner)) return {};
  return u"Ordner ist „%1“; er muss unter der Bildablage bleiben und Namen haben, die jede Freigabe nimmt"_s.arg(
      ordner);
}

}  // namespace vorgangspruefung
