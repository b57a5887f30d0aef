#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

namespace ZELWbr3::Host {

/// One line on standard error, after the program's name; from any thread. Always 1,
/// the exit status of a program that fails.
int Complain(const std::string& sText);

/// A program's command line, with --help and --version.
class CommandLine : public CLI::App {
 public:
  CommandLine(const std::string& sProgram, const std::string& sDescription);

  /// Reads the arguments, hides the passwords among them, and does the program's work.
  /// The exit status: what that answers, or 1 after a complaint about what it or the
  /// arguments raised.
  int Run(int argc, char** argv, const std::function<int()>& oWork);
};

}  // namespace ZELWbr3::Host
