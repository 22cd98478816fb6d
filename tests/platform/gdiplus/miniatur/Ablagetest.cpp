#include "tests/platform/gdiplus/miniatur/Ablagetest.h"

#include <unistd.h>
#include <zlib.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include "platform/basic/Bytesicht.h"
#include "platform/gdiplus/miniatur/Eintragsort.h"

using namespace Qt::Literals::StringLiterals;

namespace {

std::int64_t eine_Stunde_spaeter() {
  return (std::int64_t{1'700'000'000} + 3600) * 1'000'000'000;
}

QByteArray hohes_zuerst(quint32 zahl) {
  QByteArray bytes;
  for (int bit = 24; bit >= 0; bit -= 8) bytes += static_cast<char>(zahl >> bit & 0xff);
  return bytes;
}

}  // namespace

Stuecke zerlegt(const QByteArray& png) {
  Stuecke stuecke;
  const Bytesicht b(png);
  for (qsizetype p = 8; p + 12 <= png.size();) {
    const auto laenge = static_cast<qsizetype>(b.u32_hoch(static_cast<std::uint64_t>(p)));
    stuecke.append({png.sliced(p + 4, 4), png.sliced(p + 8, laenge)});
    p += 12 + laenge;
  }
  return stuecke;
}

QByteArray zusammen(const Stuecke& stuecke) {
  QByteArray png("\x89PNG\r\n\x1a\n", 8);
  for (const auto& [art, inhalt] : stuecke) {
    const QByteArray geprueft = art + inhalt;
    const auto summe =
        crc32(0, reinterpret_cast<const Bytef*>(geprueft.constData()), static_cast<uInt>(geprueft.size()));
    png += hohes_zuerst(static_cast<quint32>(inhalt.size())) + geprueft + hohes_zuerst(static_cast<quint32>(summe));
  }
  return png;
}

Ohne_Vorrechte::Ohne_Vorrechte(const QString& ordner) : war_root_(::geteuid() == 0) {
  constexpr uid_t Niemand = 65534;
  if (!war_root_) return;
  QStringList alle{ordner};
  for (QDirIterator i(ordner, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
       i.hasNext();)
    alle += i.next();
  for (const QString& pfad : alle) EXPECT_EQ(::lchown(QFile::encodeName(pfad).constData(), Niemand, Niemand), 0);
  EXPECT_EQ(::seteuid(Niemand), 0);
}

Ohne_Vorrechte::~Ohne_Vorrechte() {
  EXPECT_TRUE(!war_root_ || ::seteuid(0) == 0);
}

Ablage::Ablage() : ablage(QFile::encodeName(cacheheim())) {
  ablage.uhr(eine_Stunde_spaeter);
  ordner.schreibe(u"bild.jpg"_s, "x");
}

Ablage::~Ablage() = default;

Miniaturablage::Datei Ablage::datei(const QString& name) const {
  return {QFile::encodeName(ordner.pfad(name)), 123456, Geaendert};
}

Bildkopf Ablage::kopf(QSize groesse, Bildformat format) {
  return {format, Kopfbefund::Ok, groesse, 0};
}

QImage Ablage::pixel(int kante, QSize groesse) {
  return vorlagen::foto(Miniaturablage::groesse_des_Eintrags(groesse, kante));
}

bool Ablage::merke(int kante, bool gedreht) {
  return ablage.merke(datei(), kopf(), pixel(kante), kante, gedreht);
}

QString Ablage::eintrag(const QString& unter, const QString& name) const {
  return cacheheim() + u'/' + unter + u'/' +
      QFile::decodeName(miniatur::eintragsname(miniatur::adresse(datei(name).ort)));
}

QByteArray Ablage::lies(const QString& pfad) const {
  QFile offen(pfad);
  if (!offen.open(QIODevice::ReadOnly)) ADD_FAILURE() << "no entry " << qUtf8Printable(pfad);
  return offen.readAll();
}

void Ablage::schreibe(const QString& pfad, const QByteArray& bytes) {
  QFile offen(pfad);
  if (!offen.open(QIODevice::WriteOnly) || offen.write(bytes) != bytes.size())
    ADD_FAILURE() << "cannot write " << qUtf8Printable(pfad);
}
