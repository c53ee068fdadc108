#include "fit/model/model_copy.h"

#include "fit/model/curve_fit_file.h"
#include "stream/stream_error.h"

namespace tarnwick {

void Reset(TCurFit& model) {
  model.SetLast({});
  model.SetSettings({}, MarkModified::Yes);
}

std::string SaveToStream(const TCurFit& model, WriterMode mode) {
  return StoredModel(model.Settings(), mode);
}

void LoadFromStream(TCurFit& model, std::string_view bytes, Compile compile) {
  try {
    model.SetSettings(ReadStoredModel(bytes),
                      compile == Compile::Yes ? MarkModified::Yes : MarkModified::No);
  } catch (const StreamError&) {
    model.ClearTemplates();
    model.ClearParameters();
    throw;
  }
  if (compile == Compile::Yes) model.Prepare();
}

void Assign(TCurFit& model, const TCurFit& other) {
  LoadFromStream(model, SaveToStream(other), Compile::Yes);
}

}  // namespace tarnwick
