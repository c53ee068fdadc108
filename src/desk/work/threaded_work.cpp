#include "desk/work/threaded_work.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <thread>

#include "desk/widgets/text.h"
#include "desk/work/mailbox.h"
#include "desk/work/shared_progress.h"

namespace tarnwick {
namespace {

constexpr int kRefreshMs = 50;
constexpr int kSteps = 1000;

/// Brings the window's bar up to what the working thread told last.
void ShowReading(QProgressDialog& window, const QString& title,
                 const SharedProgress::Reading& now) {
  window.setLabelText(now.subject.empty() ? title : title + "\n" + ToQt(now.subject));
  if (now.total <= 0) {
    window.setRange(0, 0);
    return;
  }
  window.setRange(0, kSteps);
  const double share = static_cast<double>(now.done) / static_cast<double>(now.total);
  window.setValue(static_cast<int>(share * (kSteps - 1)));
}

/// Below the program's window, as far as the screen goes.
void PutAside(QProgressDialog& window, const QWidget& parent) {
  window.adjustSize();
  const QRect program = parent.window()->frameGeometry();
  const QRect screen = parent.screen()->availableGeometry();
  constexpr int kTitleBar = 40;  // of which nothing is known before the window shows
  const int lowest = screen.bottom() - window.height() - kTitleBar;
  window.move(program.center().x() - window.width() / 2, std::min(program.bottom() + 1, lowest));
}

/// Shows the progress window until `loop` ends.
void ShowWhile(QEventLoop& loop, QWidget* parent, const WorkTitle& title,
               SharedProgress& progress) {
  const QString text = ToQt(title.text);
  QProgressDialog window(parent);
  window.setWindowTitle(title.caption.empty() ? text : ToQt(title.caption));
  window.setWindowModality(Qt::ApplicationModal);
  window.setAutoClose(false);
  window.setAutoReset(false);
  window.setMinimumDuration(0);
  window.setMinimumWidth(360);
  if (title.cancellable == Cancellable::No) window.setCancelButton(nullptr);
  QObject::connect(&window, &QProgressDialog::canceled, &window, [&] { progress.Cancel(); });
  QTimer refresh;
  QObject::connect(&refresh, &QTimer::timeout, &window,
                   [&] { ShowReading(window, text, progress.Read()); });
  refresh.start(kRefreshMs);
  ShowReading(window, text, progress.Read());
  if (title.place == ProgressPlace::Aside && parent) PutAside(window, *parent);
  window.show();
  loop.exec();
}

}  // namespace

void ThreadedWork::DoRun(const WorkTitle& title, const std::function<void(Progress&)>& work) {
  SharedProgress progress;
  std::exception_ptr failure;
  QEventLoop loop;
  bool done = false;
  const Mailbox ends;
  std::jthread worker([&] {
    try {
      work(progress);
    } catch (...) {
      failure = std::current_exception();
    }
    ends.Address().Post([&] {
      done = true;
      loop.quit();
    });
  });

  QTimer::singleShot(kPatienceMs, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (!done) ShowWhile(loop, parent_, title, progress);
  worker.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace tarnwick
