#pragma once

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QStringList>
#include <QTest>
#include <functional>
#include <memory>

#include "platform/forms/gitter/TDBGrid.h"
#include "platform/forms/steuerelemente/Ereigniswache.h"
#include "tests/support/Eingaben.h"
#include "tests/support/Fehler.h"
#include "tests/support/Umgebung.h"

/// A window that keeps its handlers' failures, as a form does.
class Probefenster final : public QWidget, public Ereigniswache {
 public:
  void bewacht(const std::function<void()>& handler) override {
    if (tiefe_ > 0) return handler();
    ++tiefe_;
    const std::int32_t nummer = Fehlernummer_von(handler);
    --tiefe_;
    if (nummer != 0) fehler.append(nummer);
  }
  void abgeschirmt(const std::function<void()>& handler) noexcept override {
    const std::int32_t nummer = Fehlernummer_von(handler);
    if (nummer != 0) fehler.append(nummer);
  }
  QList<std::int32_t> fehler;

 private:
  int tiefe_ = 0;
};

/// A grid in a window that shows, over an array whose cells hold "row.column"; its events are noted in order.
class Gitterprobe : public ::testing::Test {
 protected:
  static constexpr auto Zeilen = XArrayDBObject::Dimension::Zeilen;

  Gitterprobe() {
    fenster.resize(700, 400);
    gitter.Move(0, 0, 9000, 5250);
    gitter.RowColChange = [this](std::int32_t zeile, std::int32_t) { note(u"zeile", zeile, gitter.Row()); };
    gitter.SelChange = [this] { ereignisse += QStringLiteral("auswahl ") + auswahl(); };
    gitter.Click = [this] { ereignisse += QStringLiteral("klick"); };
    gitter.AfterColEdit = [this](std::int32_t spalte) {
      ereignisse += QStringLiteral("eingabe %1 %2").arg(spalte).arg(gitter.Text());
    };
    gitter.AfterUpdate = [this] { ereignisse += QStringLiteral("geschrieben"); };
  }

  void fuelle(int zeilen, int spalten) {
    array->ReDim(0, zeilen - 1, 0, spalten - 1);
    for (int z = 0; z < zeilen; ++z)
      for (int s = 0; s < spalten; ++s) array->Value(z, s, QStringLiteral("%1.%2").arg(z).arg(s));
  }
  /// A list as the assignments of a picture: nothing can be edited, the first column is hidden.
  void zeige_Liste(int zeilen) {
    gitter.AddColumn({.Caption = QStringLiteral("versteckt"), .Visible = false, .Locked = true});
    gitter.AddColumn({.Caption = QStringLiteral("Text"), .Locked = true});
    fuelle(zeilen, 2);
    zeige();
  }
  /// A grid to enter into: a column with a button, a locked one, a hidden one.
  void zeige_Eingabe(int zeilen) {
    gitter.AddColumn({.Caption = QStringLiteral("Nr"), .Width = 2500, .Button = true});
    gitter.AddColumn({.Caption = QStringLiteral("Text"), .Locked = true});
    gitter.AddColumn({.Caption = QStringLiteral("versteckt"), .Visible = false, .Locked = true});
    gitter.AllowAddNew(true);
    fuelle(zeilen, 3);
    zeige();
  }
  void zeige() {
    binde();
    fenster.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&fenster));
    gitter.setFocus();
    ereignisse.clear();
  }
  void binde() {
    gitter.Array(array);
    gitter.ReBind();
    gitter.Refresh();
  }

  QString gezeigt(int zeile, int spalte) const { return gitter.model()->index(zeile, spalte).data().toString(); }
  QString marke(int zeile) const { return gitter.model()->headerData(zeile, Qt::Vertical).toString(); }
  QString im_Array(int zeile, int spalte) const { return mit_Leertext(array->Value(zeile, spalte)); }
  QString auswahl() const {
    QStringList zeilen;
    for (int i = 0; i < gitter.SelBookmarks().Count(); ++i) zeilen += QString::number(gitter.SelBookmarks().Item(i));
    return zeilen.join(u',');
  }

  QRect ort(int zeile, int spalte) { return gitter.visualRect(gitter.model()->index(zeile, spalte)); }
  void klicke(int zeile, int spalte, Qt::KeyboardModifiers dazu = {}) {
    eingaben::klicke(*gitter.viewport(), ort(zeile, spalte).center(), dazu);
  }
  QPoint ort_des_Waehlers(int zeile) {
    const QHeaderView& kopf = *gitter.verticalHeader();
    return {kopf.width() / 2, kopf.sectionViewportPosition(zeile) + kopf.sectionSize(zeile) / 2};
  }
  void klicke_Waehler(int zeile, Qt::KeyboardModifiers dazu = {}) {
    eingaben::klicke(*gitter.verticalHeader()->viewport(), ort_des_Waehlers(zeile), dazu);
  }
  void ziehe(QWidget& ziel, QPoint von, QPoint nach) {
    QWindow& handle = *fenster.windowHandle();
    QTest::mousePress(&handle, Qt::LeftButton, {}, eingaben::im_Fenster(ziel, von));
    QTest::mouseMove(&handle, eingaben::im_Fenster(ziel, (von + nach) / 2));
    QTest::mouseMove(&handle, eingaben::im_Fenster(ziel, nach));
    QTest::mouseRelease(&handle, Qt::LeftButton, {}, eingaben::im_Fenster(ziel, nach));
  }
  void taste(Qt::Key qt_Taste, Qt::KeyboardModifiers dazu = {}) { eingaben::taste(fenster, qt_Taste, dazu); }
  void tippe(const char* text) {
    for (; *text; ++text) QTest::keyClick(fenster.windowHandle(), *text);
  }
  QStringList hole() { return std::exchange(ereignisse, {}); }

  std::shared_ptr<XArrayDBObject> array = std::make_shared<XArrayDBObject>();
  Probefenster fenster;
  TDBGrid gitter{&fenster, QStringLiteral("TDBG_Probe")};
  QStringList ereignisse;

 private:
  void note(QStringView was, std::int32_t vorher, std::int32_t jetzt) {
    ereignisse += QStringLiteral("%1 %2>%3").arg(was).arg(vorher).arg(jetzt);
  }
};
