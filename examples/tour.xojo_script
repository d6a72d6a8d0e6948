' A tour of the PDF writer in two pages.
'
' The first page works from the top-left corner down, as screens do; the second one from the
' bottom-left corner up, as PDF itself does. Run it with: quillbar run tour.xojo_script [FILE]

Const kMargin As Double = 48
Const kPi As Double = 3.14159265358979

Dim began As Double = Microseconds
Dim fileName As String = "tour.pdf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Author = "Quillbar"
document.Title = "A tour of Quillbar PDF Writer"

Dim regular As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim bold As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)

DrawFirstPage(document.AddPage)
DrawSecondPage(document.AddPage)

document.Save(target)
If Not target.Exists Then
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
Else
  Dim seconds As Double = (Microseconds - began) / 1000000
  Print "Wrote " + target.NativePath + ": 2 pages, " + Format(target.Length / 1024, "0.0") + " KB, in " + _
    Format(seconds, "0.000") + " s"
End If

' ---------------------------------------------------------------- the first page

Sub DrawFirstPage(p As Page)
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
  p.TransformCoordinates = True
  DrawHeader(p)

  Dim w As Double = (p.Width - 2 * kMargin - 20) / 2
  Dim left As Double = kMargin
  Dim right As Double = kMargin + w + 20
  DrawPanel(p, left, 152, w, "Paths", "lines and curves, filled, drawn or both")
  DrawPaths(p, left, 152)
  DrawPanel(p, right, 152, w, "Colour", "RGB wedges, CMYK strips")
  DrawColours(p, right, 152)
  DrawPanel(p, left, 372, w, "Lines", "caps, joins and dash patterns")
  DrawLines(p, left, 372)
  DrawPanel(p, right, 372, w, "Clipping", "stripes seen through a star and a disc")
  DrawClipping(p, right, 372)
  DrawPanel(p, left, 592, w, "Matrices", "one petal, turned and scaled")
  DrawMatrices(p, left, 592)
  DrawPanel(p, right, 592, w, "Text", "faces, rendering modes, rotation")
  DrawText(p, right, 592)
  DrawFooter(p, 1)
End Sub

' A band of overlapping rings under the title.
Sub DrawHeader(p As Page)
  p.SaveState
  p.Rectangle(0, 0, p.Width, 120)
  p.Clip
  p.EndPath
  p.FillColor = &c14304F
  p.Rectangle(0, 0, p.Width, 120)
  p.Fill
  For ring As Integer = 0 To 9
    Dim shade As Double = ring / 9
    p.SetRGBStroke(0.12 + 0.2 * shade, 0.26 + 0.32 * shade, 0.42 + 0.4 * shade)
    p.LineWidth = 0.8
    p.Ellipse(470, 60, 12 + ring * 11, 12 + ring * 11)
    p.Draw
  Next
  p.FillColor = &cF2B134
  p.Ellipse(470, 60, 7, 7)
  p.Fill
  p.RestoreState

  WriteText(p, bold, 30, &cFFFFFF, kMargin, 62, "Quillbar PDF Writer")
  WriteText(p, regular, 12, &cC9D8E8, kMargin, 86, "A tour of pages, paths, colours and text")
End Sub

Sub DrawPanel(p As Page, x As Double, y As Double, w As Double, title As String, caption As String)
  p.FillColor = &cF6F7F9
  p.Rectangle(x, y, w, 204)
  p.Fill
  p.StrokeColor = &cD5DAE1
  p.LineWidth = 0.6
  p.Rectangle(x, y, w, 204)
  p.Draw
  WriteText(p, bold, 11, &c14304F, x + 12, y + 20, title)
  WriteText(p, regular, 8, &c6B7785, x + 12, y + 32, caption)
End Sub

Sub DrawPaths(p As Page, x As Double, y As Double)
  p.FillColor = &cF2B134
  p.StrokeColor = &c8A5A00
  p.LineWidth = 1.5
  AddStar(p, x + 60, y + 95, 42, 18, 5)
  p.FillAndDraw

  p.FillColor = &cD1495B
  Dim hx As Double = x + 176
  Dim hy As Double = y + 76
  p.MoveTo(hx, hy)
  p.CurveTo(hx - 12, hy - 30, hx - 54, hy - 16, hx - 42, hy + 16)
  p.CurveTo(hx - 36, hy + 32, hx - 14, hy + 44, hx, hy + 62)
  p.CurveTo(hx + 14, hy + 44, hx + 36, hy + 32, hx + 42, hy + 16)
  p.CurveTo(hx + 54, hy - 16, hx + 12, hy - 30, hx, hy)
  p.Fill

  p.StrokeColor = &c2E86AB
  p.LineWidth = 2
  p.MoveTo(x + 18, y + 182)
  For wave As Integer = 0 To 4
    Dim wx As Double = x + 18 + wave * 40
    p.CurveTo(wx + 10, y + 140, wx + 30, y + 140, wx + 40, y + 172)
  Next
  p.Draw
  p.StrokeColor = &c3BB273
  p.MoveTo(x + 18, y + 194)
  p.CurveTo2(x + 90, y + 150, x + 120, y + 190)
  p.CurveTo3(x + 160, y + 206, x + 218, y + 158)
  p.Draw
