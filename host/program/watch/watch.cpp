// SPDX-License-Identifier: MIT
#include "host/program/watch/watch.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include "host/program/watch/file_state.h"
#include "host/program/watch/page_server.h"
#include "host/program/watch/script_process.h"
#include "host/runtime/interruption.h"
#include "host/runtime/platform/file_system.h"

namespace quillbar::program {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using States = std::map<fs::path, FileState>;

constexpr milliseconds kBetweenLooks{100};

bool IsInterrupted() { return host::Interruption::IsRequested(); }

bool IsDocument(const fs::path &path) {
  std::string extension = path.extension().string();
  std::ranges::transform(extension, extension.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c; });
  return extension == ".pdf";
}

/// A folder that goes away with everything in it.
class OwnFolder {
 public:
  OwnFolder() {
    std::string name = (fs::temp_directory_path() / "quillbar-watch-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for copies of documents can be made");
    path_ = name;
  }
  ~OwnFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  OwnFolder(const OwnFolder &) = delete;
  OwnFolder &operator=(const OwnFolder &) = delete;

  const fs::path &path() const { return path_; }

 private:
  fs::path path_;
};

/// Runs the script again and again. Between two runs nothing that it asked for has changed.
class Watcher {
 public:
  explicit Watcher(const CommandLine &commandLine)
      : script_(host::platform::NormalPath(commandLine.script)),
        server_(commandLine.port, host::platform::Utf8Path(commandLine.script)) {
    for (const fs::path &plugin : commandLine.plugins) {
      arguments_.insert(arguments_.end(), {"--plugin", host::platform::Utf8Path(plugin)});
    }
    arguments_.insert(arguments_.end(), {"run", "--list-files", UsedFilesList().string()});
    if (!commandLine.sandbox.empty()) {
      arguments_.insert(arguments_.end(), {"--sandbox", host::platform::Utf8Path(commandLine.sandbox)});
    }
    const auto pass = [&](const char *option, auto value) {
      if (value != 0) arguments_.insert(arguments_.end(), {option, fmt::format("{}", value)});
    };
    pass("--max-memory", commandLine.maxMemory);
    pass("--max-time", commandLine.maxTime);
    pass("--max-calls", commandLine.maxCalls);
    pass("--max-string", commandLine.maxString);
    pass("--max-elements", commandLine.maxElements);
    arguments_.insert(arguments_.end(), {"--", host::platform::Utf8Path(commandLine.script)});
    for (const fs::path &file : commandLine.files) {
      arguments_.push_back(host::platform::Utf8Path(file));
      const fs::path input = host::platform::NormalPath(file);
      sources_.push_back(input);
      inputs_[input] = StateOf(input);
    }
    arguments_.push_back("--");
    arguments_.insert(arguments_.end(), commandLine.arguments.begin(), commandLine.arguments.end());
    inputs_[script_] = StateOf(script_);
  }

  void Run() {
    std::cout << "Open " << server_.Address() << " in a browser; Ctrl-C ends.\n";
    while (!IsInterrupted()) {
      RunOnce();
      while (!IsInterrupted() && !HaveChanged()) std::this_thread::sleep_for(kBetweenLooks);
      AwaitQuiet();
    }
  }

 private:
  fs::path UsedFilesList() const { return folder_.path() / "used"; }

  /// Whether a file that the script asked for, or the script, is another one than it was.
  bool HaveChanged() const {
    return std::ranges::any_of(inputs_, [](const auto &input) { return StateOf(input.first) != input.second; });
  }

  /// Waits until nothing changes any more, and the script is there: editors write and rename.
  void AwaitQuiet() const {
    const auto states = [&] {
      States now;
      for (const auto &input : inputs_) now[input.first] = StateOf(input.first);
      return now;
    };
    for (States before = states(); !IsInterrupted();) {
      std::this_thread::sleep_for(kBetweenLooks);
      States now = states();
      if (now == before && now[script_].kind == FileState::Kind::kFile) return;
      before = std::move(now);
    }
  }

  void RunOnce() {
    RemoveFormerDocuments();
    std::error_code ignored;
    fs::remove(UsedFilesList(), ignored);
    for (auto &[path, state] : inputs_) state = StateOf(path);
    States before = inputs_;
    for (const auto &document : written_) before[document.first] = StateOf(document.first);
    report_.isRunning = true;
    server_.Show(report_);

    const auto started = fs::file_time_type::clock::now();
    const Clock::time_point begun = Clock::now();
    ScriptProcess process(arguments_);
    while (!process.Wait(kBetweenLooks)) {
      if (IsInterrupted() || InputsChange(before)) return PutBackDocuments();
    }
    report_.isRunning = false;
    report_.seconds = std::chrono::duration<double>(Clock::now() - begun).count();
    report_.status = process.status();
    report_.output = process.output();
    report_.errors = process.errors();
    LookAtFiles(before, started);
    server_.Show(report_);
    Tell();
  }

