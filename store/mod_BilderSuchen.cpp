#include "store/mod_BilderSuchen.h"

#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/basic/Windows1252.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/host/Oberflaeche.h"
#include "platform/shell/Dateityp.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;
using namespace oberflaeche;

namespace mod_BilderSuchen {

QString pLetzterOrdner;
namespace {

constexpr std::int16_t Teil_Pfad = 1;
constexpr std::int16_t Teil_Name = 2;
constexpr std::int16_t Teil_Ext = 3;
constexpr std::int16_t Teil_PfadUndName = 4;

/// Name and extension of a path.
Bilddatei bild_von(const QString& pfad) {
  return {Fkt_SplitFileName(pfad, Teil_Name), Fkt_SplitFileName(pfad, Teil_Ext)};
}

void setze_Backslash(QString& pfad) {
  if (!pfad.endsWith(u'\\')) pfad += u'\\';
}

bool darf_ueberschreiben(const QString& datei) {
  return MsgBox(u"Datei:  "_s + datei + u"  bereits vorhanden! Überschreiben?"_s, Knoepfe::JaNein,
             Symbol::Ausrufezeichen, u"Datei kopieren"_s) != Antwort::Nein;
}

bool ist_anderer_Name(const QString& neuer_Name, const QString& name) {
  const QString getrimmt = text::Trim(neuer_Name);
  return !getrimmt.isEmpty() && getrimmt != text::Trim(name);
}

/// Every dot counts as the one in front of the extension, also one of the name or of a folder.
QString textdatei_ohne_Punkte(QString pfad) {
  return Bilddatei{pfad.remove(u'.'), {}}.textdatei();
}

bool mit_Meldung(const Variant& ShowMsg) {
  if (std::holds_alternative<Empty>(ShowMsg)) return false;
  if (const auto* zahl = std::get_if<std::int32_t>(&ShowMsg)) return *zahl != 0;
  return ist_True(ShowMsg);
}

/// Moves the next level from the front of `rest` to the end of `pfad`.
void nimm_naechste_Ebene(QString& rest, QString& pfad) {
  qsizetype anzahl = 0;
  if (rest.startsWith("\\\\"_L1))
    anzahl = 2;
  else if (rest.startsWith(u'\\'))
    anzahl = 1;
  else if (QStringView(rest).mid(1, 2) == u":\\")
    anzahl = 3;
  const qsizetype ende = rest.indexOf(u'\\', anzahl);
  anzahl = ende < 0 ? rest.size() : ende;
  pfad += rest.left(anzahl);
  rest.remove(0, anzahl);
}

/// The files of a folder that match, with their paths.
QStringList dateien_im_Ordner(const QString& ordner, const QString& muster) {
  const FileSystemObject fso;
  const QString pfad = fso.GetFolder(ordner).Path();
  QStringList liste;
  for (const QString& name : dateien::Dir(fso.BuildPath(pfad, muster))) liste.append(fso.BuildPath(pfad, name));
  return liste;
}

bool loesche_alle(const QStringList& liste) {
  bool alle = true;
  for (const QString& eintrag : liste)
    if (!text::Trim(eintrag).isEmpty() && !Fkt_FileDelete(eintrag)) alle = false;
  return alle;
}

/// False when the user said No.
bool kopiere_alle(const QString& pSource, QString& pDestinationPath, const QString& pPattern, bool DelFile) {
  const QStringList liste = dateien_im_Ordner(pSource, pPattern);
  ereignispumpe().verarbeite_anstehende();
  for (const QString& eintrag : liste) {
    if (text::Trim(eintrag).isEmpty()) continue;
    const QString datei = bild_von(eintrag).datei();
    if (!Fkt_PfadVorhanden(pDestinationPath, true)) Fkt_MakePath(pDestinationPath);
    const bool vorhanden = Fkt_FileExists(pDestinationPath + u'\\' + datei);
    if (vorhanden && !darf_ueberschreiben(datei)) return false;
    setze_Backslash(pDestinationPath);
    FileSystemObject().CopyFile(text::Trim(eintrag), pDestinationPath, vorhanden);
  }
  if (pDestinationPath.endsWith(u'\\')) pDestinationPath.chop(1);
  if (DelFile && !loesche_alle(liste))
    MsgBox(
        u"Die Dokumente wurden kopiert, es konnten jedoch nicht alle Dokumente\r\n"
        "an ihrem ursprünglichen Ort gelöscht werden."_s);
  return true;
}

bool ist_Ebene_misslungen(std::int32_t nummer) {
  return nummer != 0 && nummer != fehlernummer::PfadZugriff && nummer != fehlernummer::PfadNichtGefunden;
}

}  // namespace

bool Fkt_MakePath(QString sPath, const Variant& ShowMsg) {
  bool meldung = false;
  fehler::Weiter weiter;
  weiter([&] { meldung = mit_Meldung(ShowMsg); });
  bool misslungen = false;
  QString pfad;
  while (!sPath.isEmpty() && !misslungen) {
    nimm_naechste_Ebene(sPath, pfad);
    weiter([&] { dateien::MkDir(pfad); });
    // With a message wanted, none ever came: the level is passed over in silence.
    if (ist_Ebene_misslungen(weiter.Nummer()) && !meldung) misslungen = true;
  }
  return !misslungen;
}

QString Fkt_SplitFileName(const QString& pString, std::int16_t pRueckgabeTyp) {
  QString s = pString;
  QString ext;
  if (const qsizetype punkt = s.lastIndexOf(u'.'); punkt >= 0) {
    ext = s.mid(punkt + 1);
    s.truncate(punkt);
  }
  const qsizetype strich = s.lastIndexOf(u'\\');
  const QString pfad = strich < 0 ? s : s.left(strich + 1);
  const QString name = strich < 0 ? QString() : s.mid(strich + 1);
  if (pRueckgabeTyp == Teil_Pfad) return pfad;
  if (pRueckgabeTyp == Teil_Name) return name;
  if (pRueckgabeTyp == Teil_Ext) return ext;
  return pRueckgabeTyp == Teil_PfadUndName ? text::Trim(pfad + name) : QString();
}

QString Fkt_ReadFile(const QString& pPath) {
  if (!FileSystemObject().FileExists(pPath) || dateien::FileLen(pPath) == 0) return {};
  return windows1252::decode(dateien::lies_alles(pPath));
}

bool Fkt_WriteFile(const QString& pPath, const QString& pText) {
  return fehler::still_enden([&] {
    if (FileSystemObject().FileExists(pPath) && dateien::FileLen(pPath) == pText.size() && Fkt_ReadFile(pPath) == pText)
      return true;
    dateien::schreibe_alles(pPath, windows1252::encode(pText));
    return true;
  });
}

bool Fkt_DirExists(const QString& pPath) {
  return fehler::still_enden([&] { return dateien::ist_Ordner(pPath); });
}

bool Fkt_FileExists(const QString& pPath) {
  return FileSystemObject().FileExists(pPath);
}

bool Fkt_PfadVorhanden(const QString& pPath, bool pOhneMeldung) {
  return fehler::still_enden([&] {
    if (text::Trim(pPath).isEmpty()) return false;
    const bool vorhanden = FileSystemObject().FolderExists(pPath);
    if (!vorhanden && !pOhneMeldung) MsgBox(u"Pfad nicht gefunden!"_s);
    return vorhanden;
  });
}

bool Fkt_FileCopy(const QString& pSource, QString& pDestinationPath, bool pMsg, bool pIfNotExist,
    const std::optional<QString>& pNewName, bool pMitTextCopy) {
  return fehler::still_enden([&] {
    const QString datei = bild_von(pSource).datei();
    if (!Fkt_PfadVorhanden(pDestinationPath, true)) Fkt_MakePath(pDestinationPath);
    const bool vorhanden = Fkt_FileExists(pDestinationPath + u'\\' + datei);
    if (vorhanden && pIfNotExist) return true;
    if (vorhanden && pMsg && !darf_ueberschreiben(datei)) return false;
    setze_Backslash(pDestinationPath);
    QString neuer_Name = pNewName.value_or(QString());
    if (ist_anderer_Name(neuer_Name, datei))
      FileSystemObject().CopyFile(pSource, pDestinationPath + neuer_Name, true);
    else
      FileSystemObject().CopyFile(pSource, pDestinationPath, vorhanden);
    if (pMitTextCopy) {
      bool neu_anlegen = false;
      Fkt_File_Txt_Copy(pSource, pDestinationPath, pMsg, pIfNotExist, neuer_Name, neu_anlegen, {});
    }
    return true;
  });
}

bool Fkt_FileCopyAll(const QString& pSource, QString& pDestinationPath, const QString& pPattern, bool DelFile) {
  mauszeiger().form(Zeigerform::Sanduhr);
  fehler::Weiter weiter;
  bool ergebnis = false;
  const bool gelungen = weiter([&] { ergebnis = kopiere_alle(pSource, pDestinationPath, pPattern, DelFile); });
  // Only the way out by No leaves the hourglass, as it always has.
  if (!gelungen || ergebnis) mauszeiger().form(Zeigerform::Standard);
  return ergebnis;
}

bool Fkt_FileReName(const QString& pOldName, const QString& pNewName) {
  return fehler::still_enden([&] {
    FileSystemObject().MoveFile(pOldName, pNewName);
    return true;
  });
}

bool Fkt_File_Txt_Copy(const QString& OrgFileName, QString& CopyTo, bool mMitMeldung, bool mIfNotExist,
    QString& mNewName, bool& mCreateNew, const QString& mInfoText) {
  return fehler::still_enden([&] {
    if (text::Trim(OrgFileName).isEmpty() && text::Trim(mNewName).isEmpty()) return false;
    const QString quelle = textdatei_ohne_Punkte(OrgFileName);
    if (!Fkt_FileExists(quelle)) mCreateNew = true;
    QString ziel = bild_von(OrgFileName).textdatei();
    if (!text::Trim(mNewName).isEmpty()) mNewName = textdatei_ohne_Punkte(mNewName);
    if (!Fkt_PfadVorhanden(CopyTo, true)) Fkt_MakePath(CopyTo);
    const bool vorhanden = Fkt_FileExists(CopyTo + u'\\' + ziel);
    if (vorhanden && mIfNotExist) return true;
    if (vorhanden && mMitMeldung && !darf_ueberschreiben(ziel)) return false;
    setze_Backslash(CopyTo);
    const bool umbenannt = ist_anderer_Name(mNewName, ziel);
    if (mCreateNew) {
      if (umbenannt) ziel = mNewName;
      if (text::Trim(mInfoText).isEmpty()) return false;
      Fkt_WriteFile(CopyTo + ziel, mInfoText);
    } else if (umbenannt) {
      FileSystemObject().CopyFile(quelle, CopyTo + mNewName, true);
    } else {
      FileSystemObject().CopyFile(quelle, CopyTo, vorhanden);
    }
    return true;
  });
}

bool Fkt_FileDelete(const QString& pFileName) {
  return fehler::still_enden([&] {
    FileSystemObject().DeleteFile(pFileName, false);
    return true;
  });
}

std::shared_ptr<const Bild> Fkt_DateiTypIcon(const QString& pExt, std::int32_t pGroesse) {
  const QString name = pExt.startsWith(u'.') ? pExt : u'.' + pExt;
  return shell::SHGetFileInfo(name, shell::FILE_ATTRIBUTE_NORMAL, pGroesse + shell::SHGFI_USEFILEATTRIBUTES);
}

}  // namespace mod_BilderSuchen
