#include "editors/data/source_page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>
#include <variant>

#include "base/error.h"
#include "base/word_list.h"
#include "data/fields/column_cuts.h"
#include "data/import/column_expression.h"
#include "data/import/import_file.h"
#include "data/import/import_told.h"
#include "data/import/open_source.h"
#include "data/import/source_place.h"
#include "desk/commands/command_actions.h"
#include "desk/fields/field_form.h"
#include "desk/fields/field_widget.h"
#include "desk/fields/mnemonics.h"
#include "desk/sources/place_edit.h"
#include "desk/sources/place_edits.h"
#include "desk/widgets/reading_order.h"
#include "desk/widgets/text.h"
#include "desk/work/latest_work.h"
#include "editors/data/cuts_view.h"
#include "editors/data/guessed_columns.h"
#include "editors/data/point_counter.h"
#include "graph/series_of_whole.h"
#include "sources/all_source_kinds.h"

namespace tarnwick {
namespace {

constexpr std::size_t kLines = 40;
constexpr std::size_t kLinesOfTable = 20;  // of what is read, however far down it stands
constexpr std::size_t kMostHeaders = 400;
constexpr std::size_t kColumns = 200;
constexpr std::size_t kMostNames = 5;  // in a sentence
constexpr int kPause = 150;            // ms after the last key
constexpr int kPreviewHeight = 240;

bool SameTable(const TDSInfo& one, const TDSInfo& other) {
  return one.DataSource == other.DataSource && one.DatasourceInfo == other.DatasourceInfo &&
         one.RelativeSource == other.RelativeSource && one.TablePart == other.TablePart;
}

QString StayText(const std::vector<std::string>& names, const std::string& part) {
  const QString where =
      part.empty() ? SourcePage::tr("where they were read") : ToQt('"' + part + '"');
  return (names.size() == 1
              ? SourcePage::tr("Only this DataSet was read anew: %1 is still of %2.")
              : SourcePage::tr("Only this DataSet was read anew: %1 are still of %2."))
      .arg(ToQt(Listed(names, kMostNames)), where);
}

/// What a place edit shows needs no field beside it.
bool IsOfPlace(std::string_view key) {
  return key == "TablePart";
}

bool CanGuess(DataSourceKind kind) {
  if (kind == DataSourceKind::Text) return true;
  const SourceKind* const row = FindSourceKind(AllSourceKinds(), kind);
  return row != nullptr && row->begin != nullptr;
}

ImportSource LookAnew(const TDSInfo& info, Progress& progress) {
  const SourceKind* const row = FindSourceKind(AllSourceKinds(), info.DataSource);
  return row != nullptr && row->begin != nullptr
             ? row->begin(info, {}, progress)
             : OpenImportSource(SourcePlace(info), {}, AllSourceKinds(), progress);
}

/// The first rows of a source that is no text, or why there are none.
std::variant<SourcePreview, QString> FirstRows(const TDSInfo& info, Progress& progress) {
  try {
    const SourceKind* const row = FindSourceKind(AllSourceKinds(), info.DataSource);
    if (row == nullptr || row->open == nullptr) return SourcePreview();
    return PreviewRows(*row->open(info, progress), info, kLines, kColumns);
  } catch (const Error& error) {
    return ToQt(error.what());
  }
}

std::size_t LinesToShow(const TDSInfo& info) {
  const auto headers = static_cast<std::size_t>(std::max(info.FileHasHeaders, 0));
  return std::max(kLines, std::min(headers, kMostHeaders) + kLinesOfTable);
}

bool HasSource(const TDSInfo& info) {
  return info.DataSource != DataSourceKind::Manual && !info.DatasourceInfo.empty();
}

}  // namespace

SourcePage::SourcePage(const PanelParts& parts, const EditedSeries& series, QWidget* parent)
    : QWidget(parent), parts_(parts), series_(series) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 6, 0, 0);
  file_ = new QLabel(this);
  file_->setObjectName("SourceFile");
  file_->setWordWrap(true);
  file_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  column->addWidget(file_);
  place_ = new QVBoxLayout;
  column->addLayout(place_);
  auto* halves = new QSplitter(Qt::Vertical, this);
  cuts_ = new CutsView(halves);
  table_ = new PreviewTable(halves);
  form_ = new FieldForm(draft_.Rows(), "optgaru");
  scroll_ = new QScrollArea(halves);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);  // it follows the control that has it
  scroll_->setWidgetResizable(true);
  scroll_->setWidget(form_);
  halves->setSizes({kPreviewHeight, kPreviewHeight, kPreviewHeight});
  column->addWidget(halves, 1);
  told_ = new QLabel(this);
  told_->setObjectName("SourceTold");
  told_->setWordWrap(true);
  column->addWidget(told_);
  count_ = new QLabel(this);
  count_->setObjectName("SourceCount");
  count_->setWordWrap(true);
  // The buttons below stay where they are when it comes.
  count_->setMinimumHeight(count_->fontMetrics().lineSpacing());
  column->addWidget(count_);
  column->addWidget(BuildButtons());
  soon_ = new QTimer(this);
  soon_->setSingleShot(true);
  connect(soon_, &QTimer::timeout, this, &SourcePage::ShowPreview);
  counter_ = new PointCounter(this);
  connect(counter_, &PointCounter::counted, count_, &QLabel::setText);
  rows_ = new LatestWork(this);
  connect(form_, &FieldForm::edited, this, &SourcePage::TakeField);
  connect(cuts_, &CutsView::cutsChanged, this, &SourcePage::TakeCuts);
  connect(by_place_, &QPushButton::clicked, this, [this](bool by_place) {
    TakeCuts(by_place ? CutsInGaps(preview_.lines) : std::vector<std::int32_t>());
  });
  connect(table_, &PreviewTable::columnChosen, this, &SourcePage::UseColumn);
}

