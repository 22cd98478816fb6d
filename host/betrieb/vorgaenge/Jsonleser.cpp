#include "host/betrieb/vorgaenge/Jsonleser.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <cmath>

#include "host/betrieb/vorgaenge/Vorgangsspalten.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whole numbers up to here are exact in a number of JSON.
constexpr double Groesste_Zahl = 9'007'199'254'740'991.0;

/// A number as people write it. A number of JSON is a double; a longer one would come out as another.
std::optional<QString> als_Text(double zahl) {
  if (std::floor(zahl) != zahl) return QString::number(zahl, 'g', 15);
  if (std::abs(zahl) > Groesste_Zahl) return std::nullopt;
  return QString::number(static_cast<qint64>(zahl));
}

void nimm_Wert(const QString& name, const QJsonValue& wert, Listenzeile& zeile) {
  const auto spalte = vorgangsspalten::nach_Namen(name);
  if (!spalte) return;
  Listenwert& ziel = zeile.werte[static_cast<qsizetype>(vorgangsspalten::platz(*spalte))];
  if (ziel.genannt) zeile.fehler = u"die Spalte %1 steht zweimal da"_s.arg(vorgangsspalten::eigenschaft(*spalte).name);
  ziel.genannt = true;
  ziel.null = wert.isNull();
  if (wert.isString())
    ziel.text = wert.toString();
  else if (const auto zahl = wert.isDouble() ? als_Text(wert.toDouble()) : std::nullopt)
    ziel.text = *zahl;
  else if (!wert.isNull())
    zeile.fehler = u"„%1“ ist weder ein Text noch eine Zahl, die genau wäre"_s.arg(name);
}

void lies_Objekt(const QByteArray& bytes, Listenzeile& zeile) {
  QJsonParseError lage{};
  const QJsonDocument dokument = QJsonDocument::fromJson(bytes, &lage);
  if (lage.error == QJsonParseError::IllegalUTF8String) {
    zeile.fehler = u"das Objekt ist kein gültiges UTF-8"_s;
    return;
  }
  if (lage.error != QJsonParseError::NoError || !dokument.isObject()) {
    zeile.fehler = u"das Objekt ist kein gültiges JSON"_s;
    return;
  }
  const QJsonObject objekt = dokument.object();
  zeile.werte.resize(static_cast<qsizetype>(Vorgangsspaltenzahl));
  for (auto i = objekt.begin(); i != objekt.end(); ++i) nimm_Wert(i.key(), i.value(), zeile);
}

}  // namespace

Jsonleser::Jsonleser(const QString& datei) : strom_(datei) {
  von_vorn();
}

void Jsonleser::von_vorn() {
  strom_.von_vorn();
  nummer_ = 1;
  liste_ = Liste::Keine;
  angefangen_ = false;
  for (const int byte : {0xEF, 0xBB, 0xBF})
    if (strom_.sieh() == byte) strom_.nimm();
}

QStringList Jsonleser::feste_Namen() const {
  QStringList namen;
  for (const Vorgangsspalte spalte : vorgangsspalten::alle()) namen.append(vorgangsspalten::eigenschaft(spalte).name);
  return namen;
}

int Jsonleser::nimm() {
  const int byte = strom_.nimm();
  if (byte == '\n') ++nummer_;
  return byte;
}

void Jsonleser::ueberspringe_Zwischenraum() {
  for (int byte = strom_.sieh(); byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n' || byte == ',';
       byte = strom_.sieh())
    nimm();
}

void Jsonleser::ueberspringe_Zeile() {
  for (int byte = nimm(); byte >= 0 && byte != '\n';) byte = nimm();
}

bool Jsonleser::naechste(Listenzeile& zeile) {
  for (;;) {
    ueberspringe_Zwischenraum();
    zeile = {nummer_, {}, {}};
    const int byte = strom_.sieh();
    if (byte < 0) return am_Ende(zeile);
    if (byte == '{' && liste_ != Liste::Zu) {
      angefangen_ = true;
      const QByteArray objekt = nimm_Objekt(zeile.fehler);
      if (zeile.fehler.isEmpty()) lies_Objekt(objekt, zeile);
      return true;
    }
    if (nimm_Liste(zeile)) continue;
    zeile.fehler =
        liste_ == Liste::Zu ? u"hinter dem Ende der Liste steht noch etwas"_s : u"hier beginnt kein Objekt („{“)"_s;
    ueberspringe_Zeile();
    return true;
  }
}

/// A bracket of the one array.
bool Jsonleser::nimm_Liste(Listenzeile& zeile) {
  const bool auf = strom_.sieh() == '[' && liste_ == Liste::Keine && !angefangen_;
  const bool zu = strom_.sieh() == ']' && liste_ == Liste::Offen;
  if (!auf && !zu) return false;
  nimm();
  liste_ = auf ? Liste::Offen : Liste::Zu;
  zeile.nummer = nummer_;
  return true;
}

/// A file that was cut off says so: what is missing behind can't be seen otherwise.
bool Jsonleser::am_Ende(Listenzeile& zeile) {
  if (liste_ != Liste::Offen) return false;
  liste_ = Liste::Zu;
  zeile.fehler = u"die Liste hört auf, ehe sie zu Ende ist („]“ fehlt)"_s;
  return true;
}

/// The bytes of the object that begins here, or why it has no end.
QByteArray Jsonleser::nimm_Objekt(QString& fehler) {
  QByteArray bytes;
  int tiefe = 0;
  bool im_Text = false;
  for (int byte = nimm(); byte >= 0; byte = nimm()) {
    // No text of JSON has a line break of its own, so its quotes do not match.
    if (im_Text && byte == '\n') {
      fehler = u"die Anführungszeichen gehen nicht auf"_s;
      return {};
    }
    if (bytes.size() == Groesste_Zeile) {
      fehler = u"das Objekt ist länger als %1 KB"_s.arg(Groesste_Zeile / 1024);
      ueberspringe_Zeile();
      return {};
    }
    bytes.append(static_cast<char>(byte));
    if (byte == '\0') fehler = u"das Objekt enthält ein Nullzeichen"_s;
    if (im_Text && byte == '\\') {
      if (const int naechstes = nimm(); naechstes >= 0) bytes.append(static_cast<char>(naechstes));
      continue;
    }
    if (byte == '"') im_Text = !im_Text;
    if (im_Text) continue;
    tiefe += byte == '{' || byte == '[' ? 1 : byte == '}' || byte == ']' ? -1 : 0;
    if (tiefe == 0) return bytes;
  }
  fehler = u"das Objekt hört auf, ehe es zu Ende ist"_s;
  return {};
}
