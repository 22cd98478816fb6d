#include "host/Sitzung.h"

#include <QHash>
#include <algorithm>
#include <limits>

#include "host/Ausgabe.h"
#include "platform/adodb/Verbindungszeichenfolge.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString gegeben_oder_umgebung(const Aufruf& aufruf, const QString& option, const char* umgebung) {
  return aufruf.wert(option).value_or(qEnvironmentVariable(umgebung));
}

QString geprueft(const Aufruf& aufruf, const QString& option, const QString& ohne_angabe) {
  const std::optional<QString> wert = aufruf.wert(option);
  if (!wert) return ohne_angabe;
  namen::pruefe_schluessel(option, *wert);
  return wert->isEmpty() ? u"-"_s : *wert;
}

Datensatz datensatz(const Aufruf& aufruf, const QString& ohne_angabe) {
  return {geprueft(aufruf, u"key1"_s, ohne_angabe), geprueft(aufruf, u"key2"_s, ohne_angabe),
          geprueft(aufruf, u"key3"_s, ohne_angabe), geprueft(aufruf, u"key4"_s, ohne_angabe),
          geprueft(aufruf, u"typ1"_s, ohne_angabe), geprueft(aufruf, u"typ2"_s, ohne_angabe)};
}

/// The condition of a reading of our own, on the same rows as the store's.
QString bedingung(const Datensatz& satz, const namen::Bilddatei& bild, const QString& pfad) {
  QString text;
  const auto dazu = [&](QLatin1StringView spalte, const QString& wert) {
    if (!wert.isEmpty()) text += (text.isEmpty() ? u" where "_s : u" and "_s) + spalte + u" = '"_s + wert + u'\'';
  };
  dazu("Key1"_L1, satz.key1);
  dazu("Key2"_L1, satz.key2);
  dazu("Key3"_L1, satz.key3);
  dazu("key4"_L1, satz.key4);
  dazu("Bildname"_L1, bild.name);
  dazu("BildExt"_L1, bild.ext);
  dazu("Typ1"_L1, satz.typ1);
  dazu("Typ2"_L1, satz.typ2);
  dazu("BildPfad"_L1, pfad);
  return text;
}

}  // namespace

Datensatz Datensatz::genau(const Aufruf& aufruf) {
  aufruf.noetig(u"key1"_s);
  aufruf.noetig(u"typ1"_s);
  return datensatz(aufruf, u"-"_s);
}

Datensatz Datensatz::filter(const Aufruf& aufruf) {
  return datensatz(aufruf, {});
}

std::optional<QString> bildwurzel_wenn_genannt(const Aufruf& aufruf) {
  const QString angabe = gegeben_oder_umgebung(aufruf, u"bilder"_s, "KVOBILD_BILDER");
  if (angabe.isEmpty()) return std::nullopt;
  const QString pfad = namen::tabellenpfad(angabe);
  if (!FileSystemObject().FolderExists(pfad))
    throw Abbruch(Ausgang::Datei, u"Die Bildablage „%1“ gibt es nicht."_s.arg(angabe));
  const QString laufwerk = u"P:"_s;
  Pfadkarte::aktuell().setze(laufwerk, QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(pfad)));
  return laufwerk;
}

QString bildwurzel(const Aufruf& aufruf) {
  if (const std::optional<QString> wurzel = bildwurzel_wenn_genannt(aufruf)) return *wurzel;
  throw Abbruch(Ausgang::Aufruf, u"Es fehlt „--bilder“, die Wurzel der Bildablage."_s);
}

QString verbindungszeichenfolge(const Aufruf& aufruf) {
  const QString angabe = gegeben_oder_umgebung(aufruf, u"verbindung"_s, "KVOBILD_VERBINDUNG");
  if (angabe.isEmpty()) throw Abbruch(Ausgang::Aufruf, u"Es fehlt „--verbindung“, die Datenbank."_s);
  if (angabe.contains(u'=')) return angabe;
  return u"Provider=SQLite;Data Source="_s + adodb::Verbindungszeichenfolge::als_wert(angabe);
}

std::optional<QString> datenbankdatei(const QString& verbindung) {
  const adodb::Verbindungszeichenfolge teile(verbindung);
  if (teile.wert(u"Provider"_s).value_or(QString()).compare("SQLite"_L1, Qt::CaseInsensitive) != 0) return std::nullopt;
  const std::optional<QString> datei = teile.wert(u"Data Source"_s);
  return datei ? std::optional(namen::tabellenpfad(*datei)) : std::nullopt;
}

std::shared_ptr<adodb::Connection> oeffne(const QString& verbindung) {
  auto offene = std::make_shared<adodb::Connection>();
  offene->CursorLocation(adodb::adUseClient);
  if (const auto grund = versuche([&] { offene->Open(verbindung); }))
    throw Abbruch(Ausgang::Datenbank, u"Die Datenbank ist nicht zu erreichen: "_s + grund->Beschreibung());
  return offene;
}

