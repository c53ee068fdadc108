// Live links over DDE, the exchange of data between running programs that one platform brings with it: service, topic and item
// are its own three names. Compiled there only (docs/live-links.md says what was tried). Knows texts; knows no numbers.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "sources/links/link_transport.h"

namespace tarnwick {

class DdeTransport final : public LinkTransport {
 public:
  explicit DdeTransport(std::chrono::milliseconds patience = kLinkPatience);
  ~DdeTransport() override;

  /// Names of up to 255 letters.
  bool SetLink(const std::string& service, const std::string& topic) override;
  bool Open() override;
  void Close() override;
  std::string RequestData(const std::string& item) override;
  /// Told while the thread dispatches its messages. Trouble() says why where the program refuses.
  void Bind(const std::string& item, Changed changed) override;
  std::string Trouble() const override;

 private:
  class Conversation;
  std::unique_ptr<Conversation> conversation_;
};

}  // namespace tarnwick
