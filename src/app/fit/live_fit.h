// A fit that follows data which come by themselves: once a second at most, the models whose result is shown are fitted to what
// has come, on a thread beside. Knows the document; knows no stream and no widget.
#pragma once

#include <QObject>
#include <QTimer>
#include <cstddef>

namespace tarnwick {

class Document;
class LatestWork;

/// Lives as a child of the document as long as fits shall follow.
class LiveFit final : public QObject {
 public:
  explicit LiveFit(Document& document);

  /// That of the document; null while fits do not follow.
  static LiveFit* Of(Document& document);

 private:
  void Fit();

  Document& document_;
  LatestWork* fitting_;
  QTimer next_;
  std::size_t last_ = 0;  // place of the DataSet fitted last
};

}  // namespace tarnwick
