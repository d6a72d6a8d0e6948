// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "host/testing/host_fixture.h"

namespace quillbar::language::testing {

/// The output of a run and its exit status.
struct ScriptRun {
  int status = 0;
  std::string output;
  std::string errors;
};

/// A test that runs scripts. At its end, everything that the scripts held must have been released.
class ScriptTest : public host::HostFixture {
 protected:
  ScriptTest();

  /// Runs `text` as "test.xojo_script", with `input` as its standard input.
  ScriptRun Run(const std::string &text, const std::vector<std::string> &arguments = {}, const std::string &input = {});

  /// The output of a script, which must run without errors.
  std::string Output(const std::string &text);

  /// The error output of a script with an error, which must not have printed anything.
  std::string ErrorOutput(const std::string &text);

  /// The line that says what is wrong, without the file's name: "3:5: error: …" or "3:5: SomeException: …".
  std::string FirstError(const std::string &text);

  /// The limits of Integer, which is as wide as a pointer.
  static inline const std::string kLargestInteger = std::to_string(INTPTR_MAX);
  static inline const std::string kSmallestInteger = std::to_string(INTPTR_MIN);

  /// An expression and what `Print` writes for it.
  struct Printed {
    const char *expression;
    const char *text;
  };
  /// Prints each expression and compares the output. `before` is put before them.
  void ExpectPrinted(std::initializer_list<Printed> cases, const std::string &before = {});

  /// A script and its first error.
  struct FailingScript {
    const char *text;
    const char *error;
  };
  /// Runs each script and compares its first error.
  void ExpectErrors(std::initializer_list<FailingScript> cases);
};

/// A script test with a plugin whose class `Probe` has members of every shape.
class ProbeScriptTest : public ScriptTest {
 protected:
  void SetUp() override;
};

}  // namespace quillbar::language::testing
