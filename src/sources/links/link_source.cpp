#include "sources/links/link_source.h"

#include <memory>
#include <utility>

#include "base/number_text.h"
#include "data/fields/field_value.h"
#include "data/import/import_file.h"
#include "data/import/open_source.h"
#include "sources/links/link_supplier.h"

namespace tarnwick {
namespace {

constexpr SourceSetting kSettings[] = {
    {"XDataColumn"}, {"YDataColumn"}, {"YErrorColumn"}, {"XErrorColumn"}, {"XFormat"},
    {"YFormat"},     {"XColExpr"},    {"YColExpr"},     {"Follow"},       {"KeepPoints"}};

/// Of a text that LinkValue reads.
ColumnGuess GuessOfText(const std::string& text) {
  ColumnGuess guess;
  guess.has_numbers = true;
  guess.has_units = !ValueOfField(text, ColumnFormat::Automatic);
  guess.is_date = !guess.has_units && !ParseNumber(text);
  return guess;
}

std::unique_ptr<TDataSupplier> OpenAgain(const TDSInfo& info, Progress& progress) {
  auto supplier = std::make_unique<TLinkSupplier>(info.DatasourceInfo);
  supplier->Ask(progress);
  return supplier;
}

ImportSource BeginAt(const TDSInfo& place, const ImportOptions& options, Progress& progress) {
  return OpenLinks(place.DatasourceInfo, options, progress);
}

}  // namespace

SourceKind LinkKind() {
  return {.kind = DataSourceKind::Dde,
          .name = "Live links",
          .begin = &BeginAt,
          .open = &OpenAgain,
          .settings = kSettings};
}

ImportSource OpenLinks(const std::string& list, const ImportOptions& options, Progress& progress) {
  options.Validate();
  auto supplier = std::make_unique<TLinkSupplier>(list);
  supplier->Ask(progress);
  ImportSource source;
  for (std::size_t i = 0; i < supplier->ColumnNames().size(); ++i) {
    source.columns.push_back(GuessOfText(supplier->TextAt(static_cast<std::int32_t>(i))));
  }
  source.time.has_numbers = source.time.is_date = true;
  source.time_columns = {kJoinedTimeColumn};  // the clock alone
  source.info.DatasourceInfo = list;
  source.info.Follow = true;
  if (!options.x_column) source.notes.emplace_back("the time on the clock gives X");
  source.supplier = std::move(supplier);
  FinishSource(options, DataSourceKind::Dde, source);
  return source;
}

}  // namespace tarnwick
