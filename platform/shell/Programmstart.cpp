#include "platform/shell/Programmstart.h"

#include <QDesktopServices>
#include <QUrl>
#include <utility>

#include "platform/basic/Dienstplatz.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/Pfadkarte.h"
#include "platform/host/Oberflaeche.h"

using namespace Qt::Literals::StringLiterals;

namespace shell {
namespace {

class Desktopstarter final : public Programmstarter {
 public:
  bool oeffne(const QString& maschinenpfad) override {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(maschinenpfad));
  }
};

using Platz = Dienstplatz<Programmstarter, Desktopstarter>;

}  // namespace

Programmstarter::~Programmstarter() = default;

std::shared_ptr<Programmstarter> setze(std::shared_ptr<Programmstarter> dienst) {
  return Platz::setze(std::move(dienst));
}

bool ShellExecute_open(const QString& datei) {
  using namespace oberflaeche;
  if (!FileSystemObject().FileExists(datei)) {
    MsgBox(u"Die Datei „%1“ gibt es nicht."_s.arg(datei), Knoepfe::OK, Symbol::Ausrufezeichen, u"Achtung"_s);
    return false;
  }
  const bool offen = fehler::still_enden(
      [&] { return Platz::in_Kraft()->oeffne(QString::fromUtf8(Pfadkarte::aktuell().maschinenpfad(datei))); });
  if (!offen)
    MsgBox(u"Für die Datei „%1“ ließ sich kein Programm starten."_s.arg(datei), Knoepfe::OK, Symbol::Ausrufezeichen,
        u"Achtung"_s);
  return offen;
}

}  // namespace shell
