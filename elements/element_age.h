#pragma once

namespace pelorin::elements {

/// Whole days from an element epoch to `nowJd`, both Julian dates, cut towards zero: 60 for an age of 60.9
/// days. Negative for an epoch a day or more ahead.
int ElementAgeDays(double nowJd, double epochJd);

}  // namespace pelorin::elements
