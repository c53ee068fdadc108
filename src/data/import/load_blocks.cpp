// Loading block by block: every row is read, as fast as its source can hand whole columns over.
#include <algorithm>
#include <cmath>

#include "data/import/load_run.h"

namespace tarnwick {
namespace {

double BlockOrRowNumber(const RowBlock& block, std::size_t request, std::int64_t row,
                        std::int64_t number) {
  if (request >= block.storage.size()) return static_cast<double>(number);
  return block.storage[request][static_cast<std::size_t>(row)];
}

}  // namespace

const BlockSource* LoadRun::UsefulBlocks() const {
  const BlockSource* const blocks = supplier_.Blocks();
  if (blocks == nullptr || options_.value_by_value) return nullptr;
  const auto same_headers = [&](const Member& m) { return m.headers == blocks->HeaderRows(); };
  // Where rows are leapt over, nobody sees the empty lines between them, which part the runs.
  const auto is_dense = [](const Member& m) {
    return m.target->Chooser().Every() <= kDensestSampling || m.target->Info().Run != 0;
  };
  // Blocks hold no texts.
  const auto of_group = [](const Member& m) { return m.group_column.has_value(); };
  if (std::ranges::any_of(members_, of_group)) return nullptr;
  const bool all = std::all_of(members_.begin(), members_.end(), same_headers);
  return all && std::any_of(members_.begin(), members_.end(), is_dense) ? blocks : nullptr;
}

/// The column's place in the blocks; the same column is read once.
std::size_t LoadRun::Request(std::int32_t column, ColumnFormat format) {
  if (column == kRowNumberColumn) return kRowNumbers;
  const ColumnRequest request{column, format};
  const auto found = std::find(requests_.begin(), requests_.end(), request);
  const auto place = static_cast<std::size_t>(found - requests_.begin());
  if (found == requests_.end()) requests_.push_back(request);
  return place;
}

void LoadRun::LoadBlocks(const BlockSource& blocks) {
  for (Member& member : members_) {
    const TDSInfo& info = member.target->Info();
    member.x_request = Request(member.x_column, info.XFormat);
    member.y_request = Request(member.y_column, info.YFormat);
    if (const auto column = member.target->YErrorColumn()) {
      member.y_error_request = Request(*column, FormatOfYErrors(info, *column));
    }
    if (const auto column = member.target->XErrorColumn()) {
      member.x_error_request = Request(*column, FormatOfXErrors(info, *column));
    }
    for (const std::int32_t column : member.target->Columns()) {
      member.column_requests.push_back(Request(column, FormatOfColumn(info, column)));
    }
  }
  if (!TellPlan()) return;
  blocks.ReadBlocks(requests_, options_.threads, [&](const RowBlock& block) {
    for (Member& member : members_) TakeBlock(member, block, blocks);
    return AdvanceProgress(blocks.PositionOf(block)) && !AllDone();
  });
}

void LoadRun::TakeBlock(Member& member, const RowBlock& block, const BlockSource& blocks) {
  std::int64_t row = 0;
  for (const BlankLines& blanks : block.blanks) {
    TakeBlockRows(member, block, {row, blanks.row}, blocks);
    member.target->PassBlankLines(blanks.lines);
    if (blanks.remark) member.target->PassRemark();
    row = blanks.row;
  }
  TakeBlockRows(member, block, {row, block.rows}, blocks);
}

void LoadRun::TakeBlockRows(Member& member, const RowBlock& block, RowRange rows,
                            const BlockSource& blocks) {
  if (rows.begin == rows.end) return;
  LoadTarget& target = *member.target;
  const bool stored = member.x_request != kRowNumbers && member.y_request != kRowNumbers &&
                      member.y_error_request != kRowNumbers &&
                      member.x_error_request != kRowNumbers;
  if (stored && target.TakesColumns() &&
      target.Chooser().NextRow() == block.first_row + rows.begin &&
      block.complete[member.x_request] != 0 && block.complete[member.y_request] != 0) {
    const auto part = [&](std::size_t request) {
      return block.Column(request).subspan(static_cast<std::size_t>(rows.begin),
                                           static_cast<std::size_t>(rows.end - rows.begin));
    };
    OwnErrorSpans errors;
    if (member.y_error_request) errors.y = part(*member.y_error_request);
    if (member.x_error_request) errors.x = part(*member.x_error_request);
    target.TakeColumns(part(member.x_request), part(member.y_request), errors);
    return;
  }
  const std::int64_t end = block.first_row + rows.end;
  for (std::int64_t number = target.Chooser().NextRow(); number < end;
       number = target.Chooser().NextRow()) {
    const std::int64_t row = number - block.first_row;
    RowValues values;
    values.x = BlockOrRowNumber(block, member.x_request, row, number);
    values.y = BlockOrRowNumber(block, member.y_request, row, number);
    if (member.y_error_request) {
      values.y_error = BlockOrRowNumber(block, *member.y_error_request, row, number);
    }
    if (member.x_error_request) {
      values.x_error = BlockOrRowNumber(block, *member.x_error_request, row, number);
    }
    for (std::size_t i = 0; i < member.columns.size(); ++i) {
      member.columns[i] = BlockOrRowNumber(block, member.column_requests[i], row, number);
    }
    values.columns = member.columns;
    target.Take(values, [&] { return blocks.LineOf(block, row); });
  }
}

}  // namespace tarnwick
