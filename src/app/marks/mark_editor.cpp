#include "app/marks/mark_editor.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QColorDialog>
#include <QComboBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/number_text.h"
#include "desk/document/document.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "desk/widgets/wrapped_label.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {
namespace {

/// What a type calls its numbers X1, Y1, X2, Y2; null for one it has no use for.
struct TypeRow {
  const char* name;
  std::array<const char*, 4> labels;
};

constexpr std::array<TypeRow, 7> kTypes = {{
    {"Vertical Line", {"Vert Line X = ", nullptr, nullptr, nullptr}},
    {"Horizontal Line", {nullptr, "Hor Line Y = ", nullptr, nullptr}},
    {"Point", {"Point X = ", "Point Y = ", "Point Width", nullptr}},
    {"Line", {"Origin X = ", "Origin Y = ", "End X = ", "End Y = "}},
    {"Text", {"Text X = ", "Text Y = ", nullptr, nullptr}},
    {"Arrow", {"Origin X = ", "Origin Y = ", "Tip X = ", "Tip Y = "}},
    {"Rectangle", {"Corner X = ", "Corner Y = ", "Opposite X = ", "Opposite Y = "}},
}};
constexpr std::array kStatusNames = {"Draw in X and Y", "Draw in X and Y2", "Do not Draw"};
constexpr std::array<double Mark::*, 4> kNumbers = {&Mark::x1, &Mark::y1, &Mark::x2, &Mark::y2};
constexpr std::array kEditNames = {"e_MarkX1", "e_MarkY1", "e_MarkX2", "e_MarkY2"};

QString ListLine(const Mark& mark) {
  return QString::number(mark.id) + ": " + ToQt(mark.caption);
}

QColor ToQtColor(const Color& color) {
  return {color.Red(), color.Green(), color.Blue()};
}

template <class Names>
QComboBox* MakeChoice(const char* object_name, const Names& names) {
  auto* choice = new QComboBox;
  choice->setObjectName(object_name);
  for (const char* name : names) choice->addItem(QObject::tr(name));
  return choice;
}

/// The width of the longest label of a position.
int WidestLabel(const QFontMetrics& font) {
  int widest = 0;
  for (const TypeRow& row : kTypes) {
    for (const char* label : row.labels) {
      if (label) widest = std::max(widest, font.horizontalAdvance(QObject::tr(label)));
    }
  }
  return widest;
}

/// A label that leads to its field for keyboard and screen reader.
QLabel* MakeLabel(const QString& text, QWidget* field) {
  auto* label = new QLabel(text);
  label->setBuddy(field);
  return label;
}

}  // namespace

TxyMark::TxyMark(Document& document, std::int32_t id, Prompt& prompt, QWidget* parent,
                 ChooseColor choose_color)
    : QDialog(parent),
      document_(document),
      prompt_(prompt),
      choose_color_(std::move(choose_color)) {
  setObjectName("TxyMark");
  setWindowTitle(tr("Mark Editor"));
  setModal(true);
  if (!choose_color_) {
    choose_color_ = [this](const Color& present) -> std::optional<Color> {
      const QColor chosen = QColorDialog::getColor(ToQtColor(present), this);
      if (!chosen.isValid()) return std::nullopt;
      return Color::FromRgb(chosen.red(), chosen.green(), chosen.blue());
    };
  }
  auto* grid = new QGridLayout(this);
  grid->setSpacing(10);
  grid->addWidget(MakeList(), 0, 0);
  grid->addWidget(MakeFields(), 0, 1);
  grid->addWidget(MakeBottom(), 1, 0, 1, 2);
  grid->setColumnStretch(0, 1);
  FillList(id);
  list_->setFocus();
}

TxyMark::~TxyMark() {
  hide();  // a field that loses the focus later would tell an editor that is gone
  EndTyping();
}

