// The control of one stored field, made by the kind of control that its row asks for, with room for a remark below. Knows how
// a value is shown and typed, not whose it is.
#pragma once

#include <QWidget>
#include <memory>
#include <optional>

#include "desk/fields/field_row.h"

class QVBoxLayout;

namespace tarnwick {

class WrappedLabel;

class FieldWidget : public QWidget {
  Q_OBJECT

 public:
  /// Shows a value; nothing stands for several that differ. What the user has typed stays while it means that value, or
  /// while it is refused and the value is the one shown before.
  void Show(const std::optional<FieldValue>& value, const FieldSurroundings& around);
  /// The same while the user is typing in it: what was typed stays in any case.
  void ShowBehind(const std::optional<FieldValue>& value) { shown_ = value; }
  /// Forgets what was typed and refused.
  void Forget();
  void ShowRemark(const FieldRemark& remark);
  bool IsRefused() const { return remark_kind_ == FieldRemark::Kind::Refused; }
  /// The value that the control now stands for, refused or not; nothing when it stands for none.
  const std::optional<FieldValue>& Typed() const { return typed_; }

  /// Without effect for now, and why; an empty text makes it usable again.
  void SetIdle(const QString& why);
  /// Its control bears its caption itself.
  virtual bool NamesItself() const { return false; }
  /// With a mnemonic; only for one that names itself.
  virtual void SetCaption(const QString&) {}
  /// What the keyboard goes to.
  QWidget* Control() const { return control_; }

 signals:
  /// The user has chosen or typed something: Typed() says whether it is a value.
  void edited();

 protected:
  explicit FieldWidget(const FieldRow& row, QWidget* parent);
  /// Takes the control's place above the remark; the first one gets the keyboard.
  void AddControl(QWidget* control, QWidget* keys = nullptr);
  /// For descendants: the value of what was typed, or nothing and why it cannot be used.
  void Take(FieldValue value);
  void Refuse(const QString& why);
  virtual void ShowValue(const std::optional<FieldValue>& value,
                         const FieldSurroundings& around) = 0;
  /// Marks where in what was typed the trouble is; for controls that can.
  virtual void ShowPlace(const FieldRemark&) {}
  const FieldRow& Row() const { return row_; }
  const std::optional<FieldValue>& Shown() const { return shown_; }

 private:
  bool LooksTheSame(const FieldSurroundings& around) const;

  FieldRow row_;
  QVBoxLayout* column_;
  WrappedLabel* remark_ = nullptr;
  QWidget* control_ = nullptr;
  QString tip_;
  FieldRemark::Kind remark_kind_ = FieldRemark::Kind::None;
  std::optional<FieldValue> shown_;
  std::optional<FieldValue> typed_;
  FieldSurroundings around_;
  bool is_shown_ = false;
};

/// The control for a row, with the row's number as a part of its name; null for one that is hidden.
FieldWidget* MakeFieldWidget(const FieldRow& row, QWidget* parent);

}  // namespace tarnwick
