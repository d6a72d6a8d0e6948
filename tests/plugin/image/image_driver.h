// SPDX-License-Identifier: MIT
// Images through the real host: rasters with any data block, and image XObjects read back.
#pragma once

#include <string>

#include "interface/pixel_raster.h"
#include "tests/plugin/driver/plugin_test.h"

namespace quillbar::test {

class ImageTest : public PluginTest {
 protected:
  /// A `PixelRaster` of the companion's whose data block says what `record` says. Its pixels are the
  /// caller's.
  ScriptObject RasterOf(const PixelRasterRecord &record) {
    ScriptObject raster = NewObject("PixelRaster");
    *static_cast<PixelRasterRecord *>(host().ClassData(raster.handle(), host().Class("PixelRaster"))) = record;
    return raster;
  }

  /// A string of bytes as they stand.
  static host::Value Bytes(std::string_view bytes) {
    return host::StringHandle::FromBytes(bytes, TextEncoding::kRawBytes);
  }
};

/// The image XObject with this name in the first page's resources.
inline QPDFObjectHandle ImageOf(const PdfFile &file, const std::string &name = "/X1") {
  return file.Page(0).getKey("/Resources").getKey("/XObject").getKey(name);
}

/// A stream's bytes, decoded when its filter is no image format.
inline std::string StreamBytes(QPDFObjectHandle stream) {
  const bool isJpeg = stream.getDict().getKey("/Filter").unparse().find("/DCTDecode") != std::string::npos;
  const auto data = isJpeg ? stream.getRawStreamData() : stream.getStreamData(qpdf_dl_generalized);
  return {reinterpret_cast<const char *>(data->getBuffer()), data->getSize()};
}

inline std::string Text(const std::vector<std::uint8_t> &bytes) {
  return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

}  // namespace quillbar::test
