// Saving a document under a name the user gives, in the kind of file that its extension means. Knows no window.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tarnwick {

class Document;
class FileChooser;
class Prompt;

/// What came of saving under a name.
struct SaveOutcome {
  bool saved = false;            ///< something was written
  std::filesystem::path recent;  ///< the file for the list of recent files; empty for none
  std::string left_out;          ///< what that kind of file does not keep; empty for nothing
};

/// Asks for a name, and before it replaces a file, with what would be lost where that is a source of the data. A file that
/// another of `open` shows is refused with a sentence. Extensions without a meaning write nothing. Throws FileError.
SaveOutcome SaveDocumentAs(Document& document, const std::vector<Document*>& open,
                           FileChooser& chooser, Prompt& prompt);

}  // namespace tarnwick
