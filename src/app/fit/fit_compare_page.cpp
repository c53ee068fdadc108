#include "app/fit/fit_compare_page.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QVBoxLayout>
#include <utility>

#include "app/fit/model_check.h"
#include "app/fit/verdict_label.h"
#include "base/error.h"
#include "desk/widgets/check_list.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "fit/model/fit_function_file.h"

namespace tarnwick {
namespace {

QPushButton* Button(const QString& text, const QString& tip, QWidget* parent) {
  auto* button = new QPushButton(text, parent);
  button->setToolTip(tip);
  button->setAutoDefault(false);
  button->setEnabled(false);
  return button;
}

/// What a comparison lets differ is the model alone: points and weights are those of `common`.
void TakePoints(const FitSettings& common, FitSettings& model) {
  model.LeftMarginUsed = common.LeftMarginUsed;
  model.LeftMargin = common.LeftMargin;
  model.RightMarginUsed = common.RightMarginUsed;
  model.RightMargin = common.RightMargin;
  model.NPoints = common.NPoints;
  model.weighting = common.weighting;
}

}  // namespace

FitComparePage::FitComparePage(const std::vector<std::filesystem::path>& functions,
                               std::size_t points, std::string x_name, ModelComparer compare,
                               QWidget* parent)
    : QWidget(parent), points_(points), x_name_(std::move(x_name)), compare_(std::move(compare)) {
  auto* row = new QHBoxLayout(this);
  row->addLayout(MakeChoice(), 2);
  row->addLayout(MakeAnswer(), 5);
  AddCandidate({tr("This function"), {}, {}}, Qt::Checked);
  for (const std::filesystem::path& file : functions)
    AddCandidate({PathText(file.stem()), file, {}, ModelStart::Guessed}, Qt::Unchecked);
  connect(list_, &CheckList::itemChanged, this, &FitComparePage::FollowChoice);
}

QLayout* FitComparePage::MakeChoice() {
  auto* label = new QLabel(tr("Functions to co&mpare:"), this);
  list_ = new CheckList("ComparedFunctions", tr("Functions to compare"), this);
  label->setBuddy(list_);
  formula_ = new QLineEdit(this);
  formula_->setObjectName("ComparedFormula");
  formula_->setPlaceholderText(tr("Formula: a+b*x"));
  formula_->setAccessibleName(tr("Another formula to compare"));
  auto* add = Button(tr("&Add"), tr("Add the formula; its unknown names become parameters"), this);
  add->setObjectName("AddFormula");
  compare_now_ = Button(tr("Com&pare"), tr("Fit each of them and rank them by AICc"), this);
  compare_now_->setObjectName("CompareNow");
  auto* formula = new QHBoxLayout;
  formula->addWidget(formula_, 1);
  formula->addWidget(add);
  auto* column = new QVBoxLayout;
  column->addWidget(label);
  column->addWidget(list_, 1);
  column->addLayout(formula);
  column->addWidget(compare_now_);
  connect(formula_, &QLineEdit::textChanged, this, [this, add](const QString& text) {
    MarkWrong(*formula_, {});
    add->setEnabled(!text.trimmed().isEmpty());
    FollowChoice();
  });
  connect(formula_, &QLineEdit::returnPressed, this, &FitComparePage::AddFormula);
  connect(add, &QPushButton::clicked, this, &FitComparePage::AddFormula);
  connect(compare_now_, &QPushButton::clicked, this, &FitComparePage::Compare);
  return column;
}

QLayout* FitComparePage::MakeAnswer() {
  table_ = new QTableWidget(0, 0, this);
  table_->setObjectName("ComparisonTable");
  table_->setAccessibleName(tr("Functions compared, the best first"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setTabKeyNavigation(false);
  table_->verticalHeader()->hide();
  table_->horizontalHeader()->setHighlightSections(false);
  remarks_ = new QLabel(this);
  remarks_->setObjectName("ComparisonRemarks");
  remarks_->setWordWrap(true);
  remarks_->setTextFormat(Qt::PlainText);
  remarks_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  remarks_->setAlignment(Qt::AlignTop);
  auto* scroll = new QScrollArea(this);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setAccessibleName(tr("Remarks"));
  scroll->setWidget(remarks_);
  scroll->viewport()->setAutoFillBackground(false);
  remarks_->setAutoFillBackground(false);
  copy_ = Button(tr("Cop&y as Table"), tr("Copy the table and what is said of it"), this);
  copy_->setObjectName("CopyComparison");
  use_ = Button(tr("&Use This Function"),
                tr("Take the function chosen in the table, with the values found"), this);
  use_->setObjectName("UseCompared");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(copy_);
  buttons->addWidget(use_);
  auto* column = new QVBoxLayout;
  column->addWidget(table_, 3);
  column->addWidget(scroll, 2);
  column->addLayout(buttons);
  ShowRemarks(
      tr("Choose two functions or more: each is fitted to the same points with the same weights, "
         "and they are ranked by what they explain for their number of parameters."),
      false);
  connect(copy_, &QPushButton::clicked, this,
          [this] { QApplication::clipboard()->setText(ToQt(ComparisonAsTable(*answer_))); });
  connect(use_, &QPushButton::clicked, this, &FitComparePage::Use);
  connect(table_, &QTableWidget::itemSelectionChanged, this, &FitComparePage::FollowChoice);
  return column;
}

void FitComparePage::AddCandidate(Candidate candidate, Qt::CheckState state) {
  const QString name = candidate.name;
  candidates_.push_back(std::move(candidate));
  list_->Add(name, state);
}

void FitComparePage::PutModel(const FitSettings& model) {
  FitSettings& present = candidates_.front().model = model;
  candidates_.front().start = ModelStart::AsGiven;
  // Names that nobody made parameters are such here as where the formula is fitted.
  if (model.parameters.empty() && model.templates.empty() && !model.Expression.empty()) {
    const std::vector<std::string> variables = {model.XVarName, FitSettings().XVarName, x_name_};
    present = TypedModel(model.Expression, variables, points_);
    candidates_.front().start = ModelStart::Guessed;
    const std::int32_t entering = present.NPoints;
    TakePoints(model, present);
    present.NPoints = entering;
  }
  QListWidgetItem& item = *list_->item(0);
  const bool written = !model.Expression.empty();
  item.setText(written ? tr("This function: %1").arg(ToQt(model.Expression)) : tr("This function"));
  item.setToolTip(written ? item.text() : tr("No function is written yet"));
  item.setFlags(written ? item.flags() | Qt::ItemIsEnabled : item.flags() & ~Qt::ItemIsEnabled);
  FollowChoice();
}

bool FitComparePage::AddFormula() {
  const std::string formula = formula_->text().trimmed().toStdString();
  if (formula.empty()) return true;
  const std::vector<std::string> variables = {candidates_.front().model.XVarName,
                                              FitSettings().XVarName, x_name_};
  const FitSettings model = TypedModel(formula, variables, points_);
  const ModelCheck check = CheckModel(model);
  if (!check.error.empty()) {
    MarkWrong(*formula_, ToQt(check.error));
    ShowRemarks(ToQt(check.error), true);
    return false;
  }
  QStringList told;
  if (model.XVarName != variables.front())
    told.append(tr("%1 is the variable of %2.").arg(ToQt(model.XVarName), ToQt(formula)));
  for (const std::string& warning : check.warnings) told.append(ToQt(warning));
  if (!told.isEmpty()) ShowRemarks(told.join('\n'), false);
  AddCandidate({ToQt(formula), {}, model, ModelStart::Guessed}, Qt::Checked);
  list_->scrollToBottom();
  formula_->clear();
  return true;
}

std::vector<NamedModel> FitComparePage::Chosen() const {
  const FitSettings& present = candidates_.front().model;
  std::vector<NamedModel> chosen;
  for (int row = 0; row < list_->count(); ++row) {
    if (!list_->IsChosen(row)) continue;
    const Candidate& one = candidates_[static_cast<std::size_t>(row)];
    chosen.push_back({one.name.toStdString(),
                      one.file.empty() ? one.model : LoadFitFunction(one.file), one.start});
    TakePoints(present, chosen.back().settings);
  }
  return chosen;
}

void FitComparePage::Compare() {
  if (!AddFormula()) return;
  try {
    std::optional<ModelComparison> answer = compare_(Chosen());
    if (!answer) return;
    answer_ = std::move(answer);
    ShowAnswer();
  } catch (const Error& error) {
    ShowRemarks(ToQt(error.what()), true);
  }
}

void FitComparePage::ShowAnswer() {
  const std::vector<std::vector<std::string>> rows = ComparisonRows(*answer_);
  QStringList headings;
  for (const std::string& heading : rows.front()) headings.append(ToQt(heading));
  table_->setColumnCount(static_cast<int>(headings.size()));
  table_->setHorizontalHeaderLabels(headings);
  table_->setRowCount(static_cast<int>(rows.size()) - 1);
  QStringList remarks;
  for (int row = 0; row < table_->rowCount(); ++row) {
    const std::vector<std::string>& texts = rows[static_cast<std::size_t>(row) + 1];
    ShowRow(row, texts);
    remarks.append(ToQt(texts.front() + ": " + texts.back()));
  }
  table_->resizeColumnsToContents();
  table_->horizontalHeader()->setSectionResizeMode(table_->columnCount() - 1, QHeaderView::Stretch);
  constexpr int kWidestName = 180;
  table_->setColumnWidth(0, std::min(table_->columnWidth(0), kWidestName));
  table_->selectRow(0);
  for (const std::string& remark : ComparisonRemarks(*answer_)) remarks.append(ToQt(remark));
  ShowRemarks(remarks.join("\n"), false);
  FollowChoice();
}

/// Of the verdict a word: its sentence stands below, where there is room for it.
void FitComparePage::ShowRow(int row, const std::vector<std::string>& texts) {
  const int last = table_->columnCount() - 1;
  for (int column = 0; column <= last; ++column) {
    const QString text = ToQt(texts[static_cast<std::size_t>(column)]);
    auto* item = new QTableWidgetItem(column == last ? tr(KindOfVerdict(ResultIn(row))) : text);
    item->setToolTip(text);
    if (column > 0 && column < last) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    table_->setItem(row, column, item);
  }
}

const FitResult& FitComparePage::ResultIn(int row) const {
  return answer_->results[answer_->comparison.ranks.at(static_cast<std::size_t>(row)).number];
}

void FitComparePage::ShowRemarks(const QString& text, bool is_error) {
  QPalette palette;
  if (is_error) palette.setColor(QPalette::WindowText, WrongTextColor());
  remarks_->setPalette(palette);
  remarks_->setText(text);
}

void FitComparePage::FollowChoice() {
  const qsizetype typed = formula_->text().trimmed().isEmpty() ? 0 : 1;
  compare_now_->setEnabled(list_->Chosen().size() + typed > 1);
  copy_->setEnabled(answer_.has_value());
  use_->setEnabled(answer_.has_value() && table_->selectionModel()->hasSelection());
}

void FitComparePage::Use() {
  const auto row = static_cast<std::size_t>(table_->currentRow());
  emit modelChosen(answer_->models[answer_->comparison.ranks.at(row).number].settings);
}

}  // namespace tarnwick
