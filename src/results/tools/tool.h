// What makes a DataSet of others: a row with its name, its settings and the function that computes. Dialogs, batch commands and
// recipes are made from the same row. Knows DataSets; no graph, no widget, no option.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/cancel_point.h"
#include "graph/axes/axis.h"
#include "graph/series.h"
#include "stream/field_table.h"

namespace tarnwick {

class ToolSettings;

/// One setting. What a choice is called in recipes and batch options is ChoiceWord of its caption.
struct ToolSetting {
  std::string_view key;      ///< in recipes; "--key" of the batch program
  std::string_view caption;  ///< in dialogs
  FieldControl control;
  FieldValue initial;  ///< an undefined number: the tool's `suggest` finds one
  std::string_view help;
  bool (*matters)(const ToolSettings&) =
      nullptr;   ///< with the other settings as they are; null: always
  int step = 1;  ///< of a whole number's arrows
};

/// "hampel" of "Hampel, by the median of a window".
std::string ChoiceWord(std::string_view caption);

/// The values of a tool's settings, all within what their rows allow. Keys are those of the rows.
class ToolSettings {
 public:
  /// All as the rows have them at first, which outlive this.
  explicit ToolSettings(std::span<const ToolSetting> rows);

  std::span<const ToolSetting> Rows() const { return rows_; }
  const FieldValue& At(std::size_t row) const { return values_[row]; }
  /// Takes a value of the row's type. Throws Error, a sentence, for one that it does not allow.
  void Set(std::size_t row, const FieldValue& value);

  double Number(std::string_view key) const;
  std::int32_t Whole(std::string_view key) const;
  bool Is(std::string_view key) const;
  const std::string& Text(std::string_view key) const;
  /// The value of a choice, as the enum that its rows are made from.
  template <class Enum>
  Enum Chosen(std::string_view key) const {
    return static_cast<Enum>(Whole(key));
  }
  /// Takes a whole number that the row allows.
  void SetWhole(std::string_view key, std::int32_t number) { Set(Place(key), number); }
  /// Puts `number` where the setting is undefined.
  void Suggest(std::string_view key, double number);

  std::string TextAt(std::size_t row) const;
  /// Takes what TextAt gave, and of choices their words. Throws Error, a sentence, for a text that means no value.
  void SetText(std::size_t row, const std::string& text);

 private:
  std::size_t Place(std::string_view key) const;

  std::span<const ToolSetting> rows_;
  std::vector<FieldValue> values_;
};

/// What X is: dates are counted in days.
enum class XMeans { Numbers, Dates };

/// The DataSets that a tool computes from, the first being its source, and how.
struct ToolInput {
  std::vector<TSeries*> series;
  ToolSettings settings;
  XMeans x = XMeans::Numbers;
  CancelPoint cancel = {};  ///< of tools that may take long

  TSeries& Source() const { return *series.front(); }
};

struct Computed {
  std::unique_ptr<TSeries> series;  ///< points, errors and names of columns
  std::string told;                 ///< sentences; empty for none
  /// What the source's corrected Y still stands above: added to its base line, it does for the DataSet.
  std::optional<BaseLine> own_line = {};
  LineOrder line_order = LineOrder::ByX;  ///< in which its points are joined
};

/// A DataSet that a tool takes beside its source.
struct OtherInput {
  std::string_view key;  ///< "--key" of the batch program
  std::string_view caption;
  std::string_view help;
  enum class Need { Wanted, MayLack } need = Need::Wanted;
};

/// What the new DataSet has for its X: the source's own, or other quantities, beside which the source cannot be read.
enum class ResultX { OfSource, Own };

/// What a tool does where the line of its source joins the points as they came and X turns back, or where it is broken.
enum class AlongLine {
  InX,       ///< takes all points together in order of X
  Branches,  ///< is to compute each branch by itself
  Pieces,    ///< the same, and each piece of a broken line
  Follows,   ///< goes along the line itself, and takes nothing across a gap
  Across,    ///< the same, straight across gaps
  Each       ///< looks at one point after the other, along the line
};
template <AlongLine kAlong>
AlongLine Always(const ToolInput& /*input*/) {
  return kAlong;
}

struct Tool {
  std::string_view name;          ///< in recipes; of the batch command, where there is one
  std::string_view caption = {};  ///< of the dialog
  std::string_view purpose = {};  ///< of the batch command, a line
  std::string_view suffix = {};   ///< of the new DataSet's name
  std::span<const ToolSetting> settings = {};
  std::span<const OtherInput> others = {};  ///< those that may lack come last
  AxisId axis = AxisId::Y;                  ///< that is offered
  ResultX x = ResultX::OfSource;
  AlongLine (*along)(const ToolInput& input) = &Always<AlongLine::InX>;
  /// Makes do with so many points, where a branch or piece has fewer than the settings ask for; false where there are too few.
  /// Throws Error where the `whole` has too few. Null: any number will do.
  bool (*narrow)(ToolSettings& settings, std::size_t points, std::size_t whole) = nullptr;
  /// Throws Error, a sentence.
  Computed (*compute)(const ToolInput& input) = nullptr;
  /// Puts what suits the source where settings are undefined.
  void (*suggest)(const TSeries& source, ToolSettings& settings) = nullptr;
};

/// The points with finite X and Y, less the base line.
struct ToolColumns {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> x_error;  ///< empty where the DataSet has none; undefined of a point without
  std::vector<double> y_error;
  std::vector<std::int32_t>
      piece;  ///< of a broken line, the number of each point's; empty where it is whole
  std::size_t left_out = 0;

  /// Takes over a point of others, its Y being `y_now`: with the error of that Y where it is what it was.
  void TakePoint(const ToolColumns& others, std::size_t i, double y_now);
};

/// As the source's line joins them, or in order of X. Throws Error "No Data Found in DataSet ...!" where there is none.
ToolColumns ColumnsOf(const TSeries& source);
ToolColumns ColumnsInX(const TSeries& source);

/// The places before which the line of these points is broken.
std::vector<std::size_t> BreaksOf(const ToolColumns& columns);

/// What of the source is left out of what is made from its columns: points without values, errors. Sentences; empty for nothing.
std::string LeftOutText(const TSeries& source, const ToolColumns& columns);
/// Of points alone, where the errors are kept.
std::string PointsLeftOutText(const ToolColumns& columns);

/// A DataSet of these points, in the order in which they came, its column names those of the source but for what is not empty
/// here.
std::unique_ptr<TSeries> SeriesLike(const TSeries& source, std::span<const double> x,
                                    std::span<const double> y, const std::string& x_column = {},
                                    const std::string& y_column = {});
/// The same of points that are those of the source in another place of Y: with the errors of the columns, and broken where their
/// line is.
std::unique_ptr<TSeries> SeriesWithErrors(const TSeries& source, const ToolColumns& columns,
                                          const std::string& y_column = {});

}  // namespace tarnwick
