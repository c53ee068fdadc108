#include "results/peak_marks.h"

#include <algorithm>
#include <cmath>

#include "base/error.h"
#include "base/number_text.h"
#include "graph/graph_update.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr double kFirstDay = 1;  // that a time axis can show

bool HasValidScale(const TAxis& axis) {
  if (!(axis.Min() < axis.Max())) return false;
  if (axis.LogScale() && !(axis.Min() > 0)) return false;
  return !axis.ShowAsTime() || axis.Min() >= kFirstDay;
}

}  // namespace

std::vector<Peak> PeaksOn(const TxyGraph& graph, TSeries& series, const PeakOptions& options) {
  const TAxis& axis = graph.Axis(YAxisOf(series));
  if (!HasValidScale(axis)) throw Error("Scaling Error in Y Axis!");
  const double noise = std::abs(axis.Max() - axis.Min()) * options.noise_percent / 100;
  return FindPeaks(series, {options.left, options.right, noise});
}

std::string PeakCaption(double x, const PeakCaptions& captions) {
  std::string text = GeneralText(x, captions.precision);
  const std::size_t e = text.find('E');
  if (e == std::string::npos) return text;
  const std::size_t begin = e + (text[e + 1] == '-' ? 2 : 1);
  const auto wanted = static_cast<std::size_t>(std::clamp(captions.digits, 0, 4));
  const std::size_t present = text.size() - begin;
  if (present < wanted) text.insert(begin, wanted - present, '0');
  return text;
}

std::vector<std::int32_t> MarkPeaks(TxyGraph& graph, const std::vector<Peak>& peaks,
                                    const PeakCaptions& captions) {
  const GraphUpdate update(graph);
  std::vector<std::int32_t> ids;
  ids.reserve(peaks.size());
  // As AddMark one by one, which would look for the lowest free ID from 1 each time.
  MarkList& marks = graph.Marks();
  Mark mark;
  for (const Peak& peak : peaks) {
    do ++mark.id;
    while (marks.FindMark(mark.id) != nullptr);
    mark.x1 = peak.x;
    mark.caption = PeakCaption(peak.x, captions);
    marks.SetMark(mark);
    ids.push_back(mark.id);
  }
  if (!ids.empty()) marks.SetCurrentId(ids.back());
  graph.MarksChanged();
  Appearance appearance = graph.GetAppearance();
  appearance.marks_are_shown = true;
  graph.SetAppearance(appearance);
  return ids;
}

}  // namespace tarnwick
