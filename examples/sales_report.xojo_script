' A report over a CSV file of 50,000 rows: a contents page, a chapter for each region with subtotals for its towns, page
' breaks with repeated headings, and a bar chart.
'
' The script makes the CSV file itself, the same in every run, unless one is named. Run it with:
' quillbar sales_report.xojo_script [CSV FILE] [FILE]

Const kRows As Integer = 50000

Dim began As Double = Microseconds
Dim fileName As String = "sales_report.pdf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(Arguments.LastIndex)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites
Dim data As FolderItem
If Arguments.LastIndex >= 1 Then
  data = New FolderItem(Arguments(0))
  If Not data.Exists Then
    StdErr.WriteLine("No such file: " + data.NativePath)
    Quit(1)
  End If
Else
  data = SpecialFolder.Temporary.Child("quillbar_sales_" + Str(System.Random.InRange(1, 999999999)) + ".csv")
  MakeData(data)
End If

Dim sales As New SalesTable
Dim broken As Integer = sales.Read(data)
If Arguments.LastIndex < 1 Then data.Delete

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Title = "Sales by region"
document.Mode = PDFDocument.DocumentModeEnum.USE_OUTLINE
Dim report As New Report(document)
report.Write(sales)
document.Save(target)
If Not target.Exists Then
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If
If broken > 0 Then StdErr.WriteLine(Str(broken) + " lines of the file could not be read")
Print "Wrote " + target.NativePath + ": " + Str(sales.RowCount) + " rows on " + Str(report.PageCount) + " pages, in " + _
  Format((Microseconds - began) / 1000000, "0.0") + " s"

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  StdErr.WriteLine("The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")")
End Sub

' 50,000 rows from a small generator of numbers, so that every run has the same ones.
Sub MakeData(file As FolderItem)
  Dim regions() As String = Array("North", "East", "South", "West", "Islands")
  Dim towns() As String = Array("Aldbury", "Brackwater", "Cold Ash", "Dunmere", "Eastmouth", "Fairholm", "Greyabbey", "Hythe")
  Dim products() As String = Array("Rope", "Canvas", "Lamps", "Charts")
  Dim output As TextOutputStream = TextOutputStream.Create(file)
  output.WriteLine("date;region;town;product;quantity;cents")
  Dim seed As Int64 = 20260301
  Dim newYear As New DateTime(2025, 1, 1)
  Dim days() As String
  For i As Integer = 0 To 364
    days.Append(newYear.AddInterval(0, 0, i).SQLDate)
  Next
  For i As Integer = 1 To kRows
    seed = (seed * 1103515245 + 12345) Mod 2147483648
    Dim number As Integer = seed \ 65536
    Dim region As Integer = number Mod 5
    Dim quantity As Integer = number Mod 37 + 1
    output.WriteLine(days(number Mod 365) + ";" + regions(region) + ";" + towns((number \ 5) Mod 8) + " " + _
      Left(regions(region), 1) + ";" + products((number \ 41) Mod 4) + ";" + Str(quantity) + ";" + _
      Str(quantity * (number Mod 997 + 103)))
  Next
  output.Close
End Sub

' Cents as an amount: 123456 is "1,234.56".
Function Amount(cents As Int64) As String
  Return Format(cents \ 100, "#,##0") + "." + Format(Abs(cents) Mod 100, "00")
End Function

' ---------------------------------------------------------------- the figures

' The sales of a product in a town.
Class Entry
  Product As String
  Count As Integer
  Quantity As Int64
  Cents As Int64
  Months(11) As Int64

  Sub Add(other As Entry)
    Count = Count + other.Count
    Quantity = Quantity + other.Quantity
    Cents = Cents + other.Cents
    For i As Integer = 0 To 11
      Months(i) = Months(i) + other.Months(i)
    Next
  End Sub

  Sub AddRow(number As Integer, amount As Int64, month As Integer)
    Count = Count + 1
    Quantity = Quantity + number
    Cents = Cents + amount
    Months(month) = Months(month) + amount
  End Sub
End Class

Class Town
  Name As String
  Entries() As Entry

  Function EntryOf(product As String) As Entry
    For Each item As Entry In Entries
      If item.Product = product Then Return item
    Next
    Dim added As New Entry
    added.Product = product
    Entries.Append(added)
    Return added
  End Function

  Function Total() As Entry
    Dim sum As New Entry
    For Each item As Entry In Entries
      sum.Add(item)
    Next
    Return sum
  End Function
End Class

