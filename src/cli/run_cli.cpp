#include "cli/run_cli.h"

#include <algorithm>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "base/error.h"
#include "base/version.h"
#include "cli/options/command.h"

namespace tarnwick::cli {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int Fail(std::ostream& err, std::string message) {
  std::replace(message.begin(), message.end(), '\n', ' ');
  err << "tarnwick-cli: " << message << '\n';
  return kFailed;
}

int WrongUsage(std::ostream& err, const std::string& message) {
  Fail(err, message + " (--help tells more)");
  return kWrongUsage;
}

int Finish(std::ostream& out, std::ostream& err) {
  out.flush();
  return out ? 0 : Fail(err, "the answer cannot be written");
}

int RunAction(const Action& action, Output& output, std::ostream& out, std::ostream& err) {
  try {
    action(output);
  } catch (const UsageError& error) {
    return WrongUsage(err, error.what());
  } catch (const Error& error) {
    return Fail(err, error.what());
  } catch (const std::bad_alloc&) {
    return Fail(err, "not enough memory");
  } catch (const std::exception& error) {
    return Fail(err, std::string("internal error: ") + error.what());
  }
  const int status = Finish(out, err);
  if (status == 0) output.TellNotes();
  return status;
}

}  // namespace

int RunCli(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
  OptionParser parser("Tarnwick without a window: plots and analyses X-Y data from scripts.",
                      "tarnwick-cli", "tarnwick-cli " + std::string(kVersion));
  bool json = false;
  parser.Everywhere().AddFlag("--json", json, "Answer with one JSON document");
  bool quiet = false;
  parser.Everywhere().AddFlag("--quiet", quiet,
                              "Do not say what was skipped, replaced, joined or guessed");

  Action action;
  const std::vector<std::string_view> words(argv, argv + argc);
  for (const CommandRow& row : Commands()) {
    Command command = parser.AddCommand(row.name, row.purpose);
    // A command that nobody names needs no options.
    if (std::find(words.begin(), words.end(), row.name) != words.end())
      row.declare(command, action);
  }
  const Parsed parsed = parser.Parse(argc, argv, out, err);
  if (parsed.kind == Parsed::Kind::Answered) return Finish(out, err);
  if (parsed.kind == Parsed::Kind::WrongUsage) return WrongUsage(err, parsed.refusal);
  if (!action) return WrongUsage(err, "A command is required");
  Output output(out, err, json ? Output::Form::Document : Output::Form::Text,
                quiet ? Output::Notes::Quiet : Output::Notes::Told);
  return RunAction(action, output, out, err);
}

}  // namespace tarnwick::cli
