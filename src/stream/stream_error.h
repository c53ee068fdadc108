// Trouble in a stream of values or sections: a fixed text alone. Who knows the file adds its name and the place.
#pragma once

#include "base/error.h"

namespace tarnwick {

class StreamError : public Error {
 public:
  using Error::Error;
};

inline constexpr const char* kIllegalCall = "illegal call in savetofile";  ///< key number above 99
inline constexpr const char* kReadingError1 =
    "reading error 1";  ///< a key read before the last value
inline constexpr const char* kReadingError2 =
    "reading error 2";  ///< a value read with no tag pending
inline constexpr const char* kConversionError =
    "conversion error";  ///< no conversion, or no number
inline constexpr const char* kPointCountMissing =
    "Stream read Error";  ///< first key of a point block not 1
inline constexpr const char* kPointEntriesMissing =
    "Stream Read Error";  ///< second key of a point block not 2
inline constexpr const char* kUnexpectedEnd =
    "unexpected end of file";  ///< fewer bytes left than needed
inline constexpr const char* kUnexpectedValue =
    "unexpected value";  ///< another kind of value than needed

}  // namespace tarnwick
