// Numbers that name columns: temperatures, times or years above the curves that belong to them. Knows texts of fields only.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace tarnwick {

/// True for "nm", "20", "25", "30" and for "", "0.0", "0.5", "1.0", "1.5": behind a label, or behind nothing, numbers that
/// only rise or only fall.
bool AreNumbersAcross(std::span<const std::string> fields);

/// Names [first, behind) that are all numbers or all days.
struct NamesAcross {
  std::size_t first = 0;
  std::size_t behind = 0;
  bool are_times = false;  ///< years or days
};

/// "Country Name", "Code", "1960", "1961", …, "": six numbers or days and more that only rise or only fall, behind one text at
/// least, and behind them nothing but empty fields. Nothing for other names.
std::optional<NamesAcross> FindNamesAcross(std::span<const std::string> fields);

/// As AreNumbersAcross for four numbers and more, each as far from the one before.
bool AreEvenNumbersAcross(std::span<const std::string> fields);

/// "country,code,2019,2020,2021": at least three that follow each other are numbers and rise.
bool HoldRisingNumbers(std::span<const std::string> fields);

/// "Espece", "1", "2", "3", "4", "E": behind a text and before others four numbers or more, each one more than the one before.
bool CountBetweenTexts(std::span<const std::string> fields);

/// "0", "AtomicRadius[A]", "AtomicMass", …: many words behind a single number.
bool BeginsWithOneNumber(std::span<const std::string> names);

}  // namespace tarnwick
