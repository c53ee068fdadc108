// The parts of a zip archive, unpacked piece by piece within bounds. Knows no formats inside.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct zip;

namespace tarnwick {

class ZipParts {
 public:
  /// Throws Error when the file is no whole zip archive.
  explicit ZipParts(const std::string& file);

  bool Has(const std::string& part) const;
  /// Hands the part's bytes over in pieces. Throws Error for a part that is missing, damaged, locked by a password, or grows
  /// as no table does.
  void Read(const std::string& part, const std::function<void(std::string_view)>& take) const;
  /// The whole of a small part. Throws also when it has more than `most` bytes.
  std::string ReadSmall(const std::string& part, std::size_t most) const;

 private:
  struct Closing {
    void operator()(zip* archive) const;
  };
  std::unique_ptr<zip, Closing> archive_;
};

}  // namespace tarnwick
