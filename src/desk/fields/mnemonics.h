// Letters that reach a control together with Alt, given out over one page. Knows captions.
#pragma once

#include <QString>

class QWidget;

namespace tarnwick {

inline constexpr auto kMenuBarLetters = "fewvdmiyh";

class Mnemonics {
 public:
  /// `taken`: small letters that what stands beside the captions has.
  explicit Mnemonics(const QString& taken) { taken_ += taken; }
  /// The caption with the first of its letters marked that neither another caption of the page nor the menu bar has; as it
  /// is, with "&" made plain, where none is free.
  QString Mark(const QString& caption);

 private:
  QString taken_ = kMenuBarLetters;
};

/// Takes away the marks within `part` of letters that other controls of `page`, the menu bar or `taken` have.
void UnmarkTaken(QWidget& part, const QWidget& page, QString taken);

}  // namespace tarnwick
