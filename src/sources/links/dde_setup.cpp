#include "sources/links/dde_setup.h"

#include <optional>
#include <utility>

#include "base/number_text.h"
#include "sources/links/link_text.h"

namespace tarnwick {
namespace {

/// Programs publish numbers with "."; a comma would be one of many things.
std::optional<double> NumberOf(const std::string& text) {
  return text.find(',') == text.npos ? ParseNumber(text) : std::nullopt;
}

}  // namespace

std::string UnreadableValue(std::string_view text) {
  return "Error reading DDE value : " + std::string(text);
}

std::string UnsettableLink(std::string_view link) {
  return '"' + std::string(link) + "\" : can not set link to DDE server!";
}

TDdeSetup::TDdeSetup(std::unique_ptr<LinkTransport> conversation, LinkReads reads,
                     LinkUpdates updates)
    : conversation_(std::move(conversation)), reads_(reads), updates_(updates) {}

void TDdeSetup::SetLink(const std::string& link) {
  conversation_->Close();
  error_.clear();
  const LinkParts parts = SplitLink(link);
  item_ = parts.item;
  if (!conversation_->SetLink(parts.service, parts.topic)) {
    Fail(UnsettableLink(link));
    return;
  }
  if (!conversation_->Open()) {
    Fail('"' + link + "\" : can not open link to DDE server!");
    return;
  }
  if (updates_ == LinkUpdates::Hot) {
    conversation_->Bind(item_, [this](const std::string& text) { Receive(text); });
  }
}

void TDdeSetup::Request() {
  Receive(conversation_->RequestData(item_));
}

void TDdeSetup::Receive(const std::string& text) {
  if (text.empty()) return;
  text_ = text;
  if (reads_ == LinkReads::Numbers) {
    const std::optional<double> number = NumberOf(text);
    if (!number) {
      Fail(UnreadableValue(text));
      return;
    }
    value_ = *number;
  }
  if (on_data_) on_data_(*this);
}

void TDdeSetup::Fail(std::string error) {
  error_ = std::move(error);
  if (on_error_) on_error_(error_);
}

}  // namespace tarnwick