Class Region
  Name As String
  Towns() As Town
  FirstPage As Integer

  Function TownOf(name As String) As Town
    For Each item As Town In Towns
      If item.Name = name Then Return item
    Next
    Dim added As New Town
    added.Name = name
    Towns.Append(added)
    Return added
  End Function

  Function Total() As Entry
    Dim sum As New Entry
    For Each item As Town In Towns
      sum.Add(item.Total)
    Next
    Return sum
  End Function
End Class

Class SalesTable
  Regions() As Region
  RowCount As Integer

  ' Reads a file and returns how many of its lines aren't rows.
  Function Read(file As FolderItem) As Integer
    Dim broken As Integer = 0
    Dim input As TextInputStream = TextInputStream.Open(file)
    Call input.ReadLine ' the heading
    While Not input.EndOfFile
      Dim fields() As String = Split(input.ReadLine, ";")
      If fields.Count = 6 Then
        Dim month As Integer = Val(fields(0).Middle(5, 2)) - 1
        RegionOf(fields(1)).TownOf(fields(2)).EntryOf(fields(3)).AddRow(fields(4).ToInteger, fields(5).ToInteger, month)
        RowCount = RowCount + 1
      Else
        broken = broken + 1
      End If
    Wend
    input.Close
    Regions.Sort(AddressOf CompareRegions)
    For Each item As Region In Regions
      item.Towns.Sort(AddressOf CompareTowns)
      For Each place As Town In item.Towns
        place.Entries.Sort(AddressOf CompareEntries)
      Next
    Next
    Return broken
  End Function

  Private Function RegionOf(name As String) As Region
    For Each item As Region In Regions
      If item.Name = name Then Return item
    Next
    Dim added As New Region
    added.Name = name
    Regions.Append(added)
    Return added
  End Function
End Class

Function CompareRegions(one As Region, other As Region) As Integer
  Return one.Name.Compare(other.Name)
End Function

Function CompareEntries(one As Entry, other As Entry) As Integer
  Return one.Product.Compare(other.Product)
End Function

Function CompareTowns(one As Town, other As Town) As Integer
  Return one.Name.Compare(other.Name)
End Function

' ---------------------------------------------------------------- the pages

