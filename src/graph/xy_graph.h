// The graph: three axes, appearance, legend, DataSets, marks, child graphs. The document's content, no widget. Knows
// layout and painting not at all; they read it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "graph/appearance.h"
#include "graph/axes/axis.h"
#include "graph/graph_state.h"
#include "graph/mark.h"
#include "graph/series.h"

namespace tarnwick {

class BackgroundImage;
class Prompt;
class TxyChildGr;

/// What a graph tells its listener.
enum class GraphChange { Redraw, Scales, SeriesList, Marks, Children, CurrentSeries, Everything };

/// DataSets with more points than this are asked about before they are drawn.
inline constexpr std::int32_t kMaxPlottedPoints = 30000;

/// Painted instead of the plot while the axes are inconsistent, and before any data arrived.
inline constexpr const char* kScaleErrorCaption = "MAX/MIN VALUES INCONSISTENT";
inline constexpr const char* kWaitingCaption = "Waiting for the data...";

class TxyGraph : public AxisOwner {
 public:
  TxyGraph();
  ~TxyGraph() override;
  TxyGraph(const TxyGraph&) = delete;
  TxyGraph& operator=(const TxyGraph&) = delete;

  // --- appearance
  const Appearance& GetAppearance() const { return appearance_; }
  /// Stores all but minimum and maximum steps that WithMinSteps and WithMaxSteps refuse.
  void SetAppearance(Appearance appearance);
  /// The appearance's background image, read when it was not yet; a relative name is looked for in the data directory, where
  /// one is stored. Not to be asked by two threads at once.
  const BackgroundImage& Background() const;
  const Dimensions& GetDimensions() const { return dimensions_; }
  /// New margins also recompute the scales.
  void SetDimensions(const Dimensions& dimensions);
  const Legend& GetLegend() const { return legend_; }
  void SetLegend(const Legend& legend);
  TAxis& Axis(AxisId id) { return *axes_[static_cast<std::size_t>(id)]; }
  const TAxis& Axis(AxisId id) const { return *axes_[static_cast<std::size_t>(id)]; }

  // --- DataSets, in drawing order
  std::size_t SeriesCount() const { return series_.size(); }
  TSeries& Series(std::size_t index) { return *series_.at(index); }
  const TSeries& Series(std::size_t index) const { return *series_.at(index); }
  /// A DataSet without a style of its own takes colour and symbol from the palette; the first becomes current.
  TSeries& AddSeries(std::unique_ptr<TSeries> series);
  void DeleteSeries(std::size_t index);
  TSeries* CurrentSeries();  ///< nullptr when none
  const TSeries* CurrentSeries() const;
  std::int32_t CurrentSeriesIndex() const { return appearance_.current_series_index; }
  /// From 0; -1 none. Ignored when there is no such DataSet.
  void SetCurrentSeriesIndex(std::int32_t index);
  /// Whether the view plots against its X source: the source then gives abscissae and is not drawn as a curve itself. Off
  /// in a new graph, since the index alone also names the DataSet that titles the X axis; not stored.
  bool PlotsAgainstXSource() const { return plots_against_x_source_; }
  void SetPlotsAgainstXSource(bool on);

  // --- marks; changing the list through Marks() is told by MarksChanged()
  MarkList& Marks() { return marks_; }
  const MarkList& Marks() const { return marks_; }
  void MarksChanged();

  // --- child graphs, each placed by the fractions HorPosition, VerPosition, HorSize, VerSize of its dimensions
  const std::vector<std::unique_ptr<TxyChildGr>>& Children() const { return children_; }
  TxyChildGr& AddChild();
  void DeleteChild(std::size_t index);

  // --- size and scales
  /// Client size in pixels (1/96 inch), at least 0 each.
  virtual void Resize(int width, int height);
  int ClientWidth() const { return width_; }
  int ClientHeight() const { return height_; }
  /// Titles of axes with automatic titles, data extremes -> the axes' oMin/oMax -> autoscale -> pixels per unit. An
  /// inconsistent axis leaves its text in ScaleError().
  void UpdateScales();
  const std::string& ScaleError() const { return scale_error_; }

