// The names of months as German, French, Spanish, Italian, Portuguese, Dutch and Polish write them. Knows words; no calendar.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

/// The text of a date with its month in English and without what other languages put around it: "3 March 2021" for
/// "3. März 2021" and "3 de marzo de 2021", "12-December-21" for "12-déc.-21". Names may be cut to their first three letters
/// and more; letters beyond ASCII are in UTF-8 or eight bits. Nothing where no month is named, or nothing is to be changed.
std::optional<std::string> WithEnglishMonth(std::string_view text);

}  // namespace tarnwick