Class Report
  Private Const kLeft = 62.0
  Private Const kRight = 533.0
  Private Const kBottom = 770.0
  Private Const kRow = 15.0
  PageCount As Integer
  Private target As PDFDocument
  Private p As Page
  Private regular As Font
  Private bold As Font
  Private title As String
  Private y As Double

  Sub Constructor(document As PDFDocument)
    target = document
    regular = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
    bold = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
  End Sub

  Sub Write(sales As SalesTable)
    title = "Contents"
    NewPage
    Dim contents As Page = p ' filled when the numbers of the pages are known
    Dim places() As Destination
    For Each item As Region In sales.Regions
      title = "Region " + item.Name
      NewPage
      item.FirstPage = PageCount
      places.Append(p.CreateDestination)
      Dim bookmark As Outline = target.CreateOutline(Nil, title)
      bookmark.SetDestination(places(places.LastIndex))
      Chapter(item)
    Next
    p = contents
    WriteContents(sales, places)
  End Sub

  Private Sub Chapter(item As Region)
    Say(bold, 20, kLeft, 100, "Region " + item.Name)
    Chart(item.Total)
    y = 330
    Heading
    For Each place As Town In item.Towns
      ' A town's name isn't left alone at the foot of a page.
      If y + kRow * 3 > kBottom Then Break
      Say(bold, 9.5, kLeft, y, place.Name)
      y = y + kRow
      For Each sold As Entry In place.Entries
        If y + kRow > kBottom Then Break
        Cells("   " + sold.Product, sold, regular)
      Next
      If y + kRow > kBottom Then Break
      Rule(y - 11, 0.3)
      Cells("   Subtotal " + place.Name, place.Total, bold)
      y = y + 6
    Next
    If y + kRow > kBottom Then Break
    Rule(y - 11, 1)
    Cells("Total " + item.Name, item.Total, bold)
  End Sub

  ' Goes on on a new page, below the headings of the columns.
  Private Sub Break()
    NewPage
    y = 90
    Heading
  End Sub

  ' The twelve months as bars.
  Private Sub Chart(sum As Entry)
    Const kTop = 130.0
    Const kBase = 280.0
    Dim most As Int64 = 1
    For Each value As Int64 In sum.Months
      most = Max(most, value)
    Next
    Dim slot As Double = (kRight - kLeft) / 12
    For month As Integer = 0 To 11
      Dim height As Double = (kBase - kTop) * sum.Months(month) / most
      Dim x As Double = kLeft + slot * month
      p.FillColor = &c4C86A8
      p.Rectangle(x + 3, kBase - height, slot - 6, height)
      p.Fill
      p.FillColor = &c000000
      Centre(regular, 7.5, x + slot / 2, kBase + 11, (New DateTime(2025, month + 1, 1)).ToString("MMM"))
      Centre(regular, 6.5, x + slot / 2, kBase - height - 3, Format(sum.Months(month) / 100000, "#,##0") + "k")
    Next
    Rule(kBase, 0.8)
  End Sub

  Private Sub WriteContents(sales As SalesTable, places() As Destination)
    Say(bold, 24, kLeft, 110, "Sales by region, 2025")
    Say(regular, 10, kLeft, 132, Format(sales.RowCount, "#,##0") + " sales; amounts in EUR")
    y = 180
    Dim sum As New Entry
    For i As Integer = 0 To sales.Regions.LastIndex
      Dim item As Region = sales.Regions(i)
      Dim total As Entry = item.Total
      sum.Add(total)
      Dim first As Double = kLeft + SayWidth(regular, 12, kLeft, y, "Region " + item.Name)
      Dim last As Double = kRight - 130 - SayRight(regular, 12, kRight - 130, y, Amount(total.Cents))
      Dots(first + 6, last - 6, y)
      Call SayRight(bold, 12, kRight, y, "page " + Str(item.FirstPage))
      Call p.CreateLinkAnnotation(places(i), kLeft - 6, y - 14, kRight + 6, y + 7)
      y = y + 24
    Next
    Rule(y - 14, 1)
    Say(bold, 12, kLeft, y, "All regions")
    Call SayRight(bold, 12, kRight - 130, y, Amount(sum.Cents))
  End Sub

  Private Sub NewPage()
    p = target.AddPage
    p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
    p.TransformCoordinates = True
    PageCount = PageCount + 1
    p.FillColor = &c666666
    Say(regular, 8, kLeft, 40, title)
    Call SayRight(regular, 8, kRight, 40, "Sales by region, 2025")
    Centre(regular, 8, (kLeft + kRight) / 2, 810, Str(PageCount))
    p.FillColor = &c000000
    Rule(46, 0.4)
  End Sub

  Private Sub Heading()
    p.FillColor = &cE3EDF3
    p.Rectangle(kLeft - 4, y - 11, kRight - kLeft + 8, kRow)
    p.Fill
    p.FillColor = &c000000
    Say(bold, 9, kLeft, y, "Town and product")
    Call SayRight(bold, 9, kLeft + 270, y, "Sales")
    Call SayRight(bold, 9, kLeft + 360, y, "Quantity")
    Call SayRight(bold, 9, kRight, y, "EUR")
    y = y + kRow + 3
  End Sub

  Private Sub Cells(name As String, figures As Entry, face As Font)
    Say(face, 9.5, kLeft, y, name)
    Call SayRight(face, 9.5, kLeft + 270, y, Format(figures.Count, "#,##0"))
    Call SayRight(face, 9.5, kLeft + 360, y, Format(figures.Quantity, "#,##0"))
    Call SayRight(face, 9.5, kRight, y, Amount(figures.Cents))
    y = y + kRow
  End Sub

  Private Sub Rule(height As Double, width As Double)
    p.LineWidth = width
    p.MoveTo(kLeft, height)
    p.LineTo(kRight, height)
    p.Draw
  End Sub

  Private Sub Dots(first As Double, last As Double, height As Double)
    Dim x As Double = Ceil(first / 5) * 5 ' in columns, whatever the lengths of the names
    While x < last
      p.Rectangle(x, height - 1, 1, 1)
      x = x + 5
    Wend
    p.Fill
  End Sub

  Private Function WidthOf(face As Font, size As Double, text As String) As Double
    Dim width As Single
    p.SetFont(face, size)
    Call p.MeasureText(text, 1000, False, width)
    Return width
  End Function

  Private Sub Say(face As Font, size As Double, x As Double, baseline As Double, text As String)
    p.BeginText
    p.SetFont(face, size)
    p.MoveTextPosition(x, baseline)
    p.ShowText(text)
    p.EndText
  End Sub

  Private Function SayWidth(face As Font, size As Double, x As Double, baseline As Double, text As String) As Double
    Say(face, size, x, baseline, text)
    Return WidthOf(face, size, text)
  End Function

  Private Function SayRight(face As Font, size As Double, x As Double, baseline As Double, text As String) As Double
    Dim width As Double = WidthOf(face, size, text)
    Say(face, size, x - width, baseline, text)
    Return width
  End Function

  Private Sub Centre(face As Font, size As Double, x As Double, baseline As Double, text As String)
    Say(face, size, x - WidthOf(face, size, text) / 2, baseline, text)
  End Sub
End Class
