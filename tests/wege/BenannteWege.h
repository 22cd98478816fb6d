#pragma once

#include <vector>

#include "tests/wege/Schritte.h"

/// A road that once ended otherwise than it should, under what it proves.
struct BenannterWeg {
  const char* name;
  Weg weg;
};

const std::vector<BenannterWeg>& benannte_Wege();
