#include "tools/netcdf_file.h"

#include <netcdf.h>

#include <array>
#include <stdexcept>

namespace pelorin::tools {

NetcdfFile::NetcdfFile(const std::string& path) : path_(path) {
  Check(nc_open(path.c_str(), NC_NOWRITE, &id_), "cannot open");
}

NetcdfFile::~NetcdfFile() { nc_close(id_); }

std::vector<int> NetcdfFile::Integers(const std::string& variable) const {
  std::vector<int> values(Count(variable));
  Check(nc_get_var_int(id_, VariableId(variable), values.data()), variable);
  return values;
}

std::vector<double> NetcdfFile::Reals(const std::string& variable) const {
  std::vector<double> values(Count(variable));
  Check(nc_get_var_double(id_, VariableId(variable), values.data()), variable);
  return values;
}

int NetcdfFile::Integer(const std::string& variable) const {
  const std::vector<int> values = Integers(variable);
  if (values.size() != 1) throw std::runtime_error(path_ + ": " + variable + ": not a single value");
  return values.front();
}

std::vector<std::size_t> NetcdfFile::Shape(const std::string& variable) const {
  std::array<int, NC_MAX_VAR_DIMS> dimensions{};
  int count = 0;
  Check(nc_inq_varndims(id_, VariableId(variable), &count), variable);
  Check(nc_inq_vardimid(id_, VariableId(variable), dimensions.data()), variable);
  std::vector<std::size_t> shape(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < shape.size(); ++i) {
    Check(nc_inq_dimlen(id_, dimensions[i], &shape[i]), variable);
  }
  return shape;
}

int NetcdfFile::VariableId(const std::string& variable) const {
  int id = 0;
  Check(nc_inq_varid(id_, variable.c_str(), &id), variable);
  return id;
}

std::size_t NetcdfFile::Count(const std::string& variable) const {
  std::size_t count = 1;
  for (const std::size_t length : Shape(variable)) count *= length;
  return count;
}

void NetcdfFile::Check(int status, const std::string& what) const {
  if (status != NC_NOERR) throw std::runtime_error(path_ + ": " + what + ": " + nc_strerror(status));
}

}  // namespace pelorin::tools
