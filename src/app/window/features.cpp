#include "app/window/features.h"

#include "app/analysis/analysis_feature.h"
#include "app/data/data_feature.h"
#include "app/display/display_feature.h"
#include "app/edit/edit_feature.h"
#include "app/editors/editors_feature.h"
#include "app/files/files_feature.h"
#include "app/fit/fit_feature.h"
#include "app/help/help_feature.h"
#include "app/marks/marks_feature.h"
#include "app/modes/modes_feature.h"
#include "app/print/print_feature.h"
#include "app/view/view_feature.h"
#include "app/window/windows_feature.h"

namespace tarnwick {

std::vector<Feature> Features() {
  return {
      FilesFeature(),   EditorsFeature(),  EditFeature(), PrintFeature(), ModesFeature(),
      DisplayFeature(), WindowsFeature(),  ViewFeature(), MarksFeature(), DataFeature(),
      FitFeature(),     AnalysisFeature(), HelpFeature(),
  };
}

}  // namespace tarnwick
