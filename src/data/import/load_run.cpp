#include "data/import/load_run.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/text_encoding.h"
#include "data/column_caption.h"
#include "data/columns/absent_column.h"
#include "data/import/column_expression.h"

namespace tarnwick {
namespace {

constexpr std::string_view kTitle = "Loading data";
constexpr std::int64_t kLargeSource = 64
                                      << 20;  // worth a progress window before any point is there

/// Ends the update that it began, whatever happens in between.
class UpdateScope {
 public:
  explicit UpdateScope(TDataSeries& series) : series_(series) { series.BeginUpdate(); }
  ~UpdateScope() { series_.EndUpdate(); }
  UpdateScope(const UpdateScope&) = delete;
  UpdateScope& operator=(const UpdateScope&) = delete;

 private:
  TDataSeries& series_;
};

/// Puts the DataSets back as they were unless what was read is to stay.
class RestoreScope {
 public:
  void Keep(TDataSeries& series) { before_.emplace_back(&series, series.State()); }
  void Succeed() { before_.clear(); }
  RestoreScope() = default;
  ~RestoreScope() {
    for (auto& [series, state] : before_) series->SetState(state);
  }
  RestoreScope(const RestoreScope&) = delete;
  RestoreScope& operator=(const RestoreScope&) = delete;

