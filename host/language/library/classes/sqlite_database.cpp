// SPDX-License-Identifier: MIT
// SQLiteDatabase: a database in a file or in memory.
#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/language/library/classes/database.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/library/library.h"
#include "host/language/run/exceptions.h"
#include "host/runtime/builtin/builtin_classes.h"
#include "host/runtime/native_class.h"
#include "host/runtime/platform/file_system.h"

namespace quillbar::language {
namespace {

using Self = Instance<"SQLiteDatabase">;
using FolderItem = Instance<"FolderItem">;
using RowSet = Instance<"RowSet">;
using host::ArrayHandle;
using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
using host::Value;
namespace native = host::native;

struct DatabaseData {
  ObjectHandle file;
  double timeout = 5;
  std::optional<Connection> connection;
};

DatabaseData &Of(Object self) { return NativeClass<DatabaseData>::Of(self); }

Connection &ConnectionOf(Object self) {
  DatabaseData &database = Of(self);
  if (!database.connection) {
    throw LibraryError{ExceptionKind::kDatabase, "the database isn't connected; call Connect or CreateDatabase first"};
  }
  return *database.connection;
}

void Open(Self *self, bool mayCreate) {
  DatabaseData &database = Of(self);
  database.connection.reset();
  std::string path;
  if (database.file) path = host::platform::Utf8Path(host::PathOf(*host::Host::Current(), database.file));
  database.connection.emplace(path, mayCreate);
  database.connection->SetTimeout(database.timeout);
}

void Connect(Self *self) { Open(self, false); }
void CreateDatabase(Self *self) {
  if (!Of(self).file)
    throw LibraryError{ExceptionKind::kDatabase, "DatabaseFile is Nil, so there is no file to create"};
  Open(self, true);
}
void Close(Self *self) { Of(self).connection.reset(); }

void BeginTransaction(Self *self) { ConnectionOf(self).Execute("BEGIN", {}); }
void CommitTransaction(Self *self) { ConnectionOf(self).Execute("COMMIT", {}); }
void RollbackTransaction(Self *self) { ConnectionOf(self).Execute("ROLLBACK", {}); }

RowSet *Tables(Self *self) {
  return native::Give<RowSet>(MakeRowSet(ConnectionOf(self).Select(
      "SELECT name AS TableName FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite_%' ORDER BY name",
      {})));
}

RowSet *TableColumns(Self *self, String table) {
  return native::Give<RowSet>(MakeRowSet(ConnectionOf(self).Select(
      "SELECT name AS ColumnName, type AS FieldType, pk > 0 AS IsPrimary, \"notnull\" AS \"NotNull\", "
      "dflt_value AS DefaultValue FROM pragma_table_info(?)",
      {Value(StringHandle(table))})));
}

FolderItem *DatabaseFile(Self *self) { return native::Give<FolderItem>(Of(self).file); }
void SetDatabaseFile(Self *self, std::intptr_t, FolderItem *file) { Of(self).file = ObjectHandle(file); }
std::int64_t LastRowId(Self *self) { return ConnectionOf(self).LastRowId(); }
Boolean IsConnected(Self *self) { return Of(self).connection ? 1 : 0; }
String LibraryVersion(Self *) { return native::Give(StringHandle::FromUtf8(SqliteVersion())); }
double Timeout(Self *self) { return Of(self).timeout; }
void SetTimeout(Self *self, std::intptr_t, double seconds) {
  Of(self).timeout = seconds;
  if (Of(self).connection) Of(self).connection->SetTimeout(seconds);
}

using SqliteDatabaseMembers = Members<
    Methods<native::Method<"Connect()", Connect>, native::Method<"CreateDatabase()", CreateDatabase>,
            native::Method<"Close()", Close>, native::Method<"BeginTransaction()", BeginTransaction>,
            native::Method<"CommitTransaction()", CommitTransaction>,
            native::Method<"RollbackTransaction()", RollbackTransaction>, native::Method<"Tables() as RowSet", Tables>,
            native::Method<"TableColumns(table as String) as RowSet", TableColumns>>,
    Properties<native::Property<"DatabaseFile", "FolderItem", DatabaseFile, SetDatabaseFile>,
               native::ReadOnlyProperty<"LastRowID", "Int64", LastRowId>,
               native::ReadOnlyProperty<"IsConnected", "Boolean", IsConnected>,
               native::ReadOnlyProperty<"LibraryVersion", "String", LibraryVersion>,
               native::Property<"Timeout", "Double", Timeout, SetTimeout>>>;

// -- Statements -----------------------------------------------------------------------------------

/// The values for question marks; a single array stands for its elements.
std::vector<Value> ValuesOf(const ArrayHandle &list) {
  std::vector<Value> values;
  const auto append = [&](const ArrayHandle &array) {
    for (std::size_t i = 0; i < array.Size(); ++i) values.push_back(array.At(static_cast<std::int64_t>(i)));
  };
  const bool isArray = list.Size() == 1 && list.At(0).type().IsArray();
  append(isArray ? list.At(0).AsArray() : list);
  return values;
}

std::string Utf8(const StringHandle &text) { return text.Utf8(); }

void ExecuteSql(const ObjectHandle &database, const StringHandle &sql, const ArrayHandle &values) {
  const std::string text = Utf8(sql);
  ConnectionOf(database.Get()).Execute(text, ValuesOf(values));
}

ObjectHandle SelectSql(const ObjectHandle &database, const StringHandle &sql, const ArrayHandle &values) {
  const std::string text = Utf8(sql);
  return MakeRowSet(ConnectionOf(database.Get()).Select(text, ValuesOf(values)));
}

std::int64_t AddRow(const ObjectHandle &database, const StringHandle &table, const ObjectHandle &row) {
  if (!row) throw LibraryError{ExceptionKind::kNilObject, "there is no row to add: Nil"};
  const RowData &data = RowOf(row.Get());
  std::string columns, marks;
  for (const std::string &name : *data.names) {
    columns += (columns.empty() ? "" : ", ") + QuotedName(name);
    marks += marks.empty() ? "?" : ", ?";
  }
  const std::string quoted = QuotedName(Utf8(table));
  const std::string sql = columns.empty() ? fmt::format("INSERT INTO {} DEFAULT VALUES", quoted)
                                          : fmt::format("INSERT INTO {} ({}) VALUES ({})", quoted, columns, marks);
  Connection &connection = ConnectionOf(database.Get());
  connection.Execute(sql, data.values);
  return connection.LastRowId();
}

/// What `For Each` walks through.
ArrayHandle RowsOf(const ObjectHandle &rowSet) {
  host::Host &host = *host::Host::Current();
  ArrayHandle rows = ArrayHandle::Create(host::Type::Class(host.Class("DatabaseRow")));
  for (const std::shared_ptr<RowData> &row : ResultOf(rowSet.Get()).rows) rows.Append(MakeDatabaseRow(row));
  return rows;
}

using namespace library;

constexpr LibraryFunction kDatabaseFunctions[] = {
    kListMethod<"SQLiteDatabase", "ExecuteSQL(sql As String, values() As Variant)", &ExecuteSql>,
    kListMethod<"SQLiteDatabase", "SelectSQL(sql As String, values() As Variant) As RowSet", &SelectSql>,
    kMethod<"SQLiteDatabase", "AddRow(table As String, row As DatabaseRow) As Int64", &AddRow>,

    kMethod<"RowSet", "Iterate() As DatabaseRow()", &RowsOf>,
};

}  // namespace

std::span<const LibraryFunction> DatabaseFunctions() { return kDatabaseFunctions; }

ClassRecord &SqliteDatabaseRecord() {
  return NativeClass<DatabaseData>::Record<SqliteDatabaseMembers>("SQLiteDatabase");
}

}  // namespace quillbar::language
