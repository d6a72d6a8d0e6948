' ShowText alone: pages of 50 lines in one place.
WriteDocument(CLong(Arguments(0)), Arguments(1))

Sub WriteDocument(pages As Integer, path As String)
  Dim document As New PDFDocument
  Dim helvetica As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
  Dim text As String = "The quick brown fox jumps over the lazy dog, and the dog over the fox again."
  For i As Integer = 1 To pages
    Dim p As Page = document.AddPage
    p.BeginText
    p.SetFont(helvetica, 10.5)
    For line As Integer = 1 To 50
      p.ShowText(text)
    Next
    p.EndText
  Next
  document.Save(New FolderItem(path))
End Sub
