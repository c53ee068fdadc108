// The text that names a live link, and lists of such texts. Knows how they are written; opens nothing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// "service|topic!item" in its parts.
struct LinkParts {
  std::string service;  ///< before "|"
  std::string topic;    ///< between "|" and "!"
  std::string item;     ///< behind "!"

  bool operator==(const LinkParts&) const = default;
};

/// What stands at the marks; a part whose mark is missing is empty.
LinkParts SplitLink(std::string_view link);

/// The links of a list, which any of ",;:" separates, without the blanks around them; empty ones are no links.
std::vector<std::string> SplitLinkList(std::string_view list);

/// The list of these links, as a DataSet's description keeps it.
std::string JoinLinks(const std::vector<std::string>& links);

/// Why `link` cannot stand in a list, as a sentence; nothing when it can.
std::optional<std::string> WrongWithLink(std::string_view link);

/// The links of a list. Throws Error when there are none, when one cannot stand there, or when there are too many.
std::vector<std::string> ReadLinkList(std::string_view list);

/// What to call the column of each link: its item, or the whole link where another one has that item too.
std::vector<std::string> NamesOfLinks(const std::vector<std::string>& links);

}  // namespace tarnwick
