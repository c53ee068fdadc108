// A laboratory that is not there: a noisy sine and a drifting temperature, published as live links until it is stopped.
//
//   link-simulator [RATE]        values a second of each item (20)
//
// Links: sim|lab!time (seconds), sim|lab!sine, sim|lab!temperature (kelvin).
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

#include "link_publisher.h"

namespace {

class Laboratory {
 public:
  double Sine(double seconds) {
    constexpr double kTwoPi = 6.283185307179586, kPeriod = 10;
    return std::sin(kTwoPi * seconds / kPeriod) + 0.05 * noise_(random_);
  }
  /// A walk that is drawn back to 296 K.
  double Temperature() {
    temperature_ += 0.02 * noise_(random_) + 0.0005 * (296 - temperature_);
    return temperature_;
  }

 private:
  std::mt19937 random_{20};
  std::normal_distribution<double> noise_;
  double temperature_ = 296;
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  const double rate = arguments.size() > 1 ? arguments[1].toDouble() : 20;
  if (!(rate > 0 && rate <= 1e6)) {
    std::fputs("usage: link-simulator [RATE]    values a second of each item, up to 1e6\n", stderr);
    return 2;
  }
  tarnwick_links::LinkPublisher publisher("sim", "lab");
  if (!publisher.IsPublishing()) {
    std::fprintf(stderr, "link-simulator: %s\n", qPrintable(publisher.Why()));
    return 1;
  }
  Laboratory laboratory;
  QElapsedTimer clock;
  clock.start();
  qint64 published = 0;
  const auto publish_due = [&] {
    const auto due = static_cast<qint64>(rate * static_cast<double>(clock.elapsed()) / 1000);
    for (; published <= due; ++published) {
      const double seconds = static_cast<double>(published) / rate;
      publisher.Publish("time", seconds);
      publisher.Publish("sine", laboratory.Sine(seconds));
      publisher.Publish("temperature", laboratory.Temperature());
    }
  };
  publish_due();
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, publish_due);
  timer.start(std::clamp(static_cast<int>(1000 / rate), 1, 1000));
  return QCoreApplication::exec();
}
