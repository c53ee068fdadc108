// Dialogs that come back in the size the user gave them. Knows settings and that a dialog is shown or gone; no dialog in
// particular.
#pragma once

#include <QObject>
#include <QSize>
#include <QString>
#include <map>

class QWidget;

namespace tarnwick {

class Settings;

/// Keeps the sizes of all dialogs of the program that have a name; messages and the desktop's own dialogs size
/// themselves. None is shown larger than its screen.
class DialogSizes final : public QObject {
 public:
  /// `settings` outlive this.
  explicit DialogSizes(Settings& settings);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void TakeStored(QWidget& dialog) const;
  void Gone(const QWidget& dialog);

  Settings& settings_;
  std::map<QString, QSize> begun_with_;  // by the dialog's name
};

}  // namespace tarnwick