End Sub

Sub DrawColours(p As Page, x As Double, y As Double)
  Dim cx As Double = x + 78
  Dim cy As Double = y + 118
  For wedge As Integer = 0 To 35
    Dim a1 As Double = wedge * 10 * kPi / 180
    Dim a2 As Double = (wedge + 1.08) * 10 * kPi / 180
    p.SetRGBFill(Hue(wedge / 36), Hue(wedge / 36 - 1 / 3), Hue(wedge / 36 - 2 / 3))
    p.MoveTo(cx + 24 * Cos(a1), cy - 24 * Sin(a1))
    p.LineTo(cx + 60 * Cos(a1), cy - 60 * Sin(a1))
    p.LineTo(cx + 60 * Cos(a2), cy - 60 * Sin(a2))
    p.LineTo(cx + 24 * Cos(a2), cy - 24 * Sin(a2))
    p.Fill
  Next
  For level As Integer = 0 To 9
    Dim share As Double = (level + 1) / 10
    Dim top As Double = y + 58 + level * 12
    p.SetCMYKFill(share, 0, 0, 0)
    p.Rectangle(x + 158, top, 17, 11)
    p.Fill
    p.SetCMYKFill(0, share, 0, 0)
    p.Rectangle(x + 176, top, 17, 11)
    p.Fill
    p.SetCMYKFill(0, 0, share, 0)
    p.Rectangle(x + 194, top, 17, 11)
    p.Fill
    p.SetCMYKFill(0, 0, 0, share)
    p.Rectangle(x + 212, top, 17, 11)
    p.Fill
  Next
End Sub

' One channel of a pure hue; the three channels are a third of a turn apart.
Function Hue(turn As Double) As Double
  Dim level As Double = 0.5 + 0.75 * Cos(2 * kPi * turn)
  Return Max(0, Min(1, level))
End Function

Sub DrawLines(p As Page, x As Double, y As Double)
  For cap As Integer = 0 To 2
    Dim ly As Double = y + 54 + cap * 20
    p.LineCapType = CType(cap, Page.LineCapTypeEnum)
    p.StrokeColor = &c14304F
    p.LineWidth = 11
    DrawLine(p, x + 26, ly, x + 96, ly)
    p.LineCapType = Page.LineCapTypeEnum.BUTT_END
    p.StrokeColor = &cFFFFFF
    p.LineWidth = 0.8
    DrawLine(p, x + 26, ly, x + 96, ly)
  Next
  For join As Integer = 0 To 2
    p.LineJoinType = CType(join, Page.LineJoinTypeEnum)
    p.StrokeColor = &c2E86AB
    p.LineWidth = 9
    Dim jx As Double = x + 120 + join * 36
    p.MoveTo(jx, y + 98)
    p.LineTo(jx + 14, y + 54)
    p.LineTo(jx + 28, y + 98)
    p.Draw
  Next
  p.LineJoinType = Page.LineJoinTypeEnum.MITER

  p.StrokeColor = &cD1495B
  p.LineWidth = 2
  Dim dots() As UInt16 = Array(2, 2)
  Dim dashes() As UInt16 = Array(12, 4)
  Dim mixed() As UInt16 = Array(14, 4, 2, 4)
  Dim single() As UInt16 = Array(6)
  p.SetDashPattern(dots, 0)
  DrawLine(p, x + 20, y + 124, x + 220, y + 124)
  p.SetDashPattern(dashes, 0)
  DrawLine(p, x + 20, y + 142, x + 220, y + 142)
  p.SetDashPattern(mixed, 7)
  DrawLine(p, x + 20, y + 160, x + 220, y + 160)
  p.SetDashPattern(single, 0)
  DrawLine(p, x + 20, y + 178, x + 220, y + 178)
  p.ResetDashPattern
