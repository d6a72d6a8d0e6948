// SPDX-License-Identifier: MIT
// Save: paths of every form that the platform knows.
#include <cerrno>

#include "tests/plugin/driver/plugin_test.h"
#include "tests/support/path_forms.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SavePath : public PluginTest, public testing::WithParamInterface<PathForm::Kind> {
 protected:
  Document NewDocumentWithPage() {
    const Document document = NewDocument();
    document.AddPage();
    return document;
  }
};

TEST_P(SavePath, IsTaken) {
  PathForm form(GetParam());
  const Document document = NewDocumentWithPage();
  document.Call("Save", NewFolderItem(form.File("ü 日本.pdf")));
  EXPECT_THAT(document.TakeFailures(), IsEmpty());
  EXPECT_EQ(ReadFile(form.OwnPath("ü 日本.pdf")), document.Saved());
}

INSTANTIATE_TEST_SUITE_P(Forms, SavePath, testing::ValuesIn(ReachablePathForms()),
                         [](const auto &parameter) { return NameOf(parameter.param); });

TEST_F(SavePath, OfAServerThatIsNotThereIsAFileOpenErrorWithTheSystemsNumber) {
#ifndef _WIN32
  GTEST_SKIP() << "paths name no servers here";
#endif
  for (const PathForm::Kind kind : {PathForm::Kind::kNetwork, PathForm::Kind::kNetworkLongPrefix}) {
    PathForm form(kind);
    const Document document = NewDocumentWithPage();
    document.Call("Save", NewFolderItem(form.File("saved.pdf")));
    EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileOpenError, ENOENT})) << NameOf(kind);
  }
}

TEST_F(SavePath, ThatTheSystemRefusesIsAFileOpenErrorWithItsNumber) {
#ifndef _WIN32
  GTEST_SKIP() << "every character but the slash may stand in a name here";
#endif
  const TemporaryFolder folder;
  const Document document = NewDocumentWithPage();
  document.Call("Save", NewFolderItem(folder / "question?.pdf"));
  EXPECT_THAT(document.TakeFailures(), ElementsAre(Failure{library_error::kFileOpenError, EINVAL}));
}

}  // namespace
}  // namespace quillbar::test
