' A report with navigation: a contents page with links, bookmarks, notes and an address on the web.
'
' Run it with: quillbar run linked_report.xojo_script [FILE]

Const kMargin As Double = 64

Dim fileName As String = "linked_report.pdf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
document.Title = "Harbour report"
document.Subject = "Links, bookmarks and notes"
document.KeyWords = "links, outline, annotations"
document.Mode = PDFDocument.DocumentModeEnum.USE_OUTLINE
Dim regular As Font = document.GetFont("Times-Roman", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim bold As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)

Dim chapters() As String = Array("Arrivals", "Cargo", "Weather", "Outlook")
Dim leads() As String = Array("How many ships came in, and from where.", "What they carried, by weight.", _
  "Wind and water through the year.", "What the next year will bring.")
Dim figures() As Integer = Array(412, 388, 301, 455, 476, 502, 498, 467, 433, 401, 376, 350)

' The pages first, so that the contents page can link to them.
Dim contents As Page = NewPage("Harbour report", "")
Dim pages() As Page
Dim places() As Destination
For i As Integer = 0 To chapters.LastIndex
  Dim p As Page = NewPage(chapters(i), leads(i))
  pages.Add(p)
  Dim place As Destination = p.CreateDestination
  place.SetLocation(0, p.Height, 1) ' PDF coordinates: the upper left corner of the page
  places.Add(place)
Next

Dim root As Outline = document.CreateOutline(Nil, "Harbour report")
Dim start As Destination = contents.CreateDestination
root.SetDestination(start)
For i As Integer = 0 To chapters.LastIndex
  DrawContentsLine(i)
  DrawChapter(pages(i), i)
  Dim entry As Outline = document.CreateOutline(root, Str(i + 1) + "  " + chapters(i))
  entry.SetDestination(places(i))
  For part As Integer = 1 To 2
    Dim section As Outline = document.CreateOutline(entry, Choose(part = 1, "Figures", "Remarks"))
    Dim spot As Destination = pages(i).CreateDestination
    spot.SetLocation(0, Choose(part = 1, 640.0, 330.0), 1.5)
    section.SetDestination(spot)
  Next
  entry.Opened = (i = 0)
Next

WriteText(contents, regular, 11, &c1F6FB2, kMargin, 520, "The method is explained on example.org.")
contents.StrokeColor = &c1F6FB2
contents.LineWidth = 0.5
contents.MoveTo(kMargin, 523)
contents.LineTo(kMargin + 190, 523)
contents.Draw
Dim web As URLAnnotation = contents.CreateURLAnnotation("https://example.org/method", kMargin, 508, kMargin + 190, 525)
If web = Nil Then Print "The address could not be linked"

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Str(chapters.LastIndex + 2) + " pages"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

Function Choose(first As Boolean, a As String, b As String) As String
  If first Then Return a
  Return b
End Function

Function Choose(first As Boolean, a As Double, b As Double) As Double
  If first Then Return a
  Return b
End Function

Function NewPage(title As String, lead As String) As Page
  Dim p As Page = document.AddPage
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
  p.TransformCoordinates = True
  p.FillColor = &c0F3D5E
  p.Rectangle(0, 0, 18, p.Height)
  p.Fill
  WriteText(p, bold, 28, &c0F3D5E, kMargin, 110, title)
  If lead <> "" Then WriteText(p, regular, 14, &c5B6672, kMargin, 136, lead)
  Return p
End Function

' A line of the contents page, all of which is a link.
Sub DrawContentsLine(i As Integer)
  Dim y As Double = 200 + i * 60
  contents.FillColor = &cEEF3F7
  contents.Rectangle(kMargin, y, contents.Width - 2 * kMargin, 46)
  contents.Fill
  WriteText(contents, bold, 14, &c0F3D5E, kMargin + 14, y + 20, Str(i + 1) + "  " + chapters(i))
  WriteText(contents, regular, 10, &c5B6672, kMargin + 14, y + 36, leads(i))
  WriteText(contents, bold, 14, &c0F3D5E, contents.Width - kMargin - 30, y + 28, Str(i + 2))
  Dim link As LinkAnnotation = contents.CreateLinkAnnotation(places(i), kMargin, y, contents.Width - kMargin, y + 46)
  If link = Nil Then Print chapters(i) + " could not be linked"
End Sub

Sub DrawChapter(p As Page, chapter As Integer)
  WriteText(p, bold, 14, &c0F3D5E, kMargin, 190, "Figures")
  Dim bar As Double = (p.Width - 2 * kMargin) / 12
  For month As Integer = 0 To 11
    Dim h As Double = figures((month + chapter * 3) Mod 12) / 2.4
    p.FillColor = &c2E86AB
    p.Rectangle(kMargin + month * bar + 4, 430 - h, bar - 8, h)
    p.Fill
    WriteText(p, regular, 9, &c5B6672, kMargin + month * bar + bar / 2 - 4, 444, Str(month + 1))
  Next
  WriteText(p, bold, 14, &c0F3D5E, kMargin, 500, "Remarks")
  WriteText(p, regular, 12, &c333A42, kMargin, 524, "The note beside this line opens with a click.")

  Dim note As TextAnnotation = p.CreateTextAnnotation("Checked against the harbour master's book: " + chapters(chapter) + ".", _
    p.Width - kMargin - 20, 508, p.Width - kMargin, 528)
  note.SetIcon(TextAnnotation.AnnotationIconEnum.NOTE)
  note.SetColor(&cF2B134)
  note.SetOpened(False)

  WriteText(p, bold, 10, &c1F6FB2, kMargin, 780, "Back to the contents")
  Dim back As LinkAnnotation = p.CreateLinkAnnotation(start, kMargin, 768, kMargin + 110, 784)
  If back = Nil Then Print "No way back from " + chapters(chapter)
End Sub

Sub WriteText(p As Page, face As Font, size As Double, colour As Color, x As Double, y As Double, text As String)
  p.BeginText
  p.SetFont(face, size)
  p.FillColor = colour
  p.MoveTextPosition(x, y)
  p.ShowText(text)
  p.EndText
End Sub
