#include "graph/layout/legend_names.h"

#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

constexpr QChar kEllipsis = u'\u2026';

qsizetype CommonBeginning(const QString& left, const QString& right) {
  const auto apart = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  return apart.first - left.begin();
}

qsizetype CommonEnd(const QString& left, const QString& right) {
  const auto apart = std::mismatch(left.rbegin(), left.rend(), right.rbegin(), right.rend());
  return apart.first - left.rbegin();
}

/// `name` with what lies before `begin`, but for its first `head` letters, and what lies from `end` on left out.
QString Cut(const QString& name, qsizetype head, qsizetype begin, qsizetype end) {
  QString text = name.left(std::min(head, begin)).trimmed();
  if (head < begin) text += kEllipsis;
  text += head < begin ? name.mid(begin, end - begin) : name.mid(text.size(), end - text.size());
  if (end < name.size()) text = text.trimmed() + kEllipsis;
  return text;
}

}  // namespace

LegendNames::LegendNames(std::vector<QString> names) : sorted_(std::move(names)) {
  std::sort(sorted_.begin(), sorted_.end());
  sorted_.erase(std::unique(sorted_.begin(), sorted_.end()), sorted_.end());
}

/// Whole words: of "channel 12" and "channel 13" it is the numbers that differ, not their last digits.
LegendNames::Part LegendNames::DifferingPart(const QString& name) const {
  const auto place = std::lower_bound(sorted_.begin(), sorted_.end(), name);
  // The name with the longest common beginning is a neighbour of it in alphabetical order.
  const QString* nearest = nullptr;
  Part part;
  const auto look_at = [&](const QString& other) {
    const qsizetype common = CommonBeginning(name, other);
    if (nearest != nullptr && common <= part.begin) return;
    nearest = &other;
    part.begin = common;
  };
  if (place != sorted_.begin()) look_at(*(place - 1));
  if (place != sorted_.end() && *place == name && place + 1 != sorted_.end()) look_at(*(place + 1));
  if (nearest == nullptr) return {};
  const auto in_word = [&](qsizetype at) {
    return at < name.size() && name[at].isLetterOrNumber();
  };
  part.end = std::max(name.size() - CommonEnd(name, *nearest), part.begin);
  while (part.begin > 0 && in_word(part.begin - 1)) --part.begin;
  while (in_word(part.end)) ++part.end;
  return part;
}

QString LegendNames::Shortened(const QString& name,
                               const std::function<bool(const QString&)>& fits) const {
  if (fits(name)) return name;
  const Part part = DifferingPart(name);
  qsizetype end = part.end;
  while (end > part.begin && !fits(Cut(name, 0, part.begin, end))) --end;
  if (end <= part.begin) return {};
  if (end < part.end) return Cut(name, 0, part.begin, end);
  // What follows is worth as much as what goes before; a whole end has no second "…".
  qsizetype head = 0;
  if (fits(Cut(name, 0, part.begin, name.size()))) end = name.size();
  for (bool grown = true; grown;) {
    grown = false;
    if (head < part.begin && fits(Cut(name, head + 1, part.begin, end))) ++head, grown = true;
    if (end < name.size() && fits(Cut(name, head, part.begin, end + 1))) ++end, grown = true;
  }
  return Cut(name, head, part.begin, end);
}

}  // namespace tarnwick
