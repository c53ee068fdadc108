// The meaning of mouse and keys on the active document's graph, as commands switch it. A mode is named by what makes it;
// the canvas knows what a mode is.
#pragma once

#include <memory>

namespace tarnwick {

class CanvasMode;

/// A mode not yet begun. The function is also what the mode is known by.
using ModeMaker = std::unique_ptr<CanvasMode> (*)();

class ModeHost {
 public:
  virtual ~ModeHost() = default;
  /// Gives mouse and keys this meaning; one that they have already ends instead.
  virtual void SwitchMode(ModeMaker maker) = 0;
  virtual bool IsOn(ModeMaker maker) const = 0;

 protected:
  ModeHost() = default;
  ModeHost(const ModeHost&) = default;
  ModeHost& operator=(const ModeHost&) = default;
};

}  // namespace tarnwick
