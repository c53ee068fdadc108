// Names too long for a legend, shortened so that each can still be told from the others. Knows texts, no fonts and no graph.
#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace tarnwick {

/// The names of one legend. Of a long family ("Pressure of reactor 1, second run", "Pressure of reactor 2, …") the part in
/// which a name differs from the one most like it is kept, with as much before and behind it as there is room for.
class LegendNames {
 public:
  explicit LegendNames(std::vector<QString> names);

  /// The name itself when it fits, else its beginning, "…", and the part that tells it apart; empty when there is no such
  /// part, or no room for any of it.
  QString Shortened(const QString& name, const std::function<bool(const QString&)>& fits) const;

 private:
  struct Part {
    qsizetype begin = 0;
    qsizetype end = 0;
  };
  Part DifferingPart(const QString& name) const;

  std::vector<QString> sorted_;
};

}  // namespace tarnwick
