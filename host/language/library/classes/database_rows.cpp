// SPDX-License-Identifier: MIT
// RowSet, DatabaseRow and DatabaseColumn: what a query gives, and what is added to a table.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <utility>

#include "host/language/library/classes/database.h"
#include "host/language/library/classes/date_time.h"
#include "host/language/library/classes/language_classes.h"
#include "host/language/run/exceptions.h"
#include "host/language/values/variant.h"
#include "host/runtime/native_class.h"

namespace quillbar::language {
namespace {

using host::NativeClass;
using host::ObjectHandle;
using host::StringHandle;
using host::Value;
namespace native = host::native;

using RowSetSelf = Instance<"RowSet">;
using RowSelf = Instance<"DatabaseRow">;
using ColumnSelf = Instance<"DatabaseColumn">;
using DateTimeObject = Instance<"DateTime">;

/// The position is the row's index; -1 is before the first one, the number of rows after the last one.
struct RowSetData {
  QueryResult result;
  std::int64_t position = 0;

  std::int64_t Count() const { return static_cast<std::int64_t>(result.rows.size()); }
};

struct RowHolder {
  std::shared_ptr<RowData> row;
};

struct ColumnData {
  std::shared_ptr<RowData> row;
  std::size_t index = 0;
};

RowSetData &Rows(Object self) { return NativeClass<RowSetData>::Of(self); }
std::shared_ptr<RowData> &Row(Object self) { return NativeClass<RowHolder>::Of(self).row; }
ColumnData &Column(Object self) { return NativeClass<ColumnData>::Of(self); }

ObjectHandle MakeColumn(const std::shared_ptr<RowData> &row, std::size_t index) {
  const host::Host &host = *host::Host::Current();
  ObjectHandle made = host::Host::Current()->Create(host.Class("DatabaseColumn"), nullptr, {});
  Column(made.Get()) = {row, index};
  return made;
}

// -- RowSet ---------------------------------------------------------------------------------------

const std::shared_ptr<RowData> &CurrentRow(RowSetSelf *self) {
  RowSetData &rows = Rows(self);
  if (rows.position < 0 || rows.position >= rows.Count()) {
    throw LibraryError{ExceptionKind::kOutOfBounds,
                       rows.Count() == 0 ? "the RowSet has no rows" : "the RowSet isn't at one of its rows"};
  }
  return rows.result.rows[static_cast<std::size_t>(rows.position)];
}

ColumnSelf *ColumnOfCurrent(RowSetSelf *self, String name) {
  return native::Give<ColumnSelf>(MakeDatabaseColumn(CurrentRow(self), StringHandle(name).Utf8()));
}
ColumnSelf *ColumnOfCurrentAt(RowSetSelf *self, Integer index) {
  return native::Give<ColumnSelf>(MakeDatabaseColumn(CurrentRow(self), std::int64_t{index}));
}

void MoveToNextRow(RowSetSelf *self) {
  RowSetData &rows = Rows(self);
  rows.position = std::min(rows.position + 1, rows.Count());
}
void MoveToPreviousRow(RowSetSelf *self) {
  RowSetData &rows = Rows(self);
  rows.position = std::max<std::int64_t>(rows.position - 1, -1);
}
void MoveToFirstRow(RowSetSelf *self) { Rows(self).position = 0; }
void MoveToLastRow(RowSetSelf *self) { Rows(self).position = std::max<std::int64_t>(Rows(self).Count() - 1, 0); }

/// Gives the memory of the rows back.
void CloseRows(RowSetSelf *self) { Rows(self) = {}; }

Boolean AfterLastRow(RowSetSelf *self) { return Rows(self).position >= Rows(self).Count() ? 1 : 0; }
Boolean BeforeFirstRow(RowSetSelf *self) { return Rows(self).position < 0 || Rows(self).Count() == 0 ? 1 : 0; }
Integer RowCount(RowSetSelf *self) { return static_cast<Integer>(Rows(self).Count()); }
Integer ColumnCount(RowSetSelf *self) { return static_cast<Integer>(Rows(self).result.names->size()); }
Integer LastColumnIndex(RowSetSelf *self) { return ColumnCount(self) - 1; }

void ConstructRowSet(RowSetSelf *) {}

using RowSetMembers = Members<
    Methods<Method<"Constructor()", ConstructRowSet, kPrivateConstructorFlags>,
            native::Method<"Column(name as String) as DatabaseColumn", ColumnOfCurrent>,
            native::Method<"ColumnAt(index as Integer) as DatabaseColumn", ColumnOfCurrentAt>,
            native::Method<"MoveToNextRow()", MoveToNextRow>, native::Method<"MoveToPreviousRow()", MoveToPreviousRow>,
            native::Method<"MoveToFirstRow()", MoveToFirstRow>, native::Method<"MoveToLastRow()", MoveToLastRow>,
            native::Method<"Close()", CloseRows>>,
    Properties<native::ReadOnlyProperty<"AfterLastRow", "Boolean", AfterLastRow>,
               native::ReadOnlyProperty<"BeforeFirstRow", "Boolean", BeforeFirstRow>,
               native::ReadOnlyProperty<"RowCount", "Integer", RowCount>,
               native::ReadOnlyProperty<"ColumnCount", "Integer", ColumnCount>,
               native::ReadOnlyProperty<"LastColumnIndex", "Integer", LastColumnIndex>>>;

// -- DatabaseRow ----------------------------------------------------------------------------------

void ConstructRow(RowSelf *self) {
  Row(self) = std::make_shared<RowData>();
  Row(self)->names = std::make_shared<std::vector<std::string>>();
}

/// A row that a script makes gets the column that is asked for.
ColumnSelf *ColumnOfRow(RowSelf *self, String name) {
  RowData &row = RowOf(self);
  const std::string text = StringHandle(name).Utf8();
  if (!row.isOfTable && row.Find(text) == RowData::kNone) {
    row.names->push_back(text);
    row.values.push_back(Value::Nil());
  }
  return native::Give<ColumnSelf>(MakeDatabaseColumn(Row(self), text));
}
ColumnSelf *ColumnOfRowAt(RowSelf *self, Integer index) {
  return native::Give<ColumnSelf>(MakeDatabaseColumn(Row(self), std::int64_t{index}));
}
Integer ColumnCountOfRow(RowSelf *self) { return static_cast<Integer>(RowOf(self).values.size()); }
Integer LastColumnIndexOfRow(RowSelf *self) { return ColumnCountOfRow(self) - 1; }

using DatabaseRowMembers =
    Members<Methods<native::Method<"Constructor()", ConstructRow>,
                    native::Method<"Column(name as String) as DatabaseColumn", ColumnOfRow>,
                    native::Method<"ColumnAt(index as Integer) as DatabaseColumn", ColumnOfRowAt>>,
            Properties<native::ReadOnlyProperty<"ColumnCount", "Integer", ColumnCountOfRow>,
                       native::ReadOnlyProperty<"LastColumnIndex", "Integer", LastColumnIndexOfRow>>>;

// -- DatabaseColumn -------------------------------------------------------------------------------

const Value &ValueOfColumn(ColumnSelf *self) { return Column(self).row->values[Column(self).index]; }

void Store(ColumnSelf *self, Value value) {
  ColumnData &column = Column(self);
  if (column.row->isOfTable) {
    throw LibraryError{ExceptionKind::kUnsupportedOperation,
                       "the columns of a RowSet can only be read; change the table with ExecuteSQL"};
  }
  column.row->values[column.index] = std::move(value);
}

String Name(ColumnSelf *self) {
  return native::Give(StringHandle::FromUtf8((*Column(self).row->names)[Column(self).index]));
}

Variant VariantValue(ColumnSelf *self) { return native::Give(Value(ValueOfColumn(self))); }
void SetVariantValue(ColumnSelf *self, std::intptr_t, Variant value) { Store(self, native::ValueOf(value)); }

String StringValue(ColumnSelf *self) { return native::Give(variant::AsText(ValueOfColumn(self))); }
void SetStringValue(ColumnSelf *self, std::intptr_t, String value) { Store(self, Value(StringHandle(value))); }

Integer IntegerValue(ColumnSelf *self) { return static_cast<Integer>(variant::AsInteger(ValueOfColumn(self))); }
void SetIntegerValue(ColumnSelf *self, std::intptr_t, Integer value) { Store(self, Value(value)); }

std::int64_t Int64Value(ColumnSelf *self) { return variant::AsInteger(ValueOfColumn(self)); }
void SetInt64Value(ColumnSelf *self, std::intptr_t, std::int64_t value) { Store(self, Value(value)); }

double DoubleValue(ColumnSelf *self) { return variant::AsDouble(ValueOfColumn(self)); }
void SetDoubleValue(ColumnSelf *self, std::intptr_t, double value) { Store(self, Value(value)); }

Currency CurrencyValue(ColumnSelf *self) {
  return Currency{variant::As(ValueOfColumn(self), host::TypeKind::kCurrency).RawInteger()};
}
void SetCurrencyValue(ColumnSelf *self, std::intptr_t, Currency value) {
  Store(self, Value::OfInteger(host::TypeKind::kCurrency, static_cast<std::int64_t>(value)));
}

/// SQLite has no Booleans of its own: numbers other than 0, and the texts that stand for them, are True.
Boolean BooleanValue(ColumnSelf *self) {
  const Value &value = ValueOfColumn(self);
  if (value.type().IsString() && variant::IsNumeric(value)) return variant::AsDouble(value) != 0 ? 1 : 0;
  return variant::AsBoolean(value) ? 1 : 0;
}
void SetBooleanValue(ColumnSelf *self, std::intptr_t, Boolean value) { Store(self, Value(value != 0)); }

/// Nil for NULL; a text as `DateTime.FromString` reads it, a number as seconds from 1970.
DateTimeObject *DateTimeValue(ColumnSelf *self) {
  const Value &value = ValueOfColumn(self);
  if (value.IsNil()) return nullptr;
  if (value.type().IsObject()) {
    return native::Give<DateTimeObject>(
        variant::As(value, host::Type::Class(host::Host::Current()->Class("DateTime"))).AsObject());
  }
  if (value.type().IsString()) {
    return native::Give<DateTimeObject>(MakeDateTime(ReadMoment(value.Utf8(), platform::CurrentTimeZone())));
  }
  return native::Give<DateTimeObject>(
      host::Host::Current()->Create("DateTime", {Value(variant::AsDouble(value)), Value(ObjectHandle())}));
}
void SetDateTimeValue(ColumnSelf *self, std::intptr_t, DateTimeObject *value) {
  Store(self, value == nullptr ? Value::Nil() : Value(ObjectHandle(value)));
}

void ConstructColumn(ColumnSelf *) {}

using DatabaseColumnMembers =
    Members<Methods<Method<"Constructor()", ConstructColumn, kPrivateConstructorFlags>>,
            Properties<native::ReadOnlyProperty<"Name", "String", Name>,
                       native::Property<"Value", "Variant", VariantValue, SetVariantValue>,
                       native::Property<"StringValue", "String", StringValue, SetStringValue>,
                       native::Property<"IntegerValue", "Integer", IntegerValue, SetIntegerValue>,
                       native::Property<"Int64Value", "Int64", Int64Value, SetInt64Value>,
                       native::Property<"DoubleValue", "Double", DoubleValue, SetDoubleValue>,
                       native::Property<"CurrencyValue", "Currency", CurrencyValue, SetCurrencyValue>,
                       native::Property<"BooleanValue", "Boolean", BooleanValue, SetBooleanValue>,
                       native::Property<"DateTimeValue", "DateTime", DateTimeValue, SetDateTimeValue>>>;

}  // namespace

ObjectHandle MakeRowSet(QueryResult result) {
  ObjectHandle made = host::Host::Current()->Create(host::Host::Current()->Class("RowSet"), nullptr, {});
  Rows(made.Get()).result = std::move(result);
  return made;
}

const QueryResult &ResultOf(Object rowSet) { return Rows(rowSet).result; }

ObjectHandle MakeDatabaseRow(std::shared_ptr<RowData> row) {
  ObjectHandle made = host::Host::Current()->Create("DatabaseRow");
  Row(made.Get()) = std::move(row);
  return made;
}

RowData &RowOf(Object databaseRow) { return *Row(databaseRow); }

ObjectHandle MakeDatabaseColumn(const std::shared_ptr<RowData> &row, std::string_view name) {
  const std::size_t index = row->Find(name);
  if (index == RowData::kNone) {
    throw LibraryError{ExceptionKind::kDatabase,
                       fmt::format("there is no column \"{}\"; there is {}", name, fmt::join(*row->names, ", "))};
  }
  return MakeColumn(row, index);
}

ObjectHandle MakeDatabaseColumn(const std::shared_ptr<RowData> &row, std::int64_t index) {
  if (index < 0 || static_cast<std::uint64_t>(index) >= row->values.size()) {
    throw LibraryError{ExceptionKind::kOutOfBounds,
                       fmt::format("there are {} columns, so there is no index {}", row->values.size(), index)};
  }
  return MakeColumn(row, static_cast<std::size_t>(index));
}

ClassRecord &RowSetRecord() { return NativeClass<RowSetData>::Record<RowSetMembers>("RowSet"); }
ClassRecord &DatabaseRowRecord() { return NativeClass<RowHolder>::Record<DatabaseRowMembers>("DatabaseRow"); }
ClassRecord &DatabaseColumnRecord() { return NativeClass<ColumnData>::Record<DatabaseColumnMembers>("DatabaseColumn"); }

}  // namespace quillbar::language
