' A type specimen: one face large with its metrics, its alphabet, and a cascade of sizes.
'
' Shows a TrueType file, or the font at PATH. Run it with: quillbar run type_specimen.xojo_script [FILE [PATH]]

Const kMargin As Double = 52

Dim fileName As String = "type_specimen.pdf"
Dim fontPath As String = "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
If Arguments.LastIndex >= 1 Then fontPath = Arguments(1)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
Dim face As Font = document.LoadTrueTypeFont(New FolderItem(fontPath))
If face Is Nil Then
  StdErr.WriteLine("No TrueType font: " + fontPath)
  Quit(1)
End If
Dim note As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
document.Title = "Type specimen: " + face.Name

Dim p As Page = document.AddPage
p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
p.TransformCoordinates = True

p.FillColor = &cFBF7EF
p.Rectangle(0, 0, p.Width, p.Height)
p.Fill
WriteText(face, 30, &c8C2F1B, kMargin, 84, face.Name)
WriteText(note, 9, &c7A6F63, kMargin, 104, "ascent " + Str(face.Ascent) + "   descent " + Str(face.Descent) + _
  "   bounding box " + Str(face.BoundingBoxLeft) + ", " + Str(face.BoundingBoxBottom) + ", " + _
  Str(face.BoundingBoxRight) + ", " + Str(face.BoundingBoxTop) + "   in 1/1000 of the size")

DrawLargeLetters(150, 300)
DrawAlphabet(400)
DrawCascade(560)

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Format(target.Length / 1024, "0.0") + " KB"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

' Three letters with the lines that the font's metrics describe.
Sub DrawLargeLetters(size As Double, baseline As Double)
  DrawGuide(baseline - face.Ascent / 1000 * size, "ascent")
  DrawGuide(baseline, "baseline")
  DrawGuide(baseline - face.Descent / 1000 * size, "descent")
  WriteText(face, size, &c2B2622, kMargin + 40, baseline, "Ägß")
End Sub

Sub DrawGuide(height As Double, name As String)
  p.StrokeColor = &cE0C9B8
  p.LineWidth = 0.7
  p.MoveTo(kMargin, height)
  p.LineTo(p.Width - kMargin, height)
  p.Draw
  WriteText(note, 7, &cA08C7D, p.Width - kMargin - 30, height - 3, name)
End Sub

Sub DrawAlphabet(top As Double)
  Dim rows() As String = Array("ABCDEFGHIJKLMNOPQRSTUVWXYZ", "abcdefghijklmnopqrstuvwxyz", _
    "ÄÖÜ ÇÉÈ ŁŻŃ ŘŠŽ ĞİŞ äöü çéè łżń", "ΑΒΓΔΕΖΗΘ αβγδεζηθ  АБВГДЕЖЗ абвгдежз", "0123456789 €$£¥ ½¼¾ @&§¶†‡ “”‘’«»")
  For i As Integer = 0 To rows.LastIndex
    WriteText(face, 19, &c2B2622, kMargin, top + i * 29, rows(i))
  Next
End Sub

Sub DrawCascade(top As Double)
  Dim sizes() As Double = Array(34, 28, 22, 18, 14, 11, 9, 7)
  Dim y As Double = top
  For i As Integer = 0 To sizes.LastIndex
    y = y + sizes(i) * 1.36
    WriteText(note, 7, &cA08C7D, kMargin, y, Str(sizes(i)))
    WriteText(face, sizes(i), &c2B2622, kMargin + 26, y, Shortened("Sphinx of black quartz, judge my vow", sizes(i)))
  Next
End Sub

' As much of a text as fits on the line; MeasureText counts characters.
Function Shortened(text As String, size As Double) As String
  p.SetFont(face, size)
  Dim count As Integer = p.MeasureText(text, p.Width - 2 * kMargin - 26, True)
  Return Trim(Left(text, count))
End Function

Sub WriteText(font As Font, size As Double, colour As Color, x As Double, baseline As Double, text As String)
  p.FillColor = colour
  p.BeginText
  p.SetFont(font, size)
  p.MoveTextPosition(x, baseline)
  p.ShowText(text)
  p.EndText
End Sub

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  Print "The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")"
End Sub