 private:
  std::vector<std::pair<TDataSeries*, DataState>> before_;
};

}  // namespace

void LoadProgress::Begin(std::string_view title, std::string_view subject, std::int64_t total) {
  if (shown_ == nullptr || begun_) return;
  begun_ = true;
  shown_->Begin(title, subject, total);
}

bool LoadProgress::Advance(std::int64_t done) {
  return !begun_ || shown_->Advance(done);
}

LoadRun::LoadRun(std::span<TDataSeries* const> all, TDataSupplier& supplier,
                 const LoadOptions& options)
    : all_(all),
      supplier_(supplier),
      options_(options),
      progress_(options.progress),
      subject_(supplier.Describe()),
      reports_(all.size()) {}

void LoadRun::ShowProgress(const std::string& subject) {
  subject_ = subject;
  progress_.Begin(kTitle, subject_, supplier_.Size());
}

std::vector<LoadReport> LoadRun::Load() {
  ResolveColumns();
  std::vector<ColumnTransforms> transforms = PrepareTransforms();
  std::vector<std::unique_ptr<UpdateScope>> updates;
  for (const Member& member : members_) {
    updates.push_back(std::make_unique<UpdateScope>(*all_[member.number]));
  }
  if (CountRows()) {
    RestoreScope before;
    for (const Member& member : members_) before.Keep(*all_[member.number]);
    BeginTargets(std::move(transforms));
    if (const BlockSource* const blocks = UsefulBlocks()) {
      LoadBlocks(*blocks);
    } else {
      LoadRows();
    }
    if (supplier_.WasCutShort()) {
      throw FileError("The file became shorter while it was read", supplier_.Describe(), "");
    }
    before.Succeed();
    FinishTargets();
  }
  return std::move(reports_);
}

void LoadRun::ResolveColumns() {
  for (std::size_t i = 0; i < all_.size(); ++i) {
    TDSInfo& info = all_[i]->Source();
    if (!info.active) continue;
    if (info.x_column_index < 0) info.x_column_index = supplier_.ColumnIndex(info.XDataColumn);
    if (info.y_column_index < 0) info.y_column_index = supplier_.ColumnIndex(info.YDataColumn);
    if (info.x_column_index < 0 || info.y_column_index < 0) {
      const std::string& absent = info.x_column_index < 0 ? info.XDataColumn : info.YDataColumn;
      reports_[i].absent_column = AbsentColumn(absent, supplier_).what();
      continue;
    }
    if (info.y_error_index < 0) info.y_error_index = supplier_.ColumnIndex(info.YErrorColumn);
    if (info.x_error_index < 0) info.x_error_index = supplier_.ColumnIndex(info.XErrorColumn);
    Member member;
    if (!info.GroupColumn.empty()) {
      const std::int32_t column = supplier_.ColumnIndex(info.GroupColumn);
      if (column < 0) continue;
      member.group_column = column;
    }
    member.number = i;
    member.x_column = info.x_column_index;
    member.y_column = info.y_column_index;
    member.headers = std::max(info.FileHasHeaders - supplier_.HeaderRowsPassed(), 0);
    members_.push_back(std::move(member));
  }
}

std::vector<ColumnTransforms> LoadRun::PrepareTransforms() const {
  std::vector<ColumnTransforms> transforms;
  for (const Member& member : members_) {
    const TDataSeries& series = *all_[member.number];
    const TransformFactory compile =
        options_.transforms ? options_.transforms : CompileColumnExpressions;
    transforms.push_back(compile(series, supplier_.ColumnNames()));
    const std::pair<const std::string&, bool> columns[] = {
        {series.Source().XColExpr,
         transforms.back().x || IsRawColumn(series.Source().XColExpr, "x")},
        {series.Source().YColExpr,
         transforms.back().y || IsRawColumn(series.Source().YColExpr, "y")}};
    for (const auto& [expression, served] : columns) {
      if (!served) throw Error("The column expression cannot be evaluated here: " + expression);
    }
  }
  return transforms;
}

/// False when cancelled: then nothing is loaded and the old points stay.
bool LoadRun::CountRows() {
  const auto needs = [&](const Member& m) {
    const TDSInfo& info = all_[m.number]->Source();
    // With the rows indexed, sampling can leap.
    return RowChooser::NeedsRowCount(info) ||
           (!info.AllRows && info.RowSamplingFrequency > kDensestSampling);
  };
  if (std::none_of(members_.begin(), members_.end(), needs)) return true;
  if (supplier_.Size() > kLargeSource) progress_.Begin(kTitle, subject_, supplier_.Size());
  if (!supplier_.CountRows(progress_)) {
    for (LoadReport& report : reports_) report.cancelled = true;
    return false;
  }
  rows_ = supplier_.RowCount();
  return true;
}

void LoadRun::BeginTargets(std::vector<ColumnTransforms> transforms) {
  const std::int32_t limit = options_.reduced_points ? kReducedPointLimit : kPointLimit;
  for (std::size_t i = 0; i < members_.size(); ++i) {
    Member& member = members_[i];
    std::optional<std::int64_t> rows = rows_;
    if (rows) *rows -= member.headers;
    member.target =
        std::make_unique<LoadTarget>(*all_[member.number], rows, limit, std::move(transforms[i]));
    member.columns.resize(member.target->Columns().size());
    member.row = {member.x_column, member.y_column, member.target->YErrorColumn(),
                  member.target->XErrorColumn(), member.target->Columns()};
  }
}

void LoadRun::FinishTargets() {
  std::set<std::int32_t> runs;
  for (const Member& member : members_) runs.insert(member.target->Info().Run);
  for (Member& member : members_) {
    member.target->Finish();
    LoadReport& report = reports_[member.number];
    report = member.target->Report();
    report.cancelled = cancelled_;
    report.run = member.target->Info().Run;
    report.runs_read = static_cast<std::int32_t>(runs.size());
    const bool reached_end =
        !cancelled_ && member.target->Chooser().NextRow() != RowChooser::kNoRow;
    if (reached_end && supplier_.EndsIncomplete()) {
      ++report.rows_read;
      report.AddSkipped(SkipReason::XMissing, supplier_.Size() + 1);
    }
  }
}

bool LoadRun::AdvanceProgress(std::int64_t done) {
  const auto is_large = [](const Member& m) { return m.target->Points() > kPointLimit; };
  if (!progress_.Begun() && std::any_of(members_.begin(), members_.end(), is_large)) {
    progress_.Begin(kTitle, subject_, supplier_.Size());
  }
  if (!progress_.Advance(done)) cancelled_ = true;
  return !cancelled_;
}

bool LoadRun::AllDone() const {
  return std::all_of(members_.begin(), members_.end(), [](const Member& m) {
    return m.target->Chooser().NextRow() == RowChooser::kNoRow;
  });
}

}  // namespace tarnwick
