#include "graph/layout/legend_names.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(LegendNames, KeepWhatTellsThemApart) {
  struct Row {
    std::vector<QString> names;  // of the first of them
    int room;                    // letters
    const char* shortened;
  };
  const Row rows[] = {
      {{"Pressure in reactor 1", "Pressure in reactor 12"}, 21, "Pressure in reactor 1"},
      {{"Pressure in reactor 1", "Pressure in reactor 12"}, 12, "Pressure i…1"},
      {{"Pressure in reactor 12", "Pressure in reactor 1"}, 12, "Pressure…12"},
      {{"Pressure of reactor 1, first run", "Pressure of reactor 2, first run"},
       14,
       "P…1, first run"},
      {{"Pressure of reactor 1, first run", "Pressure of reactor 2, first run"}, 9, "Pre…1, f…"},
      {{"ab 1, first run", "ab 2, first run"}, 8, "ab 1, f…"},
      {{"First long name", "Second long name"}, 8, "First l…"},
      {{"a.very-long-path/x", "b.very-long-path/x", "a.very-long-path/y"}, 6, "a.ve…x"},
      {{"Pressure 1234567890", "Pressure 123"}, 6, "…1234…"},
      {{"Pressure 1234567890"}, 6, ""},
      {{"Twice the same", "Twice the same"}, 6, ""}};
  for (const Row& row : rows) {
    const auto fits = [&](const QString& text) { return text.size() <= row.room; };
    EXPECT_EQ(LegendNames(row.names).Shortened(row.names.front(), fits).toStdString(),
              row.shortened);
  }
}

}  // namespace
}  // namespace tarnwick
