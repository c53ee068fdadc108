// Reads every row of the tables of which a document's DataSets show a coarse first picture, piece by piece in the background, and
// puts into the picture what is there. Knows documents and places of data; knows no view.
#pragma once

#include <QObject>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desk/document/thinned_points.h"
#include "desk/prompts/password_prompt.h"
#include "sources/database/thinned_pieces.h"

namespace tarnwick {

class Document;
class LatestWork;
class TSeries;

class WholeReading final : public QObject {
 public:
  /// `view` tells what of a DataSet, by its place in SeriesOfWhole, was looked at closely and stays; `replaced` hears of new
  /// points there. `document` outlives it.
  WholeReading(Document& document, std::function<Stretch(std::size_t place)> view,
               std::function<void(std::size_t place)> replaced, QObject* parent);
  ~WholeReading() override;

  /// Something is left to be read, or to be told of it.
  bool IsWanted() const;
  bool IsRunning() const;
  /// Begins, or goes on where it was given up; what runs already runs on.
  void GoOn();
  void GiveUp();

 private:
  /// DataSets of one table that are read together.
  struct Table {
    ThinnedView view;
    std::vector<std::size_t> places;  ///< in SeriesOfWhole, one for each Y
    bool operator==(const Table& other) const;
  };
  struct Reading;

  std::vector<Table> Coarse() const;
  std::string CoarseNames() const;
  void Abandon();
  void Take(const Table& table, const ThinnedRows& rows, double share);
  void TakeTrouble(const Table& table, const std::string& trouble);
  void Tell(const std::string& text);

  Document& document_;
  std::function<Stretch(std::size_t place)> view_;
  std::function<void(std::size_t place)> replaced_;
  LatestWork* asking_;
  PasswordAsker passwords_;
  std::unique_ptr<Reading> reading_;  // what was begun
  std::string left_coarse_;           // and cannot be read, as was told
};

}  // namespace tarnwick
