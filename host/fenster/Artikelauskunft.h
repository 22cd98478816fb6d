#pragma once

#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

#include "platform/host/Auskunft.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTreeView;

/// The look-up's window: the articles, of which only those stay that contain what is typed.
class Artikelfenster final : public QDialog {
 public:
  /// A row is an article's number, its two short texts and its supplier.
  explicit Artikelfenster(const QList<QStringList>& artikel);
  /// The row that the user picked, or none.
  const QStringList& gewaehlt() const noexcept { return gewaehlt_; }

 protected:
  bool eventFilter(QObject* objekt, QEvent* ereignis) override;

 private:
  void baue_auf();
  void filtere(const QString& text);
  void nimm();

  QSortFilterProxyModel* modell_;
  QLineEdit* txt_Filter;
  QTreeView* tree_Artikel;
  QLabel* lbl_Leer;
  QPushButton* cmd_Nehmen;
  QStringList gewaehlt_;
};

/// The look-up over the program's own article table. It knows the list "Artikel"; any other name raises 5.
class Artikelauskunft final : public clsAuskunft {
 public:
  std::int32_t Anzeige_Auskunft(const QString& pName, const QString& pZusatz, const QString& pAppName,
      const QString& pUser, const QString& pExeDir, const QString& pConnectString,
      const std::shared_ptr<adodb::Connection>& pConnection, Auskunftsempfaenger& pEmpfaenger,
      const QString& pReportDBTemplateDir, const QString& pDBName) override;
};
