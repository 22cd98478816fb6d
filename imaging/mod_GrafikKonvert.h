#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/gdiplus/Bild.h"
#include "platform/gdiplus/Kodierer.h"

/// Picture handling through GDI+: sessions, status messages, loading, turning.
namespace mod_GrafikKonvert {

/// Token of the session started last.
extern std::int32_t m_GdiToken;
/// The last start succeeded. No end of a session clears it.
extern bool m_GdiAktiv;
/// Status of the last start or end.
extern std::int32_t m_GdiStatus;
/// Program that the last Fkt_OpenWith started; empty for none.
extern QString m_OpenWithProgramm;

/// Starts a session; its token goes to m_GdiToken.
std::int32_t Fkt_GdiStartup(std::int32_t version);
/// Ends the session of m_GdiToken.
std::int32_t Fkt_GdiShutdown();
/// Shows a message for every status but 0 and 2 and hands the status back.
std::int32_t Fkt_GdiPruefen(std::int32_t status);
/// The English words of a status, as GDI+ itself has them.
QString Fkt_GdiFehlerText(std::int32_t status);
/// A picture file as a displayable picture, or none after a message.
std::shared_ptr<const Bild> Fkt_LoadPictureGdi(const QString& dateiname);
/// The picture object that owns the handle from then on.
std::shared_ptr<const Bild> Fkt_HandleToPicture(
    const std::shared_ptr<const Bild>& handle, std::int32_t bildtyp, std::int32_t palette);

/// Lets the user choose a program for a file and starts it on it, without waiting. The name of the program that was
/// started, or empty for none. A blank name is told.
QString Fkt_OpenWith(QString& datei);

/// The class id of the encoder of that mime type, case of letters ignored. False where there is none, or no session.
bool Fkt_GetEncoderClsid(const QString& mime_type, gdiplus::CLSID& clsid);
/// Writes a picture file, transformed, as JPEG under another name; `transform` is a gdiplus::Drehart. What stood under
/// that name is replaced, but only by a complete file. False after a message for each status that has one; source and
/// target are two files. The module doesn't look at the file type: a picture of another format comes out as JPEG too.
bool Fkt_JpgTransform(const QString& quelle, const QString& ziel, std::int32_t transform);

/// Turns a JPEG file in its place, between start and end of a session: the transform into a file beside it, then the
/// exchange (see Ersatzdatei). At each moment the name stands for the whole old picture or the whole new one. The file
/// beside it has no name, or a hidden one, so that nothing that is left of it can pass for a picture.
///
/// False when the transform fails, after the messages of its statuses; the caller then tells that the turning failed.
/// That is so for a sound picture of another format too, without a message of a status: it would be JPEG bytes under a
/// name that says otherwise. Raises the failure of the exchange (70 for a read-only file, 53 for one that is gone
/// meanwhile). In all these cases the file is as it was and nothing is left beside it.
bool Fkt_Bild_Drehen(const QString& datei, std::int32_t transform);

}  // namespace mod_GrafikKonvert