QWidget* TxyMark::MakeList() {
  auto* side = new QWidget;
  auto* grid = new QGridLayout(side);
  grid->setContentsMargins(0, 0, 0, 0);
  list_ = new QListWidget;
  list_->setObjectName("ListBox2");
  list_->setAccessibleName(tr("Marks"));
  auto* add = new QPushButton(tr("New"));
  delete_ = new QPushButton(tr("Delete"));
  clear_ = new QPushButton(tr("C&lear All"));
  grid->addWidget(list_, 0, 0, 1, 3);
  int column = 0;
  for (QPushButton* button : {add, delete_, clear_}) {
    button->setAutoDefault(false);
    grid->addWidget(button, 1, column++);
  }
  connect(list_, &QListWidget::currentRowChanged, this, &TxyMark::SelectLine);
  connect(add, &QPushButton::clicked, this, &TxyMark::AddNew);
  connect(delete_, &QPushButton::clicked, this, &TxyMark::DeleteEdited);
  connect(clear_, &QPushButton::clicked, this, &TxyMark::ClearAll);
  return side;
}

QWidget* TxyMark::MakeFields() {
  fields_ = new QWidget;
  auto* form = new QFormLayout(fields_);
  form->setContentsMargins(0, 0, 0, 0);
  status_ = MakeChoice("cbx_MarkStatus", kStatusNames);
  std::array<const char*, kTypes.size()> type_names{};
  std::transform(kTypes.begin(), kTypes.end(), type_names.begin(),
                 [](const TypeRow& row) { return row.name; });
  type_ = MakeChoice("cbx_MarkType", type_names);
  caption_ = new QLineEdit;
  caption_->setObjectName("e_MarkCaption");
  swatch_ = new QFrame;
  swatch_->setObjectName("MarkColor");
  swatch_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  swatch_->setAutoFillBackground(true);
  swatch_->setMinimumWidth(56);
  auto* choose = new QPushButton(tr("..."));
  choose->setObjectName("ChooseMarkColor");
  choose->setAccessibleName(tr("Choose color"));
  choose->setToolTip(tr("Choose the color of the mark"));
  choose->setAutoDefault(false);
  choose->setFixedWidth(choose->fontMetrics().horizontalAdvance("...") + 24);
  auto* color = new QHBoxLayout;
  color->addWidget(swatch_, 1);
  color->addWidget(choose);
  form->addRow(MakeLabel(tr("Status:"), status_), status_);
  form->addRow(MakeLabel(tr("Type"), type_), type_);
  form->addRow(MakeLabel(tr("Text"), caption_), caption_);
  form->addRow(MakeLabel(tr("Color"), choose), color);
  form->addRow(MakePosition());
  connect(status_, &QComboBox::activated, this, [this](int index) {
    Change(nullptr, [&](Mark& mark) { mark.status = static_cast<MarkStatus>(index); });
  });
  connect(type_, &QComboBox::activated, this, [this](int index) {
    Change(nullptr, [&](Mark& mark) { mark.type = static_cast<MarkType>(index); });
    ShowPositionFields(static_cast<MarkType>(index));
  });
  connect(caption_, &QLineEdit::textEdited, this, &TxyMark::TypeCaption);
  connect(caption_, &QLineEdit::editingFinished, this, &TxyMark::EndTyping);
  connect(choose, &QPushButton::clicked, this, &TxyMark::PickColor);
  return fields_;
}

