#include "host/bericht/pdf/Pdfangaben.h"

#include <QTimeZone>
#include <QXmlStreamWriter>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Rdf = u"http://www.w3.org/1999/02/22-rdf-syntax-ns#"_s;
const QString Dc = u"http://purl.org/dc/elements/1.1/"_s;
const QString Xmp = u"http://ns.adobe.com/xap/1.0/"_s;
const QString Pdf = u"http://ns.adobe.com/pdf/1.3/"_s;
const QString Pdfaid = u"http://www.aiim.org/pdfa/ns/id/"_s;

/// A list of one text, of the kind "Alt" (with a language) or "Seq".
void schreibe_Liste(QXmlStreamWriter& xml, const QString& name, const QString& art, const QString& text) {
  if (text.isEmpty()) return;
  xml.writeStartElement(Dc, name);
  xml.writeStartElement(Rdf, art);
  xml.writeStartElement(Rdf, u"li"_s);
  if (art == u"Alt") xml.writeAttribute(u"xml:lang"_s, u"x-default"_s);
  xml.writeCharacters(text);
  xml.writeEndElement();
  xml.writeEndElement();
  xml.writeEndElement();
}

}  // namespace

QString Pdfangaben::erzeuger() {
  return u"Qt %1"_s.arg(QString::fromLatin1(qVersion()));
}

QByteArray Pdfangaben::pdf_zeit() const {
  const int minuten = zeit.offsetFromUtc() / 60;
  return (zeit.toString(u"'D:'yyyyMMddHHmmss"_s) +
      u"%1%2'%3'"_s.arg(QChar(minuten < 0 ? u'-' : u'+'))
          .arg(std::abs(minuten) / 60, 2, 10, QChar(u'0'))
          .arg(std::abs(minuten) % 60, 2, 10, QChar(u'0')))
      .toLatin1();
}

QByteArray Pdfangaben::xmp() const {
  QByteArray bytes = "<?xpacket begin=\"\xef\xbb\xbf\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n";
  QXmlStreamWriter xml(&bytes);
  xml.writeNamespace(u"adobe:ns:meta/"_s, u"x"_s);
  xml.writeStartElement(u"adobe:ns:meta/"_s, u"xmpmeta"_s);
  xml.writeNamespace(Rdf, u"rdf"_s);
  xml.writeStartElement(Rdf, u"RDF"_s);
  xml.writeNamespace(Dc, u"dc"_s);
  xml.writeNamespace(Xmp, u"xmp"_s);
  xml.writeNamespace(Pdf, u"pdf"_s);
  xml.writeNamespace(Pdfaid, u"pdfaid"_s);
  xml.writeStartElement(Rdf, u"Description"_s);
  xml.writeAttribute(Rdf, u"about"_s, QString());
  xml.writeTextElement(Pdfaid, u"part"_s, u"1"_s);
  xml.writeTextElement(Pdfaid, u"conformance"_s, u"B"_s);
  schreibe_Liste(xml, u"title"_s, u"Alt"_s, titel);
  schreibe_Liste(xml, u"creator"_s, u"Seq"_s, verfasser);
  schreibe_Liste(xml, u"description"_s, u"Alt"_s, thema);
  xml.writeTextElement(Xmp, u"CreatorTool"_s, programm());
  const QString wann = zeit.toOffsetFromUtc(zeit.offsetFromUtc()).toString(Qt::ISODate);
  xml.writeTextElement(Xmp, u"CreateDate"_s, wann);
  xml.writeTextElement(Xmp, u"ModifyDate"_s, wann);
  xml.writeTextElement(Pdf, u"Producer"_s, erzeuger());
  xml.writeEndElement();
  xml.writeEndElement();
  xml.writeEndElement();
  return bytes + "\n<?xpacket end=\"w\"?>\n";
}
