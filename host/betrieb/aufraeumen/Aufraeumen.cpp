#include "host/betrieb/aufraeumen/Aufraeumen.h"

#include <algorithm>
#include <utility>

#include "host/betrieb/Ausgang.h"
#include "host/betrieb/Datenbank.h"
#include "host/betrieb/Namen.h"
#include "host/betrieb/aufraeumen/Schonung.h"
#include "host/betrieb/protokoll/Protokoll.h"
#include "platform/files/Dateien.h"
#include "platform/files/FileSystemObject.h"
#include "platform/files/wirt/Umzug.h"

using namespace Qt::Literals::StringLiterals;

namespace {

using Grund = Aufraeumposten::Grund;

using Begruendung = std::pair<QString, QString>;

/// For scripts and for people. No list with a question that failed is handed out.
Begruendung begruendung(Grund grund) {
  if (grund == Grund::OhneZuordnung) return {u"ohne_zuordnung"_s, u"keine Zuordnung"_s};
  if (grund == Grund::TextOhneBild) return {u"text_ohne_bild"_s, u"Text ohne Bild"_s};
  if (grund == Grund::LeererOrdner) return {u"leerer_ordner"_s, u"leerer Ordner"_s};
  return {u"abfrage_gescheitert"_s, u"nicht zu prüfen"_s};
}

template <class Bedingung>
qsizetype zaehle(const Aufraeumliste& liste, Bedingung bedingung) {
  return static_cast<qsizetype>(std::count_if(liste.Posten.begin(), liste.Posten.end(), bedingung));
}

QString ohne_Trenner_am_Ende(QString ordner) {
  while (ordner.endsWith(u'\\')) ordner.chop(1);
  return ordner;
}

/// What the component's question for a file carries as it is: the first two pieces of its name, and its folder as the
/// table has it. Texts and names without a dot are never asked for.
bool fragt_mit_Hochkomma(const QString& name, const QString& ordner) {
  const QStringList stuecke = name.split(u'.');
  if (stuecke.size() < 2 || Bilddatei::ist_Textdatei(name)) return false;
  return (stuecke[0] + stuecke[1] + ordner).contains(u'\'');
}

using Fortgang = Aufraeumen::Fortgang;
using Schritt = Aufraeumen::Schritt;

/// The work goes on; without anybody to ask it does.
bool geht_weiter(const Fortgang& fortgang, Schritt schritt, std::size_t getan, std::size_t von) {
  return !fortgang || fortgang(schritt, getan, von);
}

[[noreturn]] void brich_ab() {
  throw Abbruch(Ausgang::Teilweise, Aufraeumen::abgebrochen());
}

/// The files of a tree: how many, and those that the table can't be asked for. A folder that can't be read is passed
/// over, as nothing in it is asked for either.
class Bestand {
 public:
  Bestand(const QString& wurzel, const Fortgang& fortgang) : wurzel_(wurzel), fortgang_(fortgang) {}

  /// False where it was stopped.
  bool lies(const QString& ordner) {
    bool weiter = geht_weiter(fortgang_, Schritt::Lesen, anzahl, 0);
    gelingt([&] {
      const Folder inhalt = FileSystemObject().GetFolder(ordner);
      for (const QString& name : inhalt.SubFolders()) weiter = weiter && lies(ordner + u'\\' + name);
      if (!weiter) return;
      const QString relativ = QString(ordner).remove(wurzel_ + u'\\');
      const QStringList dateien = inhalt.Files();
      anzahl += static_cast<std::size_t>(dateien.size());
      for (const QString& name : dateien)
        if (fragt_mit_Hochkomma(name, relativ)) unfragbare.append(ordner + u'\\' + name);
    });
    return weiter;
  }

  std::size_t anzahl = 0;
  QStringList unfragbare;

 private:
  const QString& wurzel_;
  const Fortgang& fortgang_;
};

bool gleich(const Aufraeumliste& a, const Aufraeumliste& b) {
  return a.Ergebnis == b.Ergebnis &&
      std::equal(a.Posten.begin(), a.Posten.end(), b.Posten.begin(), b.Posten.end(),
          [](const auto& x, const auto& y) { return x.Pfad == y.Pfad && x.Warum == y.Warum; });
}

}  // namespace

