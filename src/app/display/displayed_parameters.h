// Which parameters the display panel shows: every printed one of every model that is switched on, in all graphs, and what
// is read and changed of them. Knows documents and models, no widget.
#pragma once

#include <QPointer>
#include <string>
#include <vector>

#include "app/display/close_display_thread.h"
#include "desk/document/document.h"

namespace tarnwick {

struct DisplayedParameter {
  QPointer<Document> document;
  std::size_t series = 0;   ///< of the whole graph, from 0
  std::int32_t number = 0;  ///< within the model, from 1
  std::string name = {};
  std::string units = {};
  std::string data_set = {};
  bool operator==(const DisplayedParameter&) const = default;
};

/// Those of these graphs, in order.
std::vector<DisplayedParameter> DisplayedParametersOf(const std::vector<Document*>& documents);

/// What they now are. All must be there still.
std::vector<DisplayedValue> ValuesOf(const std::vector<DisplayedParameter>& parameters);

/// The parameter's settings; nothing when it is gone.
std::optional<ParameterSettings> SettingsOf(const DisplayedParameter& parameter);

/// One step that gives the parameter its value. Throws Error when another one gives it.
void ChangeValue(const DisplayedParameter& parameter, double value);

}  // namespace tarnwick
