#pragma once

#include <iosfwd>
#include <vector>

#include "tests/wege/Schritte.h"

/// A road that once ended otherwise than it should, under what it proves.
struct BenannterWeg {
  const char* name;
  Weg weg;
};

/// gtest prints the name alone.
void PrintTo(const BenannterWeg& weg, std::ostream* os);

const std::vector<BenannterWeg>& benannte_Wege();
