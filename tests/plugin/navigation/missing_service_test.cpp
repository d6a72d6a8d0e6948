// SPDX-License-Identifier: MIT
// A host that lacks a service: the members that need it give Nil and harm nothing.
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {
namespace {

class NavigationWithoutService : public PluginTest {};

TEST_F(NavigationWithoutService, ForConvertedTextHasNoNotesLinksOrOutlines) {
  StartWithout("PluginGetStringData");
  const Document document = NewDocument();
  const ScriptObject page = document.AddPage();
  EXPECT_TRUE(page.Call("CreateTextAnnotation", "note", 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_TRUE(page.Call("CreateURLAnnotation", "http://a", 0.0F, 0.0F, 1.0F, 1.0F).IsNil());
  EXPECT_TRUE(document.Call("CreateOutline", host::Value::Nil(), "title").IsNil());
  EXPECT_FALSE(page.Call("CreateDestination").IsNil());
  document.Set("Title", "lost");
  EXPECT_EQ(document.Get("Title").Utf8(), "");
}

}  // namespace
}  // namespace quillbar::test
