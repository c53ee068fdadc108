#include "app/print/print_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGraphicsView>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <optional>

#include "app/print/page_dialog.h"
#include "app/print/print_graph.h"
#include "base/error.h"
#include "base/prompt.h"
#include "desk/document/document.h"
#include "desk/prompts/file_chooser.h"
#include "graph/pictures/print_layout.h"

namespace tarnwick {
namespace {

constexpr int kPanelWidth = 250;

/// "A4, 210 x 297 mm"
QString PaperText(const QPageLayout& page) {
  const QSizeF size = page.pageSize().size(QPageSize::Millimeter);
  const QString name = page.pageSize().name().section(" (", 0, 0);
  return PrintDialog::tr("%1, %2 × %3 mm")
      .arg(name)
      .arg(qRound(size.width()))
      .arg(qRound(size.height()));
}

}  // namespace

PrintDialog::PrintDialog(Document& document, QPrinter& printer, FileChooser& chooser,
                         Prompt& prompt, QWidget* parent)
    : QDialog(parent),
      document_(document),
      printer_(printer),
      chooser_(chooser),
      prompt_(prompt),
      preview_(new QPrintPreviewWidget(&printer, this)) {
  edit_.emplace(document, "Print Settings");
  setObjectName("Print");
  setWindowTitle(tr("Print"));
  resize(880, 640);
  preview_->setAccessibleName(tr("Preview of the printed page"));
  for (QGraphicsView* const pages : preview_->findChildren<QGraphicsView*>())
    pages->setAccessibleName(tr("Preview"));
  connect(preview_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* page) {
    QPainter painter(page);
    PaintOnPaper(painter, document_.WholeGraph(), SheetOf(*page));
  });
  auto* panel = new QVBoxLayout;
  panel->addWidget(MakePaper());
  panel->addWidget(MakePlacement());
  panel->addWidget(MakeOptions());
  panel->addStretch(1);
  auto* middle = new QHBoxLayout;
  middle->addWidget(preview_, 1);
  middle->addLayout(panel);
  auto* column = new QVBoxLayout(this);
  column->addLayout(middle, 1);
  column->addWidget(MakeButtons());
  ShowPaper();
  preview_->fitInView();
}

QWidget* PrintDialog::MakePaper() {
  auto* group = new QGroupBox(tr("Paper"), this);
  group->setMinimumWidth(kPanelWidth);
  auto* form = new QFormLayout(group);
  target_ = new QComboBox(group);
  target_->setObjectName("Target");
  target_->addItems(QPrinterInfo::availablePrinterNames());
  const int used = target_->findText(QPrinterInfo::defaultPrinterName());
  target_->addItem(tr("PDF file"));
  target_->setToolTip(target_->count() > 1
                          ? tr("Where the graph is printed")
                          : tr("No printer is installed: the graph is printed into a PDF file"));
  target_->setCurrentIndex(std::max(used, 0));
  form->addRow(tr("P&rint to"), target_);
  paper_ = new QLabel(group);
  form->addRow(tr("Size"), paper_);
  orientation_ = new QComboBox(group);
  orientation_->setObjectName("Orientation");
  orientation_->addItems({tr("Portrait"), tr("Landscape")});
  form->addRow(tr("&Orientation"), orientation_);
  connect(orientation_, &QComboBox::activated, this, [this](int chosen) {
    printer_.setPageOrientation(chosen == 0 ? QPageLayout::Portrait : QPageLayout::Landscape);
    preview_->updatePreview();
  });
  auto* set_up = new QPushButton(tr("Page Set&up..."), group);
  set_up->setObjectName("PageSetup");
  set_up->setAutoDefault(false);
  connect(set_up, &QPushButton::clicked, this, &PrintDialog::SetUpPage);
  form->addRow(QString(), set_up);
  return group;
}

QSpinBox* PrintDialog::AddPercent(QFormLayout& form, const QString& label, const char* name,
                                  int low, int high) {
  auto* field = new QSpinBox;
  field->setObjectName(name);
  field->setRange(low, high);
  field->setSuffix(tr(" %"));
  form.addRow(label, field);
  return field;
}

