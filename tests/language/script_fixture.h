// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "host/testing/host_fixture.h"

namespace quillbar::language::testing {

/// What a run left behind.
struct ScriptRun {
  int status = 0;
  std::string output;
  std::string errors;
};

/// A test that runs scripts. Whatever a script held must have been given back at its end.
class ScriptTest : public host::HostFixture {
 protected:
  ScriptTest();

  /// Runs `text` as "test.xojo_script".
  ScriptRun Run(const std::string &text, const std::vector<std::string> &arguments = {});

  /// What a faultless script prints.
  std::string Output(const std::string &text);

  /// Everything that a script with an error leaves on the error output; nothing may have been printed.
  std::string ErrorOutput(const std::string &text);

  /// The line that says what is wrong, without the file's name: "3:5: error: …" or "3:5: SomeException: …".
  std::string FirstError(const std::string &text);

  /// The limits of Integer, which is as wide as a pointer.
  static inline const std::string kLargestInteger = std::to_string(INTPTR_MAX);
  static inline const std::string kSmallestInteger = std::to_string(INTPTR_MIN);

  struct Printed {
    const char *expression;
    const char *text;
  };
  /// Prints each expression and compares what comes out. `before` stands in front.
  void ExpectPrinted(std::initializer_list<Printed> cases, const std::string &before = {});

  struct FailingScript {
    const char *text;
    const char *error;
  };
  void ExpectErrors(std::initializer_list<FailingScript> cases);
};

/// The same with a plugin whose class `Probe` has members of every shape.
class ProbeScriptTest : public ScriptTest {
 protected:
  void SetUp() override;
};

}  // namespace quillbar::language::testing
