#include "desktop_fixture.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>
#include <QWheelEvent>
#include <cstdlib>

#include "app/window/command_line.h"
#include "app/window/features.h"
#include "desk/commands/command_actions.h"
#include "support/project_paths.h"

namespace tarnwick::testing {

std::vector<std::filesystem::path> ScriptedChooser::FilesToOpen(const std::filesystem::path&) {
  std::vector<std::filesystem::path> files(to_open.begin(), to_open.end());
  to_open.clear();
  return files;
}

std::optional<std::filesystem::path> ScriptedChooser::FileToSave(const SaveProposal& proposal) {
  proposed = proposal;
  if (to_save.empty()) return std::nullopt;
  const std::filesystem::path file = to_save.front();
  to_save.pop_front();
  return file;
}

void DesktopTest::SetUp() {
  ShellParts parts;
  auto prompt = std::make_unique<CollectingPrompt>();
  auto chooser = std::make_unique<ScriptedChooser>();
  prompt_ = prompt.get();
  chooser_ = chooser.get();
  parts.prompt = std::move(prompt);
  parts.chooser = std::move(chooser);
  parts.settings = std::make_unique<QSettings>(
      QString::fromStdString(folder_.File("settings.ini").string()), QSettings::IniFormat);
  parts.paths = Paths();
  parts.features = UsedFeatures();
  form_ = std::make_unique<T_MainForm>(std::move(parts));
}

ProgramPaths DesktopTest::Paths() {
  ProgramPaths paths;
  paths.examples = {Example("decay.dat")};
  return paths;
}

void DesktopTest::TearDown() {
  for (const std::string& text : TakeTold()) ADD_FAILURE() << "unexpected text: " << text;
  for (TGraphWindow* window : form_->GraphWindows())
    window->GetDocument().History().SetChanged(false);
  form_.reset();
}

std::vector<Feature> DesktopTest::UsedFeatures() {
  return Features();
}

std::filesystem::path DesktopTest::Example(const char* name) {
  return ExamplesFolder() / name;
}

void DesktopTest::Start(const std::vector<std::filesystem::path>& files) {
  std::vector<std::string> words;
  words.reserve(files.size());
  for (const auto& file : files) words.push_back(file.string());
  form_->ProcessCommandLine(JoinWords(words));
  form_->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(form_.get()));
  QCoreApplication::processEvents();
}

void DesktopTest::Run(const char* command) {
  QAction* action = form_->Actions().ActionOf(command);
  ASSERT_NE(action, nullptr) << command;
  action->trigger();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QMenu& DesktopTest::Opened(Menu menu) {
  QMenu* opened = form_->Actions().MenuOf(menu);
  emit opened->aboutToShow();
  return *opened;
}

Document& DesktopTest::ActiveDocument() {
  return form_->ActiveGraphWindow()->GetDocument();
}

GraphCanvas& DesktopTest::ActiveCanvas() {
  return form_->ActiveGraphWindow()->Canvas();
}

QString DesktopTest::StatusText(const char* label) {
  return form_->findChild<QLabel*>(label)->text();
}

void DesktopTest::TakeFocus(QWidget& control) {
  form_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
  control.setFocus();
  ASSERT_EQ(QApplication::focusWidget(), &control);
}

void DesktopTest::MoveMouse(QPointF place, Qt::MouseButtons held) {
  // Not QTest::mouseMove, which moves the pointer of the screen and so depends on what else is on it.
  QMouseEvent move(QEvent::MouseMove, place, ActiveCanvas().mapToGlobal(place), Qt::NoButton, held,
                   Qt::NoModifier);
  QCoreApplication::sendEvent(&ActiveCanvas(), &move);
}

void DesktopTest::Wheel(QPointF place, int notches, Qt::KeyboardModifiers modifiers) {
  QWheelEvent event(place, ActiveCanvas().mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton,
                    modifiers, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&ActiveCanvas(), &event);
}

void DesktopTest::Drop(QWidget& target, const std::vector<std::filesystem::path>& files) {
  QMimeData data;
  QList<QUrl> urls;
  for (const auto& file : files)
    urls.append(QUrl::fromLocalFile(QString::fromStdString(file.string())));
  data.setUrls(urls);
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&target, &enter);
  ASSERT_TRUE(enter.isAccepted());
  QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&target, &drop);
}

int PixelsOf(const QImage& picture, const QColor& color) {
  constexpr int kTolerance = 24;
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const QColor pixel = picture.pixelColor(x, y);
      count += std::abs(pixel.red() - color.red()) < kTolerance &&
               std::abs(pixel.green() - color.green()) < kTolerance &&
               std::abs(pixel.blue() - color.blue()) < kTolerance;
    }
  }
  return count;
}

}  // namespace tarnwick::testing
