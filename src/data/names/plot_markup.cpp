#include "data/names/plot_markup.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/text_encoding.h"

namespace tarnwick {
namespace {

/// A character and what is written for it.
struct Sign {
  char plain;
  std::string_view shown;
};

constexpr Sign kRaised[] = {{'0', "\xE2\x81\xB0"}, {'1', "\xC2\xB9"},     {'2', "\xC2\xB2"},
                            {'3', "\xC2\xB3"},     {'4', "\xE2\x81\xB4"}, {'5', "\xE2\x81\xB5"},
                            {'6', "\xE2\x81\xB6"}, {'7', "\xE2\x81\xB7"}, {'8', "\xE2\x81\xB8"},
                            {'9', "\xE2\x81\xB9"}, {'+', "\xE2\x81\xBA"}, {'-', "\xE2\x81\xBB"}};
constexpr Sign kLowered[] = {{'0', "\xE2\x82\x80"}, {'1', "\xE2\x82\x81"}, {'2', "\xE2\x82\x82"},
                             {'3', "\xE2\x82\x83"}, {'4', "\xE2\x82\x84"}, {'5', "\xE2\x82\x85"},
                             {'6', "\xE2\x82\x86"}, {'7', "\xE2\x82\x87"}, {'8', "\xE2\x82\x88"},
                             {'9', "\xE2\x82\x89"}, {'+', "\xE2\x82\x8A"}, {'-', "\xE2\x82\x8B"}};
constexpr Sign kGreek[] = {
    {'a', "\xCE\xB1"}, {'b', "\xCE\xB2"}, {'g', "\xCE\xB3"}, {'d', "\xCE\xB4"}, {'e', "\xCE\xB5"},
    {'z', "\xCE\xB6"}, {'h', "\xCE\xB7"}, {'q', "\xCE\xB8"}, {'i', "\xCE\xB9"}, {'k', "\xCE\xBA"},
    {'l', "\xCE\xBB"}, {'m', "\xCE\xBC"}, {'n', "\xCE\xBD"}, {'x', "\xCE\xBE"}, {'p', "\xCF\x80"},
    {'r', "\xCF\x81"}, {'s', "\xCF\x83"}, {'t', "\xCF\x84"}, {'f', "\xCF\x86"}, {'c', "\xCF\x87"},
    {'y', "\xCF\x88"}, {'w', "\xCF\x89"}, {'G', "\xCE\x93"}, {'D', "\xCE\x94"}, {'Q', "\xCE\x98"},
    {'L', "\xCE\x9B"}, {'P', "\xCE\xA0"}, {'S', "\xCE\xA3"}, {'F', "\xCE\xA6"}, {'Y', "\xCE\xA8"},
    {'W', "\xCE\xA9"}};

template <std::size_t kSize>
std::string_view Shown(const Sign (&signs)[kSize], char plain) {
  const auto found = std::ranges::find(signs, plain, &Sign::plain);
  return found == std::end(signs) ? std::string_view() : found->shown;
}

class MarkupReader {
 public:
  explicit MarkupReader(std::string_view label) : label_(label) {}

  std::string Read() {
    while (at_ < label_.size()) {
      const char c = label_[at_++];
      if (c == '\\' && TakeCode()) continue;
      Write(c);
    }
    return std::string(TrimBlanks(text_));
  }

 private:
  enum class Place : std::uint8_t { Line, Raised, Lowered };

  /// False where the backslash begins no code.
  bool TakeCode() {
    constexpr std::string_view kDropped = "uUoObBcClLqQnR+-";
    constexpr std::string_view kBraced = "fhvztrmMR";
    if (at_ >= label_.size()) return true;
    const char code = label_[at_];
    const bool braced =
        at_ + 1 < label_.size() && label_[at_ + 1] == '{' && label_.find('}', at_) != label_.npos;
    if (braced && kBraced.find(code) != kBraced.npos) {
      TakeBraced(code);
      return true;
    }
    const bool known = code == 's' || code == 'S' || code == 'N' || code == 'x' || IsDigit(code) ||
                       kDropped.find(code) != kDropped.npos;
    if (!known) return false;
    ++at_;
    if (code == 's') Move(Place::Lowered);
    if (code == 'S') Move(Place::Raised);
    if (code == 'N') Move(Place::Line);
    if (code == 'x') greek_ = true;
    if (IsDigit(code)) greek_ = code == '8';  // the eighth of the older fonts
    if (code == 'n' && !text_.empty()) text_ += ' ';
    return true;
  }
  void TakeBraced(char code) {
    const std::size_t close = label_.find('}', at_);
    const std::string_view inside = label_.substr(at_ + 2, close - at_ - 2);
    // Of the fonts that have numbers only the twelfth is of symbols wherever it is not said otherwise.
    if (code == 'f') greek_ = LowerAscii(inside).starts_with("symbol") || inside == "12";
    at_ = close + 1;
  }
  void Move(Place place) {
    place_ = place;
    begins_ = place != Place::Line;
  }
  void Write(char c) {
    const std::string_view other = place_ == Place::Raised    ? Shown(kRaised, c)
                                   : place_ == Place::Lowered ? Shown(kLowered, c)
                                                              : std::string_view();
    if (!other.empty()) {
      text_ += other;
    } else {
      if (begins_) text_ += place_ == Place::Raised ? '^' : '_';
      const std::string_view greek = greek_ ? Shown(kGreek, c) : std::string_view();
      if (greek.empty()) {
        text_ += c;
      } else {
        text_ += greek;
      }
    }
    begins_ = false;
  }

  const std::string_view label_;
  std::size_t at_ = 0;
  Place place_ = Place::Line;
  bool begins_ = false;  // nothing was written at this place yet
  bool greek_ = false;
  std::string text_;
};

}  // namespace

std::string WithoutPlotMarkup(std::string_view label) {
  return label.find('\\') == label.npos ? std::string(label) : MarkupReader(label).Read();
}

}  // namespace tarnwick
