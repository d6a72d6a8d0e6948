' Pages of 50 lines of text.
Dim words() As String = Array("measure", "of", "type", "leading", "in", "points", "kerned", "a", "across", "column", _
  "page", "baseline", "glyph", "and", "the", "folio")
Dim lines() As String
Dim state As UInt32 = 1
For i As Integer = 1 To 50
  Dim line As String = Str(i) + "."
  While line.Bytes < 76
    state = state * 1664525 + 1013904223
    line = line + " " + words(Bitwise.ShiftRight(state, 28))
  Wend
  lines.Append(line)
Next

WriteDocument(CLong(Arguments(0)), Arguments(1))

Sub WriteDocument(pages As Integer, path As String)
  Dim document As New PDFDocument
  Dim helvetica As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
  For i As Integer = 1 To pages
    Dim p As Page = document.AddPage
    p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
    p.BeginText
    p.SetFont(helvetica, 10.5)
    p.MoveTextPosition(56, 780)
    For line As Integer = 0 To 49
      p.ShowText(lines(line))
      p.MoveTextPosition(0, -14.25)
    Next
    p.EndText
  Next
  document.Save(New FolderItem(path))
End Sub
