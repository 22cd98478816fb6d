#include "host/fenster/aufnahme/Abwurf.h"

#include <QMimeData>
#include <QUrl>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Erst_speichern = u"Bitte erst speichern und dann die Datei hierher ziehen."_s;

/// A file that the other program would only make on demand. What Qt's own lists offer each other is none.
bool ist_Zusage(const QString& format) {
  if (format == "application/x-qabstractitemmodeldatalist"_L1) return false;
  return format.startsWith("application/x-"_L1) || format.startsWith("message/"_L1) ||
      format.startsWith("text/x-moz-"_L1) || format == "XdndDirectSave0"_L1;
}

bool hat_Zusage(const QMimeData& angebot) {
  const QStringList formate = angebot.formats();
  return std::any_of(formate.begin(), formate.end(), ist_Zusage);
}

}  // namespace

bool abwurf::kann_sein(const QMimeData& angebot) {
  return angebot.hasUrls() || angebot.hasImage() || hat_Zusage(angebot);
}

Abwurf abwurf::lies(const QMimeData& angebot) {
  Abwurf abwurf;
  QStringList adressen;
  for (const QUrl& url : angebot.urls()) {
    if (url.isLocalFile())
      abwurf.dateien.append(url.toLocalFile());
    else if (!url.isEmpty())
      adressen.append(url.toDisplayString());
  }
  if (abwurf.dateien.isEmpty() && angebot.hasImage()) {
    const auto bild = qvariant_cast<QImage>(angebot.imageData());
    if (!bild.isNull()) {
      abwurf.pixel.append(bild);
      return abwurf;
    }
    abwurf.probleme.append(u"Die angebotenen Bilddaten sind nicht zu lesen."_s);
  }
  for (const QString& adresse : adressen)
    abwurf.probleme.append(u"„%1“ ist eine Adresse und wird nicht geholt. %2"_s.arg(adresse, Erst_speichern));
  const bool nichts = abwurf.dateien.isEmpty() && abwurf.probleme.isEmpty();
  if (nichts && hat_Zusage(angebot))
    abwurf.probleme.append(u"Das andere Programm bietet noch keine Datei an. "_s + Erst_speichern);
  return abwurf;
}
