#include "tests/exif/Referenz.h"

#include <ostream>
#include <set>

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Windows1252.h"
#include "tests/support/Fehler.h"

namespace {

class Naiv {
 public:
  explicit Naiv(const QByteArray& inhalt) : b_(inhalt.begin(), inhalt.end()) { b_.push_back(0); }

  bool load() {
    if (!finde()) return false;
    const std::int64_t ifd0 = lang(app1_ + 14);
    geladen = true;
    const std::int64_t p = i32(tiff_ + ifd0);
    const int n = kurz(p);
    try {
      gehe(p, n);
    } catch (const Laufzeitfehler&) {
    }
    return true;
  }

  bool geladen = false;
  std::vector<Exif_Entry> eintraege;

 private:
  static std::int64_t i32(std::int64_t zahl) {
    if (zahl > 2147483647 || zahl < -2147483648LL) throw Laufzeitfehler(6);
    return zahl;
  }
  std::int64_t byte(std::int64_t i) const {
    if (i32(i) < 0 || i >= std::ssize(b_)) throw Laufzeitfehler(9);
    return b_[static_cast<std::size_t>(i)];
  }
  QString zeichen(std::int64_t i) const { return windows1252::decode(QByteArray(1, static_cast<char>(byte(i)))); }
  bool intel() const { return byte(tiff_) == 0x49; }
  int kurz(std::int64_t i) const {
    const std::int64_t zahl = intel() ? byte(i) + 256 * byte(i + 1) : 256 * byte(i) + byte(i + 1);
    return static_cast<int>(zahl);
  }
  std::int64_t lang(std::int64_t i) const {
    const std::int64_t a = byte(i);
    const std::int64_t b = byte(i + 1);
    const std::int64_t c = byte(i + 2);
    const std::int64_t d = byte(i + 3);
    return i32(intel() ? a + 256 * (b + 256 * (c + 256 * d)) : d + 256 * (c + 256 * (b + 256 * a)));
  }

  bool finde() {
    if (b_.size() < 2) return false;
    if (b_[0] != 0xFF && b_[1] != 0xD8) return false;
    for (std::size_t i = 2; i + 1 < b_.size(); ++i) {
      if (b_[i] == 0xFF && b_[i + 1] == 0xE1) {
        app1_ = static_cast<std::int64_t>(i);
        break;
      }
    }
    tiff_ = app1_ + 10;
    QByteArray wort;
    for (std::int64_t i = app1_ + 4; i < app1_ + 8 && i < std::ssize(b_); ++i) wort += static_cast<char>(byte(i));
    return wort == "Exif";
  }

  void gehe(std::int64_t p, int n) {
    std::set<std::int64_t> gesehen;
    bool unter = false;
    while (true) {
      if (!gesehen.insert(p).second) throw Laufzeitfehler(7);
      const std::size_t u = eintraege.size();
      if (u + static_cast<std::size_t>(n) == 0) throw Laufzeitfehler(9);
      if (u + static_cast<std::size_t>(n) > 1000000) throw Laufzeitfehler(7);
      eintraege.resize(u + static_cast<std::size_t>(n));
      for (int i = 0; i < n; ++i) eintrag(p + 2 + 12 * i, eintraege[u + static_cast<std::size_t>(i)]);
      std::int64_t weiter = unter ? 0 : lang(p + 2 + 12 * n);
      if (weiter == 0 && !unter) {
        weiter = zeiger_;
        unter = true;
      }
      if (weiter == 0) return;
      p = i32(tiff_ + weiter);
      n = kurz(p);
    }
  }

  void eintrag(std::int64_t e, Exif_Entry& ziel) {
    ziel.Tag_Id = kurz(e);
    ziel.Format_Code = kurz(e + 2);
    ziel.Item_Count = static_cast<std::int32_t>(lang(e + 4));
    wert(e + 8, ziel);
    if (ziel.Tag_Id == 34665) zeiger_ = als_Zahl(ziel.Value);
  }

  static std::int64_t als_Zahl(const Variant& wert) {
    if (std::holds_alternative<Empty>(wert)) return 0;
    if (std::holds_alternative<std::int32_t>(wert)) return std::get<std::int32_t>(wert);
    const QString text = std::get<QString>(wert);
    for (const QChar c : text)
      if (!QStringLiteral("0123456789").contains(c)) throw Laufzeitfehler(13);
    bool ok = false;
    const int zahl = text.toInt(&ok);
    if (!ok) throw Laufzeitfehler(6);
    return zahl;
  }

  void wert(std::int64_t f, Exif_Entry& ziel) {
    const int format = ziel.Format_Code;
    if (format == 5 || format == 10) return bruch(f, ziel);
    if (format < 1 || format > 10) return;
    const std::int64_t groesse = (format == 4 || format == 9) ? 4 : (format == 3 || format == 8) ? 2 : 1;
    if (i32(ziel.Item_Count * groesse) <= 4) {
      ziel.Value = im_Feld(f, format);
      return;
    }
    ziel.Data_Offset = static_cast<std::int32_t>(lang(f));
    draussen(tiff_ + ziel.Data_Offset, ziel.Item_Count, format, ziel.Value);
  }

