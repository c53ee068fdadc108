// The mark editor: the list of a graph's marks and the fields of one of them. Every change is in the graph at once, as a
// step of the document. Knows documents; asks through Prompt.
#pragma once

#include <QDialog>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "desk/document/open_edit.h"
#include "graph/mark.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace tarnwick {

class Document;
class Prompt;
class TxyGraph;
class WrappedLabel;

class TxyMark final : public QDialog {
  Q_OBJECT

 public:
  /// A colour in place of the one given; nothing when the user keeps that.
  using ChooseColor = std::function<std::optional<Color>(const Color& present)>;

  /// Edits the marks of the graph that `document` is working on; begins with mark `id`, -1 for none. All outlive the
  /// editor. Without `choose_color` the desktop's colour dialog is asked.
  TxyMark(Document& document, std::int32_t id, Prompt& prompt, QWidget* parent = nullptr,
          ChooseColor choose_color = {});
  ~TxyMark() override;

  /// The mark that is selected; nothing for none.
  std::optional<Mark> EditedMark() const;

 public slots:
  void done(int result) override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  /// One number of a mark with its label.
  struct PositionField {
    double Mark::*number = nullptr;
    QLabel* label = nullptr;
    QLineEdit* edit = nullptr;
  };

  QString NumberOf(const PositionField& field) const;
  QWidget* MakeList();
  QWidget* MakeFields();
  QWidget* MakePosition();
  QWidget* MakeBottom();

  TxyGraph& Graph() const;
  /// Lists every mark and selects the line of that one; -1 for none.
  void FillList(std::int32_t selected);
  void SelectLine(int row);
  void ShowMark();
  void ShowColor(const std::optional<Mark>& mark);
  void ShowPositionFields(MarkType type);

  /// Changes the edited mark as part of the typing in `field`, which is one step until something else is done; without a
  /// field it is a step of its own.
  void Change(QLineEdit* field, const std::function<void(Mark&)>& change);
  void EndTyping();
  void TypePosition(const PositionField& field, const QString& text);
  void TypeCaption(const QString& text);
  void PickColor();
  void AddNew();
  void DeleteEdited();
  void ClearAll();
  void SetShowMarks(bool on);

  Document& document_;
  Prompt& prompt_;
  ChooseColor choose_color_;
  std::int32_t edited_ = -1;
  QLineEdit* typed_in_ = nullptr;
  std::unique_ptr<OpenEdit> typing_;

  QListWidget* list_ = nullptr;
  QPushButton* delete_ = nullptr;
  QPushButton* clear_ = nullptr;
  QWidget* fields_ = nullptr;
  QComboBox* status_ = nullptr;
  QComboBox* type_ = nullptr;
  QLineEdit* caption_ = nullptr;
  QFrame* swatch_ = nullptr;
  std::array<PositionField, 4> position_;
  WrappedLabel* refused_ = nullptr;  // why a number is not taken
  QCheckBox* show_marks_ = nullptr;
};

}  // namespace tarnwick
