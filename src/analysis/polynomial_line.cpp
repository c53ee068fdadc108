#include "analysis/polynomial_line.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "base/error.h"
#include "base/number_text.h"

namespace tarnwick {
namespace {

struct Chosen {
  std::vector<double> x;
  std::vector<double> y;
};

Chosen Within(std::span<const double> x, std::span<const double> y,
              std::span<const XRegion> regions) {
  Chosen chosen;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const bool within =
        regions.empty() || std::ranges::any_of(regions, [at = x[i]](const XRegion& region) {
          return at >= region.begin && at <= region.end;
        });
    if (!within) continue;
    chosen.x.push_back(x[i]);
    chosen.y.push_back(y[i]);
  }
  return chosen;
}

std::size_t DifferentOf(std::vector<double> values) {
  std::ranges::sort(values);
  return static_cast<std::size_t>(std::unique(values.begin(), values.end()) - values.begin());
}

/// X from -1 to 1, where powers stay apart from each other.
struct Frame {
  double middle = 0;
  double half = 1;

  explicit Frame(std::span<const double> x) {
    const auto [least, greatest] = std::ranges::minmax(x);
    middle = least / 2 + greatest / 2;
    if (greatest > least) half = greatest / 2 - least / 2;
  }
  double Of(double x) const { return (x - middle) / half; }
};

/// p(k + 1) = (u - a) p(k) - b p(k - 1), and how much of p(k) there is.
struct Term {
  double a = 0;
  double b = 0;
  double share = 0;
};

double Product(std::span<const double> one, std::span<const double> other) {
  long double sum = 0;
  for (std::size_t i = 0; i < one.size(); ++i) sum += one[i] * other[i];
  return static_cast<double>(sum);
}

/// Takes what each term explains from `rest`.
std::vector<Term> TermsOf(std::span<const double> u, std::vector<double>& rest, int degree) {
  std::vector<Term> terms;
  std::vector<double> before(u.size(), 0);
  std::vector<double> present(u.size(), 1);
  double size_before = 0;
  for (int k = 0; k <= degree; ++k) {
    const double size = Product(present, present);
    Term term{.b = k > 0 ? size / size_before : 0, .share = Product(rest, present) / size};
    for (std::size_t i = 0; i < u.size(); ++i) {
      rest[i] -= term.share * present[i];
      term.a += u[i] * (present[i] * present[i] / size);
    }
    for (std::size_t i = 0; i < u.size(); ++i) {
      const double next = (u[i] - term.a) * present[i] - term.b * before[i];
      before[i] = present[i];
      present[i] = next;
    }
    size_before = size;
    terms.push_back(term);
  }
  return terms;
}

double ValueAt(double u, std::span<const Term> terms) {
  double sum = 0;
  double before = 0;
  double present = 1;
  for (const Term& term : terms) {
    sum += term.share * present;
    const double next = (u - term.a) * present - term.b * before;
    before = present;
    present = next;
  }
  return sum;
}

}  // namespace

PolynomialLine FitPolynomialLine(std::span<const double> x, std::span<const double> y,
                                 std::span<const XRegion> regions, int degree) {
  Chosen chosen = Within(x, y, regions);
  const auto needed = static_cast<std::size_t>(degree) + 1;
  if (const std::size_t different = DifferentOf(chosen.x); different < needed) {
    throw Error("A base line of degree " + std::to_string(degree) + " needs " +
                Counted(static_cast<std::int64_t>(needed), "point") + " with different X; " +
                (regions.empty() ? "there " : "in the regions ") +
                (different == 1 ? "is " : "are ") + std::to_string(different) + ".");
  }
  const Frame frame(chosen.x);
  std::ranges::transform(chosen.x, chosen.x.begin(), [&](double at) { return frame.Of(at); });
  const std::vector<Term> terms = TermsOf(chosen.x, chosen.y, degree);
  PolynomialLine line;
  line.points = chosen.x.size();
  line.y.reserve(x.size());
  for (const double at : x) line.y.push_back(ValueAt(frame.Of(at), terms));
  if (chosen.y.size() > needed) {
    const auto freedom = static_cast<double>(chosen.y.size() - needed);
    line.deviation = std::sqrt(Product(chosen.y, chosen.y) / freedom);
  }
  if (degree > 1) return line;
  line.slope = degree == 0 ? 0 : terms[1].share / frame.half;
  line.offset = ValueAt(frame.Of(0), terms);
  return line;
}

}  // namespace tarnwick
