// A client of one value that another running program publishes. Knows how a link is set, asked and told of changes; what
// carries it is a LinkTransport.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "sources/links/link_transport.h"

namespace tarnwick {

/// What a link makes of each text received.
enum class LinkReads { Texts, Numbers };

/// Whether the program is asked for the value, or tells by itself whenever it changes.
enum class LinkUpdates { OnRequest, Hot };

/// The error text of a received text that is no number.
std::string UnreadableValue(std::string_view text);
/// That of a link whose service and topic are no names where it is looked for.
std::string UnsettableLink(std::string_view link);

class TDdeSetup {
 public:
  using OnData = std::function<void(const TDdeSetup&)>;
  using OnError = std::function<void(const std::string& error)>;

  TDdeSetup(std::unique_ptr<LinkTransport> conversation, LinkReads reads, LinkUpdates updates);
  TDdeSetup(const TDdeSetup&) = delete;
  TDdeSetup& operator=(const TDdeSetup&) = delete;

  /// Called after each value received.
  void SetOnData(OnData on_data) { on_data_ = std::move(on_data); }
  /// Called after an error text is set.
  void SetOnError(OnError on_error) { on_error_ = std::move(on_error); }

  /// Leaves the link there was for the one that `link` names, "service|topic!item". What fails stands in Error().
  void SetLink(const std::string& link);
  /// Asks for the present value and receives the answer; one that is empty, or does not come, changes nothing.
  void Request();

  const std::string& Item() const { return item_; }
  /// Empty, or the last error text.
  const std::string& Error() const { return error_; }
  /// The last value, of a link that reads numbers.
  double Value() const { return value_; }
  /// The last text received.
  const std::string& Text() const { return text_; }
  LinkReads Reads() const { return reads_; }
  LinkUpdates Updates() const { return updates_; }
  /// What the conversation says of its last step, as a clause; empty when it went well.
  std::string Trouble() const { return conversation_->Trouble(); }

 private:
  void Receive(const std::string& text);
  void Fail(std::string error);

  std::unique_ptr<LinkTransport> conversation_;
  LinkReads reads_;
  LinkUpdates updates_;
  std::string item_;
  std::string error_;
  std::string text_;
  double value_ = 0;
  OnData on_data_;
  OnError on_error_;
};

}  // namespace tarnwick
