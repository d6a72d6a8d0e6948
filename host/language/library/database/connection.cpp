// SPDX-License-Identifier: MIT
#include "host/language/library/database/connection.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/language/run/exceptions.h"
#include "host/language/values/variant.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/host.h"
#include "host/runtime/interruption.h"
#include "host/runtime/platform/file_system.h"
#include "host/runtime/sandbox.h"
#include "host/runtime/text.h"
#include "interface/declaration.h"

namespace quillbar::language {
namespace {

using host::StringHandle;
using host::TypeKind;
using host::Value;

[[noreturn]] void Fail(sqlite3 *database) {
  const int number = sqlite3_errcode(database);
  if (number == SQLITE_AUTH && host::Sandbox::IsActive()) {
    throw LibraryError{ExceptionKind::kDatabase,
                       fmt::format("{}: --sandbox allows files in its folder only", sqlite3_errmsg(database)), number};
  }
  if (number == SQLITE_NOMEM) throw LibraryError{ExceptionKind::kOutOfMemory, "there is not enough memory"};
  throw LibraryError{ExceptionKind::kDatabase, sqlite3_errmsg(database), number};
}

/// SQLite asks this between its steps; a query that is interrupted ends with an error.
int IsInterrupted(void *) { return host::Interruption::IsRequested() ? 1 : 0; }

constexpr int kStepsBetweenQuestions = 10'000;

/// SQLite asks this while it prepares a statement: those that name further files keep to the sandbox.
int AllowsAction(void *, int action, const char *first, const char *, const char *, const char *) {
  if (action == SQLITE_PRAGMA) {
    const std::string_view name(first);
    const bool namesFolder = SameName(name, "temp_store_directory") || SameName(name, "data_store_directory");
    return namesFolder ? SQLITE_DENY : SQLITE_OK;
  }
  if (action != SQLITE_ATTACH) return SQLITE_OK;
  // A name that is only computed later isn't known here, and an address says more than where the file is.
  const std::string_view file(first == nullptr ? "file:" : first);
  if (file.starts_with("file:")) return SQLITE_DENY;
  const bool isFile = !file.empty() && file != ":memory:";
  return !isFile || host::Sandbox::Allows(host::platform::PathFromUtf8(file)) ? SQLITE_OK : SQLITE_DENY;
}

}  // namespace

std::size_t RowData::Find(std::string_view name) const {
  const auto found = std::ranges::find_if(*names, [&](const std::string &own) { return SameName(own, name); });
  return found == names->end() ? kNone : static_cast<std::size_t>(found - names->begin());
}

/// A prepared statement.
class Connection::Statement {
 public:
  /// Prepares the first statement of `sql` and leaves there what follows it. There may be none, in blanks and comments.
  Statement(sqlite3 *database, std::string_view &sql) : database_(database) {
    const char *rest = nullptr;
    if (sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement_, &rest) != SQLITE_OK) {
      Fail(database);
    }
    sql.remove_prefix(static_cast<std::size_t>(rest - sql.data()));
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement &) = delete;
  Statement &operator=(const Statement &) = delete;

  bool IsEmpty() const { return statement_ == nullptr; }
  std::size_t ParameterCount() const { return static_cast<std::size_t>(sqlite3_bind_parameter_count(statement_)); }

  /// Sets parameter `index`, counted from 0.
  void Bind(std::size_t index, const Value &value) {
    const int at = static_cast<int>(index) + 1;
    if (BindValue(at, value) != SQLITE_OK) Fail(database_);
  }

