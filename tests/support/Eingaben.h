#pragma once

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>

/// Real mouse and key events: they go to the window and take the toolkit's own way to the control.
namespace eingaben {

inline QPoint im_Fenster(const QWidget& ziel, QPoint wo) {
  return ziel.mapTo(ziel.window(), wo == QPoint(-1, -1) ? ziel.rect().center() : wo);
}

inline void klicke(QWidget& ziel, QPoint wo = QPoint(-1, -1), Qt::KeyboardModifiers dazu = {}) {
  QTest::mouseClick(ziel.window()->windowHandle(), Qt::LeftButton, dazu, im_Fenster(ziel, wo));
}

inline void doppelklicke(QWidget& ziel, QPoint wo = QPoint(-1, -1)) {
  QTest::mouseDClick(ziel.window()->windowHandle(), Qt::LeftButton, {}, im_Fenster(ziel, wo));
}

/// Where a list shows a row, counted from 0; scrolls there.
inline QPoint Ort_der_Zeile(QAbstractItemView& liste, int zeile) {
  const QModelIndex stelle = liste.model()->index(zeile, 0);
  liste.scrollTo(stelle);
  return liste.viewport()->mapTo(&liste, liste.visualRect(stelle).center());
}

inline void klicke_Zeile(QAbstractItemView& liste, int zeile, Qt::KeyboardModifiers dazu = {}) {
  klicke(liste, Ort_der_Zeile(liste, zeile), dazu);
}

inline void doppelklicke_Zeile(QAbstractItemView& liste, int zeile) {
  doppelklicke(liste, Ort_der_Zeile(liste, zeile));
}

inline void taste(QWidget& fenster, Qt::Key qt_Taste, Qt::KeyboardModifiers dazu = {}) {
  QTest::keyClick(fenster.window()->windowHandle(), qt_Taste, dazu);
}

inline void tippe(QWidget& feld, const QString& text) {
  feld.setFocus();
  for (const QChar zeichen : text) {
    // Qt's table of keys ends with ASCII.
    if (zeichen.unicode() < 0x80)
      QTest::keyClick(feld.window()->windowHandle(), zeichen.toLatin1());
    else
      QTest::sendKeyEvent(QTest::Click, &feld, Qt::Key_unknown, QString(zeichen), {});
  }
}

/// The frame's own button.
inline void schliesse_Rahmen(QWidget& fenster) {
  fenster.window()->close();
}

}  // namespace eingaben
