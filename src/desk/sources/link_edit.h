// The list of live links of a source, and what each has to say now. Knows texts of links; asks them only when told to.
#pragma once

#include <string>
#include <vector>

#include "desk/sources/place_edit.h"

class QBoxLayout;
class QPushButton;
class QTableWidget;

namespace tarnwick {

class LatestWork;

class LinkEdit final : public PlaceEdit {
  Q_OBJECT

 public:
  explicit LinkEdit(QWidget* parent);

  void Show(const TDSInfo& info) override;
  std::optional<QString> Take(TDSInfo& info) const override;

 private:
  void AddButtons(QBoxLayout& line);
  void Insert(int row, const std::string& link);
  void Add();
  void Remove();
  /// Moves the current link by that many rows.
  void Move(int by);
  /// Asks the links from `row` on, one after the other, and shows each answer when it comes.
  void Test(int row);
  void SeeTyped(int row);
  void LinksChanged();
  std::string LinkAt(int row) const;

  QTableWidget* links_;
  QPushButton* remove_ = nullptr;
  QPushButton* up_ = nullptr;
  QPushButton* down_ = nullptr;
  QPushButton* test_ = nullptr;
  LatestWork* asking_;
};

}  // namespace tarnwick