  /// Whether a change makes the run in progress useless: of the script, or of a file that no run has written to yet.
  bool InputsChange(const States &before) const {
    return std::ranges::any_of(before, [&](const auto &input) {
      return input.second.kind == FileState::Kind::kFile && !changedByRuns_.contains(input.first) &&
             StateOf(input.first).kind == FileState::Kind::kFile && StateOf(input.first) != input.second;
    });
  }

  /// Documents that the last run wrote make way: scripts save new files only.
  void RemoveFormerDocuments() {
    std::error_code ignored;
    for (const auto &document : written_) fs::remove(document.first, ignored);
  }

  /// A run that failed before it wrote its documents leaves those of the run before.
  void PutBackDocuments() {
    std::error_code ignored;
    for (const auto &[path, copy] : written_) {
      if (!host::platform::IsTaken(path)) fs::copy_file(copy, path, ignored);
    }
    report_.isRunning = false;
  }

  /// What the run read and wrote, from the files that it asked for.
  void LookAtFiles(const States &before, fs::file_time_type started) {
    // Some file systems round the time of a change down to a few milliseconds.
    started -= milliseconds(20);
    const std::set<fs::path> used = UsedFiles();
    std::map<fs::path, fs::path> documents;
    report_.hint.clear();
    States inputs{{script_, before.at(script_)}};
    for (const fs::path &source : sources_) inputs[source] = before.at(source);
    for (const fs::path &path : used) {
      if (inputs.contains(path)) continue;
      const FileState now = StateOf(path);
      const auto known = before.find(path);
      const bool isChanged = known != before.end() ? known->second != now : now.changed >= started;
      if (IsDocument(path)) {
        if (now.kind != FileState::Kind::kFile) continue;
        if (isChanged) {
          documents[path];
        } else {
          report_.hint =
              fmt::format("{} was there before and stayed as it was: Save never overwrites. Delete it first.",
                          host::platform::Utf8Path(path.filename()));
        }
        continue;
      }
      // A file that the user saved meanwhile is run again with; one that changes in every run is the script's own.
      const bool isOwn = now.kind != FileState::Kind::kFile || (isChanged && !changedByRuns_.insert(path).second) ||
                         known == before.end();
      inputs[path] = isOwn ? now : known->second;
    }
    if (!used.empty()) inputs_ = std::move(inputs);
    if (documents.empty()) {
      PutBackDocuments();
      report_.areEarlier = true;
      return;
    }
    CopyDocuments(std::move(documents));
  }

  std::set<fs::path> UsedFiles() const {
    std::ifstream file(UsedFilesList(), std::ios::binary);
    std::set<fs::path> used;
    for (std::string path; std::getline(file, path, '\0');) used.insert(host::platform::PathFromUtf8(path));
    return used;
  }

  void CopyDocuments(std::map<fs::path, fs::path> documents) {
    const fs::path folder = folder_.path() / std::to_string(++copies_);
    std::error_code error;
    fs::create_directory(folder, error);
    report_.documents.clear();
    for (auto &[path, copy] : documents) {
      copy = folder / (std::to_string(report_.documents.size()) + ".pdf");
      fs::copy_file(path, copy, error);
      report_.documents.push_back({host::platform::Utf8Path(path.filename()), copy});
    }
    report_.areEarlier = false;
    written_ = std::move(documents);
    // A page may still be loading the copies of the run before.
    if (copies_ > 2) fs::remove_all(folder_.path() / std::to_string(copies_ - 2), error);
  }

  void Tell() const {
    std::cout << report_.output;
    if (!report_.output.empty() && !report_.output.ends_with('\n')) std::cout << '\n';
    std::cerr << report_.errors;
    std::string names;
    if (!report_.areEarlier) {
      for (const WatchedDocument &document : report_.documents) names += (names.empty() ? ": " : ", ") + document.name;
    }
    std::cout << fmt::format("{} in {:.2f} s{}\n",
                             report_.status == 0 ? "Ran" : fmt::format("Ended with status {}", report_.status),
                             report_.seconds, names);
  }

  fs::path script_;
  std::vector<fs::path> sources_;  // the other files of the script
  OwnFolder folder_;
  PageServer server_;
  std::vector<std::string> arguments_;
  States inputs_;                         // as they were when the last run began, or when it had asked for them
  std::map<fs::path, fs::path> written_;  // documents of the last run that wrote any, and their copies
  std::set<fs::path> changedByRuns_;
  WatchReport report_;
  int copies_ = 0;
};

}  // namespace

int Watch(const CommandLine &commandLine) {
  if (host::platform::KindOf(commandLine.script) != host::platform::FileKind::kFile) {
    std::cerr << fmt::format("quillbar: there is no script \"{}\" to watch\n",
                             host::platform::Utf8Path(commandLine.script));
    return 1;
  }
  try {
    Watcher(commandLine).Run();
  } catch (const std::exception &error) {
    std::cerr << "quillbar: " << error.what() << '\n';
    return 1;
  }
  return 0;
}

}  // namespace quillbar::program
