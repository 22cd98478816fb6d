#pragma once

#include "host/betrieb/Aufraeumen.h"

class QWidget;

/// Shows what a clearing of the picture tree would delete, and asks; true when the user agrees.
bool darf_aufraeumen(const Aufraeumen& aufraeumen, const Aufraeumliste& liste, QWidget* ueber);
