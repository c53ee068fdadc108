#include "fit/model/fit_record_file.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <memory>
#include <unordered_map>
#include <utility>

#include "base/number_list_text.h"
#include "base/number_text.h"
#include "fit/model/fit_result_rows.h"

namespace tarnwick {
namespace {

constexpr std::string_view kOfAll = "all";
constexpr std::string_view kKinds[] = {"fixed", "varied", "tied"};

std::string_view KindOf(const ParameterSettings& parameter) {
  return parameter.Tie.empty() ? kKinds[parameter.Vary ? 1 : 0] : kKinds[2];
}

std::string HexText(std::uint64_t bits) {
  char text[16];
  const auto end = std::to_chars(std::begin(text), std::end(text), bits, 16).ptr;
  return {std::begin(text), end};
}

/// Writes rows and counts them.
class RowWriter {
 public:
  explicit RowWriter(SectionWriter& writer) : writer_(writer) {}
  void Write(std::string_view word, std::string_view value) {
    writer_.WriteString(kLastFitKey, "LastFit", std::string(word).append(" ").append(value));
    ++rows_;
  }
  void WriteResult(const FitResult& result, std::string_view before) {
    for (const FitResultRow& row : FitResultRows()) {
      for (const std::string& text : row.texts(result))
        Write(std::string(before).append(row.word), text);
    }
  }
  std::int32_t Rows() const { return rows_; }

