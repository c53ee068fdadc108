// Makes every Qt warning a test did not announce a failure of that test. Knows Qt's message handler and GoogleTest's
// events; knows nothing of what is tested.
#pragma once

#include <string_view>

namespace tarnwick::testing {

// Watches Qt's messages from now on: a warning, a critical or a fatal message fails the running test unless announced.
// Called once by the test mains before the application object is made.
void WatchQtWarnings();

// Announces that the running test brings about at least one Qt warning that contains a match of the regular expression
// (ECMAScript). Matching warnings are accepted until the test ends; a test that ends without one fails.
void ExpectQtWarning(std::string_view pattern);

}  // namespace tarnwick::testing
