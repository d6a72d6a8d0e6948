' LineTo alone: a path of 1,000 lines on each page.
WriteDocument(CLong(Arguments(0)), Arguments(1))

Sub WriteDocument(pages As Integer, path As String)
  Dim document As New PDFDocument
  For i As Integer = 1 To pages
    Dim p As Page = document.AddPage
    p.MoveTo(50, 50)
    For x As Integer = 1 To 1000
      p.LineTo(x, 400.5)
    Next
    p.Draw
  Next
  document.Save(New FolderItem(path))
End Sub
