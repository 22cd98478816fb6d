#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// The bytes of a file one after the other, from a small buffer. A file that can't be opened or read ends with Abbruch,
/// Ausgang::Datei.
class Bytestrom {
 public:
  /// A path of this machine. Only a regular file is taken: a pipe could be read once only.
  explicit Bytestrom(const QString& datei);

  /// The byte at this place, 0 to 255, or -1 at the end; it stays the next one.
  int sieh() { return ort_ < puffer_.size() || fuelle() ? static_cast<unsigned char>(puffer_.at(ort_)) : -1; }
  /// The same, and goes on behind it.
  int nimm() {
    const int byte = sieh();
    if (byte >= 0) ++ort_;
    return byte;
  }
  void von_vorn();
  qint64 gelesen() const noexcept { return davor_ + ort_; }
  qint64 groesse() const { return datei_.size(); }
  const QString& name() const noexcept { return name_; }

 private:
  bool fuelle();

  QString name_;
  QFile datei_;
  QByteArray puffer_;
  qsizetype ort_ = 0;
  /// Bytes before the buffer.
  qint64 davor_ = 0;
};
