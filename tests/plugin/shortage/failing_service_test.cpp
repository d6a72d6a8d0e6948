// SPDX-License-Identifier: MIT
// Services of the host that fail: one call of one service after another, once or from there on, over a script of every
// member. Nothing crashes, everything that was given is given back, no part of a file is left, and what is saved
// afterwards is whole.
//
// A run of the suite takes samples; QUILLBAR_EVERY_SHORTAGE=1 takes every call.
#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <ostream>

#include "host/runtime/interruption.h"
#include "tests/plugin/driver/plugin_test.h"
#include "tests/plugin/shortage/every_member.h"
#include "tests/registry/loaded_plugin.h"
#include "tests/support/jpeg_maker.h"
#include "tests/support/real_fonts.h"
#include "tests/support/service_names.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/utf8_path.h"

namespace quillbar::test {
namespace {

/// The service whose calls are counted, and the call that fails.
struct FailingCall {
  std::string_view service;
  long left = -1;  ///< calls that succeed before one fails; negative: all
  bool forGood = false;
  long count = 0;  ///< calls so far

  bool FailsNow(std::string_view name) {
    if (name != service) return false;
    ++count;
    if (left < 0) return false;
    if (left > 0) {
      --left;
      return false;
    }
    if (!forGood) left = -1;
    return true;
  }
};
FailingCall failing;

template <class Service>
struct Watched;

/// Stands before a service of the host. A call that fails gives the empty result, as the host does for what it can't do.
template <FixedString Name, class Result, class... Arguments>
struct Watched<ServiceType<Name, Result(Arguments...)>> {
  static Result Call(Arguments... arguments) {
    if (failing.FailsNow(Name.View())) return Result();
    return reinterpret_cast<Result (*)(Arguments...)>(host::Host::Current()->Resolve(Name.CString()))(arguments...);
  }
};

struct WatchedService {
  std::string_view name;
  void *address;
};

void PrintTo(const WatchedService &watched, std::ostream *out) { *out << watched.name; }

template <class... Services>
std::vector<WatchedService> Watch() {
  return {{Services::kName.View(), reinterpret_cast<void *>(&Watched<Services>::Call)}...};
}

/// Those that can fail. What a plugin gives back is taken; and that a lock wasn't taken, no plugin could know.
const std::vector<WatchedService> &WatchedServices() {
  static const std::vector<WatchedService> services =
      Watch<service::ObjectType, service::CreateInstance, service::GetPluginData, service::GetEventInstance,
            service::LoadGlobalMethod, service::LoadObjectMethod, service::GetPropValueString,
            service::GetPropValueBool, service::GetStringData, service::StringGetCString,
            service::BuildStringWithEncoding, service::ConvertString, service::StringCompare, service::UBound,
            service::UInt16ArrayGetter>();
  return services;
}

void *ResolveWatched(const char *name) {
  const auto found = std::ranges::find(WatchedServices(), std::string_view(name), &WatchedService::name);
  return found != WatchedServices().end() ? found->address : host::Host::Current()->Resolve(name);
}

/// What a script leaves when the host fails anywhere: whole files or none, and accounts that balance.
class FailingServiceTest : public host::HostFixture {
 protected:
  /// Runs the scripts. Gives whether the document could be made.
  bool RunScripts() {
    const TemporaryFolder folder;
    const std::filesystem::path picture = folder / "picture.jpg";
    WriteFile(picture, MakeJpeg({}));
    bool hasDocument = false;
    try {
      const ScriptResult result = UseDocument(host(), folder.path(), [] { failing.left = -1; });
      hasDocument = result.hasDocument;
      EXPECT_TRUE(result.file.empty() || PdfFile(result.file).IsOpen());
    } catch (const host::HostError &) {
      // A member of Nil was used: there is no document at all.
    }
    try {
      UseRasters(host(), picture);
    } catch (const host::HostError &) {
    }
    for (const auto &file : std::filesystem::directory_iterator(folder.path())) {
      if (file.path() == picture) continue;
      EXPECT_EQ(file.path().filename(), "saved.pdf");
      EXPECT_TRUE(PdfFile(ReadFile(file.path())).IsOpen());
    }
    return hasDocument;
  }