End Sub

Sub DrawLine(p As Page, x1 As Double, y1 As Double, x2 As Double, y2 As Double)
  p.MoveTo(x1, y1)
  p.LineTo(x2, y2)
  p.Draw
End Sub

Sub DrawClipping(p As Page, x As Double, y As Double)
  p.SaveState
  AddStar(p, x + 76, y + 118, 66, 38, 9)
  p.Clip
  p.EndPath
  DrawStripes(p, x, y, 0)
  p.RestoreState
  p.SaveState
  p.Ellipse(x + 184, y + 118, 40, 62)
  p.Clip
  p.EndPath
  DrawStripes(p, x, y, 3)
  p.RestoreState
End Sub

Sub DrawStripes(p As Page, x As Double, y As Double, start As Integer)
  Dim palette() As Color = Array(&c14304F, &c2E86AB, &c3BB273, &cF2B134, &cE76F51, &cD1495B)
  For stripe As Integer = 0 To 17
    p.FillColor = palette((stripe + start) Mod 6)
    Dim sx As Double = x - 60 + stripe * 20
    p.MoveTo(sx, y + 200)
    p.LineTo(sx + 70, y + 40)
    p.LineTo(sx + 90, y + 40)
    p.LineTo(sx + 20, y + 200)
    p.Fill
  Next
End Sub

' With a matrix it is simplest to work in PDF's own space, so the flip is switched off for a moment.
Sub DrawMatrices(p As Page, x As Double, y As Double)
  Dim height As Double = p.Height
  p.TransformCoordinates = False
  For petal As Integer = 0 To 23
    Dim angle As Double = petal * 15 * kPi / 180
    Dim size As Double = 0.55 + 0.45 * (petal Mod 2)
    p.SaveState
    p.ConcatMatrix(Cos(angle) * size, Sin(angle) * size, -Sin(angle) * size, Cos(angle) * size, _
      x + 120, height - (y + 118))
    If petal Mod 2 = 1 Then
      p.FillColor = &cBFD7EA
    Else
      p.FillColor = &c2E86AB
    End If
    p.StrokeColor = &c14304F
    p.LineWidth = 0.6
    p.MoveTo(0, 14)
    p.CurveTo(22, 30, 16, 62, 0, 74)
    p.CurveTo(-16, 62, -22, 30, 0, 14)
    p.FillAndDraw
    p.RestoreState
  Next
  p.FillColor = &cF2B134
  p.Ellipse(x + 120, height - (y + 118), 11, 11)
  p.Fill
  p.TransformCoordinates = True
End Sub

Sub DrawText(p As Page, x As Double, y As Double)
  Dim names() As String = Array("Helvetica-BoldOblique", "Times-Roman", "Times-Italic", "Courier-Bold")
  For i As Integer = 0 To names.LastIndex
    Dim face As Font = BaseFont(names(i))
    WriteText(p, face, 14, &c14304F, x + 14, y + 58 + i * 19, names(i))
  Next

  p.StrokeColor = &cD1495B
  p.LineWidth = 0.7
  p.BeginText
  p.SetFont(bold, 34)
  p.TextRenderingMode = Page.TextRenderingModeEnum.STROKE
  p.SetTextMatrix(1, 0, 0, 1, x + 14, y + 156)
  p.ShowText("Outline")
  p.TextRenderingMode = Page.TextRenderingModeEnum.FILL
  p.EndText

  WriteText(p, regular, 9, &c3D4A57, x + 14, y + 190, "Grüße, naïve façade – œuvre “quoted” €")

  Dim shades() As Color = Array(&cC9D8E8, &c8FB3D1, &c2E86AB, &c14304F)
  For turn As Integer = 0 To 3
    p.FillColor = shades(turn)
    p.BeginText
    p.SetFont(bold, 12)
    p.SetTextRotation(turn * 26, x + 176, y + 168)
    p.ShowText("   rotated")
    p.EndText
  Next
End Sub

Function BaseFont(name As String) As Font
  Return document.GetFont(name, Font.FontEncodingEnum.WINDOWS_ANSI)
End Function

' ---------------------------------------------------------------- the second page

' PDF's own space: the origin is the bottom-left corner and y grows upwards, which suits a plot.
Sub DrawSecondPage(p As Page)
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
  WriteText(p, bold, 20, &c14304F, kMargin, 776, "From the bottom left")
  WriteText(p, regular, 10, &c6B7785, kMargin, 758, "The same page operations with TransformCoordinates off: a plot needs no flip.")
  DrawPlot(p, kMargin, 452, p.Width - 2 * kMargin, 270)
  DrawRosette(p, p.Width / 2, 246, 160)
  DrawFooter(p, 2)
