#include "desk/work/long_work.h"

namespace tarnwick {
namespace {

class Counted {
 public:
  explicit Counted(int& count) : count_(count) { ++count_; }
  ~Counted() { --count_; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

 private:
  int& count_;
};

}  // namespace

void LongWork::Run(const WorkTitle& title, const std::function<void(Progress&)>& work) {
  const Counted counted(running_);
  DoRun(title, work);
}

}  // namespace tarnwick