  static bool TakesAll() { return std::getenv("QUILLBAR_EVERY_SHORTAGE") != nullptr; }
};

class FailingService : public FailingServiceTest, public testing::WithParamInterface<WatchedService> {
 protected:
  // The plugins are entered with a resolver of the test's own, so the host can't have loaded them itself.
  void SetUp() override {
    StartHost({});
    failing = {};
    for (const char *file : {QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}) {
      plugins_.push_back(std::make_unique<LoadedPlugin>(file));
      plugins_.back()->Enter(&ResolveWatched);
    }
    host().Link();
  }

 private:
  std::vector<std::unique_ptr<LoadedPlugin>> plugins_;  // they outlive the host, which TearDown ends
};

TEST_P(FailingService, LosesNothingButWhatItWasNeededFor) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  QUILLBAR_NEEDS_FONT(kRomanMetrics, "fonts-urw-base35");
  failing.service = GetParam().name;
  ASSERT_TRUE(RunScripts());
  const long count = failing.count;
  if (count == 0) GTEST_SKIP() << "plugins asked for it once, before the script";
  constexpr long kSamples = 2;
  const long step = TakesAll() ? 1 : std::max(1L, (count + 1) / kSamples);
  for (long point = 0; point < count && !HasFailure(); point += step) {
    for (const bool forGood : {false, true}) {
      if (!TakesAll() && forGood != (point / step % 2 != 0)) continue;
      SCOPED_TRACE(testing::Message() << "call " << point << " failed" << (forGood ? ", and all after it" : ""));
      failing.left = point;
      failing.forGood = forGood;
      RunScripts();
      failing.left = -1;
      ExpectBalancedLedger();
    }
  }
  EXPECT_TRUE(!TakesAll() || RunScripts()) << "nothing of the failures stays";
}

INSTANTIATE_TEST_SUITE_P(EachCall, FailingService, testing::ValuesIn(WatchedServices()),
                         [](const auto &test) { return std::string(test.param.name); });

TEST_F(FailingServiceTest, HostsWithoutOneOfThemRunTheScriptsToTheirEnd) {
  QUILLBAR_NEEDS_FONT(kDejaVuSans, "fonts-dejavu-core");
  QUILLBAR_NEEDS_FONT(kRomanMetrics, "fonts-urw-base35");
  constexpr int kSamplesOneOf = 4;
  int number = 0;
  for (const std::string &service : EverythingOfAHost()) {
    if (!TakesAll() && ++number % kSamplesOneOf != 0) continue;
    SCOPED_TRACE(service);
    host::HostOptions options;
    options.missing.insert(service);
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
    if (host().registry().FindClass("PDFDocument") != nullptr) RunScripts();
    if (!KeepsTheLedger(service)) ExpectBalancedLedger();
  }
  IgnoreLedger();
}

/// A host that is told how far a save is, and does something then.
class SaveUnderReports : public FailingServiceTest {
 protected:
  void SetUp() override {
    host::HostOptions options;
    options.progress = [this](std::uint32_t done, std::uint32_t) {
      if (done == 0 || reports_++ != at_ || isInside_) return;
      isInside_ = true;
      act_();
      isInside_ = false;
    };
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
  }
  void TearDown() override {
    host::Interruption::Clear();
    FailingServiceTest::TearDown();
  }

  /// Saves a document of two pages in all three ways, and acts in between.
  struct Saved {
    std::string text;
    std::vector<Failure> failures;
  };
  Saved SaveWith(const std::filesystem::path &path) {
    document_ = Document(host(), host().Create("PDFDocument"));
    for (int i = 0; i < 2; ++i) {
      page_ = document_.AddPage();
      page_.Call("MoveTo", 1, 2);
      page_.Call("LineTo", 3, 4);
      page_.Call("Draw");
    }
    prepare_();
    reports_ = 0;
    Saved saved;
    const Document held = document_;  // as the script's own variable is held while its method runs
    saved.text = held.Saved();
    held.Call("SaveToMemoryBlock");
    held.Call("Save", host().Create("FolderItem", {Utf8(path)}));
    saved.failures = held.TakeFailures();
    document_ = {};
    page_ = {};
    return saved;
  }

