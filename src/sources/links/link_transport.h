// What carries live links: one conversation with one program that publishes values. Knows texts; knows no numbers.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace tarnwick {

/// How long an answer is waited for.
inline constexpr std::chrono::milliseconds kLinkPatience{2000};
/// Texts that are longer are cut there: no value needs more.
inline constexpr std::size_t kMostOfLinkText = 4096;

class LinkTransport {
 public:
  using Changed = std::function<void(const std::string& text)>;

  virtual ~LinkTransport() = default;
  LinkTransport(const LinkTransport&) = delete;
  LinkTransport& operator=(const LinkTransport&) = delete;

  /// Takes the two names for the next Open(). False: they name nothing here.
  virtual bool SetLink(const std::string& service, const std::string& topic) = 0;
  /// Meets the program. False: it is not there.
  virtual bool Open() = 0;
  /// Ends the conversation, and what was bound in it. Nothing happens when there is none.
  virtual void Close() = 0;
  /// Asks for the item's present value and waits for it, while the windows are painted anew but take no input. Empty when
  /// there is no answer in time.
  virtual std::string RequestData(const std::string& item) = 0;
  /// From now on `changed` is told every new text of the item, in the thread that the transport was made in.
  virtual void Bind(const std::string& item, Changed changed) = 0;
  /// Why the last step failed, as a clause for people; empty when it did not.
  virtual std::string Trouble() const = 0;

 protected:
  LinkTransport() = default;
};

}  // namespace tarnwick
