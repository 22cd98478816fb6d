#include "host/betrieb/aufraeumen/Schonung.h"

#include "host/betrieb/Ausgang.h"
#include "platform/files/FileSystemObject.h"
#include "store/Bilddatei.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString ordner_von(const QString& pfad) {
  return pfad.left(pfad.lastIndexOf(u'\\'));
}

QString name_von(const QString& pfad) {
  return pfad.mid(pfad.lastIndexOf(u'\\') + 1);
}

}  // namespace

// The list has the pictures of a folder before its texts, and both before the folder itself.
Aufraeumplan Schonung::angewandt(const Aufraeumplan& plan) {
  Aufraeumplan neu = plan;
  neu.Posten.clear();
  for (const Aufraeumposten& p : plan.Posten) {
    const bool voll = p.ist_Ordner() && bewohnt_.contains(p.Pfad);
    const auto warum = voll ? std::nullopt : grund(p);
    if (warum) neu.Bleibend.push_back({p.Pfad, *warum, p.ist_Ordner()});
    if (voll || warum) {
      for (QString oben = ordner_von(p.Pfad); !bewohnt_.contains(oben); oben = ordner_von(oben)) bewohnt_.insert(oben);
      continue;
    }
    gehende_.insert(p.Pfad);
    neu.Posten.push_back(p);
  }
  return neu;
}

std::optional<Bleibendes::Grund> Schonung::grund(const Aufraeumposten& posten) {
  if (const auto warum = frage_(posten)) return warum;
  if (posten.Warum == Aufraeumposten::Grund::TextOhneBild && hat_Bild(posten.Pfad))
    return Bleibendes::Grund::TextZuBild;
  return std::nullopt;
}

bool Schonung::hat_Bild(const QString& pfad) {
  const QString ordner = ordner_von(pfad);
  if (gelesen_ != ordner) lies_Bilder(ordner);
  return texte_.contains(name_von(pfad).toLower());
}

void Schonung::lies_Bilder(const QString& ordner) {
  gelesen_ = ordner;
  texte_.clear();
  for (const QString& name : FileSystemObject().GetFolder(ordner).Files()) {
    const qsizetype punkt = name.lastIndexOf(u'.');
    if (punkt < 0 || Bilddatei::ist_Textdatei(name) || gehende_.contains(ordner + u'\\' + name)) continue;
    texte_.insert(Bilddatei{name.left(punkt), name.mid(punkt + 1)}.textdatei().toLower());
  }
}
