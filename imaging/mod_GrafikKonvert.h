#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "platform/gdiplus/Bild.h"

/// Picture handling through GDI+: sessions, status messages, loading.
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
std::shared_ptr<const Bild> Fkt_HandleToPicture(const std::shared_ptr<const Bild>& handle, std::int32_t bildtyp,
                                                std::int32_t palette);

/// Lets the user choose a program for a file and starts it on it, without waiting. The name of the program that was
/// started, or empty for none. A blank name is told.
QString Fkt_OpenWith(QString& datei);

}  // namespace mod_GrafikKonvert
