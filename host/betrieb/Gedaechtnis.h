#pragma once

#include "host/betrieb/Wirtsoptionen.h"

/// The last connection that the program was started with, kept in the user's settings beside the places of its windows;
/// never its password.
namespace gedaechtnis {

/// The options, with what is remembered filled in where the call leaves it open: connection and picture root where it
/// names neither a database nor a data folder, the picture root where it names the same connection again. With
/// `eingebettet` everything is forgotten instead. What is still open then is as the firm gives it, and so is what the
/// firm has locked; a call that wants it otherwise ends with Abbruch, Ausgang::Aufruf. The firm's drives are mapped.
Wirtsoptionen ergaenzt(Wirtsoptionen optionen);

/// Keeps connection and picture root of a start whose database was opened; nothing where the options say so, or where
/// the database is the data folder's own.
void merke(const Wirtsoptionen& optionen);

}  // namespace gedaechtnis
