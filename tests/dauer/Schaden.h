#pragma once

#include <QByteArray>
#include <random>
#include <vector>

#include "tests/dauer/Urbilder.h"

/// A file with damage of one to three kinds: other bytes, numbers at the edge of their range, a cut end, pieces that
/// are doubled, missing or another picture's. The same for the same state of `zufall`.
QByteArray beschaedigt(const QByteArray& bytes, const std::vector<Urbild>& andere, std::mt19937_64& zufall);
