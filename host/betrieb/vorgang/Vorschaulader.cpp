#include "host/betrieb/vorgang/Vorschaulader.h"

#include "host/betrieb/Ausgang.h"
#include "platform/host/Oberflaeche.h"

using namespace oberflaeche;

namespace {

/// Keeps the loader's message boxes about broken files away; a question is answered with what loses nothing.
class Stille {
 public:
  Stille() : vorher_(setze(std::make_shared<Stumm>())) {}
  ~Stille() { setze(vorher_); }
  Q_DISABLE_COPY_MOVE(Stille)

 private:
  class Stumm final : public Meldungsfenster {
   public:
    Antwort zeige(const Meldung& meldung) override {
      return meldung.Auswahl == Knoepfe::OK ? Antwort::OK : Antwort::Nein;
    }
  };
  std::shared_ptr<Meldungsfenster> vorher_;
};

}  // namespace

QImage Vorschaulader::lade(const QString& ordner, const QString& datei, QSize hoechstens) {
  const Stille stille;
  // The store takes a picture of the same name for the one that it has.
  store_.AktLoadPicture.clear();
  store_.AktLoadPicture_Picture.reset();
  if (!store_.FKT_LoadPicture(datei, ordner, false) || !store_.AktLoadPicture_Picture) return {};
  const Bild& bild = *store_.AktLoadPicture_Picture;
  QSize ziel = bild.groesse();
  if (ziel.isEmpty()) return {};
  if (ziel.width() > hoechstens.width() || ziel.height() > hoechstens.height())
    ziel = ziel.scaled(hoechstens, Qt::KeepAspectRatio).expandedTo({1, 1});
  QImage pixel;
  gelingt([&] { pixel = bild.bild(ziel); });
  store_.AktLoadPicture_Picture.reset();
  return pixel;
}
