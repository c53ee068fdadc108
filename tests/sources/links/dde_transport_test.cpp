#include "sources/links/dde_transport.h"

#ifdef _WIN32

#include <gtest/gtest.h>
#include <windows.h>

#include <ddeml.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace tarnwick {
namespace {

using namespace std::chrono_literals;

constexpr UINT kPublish = WM_APP;
constexpr UINT kEnd = WM_APP + 1;

/// A program that publishes "lab|reactor", in a thread of its own. The item "never" is never answered.
class Server {
 public:
  Server() : thread_(&Server::Run, this) {
    while (!ready_) std::this_thread::sleep_for(1ms);
  }
  ~Server() { End(); }
  void End() {
    if (!thread_.joinable()) return;
    PostThreadMessageW(id_, kEnd, 0, 0);
    thread_.join();
  }
  void Publish() const { PostThreadMessageW(id_, kPublish, 0, 0); }

 private:
  static HDDEDATA CALLBACK Serve(UINT type, UINT, HCONV, HSZ topic, HSZ item, HDDEDATA, ULONG_PTR,
                                 ULONG_PTR) {
    const auto said = [](HSZ name) {
      wchar_t text[256] = {};
      DdeQueryStringW(instance, name, text, 256, CP_WINUNICODE);
      return std::wstring(text);
    };
    switch (type) {
      case XTYP_CONNECT:
        return reinterpret_cast<HDDEDATA>(static_cast<INT_PTR>(said(topic) == L"reactor"));
      case XTYP_ADVSTART:
        return reinterpret_cast<HDDEDATA>(static_cast<INT_PTR>(said(item) == L"temperature"));
      case XTYP_REQUEST:
      case XTYP_ADVREQ: {
        if (said(item) == L"never") std::this_thread::sleep_for(1500ms);
        if (said(item) != L"temperature") return nullptr;
        std::string text = std::to_string(count++) + ".5\r\n";
        return DdeCreateDataHandle(instance, reinterpret_cast<BYTE*>(text.data()),
                                   static_cast<DWORD>(text.size() + 1), 0, item, CF_TEXT, 0);
      }
      default:
        return nullptr;
    }
  }

  void Run() {
    id_ = GetCurrentThreadId();
    instance = 0;
    count = 296;
    DdeInitializeW(&instance, &Serve, APPCLASS_STANDARD, 0);
    const auto name = [](const wchar_t* text) {
      return DdeCreateStringHandleW(instance, text, CP_WINUNICODE);
    };
    DdeNameService(instance, name(L"lab"), nullptr, DNS_REGISTER);
    MSG message;
    PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);  // makes the queue
    ready_ = true;
    while (GetMessageW(&message, nullptr, 0, 0) > 0 && message.message != kEnd) {
      if (message.message == kPublish)
        DdePostAdvise(instance, name(L"reactor"), name(L"temperature"));
      DispatchMessageW(&message);
    }
    DdeUninitialize(instance);
  }

  static thread_local DWORD instance;
  static thread_local int count;
  std::atomic<bool> ready_ = false;
  std::atomic<DWORD> id_ = 0;
  std::thread thread_;
};
thread_local DWORD Server::instance = 0;
thread_local int Server::count = 0;

/// Dispatches messages until so many texts are there.
void WaitFor(const std::vector<std::string>& texts, std::size_t count) {
  for (int i = 0; i < 200 && texts.size() < count; ++i) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
    std::this_thread::sleep_for(5ms);
  }
}

TEST(DdeTransport, AnswersAndTellsWhyNot) {
  const Server server;
  DdeTransport link(500ms);
  EXPECT_FALSE(link.SetLink(std::string(256, 'a'), "reactor")) << "a name that is too long";
  for (const auto& [service, topic, met] : {std::tuple{"lab", "nobody", false},
                                            {"nobody", "reactor", false},
                                            {"lab", "reactor", true}}) {
    link.Close();
    ASSERT_TRUE(link.SetLink(service, topic));
    EXPECT_EQ(link.Open(), met) << service << topic;
    EXPECT_EQ(link.Trouble(), met ? "" : "no program answers to these names");
  }
  struct Asked {
    const char* item;
    const char* text;
    const char* trouble;
  };
  for (const Asked& asked :
       {Asked{"pressure", "", "the program has no such item"}, Asked{"temperature", "296.5", ""}}) {
    EXPECT_EQ(link.RequestData(asked.item), asked.text);
    EXPECT_EQ(link.Trouble(), asked.trouble);
  }
  EXPECT_EQ(link.RequestData("never"), "");
  EXPECT_NE(link.Trouble(), "");
}

TEST(DdeTransport, TellsEveryChangeUntilTheProgramEnds) {
  Server server;
  DdeTransport link(500ms);
  ASSERT_TRUE(link.SetLink("lab", "reactor") && link.Open());
  std::vector<std::string> heard;
  link.Bind("pressure", [&](const std::string& text) { heard.push_back(text); });
  EXPECT_EQ(link.Trouble(), "the program has no such item");
  link.Bind("temperature", [&](const std::string& text) { heard.push_back(text); });
  EXPECT_EQ(link.Trouble(), "");
  EXPECT_EQ(link.RequestData("never"), "") << "what is not answered is not in the way";
  for (std::size_t i = 1; i <= 3; ++i) {
    server.Publish();
    WaitFor(heard, i);
  }
  EXPECT_EQ(heard, (std::vector<std::string>{"296.5", "297.5", "298.5"}));
  server.End();
  WaitFor(heard, 4);
  EXPECT_EQ(link.RequestData("temperature"), "");
  EXPECT_NE(link.Trouble(), "");
}

}  // namespace
}  // namespace tarnwick

#endif
