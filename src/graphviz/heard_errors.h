#pragma once

// What a library of C says on standard error.

#include <string>

namespace quorbel {

/// From when it is made to the end of the process all that is written by way of the C library's
/// `stderr` is kept here as well. There may be one object, and one thread that writes.
class HeardErrors {
 public:
  /// Without the memory for it nothing is heard, and all goes where it went before.
  HeardErrors();
  /// Lets go what is held back.
  ~HeardErrors();
  HeardErrors(const HeardErrors&) = delete;
  HeardErrors& operator=(const HeardErrors&) = delete;

  /// Holds back from standard error what is written from now on.
  void holdBack();

  /// What was written since the last call. It does not go to standard error if it was held back;
  /// what comes from now on does.
  std::string take();

 private:
  struct Heard;
  static Heard& heard();
};

/// Writes all of the text to standard error.
void sayToUser(const std::string& text);

}  // namespace quorbel
