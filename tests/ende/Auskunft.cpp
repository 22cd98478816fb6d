// A plugin that the unchanged program loads beside its own: it tells a test what the front window shows, and where. It
// reads only; what happens to the program comes from the X server.
#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QComboBox>
#include <QGenericPlugin>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTableView>
#include <QTimer>
#include <QTreeView>

using namespace Qt::Literals::StringLiterals;

namespace {

/// More rows than any list of the suite has; what lies beyond is left out.
constexpr int Zeilengrenze = 400;

QJsonArray rechteck(const QRect& r) {
  return {r.x(), r.y(), r.width(), r.height()};
}

QJsonArray auf_dem_Schirm(const QWidget& widget, const QRect& r) {
  return rechteck(QRect(widget.mapToGlobal(r.topLeft()), r.size()));
}

QString text_von(const QWidget& widget) {
  if (const auto* feld = qobject_cast<const QLineEdit*>(&widget)) return feld->text();
  if (const auto* feld = qobject_cast<const QPlainTextEdit*>(&widget)) return feld->toPlainText();
  if (const auto* feld = qobject_cast<const QLabel*>(&widget)) return feld->text();
  if (const auto* knopf = qobject_cast<const QAbstractButton*>(&widget)) return knopf->text();
  if (const auto* auswahl = qobject_cast<const QComboBox*>(&widget)) return auswahl->currentText();
  return {};
}

bool spalte_verborgen(const QAbstractItemView& liste, int spalte) {
  if (const auto* tabelle = qobject_cast<const QTableView*>(&liste)) return tabelle->isColumnHidden(spalte);
  if (const auto* baum = qobject_cast<const QTreeView*>(&liste)) return baum->isColumnHidden(spalte);
  return false;
}

/// One row: of each column that shows its text and place; a check mark is told as "[x]" or "[ ]".
QJsonObject zeile_von(const QAbstractItemView& liste, const QModelIndex& erste) {
  QJsonArray texte;
  QJsonArray orte;
  for (int spalte = 0; spalte < erste.model()->columnCount(erste.parent()); ++spalte) {
    if (spalte_verborgen(liste, spalte)) continue;
    const QModelIndex stelle = erste.siblingAtColumn(spalte);
    const QVariant haken = stelle.data(Qt::CheckStateRole);
    texte.append(haken.isValid() ? (haken.toInt() == Qt::Checked ? u"[x]"_s : u"[ ]"_s) : stelle.data().toString());
    orte.append(auf_dem_Schirm(*liste.viewport(), liste.visualRect(stelle)));
  }
  const bool gewaehlt = liste.selectionModel() && liste.selectionModel()->isSelected(erste);
  return {{u"texte"_s, texte}, {u"orte"_s, orte}, {u"gewaehlt"_s, gewaehlt}};
}

void sammle_Zeilen(const QAbstractItemView& liste, const QModelIndex& ueber, QJsonArray& zeilen) {
  const auto* baum = qobject_cast<const QTreeView*>(&liste);
  for (int i = 0; i < liste.model()->rowCount(ueber) && zeilen.size() < Zeilengrenze; ++i) {
    const QModelIndex stelle = liste.model()->index(i, 0, ueber);
    zeilen.append(zeile_von(liste, stelle));
    if (baum && baum->isExpanded(stelle)) sammle_Zeilen(liste, stelle, zeilen);
  }
}

/// Whether the mouse would meet the widget in its middle.
bool zu_treffen(const QWidget& widget) {
  const QWidget* dort = QApplication::widgetAt(widget.mapToGlobal(widget.rect().center()));
  return dort && (dort == &widget || widget.isAncestorOf(dort));
}

QJsonObject element_von(const QWidget& widget) {
  QJsonObject element{{u"name"_s, widget.objectName()}, {u"ort"_s, auf_dem_Schirm(widget, widget.rect())},
      {u"sichtbar"_s, widget.isVisible()}, {u"frei"_s, widget.isEnabled()},
      {u"fokus"_s, QApplication::focusWidget() == &widget}, {u"treffbar"_s, widget.isVisible() && zu_treffen(widget)},
      {u"text"_s, text_von(widget)}};
  if (const auto* knopf = qobject_cast<const QAbstractButton*>(&widget)) element[u"an"_s] = knopf->isChecked();
  const auto* liste = qobject_cast<const QAbstractItemView*>(&widget);
  if (liste && liste->model() && liste->isVisible() && !qobject_cast<const QHeaderView*>(&widget)) {
    QJsonArray zeilen;
    sammle_Zeilen(*liste, {}, zeilen);
    element[u"zeilen"_s] = zeilen;
    element[u"flaeche"_s] = auf_dem_Schirm(*liste->viewport(), liste->viewport()->rect());
  }
  return element;
}

const QWidget* fenster_vorn() {
  if (const QWidget* aufgeklappt = QApplication::activePopupWidget()) return aufgeklappt;
  if (const QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (const QWidget* aktiv = QApplication::activeWindow()) return aktiv;
  for (const QWidget* fenster : QApplication::topLevelWidgets())
    if (fenster->isVisible()) return fenster;
  return nullptr;
}

/// What has a name, and what has none but can be told by its text or its rows.
bool von_Belang(const QWidget& widget) {
  return !widget.objectName().isEmpty() || qobject_cast<const QAbstractButton*>(&widget) ||
      qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QAbstractItemView*>(&widget);
}

QJsonObject anblick() {
  const QWidget* vorn = fenster_vorn();
  if (!vorn || !vorn->isVisible()) return {};
  QJsonArray elemente;
  for (const QWidget* kind : vorn->findChildren<QWidget*>())
    if (von_Belang(*kind) && kind->window() == vorn) elemente.append(element_von(*kind));
  const bool aufgeklappt = vorn == QApplication::activePopupWidget();
  return {{u"name"_s, vorn->objectName()}, {u"titel"_s, vorn->windowTitle()},
      {u"kennung"_s, QString::number(vorn->winId())}, {u"ort"_s, auf_dem_Schirm(*vorn, vorn->rect())},
      {u"modal"_s, vorn == QApplication::activeModalWidget()}, {u"aktiv"_s, aufgeklappt || vorn->isActiveWindow()},
      {u"sanduhr"_s, QGuiApplication::overrideCursor() != nullptr}, {u"elemente"_s, elemente}};
}

/// Answers each line of a client with one line, and only where the program waits for its user: neither in the middle of
/// some work that lets events run, nor while events are still to be delivered.
class Auskunft final : public QObject {
 public:
  explicit Auskunft(const QString& adresse) {
    QObject::connect(&server_, &QLocalServer::newConnection, this, [this] { nimm_an(); });
    if (!server_.listen(adresse)) qFatal("kvo_auskunft: no socket at %s", qUtf8Printable(adresse));
    QObject::connect(
        QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] { antworte(); });
  }

 protected:
  /// Comes after all that was posted before it.
  void customEvent(QEvent*) override { reif_ = fragen_; }

 private:
  void nimm_an() {
    QLocalSocket* neuer = server_.nextPendingConnection();
    frager_ = neuer;
    QObject::connect(neuer, &QLocalSocket::readyRead, this, [this, neuer] {
      for (; neuer->canReadLine(); ++fragen_) neuer->readLine();
      QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::LowEventPriority);
    });
  }

  void antworte() {
    if (!frager_ || reif_ == 0) return;
    const QByteArray zeile = QJsonDocument(anblick()).toJson(QJsonDocument::Compact) + '\n';
    for (; reif_ > 0; --reif_, --fragen_) frager_->write(zeile);
    frager_->flush();
  }

  QLocalServer server_;
  QPointer<QLocalSocket> frager_;
  int fragen_ = 0;
  int reif_ = 0;
};

}  // namespace

class Auskunftsplugin final : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "Auskunft.json")

 public:
  /// The address comes in the environment: the argument is split at colons.
  QObject* create(const QString&, const QString&) override {
    return new Auskunft(qEnvironmentVariable("KVO_AUSKUNFT"));
  }
};

#include "Auskunft.moc"
