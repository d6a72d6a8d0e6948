// SPDX-License-Identifier: MIT
// Hosts that lack a service: the members that need it give Nil and harm nothing.
#include <gmock/gmock.h>

#include "tests/plugin/image/image_driver.h"
#include "tests/support/jpeg_maker.h"

namespace quillbar::test {
namespace {

class MissingServiceTest : public ImageTest {
 protected:
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

}  // namespace
}  // namespace quillbar::test