/// Says each report at once and counts them, since a result of the store can't be told from an empty one.
class Sitzung::Core final : public KVOCore {
 public:
  void FehlerMelden(const QString& modul, const QString& prozedur, std::int32_t nummer, const QString& beschreibung,
                    bool mitMeldung) override {
    ++anzahl;
    if (mitMeldung)
      ausgabe::meldung(u"Fehler %1 in %2.%3: %4"_s.arg(QString::number(nummer), modul, prozedur, beschreibung));
  }
  std::int32_t anzahl = 0;
};

Sitzung::Sitzung(const Aufruf& aufruf) : core_(std::make_shared<Core>()), vorher_(KVOCore::setze(core_)) {
  const QString verbindung = verbindungszeichenfolge(aufruf);
  if (const auto datei = datenbankdatei(verbindung); datei && !FileSystemObject().FileExists(*datei))
    throw Abbruch(Ausgang::Datenbank,
                  u"Die Datenbank „%1“ gibt es nicht; „kvobild anlegen“ legt sie an."_s.arg(*datei));
  verbindung_ = oeffne(verbindung);
  store_.Init(verbindung, verbindung_, {});
}

Sitzung::~Sitzung() {
  KVOCore::setze(vorher_);
}

std::int32_t Sitzung::berichte() const {
  return core_->anzahl;
}

bool Sitzung::lies(const Datensatz& satz) {
  return lies_mit(satz, {}, {});
}

bool Sitzung::lies(const QString& pfad, const namen::Bilddatei& bild) {
  return lies_mit({}, bild, pfad);
}

bool Sitzung::lies_mit(const Datensatz& satz, const namen::Bilddatei& bild, const QString& pfad) {
  const std::int32_t vorher = berichte();
  const QString frei = pfad.isEmpty() ? QString() : u"BildPfad = '%1'"_s.arg(pfad);
  const bool gefunden = store_.FKT_LeseBilder(satz.key1, satz.key2, satz.key3, satz.key4, bild.name, bild.ext,
                                              satz.typ1, satz.typ2, frei);
  if (berichte() != vorher)
    throw Abbruch(Ausgang::Datenbank,
                  u"Die Zuordnungen sind nicht zu lesen. Fehlt die Tabelle, legt „kvobild anlegen“ sie an."_s);
  lies_sortindex(bedingung(satz, bild, pfad));
  return gefunden;
}

void Sitzung::lies_sortindex(const QString& bedingung) {
  const QStringList spalten{u"Key1"_s,    u"Key2"_s, u"Key3"_s, u"key4"_s,     u"Bildname"_s,
                            u"BildExt"_s, u"Typ1"_s, u"Typ2"_s, u"SortIndex"_s};
  const auto satz = verbindung_->Execute(u"Select "_s + spalten.join(u", "_s) + u" from Bild_Zuordnungen"_s +
                                         bedingung + u" order by SortIndex"_s);
  // Rows that share an identity are told apart by their order, which is the same in both readings.
  QHash<QString, QList<std::int64_t>> gespeichert;
  for (; !satz->Eof(); satz->MoveNext()) {
    QStringList kennung;
    for (std::int32_t i = 0; i < 8; ++i) kennung.append(satz->Text(i));
    gespeichert[kennung.join(u'\x1f')].append(satz->Text(8).toLongLong());
  }
  sortindex_.clear();
  for (std::int32_t i = 0; i < store_.AnzahlPos(); ++i) {
    store_.AktInd(i);
    const clsBilderSpeicher& b = *store_.AktBildObj;
    QList<std::int64_t>& werte = gespeichert[QStringList{b.Bild_Key1, b.Bild_Key2, b.Bild_Key3, b.Bild_Key4,
                                                         b.Bild_Bildname, b.Bild_BildExt, b.Bild_Typ1, b.Bild_Typ2}
                                                 .join(u'\x1f')];
    const std::int64_t wert = werte.isEmpty() ? 0 : werte.takeFirst();
    sortindex_.push_back(wert);
    using Grenzen = std::numeric_limits<std::int16_t>;
    store_.Bild_SortIndex(static_cast<int>(std::clamp<std::int64_t>(wert, Grenzen::min(), Grenzen::max())));
  }
}

std::vector<std::int32_t> Sitzung::zeilen_von(const namen::Bilddatei& bild) {
  std::vector<std::int32_t> zeilen;
  for (std::int32_t i = 0; i < store_.AnzahlPos(); ++i) {
    store_.AktInd(i);
    if (aktuelles_bild().gleich(bild)) zeilen.push_back(i);
  }
  return zeilen;
}

bool Sitzung::speichere() {
  const std::int32_t vorher = berichte();
  return store_.FKT_SpeichernBilder() && berichte() == vorher;
}
