#include "platform/basic/Uhr.h"

#include <utility>

namespace uhr {
namespace {

QDateTime systemzeit() {
  return QDateTime::currentDateTime();
}

Zeitgeber& in_Kraft() {
  static Zeitgeber zeitgeber = systemzeit;
  return zeitgeber;
}

}  // namespace

QDateTime jetzt() {
  return in_Kraft()();
}

Zeitgeber setze(Zeitgeber zeitgeber) {
  return std::exchange(in_Kraft(), zeitgeber ? zeitgeber : systemzeit);
}

}  // namespace uhr
