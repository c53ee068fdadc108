// The DataSet that the data editor's pages are about. Knows documents; no widget.
#pragma once

#include <QPointer>
#include <cstddef>

#include "desk/document/document.h"

namespace tarnwick {

/// The current DataSet of the graph worked on, found anew at each use: graphs come and go.
class EditedSeries {
 public:
  void Follow(Document* document) { document_ = document; }
  Document* GetDocument() const { return document_; }
  /// Null without a document or a DataSet.
  TSeries* Get() const { return document_ ? document_->Graph().CurrentSeries() : nullptr; }
  /// Its place in SeriesOfWhole of the whole graph; there must be one.
  std::size_t Place() const;

 private:
  QPointer<Document> document_;
};

}  // namespace tarnwick
