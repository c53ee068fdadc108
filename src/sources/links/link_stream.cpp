#include "sources/links/link_stream.h"

#include <QEventLoop>
#include <QSocketNotifier>
#include <memory>
#include <string>

#include "base/error.h"
#include "data/series/data_series.h"
#include "sources/links/link_hearer.h"
#include "sources/links/link_rows.h"
#include "sources/streams/described_rows.h"
#include "sources/streams/threaded_stream.h"

namespace tarnwick {
namespace {

class HotLinks final : public RowProducer {
 public:
  explicit HotLinks(const TDSInfo& info) : info_(info) { const LinkRows refused_if_wrong(info); }

  void Run(RowQueue& queue) override {
    QEventLoop loop;
    QSocketNotifier wanted(queue.WakeHandle(), QSocketNotifier::Read);
    QObject::connect(&wanted, &QSocketNotifier::activated, [&] {
      queue.Sleep(0);
      if (queue.Stopped()) loop.quit();
    });
    std::string ended;
    LinkHearer hearer(info_, queue, [&](const std::string& why) {
      ended = why;
      loop.quit();
    });
    hearer.Begin();
    if (ended.empty() && !queue.Stopped()) loop.exec();
    if (!ended.empty()) throw Error(ended);
  }

 private:
  TDSInfo info_;
};

}  // namespace

StreamKind LinkStreamKind() {
  return {.kind = DataSourceKind::Dde,
          .goes_on = [](const TDSInfo& info) { return info.Follow; },
          .shares = &ReadAlike,
          .open = [](const TDataSeries& series) -> std::unique_ptr<RowStream> {
            return std::make_unique<ThreadedStream>(std::make_unique<HotLinks>(series.Source()));
          },
          .x_is_moment = [](const TDSInfo& info) { return info.XDataColumn == kJoinedTimeName; },
          .piece = "value",
          .columns = &DescribedColumns};
}

}  // namespace tarnwick
