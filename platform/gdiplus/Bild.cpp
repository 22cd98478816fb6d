#include "platform/gdiplus/Bild.h"

Bild::~Bild() = default;
