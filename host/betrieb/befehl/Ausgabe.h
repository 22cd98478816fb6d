#pragma once

#include <QElapsedTimer>
#include <QJsonObject>
#include <QString>

/// Results go to standard output, everything else to standard error; both in UTF-8.
namespace ausgabe {

/// The name that stands in front of messages from now on; "kvobild" until then.
void programm(const QString& name);
/// One line of a result.
void zeile(const QString& text);
/// One line of a result: an object in compact JSON.
void json(const QJsonObject& objekt);
/// A notice or a failure for the user, with the program's name in front.
void meldung(const QString& text);
/// A bar on standard error that shows how far long work is; nothing where that is no terminal. Results and messages
/// stand above it. It goes with its object.
class Fortschritt {
 public:
  /// `was` is done, as "Bericht".
  explicit Fortschritt(QString was);
  ~Fortschritt();
  Q_DISABLE_COPY_MOVE(Fortschritt)

  /// So many of so many are done. True, so that it goes on: only a signal ends the program.
  bool zeige(std::size_t getan, std::size_t von);

 private:
  QString was_;
  QElapsedTimer zuletzt_;
};

/// The results reached their reader; false when standard output could not take them all.
bool abgeschlossen();

}  // namespace ausgabe
