// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

#include <sstream>

#include "host/language/run/run_script.h"
#include "host/runtime/string_pool.h"
#include "tests/host/test_plugins.h"

namespace quillbar::language::testing {
namespace {

int CountLiveStrings() {
  int count = 0;
  host::StringPool::Instance().ForEachLive([&](const HostString &) { ++count; });
  return count;
}

}  // namespace

ScriptTest::ScriptTest() { StartHost({}); }

void ProbeScriptTest::SetUp() { StartHost({TestPlugin("probe")}); }

ScriptRun ScriptTest::Run(const std::string &text, const std::vector<std::string> &arguments,
                          const std::string &input) {
  std::istringstream inputStream(input);
  std::ostringstream output;
  std::ostringstream errors;
  ScriptRun run;
  const int stringsBefore = CountLiveStrings();
  run.status = RunText(host(), "test.xojo_script", text, arguments, output, errors, inputStream);
  EXPECT_EQ(CountLiveStrings(), stringsBefore) << "strings that were not given back by\n" << text;
  run.output = output.str();
  run.errors = errors.str();
  return run;
}

std::string ScriptTest::Output(const std::string &text) {
  const ScriptRun run = Run(text);
  EXPECT_EQ(run.status, 0) << text;
  EXPECT_EQ(run.errors, "") << text;
  return run.output;
}

std::string ScriptTest::ErrorOutput(const std::string &text) {
  const ScriptRun run = Run(text);
  EXPECT_EQ(run.status, 1) << text;
  EXPECT_EQ(run.output, "") << text;
  return run.errors;
}

std::string ScriptTest::FirstError(const std::string &text) {
  const ScriptRun run = Run(text);
  EXPECT_EQ(run.status, 1) << text;
  const std::string name = "test.xojo_script:";
  const std::string line = run.errors.substr(0, run.errors.find('\n'));
  return line.starts_with(name) ? line.substr(name.size()) : line;
}

void ScriptTest::ExpectPrinted(std::initializer_list<Printed> cases, const std::string &before) {
  for (const Printed &item : cases) {
    EXPECT_EQ(Output(before + "\nPrint(" + item.expression + ")\n"), std::string(item.text) + "\n") << item.expression;
  }
}

void ScriptTest::ExpectErrors(std::initializer_list<FailingScript> cases) {
  for (const FailingScript &item : cases) EXPECT_EQ(FirstError(item.text), item.error) << item.text;
}

}  // namespace quillbar::language::testing
