# Flags that every target of ours shares: link pelorin_options.
add_library(pelorin_options INTERFACE)
target_compile_features(pelorin_options INTERFACE cxx_std_20)
target_include_directories(pelorin_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_definitions(pelorin_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS
  PELORIN_VERSION="${PROJECT_VERSION}")
if(MSVC)
  target_compile_options(pelorin_options INTERFACE /W4 /WX /utf-8)
else()
  target_compile_options(pelorin_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wdouble-promotion
    -Wcast-qual -Wundef -Werror)
endif()
if(PELORIN_SANITIZE)
  target_compile_options(pelorin_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  # The sanitizers' own code makes GCC see uninitialised reads in the library's variants that are not there.
  target_compile_options(pelorin_options INTERFACE -Wno-maybe-uninitialized)
  target_link_options(pelorin_options INTERFACE -fsanitize=address,undefined)
endif()
