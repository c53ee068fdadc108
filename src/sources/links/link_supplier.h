// The present values of live links as one row. Knows links and texts; knows no DataSet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/undefined.h"
#include "data/data_supplier.h"

namespace tarnwick {

/// How one link is told: the value that it has now, or why it has none.
struct LinkAnswer {
  std::string text;   ///< empty: none
  std::string error;  ///< a sentence; empty where there is a text
};

/// Asks each of these links over the session bus, one after the other.
std::vector<LinkAnswer> AskLinks(const std::vector<std::string>& links);

class TLinkSupplier final : public TDataSupplier {
 public:
  /// The columns alone: no link has a value yet. Throws Error for what is no list of links.
  explicit TLinkSupplier(const std::string& list);

  /// Asks all links of the list, and the clock. Throws Error, with the fixed text of the link that fails, for one that cannot
  /// be opened, has no value, or has one that no format reads; and UnpackingCancelled, between two links.
  void Ask(Progress& progress);
  /// The link of a column has this value now.
  void Put(std::int32_t column, std::string text);
  /// It is this moment now.
  void SetClock(double day) { clock_ = day; }
  /// The links, one per column.
  const std::vector<std::string>& Links() const { return links_; }

  std::int32_t CurrentRow() const override { return at_end_ ? 2 : 1; }
  std::int32_t HeaderRowsPassed() const override { return 0; }
  bool AtEnd() const override { return at_end_; }
  bool NextRow() override { return at_end_ = true; }
  void FirstRow() override { at_end_ = false; }
  void SkipRows(std::int32_t rows) override { at_end_ = at_end_ || rows > 0; }
  std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) override;
  bool HasValue(std::int32_t column) override;
  std::string TextAt(std::int32_t column) override;
  std::int32_t RowCount() override { return 1; }
  /// A column also goes by its whole link; kJoinedTimeColumn is the clock.
  std::int32_t ColumnIndex(std::string_view name) override;
  const std::vector<std::string>& ColumnNames() override { return names_; }
  bool HasNamesLine() override { return true; }
  std::int64_t Size() const override { return 1; }
  std::int64_t Position() const override { return at_end_ ? 1 : 0; }
  const std::string& Describe() const override { return list_; }
  std::string Place() const override { return "now"; }
  std::int64_t Line() const override { return CurrentRow(); }

 private:
  std::string list_;
  std::vector<std::string> links_;
  std::vector<std::string> names_;
  std::vector<std::string> texts_;
  double clock_ = kUndefined;  ///< day number
  bool at_end_ = false;
};

/// The number that a link's text means by a format; by Automatic also one with a unit.
std::optional<double> LinkValue(std::string_view text, ColumnFormat format);

}  // namespace tarnwick
