#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <variant>

#include "platform/basic/kvo_export.h"

/// A value that was never set.
struct Empty {
  friend bool operator==(Empty, Empty) = default;
};
/// A database's "no value"; unlike Empty it has no text form.
struct Null {
  friend bool operator==(Null, Null) = default;
};
/// An object held by reference; the holder shares its ownership.
using Objekt = std::shared_ptr<void>;

/// A value of any of the kinds that cross a public border or feed a grid.
using Variant = std::variant<Empty, Null, bool, std::int32_t, double, QString, Objekt>;

/// The text of a value: Empty gives "", a Boolean "True" or "False", numbers the C locale's form with at most
/// 15 significant digits. Null raises 94, an object 13.
KVO_EXPORT QString CStr(const Variant& wert);
/// The text of a value with Null taken as "", as joining an empty string does.
KVO_EXPORT QString mit_Leertext(const Variant& wert);
/// The value equals True, which is the number -1: a Boolean, a number, or a text of either. Empty and Null are not
/// equal to True; a text that is neither raises 13, an object too.
KVO_EXPORT bool ist_True(const Variant& wert);
