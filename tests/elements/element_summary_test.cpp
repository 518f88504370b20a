#include "elements/element_summary.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "elements/known_sets.h"
#include "elements/stale_elements.h"
#include "orbit/date_time.h"
#include "orbit/julian_date.h"

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;

TEST(ElementSummary, RowsShowTheSetsAsWritten) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"Mixed.2LI"_s));
  ASSERT_TRUE(file.open(QFile::WriteOnly));
  file.write(
      "NOAA 15\r\n"
      "1 25338U 98030A   22053.20978316  .00000040  00000-0  35324-4 0  9991\r\n"
      "2 25338  98.5948  80.9236 0010543 126.9210 233.2986 14.26067512238519\r\n"
      "Meteor 2-21\r\n"
      "1 22782U 93055A   05063.50000000  .00000040  00000-0  35324-4 0  9991\r\n"
      "2 22782  82.5481  80.9236 0010543 126.9210 233.2986 13.83067512238519\r\n");
  file.close();
  const double nowJd = JulianDateOfDateTime(orbit::MakeDateTime(2022, 2, 20, 12));
  QStringList rows;
  KnownSets known(folder.path().toStdString(), {});
  for (const ElementSummaryRow& row : ElementSummary(known.Satellites(), nowJd)) {
    rows.append(
        QStringList{row.Satellite, row.CatalogueNumber, row.Epoch, QString::number(row.DaysAge), row.File}
            .join(u'|'));
  }
  // 2005 March 4 is 6197 days before, 2022 February 22 still to come.
  EXPECT_EQ(rows, (QStringList{u"Meteor 2-21|22782| 5063.50000000|6197|Mixed.2LI"_s,
                               u"NOAA 15|25338|22053.20978316|-1|Mixed.2LI"_s}));
  EXPECT_EQ(LargestElementAge(known.Satellites(), nowJd), 6197);
  EXPECT_EQ(LargestElementAge(known.Satellites(), nowJd - 6200), 0) << "no set is of the past";
}

}  // namespace
}  // namespace pelorin::elements
