// The frame of every dialog that makes a DataSet of another one: which one, options of its own, what the new one is called and
// drawn against, and the result drawn pale until OK or Cancel. Knows nothing of what is computed.
#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "app/analysis/preview_edit.h"
#include "base/cancel_point.h"
#include "desk/work/latest_work.h"
#include "results/new_series.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace tarnwick {

class Document;
class OutputChoice;
class Prompt;
class TSeries;
class TxyGraph;

/// What one of these dialogs is called.
struct ResultTexts {
  const char* object_name;
  const char* caption;
  const char* step;  ///< as it is read after "Undo"
  const char* source_caption = "Source Data Set";
};

enum class ResultStage { Preview, Final };

/// Adds a DataSet to a graph that holds the source, and answers what is told of it, an empty text for nothing. May run on another
/// thread, and throw Error, the graph then being as it was.
using Making =
    std::function<std::string(TxyGraph& graph, TSeries& source, const CancelPoint& cancel)>;

class ResultDialog : public QDialog {
  Q_OBJECT

 public:
  void done(int result) override;

 protected:
  void showEvent(QShowEvent* event) override;
  /// Begins with the current DataSet, the new one against `axis`. Document and prompt outlive the dialog.
  ResultDialog(Document& document, const ResultTexts& texts, AxisId axis, Prompt& prompt,
               QWidget* parent);

  /// Name that is offered for what is made of this DataSet.
  virtual std::string NameFor(const TxyGraph& graph, const TSeries& source) const = 0;
  /// What is to be made by what is now chosen, which it holds by value. Throws Error where that is no longer there.
  virtual Making Chosen(const NewSeries& wanted, ResultStage stage) = 0;

  /// What is still to be chosen, a sentence; OK does nothing until it is. Empty for nothing.
  virtual QString Lacking() const { return {}; }
  /// Another source is chosen, or the first one.
  virtual void Follow(const TSeries&) {}
  TSeries& Source();
  TxyGraph& Graph();
  /// The names of the chosen one and of all that may be chosen.
  QString SourceName() const;
  QStringList SourceNames() const;

  /// Below the list of DataSets, in its box.
  QVBoxLayout& SourceBox() { return *source_box_; }
  /// Between source and output.
  QFormLayout& Options() { return *options_; }
  /// To be called when the dialog is complete, and whenever the source is another one.
  void OfferName();
  /// To be called whenever an option changes.
  void Refresh();

 private:
  void ShowPreview();
  void PreviewLater(const Making& making, const std::string& told);
  bool IsLarge();
  void ClearPreview();
  void Tell(const std::string& text, bool refused);
  bool Finish();
  bool FinishLarge(const Making& making);

  Document& document_;
  Prompt& prompt_;
  ResultTexts texts_;
  PreviewEdit preview_;
  LatestWork later_;  // a preview that takes its time
  QComboBox* series_;
  QVBoxLayout* source_box_;
  QFormLayout* options_;
  OutputChoice* output_;
  QCheckBox* show_preview_;
  QLabel* told_;
  QPushButton* ok_;
};

}  // namespace tarnwick