QWidget* SourcePage::BuildButtons() {
  auto* bar = new QWidget(this);
  auto* line = new QHBoxLayout(bar);
  line->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text, const char* name, void (SourcePage::*run)()) {
    auto* button = new QPushButton(text, bar);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, run);
    line->addWidget(button);
    return button;
  };
  guess_ = add(tr("&Guess"), "GuessSource", &SourcePage::Guess);
  guess_->setToolTip(tr("Find out anew how the file is written"));
  by_place_ = new QPushButton(tr("C&ut by Place"), bar);
  by_place_->setObjectName("CutByPlace");
  by_place_->setCheckable(true);
  by_place_->setToolTip(tr("Columns begin at characters that are set by hand, not at separators"));
  line->addWidget(by_place_);
  line->addStretch(1);
  apply_ = add(tr("&Apply"), "ApplySource", &SourcePage::Apply);
  apply_->setToolTip(tr("Read the data so, as one step that can be undone"));
  revert_ = add(tr("&Revert"), "RevertSource", &SourcePage::Revert);
  revert_->setToolTip(tr("Take back what was changed here"));
  return bar;
}

void SourcePage::Refresh() {
  const TSeries* const series = series_.Get();
  if (series == nullptr) return;
  if (begun_for_ == series && draft_.BegunWith() == series->Source()) return;
  if (std::exchange(begun_for_, series) != series) Tell({});
  further_.clear();
  draft_.Begin(*series);
  ShowPlace();
  DraftChanged();
  ShowPreview();
}

void SourcePage::Revert() {
  begun_for_ = nullptr;
  Tell({});
  for (std::size_t row = 0; row < form_->Size(); ++row) {
    if (form_->Field(row) != nullptr) form_->Field(row)->Forget();
  }
  Refresh();
}

void SourcePage::ShowPlace() {
  const TDSInfo& info = draft_.Source();
  const SourceKind* const kind = FindSourceKind(AllSourceKinds(), info.DataSource);
  const PlaceEditRow* const row = PlaceEditOf(info.DataSource);
  form_->ShowOnly([&](std::size_t field) {
    const std::string_view key = draft_.Rows()[field].key;
    if (row != nullptr && IsOfPlace(key)) return false;
    return kind == nullptr || kind->settings.empty() ||
           std::ranges::find(kind->settings, key, &SourceSetting::key) != kind->settings.end();
  });
  delete std::exchange(place_edit_, nullptr);
  if (row == nullptr) return;
  place_edit_ = row->make(this);
  place_->addWidget(place_edit_);
  TabInReadingOrder(*this);
  UnmarkTaken(*place_edit_, *this, "opt");  // of the pages' tabs
  connect(place_edit_, &PlaceEdit::edited, this, &SourcePage::TakePlace);
  try {
    place_edit_->Show(info);
  } catch (const Error& error) {
    Tell(ToQt(error.what()));  // what a damaged file says of its place can still be typed anew
  }
}

void SourcePage::TakePlace() {
  const std::optional<QString> trouble = place_edit_->Take(draft_.Source());
  Tell(trouble.value_or(QString()));
  DraftChanged();
  if (!trouble) soon_->start(kPause);
}

