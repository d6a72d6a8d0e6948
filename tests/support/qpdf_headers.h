// SPDX-License-Identifier: MIT
/// The classes of qpdf's that read and write files.
#pragma once

#include <qpdf/DLL.h>

#if QPDF_MAJOR_VERSION < 12
// clang refuses this release's JSON as C++20. The other headers only name the class, and the tests don't use it.
#define JSON_HH
class JSON;
#endif

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>
