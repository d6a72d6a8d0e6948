' A label sheet generator: shelf labels with EAN-13 bar codes, and address labels with Code 128, on common sheets.
'
' Bars are filled rectangles of whole multiples of a module, so they stay sharp at every resolution. A text that is too
' wide gets a smaller size. Sheets that are partly used begin at any label. Run it with:
' quillbar labels.xojo_script [FIRST LABEL] [FILE]

Const kMillimetre As Double = 2.834645669291339 ' in points

Dim fileName As String = "labels.pdf"
Dim firstLabel As Integer = 1
If Arguments.LastIndex >= 0 Then fileName = Arguments(Arguments.LastIndex)
If Arguments.LastIndex >= 1 Then firstLabel = Arguments(0).ToInteger
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Title = "Labels"
Dim faces As New Faces(document)

' 24 labels of 70 mm by 37 mm, and 14 of 99.1 mm by 38.1 mm.
Dim shelves As New LabelSheet(document, 3, 8, 70, 37, 0, 0.5, 0, 0)
Dim parcels As New LabelSheet(document, 2, 7, 99.1, 38.1, 4.65, 15.15, 2.5, 0)
Try
  shelves.SkipTo(firstLabel)
Catch e As OutOfBoundsException
  StdErr.WriteLine(e.Message)
  Quit(2)
End Try
For Each item As Label In MakeProducts
  shelves.Add(item)
Next
For Each item As Label In MakeParcels
  parcels.Add(item)
Next
document.Save(target)
If Not target.Exists Then
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If
Print "Wrote " + target.NativePath + ": " + Str(shelves.Count) + " shelf labels and " + Str(parcels.Count) + _
  " parcel labels on " + Str(shelves.PageCount + parcels.PageCount) + " pages"

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  StdErr.WriteLine("The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")")
End Sub

Function MakeProducts() As Label()
  Dim names() As String = Array("Cox's Orange Pippin", "Boskoop, rough skin", "Conference pears, class I, from the Lea Valley", _
    "Quinces", "Hazelnuts, in shell", "Elderflower cordial", "Rapeseed honey", "Oak-smoked Cheddar", "Rye bread, sliced")
  Dim units() As String = Array("1 kg", "1 kg", "500 g", "each", "250 g", "0.5 l", "340 g", "100 g", "750 g")
  Dim made() As Label
  For i As Integer = 0 To 29
    Dim index As Integer = i Mod names.Count
    Dim item As New ShelfLabel
    item.Name = names(index)
    item.Unit = units(index)
    item.Cents = 119 + i * 83
    item.IsOffer = i Mod 7 = 3
    item.Code = Ean13.WithCheckDigit("50" + Format(1234500000 + i * 137, "0000000000"))
    made.Append(item)
  Next
  Return made
End Function

Function MakeParcels() As Label()
  Dim names() As String = Array("Åsa Öberg", "Brasserie du Port", "Íñigo Núñez", "The Very Long Name Trading Company of the Outer Isles", "K. Müller")
  Dim streets() As String = Array("Storgatan 5", "12 Quai des Bateliers", "Calle Mayor 41", "1 Pier", "Hafenstraße 7")
  Dim towns() As String = Array("211 34 Malmö", "67000 Strasbourg", "48001 Bilbao", "Port Ellen PA42 7DH", "20457 Hamburg")
  Dim made() As Label
  For i As Integer = 0 To 16
    Dim item As New ParcelLabel
    item.Name = names(i Mod 5)
    item.Street = streets(i Mod 5)
    item.Town = towns(i Mod 5)
    item.Parcel = "QB-" + Format(260300 + i * 17, "000000") + "/" + Str(i Mod 3 + 1)
    made.Append(item)
  Next
  Return made
End Function

' ---------------------------------------------------------------- sheets

