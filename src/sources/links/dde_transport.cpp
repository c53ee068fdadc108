#include "sources/links/dde_transport.h"

#ifdef _WIN32

#include <windows.h>

#include <ddeml.h>

#include <string_view>
#include <utility>

#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostOfName = 255;  // the platform's own limit
constexpr DWORD kNotAsked =
    CBF_SKIP_CONNECT_CONFIRMS | CBF_SKIP_REGISTRATIONS | CBF_SKIP_UNREGISTRATIONS;

std::wstring Wide(std::string_view text, UINT encoding) {
  const int bytes = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(encoding, 0, text.data(), bytes, nullptr, 0)),
      L'\0');
  MultiByteToWideChar(encoding, 0, text.data(), bytes, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Utf8(const std::wstring& wide) {
  const int letters = static_cast<int>(wide.size());
  std::string text(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), letters,
                                                                nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide.data(), letters, text.data(), static_cast<int>(text.size()),
                      nullptr, nullptr);
  return text;
}

/// Cells of sheets bring the end of their line with them.
std::string FirstLine(HDDEDATA data) {
  DWORD size = 0;
  const BYTE* const bytes = DdeAccessData(data, &size);
  if (bytes == nullptr) return {};
  std::string_view text(reinterpret_cast<const char*>(bytes), size);
  text = text.substr(0, text.find_first_of(std::string_view("\0\r\n", 3)));
  std::string line = Utf8(Wide(text.substr(0, kMostOfLinkText), CP_ACP));
  DdeUnaccessData(data);
  return line;
}

std::string ClauseFor(UINT error, std::chrono::milliseconds patience) {
  switch (error) {
    case DMLERR_DATAACKTIMEOUT:
    case DMLERR_ADVACKTIMEOUT:
      return "none came within " + ShortestText(static_cast<double>(patience.count()) / 1000) +
             " s";
    case DMLERR_NO_CONV_ESTABLISHED:
      return "no program answers to these names";
    case DMLERR_NOTPROCESSED:
      return "the program has no such item";
    case DMLERR_BUSY:
      return "the program is busy";
    case DMLERR_SERVER_DIED:
      return "the program has ended";
    default:
      return "DDE tells the error " + std::to_string(error);
  }
}

/// A name as DDE knows it, for as long as it is needed.
class Name {
 public:
  Name(DWORD instance, const std::string& text)
      : instance_(instance),
        handle_(DdeCreateStringHandleW(instance, Wide(text, CP_UTF8).c_str(), CP_WINUNICODE)) {}
  ~Name() {
    if (handle_ != nullptr) DdeFreeStringHandle(instance_, handle_);
  }
  Name(const Name&) = delete;
  Name& operator=(const Name&) = delete;
  HSZ Get() const { return handle_; }

 private:
  DWORD instance_;
  HSZ handle_;
};

