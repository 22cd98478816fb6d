#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <functional>

#include "platform/forms/steuerelemente/Steuerelement.h"

/// A list of folders: the path from the root down, one step to the right for each level, and below it the folders of
/// the last one. A double click or Enter opens a folder. Hidden folders (a dot in front) and links are left out.
class DirListBox : public QListView, public Steuerelement {
 public:
  /// Starts at the current directory of the process.
  explicit DirListBox(QWidget* behaelter, const QString& name);

  /// As the table writes it, with a closing backslash only for the root of a drive.
  const QString& Path() const noexcept { return pfad_; }
  /// Goes to a folder; "X:" alone is the current directory of that drive, which for every drive but that of the process
  /// is its root. Raises 76 for one that is missing, 70 for one that can't be read, and stays where it is. Raises
  /// Change when the path really changes.
  void Path(const QString& wert);

  std::function<void()> Change;

 protected:
  void keyPressEvent(QKeyEvent* ereignis) override;
  void mouseDoubleClickEvent(QMouseEvent* ereignis) override;

 private:
  class Modell;
  void oeffne(const QModelIndex& stelle);

  Modell* const modell_;
  QString pfad_;
};
