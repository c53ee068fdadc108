// Loading block by block over a text: every row is read, by fast loops and on several threads when the text is large.
#include <algorithm>
#include <cmath>

#include "data/import/load_run.h"
#include "data/text/row_pipeline.h"

namespace tarnwick {
namespace {

double BlockOrRowNumber(const RowBlock& block, std::size_t request, std::int64_t row,
                        std::int64_t number) {
  if (request >= block.storage.size()) return static_cast<double>(number);
  return block.storage[request][static_cast<std::size_t>(row)];
}

}  // namespace

const TTxtSupplier* LoadRun::BlockSource() const {
  const auto* const text = dynamic_cast<const TTxtSupplier*>(&supplier_);
  if (text == nullptr || options_.value_by_value) return nullptr;
  const auto same_headers = [&](const Member& m) { return m.headers == text->HeaderRows(); };
  const auto is_dense = [](const Member& m) {
    return m.target->Chooser().Every() <= kDensestSampling;
  };
  const bool all = std::all_of(members_.begin(), members_.end(), same_headers);
  return all && std::any_of(members_.begin(), members_.end(), is_dense) ? text : nullptr;
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

void LoadRun::LoadBlocks(const TTxtSupplier& text) {
  for (Member& member : members_) {
    member.x_request = Request(member.x_column, member.target->Info().XFormat);
    member.y_request = Request(member.y_column, member.target->Info().YFormat);
    for (const std::int32_t column : member.target->Columns()) {
      member.column_requests.push_back(Request(column, FormatOf(member, column)));
    }
  }
  std::int64_t first_row = 1;
  std::int64_t first_line = 1 + text.HeaderRows();
  const char* const begin = text.Text().data();
  ReadRowBlocks(text.Body(), text.Layout(), requests_, options_.threads,
                [&](const RowBlock& block) {
                  for (Member& member : members_) {
                    TakeBlock(member, block, first_row, first_line, text.Layout());
                  }
                  first_row += block.rows;
                  first_line += block.lines;
                  const bool any = !block.text.empty();
                  return (!any || AdvanceProgress(block.text.data() - begin)) && !AllDone();
                });
}

void LoadRun::TakeBlock(Member& member, const RowBlock& block, std::int64_t first_row,
                        std::int64_t first_line, const TextLayout& layout) const {
  LoadTarget& target = *member.target;
  const bool stored = member.x_request != kRowNumbers && member.y_request != kRowNumbers;
  if (stored && target.TakesColumns() && target.Chooser().NextRow() == first_row &&
      block.complete[member.x_request] != 0 && block.complete[member.y_request] != 0) {
    target.TakeColumns(block.Column(member.x_request), block.Column(member.y_request));
    return;
  }
  const std::int64_t end = first_row + block.rows;
  for (std::int64_t number = target.Chooser().NextRow(); number < end;
       number = target.Chooser().NextRow()) {
    const std::int64_t row = number - first_row;
    RowValues values;
    values.x = BlockOrRowNumber(block, member.x_request, row, number);
    values.y = BlockOrRowNumber(block, member.y_request, row, number);
    for (std::size_t i = 0; i < member.columns.size(); ++i) {
      member.columns[i] = BlockOrRowNumber(block, member.column_requests[i], row, number);
    }
    values.columns = member.columns;
    target.Take(values, [&] { return first_line + block.LineOfRow(row, layout); });
  }
}

}  // namespace tarnwick
