// The window that bench_fenster measures against: nothing but Qt, as large as the program's.
#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
  const QApplication programm(argc, argv);
  QWidget fenster;
  fenster.resize(1120, 680);
  fenster.show();
  return QApplication::exec();
}