' A grid of labels on A4; all measures in millimetres.
Class LabelSheet
  Count As Integer
  PageCount As Integer
  Private target As PDFDocument
  Private columns As Integer
  Private rows As Integer
  Private width As Double
  Private height As Double
  Private left As Double
  Private top As Double
  Private gapX As Double
  Private gapY As Double
  Private place As Integer
  Private p As Page

  Sub Constructor(document As PDFDocument, columnCount As Integer, rowCount As Integer, labelWidth As Double, labelHeight As Double, leftMargin As Double, topMargin As Double, gapAcross As Double, gapDown As Double)
    target = document
    columns = columnCount
    rows = rowCount
    width = labelWidth * kMillimetre
    height = labelHeight * kMillimetre
    left = leftMargin * kMillimetre
    top = topMargin * kMillimetre
    gapX = gapAcross * kMillimetre
    gapY = gapDown * kMillimetre
  End Sub

  ' The first sheet begins at this label, counted from 1.
  Sub SkipTo(label As Integer)
    If label < 1 Or label > columns * rows Then
      Raise New OutOfBoundsException("The sheet has the labels 1 to " + Str(columns * rows) + ", so it can't begin at " + Str(label) + ".")
    End If
    place = label - 1
  End Sub

  Sub Add(item As Label)
    If p Is Nil Or place = columns * rows Then
      If p <> Nil Then place = 0
      p = target.AddPage
      p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
      p.TransformCoordinates = True
      PageCount = PageCount + 1
    End If
    Dim x As Double = left + (place Mod columns) * (width + gapX)
    Dim y As Double = top + (place \ columns) * (height + gapY)
    CutMarks(x, y)
    item.Draw(p, x + 4 * kMillimetre, y + 4 * kMillimetre, width - 8 * kMillimetre, height - 8 * kMillimetre)
    place = place + 1
    Count = Count + 1
  End Sub

  ' Small crosses at the corners, which a pre-cut sheet hides.
  Private Sub CutMarks(x As Double, y As Double)
    Const kArm = 4.0
    p.StrokeColor = &cBBBBBB
    p.LineWidth = 0.25
    For corner As Integer = 0 To 3
      Dim cornerX As Double = x + If(corner Mod 2 = 0, 0.0, width)
      Dim cornerY As Double = y + If(corner < 2, 0.0, height)
      p.MoveTo(cornerX - kArm, cornerY)
      p.LineTo(cornerX + kArm, cornerY)
      p.MoveTo(cornerX, cornerY - kArm)
      p.LineTo(cornerX, cornerY + kArm)
    Next
    p.Draw
  End Sub
End Class

' ---------------------------------------------------------------- labels

' What all labels can do; each kind draws itself.
Class Label
  Sub Draw(p As Page, x As Double, y As Double, width As Double, height As Double)
    Raise New UnsupportedOperationException("a label of no kind can't be drawn")
  End Sub
End Class

Class ShelfLabel
  Inherits Label
  Name As String
  Unit As String
  Cents As Integer
  Code As String
  IsOffer As Boolean

  Sub Draw(p As Page, x As Double, y As Double, width As Double, height As Double)
    If IsOffer Then
      p.FillColor = &cFFE08A
      p.Rectangle(x - 6, y - 6, width + 12, height * 0.5)
      p.Fill
    End If
    p.FillColor = &c000000
    faces.Fit(p, faces.Bold, 11, x, y + 8, width, Name)
    faces.Fit(p, faces.Regular, 8, x, y + 19, width * 0.5, Unit)
    Dim price As String = Format(Cents \ 100, "0") + "." + Format(Cents Mod 100, "00")
    faces.Right(p, faces.Bold, 22, x + width, y + 31, price)
    Dim code As New Ean13(Code)
    code.Draw(p, x + 8, y + height * 0.48, 0.3 * kMillimetre, height * 0.44)
  End Sub
End Class

Class ParcelLabel
  Inherits Label
  Name As String
  Street As String
  Town As String
  Parcel As String

  Sub Draw(p As Page, x As Double, y As Double, width As Double, height As Double)
    p.FillColor = &c000000
    faces.Fit(p, faces.Bold, 12, x, y + 10, width, Name)
    faces.Fit(p, faces.Regular, 11, x, y + 24, width, Street)
    faces.Fit(p, faces.Regular, 11, x, y + 38, width, Town)
    Dim code As New Code128(Parcel)
    code.Draw(p, x, y + height - 34, 0.33 * kMillimetre, 24)
    faces.Fit(p, faces.Regular, 8, x, y + height, width, Parcel)
  End Sub
End Class

' ---------------------------------------------------------------- bar codes

' Bars from a text of widths: "212" is a bar of two modules, a space of one, a bar of two.
Class BarCode
  Protected Sub DrawWidths(p As Page, widths As String, x As Double, y As Double, module_ As Double, height As Double)
    Dim isBar As Boolean = True
    For i As Integer = 0 To widths.Length - 1
      Dim size As Double = Val(widths.Middle(i, 1)) * module_
      If isBar And size > 0 Then p.Rectangle(x, y, size, height)
      x = x + size
      isBar = Not isBar
    Next
    p.Fill
  End Sub
End Class