Aufraeumen::Aufraeumen(clsBildZuordnungen& store, std::shared_ptr<adodb::Connection> verbindung, QString wurzel,
    QString start, Schonfrist schonfrist)
    : store_(store),
      verbindung_(std::move(verbindung)),
      // A separator too many in front of each name would make every picture a free one.
      wurzel_(ohne_Trenner_am_Ende(std::move(wurzel))),
      start_(ohne_Trenner_am_Ende(std::move(start))),
      schonfrist_(std::move(schonfrist)),
      papierkorb_(wurzel_) {}

bool Aufraeumen::hat_Zeilen() const {
  bool zeilen = false;
  if (const auto grund =
          versuche([&] { zeilen = !verbindung_->Execute(u"select Top 1 Key1 from Bild_Zuordnungen"_s)->Eof(); }))
    throw Abbruch(Ausgang::Datenbank,
        u"Die Tabelle Bild_Zuordnungen ist nicht zu lesen, und ohne sie gälte jedes Bild als frei: "_s +
            grund->Beschreibung());
  return zeilen;
}

/// A name with an apostrophe would break the question, which makes the picture a free one, or be a statement of its
/// own. Gives the number of all files.
std::size_t Aufraeumen::pruefe_Namen(const Fortgang& fortgang) const {
  constexpr qsizetype Genannte = 10;
  Bestand bestand(wurzel_, fortgang);
  if (!bestand.lies(start_)) brich_ab();
  const QStringList& dateien = bestand.unfragbare;
  if (dateien.isEmpty()) return bestand.anzahl;
  QStringList genannt;
  for (const QString& pfad : dateien.mid(0, Genannte)) genannt.append(pfad.mid(wurzel_.size() + 1));
  if (dateien.size() > Genannte) genannt.append(u"…"_s);
  throw Abbruch(Ausgang::Datei,
      u"In der Ablage stehen Bilder mit einem Hochkomma in Name oder Ordner, nach denen sich die Tabelle nicht "
      "fragen lässt; benennen Sie sie vorher um (%1): %2"_s.arg(
          QString::number(dateien.size()), genannt.join(u", "_s)));
}

std::optional<std::int64_t> Aufraeumen::stichzeit() const {
  using namespace std::chrono;
  if (schonfrist_.dauer <= minutes::zero()) return std::nullopt;
  return schonfrist_.uhr(wurzel_) - duration_cast<nanoseconds>(schonfrist_.dauer).count();
}

/// The component's question parts a name at its first dots, and has no words for the root itself.
bool Aufraeumen::nennt_eine_Zeile(const QString& pfad) const {
  const QString name = pfad.mid(pfad.lastIndexOf(u'\\') + 1);
  const QString ordner = pfad.left(pfad.lastIndexOf(u'\\'));
  if (name.count(u'.') < 2 && ordner != wurzel_) return false;
  QStringList teilungen;
  for (qsizetype punkt = name.indexOf(u'.'); punkt >= 0; punkt = name.indexOf(u'.', punkt + 1))
    teilungen.append(
        u"(Bildname = %1 and BildExt = %2)"_s.arg(literal(name.left(punkt)), literal(name.mid(punkt + 1))));
  if (teilungen.isEmpty()) return false;
  const QString frage = u"select Top 1 Key1 from Bild_Zuordnungen where Bildpfad = "_s +
      literal(ordner.mid(wurzel_.size() + 1)) + u" and ("_s + teilungen.join(u" or "_s) + u')';
  bool gibt_es = true;
  if (const auto grund = versuche([&] { gibt_es = !verbindung_->Execute(frage)->Eof(); }))
    throw Abbruch(Ausgang::Datenbank,
        u"Die Tabelle Bild_Zuordnungen ist nicht zu lesen, und ohne sie gälte jedes Bild als frei: "_s +
            grund->Beschreibung());
  return gibt_es;
}

