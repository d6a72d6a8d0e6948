' An invoice engine: orders come from an SQLite database, invoices go into one PDF with a bookmark for each.
'
' Amounts are counted in cents, so that no sum is off by one. Long invoices go on over several pages, with the amount
' carried forward. Run it with: quillbar invoices.xojo_script [FILE]

Dim fileName As String = "invoices.pdf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim orders As New OrderBook
orders.Fill
Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Title = "Invoices of March 2026"
document.Author = "Harbour Supplies Ltd."

Dim printer As New InvoicePrinter(document)
Dim total As Int64 = 0
Dim invoices() As Invoice = orders.InvoicesOf(New DateTime(2026, 3, 1), New DateTime(2026, 4, 1))
For Each item As Invoice In invoices
  printer.Add(item)
  total = total + item.Gross
Next
printer.AddSummary(invoices)
document.Save(target)
If Not target.Exists Then
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If
Print "Wrote " + target.NativePath + ": " + Str(invoices.Count) + " invoices on " + Str(printer.PageCount) + _
  " pages, together " + Amount(total)

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  StdErr.WriteLine("The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")")
End Sub

' Cents as an amount: 123456 is "1,234.56".
Function Amount(cents As Int64) As String
  Return Format(cents \ 100, "#,##0") + "." + Format(Abs(cents) Mod 100, "00")
End Function

' A share of an amount, in thousandths, rounded to whole cents, halves away from zero.
Function Share(cents As Int64, thousandths As Int64) As Int64
  Dim product As Int64 = cents * thousandths
  If product < 0 Then Return -((-product + 500) \ 1000)
  Return (product + 500) \ 1000
End Function

' ---------------------------------------------------------------- what an invoice is

Class InvoiceLine
  Article As String
  Name As String
  Quantity As Integer
  Price As Int64        ' cents for one
  Discount As Integer   ' percent
  TaxRate As Integer    ' thousandths

  Function Net() As Int64
    Return Share(Price * Quantity, 1000 - Discount * 10)
  End Function
End Class

Class Customer
  Name As String
  Street As String
  Town As String
  PaysWithin As Integer ' days
End Class

Class Invoice
  Number As String
  Issued As DateTime
  Buyer As Customer
  Lines() As InvoiceLine

  Function Due() As DateTime
    Return Issued + New DateInterval(0, 0, Buyer.PaysWithin)
  End Function

  Function Net() As Int64
    Dim sum As Int64 = 0
    For Each line As InvoiceLine In Lines
      sum = sum + line.Net
    Next
    Return sum
  End Function

  ' The net amount that is taxed at this rate.
  Function NetAt(rate As Integer) As Int64
    Dim sum As Int64 = 0
    For Each line As InvoiceLine In Lines
      If line.TaxRate = rate Then sum = sum + line.Net
    Next
    Return sum
  End Function

  ' Tax is rounded once for each rate, not for each line.
  Function TaxAt(rate As Integer) As Int64
    Return Share(NetAt(rate), rate)
  End Function

  Function Rates() As Integer()
    Dim found() As Integer
    For Each line As InvoiceLine In Lines
      If Not found.Contains(line.TaxRate) Then found.Append(line.TaxRate)
    Next
    found.Sort
    Return found
  End Function

  Function Gross() As Int64
    Dim sum As Int64 = Net
    For Each rate As Integer In Rates
      sum = sum + TaxAt(rate)
    Next
    Return sum
  End Function
End Class

' ---------------------------------------------------------------- where invoices come from