QWidget* TxyMark::MakePosition() {
  auto* group = new QGroupBox(tr("Position"));
  auto* grid = new QGridLayout(group);
  for (std::size_t i = 0; i < position_.size(); ++i) {
    PositionField& field = position_[i];
    field.number = kNumbers[i];
    field.edit = new QLineEdit;
    field.edit->setObjectName(kEditNames[i]);
    // Room for the longest number.
    field.edit->setMinimumWidth(
        field.edit->fontMetrics().horizontalAdvance("-0.12345678901234567E-300"));
    field.label = MakeLabel(tr(kTypes.back().labels[i]), field.edit);
    const int row = static_cast<int>(i);
    grid->addWidget(field.label, row, 0);
    grid->addWidget(field.edit, row, 1);
    connect(field.edit, &QLineEdit::textEdited, this,
            [this, i](const QString& text) { TypePosition(position_[i], text); });
    connect(field.edit, &QLineEdit::editingFinished, this, &TxyMark::EndTyping);
  }
  const int below = static_cast<int>(position_.size());
  refused_ = SentencesLabel();
  refused_->setObjectName("Refused");
  QPalette colors = refused_->palette();
  colors.setColor(QPalette::WindowText, WrongTextColor());
  refused_->setPalette(colors);
  grid->addWidget(refused_, below, 0, 1, 2);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(below + 1, 1);
  // As wide and high as with all of them, so that the window keeps its size from type to type.
  grid->setColumnMinimumWidth(0, WidestLabel(fontMetrics()));
  group->setMinimumHeight(group->sizeHint().height());
  return group;
}

QWidget* TxyMark::MakeBottom() {
  auto* bottom = new QWidget;
  auto* row = new QHBoxLayout(bottom);
  row->setContentsMargins(0, 0, 0, 0);
  show_marks_ = new QCheckBox(tr("Show Marks"));
  show_marks_->setObjectName("cbx_ShowMarks");
  show_marks_->setChecked(Graph().GetAppearance().marks_are_shown);
  auto* ok = new QPushButton(tr("O&K"));
  ok->setDefault(true);
  auto* cancel = new QPushButton(tr("Cancel"));
  cancel->setToolTip(tr("Take back everything done in this window (Esc)"));
  row->addWidget(show_marks_);
  row->addStretch();
  row->addWidget(ok);
  row->addWidget(cancel);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(show_marks_, &QCheckBox::toggled, this, &TxyMark::SetShowMarks);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  return bottom;
}

TxyGraph& TxyMark::Graph() const {
  return document_.Graph();
}

std::optional<Mark> TxyMark::EditedMark() const {
  const Mark* mark = Graph().Marks().FindMark(edited_);
  return mark ? std::optional(*mark) : std::nullopt;
}

void TxyMark::done(int result) {
  EndTyping();
  QDialog::done(result);
}

void TxyMark::closeEvent(QCloseEvent* event) {
  // What shows in the graph stays; taking it back is asked for by name.
  accept();
  event->accept();
}

void TxyMark::FillList(std::int32_t selected) {
  const QSignalBlocker silent(list_);
  list_->clear();
  int row = -1;
  for (const Mark& mark : Graph().Marks().All()) {
    if (mark.id == selected) row = list_->count();
    list_->addItem(ListLine(mark));
  }
  list_->setCurrentRow(row);
  clear_->setEnabled(list_->count() > 0);
  SelectLine(row);
}

void TxyMark::SelectLine(int row) {
  EndTyping();
  edited_ = row < 0 ? -1 : Graph().Marks().All().at(static_cast<std::size_t>(row)).id;
  ShowMark();
}

void TxyMark::ShowMark() {
  const std::optional<Mark> mark = EditedMark();
  const Mark shown = mark.value_or(Mark{});
  fields_->setEnabled(mark.has_value());
  delete_->setEnabled(mark.has_value());
  status_->setCurrentIndex(static_cast<int>(shown.status));
  type_->setCurrentIndex(static_cast<int>(shown.type));
  caption_->setText(ToQt(shown.caption));
  for (const PositionField& field : position_) {
    field.edit->setText(mark ? NumberOf(field) : QString());
    field.edit->setCursorPosition(0);
    MarkWrong(*field.edit, {});
  }
  refused_->ShowText({});
  ShowPositionFields(shown.type);
  ShowColor(mark);
}

void TxyMark::ShowColor(const std::optional<Mark>& mark) {
  QPalette colors = palette();
  if (mark) colors.setColor(QPalette::Window, ToQtColor(mark->color));
  if (!mark) colors.setColor(QPalette::Window, colors.color(QPalette::Button));
  swatch_->setPalette(colors);
  swatch_->setAccessibleName(mark ? tr("Color %1").arg(ToQtColor(mark->color).name())
                                  : tr("No color"));
}

