#include "orbit/element_age.h"

#include <cmath>

namespace pelorin::orbit {

int ElementAgeDays(double nowJd, double epochJd) { return static_cast<int>(std::trunc(nowJd - epochJd)); }

}  // namespace pelorin::orbit