Class OrderBook
  Private db As SQLiteDatabase

  Sub Constructor()
    db = New SQLiteDatabase
    db.Connect ' in memory; with a DatabaseFile it is a file
    db.ExecuteSQL("CREATE TABLE customers (id INTEGER PRIMARY KEY, name TEXT NOT NULL, street TEXT, town TEXT, days INTEGER);" + _
      "CREATE TABLE articles (id INTEGER PRIMARY KEY, code TEXT UNIQUE, name TEXT, price INTEGER, tax INTEGER);" + _
      "CREATE TABLE orders (id INTEGER PRIMARY KEY, customer INTEGER REFERENCES customers, day TEXT);" + _
      "CREATE TABLE items (orderId INTEGER REFERENCES orders, article INTEGER REFERENCES articles, quantity INTEGER, discount INTEGER)")
  End Sub

  Sub AddCustomer(name As String, street As String, town As String, days As Integer)
    Dim row As New DatabaseRow
    row.Column("name").StringValue = name
    row.Column("street").StringValue = street
    row.Column("town").StringValue = town
    row.Column("days").IntegerValue = days
    Call db.AddRow("customers", row)
  End Sub

  ' Customers, articles and orders that are the same in every run.
  Sub Fill()
    db.BeginTransaction
    Try
      AddCustomer("Brasserie du Port", "12 Quai des Bateliers", "67000 Strasbourg", 14)
      AddCustomer("Müller & Söhne GmbH", "Hafenstraße 7", "20457 Hamburg", 30)
      AddCustomer("O'Brien Fisheries", "3 ""Old Mill"" Lane", "Galway H91 E2K8", 30)
      AddCustomer("Bodega Íñigo Núñez", "Calle Mayor 41", "48001 Bilbao", 60)
      Dim names() As String = Array("Rope, 10 mm, per metre", "Shackle, stainless", "Mooring line, 20 m", "Fender, blue", _
        "Signal flags, set of 40", "Tide tables 2026", "Chart, coastal waters", "Canvas bucket", "Tea, 250 g", _
        "Ship's biscuit, tin", "Brass polish", "Lantern, paraffin")
      For i As Integer = 0 To names.LastIndex
        ' Books and food are taxed at 7 %, the rest at 19 %.
        Dim tax As Integer = If(i = 5 Or i = 6 Or i = 8 Or i = 9, 70, 190)
        db.ExecuteSQL("INSERT INTO articles (code, name, price, tax) VALUES (?, ?, ?, ?)", "A-" + Format(100 + i, "000"), _
          names(i), 95 + i * i * 211 + i * 7, tax)
      Next
      For number As Integer = 1 To 9
        Dim day As DateTime = New DateTime(2026, 2, 26) + New DateInterval(0, 0, number * 4)
        db.ExecuteSQL("INSERT INTO orders (customer, day) VALUES (?, ?)", number Mod 4 + 1, day.SQLDate)
        Dim orderId As Int64 = db.LastRowID
        Dim lines As Integer = If(number = 5, 64, 3 + number)
        For i As Integer = 1 To lines
          db.ExecuteSQL("INSERT INTO items VALUES (?, ?, ?, ?)", orderId, (number * 5 + i * 7) Mod 12 + 1, _
            (i * number) Mod 9 + 1, If(i Mod 6 = 0, 10, 0))
        Next
      Next
      db.CommitTransaction
    Catch e As DatabaseException
      db.RollbackTransaction
      Raise e
    End Try
  End Sub

  ' The invoices for the orders from one day on and before another one.
  Function InvoicesOf(first As DateTime, beyond As DateTime) As Invoice()
    Dim found() As Invoice
    Dim rows As RowSet = db.SelectSQL("SELECT orders.id, day, name, street, town, days FROM orders " + _
      "JOIN customers ON customers.id = customer WHERE day >= ? AND day < ? ORDER BY day", first.SQLDate, beyond.SQLDate)
    For Each row As DatabaseRow In rows
      Dim item As New Invoice
      item.Issued = row.Column("day").DateTimeValue
      item.Number = item.Issued.ToString("yyyy-MM") + "-" + Format(row.Column("id").IntegerValue, "0000")
      item.Buyer = New Customer
      item.Buyer.Name = row.Column("name").StringValue
      item.Buyer.Street = row.Column("street").StringValue
      item.Buyer.Town = row.Column("town").StringValue
      item.Buyer.PaysWithin = row.Column("days").IntegerValue
      AddLines(item, row.Column("id").IntegerValue)
      found.Append(item)
    Next
    Return found
  End Function

  Private Sub AddLines(item As Invoice, orderId As Integer)
    For Each row As DatabaseRow In db.SelectSQL("SELECT code, name, quantity, price, discount, tax FROM items " + _
        "JOIN articles ON articles.id = article WHERE orderId = ? ORDER BY items.rowid", orderId)
      Dim line As New InvoiceLine
      line.Article = row.Column("code").StringValue
      line.Name = row.Column("name").StringValue
      line.Quantity = row.Column("quantity").IntegerValue
      line.Price = row.Column("price").Int64Value
      line.Discount = row.Column("discount").IntegerValue
      line.TaxRate = row.Column("tax").IntegerValue
      item.Lines.Append(line)
    Next
  End Sub
End Class

' ---------------------------------------------------------------- how they are printed

