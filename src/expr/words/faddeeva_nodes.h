// What w(z) is summed from, on single numbers and on vectors. Knows numbers only.
//
// Near: the trapezoidal rule at whole or at half steps less its poles (Y. L. Luke; Matta & Reichel, Mathematics of Computation
// 25,
// 339 (1971)). Far out: the asymptotic series.
#pragma once

#include <array>
#include <cstddef>

namespace tarnwick {

inline constexpr std::size_t kFaddeevaTerms = 12;
/// sqrt(pi / 12)
inline constexpr double kFaddeevaStep = 0.51166335397324424;

struct FaddeevaNodes {
  std::array<double, kFaddeevaTerms> square;  ///< of the abscissae
  std::array<double, kFaddeevaTerms>
      weight;  ///< exp(-square); half of that at 0, which has no counterpart
};

inline constexpr FaddeevaNodes kWholeNodes = {
    {0.0, 0.26179938779914946, 1.0471975511965979, 2.356194490192345, 4.188790204786391,
     6.544984694978735, 9.42477796076938, 12.828170002158325, 16.755160819145566,
     21.205750411731103, 26.17993877991494, 31.677725923697086},
    {0.5, 0.7696654124932398, 0.3509198071784109, 0.09478022484215486, 0.015164619864546564,
     0.0014373060804075326, 8.069951757030463e-05, 2.684086793096736e-06, 5.288422116944148e-08,
     6.17247886522432e-10, 4.267731135455234e-12, 1.7479879405654947e-14}};
inline constexpr FaddeevaNodes kHalfNodes = {
    {0.06544984694978737, 0.5890486225480862, 1.6362461737446838, 3.2070425005395813,
     5.301437602932776, 7.919431480924271, 11.061024134514064, 14.726215563702157,
     18.915005768488545, 23.627394748873233, 28.86338250485623, 34.62296903643752},
    {0.9366460212365959, 0.5548549101598534, 0.19470957808529032, 0.04047614460380571,
     0.004984423132468589, 0.00036360898638930413, 1.571296901780048e-05, 4.02240542156481e-07,
     6.099824915912173e-09, 5.479650239757549e-11, 2.9160317551794876e-13, 9.192541525134333e-16}};

/// From this |z|^2 and this y on the series to kFarTerms terms is w to the last bit.
inline constexpr double kFarSquare = 144;
inline constexpr double kLeastFarY = 1e-40;
inline constexpr int kFarTerms = 11;

}  // namespace tarnwick