  Document document_;
  ScriptObject page_;
  std::function<void()> prepare_ = [] {}, act_ = [] {};
  long reports_ = 0, at_ = -1;
  bool isInside_ = false;
};

TEST_F(SaveUnderReports, IsGivenUpAtAnyOfThemAndLeavesNothing) {
  const TemporaryFolder folder;
  SaveWith(folder / "whole.pdf");
  const long count = reports_;
  ASSERT_GT(count, 5);
  act_ = [] { host::Interruption::Request(2); };
  for (at_ = 0; at_ < count; ++at_) {
    SCOPED_TRACE(at_);
    const std::filesystem::path path = folder / std::to_string(at_);
    const Saved saved = SaveWith(path);
    host::Interruption::Clear();
    for (const Failure &failure : saved.failures) {
      EXPECT_EQ(failure, (Failure{library_error::kFileIoError, ECANCELED}));
    }
    EXPECT_TRUE(saved.text.empty() || PdfFile(saved.text).IsOpen());
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(saved.failures.empty());
    ExpectBalancedLedger();
  }
}

// What a host's report may lead to, such as a window that is drawn or closed.
TEST_F(SaveUnderReports, StandsWhateverIsDoneMeanwhile) {
  const TemporaryFolder folder;
  const Saved whole = SaveWith(folder / "whole.pdf");
  const long count = reports_;
  const std::pair<const char *, std::function<void()>> acts[] = {
      {"saved", [this] { EXPECT_TRUE(PdfFile(document_.Saved()).IsOpen()); }},
      {"saved to a file", [&] { document_.Call("Save", host().Create("FolderItem", {Utf8(folder / "inner.pdf")})); }},
      {"changed",
       [this] {
         page_.Call("Rectangle", 1, 2, 3, 4);
         page_.Call("Fill");
         document_.AddPage();
         document_.GetFont("Courier");
         document_.Set("Title", "changed");
       }},
      {"released", [this] { document_ = {}, page_ = {}; }},
      {"cleared", [this] { document_.Call("ClearError"); }},
  };
  for (const auto &[name, act] : acts) {
    act_ = act;
    for (at_ = 0; at_ < count; ++at_) {
      SCOPED_TRACE(testing::Message() << name << " at report " << at_);
      const std::filesystem::path path = folder / (std::string(name) + std::to_string(at_));
      const Saved saved = SaveWith(path);
      std::error_code ignored;
      std::filesystem::remove(folder / "inner.pdf", ignored);
      EXPECT_THAT(saved.failures, testing::IsEmpty());
      EXPECT_TRUE(PdfFile(saved.text).IsOpen());
      EXPECT_TRUE(PdfFile(ReadFile(path)).IsOpen());
      ExpectBalancedLedger();
      if (HasFailure()) break;
    }
  }
}

// A file whose first objects are encrypted otherwise than its last ones would open nowhere.
TEST_F(SaveUnderReports, KeepsTheEncryptionThatItBeganWith) {
  const TemporaryFolder folder;
  SaveWith(folder / "whole.pdf");
  const long count = reports_;
  constexpr std::uint32_t kInvalidOperation = 0x1035;
  for (const bool isProtected : {false, true}) {
    struct Act {
      std::string_view name;
      std::function<void()> act;
    };
    const Act acts[] = {
        {"protected", [this] { document_.Call("SetPassword", "owner", ""); }},
        {"protected otherwise", [this] { document_.Call("SetEncryptionMode", 2, 0); }},
        {"saved", [this] { EXPECT_EQ(document_.Saved(), ""); }},
    };
    for (const Act &named : acts) {
      if (!isProtected && named.name == "saved") continue;
      for (at_ = 0; at_ + 1 < count; ++at_) {
        SCOPED_TRACE(testing::Message() << named.name << " at report " << at_
                                        << (isProtected ? ", protected before" : ""));
        const std::filesystem::path path = folder / "file.pdf";
        prepare_ = [&] {
          if (!isProtected) return;
          document_.Call("SetPassword", "owner", "");
          document_.Call("SetEncryptionMode", 3, 16);
        };
        int failures = 0;
        act_ = [&] {
          named.act();
          failures = static_cast<int>(document_.TakeFailures().size());
          EXPECT_EQ(document_.LastFailure().number, kInvalidOperation);
        };
        const Saved saved = SaveWith(path);
        EXPECT_EQ(failures, 1) << "told at once";
        EXPECT_THAT(saved.failures, testing::IsEmpty()) << "what was refused meanwhile is no failure of the save";
        const PdfFile file(ReadFile(path));
        ASSERT_TRUE(file.IsOpen());
        EXPECT_EQ(file.qpdf().isEncrypted(), isProtected);
        EXPECT_EQ(file.Operators(1).size(), 3U);
        std::filesystem::remove(path);
        ExpectBalancedLedger();
        if (HasFailure()) return;
      }
    }
  }
}

}  // namespace
}  // namespace quillbar::test
