#pragma once

#include <QString>
#include <memory>

#include "component/Zuordnungsweg.h"
#include "host/betrieb/Arbeitsplatz.h"
#include "host/betrieb/vorgang/Vorgang.h"
#include "store/clsBildZuordnungen.h"

/// The record as the component knows it.
Zuordnungsweg::Vorgang als_Zuordnungsvorgang(const Vorgang& vorgang);
/// Reads a record's assignments. Failures end with Abbruch and words.
std::shared_ptr<clsBildZuordnungen> lies_Bildsammlung(const Arbeitsplatz& platz, const Vorgang& vorgang);
/// Deletes the row under the cursor. What went wrong, or nothing.
QString entferne_Zeile(
    const Arbeitsplatz& platz, const std::shared_ptr<clsBildZuordnungen>& sammlung, const Vorgang& vorgang);