End Sub

Sub DrawPlot(p As Page, x As Double, y As Double, w As Double, h As Double)
  p.StrokeColor = &cE1E5EA
  p.LineWidth = 0.5
  For i As Integer = 0 To 12
    DrawLine(p, x + i * w / 12, y, x + i * w / 12, y + h)
  Next
  For i As Integer = 0 To 8
    DrawLine(p, x, y + i * h / 8, x + w, y + i * h / 8)
  Next
  p.StrokeColor = &c3D4A57
  p.LineWidth = 1
  DrawLine(p, x, y + h / 2, x + w, y + h / 2)
  DrawLine(p, x, y, x, y + h)
  For i As Integer = 0 To 12
    WriteText(p, regular, 7, &c6B7785, x + i * w / 12 - 5, y - 12, Str(i * 30) + Chr(176))
  Next

  ' A square wave, built from more and more of its odd harmonics.
  Dim colours() As Color = Array(&c9CBAD6, &c6E9CC4, &c2E86AB, &cD1495B)
  Dim terms() As Integer = Array(1, 2, 4, 24)
  For curve As Integer = 0 To 3
    p.StrokeColor = colours(curve)
    p.LineWidth = 0.8 + 0.35 * curve
    For i As Integer = 0 To 480
      Dim t As Double = i / 480
      Dim value As Double = 0
      For k As Integer = 1 To terms(curve)
        value = value + Sin(2 * kPi * (2 * k - 1) * t) / (2 * k - 1)
      Next
      Dim px As Double = x + t * w
      Dim py As Double = y + h / 2 + value * h * 0.38
      If i = 0 Then
        p.MoveTo(px, py)
      Else
        p.LineTo(px, py)
      End If
    Next
    p.Draw
    Dim label As String = " harmonics"
    If terms(curve) = 1 Then label = " harmonic"
    WriteText(p, regular, 9, colours(curve), x + w - 84, y + h - 16 - curve * 13, Str(terms(curve)) + label)
  Next
End Sub

Sub DrawRosette(p As Page, cx As Double, cy As Double, radius As Double)
  For ring As Integer = 0 To 35
    Dim angle As Double = ring * 10 * kPi / 180
    p.SetRGBStroke(0.18 + 0.6 * Hue(ring / 36), 0.3 + 0.3 * Hue(ring / 36 - 1 / 3), 0.45 + 0.3 * Hue(ring / 36 - 2 / 3))
    p.LineWidth = 0.7
    p.Ellipse(cx + radius / 2 * Cos(angle), cy + radius / 2 * Sin(angle), radius / 2, radius / 2)
    p.Draw
  Next
  p.StrokeColor = &c14304F
  p.LineWidth = 2
  For part As Integer = 0 To 11
    p.Arc(cx, cy, radius + 12, part * 30, part * 30 + 22)
    p.Draw
  Next
End Sub

' ---------------------------------------------------------------- shared

Sub AddStar(p As Page, cx As Double, cy As Double, outer As Double, inner As Double, points As Integer)
  For corner As Integer = 0 To points * 2 - 1
    Dim radius As Double = outer
    If corner Mod 2 = 1 Then radius = inner
    Dim angle As Double = corner * kPi / points - kPi / 2
    Dim px As Double = cx + radius * Cos(angle)
    Dim py As Double = cy + radius * Sin(angle)
    If corner = 0 Then
      p.MoveTo(px, py)
    Else
      p.LineTo(px, py)
    End If
  Next
  p.LineTo(cx + outer * Cos(-kPi / 2), cy + outer * Sin(-kPi / 2))
End Sub

Sub WriteText(p As Page, face As Font, size As Double, colour As Color, x As Double, y As Double, text As String)
  p.FillColor = colour
  p.BeginText
  p.SetFont(face, size)
  p.MoveTextPosition(x, y)
  p.ShowText(text)
  p.EndText
End Sub

Sub DrawFooter(p As Page, number As Integer)
  Dim y As Double = 24
  If p.TransformCoordinates Then y = p.Height - 24
  WriteText(p, regular, 8, &c6B7785, kMargin, y, "Quillbar PDF Writer")
  WriteText(p, regular, 8, &c6B7785, p.Width - kMargin - 28, y, "Page " + Str(number))
End Sub

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  Print "The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")"
End Sub
