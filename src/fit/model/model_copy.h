// A model that becomes another one: as new, as it was stored, as somebody else's. Knows the stored form and the model's face.
#pragma once

#include <string>
#include <string_view>

#include "fit/model/curve_fit.h"
#include "stream/section_writer.h"

namespace tarnwick {

void Reset(TCurFit& model);  ///< a fresh model; notifies

/// The stored form, of which curve_fit_file.h knows more.
std::string SaveToStream(const TCurFit& model, WriterMode mode = WriterMode::Typed);

enum class Compile { No, Yes };
/// Replaces the model by a stored one. Throws StreamError on bytes that are none; parameters and templates are gone then.
/// Compile throws EParserException, too.
void LoadFromStream(TCurFit& model, std::string_view bytes, Compile compile);

/// Settings by way of the stored form, then Prepare. Throws EParserException.
void Assign(TCurFit& model, const TCurFit& other);

}  // namespace tarnwick