' ISO/IEC 15420: twelve digits and a check digit.
Class Ean13
  Inherits BarCode
  Private digits As String

  Sub Constructor(number As String)
    If number.Length <> 13 Or WithCheckDigit(number.Left(12)) <> number Then
      Raise New InvalidArgumentException(number + " is no number of EAN-13")
    End If
    digits = number
  End Sub

  Shared Function WithCheckDigit(twelve As String) As String
    Dim sum As Integer = 0
    For i As Integer = 0 To 11
      sum = sum + Val(twelve.Middle(i, 1)) * If(i Mod 2 = 0, 1, 3)
    Next
    Return twelve + Str((10 - sum Mod 10) Mod 10)
  End Function

  ' Of each digit, the widths of a space, a bar, a space and a bar; reversed in the sets B.
  Private Function Widths() As String
    Dim patterns() As String = Array("3211", "2221", "2122", "1411", "1132", "1231", "1114", "1312", "1213", "3112")
    ' The first digit is in the choice of the sets for the next six.
    Dim sets() As String = Array("AAAAAA", "AABABB", "AABBAB", "AABBBA", "ABAABB", "ABBAAB", "ABBBAA", "ABABAB", "ABABBA", "ABBABA")
    Dim made As String = "111"
    Dim chosen As String = sets(Val(digits.Left(1)))
    For i As Integer = 1 To 12
      Dim pattern As String = patterns(Val(digits.Middle(i, 1)))
      If i <= 6 And chosen.Middle(i - 1, 1) = "B" Then
        pattern = pattern.Middle(3, 1) + pattern.Middle(2, 1) + pattern.Middle(1, 1) + pattern.Left(1)
      End If
      made = made + pattern
      If i = 6 Then made = made + "11111"
    Next
    Return made + "111"
  End Function

  Sub Draw(p As Page, x As Double, y As Double, module_ As Double, height As Double)
    DrawWidths(p, Widths, x, y, module_, height)
    ' The number stands below its bars, the first digit before them.
    faces.Right(p, faces.Regular, 7, x - 2, y + height + 7, digits.Left(1))
    faces.Spread(p, 7, x + 3 * module_, y + height + 7, 42 * module_, digits.Middle(1, 6))
    faces.Spread(p, 7, x + 50 * module_, y + height + 7, 42 * module_, digits.Middle(7, 6))
  End Sub
End Class

' ISO/IEC 15417, code set B: printable ASCII.
Class Code128
  Inherits BarCode
  Private text As String

  Sub Constructor(content As String)
    For i As Integer = 0 To content.Length - 1
      Dim code As Integer = content.Middle(i, 1).Asc
      If code < 32 Or code > 126 Then Raise New InvalidArgumentException("Code 128 has no """ + content.Middle(i, 1) + """ in its set B")
    Next
    text = content
  End Sub

  Private Function Widths() As String
    Dim patterns() As String = Split("212222 222122 222221 121223 121322 131222 122213 122312 132212 221213 221312 231212 112232 " + _
      "122132 122231 113222 123122 123221 223211 221132 221231 213212 223112 312131 311222 321122 321221 312212 322112 322211 " + _
      "212123 212321 232121 111323 131123 131321 112313 132113 132311 211313 231113 231311 112133 112331 132131 113123 113321 " + _
      "133121 313121 211331 231131 213113 213311 213131 311123 311321 331121 312113 312311 332111 314111 221411 431111 111224 " + _
      "111422 121124 121421 141122 141221 112214 112412 122114 122411 142112 142211 241211 221114 413111 241112 134111 111242 " + _
      "121142 121241 114212 124112 124211 411212 421112 421211 212141 214121 412121 111143 111341 131141 114113 114311 411113 " + _
      "411311 113141 114131 311141 411131 211412 211214 211232")
    Const kStartB = 104
    Dim sum As Integer = kStartB
    Dim made As String = patterns(kStartB)
    For i As Integer = 0 To text.Length - 1
      Dim value As Integer = text.Middle(i, 1).Asc - 32
      sum = sum + value * (i + 1)
      made = made + patterns(value)
    Next
    Return made + patterns(sum Mod 103) + "2331112"
  End Function

  Sub Draw(p As Page, x As Double, y As Double, module_ As Double, height As Double)
    DrawWidths(p, Widths, x, y, module_, height)
  End Sub
End Class

' ---------------------------------------------------------------- text

Class Faces
  Regular As Font
  Bold As Font

  Sub Constructor(document As PDFDocument)
    Regular = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
    Bold = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
  End Sub

  Private Function WidthOf(p As Page, face As Font, size As Double, text As String) As Double
    Dim width As Single
    p.SetFont(face, size)
    Call p.MeasureText(text, 5000, False, width)
    Return width
  End Function

  Private Sub Show(p As Page, face As Font, size As Double, x As Double, y As Double, text As String)
    p.BeginText
    p.SetFont(face, size)
    p.MoveTextPosition(x, y)
    p.ShowText(text)
    p.EndText
  End Sub

  ' As large as it may be and as fits.
  Sub Fit(p As Page, face As Font, size As Double, x As Double, y As Double, room As Double, text As String)
    Dim width As Double = WidthOf(p, face, size, text)
    If width > room Then size = size * room / width
    Show(p, face, size, x, y, text)
  End Sub

  Sub Right(p As Page, face As Font, size As Double, x As Double, y As Double, text As String)
    Show(p, face, size, x - WidthOf(p, face, size, text), y, text)
  End Sub

  ' Digits at equal distances.
  Sub Spread(p As Page, size As Double, x As Double, y As Double, room As Double, text As String)
    For i As Integer = 0 To text.Length - 1
      Dim digit As String = text.Middle(i, 1)
      Dim middle As Double = x + room * (i + 0.5) / text.Length
      Show(p, Regular, size, middle - WidthOf(p, Regular, size, digit) / 2, y, digit)
    Next
  End Sub
End Class
