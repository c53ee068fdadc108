#include "sources/links/link_text.h"

#include <algorithm>

#include "base/error.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr std::string_view kBetweenLinks = ",;:";
constexpr std::size_t kMostLinks = 256;

}  // namespace

LinkParts SplitLink(std::string_view link) {
  const std::size_t bar = link.find('|');
  const std::size_t mark = link.find('!', bar == link.npos ? 0 : bar);
  LinkParts parts;
  if (bar != link.npos) {
    parts.service = link.substr(0, bar);
    parts.topic = link.substr(bar + 1, mark == link.npos ? link.npos : mark - bar - 1);
  }
  if (mark != link.npos) parts.item = link.substr(mark + 1);
  return parts;
}

std::vector<std::string> SplitLinkList(std::string_view list) {
  std::vector<std::string> links;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find_first_of(kBetweenLinks), list.size());
    const std::string_view link = TrimBlanks(list.substr(0, end));
    if (!link.empty()) links.emplace_back(link);
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return links;
}

std::string JoinLinks(const std::vector<std::string>& links) {
  std::string list;
  for (const std::string& link : links) list += (list.empty() ? "" : ",") + link;
  return list;
}

std::optional<std::string> WrongWithLink(std::string_view link) {
  const std::string quoted = '"' + std::string(link) + '"';
  if (link.find_first_of(kBetweenLinks) != link.npos) {
    return "None of \",;:\" may stand in a link, they separate links: " + quoted;
  }
  const LinkParts parts = SplitLink(link);
  if (parts.service.empty() || parts.topic.empty() || parts.item.empty()) {
    return "A link is written service|topic!item: " + quoted;
  }
  return std::nullopt;
}

std::vector<std::string> ReadLinkList(std::string_view list) {
  std::vector<std::string> links = SplitLinkList(list);
  if (links.empty()) throw Error("No link is named: a link is written service|topic!item");
  if (links.size() > kMostLinks) {
    throw Error("A list of links holds at most " + Counted(kMostLinks, "link") + ", not " +
                std::to_string(links.size()));
  }
  for (const std::string& link : links) {
    if (const std::optional<std::string> wrong = WrongWithLink(link)) throw Error(*wrong);
  }
  return links;
}

std::vector<std::string> NamesOfLinks(const std::vector<std::string>& links) {
  std::vector<std::string> names;
  for (const std::string& link : links) {
    const std::string item = SplitLink(link).item;
    const auto has_item = [&](const std::string& other) { return SplitLink(other).item == item; };
    names.push_back(std::ranges::count_if(links, has_item) > 1 ? link : item);
  }
  return names;
}

}  // namespace tarnwick
