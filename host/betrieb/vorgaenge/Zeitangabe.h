#pragma once

#include <QString>
#include <optional>

/// A date as lists of other programs spell it ("22.11.2026 09:15", "2026-11-22T09:15:00Z", "20261122") as the table
/// holds it: "2026-11-22 09:15:00" in local time. A date without a time is its midnight. None where it is no date.
std::optional<QString> als_Stand(const QString& angabe);
/// This moment in the same form.
QString Stand_jetzt();
