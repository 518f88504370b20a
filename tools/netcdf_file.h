#pragma once

#include <string>
#include <vector>

namespace pelorin::tools {

/// A netCDF file open for reading. All members throw std::runtime_error naming the file, what was asked
/// for and the library's reason.
class NetcdfFile {
 public:
  explicit NetcdfFile(const std::string& path);
  ~NetcdfFile();
  NetcdfFile(const NetcdfFile&) = delete;
  NetcdfFile& operator=(const NetcdfFile&) = delete;

  /// All values of a variable, row by row.
  std::vector<int> Integers(const std::string& variable) const;
  std::vector<double> Reals(const std::string& variable) const;

  /// The value of a variable without dimensions or with a single value.
  int Integer(const std::string& variable) const;

  /// The lengths of a variable's dimensions, the slowest first.
  std::vector<std::size_t> Shape(const std::string& variable) const;

 private:
  int VariableId(const std::string& variable) const;
  std::size_t Count(const std::string& variable) const;
  void Check(int status, const std::string& what) const;

  std::string path_;
  int id_ = 0;
};

}  // namespace pelorin::tools
