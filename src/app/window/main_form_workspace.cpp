// The main window as the workspace of its commands, and the menus whose entries are files and windows.
#include <QAction>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMenu>
#include <memory>
#include <system_error>

#include "app/canvas/graph_canvas.h"
#include "app/files/save_as.h"
#include "app/fit/fit_work.h"
#include "app/marks/mark_editor.h"
#include "app/window/arrange_windows.h"
#include "app/window/graph_popup.h"
#include "app/window/graph_window.h"
#include "app/window/main_form.h"
#include "app/window/window_placement.h"
#include "base/error.h"
#include "base/version.h"
#include "desk/commands/command_actions.h"
#include "desk/document/document.h"
#include "desk/widgets/numbered_caption.h"
#include "desk/widgets/text.h"
#include "graph/edit/mark_edit.h"
#include "graph/files/file_kinds.h"

namespace tarnwick {
namespace {

bool IsFunction(const std::filesystem::path& path) {
  return KindToRead(path).holds == FileHolds::FitFunction;
}

}  // namespace

void T_MainForm::NewGraph() {
  OpenGraphWindow({});
}

bool T_MainForm::OpenFile(const std::filesystem::path& path) {
  std::error_code ignored;  // what cannot be looked at is not found
  if (!std::filesystem::exists(path, ignored)) {
    parts_.prompt->Tell("File \"" + path.string() + "\" is not found!");
    return false;
  }
  if (IsFunction(path)) return UseFunction(path);
  try {
    return OpenGraphWindow(path) != nullptr;
  } catch (const Error& error) {
    TellFileError(path, error.what());
    return false;
  }
}

bool T_MainForm::LoadInto(Document& document, const std::filesystem::path& path) {
  try {
    if (!IsFunction(path)) return document.Files().LoadDataFromFile(path);
    ApplyFitFunction(document, path);
    return true;
  } catch (const Error& error) {
    TellFileError(path, error.what());
    return false;
  }
}

/// A fitting function is for the DataSet being looked at.
bool T_MainForm::UseFunction(const std::filesystem::path& path) {
  if (const TGraphWindow* active = ActiveGraphWindow()) {
    return LoadInto(active->GetDocument(), path);
  }
  parts_.prompt->Tell("\"" + path.filename().string() +
                      "\" is a fitting function: open the data to fit first.");
  return false;
}

void T_MainForm::TellFileError(const std::filesystem::path& path, const std::string& reason) {
  const bool graph = HoldsSections(KindToRead(path));
  parts_.prompt->Tell(graph ? reason + "\n\nFile " + path.string() + " has wrong format" : reason);
}

bool T_MainForm::Save(Document& document) {
  if (document.Files().GraphFileName().empty()) return SaveAs(document);
  StorePlacement(*WindowOf(document));
  try {
    document.Files().SaveGraphFile(document.Files().GraphFileName());
    return true;
  } catch (const Error& error) {
    parts_.prompt->Tell(error.what());
    return false;
  }
}

bool T_MainForm::SaveAs(Document& document) {
  StorePlacement(*WindowOf(document));
  try {
    const SaveOutcome outcome = SaveDocumentAs(document, *parts_.chooser, *parts_.prompt);
    if (!outcome.recent.empty()) recent_.Add(outcome.recent);
    return outcome.saved;
  } catch (const Error& error) {
    parts_.prompt->Tell(error.what());
    return false;
  }
}

std::vector<Document*> T_MainForm::Documents() const {
  std::vector<Document*> documents;
  for (const TGraphWindow* window : GraphWindows()) documents.push_back(&window->GetDocument());
  return documents;
}

bool T_MainForm::Close(Document& document) {
  TGraphWindow* window = WindowOf(document);
  return window && window->close();
}

void T_MainForm::SwitchMode(Document& document, MouseMode mode) {
  GraphCanvas& canvas = WindowOf(document)->Canvas();
  canvas.StartMode(canvas.Mode().Kind() == mode ? MouseMode::Rest : mode);
  canvas.setFocus();
}

MouseMode T_MainForm::ModeOf(const Document& document) const {
  return WindowOf(document)->Canvas().Mode().Kind();
}

void T_MainForm::ShowPopup(TGraphWindow& window, QPoint place) {
  if (QGuiApplication::mouseButtons() & Qt::LeftButton) return;  // something is being dragged
  QMenu menu;
  FillGraphPopup(menu, window.GetDocument(), *actions_);
  menu.exec(window.Canvas().mapToGlobal(place));
}

void T_MainForm::EditMarks(Document& document) {
  const Mark* current = CurrentMark(document.Graph());
  TxyMark editor(document, current ? current->id : -1, *parts_.prompt, this);
  editor.exec();
  const std::optional<Mark> edited = editor.EditedMark();
  if (edited) SetCurrentMark(document.Graph(), edited->id);
}

void T_MainForm::Arrange(WindowArrangement arrangement) {
  ArrangeWindows(*area_, arrangement);
}

void T_MainForm::ExitProgram() {
  close();
}

void T_MainForm::ShowAbout() {
  parts_.prompt->Ask({"Tarnwick " + std::string(kVersion) +
                          "\n\nPlots and analyses X-Y data.\n\n"
                          "Copyright 2026 the Tarnwick authors. MIT licence.",
                      {Answer::Ok},
                      Question::Kind::Information});
}

void T_MainForm::BuildRecentMenu() {
  QMenu* menu = actions_->MenuOf(Menu::File);
  QAction* separator = menu->addSeparator();
  std::vector<QAction*> items;
  for (int i = 0; i < RecentFiles::kCount; ++i) {
    QAction* item = menu->addAction(QString());
    connect(item, &QAction::triggered, this,
            [this, item] { OpenFile(ToPath(item->data().toString())); });
    items.push_back(item);
  }
  connect(menu, &QMenu::aboutToShow, this, [this, menu, separator, items] {
    separator->setVisible(!recent_.Entries().front().isEmpty());
    for (std::size_t i = 0; i < items.size(); ++i) {
      const QString& path = recent_.Entries()[i];
      items[i]->setVisible(!path.isEmpty());
      items[i]->setData(path);
      items[i]->setText(NumberedCaption(i + 1, path, menu->fontMetrics()));
      items[i]->setStatusTip(path);
    }
  });
}

void T_MainForm::BuildWindowMenu() {
  QMenu* menu = actions_->MenuOf(Menu::Window);
  auto items = std::make_shared<std::vector<std::unique_ptr<QAction>>>();
  connect(menu, &QMenu::aboutToShow, this, [this, menu, items] {
    items->clear();
    std::size_t number = 0;
    for (TGraphWindow* window : GraphWindows()) {
      if (number++ == 0) {
        items->push_back(std::make_unique<QAction>());
        items->back()->setSeparator(true);
        menu->addAction(items->back().get());
      }
      auto item = std::make_unique<QAction>(NumberedCaption(
          number, ToQt(window->GetDocument().Files().Caption()), menu->fontMetrics()));
      item->setCheckable(true);
      item->setChecked(window == ActiveGraphWindow());
      connect(item.get(), &QAction::triggered, window,
              [this, window] { area_->setActiveSubWindow(window); });
      menu->addAction(item.get());
      items->push_back(std::move(item));
    }
  });
}

}  // namespace tarnwick