std::optional<Bleibendes::Grund> Aufraeumen::warum_es_bleibt(
    const Aufraeumposten& posten, std::optional<std::int64_t> stichzeit) {
  if (Papierkorb::liegt_in_einem(posten.Pfad.mid(wurzel_.size() + 1))) return Bleibendes::Grund::Papierkorb;
  if (posten.Warum == Grund::OhneZuordnung && nennt_eine_Zeile(posten.Pfad)) return Bleibendes::Grund::Genannt;
  if (!stichzeit) return std::nullopt;
  // What does not tell when it came is left alone as well.
  bool neu = true;
  static_cast<void>(gelingt([&] { neu = umzug::gekommen_ns(posten.Pfad) > *stichzeit; }));
  return neu ? std::optional(Bleibendes::Grund::Neu) : std::nullopt;
}

Aufraeumplan Aufraeumen::liste(const Fortgang& fortgang) {
  return plane(fortgang, stichzeit());
}

Aufraeumplan Aufraeumen::plane(const Fortgang& fortgang, std::optional<std::int64_t> stichzeit) {
  const FileSystemObject dateien;
  for (const QString& ordner : {wurzel_, start_})
    if (!dateien.FolderExists(ordner))
      throw Abbruch(Ausgang::Datei, u"Den Ordner „%1“ gibt es nicht."_s.arg(namen::angezeigt(ordner)));
  if (hat_Zeilen() && dateien.GetFolder(wurzel_).Anzahl_Eintraege() == 0)
    throw Abbruch(Ausgang::Datei,
        u"Die Bildablage „%1“ ist leer, obwohl es Zuordnungen gibt. Ist sie eingehängt?"_s.arg(
            namen::angezeigt(wurzel_)));
  const std::size_t anzahl = pruefe_Namen(fortgang);
  bool weiter = true;
  Aufraeumplan alles{
      store_.FKT_Liste_Bild_Ohne_Zuordnung(start_, wurzel_,
          [&](std::size_t getan) { return weiter = weiter && geht_weiter(fortgang, Schritt::Pruefen, getan, anzahl); }),
      {}, stichzeit};
  if (!weiter || !geht_weiter(fortgang, Schritt::Pruefen, anzahl, anzahl)) brich_ab();
  if (const auto verweigerte = zaehle(alles, [](const auto& p) { return p.Warum == Grund::AbfrageGescheitert; })) {
    hat_Zeilen();
    throw Abbruch(Ausgang::Datenbank,
        u"Die Tabelle Bild_Zuordnungen hat die Antwort verweigert (Dateien: %1); nichts ist gelöscht."_s.arg(
            verweigerte));
  }
  // A firm that has just begun has an empty root; it is to stay the root.
  std::erase_if(alles.Posten, [&](const auto& p) { return p.Pfad == wurzel_; });
  Aufraeumplan plan = Schonung([&](const auto& p) { return warum_es_bleibt(p, stichzeit); }).angewandt(alles);
  // A connection that broke in between would have made every picture a free one.
  hat_Zeilen();
  return plan;
}

void Aufraeumen::nimm_weg(const Aufraeumposten& posten, const QString& lauf) const {
  if (!lauf.isEmpty()) return papierkorb_.nimm(lauf, posten);
  const FileSystemObject dateien;
  posten.ist_Ordner() ? dateien.DeleteFolder(posten.Pfad, true) : dateien.DeleteFile(posten.Pfad, true);
}