QWidget* PrintDialog::MakePlacement() {
  auto* group = new QGroupBox(tr("Place on the Paper"), this);
  auto* form = new QFormLayout(group);
  left_ = AddPercent(*form, tr("From the &left"), "Left", 0, kLargestPrintOffset);
  top_ = AddPercent(*form, tr("From the &top"), "Top", 0, kLargestPrintOffset);
  scale_ = AddPercent(*form, tr("&Size"), "Scale", kSmallestPrintScale, kLargestPrintScale);
  left_->setToolTip(tr("Space before the graph, in percent of the paper's width"));
  top_->setToolTip(tr("Space above the graph, in percent of the paper's height"));
  scale_->setToolTip(tr("The most of the paper's width and height that the graph may take"));
  const Dimensions& dimensions = document_.WholeGraph().GetDimensions();
  left_->setValue(dimensions.print_x_offset_pct);
  top_->setValue(dimensions.print_y_offset_pct);
  scale_->setValue(dimensions.print_scale_pct);
  for (const QSpinBox* field : {left_, top_, scale_}) {
    connect(field, &QSpinBox::valueChanged, this, &PrintDialog::Apply);
  }
  return group;
}

QWidget* PrintDialog::MakeOptions() {
  auto* group = new QGroupBox(tr("Look"), this);
  auto* column = new QVBoxLayout(group);
  background_ = new QCheckBox(tr("With &background"), group);
  background_->setObjectName("Background");
  background_->setToolTip(tr("Print the colours behind the graph, too"));
  line_styles_ = new QCheckBox(tr("Tell lines apart by st&yle"), group);
  line_styles_->setObjectName("LineStyles");
  line_styles_->setToolTip(tr("Dash and dot the lines of DataSets, for printers without colours"));
  const Appearance& appearance = document_.WholeGraph().GetAppearance();
  background_->setChecked(appearance.print_with_background);
  line_styles_->setChecked(appearance.print_style_for_lines);
  for (QCheckBox* box : {background_, line_styles_}) {
    column->addWidget(box);
    connect(box, &QCheckBox::toggled, this, &PrintDialog::Apply);
  }
  return group;
}

QWidget* PrintDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close | QDialogButtonBox::Cancel, this);
  auto* print = buttons->addButton(tr("&Print"), QDialogButtonBox::ActionRole);
  print->setObjectName("PrintNow");
  print->setDefault(true);
  auto* keep = buttons->button(QDialogButtonBox::Close);
  keep->setObjectName("Keep");
  keep->setText(tr("Keep Settings"));
  keep->setAutoDefault(false);
  keep->setToolTip(tr("Keep these settings with the graph and do not print"));
  buttons->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
  buttons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Leave the graph as it was"));
  connect(print, &QPushButton::clicked, this, [this] {
    if (Print()) accept();
  });
  connect(keep, &QPushButton::clicked, this, &QDialog::accept);
  connect(buttons->button(QDialogButtonBox::Cancel), &QPushButton::clicked, this, &QDialog::reject);
  return buttons;
}

void PrintDialog::ShowPaper() {
  const QPageLayout page = printer_.pageLayout();
  paper_->setText(PaperText(page));
  orientation_->setCurrentIndex(page.orientation() == QPageLayout::Portrait ? 0 : 1);
}

void PrintDialog::SetUpPage() {
  PageDialog dialog(printer_.pageLayout(), this);
  if (dialog.exec() != QDialog::Accepted) return;
  SetPaper(printer_, dialog.Page());
  ShowPaper();
  preview_->updatePreview();
}

void PrintDialog::Apply() {
  TxyGraph& graph = document_.WholeGraph();
  Dimensions dimensions = graph.GetDimensions();
  dimensions.print_x_offset_pct = left_->value();
  dimensions.print_y_offset_pct = top_->value();
  dimensions.print_scale_pct = scale_->value();
  graph.SetDimensions(dimensions);
  Appearance appearance = graph.GetAppearance();
  appearance.print_with_background = background_->isChecked();
  appearance.print_style_for_lines = line_styles_->isChecked();
  graph.SetAppearance(appearance);
  preview_->updatePreview();
}

bool PrintDialog::Print() {
  const TxyGraph& graph = document_.WholeGraph();
  try {
    const bool into_file = target_->currentIndex() == target_->count() - 1;
    if (!into_file) {
      PrintOn(printer_, target_->currentText(), graph);
      return true;
    }
    SaveProposal proposal;
    proposal.folder = document_.Files().DataFolder();
    proposal.graph_name = document_.Name();
    const auto file = chooser_.FileToPrint(proposal);
    if (file) PrintIntoFile(*file, printer_.pageLayout(), graph);
    return file.has_value();
  } catch (const Error& error) {
    prompt_.Tell(error.what());
    return false;
  }
}

void PrintDialog::done(int result) {
  if (edit_ && result == QDialog::Accepted) edit_->Finish();
  edit_.reset();
  QDialog::done(result);
}

}  // namespace tarnwick
