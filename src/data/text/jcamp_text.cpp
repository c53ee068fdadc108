#include "data/text/jcamp_text.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/ascii.h"
#include "base/error.h"
#include "base/number_text.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostPoints = 20'000'000;  // that repeated values may claim
constexpr std::string_view kUnread = "A table of JCAMP-DX cannot be read";

/// What a label and its value say, blanks and joining signs apart and in capitals: "##PEAK TABLE= (XY..XY)".
struct Label {
  std::string key;
  std::string value;
};

std::string Packed(std::string_view text, std::string_view left_out) {
  std::string packed;
  for (const char c : text) {
    if (left_out.find(c) != left_out.npos || c == '\r') continue;
    packed += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return packed;
}

std::optional<Label> LabelOf(std::string_view line) {
  const std::size_t equals = line.find('=');
  if (!line.starts_with("##") || equals == line.npos) return std::nullopt;
  return Label{Packed(line.substr(2, equals - 2), " -/_"),
               Packed(line.substr(equals + 1, line.find("$$") - equals - 1), " \t")};
}

/// What the labels above a table say of it.
struct Axes {
  std::optional<double> first_x;
  std::optional<double> last_x;
  std::optional<double> step;
  std::optional<double> points;
  double x_factor = 1;
  double y_factor = 1;

  void Take(const Label& label) {
    const std::optional<double> number = ParseNumber(label.value);
    if (label.key == "FIRSTX") first_x = number;
    if (label.key == "LASTX") last_x = number;
    if (label.key == "DELTAX") step = number;
    if (label.key == "NPOINTS") points = number;
    if (label.key == "XFACTOR") x_factor = number.value_or(1);
    if (label.key == "YFACTOR") y_factor = number.value_or(1);
  }
};

/// Where the digit of a letter that packs a sign and the first digit into one stands: "@ABC", "%JKL".
struct FirstDigit {
  enum class Kind : std::uint8_t { None, Value, Difference, Repeat };
  Kind kind = Kind::None;
  bool negative = false;
  char digit = '0';
};

FirstDigit FirstDigitOf(char c) {
  using enum FirstDigit::Kind;
  const auto from = [c](char first, int value) {
    return static_cast<char>('0' + c - first + value);
  };
  if (c == '@') return {Value, false, '0'};
  if (c >= 'A' && c <= 'I') return {Value, false, from('A', 1)};
  if (c >= 'a' && c <= 'i') return {Value, true, from('a', 1)};
  if (c == '%') return {Difference, false, '0'};
  if (c >= 'J' && c <= 'R') return {Difference, false, from('J', 1)};
  if (c >= 'j' && c <= 'r') return {Difference, true, from('j', 1)};
  if (c >= 'S' && c <= 'Z') return {Repeat, false, from('S', 1)};
  if (c == 's') return {Repeat, false, '9'};
  return {};
}

bool Separates(char c) {
  return c == ' ' || c == '\t' || c == ',' || c == ';' || c == '\r';
}

/// The number written out that ends before the next separator.
std::optional<double> TakeWritten(std::string_view& line) {
  while (!line.empty() && Separates(line.front())) line.remove_prefix(1);
  std::size_t size = 0;
  while (size < line.size() && !Separates(line[size])) ++size;
  const std::optional<double> number = ParseNumber(line.substr(0, size));
  line.remove_prefix(size);
  return number;
}

/// A number as it stands on a line, how it was packed, and the rest of the line behind it.
struct Taken {
  double number = 0;
  FirstDigit::Kind kind = FirstDigit::Kind::None;
};

/// Takes a number off the front; nothing when none stands there. A sign, and a letter of a packed form, begin the next. Between
/// numbers written out an exponent may stand.
std::optional<Taken> TakeNumber(std::string_view& line) {
  while (!line.empty() && Separates(line.front())) line.remove_prefix(1);
  if (line.empty()) return std::nullopt;
  const FirstDigit first = FirstDigitOf(line.front());
  std::string written = first.negative ? "-" : "";
  std::size_t size = 0;
  if (first.kind != FirstDigit::Kind::None) {
    written += first.digit;
    size = 1;
  } else if (line.front() == '+' || line.front() == '-') {
    written = line.front() == '-' ? "-" : "";
    size = 1;
  }
  const auto digit_at = [&line](std::size_t at) { return at < line.size() && IsDigit(line[at]); };
  for (; size < line.size(); ++size) {
    const char c = line[size];
    const bool sign = (c == '+' || c == '-') && digit_at(size + 1);
    // "E+05" is an exponent, "E5" a packed number that begins with 5, but behind decimals, which packed ones have not.
    const bool signed_next =
        size + 1 < line.size() && (line[size + 1] == '+' || line[size + 1] == '-');
    const bool exponent = (c == 'E' || c == 'e') &&
                          (signed_next ? digit_at(size + 2)
                                       : digit_at(size + 1) && written.find('.') != written.npos);
    if (exponent) {
      written += 'e';
      if (signed_next) written += line[++size];
    } else if (IsDigit(c) || c == '.') {
      written += c;
    } else if (sign || FirstDigitOf(c).kind != FirstDigit::Kind::None || Separates(c)) {
      break;
    } else {
      return std::nullopt;
    }
  }
  line.remove_prefix(size);
  const std::optional<double> number = ParseNumber(written);
  return number ? std::optional(Taken{*number, first.kind}) : std::nullopt;
}

struct Point {
  double x = 0;
  double y = 0;
};

/// Reads the lines of one table.
class TableReader {
 public:
  TableReader(const Axes& axes, bool pairs, const std::string& name)
      : axes_(axes), pairs_(pairs), name_(name) {}

  void TakeLine(std::string_view line, std::int32_t number) {
    line = TrimBlankBytes(line.substr(0, line.find("$$")));
    if (line.empty()) return;
    line_ = number;
    pairs_ ? TakePairs(line) : TakeValues(line);
  }

  std::vector<Point> Points() && {
    const bool even = !pairs_ && axes_.first_x && axes_.last_x && points_.size() > 1 &&
                      (!axes_.points || *axes_.points == static_cast<double>(points_.size()));
    const double steps = static_cast<double>(points_.size()) - 1;
    for (std::size_t i = 0; even && i < points_.size(); ++i) {
      points_[i].x =
          *axes_.first_x + (*axes_.last_x - *axes_.first_x) * (static_cast<double>(i) / steps);
    }
    return std::move(points_);
  }

 private:
  [[noreturn]] void Fail() const {
    throw FileError(kUnread, name_, "line " + std::to_string(line_));
  }

  Taken Take(std::string_view& line) const {
    const std::optional<Taken> taken = TakeNumber(line);
    if (!taken) Fail();
    return *taken;
  }

  void TakePairs(std::string_view line) {
    while (!line.empty()) {
      const std::optional<double> x = TakeWritten(line);
      const std::optional<double> y = TakeWritten(line);
      if (!x || !y) Fail();
      points_.push_back({*x * axes_.x_factor, *y * axes_.y_factor});
      while (!line.empty() && Separates(line.front())) line.remove_prefix(1);
    }
  }

  void TakeValues(std::string_view line) {
    const Taken x = Take(line);
    if (x.kind != FirstDigit::Kind::None) Fail();
    x_ = x.number * axes_.x_factor;
    on_line_ = 0;
    bool checks = by_differences_;
    by_differences_ = false;
    while (!line.empty()) {
      if (line.front() == '?') {  // a value that is missing
        line.remove_prefix(1);
        ++on_line_;
        continue;
      }
      const Taken taken = Take(line);
      by_differences_ = taken.kind == FirstDigit::Kind::Difference ||
                        (taken.kind == FirstDigit::Kind::Repeat && by_differences_);
      // Behind a line of differences the last value stands again, for a check.
      if (!checks || taken.kind == FirstDigit::Kind::Difference) {
        Add(taken);
      } else if (taken.number == value_) {
        ++on_line_;
      } else {
        Fail();
      }
      checks = false;
      while (!line.empty() && Separates(line.front())) line.remove_prefix(1);
    }
  }

  void Add(const Taken& taken) {
    using enum FirstDigit::Kind;
    if (taken.kind != Repeat) {
      difference_ = taken.kind == Difference ? taken.number : 0;
      value_ = taken.kind == Difference ? value_ + taken.number : taken.number;
      return AddValue();
    }
    // Counted is what is repeated, too.
    if (points_.empty() || !(taken.number >= 1) || taken.number > kMostPoints) Fail();
    for (auto i = static_cast<std::size_t>(taken.number); i > 1; --i) {
      value_ += difference_;
      AddValue();
    }
  }

  void AddValue() {
    if (points_.size() == kMostPoints) Fail();
    points_.push_back({x_ + Step() * on_line_, value_ * axes_.y_factor});
    ++on_line_;
  }

  double Step() const {
    if (axes_.step) return *axes_.step;
    const bool known = axes_.first_x && axes_.last_x && axes_.points && *axes_.points > 1;
    return known ? (*axes_.last_x - *axes_.first_x) / (*axes_.points - 1) : 1;
  }

  const Axes& axes_;
  const bool pairs_;
  const std::string& name_;
  std::vector<Point> points_;
  std::int32_t line_ = 0;
  double x_ = 0;        // of the line's first value
  double on_line_ = 0;  // values of the line so far
  double value_ = 0;
  double difference_ = 0;
  bool by_differences_ = false;  // the last value was told by its difference
};

void Append(const std::vector<Point>& points, std::string& text) {
  for (const Point& point : points) {
    text += ShortestText(point.x) + '\t' + ShortestText(point.y) + '\n';
  }
}

}  // namespace

std::optional<std::string> LinesOfJcamp(std::string_view text, const std::string& name) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == text.npos || !text.substr(begin).starts_with("##")) return std::nullopt;
  std::string lines;
  Axes axes;
  std::optional<TableReader> table;
  bool any = false;
  LineWalker walker(text, text.find('\n') == text.npos ? '\r' : '\n');
  const auto finish = [&] {
    if (table) Append(std::move(*table).Points(), lines);
    table.reset();
  };
  for (std::int32_t number = 1; !walker.AtEnd(); ++number) {
    const std::string_view line = walker.Next();
    const std::optional<Label> label = LabelOf(TrimBlankBytes(line));
    if (label) finish();
    if (table) {
      table->TakeLine(line, number);
      continue;
    }
    lines.append(line) += '\n';
    if (!label) continue;
    axes.Take(*label);
    const bool pairs = label->value == "(XY..XY)";
    if (!pairs && label->value != "(X++(Y..Y))") continue;
    table.emplace(axes, pairs, name);
    any = true;
  }
  finish();
  return any ? std::optional(std::move(lines)) : std::nullopt;
}

}  // namespace tarnwick
