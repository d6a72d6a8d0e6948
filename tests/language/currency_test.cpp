// SPDX-License-Identifier: MIT
#include "tests/language/script_fixture.h"

namespace quillbar::language::testing {
namespace {

using CurrencyTest = ScriptTest;

TEST_F(CurrencyTest, IsExactToFourPlaces) {
  EXPECT_EQ(Output(R"(Dim sum As Currency
For i As Integer = 1 To 1000
  sum = sum + 0.1
Next
Print(sum = 100)
Print(sum)
Dim d As Double
For i As Integer = 1 To 1000
  d = d + 0.1
Next
Print(d = 100)
Dim price As Currency = 19.99
Print(price * 3)
Print(price + 0.01)
Print(-price)
Print(price \ 5)
Print(price Mod 5)
Print(price / 2)
Dim tax As Currency = price * 0.19
Print(tax)
Dim rate As Currency = 0.0825
Dim small As Currency = rate * rate
Print(small)
Dim product As Currency = price * rate
Print(product))"),
            "True\n100\nFalse\n59.97\n20\n-19.99\n3\n4.99\n9.995\n3.7981\n0.0068\n1.6492\n");
}

TEST_F(CurrencyTest, RoundsHalvesAwayFromZero) {
  ExpectPrinted({{"CType(1.00005, Currency)", "1.0001"},
                 {"CType(-1.00005, Currency)", "-1.0001"},
                 {"CType(2.00004999, Currency)", "2"},
                 {"half * half", "0.0001"},
                 {"Round(CType(2.5, Currency))", "3"},
                 {"Round(CType(-2.5, Currency))", "-3"},
                 {"Round(CType(2.4999, Currency))", "2"},
                 {"Abs(CType(-2.5, Currency))", "2.5"},
                 {"Max(CType(1, Currency), CType(2, Currency))", "2"},
                 {"CType(7.9, Integer)", "7"},
                 {"Integer(CType(7.9, Currency))", "7"}},
                "Dim half As Currency = 0.0071");
}

TEST_F(CurrencyTest, ReadsAndWritesText) {
  ExpectPrinted({{"Str(c)", "1234567.8915"},
                 {"c.ToString", "1234567.8915"},
                 {"Format(c, \"#,##0.00\")", "1,234,567.89"},
                 {"Format(c, \"0.000\")", "1234567.892"},
                 {"c.ToString(\"0\")", "1234568"},
                 {"Str(-c, \"0.00;(0.00)\")", "(1234567.89)"},
                 {"Currency.FromString(\" -12.34567 EUR\")", "-12.3457"},
                 {"Currency.FromString(\"x\")", "0"},
                 {"Currency.FromString(\"25e-1\")", "2.5"},
                 {"Currency.FromString(\"1e-99999999999999999999\")", "0"},
                 {"Currency.FromString(\"1E+2\")", "100"},
                 {"Currency.FromString(\"922337203685477.5807\")", "922337203685477.5807"},
                 {"Format(Currency.FromString(\"922337203685477.5807\"), \"0.0000\")", "922337203685477.5807"},
                 {"\"n \" + Str(CType(0.5, Currency))", "n 0.5"}},
                "Dim c As Currency = 1234567.8915");
}

TEST_F(CurrencyTest, OverflowRaises) {
  const std::string overflow =
      "OutOfBoundsException: this is beyond what a Currency can hold, "
      "922,337,203,685,477.5807";
  EXPECT_EQ(FirstError("Dim d As Double = 1e15\nDim c As Currency = d"), "2:21: " + overflow);
  for (const std::string exponent : {"15", "2147483648", "99999999999999999999"})
    EXPECT_EQ(FirstError("Print(Currency.FromString(\"1e" + exponent + "\"))"), "1:7: " + overflow);
  EXPECT_EQ(FirstError("Dim c As Currency = 900000000000000\nPrint(c + c)"), "2:7: " + overflow);
  EXPECT_EQ(FirstError("Dim c As Currency = -900000000000000\nPrint(c - 900000000000000)"), "2:7: " + overflow);
  EXPECT_EQ(FirstError("Dim c As Currency = 40000000\nPrint(c * c)"), "2:7: " + overflow);
  EXPECT_EQ(FirstError("Dim zero As Double\nDim c As Currency = zero / zero"), "2:21: " + overflow);
  EXPECT_EQ(FirstError("Dim c As Currency = 1\nPrint(c \\ 0)"),
            "2:7: DivideByZeroException: an amount was divided by zero");
  EXPECT_EQ(FirstError("Const kTooMuch As Currency = 1e15"),
            "1:30: error: this is beyond what a Currency can hold, "
            "922,337,203,685,477.5807");
  EXPECT_EQ(Output("Dim c As Currency = 30000000\nPrint(c * c)"), "900000000000000\n");
}

TEST_F(CurrencyTest, WorksInContainersLoopsAndVariants) {
  EXPECT_EQ(Output(R"(Const kFee As Currency = 0.35
Dim prices() As Currency = Array(2.5, 10, 1)
prices.Append(kFee)
prices.Sort
For Each p As Currency In prices
  Print(p)
Next
Print(prices.IndexOf(2.5))
For c As Currency = 0.5 To 2
  Print(c)
Next
For c As Currency = 1 DownTo 0.5 Step 0.25
  Print(c)
Next
Dim v As Variant = kFee
Print(v.Type)
Print(v.CurrencyValue + v)
v = "12.34567"
Print(v.CurrencyValue)
Print(Twice(kFee))
Function Twice(amount As Currency) As Currency
  Return amount * 2
End Function
Class Item
  Price As Currency = 1.5
End Class
Dim item As New Item
item.Price += 0.25
Print(item.Price)
Print(kFee < 0.36 And kFee = 0.35 And kFee > 0))"),
            "0.35\n1\n2.5\n10\n2\n0.5\n1.5\n1\n0.75\n0.5\n6\n0.7\n12.3457\n0.7\n1.75\nTrue\n");
}

TEST_F(CurrencyTest, FormatRoundsHalvesOfDecimalDigits) {
  ExpectPrinted({{"Format(0.125, \"0.00\")", "0.13"},
                 {"Format(-0.125, \"0.00\")", "-0.13"},
                 {"Format(2.5, \"0\")", "3"},
                 {"Format(3.5, \"0\")", "4"},
                 {"Format(1.005, \"0.00\")", "1.01"},
                 {"Format(0.285, \"0%\")", "29%"},
                 {"Format(0.0045, \"0.00\")", "0.00"},
                 {"Format(9.995, \"0.00\")", "10.00"},
                 {"Format(0.5, \"#\")", "1"},
                 {"Format(0.4, \"0\")", "0"},
                 {"Format(12345, \"0.0e+00\")", "1.2e+04"},
                 {"Format(12500, \"0.0e+00\")", "1.3e+04"},
                 {"Format(0.00099996, \"0.000e+00\")", "1.000e-03"},
                 {"Format(1e22, \"#,##0\")", "10,000,000,000,000,000,000,000"},
                 {"Format(123456789012345678, \"#,##0\")", "123,456,789,012,345,678"},
                 {"Str(2.345, \"0.00\")", "2.35"},
                 {"Round(2.5)", "3"},
                 {"Round(-2.5)", "-3"}});
}

}  // namespace
}  // namespace quillbar::language::testing
