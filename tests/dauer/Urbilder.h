#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

/// A whole picture file from which others are made by damage.
struct Urbild {
  QString name;
  QString ext;
  QByteArray bytes;
};

/// Small ones of every format that the product reads, each in several makes, those that become a JPEG among them; and
/// the outside test pictures where they are there. Always in the same order.
std::vector<Urbild> urbilder();
