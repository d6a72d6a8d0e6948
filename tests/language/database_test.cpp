// SPDX-License-Identifier: MIT
#include <filesystem>

#include "host/runtime/platform/file_system.h"
#include "tests/language/script_fixture.h"
#include "tests/support/temporary_folder.h"

namespace quillbar::language::testing {
namespace {

class DatabaseTest : public ScriptTest {
 protected:
  // Runs statements with a database in memory, which has a table.
  std::string InMemory(const std::string &statements) {
    return Output(
        "Dim db As New SQLiteDatabase\ndb.Connect\n"
        "db.ExecuteSQL(\"CREATE TABLE t (id INTEGER PRIMARY KEY, name TEXT, price REAL, data)\")\n" +
        statements);
  }
  std::string ErrorOf(const std::string &statement) {
    const std::string text =
        "Dim db As New SQLiteDatabase\ndb.Connect\ndb.ExecuteSQL(\"CREATE TABLE t (id INTEGER PRIMARY KEY, name "
        "TEXT)\")\nTry\n" +
        statement + "\nCatch e As DatabaseException\nPrint Str(e.ErrorNumber) + \" \" + e.Message\nEnd Try";
    return Output(text);
  }
};

TEST_F(DatabaseTest, ValuesComeBackAsTheyWereGiven) {
  EXPECT_EQ(InMemory(R"~(
db.ExecuteSQL("INSERT INTO t (name, price, data) VALUES (?, ?, ?)", "Grüße' ""x""", 12.5, 9007199254740993)
db.ExecuteSQL("INSERT INTO t (name, data) VALUES (?, ?)", ConvertEncoding("ä", Encodings.ISOLatin1), Nil)
db.ExecuteSQL("INSERT INTO t (name, data) VALUES (?, ?)", "", True)
Dim rows As RowSet = db.SelectSQL("SELECT * FROM t ORDER BY id")
Print rows.Column("name").StringValue
Print rows.Column("PRICE").DoubleValue
Print rows.ColumnAt(3).Int64Value
Print rows.ColumnAt(1).Name
rows.MoveToNextRow
Print rows.Column("name").StringValue
Print LenB(rows.Column("name").StringValue)
Print rows.Column("data").Value.IsNull
Print rows.Column("data").IntegerValue
Print rows.Column("data").DateTimeValue Is Nil
Print "[" + rows.Column("data").StringValue + "]"
rows.MoveToNextRow
Print rows.Column("name").Value.IsNull
Print rows.Column("data").BooleanValue
)~"),
            "Grüße' \"x\"\n12.5\n9007199254740993\nname\nä\n2\nTrue\n0\nTrue\n[]\nFalse\nTrue\n");
}

TEST_F(DatabaseTest, AmountsAreExactAndCompareAsNumbers) {
  EXPECT_EQ(InMemory(R"~(
Dim amount As Currency = 12345678901.2345
db.ExecuteSQL("INSERT INTO t (data) VALUES (?)", amount)
Dim row As New DatabaseRow
row.Column("data").CurrencyValue = -0.1
Print db.AddRow("t", row)
Dim limit As Currency = 9.5
Dim rows As RowSet = db.SelectSQL("SELECT data, typeof(data) FROM t WHERE data + 0 > ?", limit)
Print rows.RowCount
Print rows.ColumnAt(1).StringValue
Dim back As Currency = rows.Column("data").CurrencyValue
Print back = amount
Print back
Print db.SelectSQL("SELECT sum(data) FROM t").ColumnAt(0).CurrencyValue
db.ExecuteSQL("UPDATE t SET data = '1e300'")
Try
  back = db.SelectSQL("SELECT data FROM t").ColumnAt(0).CurrencyValue
Catch e As OutOfBoundsException
  Print "out of bounds"
End Try
)~"),
            "2\n1\nreal\nTrue\n12345678901.2345\n12345678901.1345\nout of bounds\n");
}

TEST_F(DatabaseTest, BytesAreStoredAsBytes) {
  EXPECT_EQ(InMemory(R"~(
Dim block As New MemoryBlock(3)
block.UInt8Value(0) = 0
block.UInt8Value(1) = 255
db.ExecuteSQL("INSERT INTO t (data) VALUES (?)", block)
db.ExecuteSQL("INSERT INTO t (data) VALUES (?)", ChrB(200) + ChrB(0))
For Each row As DatabaseRow In db.SelectSQL("SELECT data, typeof(data), hex(data) FROM t")
  Print Str(LenB(row.ColumnAt(0).StringValue)) + " " + row.ColumnAt(1).StringValue + " " + row.ColumnAt(2).StringValue
Next
)~"),
            "3 blob 00FF00\n2 blob C800\n");
}

TEST_F(DatabaseTest, DatesAreStoredAsSqlWritesThem) {
  EXPECT_EQ(InMemory(R"~(
db.ExecuteSQL("INSERT INTO t (data) VALUES (?), ('2026-03-01'), (86400)", New DateTime(2024, 2, 29, 8))
For Each row As DatabaseRow In db.SelectSQL("SELECT data FROM t ORDER BY id LIMIT 2")
  Print row.Column("data").DateTimeValue.ToString("d MMM y H:mm")
Next
Print db.SelectSQL("SELECT data FROM t WHERE id = 3").Column("data").DateTimeValue.SecondsFrom1970
)~"),
            "29 Feb 2024 8:00\n1 Mar 2026 0:00\n86400\n");
}

TEST_F(DatabaseTest, RowsCanBeWalkedThroughInEveryWay) {
  EXPECT_EQ(InMemory(R"~(
For i As Integer = 1 To 3
  db.ExecuteSQL("INSERT INTO t (name) VALUES (?)", "n" + Str(i))
Next
Dim rows As RowSet = db.SelectSQL("SELECT name FROM t ORDER BY id")
Print Str(rows.RowCount) + Str(rows.ColumnCount) + Str(rows.LastColumnIndex)
While Not rows.AfterLastRow
  Print rows.Column("name").StringValue
  rows.MoveToNextRow
Wend
rows.MoveToPreviousRow
Print rows.Column("name").StringValue
rows.MoveToFirstRow
rows.MoveToPreviousRow
Print rows.BeforeFirstRow
rows.MoveToLastRow
Print rows.Column("name").StringValue
For Each row As DatabaseRow In rows
  If row.Column("name").StringValue = "n1" Then Continue
  Print row.ColumnAt(row.LastColumnIndex).StringValue
Next
For Each row As DatabaseRow In db.SelectSQL("SELECT * FROM t WHERE id > 5")
  Print "none"
Next
rows.Close
Print rows.RowCount
Dim empty As RowSet = db.SelectSQL("SELECT * FROM t WHERE id > 5")
Print empty.AfterLastRow And empty.BeforeFirstRow
)~"),
            "310\nn1\nn2\nn3\nn3\nTrue\nn3\nn2\nn3\n0\nTrue\n");
}

TEST_F(DatabaseTest, RowsStayWhenTheTableChanges) {
  EXPECT_EQ(InMemory(R"~(
db.ExecuteSQL("INSERT INTO t (name) VALUES ('a'), ('b')")
For Each row As DatabaseRow In db.SelectSQL("SELECT id, name FROM t")
  db.ExecuteSQL("DELETE FROM t WHERE id = ?", row.Column("id").IntegerValue)
  Print row.Column("name").StringValue
Next
db.ExecuteSQL("DROP TABLE t")
Dim rows As RowSet = db.SelectSQL("SELECT 7 AS n")
db.Close
Print rows.Column("n").IntegerValue
)~"),
            "a\nb\n7\n");
}

TEST_F(DatabaseTest, RowsAreAdded) {
  EXPECT_EQ(InMemory(R"~(
Dim row As New DatabaseRow
row.Column("name").StringValue = "pen"
row.Column("price").DoubleValue = 1.25
row.Column("data").DateTimeValue = New DateTime(2026, 1, 2)
Print db.AddRow("t", row)
row.Column("name").Value = Nil
row.Column("data").BooleanValue = True
Print db.AddRow("t", row)
Print db.LastRowID
Print row.ColumnCount
Print db.AddRow("t", New DatabaseRow)
Dim rows As RowSet = db.SelectSQL("SELECT name, price, data FROM t")
Print rows.ColumnAt(0).StringValue + " " + rows.ColumnAt(2).StringValue
rows.MoveToNextRow
Print rows.ColumnAt(0).Value.IsNull
Print rows.ColumnAt(2).StringValue
)~"),
            "1\n2\n2\n3\n3\npen 2026-01-02 00:00:00\nTrue\n1\n");
}

TEST_F(DatabaseTest, ATransactionCountsWhenItIsCommitted) {
  EXPECT_EQ(InMemory(R"~(
db.BeginTransaction
db.ExecuteSQL("INSERT INTO t (name) VALUES ('a')")
db.RollbackTransaction
Print db.SelectSQL("SELECT count(*) FROM t").ColumnAt(0).IntegerValue
db.BeginTransaction
db.ExecuteSQL("INSERT INTO t (name) VALUES ('a'); INSERT INTO t (name) VALUES (?);", "b")
db.CommitTransaction
Print db.SelectSQL("SELECT count(*) FROM t").ColumnAt(0).IntegerValue
)~"),
            "0\n2\n");
}

TEST_F(DatabaseTest, FilesAreCreatedAndOpenedAgain) {
  const test::TemporaryFolder folder;
  const std::string path = host::platform::Utf8Path(folder / "käufe.sqlite");
  const auto run = [&](const std::string &statements) {
    return Output("Dim db As New SQLiteDatabase\ndb.DatabaseFile = New FolderItem(\"" + path + "\")\n" + statements);
  };
  EXPECT_EQ(run("Try\ndb.Connect\nCatch e As DatabaseException\nPrint e.ErrorNumber\nPrint e.Message\nEnd Try"),
            "14\nopening \"" + path + "\" failed: unable to open database file\n");
  EXPECT_EQ(run("db.CreateDatabase\ndb.ExecuteSQL(\"CREATE TABLE b (c); INSERT INTO b VALUES (5)\")\n"
                "db.BeginTransaction\ndb.ExecuteSQL(\"INSERT INTO b VALUES (6)\")\nPrint db.IsConnected\nQuit"),
            "True\n");
  EXPECT_EQ(run("db.Connect\nPrint db.SelectSQL(\"SELECT sum(c) FROM b\").ColumnAt(0).IntegerValue\n"
                "Print db.Tables.Column(\"TableName\").StringValue\nPrint db.DatabaseFile.Name\ndb.Close\n"
                "Print db.IsConnected\ndb.DatabaseFile.Delete\nPrint db.DatabaseFile.Exists"),
            "5\nb\nkäufe.sqlite\nFalse\nFalse\n")
      << "what wasn't committed is gone, and a closed file can be deleted";
}

TEST_F(DatabaseTest, AFileThatIsNoDatabaseIsNamed) {
  const test::TemporaryFolder folder;
  test::WriteFile(folder / "text.txt", std::string(2000, 'x'));
  const std::string path = host::platform::Utf8Path(folder / "text.txt");
  EXPECT_EQ(Output("Dim db As New SQLiteDatabase\ndb.DatabaseFile = New FolderItem(\"" + path +
                   "\")\nTry\ndb.Connect\nCatch e As DatabaseException\nPrint Str(e.ErrorNumber) + \" \" + e.Message\n"
                   "End Try"),
            "26 opening \"" + path + "\" failed: file is not a database\n");
}

TEST_F(DatabaseTest, WhatIsWrongIsSaid) {
  EXPECT_EQ(ErrorOf("db.ExecuteSQL(\"SELEC 1\")"), "1 near \"SELEC\": syntax error\n");
  EXPECT_EQ(ErrorOf("Dim r As RowSet = db.SelectSQL(\"SELECT * FROM nowhere\")"), "1 no such table: nowhere\n");
  EXPECT_EQ(ErrorOf("db.ExecuteSQL(\"INSERT INTO t (id) VALUES (1), (1)\")"), "19 UNIQUE constraint failed: t.id\n");
  EXPECT_EQ(ErrorOf("db.ExecuteSQL(\"INSERT INTO t (name) VALUES (?)\")"),
            "25 0 values are given, but there are more question marks\n");
  EXPECT_EQ(ErrorOf("db.ExecuteSQL(\"DELETE FROM t\", 1, 2)"), "25 2 values are given, but only 0 can be used\n");
  EXPECT_EQ(ErrorOf("Dim r As RowSet = db.SelectSQL(\"SELECT 1 WHERE 1 = ?\")"),
            "25 the query has 1 question marks, but the values are 0\n");
  EXPECT_EQ(ErrorOf("Dim r As RowSet = db.SelectSQL(\"SELECT 1; DELETE FROM t\")"),
            "21 a query is one statement, but there are more\n");
  EXPECT_EQ(ErrorOf("Dim c As DatabaseColumn = db.SelectSQL(\"SELECT 1 AS a, 2 AS b\").Column(\"c\")"),
            "0 there is no column \"c\"; there is a, b\n");
  EXPECT_EQ(ErrorOf("db.RollbackTransaction"), "1 cannot rollback - no transaction is active\n");
  EXPECT_EQ(ErrorOf("db.Close\ndb.ExecuteSQL(\"DELETE FROM t\")"),
            "0 the database isn't connected; call Connect or CreateDatabase first\n");
  EXPECT_EQ(ErrorOf("Dim r As New DatabaseRow\nr.Column(\"x\"\"y\").Value = 1\nPrint db.AddRow(\"t\", r)"),
            "1 table t has no column named x\"y\n");
  ExpectErrors(
      {{"Dim db As New SQLiteDatabase\ndb.Connect\nPrint db.SelectSQL(\"SELECT 1 WHERE 0\").ColumnAt(0).Name",
        "3:7: OutOfBoundsException: the RowSet has no rows"},
       {"Dim db As New SQLiteDatabase\ndb.Connect\ndb.SelectSQL(\"SELECT 1\").ColumnAt(0).IntegerValue = 2",
        "3:1: UnsupportedOperationException: the columns of a RowSet can only be read; change the table with "
        "ExecuteSQL"},
       {"Dim db As SQLiteDatabase\ndb.ExecuteSQL(\"x\")", "2:1: NilObjectException: \"ExecuteSQL\" was used on Nil"},
       {"Dim r As New RowSet",
        "1:10: error: objects of the class RowSet can't be made with \"New\"; methods of other classes give "
        "them"},
       {"For Each c As DatabaseRow In New MemoryBlock(1)\nNext",
        "1:30: error: \"For Each\" walks through an array, but this is MemoryBlock"}});
}

TEST_F(DatabaseTest, ManyRowsTakeLittleTime) {
  EXPECT_EQ(InMemory(R"~(
db.BeginTransaction
For i As Integer = 1 To 20000
  db.ExecuteSQL("INSERT INTO t (name, price) VALUES (?, ?)", "row " + Str(i), i)
Next
db.CommitTransaction
Dim sum As Double
For Each row As DatabaseRow In db.SelectSQL("SELECT * FROM t")
  sum = sum + row.Column("price").DoubleValue
Next
Print sum
)~"),
            "200010000\n");
}

}  // namespace
}  // namespace quillbar::language::testing
