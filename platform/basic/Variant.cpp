#include "platform/basic/Variant.h"

#include "platform/basic/Laufzeitfehler.h"
#include "platform/basic/Text.h"

using namespace Qt::Literals::StringLiterals;

namespace {

template <class... Ts>
struct Ueberladen : Ts... {
  using Ts::operator()...;
};
// Clang before 17 can't deduce an aggregate's arguments by itself.
template <class... Ts>
Ueberladen(Ts...) -> Ueberladen<Ts...>;

bool text_ist_True(const QString& text) {
  const QString getrimmt = text::LCase(text::Trim(text));
  if (getrimmt == "true"_L1) return true;
  if (getrimmt == "false"_L1) return false;
  bool zahl = false;
  const double wert = getrimmt.toDouble(&zahl);
  if (!zahl) throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich);
  return wert == -1.0;
}

}  // namespace

QString CStr(const Variant& wert) {
  return std::visit(
      Ueberladen{[](Empty) { return QString(); },
          [](Null) -> QString { throw Laufzeitfehler(fehlernummer::NullUngueltig); },
          [](bool b) { return b ? u"True"_s : u"False"_s; }, [](std::int32_t n) { return QString::number(n); },
          [](double d) { return QString::number(d, 'g', 15); }, [](const QString& s) { return s; },
          [](const Objekt&) -> QString { throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich); }},
      wert);
}

QString mit_Leertext(const Variant& wert) {
  return std::holds_alternative<Null>(wert) ? QString() : CStr(wert);
}

bool ist_True(const Variant& wert) {
  return std::visit(Ueberladen{[](Empty) { return false; }, [](Null) { return false; }, [](bool b) { return b; },
                        [](std::int32_t n) { return n == -1; }, [](double d) { return d == -1.0; },
                        [](const QString& s) { return text_ist_True(s); },
                        [](const Objekt&) -> bool { throw Laufzeitfehler(fehlernummer::TypenUnvertraeglich); }},
      wert);
}
