#pragma once

#include <QString>

namespace adodb {

/// Where a server is, as a connect string names it.
struct Serverangabe {
  QString rechner;
  /// Empty without an instance and for the default one, and where a port is given, which leads to the instance by
  /// itself.
  QString instanz;
  /// 1 to 65535, or 0 for none.
  int port = 0;
};

/// Reads "SERVER", "SERVER\INSTANZ", "SERVER,PORT", "SERVER\INSTANZ,PORT", each with "tcp:" before it or not. "." and
/// "(local)" are this machine. Raises -2147467259 for other ways than TCP ("np:", "lpc:", a pipe's name, "(localdb)")
/// and for a port outside 1 to 65535. The words never repeat the text.
Serverangabe lies_Serverangabe(const QString& text);

/// A port of 1 to 65535; raises -2147467259 otherwise.
int lies_Port(const QString& text);

}  // namespace adodb
