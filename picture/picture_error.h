#pragma once

#include "files/file_error.h"

namespace pelorin::picture {

/// A picture that cannot be decoded or encoded. It is a FileError, so that whoever only wants to tell
/// the user that a picture did not load catches one type.
class PictureError : public files::FileError {
 public:
  using FileError::FileError;
};

}  // namespace pelorin::picture
