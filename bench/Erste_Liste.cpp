// Linked beside a program's own main: once its list of records has been painted with rows, writes the most memory that
// the process has had so far (kilobytes, as text with a line end) to file descriptor 3 and ends the process.
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QTimer>
#include <QTreeView>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray hoechster_Speicher() {
  QFile stand(u"/proc/self/status"_s);
  if (!stand.open(QIODevice::ReadOnly)) return "0\n";
  for (const QByteArray& zeile : stand.readAll().split('\n'))
    if (zeile.startsWith("VmHWM:")) return zeile.mid(6).trimmed().split(' ').first() + '\n';
  return "0\n";
}

class Wache final : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* empfaenger, QEvent* ereignis) override {
    if (ereignis->type() != QEvent::Paint || gesehen_) return false;
    const auto* baum = qobject_cast<QTreeView*>(empfaenger->parent());
    if (!baum || baum->objectName() != "tree_Vorgaenge"_L1 || baum->model()->rowCount() == 0) return false;
    gesehen_ = true;
    QTimer::singleShot(0, [] {
      const QByteArray speicher = hoechster_Speicher();
      ::_exit(::write(3, speicher.constData(), static_cast<std::size_t>(speicher.size())) > 0 ? 0 : 1);
    });
    return false;
  }

 private:
  bool gesehen_ = false;
};

void setze_Wache() {
  qApp->installEventFilter(new Wache(qApp));
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(setze_Wache)