  /// Asks about every drawn DataSet with more than kMaxPlottedPoints points whether its source shall go to the automatic
  /// hit frequency: Yes for this DataSet, Yes to All for every one from now on without asking, No to leave it. Asked once
  /// per DataSet until its points fall to the limit. `reload` is called for each DataSet switched, to read its source
  /// again when a refresh of it is pending. Inserted graphs are settled too, and this graph's setting is theirs.
  void SettleTooManyPoints(Prompt& prompt, const std::function<void(TSeries&)>& reload);

  // --- listening
  void SetListener(std::function<void(GraphChange)> listener);
  bool Changed() const { return changed_; }
  void SetChanged(bool changed) { changed_ = changed; }
  /// Puts off the recomputing of scales and the telling until the matching EndUpdate (then Everything). Nests.
  void BeginUpdate();
  void EndUpdate();

  // --- the panel under the plot, for DataSets that are drawn on a scale of their own (see IsInPanel)
  /// Range and step of its Y values, fitted to them by UpdateScales and always with zero inside; all else as in a new axis.
  const AxisState& PanelAxis() const { return panel_axis_; }
  AxisScale PanelScale() const;

  // --- the state as a value
  GraphState State() const;
  /// Takes over a state, keeping the DataSet objects of equal position; tells Everything. A DataSet that is in that state
  /// already tells its listeners nothing, and nothing is computed for it.
  void SetState(const GraphState& state);

  // --- where the axes are within the client size
  /// Between the margins; less than that for a Y axis above the panel.
  int PixelLength(AxisId axis) const override;
  int PixelOrigin(AxisId axis) const override;
  /// Pixels from top to bottom margin, the panel's among them.
  int HeightWithPanel() const;

 protected:
  /// Pixels that a frame takes on every side before the margins begin: 0 for a graph that fills its window.
  virtual int FrameOffset() const { return 0; }

 private:
  friend class TSeries;
  void AxisChanged() override;
  void AxisRangeChanged() override;
  bool AxisInUse(AxisId axis) const override;
  std::int32_t MinSteps() const override { return appearance_.min_steps; }
  std::int32_t MaxSteps() const override { return appearance_.max_steps; }
  void SeriesChanged(TSeries& series, ChangeCode code);
  void StyleChanged();
  void RefreshRegression(TSeries& series);
  void SettleTooManyPoints(Prompt& prompt, const std::function<void(TSeries&)>& reload, bool& ask);
  void UpdateModelCurve(TSeries& series);
  void TakeIndices(const Appearance& from);
  void Adopt(TSeries& series);
  void Tell(GraphChange change);
  void CollectExtremes();
  void AssembleTitles();
  void PlaceChild(TxyChildGr& child) const;
  void PlaceChildren();

  Appearance appearance_;
  Dimensions dimensions_;
  Legend legend_;
  std::array<std::unique_ptr<TAxis>, 3> axes_;
  std::vector<std::unique_ptr<TSeries>> series_;
  MarkList marks_;
  std::vector<std::unique_ptr<TxyChildGr>> children_;
  int width_ = 640;
  int height_ = 480;
  std::string scale_error_;
  AxisState panel_axis_;
  bool has_panel_ = false;  // as of the last UpdateScales
  std::function<void(GraphChange)> listener_;
  bool plots_against_x_source_ = false;
  bool ask_before_thinning_ = true;
  bool changed_ = false;
  bool scaling_ = false;
  std::unique_ptr<BackgroundImage> background_;
  int updates_ = 0;
};

/// A graph inserted into another one, with a frame of its own.
class TxyChildGr : public TxyGraph {
 public:
  static constexpr int kBorderWidth = 1;
  static constexpr int kBevelWidth = 1;

  /// Its place in a parent of this client size, in the parent's pixels.
  struct Place {
    int left = 0, top = 0, width = 0, height = 0;
  };
  Place PlaceIn(int parent_width, int parent_height) const;

 protected:
  int FrameOffset() const override { return 2 * kBorderWidth + kBevelWidth; }
};

}  // namespace tarnwick
