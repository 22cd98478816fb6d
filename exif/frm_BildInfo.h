#pragma once

#include <memory>

#include "platform/basic/XArrayDBObject.h"
#include "platform/forms/Form.h"
#include "platform/forms/steuerelemente/Knoepfe.h"
#include "platform/forms/steuerelemente/SftTree.h"

/// "Eigenschaften": the Exif values of one picture in a list. Whoever makes it sets the three members, calls Load_Exif
/// or Create_List, shows it modally and unloads it.
class frm_BildInfo : public Form {
 public:
  frm_BildInfo();

  /// The picture file, with its path.
  QString m_Bild;
  /// Kept, and shown nowhere.
  QString m_ExifText;
  bool m_LoadFlag = false;

  /// Reads the file and fills the list; a picture without Exif data leaves it as it is. The failures of reading reach
  /// the caller.
  void Load_Exif();
  /// Fills the list anew with the rows of the table that are to be shown and have a value; without a table it is empty.
  void Create_List();
  /// Puts one row behind the others and counts `Zeile` on; with the flag it is marked as a reference, and a spacer size
  /// other than 0 puts an empty row of that letter size (points) behind it, which counts too.
  static void Fkt_Zeile_Einfuegen(std::int32_t& Zeile, SftTree& tree, const QString& feld, const QString& wert,
      const QString& info, double abstand, bool hervorheben);

  SftTree Sft_Eigenschaften{this, QStringLiteral("Sft_Eigenschaften")};
  SSCommand cmd_OK{this, QStringLiteral("cmd_OK")};

 protected:
  void Form_Load() override { Sft_Eigenschaften.BorderStyle(0); }
  void Form_Resize() override;
  void Form_Unload() override { Tabelle_.reset(); }

 private:
  void richte_Spalten_ein();
  XArrayDBObject& Tabelle();

  std::shared_ptr<XArrayDBObject> Tabelle_;
};
