' A directory of the world's time zones: a dot map, then every zone with its country, place and offset.
'
' The data is the time zone database's own, as Debian's tzdata package installs it. Run it with:
' quillbar run time_zones.xojo_script [FILE [DATABASE FOLDER]]

Const kMargin As Double = 42
Const kColumns As Integer = 2
Const kRowHeight As Double = 13.2

' One zone, spread over arrays of the same length: the language has no records.
Dim zoneNames() As String
Dim zoneCountries() As String
Dim zoneLatitudes() As Double
Dim zoneLongitudes() As Double
Dim zoneOffsets() As String
Dim countryCodes() As String
Dim countryNames() As String

Dim fileName As String = "time_zones.pdf"
Dim databaseFolder As String = "/usr/share/zoneinfo"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
If Arguments.LastIndex >= 1 Then databaseFolder = Arguments(1)
Dim database As New FolderItem(databaseFolder)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim began As Double = Microseconds
ReadCountries(database.Child("iso3166.tab"))
ReadZones(database.Child("zone1970.tab"))

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Title = "Time zones of the world"
Dim regular As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim bold As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim pageCount As Integer = 0

DrawMapPage
DrawDirectory

document.Save(target)
If Not target.Exists Then
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
Else
  Print "Wrote " + target.NativePath + ": " + Str(zoneNames.LastIndex + 1) + " zones on " + Str(pageCount) + _
    " pages, " + Format(target.Length / 1024, "0.0") + " KB, in " + Format((Microseconds - began) / 1000000, "0.000") + " s"
End If

' ---------------------------------------------------------------- reading the database

Sub ReadCountries(file As FolderItem)
  Dim input As TextInputStream = TextInputStream.Open(file)
  While Not input.EndOfFile
    Dim line As String = input.ReadLine
    If line <> "" And Left(line, 1) <> "#" Then
      countryCodes.Append(NthField(line, Chr(9), 1))
      countryNames.Append(NthField(line, Chr(9), 2))
    End If
  Wend
  input.Close
End Sub

Sub ReadZones(file As FolderItem)
  Dim rows() As String
  Dim input As TextInputStream = TextInputStream.Open(file)
  While Not input.EndOfFile
    Dim line As String = input.ReadLine
    If line <> "" And Left(line, 1) <> "#" Then
      ' The zone's name comes first, so that sorting the rows sorts by name.
      rows.Append(NthField(line, Chr(9), 3) + Chr(9) + NthField(line, Chr(9), 1) + Chr(9) + NthField(line, Chr(9), 2))
    End If
  Wend
  input.Close
  rows.Sort

  For Each row As String In rows
    Dim name As String = NthField(row, Chr(9), 1)
    Dim place As String = NthField(row, Chr(9), 3)
    Dim split As Integer = LongitudeStart(place)
    zoneNames.Append(name)
    zoneCountries.Append(CountryName(NthField(NthField(row, Chr(9), 2), ",", 1)))
    zoneLatitudes.Append(Degrees(Left(place, split - 1), 2))
    zoneLongitudes.Append(Degrees(Mid(place, split), 3))
    zoneOffsets.Append(ZoneRule(database, name))
  Next
End Sub

' "+4230+00131": the second sign begins the longitude.
Function LongitudeStart(place As String) As Integer
  For i As Integer = 2 To Len(place)
    Dim sign As String = Mid(place, i, 1)
    If sign = "+" Or sign = "-" Then Return i
  Next
  Return Len(place) + 1
End Function

' ±DDMM or ±DDDMMSS, in degrees.
Function Degrees(text As String, digits As Integer) As Double
  Dim value As Double = Val(Mid(text, 2, digits)) + Val(Mid(text, 2 + digits, 2)) / 60
  If Len(text) > digits + 3 Then value = value + Val(Mid(text, 4 + digits, 2)) / 3600
  If Left(text, 1) = "-" Then value = -value
  Return value
End Function

Function CountryName(code As String) As String
  Dim index As Integer = countryCodes.IndexOf(code)
  If index < 0 Then Return code
  Return countryNames(index)
End Function

' The last line of a zone's file is its rule today, for example "CET-1CEST,M3.5.0,M10.5.0/3".
Function ZoneRule(folder As FolderItem, name As String) As String
  Dim file As FolderItem = folder
  For Each part As String In Split(name, "/")
    file = file.Child(part)
  Next
  If Not file.Exists Then Return ""
  Dim input As BinaryStream = BinaryStream.Open(file)
  Dim bytes As String = input.Read(input.Length)
  input.Close
  Dim lines() As String = Split(bytes, Chr(10))
  If lines.LastIndex < 1 Then Return ""
  Return OffsetOf(lines(lines.LastIndex - 1))
