' Pages of 1,000 operations on paths.
WriteDocument(CLong(Arguments(0)), Arguments(1))

Sub WriteDocument(pages As Integer, path As String)
  Dim document As New PDFDocument
  For i As Integer = 1 To pages
    Dim p As Page = document.AddPage
    p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
    For figure As Integer = 0 To 99
      Dim x As Single = 20.0 + (figure Mod 10) * 55.37
      Dim y As Single = 20.0 + (figure \ 10) * 79.91
      Dim shade As Single = figure / 100.0
      p.SetRGBStroke(shade, 0.25, 1.0 - shade)
      p.LineWidth = 0.25 + shade
      p.MoveTo(x, y)
      p.LineTo(x + 41.5, y + 3.25)
      p.LineTo(x + 38.125, y + 61.75)
      p.CurveTo(x + 30.1, y + 70.2, x + 12.3, y + 66.4, x + 5.5, y + 40.6)
      p.CurveTo(x + 1.7, y + 30.8, x - 3.9, y + 11.1, x, y)
      p.Draw
      p.Rectangle(x + 8.0, y + 9.0, 21.7, 33.3)
      p.Draw
    Next
  Next
  document.Save(New FolderItem(path))
End Sub
