#include "store/clsBildZuordnungen.h"
#include "store/mod_BilderSuchen.h"

bool clsBildZuordnungen::Fkt_MakePath(const QString& sPath, const Variant& ShowMsg) {
  return mod_BilderSuchen::Fkt_MakePath(sPath, ShowMsg);
}

QString clsBildZuordnungen::Fkt_SplitFileName(const QString& pString, std::int16_t pRueckgabeTyp) {
  return mod_BilderSuchen::Fkt_SplitFileName(pString, pRueckgabeTyp);
}

QString clsBildZuordnungen::Fkt_ReadFile(const QString& pPath) {
  return mod_BilderSuchen::Fkt_ReadFile(pPath);
}

bool clsBildZuordnungen::Fkt_WriteFile(const QString& pPath, const QString& pText) {
  return mod_BilderSuchen::Fkt_WriteFile(pPath, pText);
}

bool clsBildZuordnungen::Fkt_DirExists(const QString& pPath) {
  return mod_BilderSuchen::Fkt_DirExists(pPath);
}

bool clsBildZuordnungen::Fkt_FileExists(const QString& pPath) {
  return mod_BilderSuchen::Fkt_FileExists(pPath);
}

bool clsBildZuordnungen::Fkt_FileCopy(const QString& pSource, QString& pDestinationPath, bool pMsg, bool pIfNotExist,
    const std::optional<QString>& pNewName, bool pMitTextCopy) {
  return mod_BilderSuchen::Fkt_FileCopy(pSource, pDestinationPath, pMsg, pIfNotExist, pNewName, pMitTextCopy);
}

bool clsBildZuordnungen::Fkt_FileCopyAll(
    const QString& pSource, QString& pDestinationPath, const QString& pPattern, bool DelFile) {
  return mod_BilderSuchen::Fkt_FileCopyAll(pSource, pDestinationPath, pPattern, DelFile);
}

bool clsBildZuordnungen::Fkt_FileReName(const QString& pOldName, const QString& pNewName) {
  return mod_BilderSuchen::Fkt_FileReName(pOldName, pNewName);
}

bool clsBildZuordnungen::Fkt_File_Txt_Copy(const QString& OrgFileName, QString& CopyTo, bool mMitMeldung,
    bool mIfNotExist, QString& mNewName, bool& mCreateNew, const QString& mInfoText) {
  return mod_BilderSuchen::Fkt_File_Txt_Copy(
      OrgFileName, CopyTo, mMitMeldung, mIfNotExist, mNewName, mCreateNew, mInfoText);
}

bool clsBildZuordnungen::Fkt_File_Txt_Copy(
    const QString& OrgFileName, QString& CopyTo, bool mMitMeldung, bool mIfNotExist) {
  QString mNewName;
  bool mCreateNew = false;
  return Fkt_File_Txt_Copy(OrgFileName, CopyTo, mMitMeldung, mIfNotExist, mNewName, mCreateNew);
}

bool clsBildZuordnungen::Fkt_FileDelete(const QString& pFileName) {
  return mod_BilderSuchen::Fkt_FileDelete(pFileName);
}