  /// Whether there is another row.
  bool Step() {
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE) Fail(database_);
    return result == SQLITE_ROW;
  }

  int ColumnCount() const { return sqlite3_column_count(statement_); }
  std::string ColumnName(int index) const {
    const char *name = sqlite3_column_name(statement_, index);
    return name == nullptr ? "" : name;
  }

  Value Column(int index) const {
    switch (sqlite3_column_type(statement_, index)) {
      case SQLITE_INTEGER:
        return Value(std::int64_t{sqlite3_column_int64(statement_, index)});
      case SQLITE_FLOAT:
        return Value(sqlite3_column_double(statement_, index));
      case SQLITE_TEXT: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement_, index));
        return Value(StringHandle::FromBytes(Bytes(text, index), TextEncoding::kUtf8));
      }
      case SQLITE_BLOB: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement_, index));
        return Value(StringHandle::FromBytes(Bytes(bytes, index), TextEncoding::kRawBytes));
      }
      default:
        return Value::Nil();
    }
  }

 private:
  std::string_view Bytes(const char *start, int index) const {
    return {start == nullptr ? "" : start, static_cast<std::size_t>(sqlite3_column_bytes(statement_, index))};
  }

  int BindText(int at, const StringHandle &text) {
    if (text.Encoding() == TextEncoding::kRawBytes) return BindBytes(at, text.Bytes());
    const std::string utf8(host::text::Convert(text, TextEncoding::kUtf8).Bytes());
    return sqlite3_bind_text64(statement_, at, utf8.data(), utf8.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
  int BindBytes(int at, std::string_view bytes) {
    return bytes.empty() ? sqlite3_bind_zeroblob(statement_, at, 0)
                         : sqlite3_bind_blob64(statement_, at, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
  }

  int BindValue(int at, const Value &value) {
    const host::Type type = value.type();
    if (value.IsNone() || value.IsNil()) return sqlite3_bind_null(statement_, at);
    if (type.IsString()) return BindText(at, value.AsString());
    if (type.IsObject()) {
      host::Host &host = *host::Host::Current();
      if (type.objectClass()->IsSubclassOf(host.Class("MemoryBlock"))) {
        return BindBytes(at, host::BytesOf(host, value.AsObject()));
      }
      // A DateTime has a text; for other objects this says what is wrong.
      return BindText(at, variant::AsText(value));
    }
    // SQLite computes with a Currency as with any number. It comes back to the last place as long as it has no more than
    // fifteen digits.
    if (host::IsFloating(type.kind()) || type.kind() == TypeKind::kCurrency)
      return sqlite3_bind_double(statement_, at, value.AsDouble());
    if (type.IsEnumeration() || type.kind() == TypeKind::kBoolean || host::IsInteger(type.kind())) {
      return sqlite3_bind_int64(statement_, at, value.AsInteger());
    }
    return BindText(at, variant::AsText(value));
  }

  sqlite3 *database_;
  sqlite3_stmt *statement_ = nullptr;
};

void Connection::Close::operator()(sqlite3 *database) const { sqlite3_close_v2(database); }

Connection::Connection(const std::string &path, bool mayCreate) {
  sqlite3 *database = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | (mayCreate || path.empty() ? SQLITE_OPEN_CREATE : 0);
  const int result = sqlite3_open_v2(path.empty() ? ":memory:" : path.c_str(), &database, flags, nullptr);
  database_.reset(database);
  if (database == nullptr) throw LibraryError{ExceptionKind::kOutOfMemory, "there is not enough memory"};
  // A file that isn't a database is only noticed when it is read.
  const auto fail = [&] {
    throw LibraryError{ExceptionKind::kDatabase,
                       fmt::format("opening \"{}\" failed: {}", path, sqlite3_errmsg(database)),
                       sqlite3_errcode(database)};
  };
  if (result != SQLITE_OK) fail();
  if (host::Sandbox::IsActive()) {
    sqlite3_set_authorizer(database, AllowsAction, nullptr);
    // What else would be written to the system's folder for temporary files.
    sqlite3_exec(database, "PRAGMA temp_store = MEMORY", nullptr, nullptr, nullptr);
  }
  sqlite3_progress_handler(database, kStepsBetweenQuestions, IsInterrupted, nullptr);
  constexpr double kUsualTimeout = 5;
  SetTimeout(kUsualTimeout);
  if (sqlite3_exec(database, "PRAGMA schema_version", nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

void Connection::Execute(std::string_view sql, const std::vector<Value> &values) {
  std::size_t used = 0;
  while (!sql.empty()) {
    Statement statement(database_.get(), sql);
    if (statement.IsEmpty()) continue;
    const std::size_t count = statement.ParameterCount();
    if (count > values.size() - used) {
      throw LibraryError{
          ExceptionKind::kDatabase,
          fmt::format("{} given, but there are more question marks",
                      values.size() == 1 ? std::string("1 value is") : fmt::format("{} values are", values.size())),
          SQLITE_RANGE};
    }
    for (std::size_t i = 0; i < count; ++i) statement.Bind(i, values[used++]);
    while (statement.Step()) {
    }
  }
  if (used < values.size()) {
    throw LibraryError{ExceptionKind::kDatabase,
                       fmt::format("{} values are given, but only {} can be used", values.size(), used), SQLITE_RANGE};
  }
}

QueryResult Connection::Select(std::string_view sql, const std::vector<Value> &values) {
  Statement statement(database_.get(), sql);
  if (statement.IsEmpty()) throw LibraryError{ExceptionKind::kDatabase, "there is no statement", SQLITE_MISUSE};
  while (!sql.empty()) {
    if (!Statement(database_.get(), sql).IsEmpty()) {
      throw LibraryError{ExceptionKind::kDatabase, "a query is one statement, but there are more", SQLITE_MISUSE};
    }
  }
  if (statement.ParameterCount() != values.size()) {
    throw LibraryError{ExceptionKind::kDatabase,
                       fmt::format("the query has {} question marks, but the values are {}", statement.ParameterCount(),
                                   values.size()),
                       SQLITE_RANGE};
  }
  for (std::size_t i = 0; i < values.size(); ++i) statement.Bind(i, values[i]);
  QueryResult result;
  const int columns = statement.ColumnCount();
  for (int i = 0; i < columns; ++i) result.names->push_back(statement.ColumnName(i));
  while (statement.Step()) {
    auto row = std::make_shared<RowData>();
    row->names = result.names;
    row->isOfTable = true;
    row->values.reserve(static_cast<std::size_t>(columns));
    for (int i = 0; i < columns; ++i) row->values.push_back(statement.Column(i));
    result.rows.push_back(std::move(row));
  }
  return result;
}

std::int64_t Connection::LastRowId() const { return sqlite3_last_insert_rowid(database_.get()); }

void Connection::SetTimeout(double seconds) {
  constexpr double kLongest = 1e6;
  sqlite3_busy_timeout(database_.get(), static_cast<int>(std::clamp(seconds, 0.0, kLongest) * 1000));
}

std::string SqliteVersion() { return sqlite3_libversion(); }

std::string QuotedName(std::string_view name) {
  std::string quoted = "\"";
  for (const char character : name) {
    quoted += character;
    if (character == '"') quoted += character;
  }
  return quoted + '"';
}

}  // namespace quillbar::language
