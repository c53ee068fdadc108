// A PostgreSQL server of the tests' own, in a folder of its own, reached by a local socket only.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/spawned.h"

class QSqlDatabase;

namespace tarnwick::testing {

class PostgresServer {
 public:
  static constexpr const char* kPassword = "open sesame's";

  /// Starts it; as root under a user without rights, as the server demands. WhyNot() says why it is not there.
  PostgresServer();
  /// Stops it and removes its folder.
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  /// Empty when it runs.
  const std::string& WhyNot() const { return why_not_; }
  /// "postgresql://owner@/postgres?host=…": connections need the password.
  std::string Url() const;
  /// The folder of its socket.
  const std::string& Server() const { return folder_; }
  /// Runs statements as the owner, who may write.
  void Run(const std::vector<std::string>& statements) const;
  /// Ends the process at once, as a server goes that is switched off; Start() brings it back.
  void Kill();
  void Start();

 private:
  /// One of its programs, which runs as another user where this one is root.
  std::unique_ptr<Spawned> Begin(const std::string& program,
                                 const std::vector<std::string>& arguments) const;
  void Name(QSqlDatabase& base) const;
  bool Answers() const;

  std::string folder_;
  std::string programs_;
  std::string why_not_;
  std::unique_ptr<Spawned> process_;
};

}  // namespace tarnwick::testing
