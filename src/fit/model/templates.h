// Names that stand for texts in a model's expression. Knows texts only, not what they mean.
#pragma once

#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

/// The expression with every template's name, whatever its case, replaced by its text, from the last template to the first;
/// those without a name do nothing. Throws Error when that gets longer than an expression may be.
std::string WithTemplates(std::string expression, const std::vector<TemplateSettings>& templates);

}  // namespace tarnwick
