#include "host/bericht/pdf/Pdfdatei.h"

#include <memory>
#include <qpdf/Pipeline.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

#include "host/bericht/pdf/Pdfgeruest.h"
#include "host/betrieb/Ausgang.h"

using namespace Qt::Literals::StringLiterals;

namespace pdfdatei {
namespace {

class Ausgabe final : public Pipeline {
 public:
  explicit Ausgabe(QIODevice& ziel) : Pipeline("ziel", nullptr), ziel_(ziel) {}

  void write(const unsigned char* bytes, std::size_t laenge) override {
    const auto anzahl = static_cast<qint64>(laenge);
    if (ziel_.write(reinterpret_cast<const char*>(bytes), anzahl) != anzahl)
      throw Abbruch(Ausgang::Datei, ziel_.errorString());
  }
  void finish() override {}

 private:
  QIODevice& ziel_;
};

class Lieferant final : public QPDFObjectHandle::StreamDataProvider {
 public:
  explicit Lieferant(const Bildstrom& strom) : strom_(strom) {}

  void provideStreamData(const QPDFObjGen& /*objekt*/, Pipeline* leitung) override {
    if (strom_.form.weg != bildkodierung::Weg::Verlustfrei) return gib(*leitung);
    Pl_Flate verdichtung("verdichtung", leitung, Pl_Flate::a_deflate);
    gib(verdichtung);
  }

 private:
  void gib(Pipeline& leitung) const {
    strom_.liefere([&](const unsigned char* bytes, std::size_t laenge) { leitung.write(bytes, laenge); });
    leitung.finish();
  }

  const Bildstrom& strom_;
};

QPDFObjectHandle zahl(int wert) {
  return QPDFObjectHandle::newInteger(wert);
}

void ersetze(QPDFObjectHandle bild, const Bildstrom& strom) {
  QPDFObjectHandle angaben = QPDFObjectHandle::newDictionary();
  angaben.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
  angaben.replaceKey("/Subtype", QPDFObjectHandle::newName("/Image"));
  angaben.replaceKey("/Width", zahl(strom.form.groesse.width()));
  angaben.replaceKey("/Height", zahl(strom.form.groesse.height()));
  angaben.replaceKey("/BitsPerComponent", zahl(8));
  angaben.replaceKey("/ColorSpace", QPDFObjectHandle::newName(strom.form.farben == 1 ? "/DeviceGray" : "/DeviceRGB"));
  bild.replaceDict(angaben);
  const bool verlustfrei = strom.form.weg == bildkodierung::Weg::Verlustfrei;
  bild.replaceStreamData(std::make_shared<Lieferant>(strom),
      QPDFObjectHandle::newName(verlustfrei ? "/FlateDecode" : "/DCTDecode"), QPDFObjectHandle::newNull());
  // Its bytes are final; looked into they would have to be made a second time.
  bild.setFilterOnWrite(false);
}

void ersetze_Bilder(QPDF& pdf, const std::vector<Bildstrom>& bilder) {
  for (QPDFObjectHandle objekt : pdf.getAllObjects()) {
    if (!objekt.isImage(false)) continue;
    QPDFObjectHandle angaben = objekt.getDict();
    const QSize marke(angaben.getKey("/Width").getIntValueAsInt(), angaben.getKey("/Height").getIntValueAsInt());
    ersetze(objekt, bilder.at(pdfgeruest::nummer(marke)));
  }
}

QPDFObjectHandle text(const QString& worte) {
  return QPDFObjectHandle::newUnicodeString(worte.toStdString());
}

void setze_Angaben(QPDF& pdf, const Pdfangaben& angaben) {
  QPDFObjectHandle eigenschaften = QPDFObjectHandle::newDictionary();
  const auto setze = [&](const char* name, const QString& worte) {
    if (!worte.isEmpty()) eigenschaften.replaceKey(name, text(worte));
  };
  setze("/Title", angaben.titel);
  setze("/Author", angaben.verfasser);
  setze("/Subject", angaben.thema);
  setze("/Creator", Pdfangaben::programm());
  setze("/Producer", Pdfangaben::erzeuger());
  for (const char* name : {"/CreationDate", "/ModDate"})
    eigenschaften.replaceKey(name, QPDFObjectHandle::newString(angaben.pdf_zeit().toStdString()));
  pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(eigenschaften));
  QPDFObjectHandle xmp = QPDFObjectHandle::newStream(&pdf, angaben.xmp().toStdString());
  xmp.getDict().replaceKey("/Type", QPDFObjectHandle::newName("/Metadata"));
  xmp.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/XML"));
  // Programs that know nothing of PDF look for the packet's words.
  xmp.setFilterOnWrite(false);
  pdf.getRoot().replaceKey("/Metadata", xmp);
}

void schreibe(QPDF& pdf, QIODevice& ziel) {
  Ausgabe ausgabe(ziel);
  QPDFWriter schreiber(pdf);
  schreiber.setOutputPipeline(&ausgabe);
  schreiber.setObjectStreamMode(qpdf_o_disable);
  schreiber.setCompressStreams(false);
  schreiber.setDecodeLevel(qpdf_dl_none);
  schreiber.setNewlineBeforeEndstream(true);
  schreiber.write();
}

}  // namespace

void schreibe(
    QIODevice& ziel, const QByteArray& geruest, const Pdfangaben& angaben, const std::vector<Bildstrom>& bilder) {
  QPDF pdf;
  pdf.processMemoryFile("bericht", geruest.constData(), static_cast<std::size_t>(geruest.size()));
  ersetze_Bilder(pdf, bilder);
  setze_Angaben(pdf, angaben);
  schreibe(pdf, ziel);
}

}  // namespace pdfdatei