  void bruch(std::int64_t f, Exif_Entry& ziel) {
    ziel.Data_Offset = static_cast<std::int32_t>(lang(f));
    const std::int64_t d = tiff_ + ziel.Data_Offset;
    const std::int64_t zaehler = lang(d);
    const std::int64_t nenner = lang(d + 4);
    ziel.Value = QStringLiteral("%1/%2").arg(zaehler).arg(nenner);
  }

  Variant im_Feld(std::int64_t f, int format) const {
    const std::int64_t b8 = byte(f);
    const std::int64_t b9 = byte(f + 1);
    const std::int64_t b10 = byte(f + 2);
    const std::int64_t b11 = byte(f + 3);
    switch (format) {
      case 3:
      case 8:
        return static_cast<std::int32_t>(intel() ? b11 * 256 + b10 + b9 * 256 + b8 : b8 * 256 + b9 + b10 * 256 + b11);
      case 4:
      case 9:
        return static_cast<std::int32_t>(lang(f));
      case 2:
      case 7:
        if (intel()) return QString(zeichen(f + 3) + zeichen(f + 2) + zeichen(f + 1) + zeichen(f));
        return QString(zeichen(f) + zeichen(f + 1) + zeichen(f + 2) + zeichen(f + 3));
      default: {
        QString text;
        for (const std::int64_t b : {b8, b9, b10, b11}) {
          const QString ziffern = QStringLiteral("%1").arg(b, 2, 16, QLatin1Char('0')).toUpper();
          text = intel() ? ziffern + text : text + ziffern;
        }
        return text;
      }
    }
  }

  void haenge_an(Variant& wert, const QString& text) {
    text_ += text.size();
    if (text_ * 2 > 256 * 1024 * 1024) throw Laufzeitfehler(7);
    if (std::holds_alternative<Empty>(wert)) wert = QString();
    std::get<QString>(wert) += text;
  }

  void draussen(std::int64_t d, std::int64_t anzahl, int format, Variant& wert) {
    if (format == 2 || format == 7) {
      for (std::int64_t j = 0; j < (intel() ? anzahl - 1 : anzahl); ++j) haenge_an(wert, zeichen(d + j));
    } else if ((format == 3 || format == 8) && !intel()) {
      for (std::int64_t j = anzahl - 1; j >= 0; --j) haenge_an(wert, QString::number(byte(d + j)));
    } else {
      for (std::int64_t j = 0; j < anzahl; ++j) haenge_an(wert, QString::number(byte(d + j)));
    }
  }

  std::vector<std::uint8_t> b_;
  std::int64_t app1_ = 0;
  std::int64_t tiff_ = 0;
  std::int64_t zeiger_ = 0;
  std::int64_t text_ = 0;
};

void schreibe(const Variant& wert, std::ostream& os) {
  if (std::holds_alternative<Empty>(wert)) os << "Empty";
  if (const auto* zahl = std::get_if<std::int32_t>(&wert)) os << *zahl;
  if (const auto* text = std::get_if<QString>(&wert))
    os << text->size() << " \"" << text->left(100).toUtf8().toPercentEncoding(" /:").toStdString() << '"';
}

}  // namespace

bool operator==(const Exif_Entry& links, const Exif_Entry& rechts) {
  return links.Tag_Id == rechts.Tag_Id && links.Is_MakerNote == rechts.Is_MakerNote &&
      links.Format_Code == rechts.Format_Code && links.Item_Count == rechts.Item_Count &&
      links.Data_Offset == rechts.Data_Offset && links.Value == rechts.Value;
}

bool operator==(const Ladeergebnis& links, const Ladeergebnis& rechts) {
  return links.fehler == rechts.fehler && links.load == rechts.load && links.is_loaded == rechts.is_loaded &&
      links.entries == rechts.entries;
}

void PrintTo(const Exif_Entry& entry, std::ostream* os) {
  *os << "{tag " << entry.Tag_Id << (entry.Is_MakerNote ? " MakerNote" : "") << " format " << entry.Format_Code
      << " count " << entry.Item_Count << " offset " << entry.Data_Offset << " value ";
  schreibe(entry.Value, *os);
  *os << '}';
}

void PrintTo(const Ladeergebnis& ergebnis, std::ostream* os) {
  *os << "failure " << ergebnis.fehler << " load " << ergebnis.load << " is_loaded " << ergebnis.is_loaded << ", "
      << ergebnis.entries.size() << " entries";
  for (std::size_t i = 0; i < ergebnis.entries.size() && i < 60; ++i) {
    *os << "\n  " << i + 1 << ' ';
    PrintTo(ergebnis.entries[i], os);
  }
}

Ladeergebnis lade(const QString& pfad) {
  Ladeergebnis ergebnis;
  clsExifInfo info;
  ergebnis.fehler = Fehlernummer_von([&] { ergebnis.load = info.Load(pfad); });
  ergebnis.is_loaded = info.Is_Loaded();
  ergebnis.entries = info.Entries();
  return ergebnis;
}

Ladeergebnis referenz(const QByteArray& inhalt) {
  Ladeergebnis ergebnis;
  Naiv naiv(inhalt);
  ergebnis.fehler = Fehlernummer_von([&] { ergebnis.load = naiv.load(); });
  ergebnis.is_loaded = naiv.geladen;
  ergebnis.entries = naiv.eintraege;
  return ergebnis;
}
