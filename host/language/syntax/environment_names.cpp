// SPDX-License-Identifier: MIT
#include "host/language/syntax/environment_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "host/language/syntax/names.h"

namespace quillbar::language {
namespace {

constexpr std::string_view kLineStarts[] = {
    "Aggregates", "Attributes", "Declare",  "Exception", "Global", "GoTo",   "Implements", "Inherits",
    "Namespace",  "Private",    "Property", "Protected", "Public", "Shared", "Soft",       "Structure",
};

constexpr std::string_view kOthers[] = {
    // Words.
    "WeakAddressOf",
    // Types.
    "Auto",
    "CFStringRef",
    "CString",
    "Int",
    "PString",
    "Ptr",
    "Text",
    "WindowPtr",
    "WString",
    // Classes and modules.
    "App",
    "Application",
    "Authentication",
    "BevelButton",
    "Bitmap",
    "Clipboard",
    "ConsoleApplication",
    "Control",
    "Crypto",
    "Cursor",
    "Database",
    "Date",
    "Desktop",
    "DesktopApplication",
    "DesktopButton",
    "DesktopCanvas",
    "DesktopControl",
    "DesktopLabel",
    "DesktopListBox",
    "DesktopTextField",
    "DesktopWindow",
    "DragItem",
    "EmailMessage",
    "FileType",
    "FunctionNotFoundException",
    "Graphics",
    "GraphicsPath",
    "Group2D",
    "HTMLViewer",
    "HTTPSocket",
    "Introspection",
    "IPCSocket",
    "Iterable",
    "Iterator",
    "Keyboard",
    "Label",
    "ListBox",
    "Locale",
    "MenuItem",
    "MessageDialog",
    "MySQLCommunityServer",
    "NetworkInterface",
    "Object2D",
    "ODBCDatabase",
    "OpenDialog",
    "PDFGraphics",
    "PDFException",
    "Picture",
    "PostgreSQLDatabase",
    "PreparedSQLStatement",
    "PrinterSetup",
    "Process",
    "PushButton",
    "RecordSet",
    "RegEx",
    "RegExMatch",
    "RegExOptions",
    "RegistryItem",
    "Report",
    "SaveFileDialog",
    "SecureSocket",
    "Semaphore",
    "SelectFolderDialog",
    "Serial",
    "ServerSocket",
    "Shell",
    "SMTPSecureSocket",
    "SMTPSocket",
    "Sound",
    "SQLiteBLOB",
    "SQLiteException",
    "StyledText",
    "SSLSocket",
    "StringShape",
    "TCPSocket",
    "TextArea",
    "TextConverter",
    "TextField",
    "TextShape",
    "Thread",
    "Timer",
    "UDPSocket",
    "URLConnection",
    "WebApplication",
    "WebPage",
    "WebSession",
    "Window",
    "XMLDocument",
    "XMLNode",
    "XojoScript",
    // Functions.
    "Beep",
    "BitAnd",
    "BitOr",
    "BitXor",
    "CurrentMethodName",
    "DecodeBase64",
    "DecodeHex",
    "DecodeURLComponent",
    "EncodeBase64",
    "EncodeHex",
    "EncodeURLComponent",
    "GetOpenFolderItem",
    "GetSaveFolderItem",
    "GetTemporaryFolderItem",
    "Hash",
    "MD5",
    "MessageBox",
    "MsgBox",
    "Now",
    "SHA1",
    "SHA256",
    "ShowURL",
    "UserCancelled",
};

template <class Names>
bool Has(const Names &names, std::string_view name) {
  return std::any_of(std::begin(names), std::end(names),
                     [&](std::string_view candidate) { return SameName(candidate, name); });
}

}  // namespace

bool StartsLineOfTheEnvironment(std::string_view name) { return Has(kLineStarts, name); }

bool IsNameOfTheEnvironment(std::string_view name) { return Has(kLineStarts, name) || Has(kOthers, name); }

std::string NotPartOfThisHost(std::string_view name) {
  return fmt::format("\"{}\" is not part of this host; docs/language.md lists what is", name);
}

}  // namespace quillbar::language
