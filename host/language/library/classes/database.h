// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "host/language/library/database/connection.h"
#include "host/runtime/handles.h"
#include "interface/values.h"

namespace quillbar::language {

/// A new RowSet with the result of a query, before its first row.
host::ObjectHandle MakeRowSet(QueryResult result);
/// The rows that a RowSet holds.
const QueryResult &ResultOf(Object rowSet);

host::ObjectHandle MakeDatabaseRow(std::shared_ptr<RowData> row);
RowData &RowOf(Object databaseRow);

/// A column of a row, by its name or its index. Throws LibraryError where the row has none.
host::ObjectHandle MakeDatabaseColumn(const std::shared_ptr<RowData> &row, std::string_view name);
host::ObjectHandle MakeDatabaseColumn(const std::shared_ptr<RowData> &row, std::int64_t index);

}  // namespace quillbar::language
