// The window with functions in its menu, and the editor they are changed in.
#pragma once

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <cmath>
#include <fstream>
#include <functional>

#include "desktop_fixture.h"
#include "fit/model/fit_function_file.h"

namespace tarnwick {

class FitDesktopTest : public testing::DesktopTest {
 protected:
  void SetUp() override {
    WriteFunctions();
    testing::DesktopTest::SetUp();
  }

  /// The function of the menu's tests: starts near enough for every method.
  static FitSettings Decay() {
    FitSettings model;
    model.Expression = "A*exp(-k*x)+B";
    model.ProcType = FitProcType::cfp_Newton;
    const auto add = [&](const char* name, double value) {
      ParameterSettings one;
      one.Name = name;
      one.Value = value;
      one.Vary = true;
      model.parameters.push_back(one);
    };
    add("A", 300);
    add("k", 0.01);
    add("B", 20);
    return model;
  }

  void WriteFunctions() {
    SaveFitFunction(folder_.File("Decay.tfn"), Decay());
    std::ofstream(folder_.File("Broken.tfn")) << "this is no model";
  }

  /// Two decays with one rate and heights of their own.
  std::filesystem::path TwoRuns() {
    std::filesystem::path file = folder_.File("runs.csv");
    std::ofstream table(file);
    table << "t,first,second\n";
    for (int i = 0; i < 40; ++i) {
      const double decay = std::exp(-0.1 * i), off = 0.5 * std::sin(9.0 * i);
      table << i << ',' << 100 * decay + 5 + off << ',' << 40 * decay + 9 - off << '\n';
    }
    return file;
  }

  /// Peaks so far apart that no fit finds the one from the other.
  std::filesystem::path TwoPeaks() {
    std::filesystem::path file = folder_.File("peaks.csv");
    std::ofstream table(file);
    table << "t,first,second\n";
    const auto peak = [](double x) { return std::exp(-x * x); };
    for (int i = 0; i < 500; ++i) {
      const double off = 0.02 * std::sin(9.0 * i);
      table << i << ',' << 5 * peak((i - 20) / 4.0) + off << ',' << 3 * peak((i - 480) / 4.0) - off
            << '\n';
    }
    return file;
  }

  ProgramPaths Paths() override {
    ProgramPaths paths = testing::DesktopTest::Paths();
    paths.fit_functions = {folder_.File("Broken.tfn"), folder_.File("Decay.tfn")};
    paths.function_folders = {folder_.File("own/TFN")};
    return paths;
  }

  void Choose(const QString& caption) {
    for (QAction* item : Opened(Menu::CurveFitting).actions()) {
      if (item->text() == caption) return item->trigger();
    }
    FAIL() << "no entry " << caption.toStdString();
  }

  void OpenFitted(const char* method = "FitCurve1") {
    Start({Example("decay.dat")});
    Choose("&2 Decay");
    Run(method);
  }

  TSeries& Series() { return *ActiveDocument().Graph().CurrentSeries(); }
  QPushButton* Button(const QString& text) {
    for (QPushButton* button : form_->findChildren<QPushButton*>()) {
      if (button->text() == text) return button;
    }
    return nullptr;
  }
  /// Opens the editor and works in it; whoever does not accept it has cancelled.
  void InEditor(const std::function<void(QDialog&)>& work) {
    QTimer::singleShot(0, form_.get(), [&] {
      auto* dialog = form_->findChild<QDialog*>("TfrmCalc");
      ASSERT_NE(dialog, nullptr);
      work(*dialog);
      dialog->reject();
    });
    Run("editFunction1");
  }
  QTableWidget* Table(const char* name) { return form_->findChild<QTableWidget*>(name); }
};

}  // namespace tarnwick
