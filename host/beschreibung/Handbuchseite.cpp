#include "host/beschreibung/Handbuchseite.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Text as it stands: no sign of it is an instruction.
QString wort(QString text) {
  return text.replace(u'\\', u"\\e"_s).replace(u'-', u"\\-"_s);
}

/// Words whose lines are broken anew, except at empty lines and before lines that begin with a blank.
QString absatz(const QString& text) {
  QString ergebnis;
  for (const QString& zeile : text.trimmed().split(u'\n')) {
    const bool anweisung = zeile.startsWith(u'.') || zeile.startsWith(u'\'');
    ergebnis += zeile.isEmpty() ? u".PP\n"_s : (anweisung ? u"\\&"_s : QString()) + wort(zeile) + u'\n';
  }
  return ergebnis;
}

QString kapitel(const QString& titel, const QString& inhalt) {
  return u".SH "_s + titel + u'\n' + inhalt;
}

QString kopf(const QString& name, const QString& kurz, const QString& programm, const QString& fassung) {
  const QString titel = wort(name);
  return u".\\\" Beim Bauen aus den Texten von --hilfe gemacht.\n.TH \"%1\" 1 \"\" \"%2 %3\" \"Benutzerhandbuch\"\n"_s
             .arg(titel.toUpper(), wort(programm), wort(fassung)) +
      kapitel(u"NAME"_s, titel + u" \\- "_s + wort(kurz) + u'\n');
}

QString optionsliste(const QList<Option>& optionen) {
  QString liste;
  for (const Option& option : optionen) {
    liste += u".TP\n.B \\-\\-"_s + wort(option.name);
    if (!option.wert.isEmpty()) liste += u" \\fI"_s + wort(option.wert) + u"\\fR"_s;
    liste += u'\n' + absatz(option.hilfe);
    if (!option.werte.isEmpty()) liste += u"(Werte: "_s + wort(option.werte.join(u", "_s)) + u")\n"_s;
  }
  return liste;
}

QString aufruf(const QString& programm, const Befehl& befehl) {
  const QString argumente = befehl.argumente.isEmpty() ? QString() : u" \\fI"_s + wort(befehl.argumente) + u"\\fR"_s;
  return u".B "_s + wort((programm + u' ' + befehl.name).trimmed()) + u"\n[Optionen]"_s + argumente + u'\n';
}

QString seitenname(const Befehlsprogramm& programm, const Befehl& befehl) {
  return programm.name + u'-' + QString(befehl.name).replace(u' ', u'-');
}

QString ausgang() {
  return kapitel(u"AUSGANG"_s, absatz(befehlszeile::ausgangstext().section(u": "_s, 1)));
}

QString verweise(const QStringList& seiten) {
  QStringList liste;
  for (const QString& seite : seiten) liste.append(u"\\fB"_s + wort(seite) + u"\\fR(1)"_s);
  return kapitel(u"SIEHE AUCH"_s, liste.join(u",\n"_s) + u'\n');
}

QList<Option> mit_Hilfe(const QList<Option>& optionen) {
  return optionen + QList<Option>{befehlszeile::hilfe_Option()};
}

Handbuchseite seite(const Befehlsprogramm& programm, const Befehl& befehl, const QString& fassung) {
  const QString name = seitenname(programm, befehl);
  return {name + u".1"_s,
      kopf(name, befehl.kurz, programm.name, fassung) + kapitel(u"ÜBERSICHT"_s, aufruf(programm.name, befehl)) +
          kapitel(u"BESCHREIBUNG"_s, absatz(befehl.erklaerung)) +
          kapitel(u"OPTIONEN"_s, optionsliste(mit_Hilfe(befehl.optionen))) + ausgang() + verweise({programm.name})};
}

/// The sentence of what a program is for, without its name in front and its full stop.
QString kurz(const Befehlsprogramm& programm) {
  QString satz = programm.zweck.trimmed();
  if (satz.startsWith(programm.name + u' ')) satz.remove(0, programm.name.size() + 1);
  if (satz.endsWith(u'.')) satz.chop(1);
  return satz;
}

}  // namespace

namespace handbuchseiten {

QList<Handbuchseite> mit_Befehlen(
    const Befehlsprogramm& programm, const QList<Befehl>& befehle, const QString& fassung) {
  QString liste;
  QStringList seiten;
  QList<Handbuchseite> alle;
  for (const Befehl& befehl : befehle) {
    liste += u".TP\n.B "_s + wort(befehl.name) + u'\n' + absatz(befehl.kurz);
    seiten.append(seitenname(programm, befehl));
    alle.append(seite(programm, befehl, fassung));
  }
  const QString name = wort(programm.name);
  alle.prepend({programm.name + u".1"_s,
      kopf(programm.name, kurz(programm), programm.name, fassung) +
          kapitel(u"ÜBERSICHT"_s,
              u".B %1\n\\fIBEFEHL\\fR [Optionen] [Argumente]\n.br\n.B %1\n\\fIBEFEHL\\fR \\-\\-hilfe\n"_s.arg(name)) +
          kapitel(u"BESCHREIBUNG"_s, absatz(programm.schluss)) + kapitel(u"BEFEHLE"_s, liste) +
          kapitel(u"OPTIONEN"_s, optionsliste(befehlszeile::programm_Optionen())) + ausgang() + verweise(seiten)});
  return alle;
}

Handbuchseite mit_Dialogen(
    const Befehl& programm, const Befehlsprogramm& dialog, const QList<Befehl>& dialoge, const QString& fassung) {
  QString liste = absatz(dialog.zweck) + u".PP\n"_s + absatz(dialog.schluss);
  for (const Befehl& befehl : dialoge)
    liste += u".SS "_s + wort(dialog.name + u' ' + befehl.name) + u'\n' + aufruf(dialog.name, befehl) + u".PP\n"_s +
        absatz(befehl.erklaerung) + optionsliste(mit_Hilfe(befehl.optionen));
  return {programm.name + u".1"_s,
      kopf(programm.name, programm.kurz, programm.name, fassung) +
          kapitel(u"ÜBERSICHT"_s,
              aufruf({}, programm) + u".br\n.B "_s + wort(dialog.name) + u"\n\\fIBEFEHL\\fR [Optionen]\n"_s) +
          kapitel(u"BESCHREIBUNG"_s, absatz(programm.erklaerung)) +
          kapitel(u"OPTIONEN"_s, optionsliste(programm.optionen)) + kapitel(u"DIALOGE"_s, liste) +
          verweise({u"kvobild"_s})};
}

}  // namespace handbuchseiten
