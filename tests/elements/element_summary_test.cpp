#include "elements/element_summary.h"

#include <gtest/gtest.h>

#include "elements/known_sets.h"
#include "elements/stale_elements.h"
#include "files/atomic_file.h"
#include "orbit/date_time.h"
#include "orbit/julian_date.h"
#include "tests/support/element_messages.h"
#include "tests/support/folder_test.h"

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;

class ElementSummaries : public tests::FolderTest {};

TEST_F(ElementSummaries, RowsShowTheSetsAsWritten) {
  files::ReplaceFile(Path("Mixed.2LI"),
                     QByteArray::fromStdString(tests::SetOf("NOAA 15", "25338", "22053.20978316") +
                                               tests::SetOf("Meteor 2-21", "22782", "05063.50000000")));
  const double nowJd = JulianDateOfDateTime(orbit::MakeDateTime(2022, 2, 20, 12));
  QStringList rows;
  KnownSets known(Folder().toStdString(), {});
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
