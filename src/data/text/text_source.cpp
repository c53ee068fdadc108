#include "data/text/text_source.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "base/error.h"
#include "base/text_encoding.h"
#include "data/fields/quoted_lines.h"
#include "data/packed/packing.h"
#include "data/packed/unpack.h"
#include "data/text/emsa_text.h"
#include "data/text/jcamp_text.h"
#include "data/text/known_binaries.h"
#include "data/text/touchstone_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kHeadBytes = 64 * 1024;
constexpr std::size_t kProbeBytes = 512;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigMark = "\xFE\xFF";

/// UTF-16 without a mark: western text has a zero in nearly every second byte and nowhere else.
std::optional<ByteOrder> Utf16ByZeros(std::string_view bytes) {
  const std::string_view probe = bytes.substr(0, std::min(bytes.size(), kProbeBytes));
  std::size_t zeros[2] = {0, 0};
  for (std::size_t i = 0; i < probe.size(); ++i) {
    if (probe[i] == '\0') ++zeros[i % 2];
  }
  const std::size_t enough = probe.size() / 4 + 1;
  if (zeros[1] >= enough && zeros[0] == 0) return ByteOrder::LittleEndian;
  if (zeros[0] >= enough && zeros[1] == 0) return ByteOrder::BigEndian;
  return std::nullopt;
}

std::optional<ByteOrder> Utf16Order(std::string_view bytes) {
  if (bytes.starts_with(kUtf16LittleMark)) return ByteOrder::LittleEndian;
  if (bytes.starts_with(kUtf16BigMark)) return ByteOrder::BigEndian;
  return Utf16ByZeros(bytes);
}

char FindLineEnd(std::string_view text) {
  const std::string_view head = text.substr(0, std::min(text.size(), kHeadBytes));
  const bool only_returns = head.find('\n') == head.npos && head.find('\r') != head.npos;
  // A return that ends the probe may have its line feed just behind it.
  const bool cut = only_returns && head.size() < text.size() && text[head.size()] == '\n';
  return only_returns && !cut ? '\r' : '\n';
}

void RefuseZeroByte(std::string_view text, const std::string& name) {
  const std::size_t zero = text.substr(0, std::min(text.size(), kHeadBytes)).find('\0');
  if (zero == text.npos) return;
  throw FileError("The file is binary, not text: it holds a zero byte", name,
                  "byte " + std::to_string(zero + 1));
}

/// The lines of a format in which rows are written otherwise than as lines of fields.
std::optional<std::string> LinesOfFormat(std::string_view text, const std::string& name) {
  std::optional<std::string> lines = LinesOfJcamp(text, name);
  if (!lines) lines = LinesOfEmsa(text, name);
  if (!lines) lines = LinesOfTouchstone(text);
  return lines;
}

}  // namespace

void RefuseBinaryBlock(std::string_view first, const std::string& name) {
  const bool named = PackingOf(first) != nullptr || !WhyNoText(first, name).empty();
  if (!named && !Utf16Order(first)) RefuseZeroByte(first, name);
}

TextSource::TextSource(MappedFile file, std::string name)
    : file_(std::move(file)), name_(std::move(name)) {
  Recognise(file_->Bytes());
}

TextSource::TextSource(std::string bytes, std::string name)
    : converted_(std::move(bytes)), name_(std::move(name)) {
  Recognise(converted_);
}

void TextSource::Recognise(std::string_view bytes) {
  if (bytes.empty()) throw FileError("The file is empty", name_, "");
  if (const std::string why = WhyNoText(bytes, name_); !why.empty())
    throw FileError(why, name_, "");
  text_ = bytes;
  if (const std::optional<ByteOrder> order = Utf16Order(bytes)) {
    if (bytes.size() % 2 != 0) {
      throw FileError("The UTF-16 text breaks off in the middle of a character", name_,
                      "byte " + std::to_string(bytes.size()));
    }
    converted_ = Utf8FromUtf16(bytes, *order);
    text_ = converted_;
  } else if (bytes.starts_with(kUtf8Mark)) {
    text_.remove_prefix(kUtf8Mark.size());
  }
  RefuseZeroByte(text_, name_);
  if (text_.empty()) throw FileError("The file is empty", name_, "");
  if (std::optional<std::string> lines = LinesOfFormat(text_, name_)) {
    converted_ = *std::move(lines);
    text_ = converted_;
  } else {
    JoinQuotedLines();
  }
  line_end_ = FindLineEnd(text_);
}

void TextSource::JoinQuotedLines() {
  // Who quotes fields does so from the line of names on: texts without quotes are spared the search.
  if (text_.substr(0, kHeadBytes).find('"') == text_.npos) return;
  const std::vector<std::size_t> line_ends = LineEndsInQuotes(text_);
  if (line_ends.empty()) return;
  std::string joined(text_);
  for (const std::size_t place : line_ends) joined[place] = ' ';
  converted_ = std::move(joined);
  text_ = converted_;
}

MappedFile OpenSourceFile(const std::filesystem::path& path, Progress& progress,
                          const FirstLook& look) {
  const bool standard_input = path == "-";
  MappedFile file = standard_input ? MappedFile::StandardInput(look) : MappedFile(path, look);
  const Packing* const packing = PackingOf(file.Bytes());
  if (packing == nullptr) return file;
  return Unpack(*packing, file.Bytes(), standard_input ? "standard input" : path.string(),
                progress);
}

}  // namespace tarnwick
