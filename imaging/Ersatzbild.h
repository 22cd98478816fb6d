#pragma once

#include <memory>

#include "platform/gdiplus/Bild.h"

/// The drawing that stands for a picture that can't be read, 96 pixels wide and high; drawn once for all.
const std::shared_ptr<const Bild>& ersatzbild();