Class InvoicePrinter
  Private Const kLeft = 62.0
  Private Const kRight = 533.0
  Private Const kBottom = 740.0
  Private Const kRow = 17.0
  PageCount As Integer
  Private target As PDFDocument
  Private p As Page
  Private regular As Font
  Private bold As Font
  Private y As Double
  Private pageOfInvoice As Integer

  Sub Constructor(document As PDFDocument)
    target = document
    regular = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
    bold = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
  End Sub

  Sub Add(item As Invoice)
    pageOfInvoice = 0
    NewPage(item.Number)
    Bookmark("Invoice " + item.Number + ", " + item.Buyer.Name)
    Address(item)
    Heading
    Dim carried As Int64 = 0
    For i As Integer = 0 To item.Lines.LastIndex
      Dim line As InvoiceLine = item.Lines(i)
      If y + kRow * 2 > kBottom Then
        Cells("", "Carried forward", "", "", Amount(carried), bold)
        NewPage(item.Number)
        y = 110
        Heading
        Cells("", "Brought forward", "", "", Amount(carried), bold)
      End If
      Dim name As String = line.Name + If(line.Discount > 0, ", less " + Str(line.Discount) + " %", "")
      Cells(line.Article, name, Str(line.Quantity), Amount(line.Price), Amount(line.Net), regular)
      carried = carried + line.Net
    Next
    If y + kRow * (item.Rates.Count + 5) > kBottom Then
      NewPage(item.Number)
      y = 110
    End If
    Totals(item)
  End Sub

  ' The last page lists all invoices.
  Sub AddSummary(invoices() As Invoice)
    pageOfInvoice = 0
    NewPage("Summary")
    Bookmark("Summary")
    Say(bold, 18, kLeft, 110, "Invoices of March 2026")
    y = 150
    Cells("Number", "Customer", "", "Due", "Total", bold)
    Dim sum As Int64 = 0
    For Each item As Invoice In invoices
      Cells(item.Number, item.Buyer.Name, "", item.Due.ToString("d MMM yyyy"), Amount(item.Gross), regular)
      sum = sum + item.Gross
    Next
    Rule(y - 11, 0.8)
    Cells("", "All invoices", "", "", Amount(sum), bold)
  End Sub

  Private Sub Bookmark(title As String)
    Dim entry As Outline = target.CreateOutline(Nil, title)
    entry.SetDestination(p.CreateDestination)
  End Sub

  Private Sub NewPage(number As String)
    p = target.AddPage
    p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
    p.TransformCoordinates = True
    PageCount = PageCount + 1
    pageOfInvoice = pageOfInvoice + 1
    p.FillColor = &c1F4E79
    p.Rectangle(0, 0, 595, 14)
    p.Fill
    Say(bold, 13, kLeft, 52, "Harbour Supplies Ltd.")
    p.FillColor = &c666666
    Say(regular, 8, kLeft, 65, "Pier 4, Port Ellen · VAT GB 123 4567 89")
    Say(regular, 8, kLeft, 800, "Bank of the Isles · IBAN GB00 BANK 0000 0012 3456 78")
    SayRight(regular, 8, kRight, 800, number + ", page " + Str(pageOfInvoice))
    p.FillColor = &c000000
  End Sub

  Private Sub Address(item As Invoice)
    Say(regular, 11, kLeft, 130, item.Buyer.Name)
    Say(regular, 11, kLeft, 145, item.Buyer.Street)
    Say(regular, 11, kLeft, 160, item.Buyer.Town)
    SayRight(regular, 10, kRight, 130, "Issued " + item.Issued.ToString("d MMMM yyyy"))
    SayRight(regular, 10, kRight, 145, "Due " + item.Due.ToString("EEEE, d MMMM yyyy"))
    Say(bold, 18, kLeft, 215, "Invoice " + item.Number)
    y = 250
  End Sub

  Private Sub Heading()
    p.FillColor = &cE4ECF4
    p.Rectangle(kLeft - 4, y - 12, kRight - kLeft + 8, kRow)
    p.Fill
    p.FillColor = &c000000
    Cells("Article", "Description", "Quantity", "Each", "EUR", bold)
  End Sub

  Private Sub Totals(item As Invoice)
    Rule(y - 11, 0.8)
    Cells("", "Net", "", "", Amount(item.Net), regular)
    For Each rate As Integer In item.Rates
      Cells("", "VAT " + Format(rate / 10, "0.#") + " % on " + Amount(item.NetAt(rate)), "", "", Amount(item.TaxAt(rate)), regular)
    Next
    Rule(y - 11, 0.8)
    Cells("", "To be paid until " + item.Due.ToString("d MMMM yyyy"), "", "", Amount(item.Gross), bold)
    Rule(y - 11, 0.8)
    Rule(y - 9, 0.8)
  End Sub

  ' A row of the table.
  Private Sub Cells(article As String, name As String, quantity As String, price As String, sum As String, face As Font)
    Say(face, 9.5, kLeft, y, article)
    Say(face, 9.5, kLeft + 80, y, name)
    SayRight(face, 9.5, kLeft + 330, y, quantity)
    SayRight(face, 9.5, kLeft + 400, y, price)
    SayRight(face, 9.5, kRight, y, sum)
    y = y + kRow
  End Sub

  Private Sub Rule(height As Double, width As Double)
    p.LineWidth = width
    p.MoveTo(kLeft, height)
    p.LineTo(kRight, height)
    p.Draw
  End Sub

  Private Sub Say(face As Font, size As Double, x As Double, baseline As Double, text As String)
    If text = "" Then Return
    p.BeginText
    p.SetFont(face, size)
    p.MoveTextPosition(x, baseline)
    p.ShowText(text)
    p.EndText
  End Sub

  Private Sub SayRight(face As Font, size As Double, x As Double, baseline As Double, text As String)
    If text = "" Then Return
    Dim width As Single
    p.BeginText
    p.SetFont(face, size)
    Call p.MeasureText(text, 1000, False, width)
    p.MoveTextPosition(x - width, baseline)
    p.ShowText(text)
    p.EndText
  End Sub
End Class
