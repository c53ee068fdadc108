#include "data/import/open_supplier.h"

#include <memory>
#include <utility>

#include "data/import/file_supplier.h"
#include "data/text/text_source.h"
#include "data/text/text_supplier.h"

namespace tarnwick {

std::unique_ptr<TDataSupplier> OpenSupplier(const TDSInfo& info,
                                            const std::filesystem::path& path) {
  MappedFile file = OpenSourceFile(path);
  if (IsUnformatted(file.Bytes())) {
    return std::make_unique<TFileSupplier>(std::move(file), path.string());
  }
  auto source = std::make_shared<const TextSource>(std::move(file), path.string());
  return std::make_unique<TTxtSupplier>(info, std::move(source));
}

}  // namespace tarnwick