End Function

' The standard offset of a rule, the sign in the usual sense, and a mark when clocks change.
Function OffsetOf(rule As String) As String
  Dim i As Integer = 1
  If Left(rule, 1) = "<" Then
    i = InStr(rule, ">") + 1
  Else
    While i <= Len(rule) And InStr("+-0123456789", Mid(rule, i, 1)) = 0
      i = i + 1
    Wend
  End If
  Dim offset As String = ""
  While i <= Len(rule) And InStr("+-0123456789:", Mid(rule, i, 1)) > 0
    offset = offset + Mid(rule, i, 1)
    i = i + 1
  Wend
  Dim west As Boolean = Left(offset, 1) <> "-"
  offset = Replace(Replace(offset, "-", ""), "+", "")
  Dim hours As Integer = CType(Val(NthField(offset, ":", 1)), Integer)
  Dim minutes As Integer = CType(Val(NthField(offset, ":", 2)), Integer)
  Dim sign As String = "+"
  If west And hours + minutes > 0 Then sign = "-"
  Dim text As String = "UTC" + sign + Format(hours, "00") + ":" + Format(minutes, "00")
  If InStr(rule, ",") > 0 Then text = text + " *"
  Return text
End Function

' ---------------------------------------------------------------- pages

Function NewPage() As Page
  Dim p As Page = document.AddPage
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.LANDSCAPE)
  p.TransformCoordinates = True
  pageCount = pageCount + 1
  Return p
End Function

Sub DrawMapPage()
  Dim p As Page = NewPage
  p.FillColor = &c0E2A47
  p.Rectangle(0, 0, p.Width, p.Height)
  p.Fill
  WriteText(p, bold, 30, &cFFFFFF, kMargin, 66, "Time zones of the world")
  WriteText(p, regular, 11, &c9DB8D2, kMargin, 86, Str(zoneNames.LastIndex + 1) + _
    " zones of the time zone database; each dot is the place that a zone is named for")

  Dim w As Double = p.Width - 2 * kMargin
  Dim h As Double = w / 2
  Dim top As Double = 116
  p.FillColor = &c133556
  p.Rectangle(kMargin, top, w, h)
  p.Fill
  p.LineWidth = 0.4
  For band As Integer = 0 To 24
    Dim x As Double = kMargin + band * w / 24
    p.StrokeColor = &c24507A
    If band = 12 Then p.StrokeColor = &c5F86AB
    DrawLine(p, x, top, x, top + h)
    Dim label As String = Str(band - 12)
    If band > 12 Then label = "+" + label
    WriteText(p, regular, 6.5, &c9DB8D2, x - 4, top + h + 11, label)
  Next
  For parallel As Integer = -60 To 60 Step 30
    p.StrokeColor = &c24507A
    If parallel = 0 Then p.StrokeColor = &c5F86AB
    Dim y As Double = top + (90 - parallel) / 180 * h
    DrawLine(p, kMargin, y, kMargin + w, y)
  Next

  For i As Integer = 0 To zoneNames.LastIndex
    Dim x As Double = kMargin + (zoneLongitudes(i) + 180) / 360 * w
    Dim y As Double = top + (90 - zoneLatitudes(i)) / 180 * h
    p.FillColor = RegionColour(Region(zoneNames(i)))
    p.Ellipse(x, y, 2.4, 2.4)
    p.Fill
  Next

  Dim regions() As String = Array("Africa", "America", "Antarctica", "Asia", "Atlantic", "Australia", "Europe", "Indian", "Pacific")
  For i As Integer = 0 To regions.LastIndex
    Dim x As Double = kMargin + i * w / 9
    p.FillColor = RegionColour(regions(i))
    p.Ellipse(x + 4, p.Height - 56, 3.5, 3.5)
    p.Fill
    WriteText(p, regular, 9, &cE6EEF6, x + 12, p.Height - 53, regions(i))
  Next
  DrawPageNumber(p, &c9DB8D2)
End Sub

