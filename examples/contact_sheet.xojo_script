' A contact sheet: every picture of a folder, small, with its name and size.
'
' JPEG files are stored in the document unchanged. PNG, TIFF and WebP files are read into a PixelRaster, so their
' transparency is kept. Run it at the top of the repository, or with a folder of yours:
' quillbar run contact_sheet.xojo_script [FOLDER [FILE]]

Const kColumns As Integer = 4
Const kRows As Integer = 3
Const kMargin As Double = 36
Const kGap As Double = 14
Const kCaption As Double = 26

Dim folderName As String = "examples/data/pictures"
Dim fileName As String = "contact_sheet.pdf"
If Arguments.LastIndex >= 0 Then folderName = Arguments(0)
If Arguments.LastIndex >= 1 Then fileName = Arguments(1)
Dim folder As New FolderItem(folderName)
If Not folder.Exists Then
  StdErr.WriteLine("There is no folder " + folder.NativePath + "; name one: contact_sheet.xojo_script FOLDER")
  Quit(1)
End If
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
document.Title = "Pictures of " + folder.Name
Dim regular As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim bold As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)

Dim sheet As Page
Dim shown As Integer = 0
For number As Integer = 1 To folder.Count
  Dim file As FolderItem = folder.Item(number)
  Dim picture As Image = LoadPicture(file)
  If picture <> Nil Then
    If shown Mod (kColumns * kRows) = 0 Then sheet = NewSheet(shown \ (kColumns * kRows) + 1)
    DrawCell(sheet, shown Mod (kColumns * kRows), picture, file)
    shown = shown + 1
  End If
Next
If shown = 0 Then
  Print "No picture could be read in " + folder.NativePath
  Return
End If
document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Str(shown) + " pictures, " + Format(target.Length / 1024, "0") + " KB"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

' A picture of any kind; Nil for a file that isn't a picture.
Function LoadPicture(file As FolderItem) As Image
  If file.Directory Then Return Nil
  Dim name As String = Lowercase(file.Name)
  If EndsWith(name, ".jpg") Or EndsWith(name, ".jpeg") Then
    Dim stream As BinaryStream = BinaryStream.Open(file)
    Dim data As String = stream.Read(stream.Length)
    stream.Close
    Return document.LoadJPEGImage(data)
  End If
  If EndsWith(name, ".png") Or EndsWith(name, ".tif") Or EndsWith(name, ".tiff") Or EndsWith(name, ".webp") Then
    Dim raster As New PixelRaster(file)
    If raster.Width = 0 Then Print file.Name + ": " + raster.ErrorMessage
    Return document.LoadImage(raster) ' Nil for a raster without pixels
  End If
  Return Nil
End Function

Function EndsWith(text As String, ending As String) As Boolean
  Return Right(text, Len(ending)) = ending
End Function

Function NewSheet(number As Integer) As Page
  Dim p As Page = document.AddPage
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.LANDSCAPE)
  p.TransformCoordinates = True
  p.FillColor = &c20242B
  p.Rectangle(0, 0, p.Width, p.Height)
  p.Fill
  WriteText(p, bold, 18, &cFFFFFF, kMargin, kMargin + 14, folder.Name)
  WriteText(p, regular, 9, &c8C96A5, kMargin, kMargin + 28, "Sheet " + Str(number))
  Return p
End Function

' Fits the picture into its cell without changing its shape.
Sub DrawCell(p As Page, cell As Integer, picture As Image, file As FolderItem)
  Dim top As Double = kMargin + 44
  Dim w As Double = (p.Width - 2 * kMargin - (kColumns - 1) * kGap) / kColumns
  Dim h As Double = (p.Height - top - kMargin - (kRows - 1) * kGap) / kRows
  Dim x As Double = kMargin + (cell Mod kColumns) * (w + kGap)
  Dim y As Double = top + (cell \ kColumns) * (h + kGap)

  p.FillColor = &c2C323B
  p.Rectangle(x, y, w, h)
  p.Fill
  Dim room As Double = h - kCaption - 8
  Dim scale As Double = Min((w - 12) / picture.Width, room / picture.Height)
  Dim pw As Double = picture.Width * scale
  Dim ph As Double = picture.Height * scale
  p.DrawImage(picture, x + (w - pw) / 2, y + 6 + (room - ph) / 2, pw, ph)
  WriteText(p, bold, 8, &cE8ECF1, x + 8, y + h - 15, file.Name)
  WriteText(p, regular, 7, &c8C96A5, x + 8, y + h - 6, Str(picture.Width) + " x " + Str(picture.Height) + ", " + _
    Format(file.Length / 1024, "0") + " KB")
End Sub

Sub WriteText(p As Page, face As Font, size As Double, colour As Color, x As Double, y As Double, text As String)
  p.BeginText
  p.SetFont(face, size)
  p.FillColor = colour
  p.MoveTextPosition(x, y)
  p.ShowText(text)
  p.EndText
End Sub