bool IsInput(UINT message) {
  return (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
         (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
         (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
}

/// Input could close the window, or change the graph, that waits for an answer: while one of these lives, the loop in which DDE
/// waits passes none on.
class InputKeptOut {
 public:
  InputKeptOut() : hook_(SetWindowsHookExW(WH_MSGFILTER, &Filter, nullptr, GetCurrentThreadId())) {}
  ~InputKeptOut() {
    if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
  }
  InputKeptOut(const InputKeptOut&) = delete;
  InputKeptOut& operator=(const InputKeptOut&) = delete;

 private:
  static LRESULT CALLBACK Filter(int code, WPARAM unused, LPARAM message) {
    if (code == MSGF_DDEMGR && IsInput(reinterpret_cast<const MSG*>(message)->message)) return 1;
    return CallNextHookEx(nullptr, code, unused, message);
  }

  HHOOK hook_;
};

}  // namespace

/// Part of the thread that made it.
class DdeTransport::Conversation {
 public:
  explicit Conversation(std::chrono::milliseconds patience) : patience_(patience) {
    if (DdeInitializeW(&instance_, &Hear, APPCLASS_STANDARD | APPCMD_CLIENTONLY | kNotAsked, 0) !=
        DMLERR_NO_ERROR) {
      instance_ = 0;
    }
  }
  ~Conversation() {
    Close();
    if (instance_ != 0) DdeUninitialize(instance_);
  }
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;

  bool SetLink(const std::string& service, const std::string& topic) {
    trouble_.clear();
    for (const std::string& name : {service, topic}) {
      const std::size_t letters = Wide(name, CP_UTF8).size();
      if (letters == 0 || letters > kMostOfName) trouble_ = '"' + name + "\" is no name in DDE";
    }
    service_ = service;
    topic_ = topic;
    return trouble_.empty();
  }

  bool Open() {
    trouble_.clear();
    if (instance_ == 0) {
      trouble_ = "there is no DDE in this session";
      return false;
    }
    const Name service(instance_, service_), topic(instance_, topic_);
    handle_ = DdeConnect(instance_, service.Get(), topic.Get(), nullptr);
    if (handle_ == nullptr) {
      trouble_ = ClauseFor(DdeGetLastError(instance_), patience_);
      return false;
    }
    DdeSetUserHandle(handle_, static_cast<DWORD>(QID_SYNC), reinterpret_cast<DWORD_PTR>(this));
    return true;
  }

  void Close() {
    changed_ = nullptr;
    if (handle_ != nullptr) DdeDisconnect(std::exchange(handle_, nullptr));
  }

  std::string Request(const std::string& item) {
    const HDDEDATA data = Transact(item, XTYP_REQUEST);
    if (data == nullptr) return {};
    std::string text = FirstLine(data);
    DdeFreeDataHandle(data);
    return text;
  }

  void Bind(const std::string& item, Changed changed) {
    changed_ = std::move(changed);
    if (Transact(item, XTYP_ADVSTART) == nullptr) changed_ = nullptr;
  }

  const std::string& Trouble() const { return trouble_; }

 private:
  /// Asks, and waits for the answer as long as patience lasts; null where it failed. What it answers to a request is data.
  HDDEDATA Transact(const std::string& item, UINT type) {
    trouble_.clear();
    if (handle_ == nullptr) {
      trouble_ = "the program has ended";
      return nullptr;
    }
    const Name name(instance_, item);
    const InputKeptOut kept_out;
    const HDDEDATA data = DdeClientTransaction(nullptr, 0, handle_, name.Get(), CF_TEXT, type,
                                               static_cast<DWORD>(patience_.count()), nullptr);
    if (data == nullptr) trouble_ = ClauseFor(DdeGetLastError(instance_), patience_);
    return data;
  }

  /// What DDE calls, in the thread of the conversation.
  static HDDEDATA CALLBACK Hear(UINT type, UINT, HCONV handle, HSZ, HSZ, HDDEDATA data, ULONG_PTR,
                                ULONG_PTR) {
    CONVINFO told{};
    told.cb = sizeof told;
    if (handle == nullptr || DdeQueryConvInfo(handle, static_cast<DWORD>(QID_SYNC), &told) == 0 ||
        told.hUser == 0) {
      return nullptr;
    }
    auto& conversation = *reinterpret_cast<Conversation*>(told.hUser);
    switch (type) {
      case XTYP_ADVDATA:
        if (data != nullptr && conversation.changed_) conversation.changed_(FirstLine(data));
        return reinterpret_cast<HDDEDATA>(DDE_FACK);
      case XTYP_DISCONNECT:
        conversation.handle_ = nullptr;
        conversation.changed_ = nullptr;
        return nullptr;
      default:
        return nullptr;
    }
  }

  std::chrono::milliseconds patience_;
  DWORD instance_ = 0;      // 0: there is no DDE
  HCONV handle_ = nullptr;  // null: nobody is met
  std::string service_;
  std::string topic_;
  std::string trouble_;
  Changed changed_;
};

DdeTransport::DdeTransport(std::chrono::milliseconds patience)
    : conversation_(std::make_unique<Conversation>(patience)) {}

DdeTransport::~DdeTransport() = default;

bool DdeTransport::SetLink(const std::string& service, const std::string& topic) {
  return conversation_->SetLink(service, topic);
}

bool DdeTransport::Open() {
  return conversation_->Open();
}

void DdeTransport::Close() {
  conversation_->Close();
}

std::string DdeTransport::RequestData(const std::string& item) {
  return conversation_->Request(item);
}

void DdeTransport::Bind(const std::string& item, Changed changed) {
  conversation_->Bind(item, std::move(changed));
}

std::string DdeTransport::Trouble() const {
  return conversation_->Trouble();
}

}  // namespace tarnwick

#endif
