#include "host/beschreibung/Vorschlaege.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A list for the shell: none of our words has a blank or a quote in it.
QString worte(const QStringList& liste) {
  return u"_@_worte '"_s + liste.join(u' ') + u'\'';
}

QString namen(const QList<Option>& optionen) {
  QStringList liste;
  for (const Option& option : optionen) liste.append(u"--"_s + option.name);
  return worte(liste);
}

/// What stands behind an option that takes a value.
QString werte(const Option& option) {
  if (!option.werte.isEmpty()) return worte(option.werte);
  if (option.wert == "ORDNER"_L1) return u"_@_ordner"_s;
  return option.wert.contains("DATEI"_L1) || option.wert == "DATENBANK"_L1 ? u"_@_dateien"_s : u":"_s;
}

/// Behind a command: the values of the option in front, otherwise `sonst`.
QString zweig(const QString& muster, const QList<Option>& optionen, const QString& sonst) {
  QString faelle;
  for (const Option& option : optionen)
    if (!option.wert.isEmpty()) faelle += u"        --"_s + option.name + u") "_s + werte(option) + u"; return ;;\n"_s;
  if (!faelle.isEmpty()) faelle = u"      case $davor in\n"_s + faelle + u"      esac\n"_s;
  return u"    '"_s + muster + u"')\n"_s + faelle + u"      "_s + sonst + u" ;;\n"_s;
}

QString oder(const QString& bedingung, const QString& dann, const QString& sonst) {
  return u"if [[ "_s + bedingung + u" ]]; then "_s + dann + u"; else "_s + sonst + u"; fi"_s;
}

QString zweig(const Befehl& befehl) {
  const QList<Option> optionen = befehl.optionen + QList<Option>{befehlszeile::hilfe_Option()};
  const QString optionsworte = namen(optionen);
  const bool ohne = befehl.argumente_hoechstens == 0;
  return zweig(befehl.name, optionen, ohne ? optionsworte : oder(u"$wort == -*"_s, optionsworte, u"_@_dateien"_s));
}

/// Where no command is whole yet: the first words, and behind one that is not enough the second.
QString unfertige(const QList<Option>& eigene, const QList<Befehl>& befehle) {
  QStringList erste;
  QMap<QString, QStringList> zweite;
  for (const Befehl& befehl : befehle) {
    const QString erstes = befehl.name.section(u' ', 0, 0);
    if (!erste.contains(erstes)) erste.append(erstes);
    if (befehl.name.contains(u' ')) zweite[erstes].append(befehl.name.section(u' ', 1));
  }
  QString text;
  for (auto gruppe = zweite.begin(); gruppe != zweite.end(); ++gruppe)
    text += zweig(gruppe.key(), {}, worte(gruppe.value()));
  return text + zweig({}, eigene, oder(u"$wort == -* || $COMP_CWORD -gt 1"_s, namen(eigene), worte(erste)));
}

const QString Anfang =
    uR"(# Vorschläge der Bash für @, beim Bauen aus den Texten von --hilfe gemacht.
_@_worte() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$wort"); }
_@_ordner() { compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- "$wort"); }
_@_dateien() { compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- "$wort"); }

_@() {
  local wort=${COMP_WORDS[COMP_CWORD]} davor=${COMP_WORDS[COMP_CWORD - 1]} befehl='' i=1
  # "--option=wert" sind für die Bash drei Wörter.
  if [[ $wort == '=' ]]; then wort=''; elif [[ $davor == '=' ]]; then davor=${COMP_WORDS[COMP_CWORD - 2]}; fi
  COMPREPLY=()
  while ((i < COMP_CWORD)) && [[ ${COMP_WORDS[i]} != -* ]]; do
    befehl+=${befehl:+ }${COMP_WORDS[i++]}
    case $befehl in
      #) break ;;
    esac
  done
  case $befehl in
)"_s;

}  // namespace

QString vorschlaege::bash(const QString& programm, const QList<Option>& eigene, const QList<Befehl>& befehle) {
  QStringList ganze;
  QString zweige;
  for (const Befehl& befehl : befehle) {
    ganze.append(u'\'' + befehl.name + u'\'');
    zweige += zweig(befehl);
  }
  QString text = Anfang;
  text.replace(u"      #)"_s, u"      "_s + ganze.join(u" | "_s) + u')');
  text += zweige + unfertige(eigene, befehle) + u"  esac\n}\ncomplete -F _@ @\n"_s;
  return text.replace(u'@', programm);
}
