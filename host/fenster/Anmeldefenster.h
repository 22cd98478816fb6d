#pragma once

#include <QString>
#include <optional>

#include "host/betrieb/Anmeldung.h"

class QWidget;

/// Asks for the password of a connection; none when the user gives up. `hinweis`: why it is asked once more, or empty.
/// Until then the password lives in the window's field and nowhere else.
std::optional<QString> frage_Kennwort(const anmeldung::Worte& worte, const QString& hinweis, QWidget* ueber);
