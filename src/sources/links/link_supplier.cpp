#include "sources/links/link_supplier.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/error.h"
#include "data/fields/field_value.h"
#include "data/packed/unpack.h"
#include "sources/links/dde_setup.h"
#include "sources/links/link_carrier.h"
#include "sources/links/link_text.h"
#include "sources/streams/stream_clock.h"

namespace tarnwick {
namespace {

std::string WithReason(const std::string& error, const std::string& reason) {
  return reason.empty() ? error : error + " (" + reason + ")";
}

LinkAnswer AskLink(const std::string& link, std::unique_ptr<LinkTransport> conversation) {
  TDdeSetup setup(std::move(conversation), LinkReads::Texts, LinkUpdates::OnRequest);
  setup.SetLink(link);
  if (!setup.Error().empty()) return {{}, WithReason(setup.Error(), setup.Trouble())};
  setup.Request();
  if (setup.Text().empty()) {
    return {{}, WithReason("The link \"" + link + "\" gives no value", setup.Trouble())};
  }
  if (!LinkValue(setup.Text(), ColumnFormat::Automatic)) {
    return {{}, UnreadableValue(setup.Text()) + " (of the link \"" + link + "\")"};
  }
  return {setup.Text(), {}};
}

}  // namespace

std::optional<double> LinkValue(std::string_view text, ColumnFormat format) {
  const std::optional<double> value = ValueOfField(text, format);
  if (value || format != ColumnFormat::Automatic) return value;
  return ValueOfField(text, ColumnFormat::NumberWithUnit);
}

std::vector<LinkAnswer> AskLinks(const std::vector<std::string>& links) {
  const auto new_conversation = LinkCarrier();
  std::vector<LinkAnswer> answers;
  answers.reserve(links.size());
  for (const std::string& link : links) answers.push_back(AskLink(link, new_conversation()));
  return answers;
}

TLinkSupplier::TLinkSupplier(const std::string& list)
    : list_(list),
      links_(ReadLinkList(list)),
      names_(NamesOfLinks(links_)),
      texts_(links_.size()) {}

void TLinkSupplier::Ask(Progress& progress) {
  const auto new_conversation = LinkCarrier();
  for (std::size_t i = 0; i < links_.size(); ++i) {
    if (progress.Cancelled()) throw UnpackingCancelled("Asking links was cancelled");
    LinkAnswer answer = AskLink(links_[i], new_conversation());
    if (!answer.error.empty()) throw Error(answer.error);
    texts_[i] = std::move(answer.text);
  }
  clock_ = StreamClock().Now();
}

void TLinkSupplier::Put(std::int32_t column, std::string text) {
  texts_.at(static_cast<std::size_t>(column)) = std::move(text);
}

std::int32_t TLinkSupplier::ColumnIndex(std::string_view name) {
  const auto link = std::ranges::find(links_, name);
  if (link != links_.end()) return static_cast<std::int32_t>(link - links_.begin());
  const std::int32_t column = TDataSupplier::ColumnIndex(name);
  return column < 0 && name == kJoinedTimeName ? kJoinedTimeColumn : column;
}

std::optional<double> TLinkSupplier::ReadValue(std::int32_t column, ColumnFormat format) {
  if (at_end_) return std::nullopt;
  if (column == kJoinedTimeColumn)
    return IsUndefined(clock_) ? std::nullopt : std::optional(clock_);
  if (column == kRowNumberColumn) return 1;
  return LinkValue(TextAt(column), format);
}

bool TLinkSupplier::HasValue(std::int32_t column) {
  return !at_end_ &&
         (column == kJoinedTimeColumn || column == kRowNumberColumn || !TextAt(column).empty());
}

std::string TLinkSupplier::TextAt(std::int32_t column) {
  const auto at = static_cast<std::size_t>(column);
  return column >= 0 && at < texts_.size() ? texts_[at] : std::string();
}

}  // namespace tarnwick
