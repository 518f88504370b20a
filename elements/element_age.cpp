#include "elements/element_age.h"

#include <cmath>

namespace pelorin::elements {

int ElementAgeDays(double nowJd, double epochJd) { return static_cast<int>(std::trunc(nowJd - epochJd)); }

}  // namespace pelorin::elements
