#pragma once

#include <QStringList>

/// One dialog as a program of its own, for a caller that is no C++ program.
namespace dialogprogramm {

/// Runs a call of "bildzuordnung dialog" and gives the exit code (host/betrieb/Ausgang.h). `argumente` stand behind the
/// word "dialog". The result is one line on standard output. Makes the QApplication itself, once the call is
/// understood.
int laufe(int& argc, char** argv, const QStringList& argumente);

}  // namespace dialogprogramm
