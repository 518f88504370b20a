#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "passes/pass_details.h"

/// Passes as a table: the same columns in the files of the desktop and on the console.
namespace pelorin::passes {

/// The names of the columns, which tell their units.
QStringList PassColumns();

struct PassCell {
  QString Text;
  bool IsNumber = false;
};

/// The row of a pass: times as "yyyy-mm-ddThh:nn:ssZ", angles with one decimal.
std::vector<PassCell> PassRow(const PassDetails& pass);

}  // namespace pelorin::passes
