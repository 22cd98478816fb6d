#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <functional>

#include "bench/Messung.h"
#include "dialogs/search/frm_BilderSuchen.h"

/// The list of the picture search, filled from folders of drive P:.
namespace suchliste {

/// Reads a folder, until all of it is painted.
inline void lies(frm_BilderSuchen& form, const QString& ordner, int anzahl) {
  form.Show_Folder_Content(QStringLiteral("P:\\") + ordner, QStringLiteral("*.*"));
  QCoreApplication::processEvents();
  messung::verlange(form.lvwContent.Count() == anzahl, "the list is not whole");
}

/// Shows the search over an empty folder `leer` of P: and does the work in its event loop.
inline void zeige(const QString& leer, const std::function<void(frm_BilderSuchen&)>& arbeit) {
  frm_BilderSuchen form;
  form.pRootpath = QStringLiteral("P:\\") + leer;
  form.Load();
  form.pDateifilter = QStringLiteral("*.*");
  QTimer::singleShot(0, &form, [&] {
    arbeit(form);
    form.Hide();
  });
  form.Show();
  form.raeume_auf();
}

}  // namespace suchliste