Sub DrawDirectory()
  Dim p As Page = Nil
  Dim column As Integer = kColumns
  Dim y As Double = 0
  Dim current As String = ""
  Dim bottom As Double = 0
  For i As Integer = 0 To zoneNames.LastIndex
    Dim needed As Double = kRowHeight
    If Region(zoneNames(i)) <> current Then needed = 3.2 * kRowHeight
    If p Is Nil Or y + needed > bottom Then
      column = column + 1
      If column >= kColumns Then
        p = NewPage
        bottom = p.Height - 58
        DrawPageHead(p)
        DrawPageNumber(p, &c6B7785)
        column = 0
      End If
      y = 84
    End If
    Dim w As Double = (p.Width - 2 * kMargin - 26 * (kColumns - 1)) / kColumns
    Dim x As Double = kMargin + column * (w + 26)
    If Region(zoneNames(i)) <> current Then
      current = Region(zoneNames(i))
      y = y + 0.6 * kRowHeight
      p.FillColor = RegionColour(current)
      p.Rectangle(x, y, w, 17)
      p.Fill
      WriteText(p, bold, 10, &cFFFFFF, x + 6, y + 12.2, current)
      y = y + 17 + 4
    ElseIf i Mod 2 = 0 Then
      p.FillColor = &cF1F4F8
      p.Rectangle(x, y, w, kRowHeight)
      p.Fill
    End If
    Dim place As String = Mid(zoneNames(i), Len(current) + 2)
    WriteText(p, regular, 8.5, &c14304F, x + 6, y + 9.6, Replace(place.ReplaceAll("_", " "), "/", ", "))
    WriteText(p, regular, 8.5, &c6B7785, x + w * 0.34, y + 9.6, Shortened(zoneCountries(i), 22))
    WriteText(p, regular, 8, &c6B7785, x + w * 0.6, y + 9.6, Position(zoneLatitudes(i), "N", "S") + "  " + Position(zoneLongitudes(i), "E", "W"))
    WriteText(p, bold, 8, &c14304F, x + w - 58, y + 9.6, zoneOffsets(i))
    y = y + kRowHeight
  Next
End Sub

Sub DrawPageHead(p As Page)
  WriteText(p, bold, 14, &c14304F, kMargin, 52, "Time zones of the world")
  WriteText(p, regular, 8.5, &c6B7785, kMargin, 66, "Standard offset from UTC; * where clocks change in the year")
  p.StrokeColor = &c14304F
  p.LineWidth = 0.8
  DrawLine(p, kMargin, 74, p.Width - kMargin, 74)
End Sub

Sub DrawPageNumber(p As Page, colour As Color)
  WriteText(p, regular, 8, colour, p.Width - kMargin - 30, p.Height - 26, "Page " + Str(pageCount))
  WriteText(p, regular, 8, colour, kMargin, p.Height - 26, "Source: the time zone database, zone1970.tab")
End Sub

' ---------------------------------------------------------------- shared

Function Region(zone As String) As String
  Return NthField(zone, "/", 1)
End Function

Function Shortened(text As String, most As Integer) As String
  If Len(text) <= most Then Return text
  Return Trim(Left(text, most - 1)) + "…"
End Function

Function Position(degreesOnAxis As Double, positive As String, negative As String) As String
  Dim size As Double = Abs(degreesOnAxis)
  Dim whole As Integer = CType(Floor(size), Integer)
  Dim minutes As Integer = CType(Floor((size - whole) * 60 + 0.01), Integer)
  Dim letter As String = positive
  If degreesOnAxis < 0 Then letter = negative
  Return Str(whole) + "°" + Format(minutes, "00") + "’ " + letter
End Function

Function RegionColour(name As String) As Color
  Select Case name
  Case "Africa"
    Return &cF2B134
  Case "America"
    Return &cE76F51
  Case "Antarctica", "Arctic"
    Return &c8FB3D1
  Case "Asia"
    Return &cD1495B
  Case "Atlantic"
    Return &c2E86AB
  Case "Australia"
    Return &cB07BAC
  Case "Europe"
    Return &c3BB273
  Case "Indian"
    Return &c00A5A8
  Else
    Return &c5C7CFA
  End Select
End Function

Sub DrawLine(p As Page, x1 As Double, y1 As Double, x2 As Double, y2 As Double)
  p.MoveTo(x1, y1)
  p.LineTo(x2, y2)
  p.Draw
End Sub

Sub WriteText(p As Page, face As Font, size As Double, colour As Color, x As Double, y As Double, text As String)
  p.FillColor = colour
  p.BeginText
  p.SetFont(face, size)
  p.MoveTextPosition(x, y)
  p.ShowText(text)
  p.EndText
End Sub

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  Print "The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")"
End Sub
