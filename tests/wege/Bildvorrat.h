#pragma once

#include <QByteArray>

#include "tests/wege/Bestand.h"

/// Small JPEGs that carry which picture they are, also when they were turned.
namespace bildvorrat {

/// The same content always gives the same bytes.
QByteArray bytes(const Bildinhalt& inhalt);
/// What the bytes show; picture 0 where it is none of these.
Bildinhalt inhalt(const QByteArray& bytes);

}  // namespace bildvorrat
