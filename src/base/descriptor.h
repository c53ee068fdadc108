// An open file of the system, closed with its owner. Knows no paths and no formats.
#pragma once

#include <string_view>

namespace tarnwick {

class Descriptor {
 public:
  /// Takes over what `open` answered; a negative value is no file.
  explicit Descriptor(int value) : value_(value) {}
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Value() const { return value_; }

 private:
  int value_;
};

/// Writes all of `bytes`. The system's error number, or 0.
int WriteAll(int descriptor, std::string_view bytes);

}  // namespace tarnwick
