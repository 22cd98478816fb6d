#include "platform/shell/Dateityp.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPolygon>
#include <utility>

#include "platform/basic/Dienstplatz.h"
#include "platform/basic/Fehlerbehandlung.h"
#include "platform/basic/Text.h"
#include "platform/files/FileSystemObject.h"
#include "platform/gdiplus/bild/Bildlader.h"

namespace shell {
namespace {

bool hat_Schrift() {
  return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

/// Draws a sheet of paper. It fills the whole square, because an icon's transparency would come out black.
class GezeichneteIcons final : public DateitypIcons {
 public:
  QImage icon(const QString& endung, int seite) override {
    QImage bild(seite, seite, QImage::Format_RGB32);
    bild.fill(qRgb(250, 250, 247));
    QPainter maler(&bild);
    maler.setPen(QColor(120, 120, 120));
    maler.drawRect(0, 0, seite - 1, seite - 1);
    const int ecke = seite / 4;
    maler.setBrush(QColor(205, 205, 200));
    maler.drawPolygon(QPolygon{{seite - 1 - ecke, 0}, {seite - 1, ecke}, {seite - 1 - ecke, ecke}});
    schreibe(maler, text::UCase(text::Left(endung, seite < 32 ? 3 : 4)), seite);
    return bild;
  }

 private:
  static void schreibe(QPainter& maler, const QString& buchstaben, int seite) {
    const QRect feld(2, seite / 3, seite - 4, seite / 2);
    maler.fillRect(feld, QColor(58, 95, 150));
    if (buchstaben.isEmpty() || !hat_Schrift()) return;
    QFont schrift;
    schrift.setBold(true);
    // As many capitals as there are must fit into the field's width.
    schrift.setPixelSize(buchstaben.size() > 3 ? seite / 4 : seite * 5 / 16);
    maler.setFont(schrift);
    maler.setPen(Qt::white);
    maler.drawText(feld, Qt::AlignCenter, buchstaben);
  }
};

using Platz = Dienstplatz<DateitypIcons, GezeichneteIcons>;

}  // namespace

DateitypIcons::~DateitypIcons() = default;

DateitypIcons& dateitypIcons() {
  return *Platz::in_Kraft();
}

std::shared_ptr<DateitypIcons> setze(std::shared_ptr<DateitypIcons> dienst) {
  return Platz::setze(std::move(dienst));
}

std::shared_ptr<const Bild> SHGetFileInfo(const QString& name, std::int32_t /*attribute*/, std::int32_t flags) {
  if ((flags & SHGFI_ICON) == 0) return nullptr;
  if ((flags & SHGFI_USEFILEATTRIBUTES) == 0 && !FileSystemObject().FileExists(name)) return nullptr;
  const qsizetype punkt = name.lastIndexOf(u'.');
  const QString endung = punkt < 0 ? QString() : name.sliced(punkt + 1);
  const int seite = (flags & SHGFI_SMALLICON) != 0 ? 16 : 32;
  return fehler::still_enden([&] { return bildlader::aus_Pixeln(dateitypIcons().icon(endung, seite)); });
}

}  // namespace shell
