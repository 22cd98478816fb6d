#pragma once

#include <QString>
#include <memory>

#include "platform/adodb/Connection.h"
#include "platform/basic/kvo_export.h"

/// The host's settings. This one knows none: whatever is asked for has its default.
class KVO_EXPORT Einstellungen {
 public:
  virtual ~Einstellungen();
  /// Reads one setting into `pWert`; where it was never set, that is `pVorgabe`. What `pWert` held before is lost.
  /// `pProgramm` and `pBenutzer` say whose setting is meant, "Standard" the one that all share.
  /// A store that can't be read raises; the dialog that asked then reports that and does not load.
  virtual void GetSetting(const QString& pAbschnitt, const QString& pSchluessel, QString& pWert,
      const QString& pProgramm, const QString& pBenutzer, const QString& pVorgabe);
};

/// The host's application object, which the dialogs hand on to the host's own components. A host derives its own and
/// overrides what it has; it must outlive the calls that it is given to. Used on the GUI thread.
class KVO_EXPORT Anwendungsobjekt {
 public:
  virtual ~Anwendungsobjekt();
  /// The connect string of the writing connection, in any form that adodb::Connection::Open takes.
  virtual QString ConnectStringDB() const = 0;
  /// The open connection that is read with. It stays the host's: the component borrows it and never closes it.
  virtual std::shared_ptr<adodb::Connection> ConnectionDB() const = 0;

  /// Never null. Without an override a store that knows no setting.
  virtual std::shared_ptr<Einstellungen> Settings() const;

  // What the look-up is given. The component itself reads none of it; each is empty without an override.

  /// Name of the application.
  virtual QString Name() const;
  /// Who is logged on.
  virtual QString User() const;
  /// Folder of the program, without a trailing backslash.
  virtual QString ExeDir() const;
  /// Folder of the report templates, without a trailing backslash.
  virtual QString ReportDBTemplateDir() const;
  /// Name of the database.
  virtual QString DBName() const;
};