 private:
  SectionWriter& writer_;
  std::int32_t rows_ = 0;
};

void WriteModel(RowWriter& rows, const FitSettings& model) {
  rows.Write("function", model.Expression);
  rows.Write("method", std::to_string(static_cast<int>(model.ProcType)));
  if (model.LeftMarginUsed) rows.Write("left", NumberListText({&model.LeftMargin, 1}));
  if (model.RightMarginUsed) rows.Write("right", NumberListText({&model.RightMargin, 1}));
  for (const ParameterSettings& one : model.parameters) {
    rows.Write("parameter",
               NumberListText({&one.Value, 1}).append(" ").append(KindOf(one)) + " " + one.Name);
    if (!one.Tie.empty()) rows.Write("tie", one.Tie);
  }
}

void WriteTogether(RowWriter& rows, const FitOfSeveral& together) {
  for (const std::string& name : together.shared) rows.Write("shared", name);
  for (const FitOfSeveral::Member& one : together.members) {
    rows.Write("member", std::to_string(TrustOf(one.verdict)) + " " + std::to_string(one.points) +
                             " " + NumberListText(std::vector{one.sum_of_squares, one.r_squared}) +
                             " " + one.data_set);
    rows.Write("member_verdict", one.verdict.summary);
  }
  rows.WriteResult(together.whole, std::string(kOfAll) + " ");
}

std::optional<double> ParseOne(std::string_view text) {
  const std::optional<std::vector<double>> numbers = ParseNumberList(text, 1);
  return numbers ? std::optional(numbers->front()) : std::nullopt;
}

bool TakeMargin(bool& used, double& margin, std::string_view value) {
  const std::optional<double> number = ParseOne(value);
  used = number.has_value();
  if (number) margin = *number;
  return used;
}

bool TakeMethod(FitProcType& method, std::string_view value) {
  const std::optional<std::int64_t> number = ParseCount(value);
  if (!number || *number > static_cast<std::int64_t>(FitProcType::cfp_SimplexPowell)) return false;
  method = static_cast<FitProcType>(*number);
  return true;
}

/// Nothing where no row of results has that word.
std::optional<bool> TakeResult(FitResult& result, std::string_view word, std::string_view value) {
  const auto rows = FitResultRows();
  const auto row = std::ranges::find(rows, word, &FitResultRow::word);
  if (row == rows.end()) return std::nullopt;
  return row->take(result, value);
}

}  // namespace

void WriteLastFit(SectionWriter& writer, const LastFit& last, const MarkPoints& points) {
  if (!last.record) return;
  RowWriter rows(writer);
  WriteModel(rows, last.record->model);
  if (last.model_changed) rows.Write("changed", "model");
  if (last.points_changed) {
    rows.Write("changed", "points");
  } else {
    const PointsMark mark = points();
    rows.Write("points", std::to_string(mark.count) + " " + HexText(mark.hash));
  }
  const FitResult& result = *last.record->result;
  rows.WriteResult(result, "");
  if (result.together) WriteTogether(rows, *result.together);
  rows.Write("rows", std::to_string(rows.Rows() + 1));
}

void LastFitReader::Take(SectionReader& reader) {
  const std::string row = reader.ReadAsString();
  std::string_view value = row;
  const std::string_view word = TakeWord(value);
  ++rows_;
  if (!TakeRow(word, value)) damaged_ = true;
}

bool LastFitReader::TakeRow(std::string_view word, std::string_view value) {
  if (word == kOfAll) {
    const std::string_view of_all = TakeWord(value);
    return TakeResult(together_.whole, of_all, value).value_or(true);
  }
  if (const std::optional<bool> taken = TakeResult(result_, word, value)) return *taken;
  if (word == "function") model_.Expression = value;
  if (word == "method") return TakeMethod(model_.ProcType, value);
  if (word == "left") return TakeMargin(model_.LeftMarginUsed, model_.LeftMargin, value);
  if (word == "right") return TakeMargin(model_.RightMarginUsed, model_.RightMargin, value);
  if (word == "parameter") return TakeParameter(value);
  if (word == "tie" || word == "member_verdict") {
    const bool of_parameter = word == "tie";
    if (of_parameter ? model_.parameters.empty() : together_.members.empty()) return false;
    (of_parameter ? model_.parameters.back().Tie : together_.members.back().verdict.summary) =
        value;
  }
  if (word == "changed") {
    model_changed_ = model_changed_ || value == "model";
    points_changed_ = points_changed_ || value == "points";
    return value == "model" || value == "points";
  }
  if (word == "points") return TakePoints(value);
  if (word == "shared") together_.shared.emplace_back(value);
  if (word == "member") return TakeMember(value);
  if (word == "rows") announced_ = ParseInteger(value);
  return true;
}

bool LastFitReader::TakeParameter(std::string_view value) {
  ParameterSettings& one = model_.parameters.emplace_back();
  const std::optional<double> number = ParseOne(TakeWord(value));
  const std::string_view kind = TakeWord(value);
  one.Vary = kind == kKinds[1];
  one.Name = value;
  one.Value = number.value_or(0);
  return number && !value.empty() && std::ranges::find(kKinds, kind) != std::end(kKinds);
}

bool LastFitReader::TakeMember(std::string_view value) {
  FitOfSeveral::Member& one = together_.members.emplace_back();
  const bool trust = TakeTrust(one.verdict, TakeWord(value));
  const std::optional<std::int64_t> points = ParseCount(TakeWord(value));
  const std::optional<double> sum = ParseOne(TakeWord(value));
  const std::optional<double> r_squared = ParseOne(TakeWord(value));
  if (!trust || !points || !sum || !r_squared) return false;
  one.points = *points;
  one.sum_of_squares = *sum;
  one.r_squared = *r_squared;
  one.data_set = value;
  return true;
}

bool LastFitReader::TakePoints(std::string_view value) {
  const std::optional<std::int64_t> count = ParseCount(TakeWord(value));
  std::uint64_t hash = 0;
  const char* const end = value.data() + value.size();
  const auto parsed = std::from_chars(value.data(), end, hash, 16);
  if (!count || parsed.ec != std::errc() || parsed.ptr != end) return false;
  points_ = {*count, hash};
  return true;
}

bool LastFitReader::MakesSense() const {
  const auto varied = std::ranges::count(model_.parameters, true, &ParameterSettings::Vary);
  return !damaged_ && announced_ == rows_ && (points_ || points_changed_) &&
         std::cmp_equal(result_.names.size(), varied) && IsWhole(result_) &&
         IsWhole(together_.whole);
}

/// Descriptions, units and what else is no matter of the fit are those that the parameters have now.
FitSettings LastFitReader::ModelBeside(const FitSettings& present) const {
  FitSettings model = present;
  model.Expression = model_.Expression;
  model.ProcType = model_.ProcType;
  model.LeftMarginUsed = model_.LeftMarginUsed;
  model.RightMarginUsed = model_.RightMarginUsed;
  if (model.LeftMarginUsed) model.LeftMargin = model_.LeftMargin;
  if (model.RightMarginUsed) model.RightMargin = model_.RightMargin;
  model.parameters.clear();
  std::unordered_map<std::string_view, const ParameterSettings*> by_name;
  for (const ParameterSettings& one : present.parameters) by_name.emplace(one.Name, &one);
  for (const ParameterSettings& stored : model_.parameters) {
    const auto same = by_name.find(stored.Name);
    ParameterSettings one = same != by_name.end() ? *same->second : ParameterSettings();
    one.Name = stored.Name;
    one.Value = stored.Value;
    one.Vary = stored.Vary;
    one.Tie = stored.Tie;
    model.parameters.push_back(std::move(one));
  }
  return model;
}

LastFit LastFitReader::Finish(const FitSettings& model, const MarkPoints& points) const {
  LastFit last;
  if (rows_ == 0) return last;
  last.damaged = !MakesSense();
  if (last.damaged) return last;
  FitResult result = result_;
  result.outcome.p = result.values;
  result.outcome.value = result.statistics.sum_of_squares;
  result.statistics.varied = static_cast<std::int32_t>(result.names.size());
  if (!together_.members.empty()) result.together = std::make_shared<FitOfSeveral>(together_);
  FitSettings left = ModelBeside(model);
  last.model_changed = model_changed_ || left != model;
  last.points_changed = points_changed_ || points_ != points();
  last.record = std::make_shared<const FitRecord>(
      FitRecord{std::move(left), std::make_shared<const FitResult>(std::move(result))});
  return last;
}

}  // namespace tarnwick
