// SPDX-License-Identifier: MIT
// Hosts that lack a service: the members that need it give Nil and harm nothing.
#include <gmock/gmock.h>

#include "tests/image/image_driver.h"
#include "tests/image/jpeg_maker.h"

namespace quillbar::test {
namespace {

class MissingServiceTest : public ImageTest {
 protected:
  void StartWithout(const char *service) {
    host::HostOptions options;
    options.missing.insert(service);
    StartHost({QUILLBAR_COMPANION_FILE, QUILLBAR_PLUGIN_FILE}, options);
  }
  ScriptObject NewRaster() { return NewObject("PixelRaster", {std::int64_t{2}, std::int64_t{2}, std::int64_t{3}}); }
};

TEST_F(MissingServiceTest, WithoutDataOfOtherPluginsThereIsNoImageOfARaster) {
  StartWithout("PluginGetPluginData");
  const Document document = NewDocument();
  EXPECT_TRUE(document.Call("LoadImage", NewRaster()).IsNil());
  EXPECT_FALSE(document.Call("LoadJPEGImage", Bytes(MakeJpeg({}))).IsNil());
}

TEST_F(MissingServiceTest, WithoutBytesOrLengthsThereIsNoImageOfAFile) {
  for (const char *service : {"StringGetCString", "LenB( s as string ) as integer"}) {
    StartWithout(service);
    const Document document = NewDocument();
    EXPECT_TRUE(document.Call("LoadJPEGImage", Bytes(MakeJpeg({}))).IsNil()) << service;
    EXPECT_FALSE(document.Call("LoadImage", NewRaster()).IsNil());
  }
}

TEST_F(MissingServiceTest, WithoutNewObjectsEveryFactoryGivesNil) {
  for (const char *service : {"CreateInstance", "pluginObjectType"}) {
    StartWithout(service);
    const Document document = NewDocument();
    EXPECT_TRUE(document.Call("LoadImage", NewRaster()).IsNil());
    EXPECT_TRUE(document.Call("LoadJPEGImage", Bytes(MakeJpeg({}))).IsNil());
    EXPECT_TRUE(document.Call("CreateOutline", host::Value::Nil(), "title").IsNil());
    EXPECT_TRUE(document.Call("CreateExtendedGraphicsState").IsNil());
  }
}

TEST_F(MissingServiceTest, WithoutConvertedTextThereAreNoNotesLinksOrOutlines) {
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
