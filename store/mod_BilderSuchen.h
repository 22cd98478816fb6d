#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/basic/Variant.h"
#include "platform/gdiplus/Bild.h"

/// File primitives on pictures and their text files. The text file of "foto.jpg" lies beside it as "fotojpg.txt" and
/// holds free text in Windows-1252, one byte a character.
///
/// None of these reports; a failure is a False. Arguments that are really changed for the caller are references.
namespace mod_BilderSuchen {

/// Folder that the search dialog showed last. Lives as long as the process; empty until there was one.
extern QString pLetzterOrdner;

/// Creates a folder with all its parents; existing ones count as success. With a ShowMsg that is true a level that
/// can't be made is passed over, the result is True all the same, and no message comes.
bool Fkt_MakePath(QString sPath, const Variant& ShowMsg = Empty{});

/// Picks a part of a path: 1 folder with its closing backslash, 2 name, 3 extension, 4 folder and name (trimmed);
/// anything else gives "". A dot in a folder name is taken for the extension's, and a path without a backslash is all
/// folder and no name. Meant so.
QString Fkt_SplitFileName(const QString& pString, std::int16_t pRueckgabeTyp);

/// The whole text of a file; "" for a missing file, an empty one or a folder. A failure while reading reaches the
/// caller.
QString Fkt_ReadFile(const QString& pPath);
/// Replaces the text of a file; a file that holds the text already is left untouched. False when it can't be written.
bool Fkt_WriteFile(const QString& pPath, const QString& pText);

bool Fkt_DirExists(const QString& pPath);
bool Fkt_FileExists(const QString& pPath);
/// The folder exists; otherwise, unless told not to, a message says so.
bool Fkt_PfadVorhanden(const QString& pPath, bool pOhneMeldung);

/// Copies one file into a folder, which is made when it is missing. `pDestinationPath` ends in a backslash afterwards.
/// Whether the target exists is always asked for the source's name, also where pNewName is the name that is written.
bool Fkt_FileCopy(const QString& pSource, QString& pDestinationPath, bool pMsg, bool pIfNotExist,
    const std::optional<QString>& pNewName, bool pMitTextCopy);

/// Copies all files of a folder that match a pattern and, if told, deletes them at their source. A closing backslash of
/// `pDestinationPath` is cut off, also one that the caller brought; the ways out by No and by a failure leave one
/// added.
bool Fkt_FileCopyAll(const QString& pSource, QString& pDestinationPath, const QString& pPattern, bool DelFile);

/// Renames or moves a file; False when the target exists.
bool Fkt_FileReName(const QString& pOldName, const QString& pNewName);

/// Copies the text file of the picture OrgFileName into the folder CopyTo, under the name that belongs to the picture
/// name mNewName if there is one; without a text file (mCreateNew then reads True) it writes mInfoText, if any, as one.
bool Fkt_File_Txt_Copy(const QString& OrgFileName, QString& CopyTo, bool mMitMeldung, bool mIfNotExist,
    QString& mNewName, bool& mCreateNew, const QString& mInfoText);

/// Deletes a file; a read-only one stays.
bool Fkt_FileDelete(const QString& pFileName);

/// The icon of a file type as a picture (`pGroesse` 256: the large one), or none.
std::shared_ptr<const Bild> Fkt_DateiTypIcon(const QString& pExt, std::int32_t pGroesse);

}  // namespace mod_BilderSuchen