void TxyMark::ShowPositionFields(MarkType type) {
  const TypeRow& row = kTypes.at(static_cast<std::size_t>(type));
  for (std::size_t i = 0; i < position_.size(); ++i) {
    const char* label = row.labels[i];
    position_[i].label->setVisible(label != nullptr);
    position_[i].edit->setVisible(label != nullptr);
    if (!label) continue;
    position_[i].label->setText(tr(label));
    QString name = tr(label);
    position_[i].edit->setAccessibleName(name.remove('=').trimmed());
  }
}

void TxyMark::Change(QLineEdit* field, const std::function<void(Mark&)>& change) {
  if (field != typed_in_) EndTyping();
  const std::optional<Mark> before = EditedMark();
  if (!before) return;
  Mark mark = *before;
  change(mark);
  if (mark == *before) return;
  if (!typing_) typing_ = std::make_unique<OpenEdit>(document_, "Edit Mark");
  typed_in_ = field;
  SetMark(Graph(), mark);
  if (!field) EndTyping();
}

void TxyMark::EndTyping() {
  if (typing_) typing_->Finish();
  typing_.reset();
  typed_in_ = nullptr;
}

QString TxyMark::NumberOf(const PositionField& field) const {
  return ToQt(ShortestText(EditedMark().value_or(Mark{}).*field.number));
}

void TxyMark::TypePosition(const PositionField& field, const QString& text) {
  const QString typed = text.trimmed();
  MarkWrong(*field.edit, {});
  refused_->ShowText({});
  // A number may begin with its point.
  if (typed.isEmpty() || typed == ".") return;
  const std::optional<double> number = ParseNumber(typed.toStdString());
  if (!number || !std::isfinite(*number)) {
    const QString why = tr("\"%1\" is not a number").arg(typed);
    MarkWrong(*field.edit, why);
    refused_->ShowText(tr("%1: the mark keeps %2.").arg(why, NumberOf(field)));
    return;
  }
  Change(field.edit, [&](Mark& mark) { mark.*field.number = *number; });
}

void TxyMark::TypeCaption(const QString& text) {
  Change(caption_, [&](Mark& mark) { mark.caption = text.toStdString(); });
  const std::optional<Mark> mark = EditedMark();
  if (mark) list_->currentItem()->setText(ListLine(*mark));
}

void TxyMark::PickColor() {
  EndTyping();
  const std::optional<Mark> mark = EditedMark();
  if (!mark) return;
  const std::optional<Color> chosen = choose_color_(mark->color);
  if (!chosen) return;
  Change(nullptr, [&](Mark& changed) { changed.color = *chosen; });
  ShowColor(EditedMark());
}

void TxyMark::AddNew() {
  EndTyping();
  std::int32_t id = -1;
  document_.Edit("New Mark", [&](TxyGraph& graph) { id = AddMark(graph, Mark{}); });
  FillList(id);
  list_->setFocus();
}

void TxyMark::DeleteEdited() {
  EndTyping();
  if (edited_ < 0) return;
  document_.Edit("Delete Mark", [&](TxyGraph& graph) { DeleteMark(graph, edited_); });
  FillList(-1);
}

void TxyMark::ClearAll() {
  EndTyping();
  if (Graph().Marks().All().empty()) return;
  if (prompt_.Ask({"Clear All Marks?", {Answer::Yes, Answer::No}}) == Answer::No) return;
  document_.Edit("Clear Marks", [](TxyGraph& graph) { ClearMarks(graph); });
  FillList(-1);
}

void TxyMark::SetShowMarks(bool on) {
  EndTyping();
  document_.Edit(on ? "Show Marks" : "Hide Marks", [&](TxyGraph& graph) {
    Appearance appearance = graph.GetAppearance();
    appearance.marks_are_shown = on;
    graph.SetAppearance(appearance);
  });
}

}  // namespace tarnwick