void SourcePage::TakeField(std::size_t row) {
  const std::optional<FieldValue>& value = form_->Field(row)->Typed();
  if (!value) return;
  draft_.Set(row, *value);
  DraftChanged();
  soon_->start(kPause);
}

void SourcePage::UseColumn(const QString& name, ColumnUse use) {
  if (use == ColumnUse::AnotherY) {
    const std::string column = name.toStdString();
    if (std::erase(further_, column) == 0) further_.push_back(column);
    DraftChanged();
    return ShowPreview();
  }
  TDSInfo& info = draft_.Source();
  std::string TDSInfo::*const columns[] = {&TDSInfo::XDataColumn, &TDSInfo::YDataColumn,
                                           &TDSInfo::YErrorColumn, &TDSInfo::XErrorColumn};
  info.*columns[static_cast<std::size_t>(use)] = name.toStdString();
  DraftChanged();
  ShowPreview();
}

void SourcePage::DraftChanged() {
  const bool source = HasSource(draft_.Source());
  form_->setEnabled(source);
  guess_->setEnabled(source && CanGuess(draft_.Source().DataSource));
  const bool changed = draft_.IsChanged() || !further_.empty();
  apply_->setEnabled(source && changed);
  revert_->setEnabled(source && changed);
  file_->setVisible(place_edit_ == nullptr || !source);
  file_->setText(source ? PathText(SourcePlace(draft_.Source())) : WithoutSourceText());
  scroll_->setVisible(source);
  ShowFields();
}

QString SourcePage::WithoutSourceText() const {
  const std::string& recipe = draft_.Source().Recipe;
  return recipe.empty() ? tr("These points were typed or pasted: they have no source.")
                        : tr("Computed as %1. Recompute, in the menu Analysis, does it anew.")
                              .arg(ToQt(recipe));
}

void SourcePage::ShowFields() {
  FieldSurroundings around;
  around.columns = preview_.columns;
  for (std::size_t row = 0; row < form_->Size(); ++row) {
    FieldWidget* const field = form_->Field(row);
    if (field == nullptr) continue;
    field->Show(draft_.Get(row), around);
    field->SetIdle(ToQt(draft_.IdleReason(row)));
  }
}

void SourcePage::OpenHead() {
  const std::string place = SourcePlace(draft_.Source()).string();
  if (head_ && head_place_ == place) return;
  head_.reset();
  NoProgress silent;
  head_ = OpenHeadOfText(place, silent);
  head_place_ = place;
}

void SourcePage::ShowPreview() {
  rows_->GiveUp();
  const TDSInfo& info = draft_.Source();
  if (HasSource(info) && info.DataSource != DataSourceKind::Text) return AskForRows();
  SourcePreview preview;
  if (HasSource(info)) {
    try {
      OpenHead();
      preview = PreviewText(head_, info, LinesToShow(info), kColumns);
    } catch (const Error& error) {
      return ShowTrouble(ToQt(error.what()));
    }
  }
  ShowColumns(std::move(preview));
}

/// Counting would only say it again.
void SourcePage::ShowTrouble(const QString& trouble) {
  Tell(trouble);
  ShowColumns({});
  StopCounting();
}

void SourcePage::StopCounting() {
  counter_->GiveUp();
  count_->setText({});
}

void SourcePage::AskForRows() {
  rows_->Begin([this, info = draft_.Source()](Progress& progress) -> LatestWork::Answer {
    return [this, rows = FirstRows(info, progress)] {
      if (const auto* const trouble = std::get_if<QString>(&rows)) return ShowTrouble(*trouble);
      ShowColumns(std::get<SourcePreview>(rows));
    };
  });
}

void SourcePage::ShowColumns(SourcePreview preview) {
  preview_ = std::move(preview);
  table_->ShowPreview(preview_, UsedColumns());
  table_->setVisible(!preview_.columns.empty());
  ShowCuts();
  ShowFields();
  StopCounting();
  if (JudgeExpressions()) CountPoints();
}

void SourcePage::ShowCuts() {
  const TDSInfo& info = draft_.Source();
  const bool is_text = HasSource(info) && info.DataSource == DataSourceKind::Text;
  std::vector<std::int32_t> cuts;
  if (is_text) cuts = ParseColumnCuts(info.ColumnCuts).value_or(std::vector<std::int32_t>());
  by_place_->setVisible(is_text);
  by_place_->setChecked(!cuts.empty());
  cuts_->setVisible(!cuts.empty());
  cuts_->ShowLines(preview_.lines, std::move(cuts));
}

