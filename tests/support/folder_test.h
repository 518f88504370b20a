#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <exception>

namespace pelorin::tests {

/// A test with a folder of its own, which goes with it.
class FolderTest : public testing::Test {
 protected:
  QString Path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)); }
  QString Folder() const { return folder_.path(); }

 private:
  QTemporaryDir folder_;
};

/// What the user is told when `work` fails; empty when it does not.
template <class Work>
QString ErrorOf(const Work& work) {
  try {
    work();
  } catch (const std::exception& error) {
    return QString::fromUtf8(error.what());
  }
  return QString();
}

}  // namespace pelorin::tests
