// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/runtime/value.h"

struct sqlite3;

namespace quillbar::language {

/// The values of a row and the names of its columns.
struct RowData {
  std::shared_ptr<std::vector<std::string>> names;
  std::vector<host::Value> values;
  bool isOfTable = false;  // read from a database: its values aren't assigned to

  /// The column of this name, without regard to the case of A to Z; nothing when there is none.
  std::size_t Find(std::string_view name) const;
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
};

/// The result of a query: all its rows, so that the database is free for other statements meanwhile.
struct QueryResult {
  std::shared_ptr<std::vector<std::string>> names = std::make_shared<std::vector<std::string>>();
  std::vector<std::shared_ptr<RowData>> rows;
};

/// A connection to an SQLite database. Every failure is a LibraryError (kDatabase) with SQLite's message and number.
class Connection {
 public:
  /// Opens a file by its path as UTF-8, or a database in memory for an empty path. `mayCreate` says whether a file that
  /// isn't there is made.
  Connection(const std::string &path, bool mayCreate);

  /// Runs all statements of a text. `values` are what their question marks stand for, from the first statement on.
  void Execute(std::string_view sql, const std::vector<host::Value> &values);
  /// Runs the only statement of a text and takes its rows.
  QueryResult Select(std::string_view sql, const std::vector<host::Value> &values);

  /// The number of the row that was added last; 0 before the first one.
  std::int64_t LastRowId() const;
  /// How long a statement waits for a database that another program has locked.
  void SetTimeout(double seconds);

 private:
  struct Close {
    void operator()(sqlite3 *database) const;
  };
  class Statement;

  std::unique_ptr<sqlite3, Close> database_;
};

/// SQLite's version, such as "3.40.1".
std::string SqliteVersion();

/// A name as SQL writes it, whatever is in it: in quotation marks.
std::string QuotedName(std::string_view name);

}  // namespace quillbar::language
