#include "readers/workbook/xml_reader.h"

#include <expat.h>

#include <cstring>
#include <exception>
#include <memory>
#include <string>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr int kDeepest = 256;

std::string_view WithoutPrefix(const char* name) {
  const char* const colon = std::strchr(name, ':');
  return colon == nullptr ? name : colon + 1;
}

/// One document. What is thrown may not pass the library, which is C: it is kept, and thrown behind it.
class Reading {
 public:
  Reading(std::string_view part, XmlHandler& handler)
      : part_(part), handler_(handler), parser_(XML_ParserCreate(nullptr)) {
    if (!parser_) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), &OnStart, &OnEnd);
    XML_SetCharacterDataHandler(parser_.get(), &OnText);
    XML_SetStartDoctypeDeclHandler(parser_.get(), &OnDoctype);
  }

  void Feed(std::string_view piece) { Parse(piece, XML_FALSE); }
  void Finish() { Parse({}, XML_TRUE); }

 private:
  struct Freeing {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  template <typename Action>
  void Guarded(Action action) {
    if (thrown_) return;
    try {
      action();
    } catch (...) {
      thrown_ = std::current_exception();
      XML_StopParser(parser_.get(), XML_FALSE);
    }
  }

  static void OnStart(void* self, const char* name, const char** attributes) {
    auto& reading = *static_cast<Reading*>(self);
    reading.Guarded([&] {
      if (++reading.depth_ > kDeepest) throw reading.Damaged("it nests too deep");
      reading.handler_.Start(WithoutPrefix(name), XmlAttributes(attributes));
    });
  }
  static void OnEnd(void* self, const char* name) {
    auto& reading = *static_cast<Reading*>(self);
    reading.Guarded([&] {
      --reading.depth_;
      reading.handler_.End(WithoutPrefix(name));
    });
  }
  static void OnText(void* self, const char* text, int size) {
    auto& reading = *static_cast<Reading*>(self);
    reading.Guarded([&] { reading.handler_.Text({text, static_cast<std::size_t>(size)}); });
  }
  static void OnDoctype(void* self, const char*, const char*, const char*, int) {
    auto& reading = *static_cast<Reading*>(self);
    reading.Guarded([&] { throw reading.Damaged("it declares a document type"); });
  }

  void Parse(std::string_view piece, XML_Bool last) {
    const XML_Status status =
        XML_Parse(parser_.get(), piece.data(), static_cast<int>(piece.size()), last);
    if (thrown_) std::rethrow_exception(thrown_);
    if (status != XML_STATUS_OK) throw Damaged(XML_ErrorString(XML_GetErrorCode(parser_.get())));
  }

  Error Damaged(const std::string& reason) const {
    return Error("The part " + std::string(part_) + " of the workbook is damaged: " + reason +
                 ", line " + std::to_string(XML_GetCurrentLineNumber(parser_.get())));
  }

  std::string_view part_;
  XmlHandler& handler_;
  std::unique_ptr<XML_ParserStruct, Freeing> parser_;
  std::exception_ptr thrown_;
  int depth_ = 0;
};

}  // namespace

const char* XmlAttributes::Find(std::string_view name) const {
  for (const char** pair = pairs_; *pair != nullptr; pair += 2) {
    if (WithoutPrefix(pair[0]) == name) return pair[1];
  }
  return nullptr;
}

bool XmlAttributes::Holds(std::string_view name, std::string_view value) const {
  for (const char** pair = pairs_; *pair != nullptr; pair += 2) {
    if (WithoutPrefix(pair[0]) == name && value == pair[1]) return true;
  }
  return false;
}

std::string_view XmlAttributes::operator[](std::string_view name) const {
  const char* const found = Find(name);
  return found == nullptr ? std::string_view() : std::string_view(found);
}

void ReadXml(std::string_view part,
             const std::function<void(const std::function<void(std::string_view)>&)>& read,
             XmlHandler& handler) {
  Reading reading(part, handler);
  read([&](std::string_view piece) { reading.Feed(piece); });
  reading.Finish();
}

}  // namespace tarnwick
