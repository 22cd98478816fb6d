#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

/// What one saving of "Anzeige der Zuordnungen" has assigned so far, and the table does not know yet.
class Artikelzuordnung {
 public:
  struct Bild {
    std::int32_t Zeile = 0;  ///< of the grid: the same row is the same picture
    QString Name;
    QString Endung;
    QString Datei;  ///< its file, as the table writes paths
  };

  /// What a name means at the article and in its folder.
  enum class Platz {
    Frei,        ///< nothing of another picture bears it
    Vergeben,    ///< something else does
    Zugeordnet,  ///< the article has this very picture under it
  };

  /// The name under which a picture goes to an article. `einziges` tells that no other picture of the saving has its
  /// name: then it is its own. Otherwise it is the first free one of its own and the numbered ones, as `platz` sees
  /// them. None where the article has the picture, or one that is the same byte for byte, or where this saving gave it
  /// another of that name and there is no file that could be lost.
  std::optional<QString> Name_fuer(
      const QString& artikel, const Bild& bild, bool einziges, const std::function<Platz(const QString&)>& platz) const;
  /// The article got the picture under that name.
  void merke(const QString& artikel, const Bild& bild, const QString& name);

  /// As the table compares names.
  static bool heissen_gleich(const Bild& eines, const Bild& anderes);
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