void SourcePage::TakeCuts(const std::vector<std::int32_t>& cuts) {
  TDSInfo& info = draft_.Source();
  info.ColumnCuts = ColumnCutsText(cuts);
  info.DivideTextByWidth = false;
  DraftChanged();
  ShowPreview();
}

bool SourcePage::JudgeExpressions() {
  if (preview_.columns.empty()) return true;  // nothing is known of names
  bool good = true;
  for (std::size_t row = 0; row < form_->Size(); ++row) {
    if (form_->Field(row) == nullptr ||
        draft_.Rows()[row].look.control.kind != ControlKind::Expression) {
      continue;
    }
    const auto trouble =
        TroubleOfColumnExpression(std::get<std::string>(draft_.Get(row)), preview_.columns);
    form_->Field(row)->ShowRemark(trouble ? FieldRemark::Refused(trouble->why, trouble->place)
                                          : FieldRemark());
    good = good && !trouble;
  }
  return good;
}

void SourcePage::CountPoints() {
  const TSeries* const series = series_.Get();
  if (series == nullptr || !HasSource(draft_.Source()) || !draft_.IsChanged()) return;
  DataState state = series->State();
  state.settings.source = draft_.Source();
  count_->setText(tr("Counting…"));
  counter_->Count(state);
}

std::vector<int> SourcePage::UsedColumns() const {
  const TDSInfo& info = draft_.Source();
  const auto place = [&](const std::string& name) {
    if (name.starts_with('#')) return QString::fromStdString(name.substr(1)).toInt();
    const auto found = std::ranges::find(preview_.columns, name);
    return found == preview_.columns.end() ? -1
                                           : static_cast<int>(found - preview_.columns.begin());
  };
  std::vector<int> used = {place(info.XDataColumn), place(info.YDataColumn),
                           place(info.YErrorColumn), place(info.XErrorColumn)};
  for (const std::string& column : further_) used.push_back(place(column));
  return used;
}

void SourcePage::Guess() {
  parts_.actions.RunAsCommand([this](CommandContext&) {
    NoProgress silent;
    const TDSInfo before = draft_.Source();
    const ImportSource guessed = LookAnew(before, silent);
    TDSInfo info = WithColumns(guessed, before);
    info.DatasourceInfo = before.DatasourceInfo;
    info.RelativeSource = before.RelativeSource;
    info.GraphFolder = before.GraphFolder;
    info.RowChoiceMode = before.RowChoiceMode;
    info.RowChoiceValue1 = before.RowChoiceValue1;
    info.RowChoiceValue2 = before.RowChoiceValue2;
    info.AllRows = before.AllRows;
    info.AutoRowHitFreq = before.AutoRowHitFreq;
    info.RowSamplingFrequency = before.RowSamplingFrequency;
    info.Run = before.Run;
    info.GroupColumn = before.GroupColumn;
    info.GroupValue = before.GroupValue;
    draft_.Source() = info;
    const std::string told = Sentence(TellImport({}, {}, NotesOf(guessed)));
    Tell(told.empty() ? tr("Nothing about this file is doubtful.") : ToQt(told));
  });
  DraftChanged();
  ShowPreview();
}

void SourcePage::Apply() {
  StopCounting();
  parts_.actions.RunAsCommand([this](CommandContext&) {
    Document& document = *series_.GetDocument();
    std::vector<NewSource> sources{{series_.Place(), draft_.Source()}};
    std::vector<std::string> stay;  // of the part of the file that this one was read from
    const std::string part = draft_.BegunWith().TablePart;
    const std::vector<TSeries*> whole = SeriesOfWhole(document.WholeGraph());
    for (std::size_t place = 0; place < whole.size(); ++place) {
      const TDSInfo& other = whole[place]->Source();
      if (place == sources.front().place || !SameTable(other, draft_.BegunWith())) continue;
      if (other.TablePart != draft_.Source().TablePart) {
        stay.push_back('"' + whole[place]->SeriesName() + '"');
        continue;
      }
      const TDSInfo alike = draft_.CutAlike(other);
      if (alike != other) sources.push_back({place, alike});
    }
    if (!document.Files().ReadBy(sources, further_)) return;
    further_.clear();
    if (!stay.empty()) return Tell(StayText(stay, part));
    Tell(sources.size() > 1
             ? tr("The text is cut alike for all %1 DataSets of the file.").arg(sources.size())
             : QString());
  });
  DraftChanged();
}

void SourcePage::Tell(const QString& text) {
  told_->setText(text);
  told_->setVisible(!text.isEmpty());
}

}  // namespace tarnwick
