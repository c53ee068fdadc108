// XML as a stream of elements and texts, without the means by which a small file grows large. Knows no vocabulary.
#pragma once

#include <functional>
#include <string_view>

namespace tarnwick {

/// The attributes of one element, by names without prefix.
class XmlAttributes {
 public:
  explicit XmlAttributes(const char** pairs) : pairs_(pairs) {}
  /// Empty where there is none. Good while the element is handed over.
  std::string_view operator[](std::string_view name) const;
  bool Has(std::string_view name) const { return Find(name) != nullptr; }
  /// True when one of those that bear the name with some prefix has the value.
  bool Holds(std::string_view name, std::string_view value) const;

 private:
  const char* Find(std::string_view name) const;
  const char** pairs_;
};

/// Takes what a document holds, in order. Names come without prefix.
class XmlHandler {
 public:
  virtual ~XmlHandler() = default;
  virtual void Start(std::string_view name, const XmlAttributes& attributes) = 0;
  virtual void End(std::string_view name) = 0;
  virtual void Text(std::string_view text) = 0;
};

/// Reads a document whose bytes `read` hands to what it is given. Throws Error, with `part` for its name, when it is no XML,
/// declares a document type (and with it entities), or nests too deep; and what the handler throws.
void ReadXml(std::string_view part,
             const std::function<void(const std::function<void(std::string_view)>&)>& read,
             XmlHandler& handler);

}  // namespace tarnwick
