// Follows the views of a document's graphs and asks the data bases of DataSets that are thinned there for what the present
// ones show. Knows documents and places of data; knows no widget.
#pragma once

#include <QObject>
#include <QTimer>
#include <vector>

#include "data/points/point_chain.h"
#include "desk/prompts/password_prompt.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

class Document;
class LatestWork;
class TSeries;
class WholeReading;
struct Stretch;

class ViewThinning final : public QObject {
 public:
  /// `document` outlives it.
  ViewThinning(Document& document, QObject* parent);

  /// Nothing waits to be asked, and nothing is on its way.
  bool IsSettled() const;

 private:
  /// What is asked for one DataSet, by its place in SeriesOfWhole.
  struct Wanted {
    std::size_t place = 0;
    ThinnedView view;
    PointChain points;  ///< that it has
  };
  /// What was shown last in one, which serves views within it that are not much narrower.
  struct Shown {
    double x_min = 0, x_max = 0;
    PointChain points;
  };
  struct Answer;

  void Ask();
  bool IsAnythingWanted();
  Stretch StretchShown(std::size_t place) const;
  void KeepShown(std::size_t place);
  std::vector<Wanted> WhatIsWanted();
  bool IsShown(std::size_t place, const TSeries& series, double x_min, double x_max) const;
  void Take(const std::vector<Wanted>& wanted, const std::vector<Answer>& answers);

  Document& document_;
  LatestWork* asking_;
  WholeReading* whole_;
  PasswordAsker passwords_;
  QTimer wait_;
  QTimer noting_edits_;
  std::vector<Shown> shown_;  // by place
};

}  // namespace tarnwick