Aufraeumen::Ergebnis Aufraeumen::fuehre_aus(const Aufraeumplan& gezeigt, const Fortgang& fortgang,
    const QSet<QString>& ausgenommen, std::optional<bool> endgueltig) {
  if (!gleich(plane(fortgang, gezeigt.Stichzeit), gezeigt))
    throw Abbruch(
        Ausgang::Teilweise, u"Die Ablage oder die Tabelle hat sich inzwischen geändert; nichts ist gelöscht."_s);
  const Aufraeumplan plan = ohne(gezeigt, ausgenommen);
  // Not the component's own clearing: it would ask the table again, and take a connection that breaks right now for a
  // table that names no picture.
  Ergebnis ergebnis;
  if (!endgueltig.value_or(ist_endgueltig()) && !plan.Posten.empty())
    if (const auto grund = versuche([&] { ergebnis.lauf = papierkorb_.beginne(plan); }))
      throw Abbruch(Ausgang::Datei,
          u"Der Papierkorb „%1“ ist nicht zu beschreiben: %2. Nichts ist gelöscht."_s.arg(
              namen::angezeigt(papierkorb_.ordner()), grund->Beschreibung()));
  const FileSystemObject dateien;
  for (const Aufraeumposten& p : plan.Posten) {
    if (!geht_weiter(fortgang, Schritt::Loeschen, ergebnis.getan, plan.Posten.size())) break;
    const auto grund = versuche([&] { nimm_weg(p, ergebnis.lauf); });
    // What somebody else has deleted meanwhile is gone as well.
    const bool da = grund && (p.ist_Ordner() ? dateien.FolderExists(p.Pfad) : dateien.FileExists(p.Pfad));
    if (da) ergebnis.geblieben.append(angezeigt(p));
    if (!p.ist_Ordner())
      Protokoll::schreibe({Protokolleintrag::Tat::Aufraeumen, !da, angezeigt(p), {}, {}, ergebnis.lauf});
    ++ergebnis.getan;
  }
  if (!ergebnis.lauf.isEmpty() && std::ssize(ergebnis.geblieben) == static_cast<std::ptrdiff_t>(ergebnis.getan)) {
    papierkorb_.verwirf_leeren(ergebnis.lauf);
    ergebnis.lauf.clear();
  }
  return ergebnis;
}

Aufraeumplan Aufraeumen::ohne(const Aufraeumplan& plan, const QSet<QString>& ausgenommen) {
  return Schonung([&](const Aufraeumposten& p) {
    return ausgenommen.contains(p.Pfad) ? std::optional(Bleibendes::Grund::Ausgenommen) : std::nullopt;
  }).angewandt(plan);
}

std::int64_t Aufraeumen::bytes(const Aufraeumliste& liste) {
  std::int64_t summe = 0;
  for (const Aufraeumposten& p : liste.Posten)
    if (!p.ist_Ordner()) static_cast<void>(gelingt([&] { summe += dateien::FileLen(p.Pfad); }));
  return summe;
}

QString Aufraeumen::worte(const Ergebnis& ergebnis) {
  return ergebnis.lauf.isEmpty() ? u"gelöscht"_s : u"in den Papierkorb verschoben"_s;
}

QString Aufraeumen::abgebrochen() {
  return u"Abgebrochen; nichts ist gelöscht."_s;
}

QString Aufraeumen::angehalten(const Ergebnis& ergebnis, const Aufraeumplan& plan) const {
  const std::size_t alle = plan.Posten.size();
  if (ergebnis.getan >= alle) return {};
  if (ergebnis.getan == 0) return abgebrochen();
  return u"Angehalten: %1 von %2 sind %3; von „%4“ an steht alles noch da."_s.arg(
      QString::number(static_cast<qsizetype>(ergebnis.getan) - ergebnis.geblieben.size()), QString::number(alle),
      worte(ergebnis), angezeigt(plan.Posten[ergebnis.getan]));
}

QString Aufraeumen::angezeigt(const QString& pfad, bool ist_Ordner) const {
  if (pfad == wurzel_) return u"."_s;
  return pfad.mid(wurzel_.size() + 1) + (ist_Ordner ? u"\\"_s : QString());
}

QStringList Aufraeumen::warnungen(const Aufraeumliste& liste) const {
  QStringList saetze;
  if (!ist_True(liste.Ergebnis))
    saetze.append(u"Ein Ordner ist nicht zu lesen: Ab dort, und in den Ordnern über ihm, bleibt alles stehen."_s);
  return saetze;
}

QString Aufraeumen::kennung(Grund grund) {
  return begruendung(grund).first;
}

QString Aufraeumen::worte(Grund grund) {
  return begruendung(grund).second;
}

QString Aufraeumen::worte(Bleibendes::Grund grund) {
  if (grund == Bleibendes::Grund::Genannt) return u"eine Zuordnung nennt den ganzen Namen"_s;
  if (grund == Bleibendes::Grund::TextZuBild) return u"gehört zu einem Bild, das bleibt"_s;
  if (grund == Bleibendes::Grund::Neu) return u"eben erst dazugekommen"_s;
  if (grund == Bleibendes::Grund::Papierkorb) return u"liegt in einem Papierkorb"_s;
  return u"ausgenommen"_s;
}
