#include "support/qt_warnings.h"

#include <QString>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <cstdio>
#include <mutex>
#include <regex>
#include <string>
#include <vector>

namespace tarnwick::testing {
namespace {

struct Expectation {
  std::string pattern;
  std::regex expression;
  bool seen = false;
};

// Qt takes a plain function as its handler, so the expectations have to be reachable without an object.
struct Expectations {
  std::mutex mutex;
  std::vector<Expectation> list;
};

Expectations& Current() {
  static Expectations expectations;
  return expectations;
}

bool IsExpected(const std::string& message) {
  Expectations& current = Current();
  const std::lock_guard lock(current.mutex);
  bool expected = false;
  for (Expectation& expectation : current.list) {
    if (std::regex_search(message, expectation.expression)) {
      expectation.seen = true;
      expected = true;
    }
  }
  return expected;
}

void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  const std::string message = text.toStdString();
  if (type == QtDebugMsg || type == QtInfoMsg) {
    std::fprintf(stderr, "%s\n", message.c_str());
    return;
  }
  if (type != QtFatalMsg && IsExpected(message)) {
    return;
  }
  // Qt itself aborts after a fatal message; the failure printed here names it.
  ADD_FAILURE() << "unexpected Qt warning [" << (context.category ? context.category : "default")
                << "]: " << message;
}

class ExpectationCheck : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo&) override {
    const std::lock_guard lock(Current().mutex);
    Current().list.clear();
  }

  void OnTestEnd(const ::testing::TestInfo&) override {
    std::vector<Expectation> list;
    {
      const std::lock_guard lock(Current().mutex);
      list.swap(Current().list);
    }
    for (const Expectation& expectation : list) {
      EXPECT_TRUE(expectation.seen) << "no Qt warning matched: " << expectation.pattern;
    }
  }
};

}  // namespace

void WatchQtWarnings() {
  // End events go through the listeners in reverse order: the last one is heard while a failure still counts.
  ::testing::UnitTest::GetInstance()->listeners().Append(new ExpectationCheck);
  qInstallMessageHandler(HandleMessage);
}

void ExpectQtWarning(std::string_view pattern) {
  Expectation expectation;
  expectation.pattern = pattern;
  expectation.expression = std::regex(expectation.pattern);
  const std::lock_guard lock(Current().mutex);
  Current().list.push_back(std::move(expectation));
}

}  // namespace tarnwick::testing
