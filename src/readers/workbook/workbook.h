// Workbooks of both kinds that are zip archives: their sheets, and one sheet as text. Knows parts and cells; knows no table.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "readers/workbook/sheet_text.h"

namespace tarnwick {

struct SheetName {
  std::string name;
  bool hidden = false;  ///< from who looks at the workbook
};

/// A sheet, its place among all that have cells, and what is in it.
using SheetTaker = std::function<void(std::size_t place, const SheetName& sheet, SheetText text)>;

class Workbook {
 public:
  virtual ~Workbook() = default;
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  /// Hands the sheet named `only` over, or all in order where that is empty. Throws Error for what is damaged.
  virtual void Read(std::string_view only, const CellRange& range, const SheetTaker& take) = 0;
  /// Those that have cells: no charts. In order, known once Read() has been called.
  virtual const std::vector<SheetName>& Sheets() const = 0;

 protected:
  Workbook() = default;
};

class ZipParts;

/// Throw Error.
std::unique_ptr<Workbook> OpenXlsx(const ZipParts& parts);
std::unique_ptr<Workbook> OpenOds(const ZipParts& parts);

/// The workbook in the archive, whichever kind it is. `parts` outlive it.
std::unique_ptr<Workbook> OpenWorkbook(const ZipParts& parts);

}  // namespace tarnwick
