#include "graph/thinning/symbol_crowd.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

SymbolCrowd::SymbolCrowd(int columns, const ColumnRows& rows, SymbolHiding hiding)
    : gap_(static_cast<std::size_t>(hiding.gap)),
      reach_(static_cast<std::size_t>(hiding.reach)),
      words_(rows.Taken().Words().size()),
      taken_(static_cast<std::size_t>(columns) * Stride()),
      closed_(taken_),
      lattice_(Stride()) {
  for (std::size_t row = 0; row < Stride(); row += gap_) lattice_.Set(row);
}

void SymbolCrowd::Add(int column, const ColumnRows& rows) {
  const auto at = column * static_cast<std::ptrdiff_t>(words_);
  std::ranges::copy(rows.Taken().Words(), taken_.Words().begin() + at);
  std::ranges::copy(rows.Closed().Words(), closed_.Words().begin() + at);
}

// Leaves the pixels whose neighbours up to `by` columns and rows away are all set. No row is set at a column's ends.
void SymbolCrowd::Shrink(RowBits& bits, std::size_t by) const {
  bits.KeepBeforeAll(2 * by + 1);
  bits.KeepBeforeAll(2 * by + 1, Stride());
  bits.MoveBack(by * (Stride() + 1));
}

std::vector<QRect> SymbolCrowd::RunsOf(const RowBits& bits) const {
  std::vector<QRect> runs;
  bits.ForEachRun([&](std::size_t begin, std::size_t end) {
    runs.emplace_back(static_cast<int>(begin / Stride()), static_cast<int>(begin % Stride()), 1,
                      static_cast<int>(end - begin));
  });
  return runs;
}

// A place of the lattice carries a symbol wherever its neighbours as far as the next places are closed; what lies between such
// places is hidden. All pixels of these inner ones are covered, so that a symbol that reaches no others need not be drawn.
SymbolPixels SymbolCrowd::TakeShown() {
  RowBits inner = std::move(closed_);
  Shrink(inner, gap_);
  RowBits hidden = inner;
  Shrink(hidden, gap_ - 1);
  SymbolPixels pixels;
  RowBits on_area(0);
  if (reach_ != 0) {
    pixels.solid = RunsOf(inner);
    on_area = inner;
    Shrink(on_area, reach_);
  }
  RowBits shown = std::move(taken_);
  for (std::size_t i = 0; i < shown.Words().size(); ++i) {
    const std::uint64_t places = i / words_ % gap_ == 0 ? lattice_.Words()[i % words_] : 0;
    const std::uint64_t covered = reach_ != 0 ? on_area.Words()[i] : 0;
    shown.Words()[i] =
        (shown.Words()[i] & ~hidden.Words()[i]) | (inner.Words()[i] & places & ~covered);
  }
  shown.ForEach([&](std::size_t bit) {
    pixels.symbols.emplace_back(static_cast<int>(bit / Stride()), static_cast<int>(bit % Stride()));
  });
  return pixels;
}

}  // namespace tarnwick
