#include "desk/prompts/save_dialog.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>

#include "desk/widgets/text.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

SaveProposal ProposalIn(const std::filesystem::path& folder) {
  return {folder, "run", "run_signal", {640, 480}};
}

TEST(SaveDialog, TellsWhileOneTypesWhatTheEndingMeans) {
  const testing::TemporaryFolder folder;
  SaveDialog dialog(ProposalIn(folder.Path()), nullptr);
  dialog.show();
  auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
  auto* const meaning = dialog.findChild<QLabel*>("meaning");
  ASSERT_TRUE(name && meaning);
  EXPECT_TRUE(meaning->isVisible());
  EXPECT_EQ(name->completer(), nullptr) << "its list would cover the meaning and take Return";
  EXPECT_EQ(meaning->text(), "Graph file: keeps everything") << "of the name proposed";
  struct Row {
    const char* typed;
    const char* told;
  };
  for (const Row& row :
       {Row{"a.PNG", "Picture, 640 x 480 pixels: not the whole graph"},
        Row{"a.ttp", "Template: keeps the look, not the points"},
        Row{"a.tds", "DataSet file: the current DataSet alone, not the whole graph"},
        Row{"a.dat", "Table of all points, as text with tabs: not the whole graph"},
        Row{"a.txt", "No kind of file ends in \".txt\": nothing is written"},
        Row{"a", "Graph file: keeps everything"}, Row{"", ""}}) {
    name->setText(row.typed);
    EXPECT_EQ(meaning->text(), row.told) << row.typed;
  }
}

TEST(SaveDialog, TheFilterGivesEndingAndName) {
  const testing::TemporaryFolder folder;
  struct Row {
    int filter;
    const char* text;
    const char* chosen;
  };
  for (const Row& row :
       {Row{2, "Tarnwick DataSet File (*.tds)", "run_signal.tds"},
        Row{6, "JPEG Image (*jpg)", "run.jpg"}, Row{7, "All Files (*.*)", "run.tgr"},
        Row{8, "Comma-Separated Values (*.csv)", "run.csv"}}) {
    SaveDialog dialog(ProposalIn(folder.Path()), nullptr);
    auto* const filters = dialog.findChild<QComboBox*>("fileTypeCombo");
    ASSERT_NE(filters, nullptr);
    EXPECT_EQ(filters->itemText(row.filter), row.text) << "as the user reads it";
    filters->setCurrentIndex(row.filter);
    emit filters->textActivated(filters->currentText());
    EXPECT_EQ(dialog.Chosen(), folder.Path() / row.chosen) << row.text;
  }
}

TEST(SaveDialog, WithoutACurrentDataSetThereIsNoneToWrite) {
  SaveProposal proposal = ProposalIn("/tmp");
  EXPECT_NE(SavingKeeps("a.tds", proposal), "There is no DataSet to write");
  proposal.data_set_name.clear();
  EXPECT_EQ(SavingKeeps("a.tds", proposal), "There is no DataSet to write");
}

}  // namespace
}  // namespace tarnwick
