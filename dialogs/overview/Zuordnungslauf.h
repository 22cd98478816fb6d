#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

/// What one saving of "Anzeige der Zuordnungen" has assigned so far, and the table does not know yet.
class Zuordnungslauf {
 public:
  struct Bild {
    std::int32_t Zeile = 0;  ///< of the grid: the same row is the same picture
    QString Name;
    QString Endung;
    QString Datei;  ///< its file, as the table writes paths
  };

  /// The name under which a picture goes to an article: its own, or, where this saving has given the article another
  /// picture of that name already, the next numbered one for which `vergeben` says no. None where the article has the
  /// picture, or one that is the same byte for byte, or where there is no file that could be lost.
  std::optional<QString> Name_fuer(const QString& artikel, const Bild& bild,
                                   const std::function<bool(const QString&)>& vergeben) const;
  /// The article got the picture under that name.
  void merke(const QString& artikel, const Bild& bild, const QString& name);

  /// Both files are there and alike, byte for byte. Never raises.
  static bool sind_gleich(const QString& eine, const QString& andere);

 private:
  struct Eintrag {
    QString Artikel;
    Bild Quelle;
    QString Name;
  };
  std::vector<Eintrag> m_Eintraege;
};
