// The parameters of a model as a table to edit. Knows their settings and no expression.
#pragma once

#include <QTableWidget>
#include <optional>
#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

class ParameterTable final : public QTableWidget {
  Q_OBJECT

 public:
  explicit ParameterTable(QWidget* parent = nullptr);

  void SetParameters(const std::vector<ParameterSettings>& parameters);
  /// Nothing while a cell holds no number.
  std::optional<std::vector<ParameterSettings>> Parameters() const;
  /// Which cell holds no number, a sentence; empty where all do.
  QString Trouble() const;
  void Add(const ParameterSettings& parameter);
  void DeleteCurrent();
  /// Deletes the parameter of that name, if there is one; capitals are not told apart.
  void Delete(const std::string& name);

 signals:
  void edited();

 private:
  void PutRow(int row, const ParameterSettings& parameter);
  void CheckCell(QTableWidgetItem* item);
  /// Nothing while a cell of the row holds no number.
  std::optional<ParameterSettings> ParameterIn(int row) const;
  void AddSlider(int row);
};

}  // namespace tarnwick
