' What ./package runs with the plugins that it unpacks: a page with text, lines and an image, compressed.
' Arguments: the file to write.

Dim document As New QuillbarPDFWriter.PDFDocument(New CompressorHandle)
Dim p As QuillbarPDFWriter.Page = document.AddPage
p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
p.TransformCoordinates = True

p.BeginText
p.SetFont(document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI), 24)
p.MoveTextPosition(72, 96)
p.ShowText("Unpacked and loaded")
p.EndText
p.MoveTo(72, 104)
p.LineTo(300, 104)
p.Draw

Dim raster As New PixelRaster(64, 48, 3)
raster.Fill(&cD1495B)
p.DrawImage(document.LoadImage(raster), 72, 120, 64, 48)

Dim target As New FolderItem(Arguments(0))
document.Save(target)
If document.LastErrorNumber <> 0 Then Print "error " + Hex(document.LastErrorNumber)
If Not target.Exists Then Print "nothing was written"
