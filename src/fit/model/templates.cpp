#include "fit/model/templates.h"

#include "base/error.h"
#include "base/text_encoding.h"
#include "expr/expression_parser.h"

namespace tarnwick {

namespace {

/// `text` with every occurrence of `name`, whatever its case, replaced by `by`; what is put in is not searched again.
/// Throws Error when that is longer than an expression may be: templates that repeat names double it with every one.
std::string ReplacedIgnoringCase(const std::string& text, const std::string& name,
                                 const std::string& by) {
  const std::string lower_text = LowerAscii(text);
  const std::string lower_name = LowerAscii(name);
  std::string replaced;
  std::size_t from = 0;
  for (std::size_t at = lower_text.find(lower_name); at != std::string::npos;
       at = lower_text.find(lower_name, from)) {
    replaced.append(text, from, at - from).append(by);
    from = at + name.size();
    if (replaced.size() + (text.size() - from) > kLongestExpression) {
      throw Error("The templates make the expression longer than " +
                  std::to_string(kLongestExpression) + " characters");
    }
  }
  return replaced.append(text, from);
}

}  // namespace

std::string WithTemplates(std::string expression, const std::vector<TemplateSettings>& templates) {
  for (auto one = templates.rbegin(); one != templates.rend(); ++one) {
    if (!one->Name.empty()) expression = ReplacedIgnoringCase(expression, one->Name, one->Text);
  }
  return expression;
}

}  // namespace tarnwick
