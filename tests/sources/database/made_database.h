// A data base file that a test fills.
#pragma once

#include <string>
#include <vector>

#include "sources/database/database_place.h"
#include "support/temporary_folder.h"

namespace tarnwick::testing {

class MadeDatabase {
 public:
  explicit MadeDatabase(const std::vector<std::string>& statements) { Run(statements); }

  void Run(const std::vector<std::string>& statements) const;
  const std::string& File() const { return file_; }
  DatabasePlace Place(const std::string& table, const std::string& query = {}) const {
    return {"sqlite", file_, table, query};
  }

 private:
  TemporaryFolder folder_;
  std::string file_ = folder_.File("made %?.db").string();
};

}  // namespace tarnwick::testing
